#include "host/Message_ZLM/DesktopMessages.h"

#include "host/Message_ZLM/Balloon.h"
#include "host/Message_ZLM/MessageDialog.h"

#include <QApplication>
#include <QTimer>

namespace {

QWidget *controlOf(const TMessage &message)
{
    return qobject_cast<QWidget *>(message.control.data());
}

/// The window that a message belongs to: the caller's, as long as it is on the screen.
QWidget *owner(const TMessage &message)
{
    for (QWidget *widget : {qobject_cast<QWidget *>(message.form.data()), controlOf(message)}) {
        if (widget && widget->window()->isVisible())
            return widget->window();
    }
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

void showBalloon(const TMessage &message)
{
    if (QWidget *control = controlOf(message); control && control->isVisible()) {
        TBalloon::show(message, control);
        return;
    }
    // An input on another page may be turned to next; without an input the message belongs to the window that is in
    // front once the caller is done: an editor that saved and closes is no place for it.
    QTimer::singleShot(0, qApp, [message] {
        QWidget *control = controlOf(message);
        QWidget *anchor = control && control->isVisible() ? control : owner(message);
        if (anchor && anchor->isVisible())
            TBalloon::show(message, anchor);
    });
}

TAnswer showDialog(const TMessage &message)
{
    const std::optional<TMessage> unread = TBalloon::takeUnread();
    TBalloon::closeCurrent();
    const QPointer<QWidget> before = QApplication::focusWidget();
    const TAnswer answer = TMessageDialog::ask(message, owner(message));
    if (QWidget *input = controlOf(message) ? controlOf(message) : before.data()) {
        input->activateWindow();
        input->setFocus(Qt::OtherFocusReason);
    }
    if (unread)
        showBalloon(*unread);
    return answer;
}

} // namespace

TAnswer TDesktopMessages::show(const TMessage &message)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return TPlainMessages().show(message);
    // The input may be gone by the time that a balloon is shown; its window stays.
    TMessage placed = message;
    if (QWidget *control = controlOf(message); control && !placed.form)
        placed.form = control->window();
    if (placed.shape != TMessageShape::Balloon)
        return showDialog(placed);
    showBalloon(placed);
    return TAnswer::Ok;
}
