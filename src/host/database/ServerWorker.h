#pragma once

#include <functional>
#include <memory>

/// A thread that does what it is given, in the order in which it was given. What was given is done to its end, also after
/// this object is gone; nobody waits for that.
class TServerWorker {
public:
    TServerWorker();
    ~TServerWorker();
    TServerWorker(const TServerWorker &) = delete;
    TServerWorker &operator=(const TServerWorker &) = delete;

    void post(std::function<void()> work);

private:
    struct TQueue;
    std::shared_ptr<TQueue> m_queue;
};
