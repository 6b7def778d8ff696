#include "host/database/OdbcRunning.h"

#include <mutex>
#include <thread>
#include <utility>

namespace Odbc {

struct TRunning::TState {
    std::mutex mutex; // held while cancelling: the statement is not freed meanwhile
    SQLHANDLE statement = nullptr;
};

TRunning::TRunning() : m_state(std::make_shared<TState>()) {}

SQLHANDLE TRunning::exchange(SQLHANDLE statement)
{
    const std::lock_guard lock(m_state->mutex);
    return std::exchange(m_state->statement, statement);
}

void TRunning::cancel()
{
    std::thread([state = m_state] {
        const std::lock_guard lock(state->mutex);
        if (state->statement)
            SQLCancel(state->statement);
    }).detach();
}

TRunning::TScope::TScope(TRunning &running, SQLHANDLE statement)
    : m_running(running), m_before(running.exchange(statement))
{
}

TRunning::TScope::~TScope()
{
    m_running.exchange(m_before);
}

} // namespace Odbc
