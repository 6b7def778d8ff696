#pragma once

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Export.h"

#include <QFrame>

#include <optional>

class QLabel;

/// A text beside an input that takes no focus and no key. It goes after its time, with the next key or click, and when
/// the input goes; a window that closes as soon as its balloon came up leaves it to the window behind. There is one at a time: a new one takes the place of the old one.
class KETEBIONPAP_HOST TBalloon : public QFrame {
    Q_OBJECT
public:
    /// Beside a visible input, or at the foot of a window.
    static void show(const TMessage &message, QWidget *anchor);
    static void closeCurrent();
    /// The message of a balloon that came up within this very key or click, and so was not read yet; the balloon goes.
    static std::optional<TMessage> takeUnread();
    /// The balloon on the screen; null when there is none.
    static TBalloon *current();
    QString text() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TBalloon(const TMessage &message, QWidget *anchor);
    void place();
    void goAway();
    void leaveAnchor();

    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_window;
    TMessage m_message;
    QLabel *m_label;
    QColor m_edge;
    bool m_besideInput;
    bool m_armed = false; ///< keys from now on take the balloon away
};
