#include "host/database/ChangeOver.h"

#include <chrono>
#include <thread>

TChangeOver::TSurroundings TChangeOver::ordinary()
{
    using namespace std::chrono;
    return {
        [] { return qint64(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count()); },
        [](int wanted) { std::this_thread::sleep_for(milliseconds(wanted)); },
        {},
        {}};
}

TChangeOver::TChangeOver(TSurroundings surroundings) : m_surroundings(std::move(surroundings)) {}

bool TChangeOver::passes(TFault fault)
{
    switch (fault) {
    case TFault::ChangingOver:
    case TFault::ConnectionLost:
    case TFault::NoAnswer:
    case TFault::NoServer:
    case TFault::NoSuchDatabase: // it was there before
        return true;
    default:
        return false;
    }
}

// Slept in short parts, so that stopping is felt at once.
bool TChangeOver::wait(int milliseconds) const
{
    const int part = 100;
    const auto stopped = [this] { return m_surroundings.isStopped && m_surroundings.isStopped(); };
    const qint64 end = m_surroundings.clock() + milliseconds;
    for (qint64 left = milliseconds; left > 0; left = end - m_surroundings.clock()) {
        if (stopped())
            return false;
        m_surroundings.sleep(int(qMin(left, qint64(part))));
    }
    return !stopped();
}

void TChangeOver::run(const std::function<void()> &attempt) const
{
    const qint64 end = m_surroundings.clock() + wholeWait;
    int next = firstWait;
    for (int tries = 1;; ++tries, next *= 2) {
        try {
            attempt();
            return;
        } catch (const TDatabaseError &error) {
            const qint64 left = end - m_surroundings.clock();
            if (!passes(error.fault()) || left <= 0)
                throw;
            const int waited = int(qMin(qint64(next), left));
            if (m_surroundings.tell)
                m_surroundings.tell({error.fault(), tries, waited, left});
            if (!wait(waited))
                throw;
        }
    }
}
