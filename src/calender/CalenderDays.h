#pragma once

#include "calender/Calender_Mapper.h"
#include "host/Export.h"

#include <QList>
#include <QStringList>

/// The rules by which days are generated, free of screen and database.
namespace CalenderDays {

/// "شنبه" (Saturday, 0) to "جمعه" (Friday, 6): the order of the column Day.
KETEBIONPAP_CORE const QStringList &weekdays();

/// The title of a fixed official holiday of the Persian year; null for any other day.
/// Source: the official holidays of the Iranian calendar that keep their solar date.
KETEBIONPAP_CORE QString fixedHoliday(int month, int day);

/// What the user asked for.
struct Range {
    int fromYear = 0, fromMonth = 0, fromDay = 0;
    int toYear = 0, toMonth = 0, toDay = 0;
    int startDay = 0; ///< weekday of the from-date as the user states it, 0 = Saturday
    int weekEnd = 6;  ///< the weekly holiday
    QString title;
    QString comment;
};

/// The days of the range, in order. The same month bounds hold in every year, so a range whose to-month is before
/// its from-month has no days; month 12 ends on 29 in leap years and on 30 in the others.
KETEBIONPAP_CORE QList<TCalenderMapper> of(const Range &range);

/// What a user would hardly want of these days of the range, each as a Persian sentence: weekdays that are not the
/// calendar's, days that the calendar does not have, days of the range that are left out. Empty when all is well.
KETEBIONPAP_CORE QStringList doubts(const Range &range, const QList<TCalenderMapper> &days);

/// What is left of a generation that ended after `stored` of its days. The month bounds hold in every year, so the next
/// range ends with its year; the years behind it are a range of their own.
struct Rest {
    QString from, to;           ///< the next range
    int startDay = 0;           ///< the weekday of its first day, counted on
    QString laterFrom, laterTo; ///< the range after that; empty when there is none
};
/// `stored` is less than the number of days.
KETEBIONPAP_CORE Rest rest(const Range &range, const QList<TCalenderMapper> &days, qsizetype stored);

} // namespace CalenderDays
