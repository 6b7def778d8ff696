#include "calender/CalenderDays.h"

#include "host/Declaration_PKG/Method_declare_unt.h"

namespace {

struct THoliday {
    int month;
    int day;
    QString title;
};

const QList<THoliday> &holidays()
{
    static const QList<THoliday> list = {
        {1, 1, u"عيد نوروز"_qs},
        {1, 2, u"عيد نوروز"_qs},
        {1, 3, u"عيد نوروز"_qs},
        {1, 4, u"عيد نوروز"_qs},
        {1, 12, u"روز جمهوري اسلامي ايران"_qs},
        {1, 13, u"روز طبيعت"_qs},
        {3, 14, u"رحلت حضرت امام خميني ( ره )"_qs},
        {3, 15, u"قيام خونين 15 خرداد"_qs},
        {11, 22, u"پيروزي انقلاب اسلامي"_qs},
        {12, 29, u"روز ملي شدن صنعت نفت ايران"_qs},
    };
    return list;
}

int lastDay(const CalenderDays::Range &range, int year, int month)
{
    if (month == range.toMonth)
        return range.toDay;
    if (month == 12 && IsKabiseYear(year))
        return 29;
    return month <= 6 ? 31 : 30;
}

} // namespace

const QStringList &CalenderDays::weekdays()
{
    static const QStringList names = {u"شنبه"_qs,      u"يکشنبه"_qs,  u"دوشنبه"_qs, u"سه شنبه"_qs,
                                      u"چهار شنبه"_qs, u"پنجشنبه"_qs, u"جمعه"_qs};
    return names;
}

QString CalenderDays::fixedHoliday(int month, int day)
{
    for (const THoliday &holiday : holidays())
        if (holiday.month == month && holiday.day == day)
            return holiday.title;
    return {};
}

QList<TCalenderMapper> CalenderDays::of(const Range &range)
{
    QList<TCalenderMapper> days;
    int weekday = range.startDay;
    for (int year = range.fromYear; year <= range.toYear; ++year) {
        for (int month = range.fromMonth; month <= range.toMonth; ++month) {
            const int last = lastDay(range, year, month);
            for (int day = month == range.fromMonth ? range.fromDay : 1; day <= last; ++day) {
                TCalenderMapper row;
                row._Date = QStringLiteral("%1/%2/%3")
                                .arg(year)
                                .arg(month, 2, 10, QChar(u'0'))
                                .arg(day, 2, 10, QChar(u'0'));
                row._Day = weekday;
                row._Type = weekday == range.weekEnd ? 2 : 1;
                row._Title = range.title;
                row._Comment = range.comment;
                if (const QString holiday = fixedHoliday(month, day); !holiday.isNull()) {
                    row._Type = 3;
                    row._Title = holiday;
                }
                days.append(row);
                weekday = (weekday + 1) % 7;
            }
        }
    }
    return days;
}
