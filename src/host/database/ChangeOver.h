#pragma once

#include "host/Export.h"
#include "host/database/DatabaseError.h"

#include <QtGlobal>

#include <functional>

/// Waits for a server that comes back by itself: it is being started, or another one takes its database over.
///
/// The waits grow from a quarter of a second, doubled each time, and end thirty seconds after the first try. Whoever
/// waits is told before each wait and may stop at any moment of it.
class KETEBIONPAP_CORE TChangeOver {
public:
    struct TWaiting {
        TFault fault;             ///< why the last try failed
        int tries = 0;            ///< made so far
        int untilNextTry = 0;     ///< milliseconds
        qint64 untilGivingUp = 0; ///< milliseconds
    };
    struct TSurroundings {
        std::function<qint64()> clock;              ///< milliseconds that only grow
        std::function<void(int)> sleep;             ///< for so many milliseconds
        std::function<void(const TWaiting &)> tell; ///< may be empty
        std::function<bool()> isStopped;            ///< asked ten times a second; may be empty
    };

    /// The real clock; sleeping blocks the thread.
    static TSurroundings ordinary();
    explicit TChangeOver(TSurroundings surroundings = ordinary());

    /// Whether it is worth while to wait after this failure of one who was connected before.
    static bool passes(TFault fault);

    /// Tries until it succeeds; throws the last failure when the time is over, who waits has stopped, or the failure is
    /// none that passes. Nothing that may have been stored is to be tried like this.
    void run(const std::function<void()> &attempt) const;

    static constexpr int firstWait = 250;
    static constexpr int wholeWait = 30000;

private:
    bool wait(int milliseconds) const;
    TSurroundings m_surroundings;
};
