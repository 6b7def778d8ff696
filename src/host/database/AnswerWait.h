#pragma once

#include "host/Export.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

class QObject;

/// A request that another thread works on, as the thread sees it that asked and waits.
class KETEBIONPAP_CORE TAwaited {
public:
    TAwaited() = default;
    virtual ~TAwaited();
    TAwaited(const TAwaited &) = delete;
    TAwaited &operator=(const TAwaited &) = delete;

    /// Nothing more to wait for: the answer is there, or the request was given up and got no answer for graceTime.
    bool isOver() const;
    /// Blocks until it is over, at most so many milliseconds; true when it is over.
    bool wait(int milliseconds);
    /// Called once, from the other thread, when the answer is there; at once when it is there already.
    void whenAnswered(std::function<void()> tell);
    /// The user wants the answer no more: the server is asked to end the request. Again without effect.
    void giveUp();
    bool isGivenUp() const { return m_isGivenUp; }
    /// What the other thread says it is doing, in the user's words; empty for a plain request.
    virtual QString doing() const { return {}; }

    static constexpr std::chrono::milliseconds graceTime{2000};

protected:
    /// By the thread that works on it.
    void setAnswered();
    bool isAnswered() const;
    virtual void askToEnd() = 0;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isAnswered = false;
    std::atomic<bool> m_isGivenUp = false;
    std::chrono::steady_clock::time_point m_givenUpAt;
    std::function<void()> m_tell;
};

/// How a thread passes the time until its answer comes. This one blocks, as a program without windows does.
class KETEBIONPAP_CORE TAnswerWait {
public:
    virtual ~TAnswerWait();
    /// Returns when it is over. Requests are never begun while one is waited for.
    virtual void wait(TAwaited &awaited);
    /// Whether a wait goes on, so that what runs now runs in the middle of another one's request.
    virtual bool isWaiting() const { return false; }
};

/// What windows put in the place of blocking, once, at the start; null goes back to blocking.
KETEBIONPAP_CORE void SetUsualAnswerWait(TAnswerWait *wait);
KETEBIONPAP_CORE TAnswerWait &AnswerWait();
/// Runs what asks the database by itself (a timer, a message that is to be told) when no request is waited for: now, or
/// after the wait. Nothing when the object is gone by then.
KETEBIONPAP_CORE void WhenAnswered(QObject *object, const std::function<void()> &work);
