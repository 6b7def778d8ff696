#include "host/Message_ZLM/KeptInput.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWindow>

QT_BEGIN_NAMESPACE
// Qt's own way of trying a key as a shortcut first; exported for tests of keys.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject *o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString &text, bool autorep, ushort count);
QT_END_NAMESPACE

namespace {

const int lookAgainAfter = 50; // ms, while a message is open

bool isKey(const QEvent *event)
{
    return event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
           event->type() == QEvent::InputMethod;
}

/// A window or a dialog; what comes and goes by itself (balloons, hints) is none.
bool isScreen(QObject *object)
{
    if (object->isWindowType())
        return true;
    const auto *widget = qobject_cast<QWidget *>(object);
    return widget && (widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog);
}

bool isInput(QObject *watched, const QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::Drop:
        return watched->isWindowType() || watched->isWidgetType();
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent *>(event)->buttons() != Qt::NoButton &&
               (watched->isWindowType() || watched->isWidgetType());
    case QEvent::Close:
        return isScreen(watched);
    case QEvent::Quit:
        return watched == qApp;
    default:
        return false;
    }
}

QWidget *screenOf(QObject *receiver)
{
    if (const auto *widget = qobject_cast<QWidget *>(receiver))
        return widget->window();
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (receiver && widget->windowHandle() == receiver)
            return widget;
    }
    return nullptr;
}

} // namespace

TKeptInput::TKeptInput(QObject *parent) : QObject(parent) {}

TKeptInput::~TKeptInput() = default;

void TKeptInput::hold()
{
    if (!m_isHolding)
        qApp->installEventFilter(this); // the last one installed sees an event first
    m_isHolding = true;
}

void TKeptInput::release()
{
    m_isHolding = false;
    if (m_kept.empty())
        qApp->removeEventFilter(this);
    else
        deliverSoon(0);
}

bool TKeptInput::takesEscape(const QEvent *event)
{
    if (!m_escape || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) ||
        static_cast<const QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return false;
    if (event->type() == QEvent::KeyPress)
        m_escape();
    return true;
}

bool TKeptInput::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_isHolding && (m_kept.empty() || m_isSending || m_isBehindMessage))
        return false;
    // A shortcut would act now; its key comes as such, and is kept.
    if (m_isHolding && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (m_isHolding && (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove)) {
        event->ignore();
        return true;
    }
    if (!isInput(watched, event))
        return false;
    if (m_isHolding && takesEscape(event))
        return true;
    keep(watched, event);
    return true;
}

void TKeptInput::keep(QObject *watched, QEvent *event)
{
    m_kept.push_back({std::unique_ptr<QEvent>(event->clone()), watched});
    if (event->type() == QEvent::Close || event->type() == QEvent::Quit)
        event->ignore(); // not closed yet
    else
        event->accept();
}

void TKeptInput::deliverSoon(int milliseconds)
{
    if (std::exchange(m_isComing, true))
        return;
    QTimer::singleShot(milliseconds, this, [this] {
        m_isComing = false;
        deliver();
    });
}

TKeptInput::TWay TKeptInput::wayOf(const TKept &kept, QObject *&target) const
{
    target = kept.receiver;
    if (target == qApp)
        return TWay::Now;
    QWidget *screen = screenOf(kept.receiver);
    QWidget *modal = QApplication::activeModalWidget();
    const bool isThere = screen && screen->isVisible();
    if (isThere && (!modal || screen == modal || modal->isAncestorOf(screen)))
        return TWay::Now;
    if (qobject_cast<QMessageBox *>(modal))
        return TWay::Later;
    if (!isKey(kept.event.get()))
        return TWay::Never;
    QWidget *front = modal ? modal : QApplication::activeWindow();
    if (!front || !front->isVisible())
        return TWay::Never;
    target = front->focusWidget() ? front->focusWidget() : front;
    return TWay::Now;
}

void TKeptInput::deliver()
{
    if (m_isHolding || m_kept.empty())
        return;
    QObject *target = nullptr;
    const TWay way = wayOf(m_kept.front(), target);
    m_isBehindMessage = way == TWay::Later;
    if (m_isBehindMessage)
        return deliverSoon(lookAgainAfter);
    const TKept kept = std::move(m_kept.front());
    m_kept.pop_front();
    // What this one opens gets those behind it.
    if (m_kept.empty())
        qApp->removeEventFilter(this);
    else
        deliverSoon(0);
    if (way == TWay::Never)
        return;
    const QScopedValueRollback sending(m_isSending, true);
    send(target, kept.event.get());
}

void TKeptInput::send(QObject *target, QEvent *event)
{
    if (event->type() == QEvent::Close && target->isWidgetType()) {
        static_cast<QWidget *>(target)->close();
        return;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        auto *window = qobject_cast<QWindow *>(target);
        QObject *focus = window && window->focusObject() ? window->focusObject() : target;
        const QPointer<QObject> guarded = target;
        if (qt_sendShortcutOverrideEvent(focus, key->timestamp(), key->key(), key->modifiers(), key->text(),
                                         key->isAutoRepeat(), ushort(key->count())) ||
            !guarded)
            return;
    }
    QCoreApplication::sendEvent(target, event);
}
