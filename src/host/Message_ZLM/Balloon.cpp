#include "host/Message_ZLM/Balloon.h"

#include "host/Declaration_PKG/MessageCatalogue.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const int widestText = 360; // pixels
const int edgeWidth = 4;
const int gap = 3; // between the input and its balloon

QPointer<TBalloon> &shown()
{
    static QPointer<TBalloon> balloon;
    return balloon;
}

QColor edgeColor(TMessageIconType icon)
{
    switch (icon) {
    case miError:
        return {0xb3, 0x26, 0x1e};
    case miWarning:
        return {0xc7, 0x7c, 0x02};
    case miInformation:
    case miQuestion:
        break;
    }
    return {0x1f, 0x6f, 0xb5};
}

} // namespace

TBalloon::TBalloon(const TMessage &message, QWidget *anchor)
    : QFrame(anchor->window(), Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      m_anchor(anchor), m_window(anchor->window()), m_message(message),
      m_label(new QLabel(message.text, this)), m_edge(edgeColor(message.icon)),
      m_besideInput(!anchor->isWindow())
{
    setObjectName(u"Balloon"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    setFocusPolicy(Qt::NoFocus);
    setLayoutDirection(Qt::RightToLeft);
    QPalette colors = palette();
    colors.setColor(QPalette::Window,
                    message.color.isValid() ? message.color : colors.color(QPalette::ToolTipBase));
    colors.setColor(QPalette::WindowText, colors.color(QPalette::ToolTipText));
    setPalette(colors);

    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    // The caller's width is a wish: a narrower one would cut off a long word.
    const int line = m_label->fontMetrics().horizontalAdvance(message.text) + 4;
    const int width = message.width > 0 ? message.width - 3 * edgeWidth - 14 : widestText;
    m_label->setFixedWidth(std::min(line, std::max(width, m_label->minimumSizeHint().width())));
    auto *inside = new QHBoxLayout(this);
    inside->setContentsMargins(10, 6, 10 + edgeWidth, 6);
    inside->addWidget(m_label);

    // The key that brought the balloon up is still on its way; only the next one takes it away.
    QTimer::singleShot(0, this, [this] { m_armed = true; });
    QTimer::singleShot(message.displayTime > 0 ? message.displayTime : noteTime, this, &TBalloon::goAway);
    qApp->installEventFilter(this);
    connect(m_anchor, &QObject::destroyed, this, &TBalloon::goAway);
}

void TBalloon::show(const TMessage &message, QWidget *anchor)
{
    closeCurrent();
    auto *balloon = new TBalloon(message, anchor);
    shown() = balloon;
    balloon->place();
    static_cast<QWidget *>(balloon)->show();
    QAccessibleEvent event(balloon, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

TBalloon *TBalloon::current()
{
    return shown();
}

void TBalloon::closeCurrent()
{
    if (TBalloon *balloon = shown())
        balloon->goAway();
}

std::optional<TMessage> TBalloon::takeUnread()
{
    TBalloon *balloon = shown();
    if (!balloon || balloon->m_armed)
        return {};
    const TMessage message = balloon->m_message;
    balloon->goAway();
    return message;
}

QString TBalloon::text() const
{
    return m_label->text();
}

void TBalloon::goAway()
{
    if (shown() == this)
        shown() = nullptr;
    close();
}

// What closes its window in the same breath, as a list that takes one row and refuses another, leaves the message to the
// window behind.
void TBalloon::leaveAnchor()
{
    const bool unread = !m_armed;
    goAway();
    if (!unread)
        return;
    TMessage message = m_message;
    message.control = nullptr;
    // The window behind may not be the active one yet.
    message.form = m_window && m_window->parentWidget() ? m_window->parentWidget()->window() : nullptr;
    QTimer::singleShot(0, qApp, [message] { MessageService().show(message); });
}

void TBalloon::place()
{
    adjustSize();
    const QRect input(m_anchor->mapToGlobal(QPoint(0, 0)), m_anchor->size());
    const QRect screen = m_anchor->screen()->availableGeometry();
    QPoint at(input.right() + 1 - width(), input.bottom() + 1 + gap);
    if (!m_besideInput)
        at = {input.center().x() - width() / 2, input.bottom() - height() - 24};
    else if (at.y() + height() > screen.bottom() + 1)
        at.setY(input.top() - gap - height());
    at.setX(std::clamp(at.x(), screen.left(), std::max(screen.left(), screen.right() + 1 - width())));
    at.setY(std::clamp(at.y(), screen.top(), std::max(screen.top(), screen.bottom() + 1 - height())));
    move(at);
}

bool TBalloon::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
        if (m_armed)
            goAway();
        break;
    case QEvent::Hide:
        if (watched == m_anchor || watched == m_window)
            leaveAnchor();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (watched == m_anchor || watched == m_window)
            place();
        break;
    default:
        break;
    }
    return false;
}

void TBalloon::mousePressEvent(QMouseEvent *)
{
    goAway();
}

void TBalloon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(width() - edgeWidth, 0, edgeWidth, height(), m_edge);
    painter.setPen(m_edge);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
