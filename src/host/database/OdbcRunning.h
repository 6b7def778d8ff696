#pragma once

#include <sql.h>

#include <memory>

namespace Odbc {

/// The statement that a driver is at work on, for whoever wants it to end.
class TRunning {
public:
    TRunning();

    /// While this lives, the statement may be cancelled.
    class TScope {
    public:
        TScope(TRunning &running, SQLHANDLE statement);
        ~TScope();
        TScope(const TScope &) = delete;
        TScope &operator=(const TScope &) = delete;

    private:
        TRunning &m_running;
        SQLHANDLE m_before;
    };

    /// From any thread: cancels the statement, if there is one, in a thread of its own; a driver may take its time even
    /// for that.
    void cancel();

private:
    struct TState;
    SQLHANDLE exchange(SQLHANDLE statement);
    std::shared_ptr<TState> m_state;
};

} // namespace Odbc
