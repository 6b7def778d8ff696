#include "host/Declaration_PKG/Method_declare_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <unicode/calendar.h>

#include <memory>

namespace {

/// The calendar of the Unicode library, as a second opinion.
class TIcu {
public:
    TIcu()
    {
        UErrorCode error = U_ZERO_ERROR;
        m_calendar.reset(icu::Calendar::createInstance(icu::TimeZone::getGMT()->clone(),
                                                       icu::Locale("fa_IR@calendar=persian"), error));
    }
    TPersianDate date(const QDate &day)
    {
        UErrorCode error = U_ZERO_ERROR;
        m_calendar->setTime(double(day.toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * 86400000.0, error);
        return {m_calendar->get(UCAL_YEAR, error), m_calendar->get(UCAL_MONTH, error) + 1,
                m_calendar->get(UCAL_DATE, error)};
    }

private:
    std::unique_ptr<icu::Calendar> m_calendar;
};

std::optional<TPersianDate> parsed(const char *text)
{
    return TPersianDate::parse(QString::fromUtf8(text));
}

} // namespace

TEST(PersianCalendar, EveryDayFrom1300To1500IsTheOneOfTheUnicodeLibrary)
{
    TIcu icu;
    const QDate last = TPersianDate{1500, 12, TPersianDate::daysInMonth(1500, 12)}.toGregorian();
    TPersianDate expected{1300, 1, 1};
    int wrong = 0;
    for (QDate day(1921, 3, 21); day <= last && wrong < 5; day = day.addDays(1)) {
        const TPersianDate date = TPersianDate::fromGregorian(day);
        const bool right = date == icu.date(day) && date == expected && date.toGregorian() == day &&
                           TPersianDate::isValid(date.year, date.month, date.day);
        if (!right) {
            ++wrong;
            ADD_FAILURE() << day.toString(Qt::ISODate).toStdString() << " became "
                          << date.toText().toStdString();
        }
        expected = date.day < TPersianDate::daysInMonth(date.year, date.month)
                       ? TPersianDate{date.year, date.month, date.day + 1}
                   : date.month < 12 ? TPersianDate{date.year, date.month + 1, 1}
                                     : TPersianDate{date.year + 1, 1, 1};
    }
    EXPECT_EQ(expected, (TPersianDate{1501, 1, 1}));
}

TEST(PersianCalendar, TheLeapYearsOfTheOfficialCalendarAre)
{
    const QSet<int> official{1370, 1375, 1379, 1383, 1387, 1391, 1395, 1399,
                             1403, 1408, 1412, 1416, 1420, 1424, 1428};
    for (int year = 1370; year <= 1428; ++year) {
        EXPECT_EQ(IsKabiseYear(year), official.contains(year)) << year;
        EXPECT_EQ(TPersianDate::daysInMonth(year, 12), official.contains(year) ? 30 : 29) << year;
    }
}

TEST(PersianCalendar, TheYearsInWhichTheLongCycleErrsAreRight)
{
    // The vernal equinox of 1437 and 1470 falls a day later than that cycle says.
    EXPECT_EQ((TPersianDate{1437, 1, 1}.toGregorian()), QDate(2058, 3, 21));
    EXPECT_EQ((TPersianDate{1470, 1, 1}.toGregorian()), QDate(2091, 3, 21));
}

TEST(PersianCalendar, ADateIsTakenAsItIsTyped)
{
    const TPersianDate day{1404, 1, 5};
    for (const char *text : {"1404/1/5", "1404/01/05", "14040105", "1404-1-5", "1404.01.05", " 1404/1/5 ",
                             "۱۴۰۴/۱/۵", "١٤٠٤/٠١/٠٥", "۱۴۰۴۰۱۰۵", "\u200f1404/1/5\u200e"})
        EXPECT_EQ(parsed(text), day) << text;
}

TEST(PersianCalendar, WhatIsNoDateIsRefused)
{
    for (const char *text :
         {"",          "x",          "04/01/05",  "040105",     "1404/13/01", "1404/0/1",   "1404/1/0",
          "1404/7/31", "1404/12/30", "1404/1",    "1404/1/1/1", "1404//1",    "1404/001/1", "1404/1/1x",
          "-1404/1/1", "14041305",   "140401050", "1299/12/29", "1501/01/01", "99999999",   "1404/+1/1"})
        EXPECT_FALSE(parsed(text)) << text;
    EXPECT_TRUE(parsed("1403/12/30"));
}

TEST(PersianCalendar, WeekdaysCountFromSaturday)
{
    EXPECT_EQ((TPersianDate{1399, 1, 1}.weekday()), 6) << "a Friday";
    EXPECT_EQ((TPersianDate{1399, 1, 2}.weekday()), 0) << "a Saturday";
    EXPECT_EQ((TPersianDate{1403, 1, 1}.weekday()), 4) << "a Wednesday";
}

TEST(PersianCalendar, DaysAreAddedOverTheEndsOfMonthsAndYears)
{
    EXPECT_EQ((TPersianDate{1403, 12, 30}.addDays(1)), (TPersianDate{1404, 1, 1}));
    EXPECT_EQ((TPersianDate{1404, 1, 1}.addDays(-1)), (TPersianDate{1403, 12, 30}));
    EXPECT_EQ((TPersianDate{1404, 6, 31}.addDays(1)), (TPersianDate{1404, 7, 1}));
    EXPECT_EQ((TPersianDate{1404, 1, 1}.addDays(365)), (TPersianDate{1405, 1, 1}));
}

TEST(PersianCalendar, ADateIsWrittenWithTwoDigitsForMonthAndDay)
{
    EXPECT_EQ((TPersianDate{1404, 1, 5}.toText()), "1404/01/05");
}

TEST(PersianCalendar, TodayAndTheTimeOfDayAreTexts)
{
    // Around midnight the day may turn between two readings.
    const TPersianDate before = TPersianDate::fromGregorian(QDate::currentDate());
    const QString now = NowDate();
    const TPersianDate after = TPersianDate::fromGregorian(QDate::currentDate());
    EXPECT_TRUE(now == before.toText() || now == after.toText());
    EXPECT_EQ(parsed(now.toUtf8().constData()).value().toText(), now);
    EXPECT_TRUE(QRegularExpression("^([01]\\d|2[0-3]):[0-5]\\d$").match(NowTime()).hasMatch());
}
