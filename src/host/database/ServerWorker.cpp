#include "host/database/ServerWorker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

struct TServerWorker::TQueue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> works;
    bool isEnding = false;

    void run()
    {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return isEnding || !works.empty(); });
            if (works.empty())
                return;
            std::function<void()> work = std::move(works.front());
            works.pop_front();
            lock.unlock();
            work();
            work = {}; // what it holds goes here, too
            lock.lock();
        }
    }
};

TServerWorker::TServerWorker() : m_queue(std::make_shared<TQueue>())
{
    // Detached: a driver that waits on a dead line must not keep the program from ending.
    std::thread([queue = m_queue] { queue->run(); }).detach();
}

TServerWorker::~TServerWorker()
{
    const std::lock_guard lock(m_queue->mutex);
    m_queue->isEnding = true;
    m_queue->changed.notify_one();
}

void TServerWorker::post(std::function<void()> work)
{
    const std::lock_guard lock(m_queue->mutex);
    m_queue->works.push_back(std::move(work));
    m_queue->changed.notify_one();
}
