#include "host/Message_ZLM/DesktopMessages.h"

#include "host/Message_ZLM/Balloon.h"
#include "host/Message_ZLM/MessageDialog.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

namespace {

/// The answer that changes nothing.
TAnswer careful(TMessageButtons buttons)
{
    switch (buttons) {
    case TMessageButtons::YesNo:
        return TAnswer::No;
    case TMessageButtons::YesNoCancel:
        return TAnswer::Cancel;
    case TMessageButtons::Ok:
        break;
    }
    return TAnswer::Ok;
}

/// The window that a message belongs to: the caller's, as long as it is on the screen.
QWidget *owner(const TMessage &message)
{
    for (QWidget *widget : {message.form.data(), message.control.data()}) {
        if (widget && widget->window()->isVisible())
            return widget->window();
    }
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

void showBalloon(const TMessage &message)
{
    if (message.control && message.control->isVisible()) {
        TBalloon::show(message, message.control);
        return;
    }
    // An input on another page may be turned to next; without an input the message belongs to the window that is in
    // front once the caller is done: an editor that saved and closes is no place for it.
    QTimer::singleShot(0, qApp, [message] {
        QWidget *anchor =
            message.control && message.control->isVisible() ? message.control.data() : owner(message);
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
    if (QWidget *input = message.control ? message.control : before) {
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
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message.text));
        return careful(message.buttons);
    }
    if (message.shape != TMessageShape::Balloon)
        return showDialog(message);
    showBalloon(message);
    return TAnswer::Ok;
}
