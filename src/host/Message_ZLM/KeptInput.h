#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>
#include <memory>

class QKeyEvent;
class QWidget;

/// What a user types and clicks while the program waits for an answer: it is kept in its order and delivered when the
/// program is ready for it. Keys go to the window that they were typed in, or to the one that stands in front of it by
/// then; a message that came up meanwhile is not answered by keys that were typed before it. Clicks on a window that is
/// gone go with it.
class TKeptInput : public QObject {
public:
    explicit TKeptInput(QObject *parent = nullptr);
    ~TKeptInput() override;

    /// From here on all input is kept, but for Esc while there is somebody who takes it.
    void hold();
    /// What was kept is delivered, one by one, as soon as the program turns to its events.
    void release();
    void setEscape(std::function<void()> escape) { m_escape = std::move(escape); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct TKept {
        std::unique_ptr<QEvent> event;
        QPointer<QObject> receiver;
    };
    enum class TWay { Now, Later, Never };

    bool takesEscape(const QEvent *event);
    void keep(QObject *watched, QEvent *event);
    void deliverSoon(int milliseconds);
    void deliver();
    TWay wayOf(const TKept &kept, QObject *&target) const;
    static void send(QObject *target, QEvent *event);

    std::deque<TKept> m_kept;
    std::function<void()> m_escape;
    bool m_isHolding = false;
    bool m_isSending = false;
    bool m_isBehindMessage = false; ///< new input comes first: it answers the message
    bool m_isComing = false;        ///< deliver() is called soon
};
