#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

/// Measures for how long the windows' thread does not turn to its events: another thread posts to it every 5 ms.
class TurnWatch {
public:
    TurnWatch()
    {
        m_thread = std::thread([state = m_state] {
            while (!state->isOver) {
                if (state->isHere.exchange(false)) {
                    QElapsedTimer posted;
                    posted.start();
                    QMetaObject::invokeMethod(
                        qApp,
                        [state, posted] {
                            state->longest = std::max(state->longest.load(), posted.elapsed());
                            state->isHere = true;
                        },
                        Qt::QueuedConnection);
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        });
    }
    ~TurnWatch()
    {
        m_state->isOver = true;
        m_thread.join();
    }
    TurnWatch(const TurnWatch &) = delete;
    /// In ms, since the last call.
    qint64 longest()
    {
        QCoreApplication::processEvents(); // what is still under way
        return m_state->longest.exchange(0);
    }

private:
    struct TState {
        std::atomic<bool> isOver = false;
        std::atomic<bool> isHere = true;
        std::atomic<qint64> longest = 0;
    };
    std::shared_ptr<TState> m_state = std::make_shared<TState>();
    std::thread m_thread;
};
