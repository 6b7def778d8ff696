#include "host/Component_ZLM/PersianCalendarPopup.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>

using namespace Qt::Literals::StringLiterals;

namespace {

const int firstYear = 1300;
const int lastYear = 1500;
const int margin = 6;
const int headRows = 2; // the month's name, the weekdays
const int weekRows = 6;

const QString weekdayLetters = u"شیدسچپج"_s;

} // namespace

TPersianCalendarPopup::TPersianCalendarPopup(QWidget *parent, const TPersianDate &day)
    : QFrame(parent, Qt::Popup), m_day(day), m_today(TPersianDate::today())
{
    setObjectName(u"PersianCalendar"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setLayoutDirection(Qt::RightToLeft);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setFocusPolicy(Qt::StrongFocus);
}

QSize TPersianCalendarPopup::cell() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(u"88"_s) + 18, metrics.height() + 8};
}

QSize TPersianCalendarPopup::sizeHint() const
{
    return {7 * cell().width() + 2 * margin, (headRows + weekRows + 1) * cell().height() + 3 * margin};
}

void TPersianCalendarPopup::popupAt(QWidget *input)
{
    resize(sizeHint());
    QPoint place = input->mapToGlobal(QPoint(input->width() - width(), input->height()));
    const QRect screen = input->screen()->availableGeometry();
    if (place.y() + height() > screen.bottom())
        place.setY(input->mapToGlobal(QPoint(0, 0)).y() - height());
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(place);
    show();
    setFocus(Qt::PopupFocusReason);
}

void TPersianCalendarPopup::setDay(const TPersianDate &day)
{
    if (day.year < firstYear || day.year > lastYear)
        return;
    m_day = day;
    update();
}

void TPersianCalendarPopup::moveMonths(int months)
{
    const int month = m_day.year * 12 + m_day.month - 1 + months;
    TPersianDate day{month / 12, month % 12 + 1, m_day.day};
    day.day = std::min(day.day, TPersianDate::daysInMonth(day.year, day.month));
    setDay(day);
}

void TPersianCalendarPopup::choose()
{
    Q_EMIT chosen(m_day);
    close();
}

QRect TPersianCalendarPopup::headRect() const
{
    return {margin, margin, 7 * cell().width(), cell().height()};
}

// Time runs from right to left.
QRect TPersianCalendarPopup::previousMonthRect() const
{
    return {headRect().right() - cell().width() + 1, margin, cell().width(), cell().height()};
}

QRect TPersianCalendarPopup::nextMonthRect() const
{
    return {headRect().left(), margin, cell().width(), cell().height()};
}

QRect TPersianCalendarPopup::todayRect() const
{
    return {margin, height() - margin - cell().height(), 7 * cell().width(), cell().height()};
}

QRect TPersianCalendarPopup::dayRect(int day) const
{
    const int place = TPersianDate{m_day.year, m_day.month, 1}.weekday() + day - 1;
    const QSize size = cell();
    return {margin + (6 - place % 7) * size.width(), 2 * margin + (headRows + place / 7) * size.height(),
            size.width(), size.height()};
}

int TPersianCalendarPopup::dayAt(const QPoint &point) const
{
    for (int day = 1; day <= TPersianDate::daysInMonth(m_day.year, m_day.month); ++day) {
        if (dayRect(day).contains(point))
            return day;
    }
    return 0;
}

void TPersianCalendarPopup::paintHead(QPainter &painter)
{
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.fillRect(headRect(), palette().highlight());
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(headRect(), Qt::AlignCenter,
                     TPersianDate::monthName(m_day.month) + u' ' + QString::number(m_day.year));
    painter.drawText(previousMonthRect(), Qt::AlignCenter, u"‹"_s);
    painter.drawText(nextMonthRect(), Qt::AlignCenter, u"›"_s);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    for (int i = 0; i < 7; ++i) {
        const QRect place(margin + (6 - i) * cell().width(), 2 * margin + cell().height(), cell().width(),
                          cell().height());
        painter.drawText(place, Qt::AlignCenter, weekdayLetters.mid(i, 1));
    }
}

void TPersianCalendarPopup::paintDays(QPainter &painter)
{
    const QColor holiday(0xb3, 0x26, 0x1e);
    for (int day = 1; day <= TPersianDate::daysInMonth(m_day.year, m_day.month); ++day) {
        const QRect place = dayRect(day).adjusted(2, 1, -2, -1);
        const TPersianDate date{m_day.year, m_day.month, day};
        const bool selected = day == m_day.day;
        if (selected)
            painter.fillRect(place, palette().highlight());
        if (date == m_today) {
            painter.setPen(QPen(holiday, 2));
            painter.drawRect(place.adjusted(1, 1, -1, -1));
        }
        painter.setPen(selected              ? palette().color(QPalette::HighlightedText)
                       : date.weekday() == 6 ? holiday
                                             : palette().color(QPalette::Text));
        painter.drawText(place, Qt::AlignCenter, QString::number(day));
    }
}

void TPersianCalendarPopup::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    paintHead(painter);
    paintDays(painter);
    painter.setPen(palette().color(QPalette::Link));
    painter.drawText(todayRect(), Qt::AlignCenter, u"امروز "_s + m_today.toText());
    painter.end();
    QFrame::paintEvent(event);
}

void TPersianCalendarPopup::keyPressEvent(QKeyEvent *event)
{
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        setDay(m_day.addDays(1));
        break;
    case Qt::Key_Right:
        setDay(m_day.addDays(-1));
        break;
    case Qt::Key_Down:
        setDay(m_day.addDays(7));
        break;
    case Qt::Key_Up:
        setDay(m_day.addDays(-7));
        break;
    case Qt::Key_PageDown:
        moveMonths(control ? 12 : 1);
        break;
    case Qt::Key_PageUp:
        moveMonths(control ? -12 : -1);
        break;
    case Qt::Key_Home:
        setDay(control ? m_today : TPersianDate{m_day.year, m_day.month, 1});
        break;
    case Qt::Key_End:
        setDay({m_day.year, m_day.month, TPersianDate::daysInMonth(m_day.year, m_day.month)});
        break;
    case Qt::Key_T:
        setDay(m_today);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choose();
        break;
    case Qt::Key_Escape:
        close();
        break;
    default:
        QFrame::keyPressEvent(event);
    }
}

void TPersianCalendarPopup::mousePressEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (previousMonthRect().contains(point))
        moveMonths(-1);
    else if (nextMonthRect().contains(point))
        moveMonths(1);
    else if (const int day = dayAt(point))
        setDay({m_day.year, m_day.month, day});
    else if (!rect().contains(point))
        close();
}

void TPersianCalendarPopup::mouseReleaseEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (todayRect().contains(point))
        m_day = m_today;
    else if (dayAt(point) != m_day.day)
        return;
    choose();
}

void TPersianCalendarPopup::wheelEvent(QWheelEvent *event)
{
    moveMonths(event->angleDelta().y() > 0 ? -1 : 1);
}
