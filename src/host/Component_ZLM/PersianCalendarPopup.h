#pragma once

#include "host/Export.h"
#include "host/Utility_ZLM/PersianCalendar.h"

#include <QFrame>

/// A month of the Persian calendar to pick a day from, Saturday first (on the right), today marked.
///
/// Arrows move by day and week, Page Up and Page Down by month (with Ctrl by year), Home and End to the month's first
/// and last day; Enter and Space choose, "t" and Ctrl+Home go to today, Esc closes. Years 1300 to 1500.
class KETEBIONPAP_HOST TPersianCalendarPopup : public QFrame {
    Q_OBJECT
public:
    TPersianCalendarPopup(QWidget *parent, const TPersianDate &day);
    /// Opens below (or above) the input and deletes itself when it closes.
    void popupAt(QWidget *input);
    const TPersianDate &day() const { return m_day; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void chosen(const TPersianDate &day);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void setDay(const TPersianDate &day);
    void moveMonths(int months);
    void choose();
    QSize cell() const;
    QRect headRect() const;
    QRect previousMonthRect() const;
    QRect nextMonthRect() const;
    QRect todayRect() const;
    QRect dayRect(int day) const;
    int dayAt(const QPoint &point) const; ///< 0: none
    void paintHead(QPainter &painter);
    void paintDays(QPainter &painter);

    TPersianDate m_day;
    const TPersianDate m_today;
};
