#pragma once

#include "calender/Calender_Mapper.h"

#include <QList>
#include <QStringList>

/// The rules by which days are generated, free of screen and database.
namespace CalenderDays {

/// "شنبه" (Saturday, 0) to "جمعه" (Friday, 6): the order of the column Day.
const QStringList &weekdays();

/// The title of a fixed official holiday of the Persian year; null for any other day.
/// Source: the official holidays of the Iranian calendar that keep their solar date.
QString fixedHoliday(int month, int day);

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
QList<TCalenderMapper> of(const Range &range);

} // namespace CalenderDays
