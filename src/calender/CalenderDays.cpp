#include "calender/CalenderDays.h"

#include "host/Declaration_PKG/Method_declare_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

struct THoliday {
    int month;
    int day;
    QString title;
};

const QList<THoliday> &holidays()
{
    static const QList<THoliday> list = {
        {1, 1, u"عيد نوروز"_s},
        {1, 2, u"عيد نوروز"_s},
        {1, 3, u"عيد نوروز"_s},
        {1, 4, u"عيد نوروز"_s},
        {1, 12, u"روز جمهوري اسلامي ايران"_s},
        {1, 13, u"روز طبيعت"_s},
        {3, 14, u"رحلت حضرت امام خميني ( ره )"_s},
        {3, 15, u"قيام خونين 15 خرداد"_s},
        {11, 22, u"پيروزي انقلاب اسلامي"_s},
        {12, 29, u"روز ملي شدن صنعت نفت ايران"_s},
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

QString dateText(int year, int month, int day)
{
    return u"%1/%2/%3"_s.arg(year).arg(month, 2, 10, QChar(u'0')).arg(day, 2, 10, QChar(u'0'));
}

QString weekdayDoubt(const CalenderDays::Range &range, const QList<TCalenderMapper> &days)
{
    qsizetype wrong = 0;
    QString first;
    for (const TCalenderMapper &day : days) {
        const auto date = TPersianDate::parse(day._Date);
        if (!date || date->weekday() == day._Day)
            continue;
        if (wrong++ == 0)
            first = day._Date;
    }
    const auto from = TPersianDate::parse(days.constFirst()._Date);
    if (from && from->weekday() != range.startDay) {
        const QStringList &names = CalenderDays::weekdays();
        return u"%1 %2 است، ولی روز شروع «%3» انتخاب شده است: %4 روز با روز هفته نادرست ثبت می شود."_s.arg(
            days.constFirst()._Date, names.at(from->weekday()), names.value(range.startDay),
            QString::number(wrong));
    }
    return wrong == 0
               ? QString()
               : u"از %1 به بعد %2 روز با روز هفته نادرست ثبت می شود، چون روزهای پیش از آن پشت سر هم نیستند. هر سال را جداگانه بسازید."_s
                     .arg(first)
                     .arg(wrong);
}

} // namespace

const QStringList &CalenderDays::weekdays()
{
    static const QStringList names = {u"شنبه"_s,      u"يکشنبه"_s,  u"دوشنبه"_s, u"سه شنبه"_s,
                                      u"چهار شنبه"_s, u"پنجشنبه"_s, u"جمعه"_s};
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
                row._Date = dateText(year, month, day);
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

QStringList CalenderDays::doubts(const Range &range, const QList<TCalenderMapper> &days)
{
    QStringList found;
    if (days.isEmpty())
        return found;
    if (const QString weekday = weekdayDoubt(range, days); !weekday.isEmpty())
        found << weekday;
    QSet<QString> dates;
    for (const TCalenderMapper &day : days) {
        dates.insert(day._Date);
        if (!TPersianDate::parse(day._Date))
            found << u"%1 در تقویم نیست (اسفند این سال 29 روز دارد)، ولی ساخته می شود."_s.arg(day._Date);
    }
    const TPersianDate to{range.toYear, range.toMonth, range.toDay};
    int leftOut = 0;
    QString first;
    for (TPersianDate date{range.fromYear, range.fromMonth, range.fromDay}; date.toText() <= to.toText();
         date = date.addDays(1)) {
        if (dates.contains(date.toText()))
            continue;
        if (leftOut++ == 0)
            first = date.toText();
    }
    if (leftOut > 0)
        found
            << u"%1 روز این بازه ساخته نمی شود (نخستین آنها %2)، چون در هر سال تنها از ماه و روز شروع تا ماه و روز پایان ساخته می شود. هر سال را جداگانه بسازید."_s
                   .arg(leftOut)
                   .arg(first);
    return found;
}

CalenderDays::Rest CalenderDays::rest(const Range &range, const QList<TCalenderMapper> &days,
                                      qsizetype stored)
{
    // A date that the calendar does not have could not be entered again.
    const auto inCalendar = [&](qsizetype i) { return TPersianDate::parse(days.at(i)._Date).has_value(); };
    qsizetype next = stored;
    while (next + 1 < days.size() && !inCalendar(next))
        ++next;
    Rest rest;
    rest.from = rest.to = days.at(next)._Date;
    rest.startDay = days.at(next)._Day;
    const int year = rest.from.left(4).toInt();
    for (qsizetype i = next; i < days.size() && days.at(i)._Date.left(4).toInt() == year; ++i)
        if (inCalendar(i))
            rest.to = days.at(i)._Date;
    if (year < range.toYear) {
        rest.laterFrom = dateText(year + 1, range.fromMonth, range.fromDay);
        rest.laterTo = dateText(range.toYear, range.toMonth, range.toDay);
    }
    return rest;
}
