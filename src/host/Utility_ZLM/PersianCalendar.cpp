#include "host/Utility_ZLM/PersianCalendar.h"

#include "host/Utility_ZLM/PersianText.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

const int firstYear = 1300;
const int lastYear = 1500;
const qint64 epoch = 1948320; // Julian day of the calendar's first day

/// The Julian day of a year's first day.
qint64 newYear(int year)
{
    return epoch + 365LL * (year - 1) + (8LL * year + 21) / 33;
}

/// Days of the year before the month's first.
int daysBefore(int month)
{
    return month <= 7 ? (month - 1) * 31 : (month - 1) * 30 + 6;
}

/// The digits of a part of a typed date; -1 when there are none, too many, or other characters.
int number(QStringView digits, int most)
{
    if (digits.isEmpty() || digits.size() > most)
        return -1;
    int value = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return -1;
        value = value * 10 + c.unicode() - u'0';
    }
    return value;
}

/// The parts of a typed date, whatever the calendar says to them; zeros when the text has another form.
TPersianDate parts(const QString &text)
{
    QString plain;
    for (const QChar c : PersianText::latinDigits(text.trimmed())) {
        // Direction marks come along when a date is copied.
        if (c.category() != QChar::Other_Format)
            plain += c == u'-' || c == u'.' ? QChar(u'/') : c;
    }
    QList<QStringView> parts = QStringView(plain).split(u'/');
    if (parts.size() == 1 && plain.size() == 8)
        parts = {QStringView(plain).left(4), QStringView(plain).mid(4, 2), QStringView(plain).mid(6)};
    if (parts.size() != 3 || parts[0].size() != 4)
        return {};
    return {number(parts[0], 4), number(parts[1], 2), number(parts[2], 2)};
}

} // namespace

bool TPersianDate::isLeap(int year)
{
    return (25LL * year + 11) % 33 < 8;
}

int TPersianDate::daysInMonth(int year, int month)
{
    if (month <= 6)
        return 31;
    return month < 12 || isLeap(year) ? 30 : 29;
}

QString TPersianDate::monthName(int month)
{
    static const QStringList names{u"فروردین"_s, u"اردیبهشت"_s, u"خرداد"_s, u"تیر"_s, u"مرداد"_s, u"شهریور"_s,
                                   u"مهر"_s,     u"آبان"_s,     u"آذر"_s,   u"دی"_s,  u"بهمن"_s,  u"اسفند"_s};
    return names.value(month - 1);
}

bool TPersianDate::isValid(int year, int month, int day)
{
    return year >= firstYear && year <= lastYear && month >= 1 && month <= 12 && day >= 1 &&
           day <= daysInMonth(year, month);
}

TPersianDate TPersianDate::fromGregorian(const QDate &date)
{
    const qint64 julianDay = date.toJulianDay();
    int year = int((julianDay - epoch) * 33 / 12053) + 1; // 33 years have 12053 days; at most one off
    while (newYear(year) > julianDay)
        --year;
    while (newYear(year + 1) <= julianDay)
        ++year;
    const int dayOfYear = int(julianDay - newYear(year));
    const int month = dayOfYear < 186 ? dayOfYear / 31 + 1 : (dayOfYear - 6) / 30 + 1;
    return {year, month, dayOfYear - daysBefore(month) + 1};
}

TPersianDate TPersianDate::today()
{
    return fromGregorian(QDate::currentDate());
}

std::optional<TPersianDate> TPersianDate::parse(const QString &text)
{
    const TPersianDate date = parts(text);
    if (!isValid(date.year, date.month, date.day))
        return std::nullopt;
    return date;
}

QString TPersianDate::monthNote(const QString &text)
{
    const TPersianDate date = parts(text);
    const bool onlyDayIsWrong =
        isValid(date.year, date.month, 1) && date.day <= 31 && date.day > daysInMonth(date.year, date.month);
    return onlyDayIsWrong ? u"%1 %2 تنها %3 روز دارد"_s.arg(monthName(date.month))
                                .arg(date.year)
                                .arg(daysInMonth(date.year, date.month))
                          : QString();
}

QDate TPersianDate::toGregorian() const
{
    return QDate::fromJulianDay(newYear(year) + daysBefore(month) + day - 1);
}

int TPersianDate::weekday() const
{
    return (toGregorian().dayOfWeek() + 1) % 7;
}

TPersianDate TPersianDate::addDays(int days) const
{
    return fromGregorian(toGregorian().addDays(days));
}

QString TPersianDate::toText() const
{
    return u"%1/%2/%3"_s.arg(year, 4, 10, QChar(u'0'))
        .arg(month, 2, 10, QChar(u'0'))
        .arg(day, 2, 10, QChar(u'0'));
}
