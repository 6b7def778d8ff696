#include "host/database/AnswerWait.h"

#include <QTimer>

namespace {

const int lookAgainAfter = 20; // ms

TAnswerWait *&usualWait()
{
    static TAnswerWait *wait = nullptr;
    return wait;
}

} // namespace

TAwaited::~TAwaited() = default;

bool TAwaited::isOver() const
{
    const std::lock_guard lock(m_mutex);
    return m_isAnswered || (m_isGivenUp && std::chrono::steady_clock::now() >= m_givenUpAt + graceTime);
}

bool TAwaited::wait(int milliseconds)
{
    std::unique_lock lock(m_mutex);
    auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    if (m_isGivenUp)
        until = std::min(until, m_givenUpAt + graceTime);
    m_changed.wait_until(lock, until, [this] { return m_isAnswered; });
    lock.unlock();
    return isOver();
}

void TAwaited::whenAnswered(std::function<void()> tell)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isAnswered) {
            m_tell = std::move(tell);
            return;
        }
    }
    if (tell)
        tell();
}

void TAwaited::giveUp()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_isAnswered || m_isGivenUp)
            return;
        m_givenUpAt = std::chrono::steady_clock::now();
        m_isGivenUp = true;
    }
    askToEnd();
}

void TAwaited::setAnswered()
{
    std::function<void()> tell;
    {
        const std::lock_guard lock(m_mutex);
        m_isAnswered = true;
        tell.swap(m_tell);
        // Under the lock: who waits may take this object away as soon as it knows.
        m_changed.notify_all();
    }
    if (tell)
        tell();
}

bool TAwaited::isAnswered() const
{
    const std::lock_guard lock(m_mutex);
    return m_isAnswered;
}

TAnswerWait::~TAnswerWait() = default;

void TAnswerWait::wait(TAwaited &awaited)
{
    while (!awaited.wait(1000)) {
    }
}

void SetUsualAnswerWait(TAnswerWait *wait)
{
    usualWait() = wait;
}

TAnswerWait &AnswerWait()
{
    static TAnswerWait blocking;
    return usualWait() ? *usualWait() : blocking;
}

void WhenAnswered(QObject *object, const std::function<void()> &work)
{
    if (!AnswerWait().isWaiting())
        return work();
    QTimer::singleShot(lookAgainAfter, object, [object, work] { WhenAnswered(object, work); });
}
