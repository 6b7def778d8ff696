#include "calender/CalenderDays.h"

#include "host/Utility_ZLM/PersianCalendar.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

using namespace CalenderDays;

namespace {

QString text(const QList<TCalenderMapper> &days)
{
    QStringList lines;
    for (const TCalenderMapper &day : days)
        lines << u"%1 %2 %3 %4"_s.arg(day._Date).arg(day._Day).arg(day._Type).arg(day._Title);
    return lines.join(u'\n');
}

} // namespace

TEST(CalenderDays, TheFirstWeekOf1399)
{
    EXPECT_EQ(text(of({1399, 1, 1, 1399, 1, 7, 0, 6, "t", "c"})), u"1399/01/01 0 3 عيد نوروز\n"
                                                                  u"1399/01/02 1 3 عيد نوروز\n"
                                                                  u"1399/01/03 2 3 عيد نوروز\n"
                                                                  u"1399/01/04 3 3 عيد نوروز\n"
                                                                  u"1399/01/05 4 1 t\n"
                                                                  u"1399/01/06 5 1 t\n"
                                                                  u"1399/01/07 6 2 t"_s);
}

TEST(CalenderDays, AHolidayComesBeforeTheWeekEnd)
{
    // 1399/01/13 as a Friday: an official holiday all the same.
    const auto days = of({1399, 1, 13, 1399, 1, 13, 6, 6, "t", "c"});
    ASSERT_EQ(days.size(), 1);
    EXPECT_EQ(days[0]._Type, 3);
    EXPECT_EQ(days[0]._Title, u"روز طبيعت"_s);
    EXPECT_EQ(days[0]._Comment, "c");
}

TEST(CalenderDays, TheFixedHolidaysAreTheTenOfTheYear)
{
    QStringList found;
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= 31; ++day)
            if (!fixedHoliday(month, day).isNull())
                found << u"%1/%2 %3"_s.arg(month).arg(day).arg(fixedHoliday(month, day));
    EXPECT_EQ(found, (QStringList{u"1/1 عيد نوروز"_s, u"1/2 عيد نوروز"_s, u"1/3 عيد نوروز"_s,
                                  u"1/4 عيد نوروز"_s, u"1/12 روز جمهوري اسلامي ايران"_s, u"1/13 روز طبيعت"_s,
                                  u"3/14 رحلت حضرت امام خميني ( ره )"_s, u"3/15 قيام خونين 15 خرداد"_s,
                                  u"11/22 پيروزي انقلاب اسلامي"_s, u"12/29 روز ملي شدن صنعت نفت ايران"_s}));
}

TEST(CalenderDays, EverySingleYearFrom1395To1420HasItsRealWeekdays)
{
    // Counted by hand from one known day and the official leap years: 1395/01/01 was a Sunday.
    const QSet<int> leapYears = {1395, 1399, 1403, 1408, 1412, 1416, 1420};
    int weekday = 1;
    for (int year = 1395; year <= 1420; ++year) {
        const bool leap = leapYears.contains(year);
        const auto days = of({year, 1, 1, year, 12, leap ? 30 : 29, weekday, 6, "t", "c"});
        ASSERT_EQ(days.size(), leap ? 366 : 365) << year;
        QSet<QString> dates;
        for (const TCalenderMapper &day : days) {
            const auto real = TPersianDate::parse(day._Date);
            ASSERT_TRUE(real) << day._Date.toStdString();
            EXPECT_EQ(day._Date, real->toText());
            EXPECT_EQ(day._Day, real->weekday()) << day._Date.toStdString();
            dates.insert(day._Date);
        }
        EXPECT_EQ(dates.size(), days.size());
        weekday = (weekday + int(days.size())) % 7;
    }
}

TEST(CalenderDays, TheSameMonthBoundsHoldInEveryYear)
{
    const auto days = of({1399, 2, 30, 1400, 3, 2, 0, 6, "t", "c"});
    EXPECT_EQ(text(days).split('\n').size(), 8);
    EXPECT_EQ(days.first()._Date, "1399/02/30");
    EXPECT_EQ(days.at(1)._Date, "1399/02/31");
    EXPECT_EQ(days.at(3)._Date, "1399/03/02");
    EXPECT_EQ(days.at(4)._Date, "1400/02/30"); // the first day bounds the second year too
    EXPECT_EQ(days.at(4)._Day, 4);             // and the weekdays run on
    EXPECT_EQ(days.last()._Date, "1400/03/02");
}

TEST(CalenderDays, ARangeWhoseToMonthIsBeforeItsFromMonthHasNoDays)
{
    EXPECT_TRUE(of({1399, 10, 1, 1400, 3, 1, 0, 6, "t", "c"}).isEmpty());
}

TEST(CalenderDays, TwoYearsTakeTheirLastDayFromTheToDate)
{
    const auto days = of({1398, 12, 28, 1399, 12, 30, 0, 6, "t", "c"});
    EXPECT_EQ(days.size(), 6);
    EXPECT_EQ(days.at(2)._Date, "1398/12/30"); // 1398 has no such day: the rule is the program's own
    EXPECT_EQ(days.last()._Date, "1399/12/30");
}

TEST(CalenderDays, MonthsHave31DaysAndFrom7On30)
{
    const auto days = of({1400, 1, 1, 1400, 12, 1, 0, 6, "t", "c"});
    EXPECT_EQ(days.size(), 6 * 31 + 5 * 30 + 1);
    EXPECT_EQ(days.at(30)._Date, "1400/01/31");
    EXPECT_EQ(days.at(31)._Date, "1400/02/01");
    EXPECT_EQ(days.at(6 * 31 + 29)._Date, "1400/07/30");
    EXPECT_EQ(days.at(6 * 31 + 30)._Date, "1400/08/01");
}

TEST(CalenderDays, TheNamesStandInTheOrderOfTheColumn)
{
    EXPECT_EQ(weekdays(), (QStringList{u"شنبه"_s, u"يکشنبه"_s, u"دوشنبه"_s, u"سه شنبه"_s, u"چهار شنبه"_s,
                                       u"پنجشنبه"_s, u"جمعه"_s}));
}

TEST(CalenderDays, AWholeYearWithItsRealWeekdaysRaisesNoDoubt)
{
    for (int year = 1395; year <= 1420; ++year) {
        const int last = TPersianDate::daysInMonth(year, 12);
        const Range range{year, 1, 1, year, 12, last, TPersianDate{year, 1, 1}.weekday(), 6, "t", "c"};
        EXPECT_EQ(doubts(range, of(range)).join(u'|').toStdString(), "") << year;
    }
    EXPECT_TRUE(doubts({1399, 10, 1, 1400, 3, 1, 0, 6, "t", "c"}, {}).isEmpty());
}

TEST(CalenderDays, DoubtsTellWeekdaysDatesAndGaps)
{
    const auto count = [](const Range &range) { return doubts(range, of(range)).size(); };
    EXPECT_EQ(count({1404, 1, 1, 1404, 1, 7, 0, 6, "t", "c"}), 1) << "the weekday";
    // The whole of two years, the first one leap: its last day is left out, and the weekdays behind it are one off.
    EXPECT_EQ(count({1399, 1, 1, 1400, 12, 29, 6, 6, "t", "c"}), 2);
    // A day that is none, and the weekdays behind it one off.
    EXPECT_EQ(count({1402, 1, 1, 1403, 12, 30, 3, 6, "t", "c"}), 2);
}

TEST(CalenderDays, TheRestBeginsWithTheDayThatIsMissingAndItsWeekday)
{
    const Range range{1402, 3, 5, 1402, 8, 20, 0, 6, "t", "c"};
    const auto days = of(range);
    for (qsizetype stored = 1; stored < days.size(); ++stored) {
        const Rest left = rest(range, days, stored);
        EXPECT_EQ(left.from, days[stored]._Date);
        EXPECT_EQ(left.to, "1402/08/20");
        EXPECT_TRUE(left.laterFrom.isEmpty());
        const auto from = TPersianDate::parse(left.from);
        const auto again = of({from->year, from->month, from->day, 1402, 8, 20, left.startDay, 6, "t", "c"});
        ASSERT_EQ(again.size(), days.size() - stored);
        for (qsizetype i = 0; i < again.size(); ++i) {
            EXPECT_EQ(again[i]._Date, days[stored + i]._Date);
            EXPECT_EQ(again[i]._Day, days[stored + i]._Day);
        }
    }
}
