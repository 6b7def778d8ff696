#include "calender/Calender_DM_UNT.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

class CalenderData : public testing::Test {
protected:
    TestDatabase db;
    TCalender_DM dm{nullptr};

    void day(const QString &date, int weekday, int type = 1, const QString &title = "t")
    {
        ASSERT_TRUE(dm.Calender_Insert({title, date, weekday, type, "c"}));
    }
    int id(const QString &date)
    {
        return db.text(QString("select ID from Calender where Date='%1'").arg(date)).toInt();
    }
    int found(const QString &from, const QString &to)
    {
        dm.Calender_GetWithDates(from, to);
        return dm.Temp_QUR->recordCount();
    }
};

TEST_F(CalenderData, ADayIsStoredAsGivenWithoutOneBeingLoaded)
{
    EXPECT_FALSE(dm.Get_QUR->active());
    day("1404/01/01", 6, 3, QString::fromUtf8("عيد 'نوروز'"));
    day("1404/01/02", 0);
    EXPECT_EQ(db.rows("select Date,Day,Type,Title,Comment from Calender order by Date"),
              QString::fromUtf8("1404/01/01|6|3|عيد 'نوروز'|c\n1404/01/02|0|1|t|c"));
}

TEST_F(CalenderData, TextsAreCutToTheirColumns)
{
    ASSERT_TRUE(dm.Calender_Insert({QString(50, QChar(0x0639)), "1404/01/01", 0, 1, QString(500, 'x')}));
    EXPECT_EQ(db.text("select Title from Calender"), QString(30, QChar(0x0639)));
    EXPECT_EQ(db.text("select Comment from Calender"), QString(50, 'x'));
}

TEST_F(CalenderData, ADayIsReadIntoTheRecord)
{
    day("1404/01/05", 3, 2, "title");
    TCalenderMapper read;
    dm.Calender_GetByID(id("1404/01/05"), read);
    EXPECT_EQ(read._Date, "1404/01/05");
    EXPECT_EQ(read._Day, 3);
    EXPECT_EQ(read._Type, 2);
    EXPECT_EQ(read._Title, "title");
    EXPECT_EQ(read._Comment, "c");
    dm.Calender_GetByID(9999, read);
    EXPECT_TRUE(dm.Get_QUR->isEmpty());
    EXPECT_EQ(read._Date, "");
}

TEST_F(CalenderData, AnUpdateNeverMovesADayToAnotherDateOrWeekday)
{
    day("1404/01/05", 3);
    TCalenderMapper changed;
    dm.Calender_GetByID(id("1404/01/05"), changed);
    EXPECT_TRUE(dm.Calender_Update({"new", "1390/12/29", 6, 3, "other"}));
    EXPECT_EQ(db.rows("select Date,Day,Type,Title,Comment from Calender"), "1404/01/05|3|3|new|other");
}

TEST_F(CalenderData, ADayDeletedMeanwhileAnswersFalseToItsUpdate)
{
    day("1404/01/05", 3);
    TCalenderMapper read;
    dm.Calender_GetByID(id("1404/01/05"), read);
    db.run("delete from Calender");
    EXPECT_FALSE(dm.Calender_Update(read));
    EXPECT_EQ(db.text("select count(*) from Calender"), "0");
}

TEST_F(CalenderData, ARangeHoldsItsEnds)
{
    for (int i = 4; i <= 7; ++i)
        day(QString("1404/01/0%1").arg(i), i);
    EXPECT_EQ(found("1404/01/05", "1404/01/06"), 2);
    EXPECT_EQ(found("1404/01/05", "1404/01/05"), 1);
    EXPECT_EQ(found("1404/01/08", "1404/12/29"), 0);
    EXPECT_EQ(found("1403/12/30", "1404/01/04"), 1);
    EXPECT_EQ(found("1404/01/07", "1404/01/04"), 0);
    db.clearTrace();
    dm.Calender_GetWithDates("1404/01/01", "o'clock");
    EXPECT_EQ(db.trace(),
              QStringList{"select Date from calender where Date>='1404/01/01' and Date<='o''clock'"});
}

TEST_F(CalenderData, ExactlyTheDaysAskedAreDeleted)
{
    for (int i = 1; i <= 5; ++i)
        day(QString("1404/01/0%1").arg(i), i);
    dm.Calender_del(QString("%1,%2,%3").arg(id("1404/01/01")).arg(id("1404/01/03")).arg(id("1404/01/05")));
    EXPECT_EQ(db.rows("select Date from Calender order by Date"), "1404/01/02\n1404/01/04");
    dm.Calender_del(QString::number(id("1404/01/02")));
    EXPECT_EQ(db.rows("select Date from Calender"), "1404/01/04");
}

TEST_F(CalenderData, TheListNamesWeekdaysAndTypes)
{
    for (int i = 0; i < 7; ++i)
        day(QString("1404/01/0%1").arg(i + 1), i, i % 3 + 1);
    dm.Calender_Get();
    EXPECT_FALSE(dm.List_QUR->active());
    EXPECT_FALSE(dm.List_QUR->statement().asText().contains('\n'));
    dm.List_QUR->open();
    QStringList seen;
    for (dm.List_QUR->first(); !dm.List_QUR->eof(); dm.List_QUR->next())
        seen << dm.List_QUR->asString("DayOfWeek") + '|' + dm.List_QUR->asString("TypeDay");
    EXPECT_EQ(seen,
              (QStringList{QString::fromUtf8("شنبه|روز کاري"), QString::fromUtf8("يکشنبه|روز تعطيل هفته"),
                           QString::fromUtf8("دوشنبه|روز تعطيل رسمي"), QString::fromUtf8("سه شنبه|روز کاري"),
                           QString::fromUtf8("چهار شنبه|روز تعطيل هفته"),
                           QString::fromUtf8("پنجشنبه|روز تعطيل رسمي"), QString::fromUtf8("جمعه|روز کاري")}));
}

TEST_F(CalenderData, TheListAsItIsMadeReadsTheSameRows)
{
    day("1404/01/01", 6, 3);
    EXPECT_TRUE(dm.List_QUR->statement().asText().contains("end as TypeDay \n \nfrom calender"));
    dm.List_QUR->open();
    EXPECT_EQ(dm.List_QUR->recordCount(), 1);
    EXPECT_EQ(dm.List_QUR->asString("DayOfWeek"), QString::fromUtf8("جمعه"));
    EXPECT_EQ(dm.List_QUR->keyAt(0), id("1404/01/01"));
    EXPECT_EQ(dm.List_QUR->asInteger("Row"), 1);
}

TEST_F(CalenderData, FaultsInWritesAnswerFalseAndReadsLetThemPass)
{
    db.failStatement(1);
    EXPECT_FALSE(dm.Calender_Insert({"t", "1404/01/01", 0, 1, ""}));
    day("1404/01/01", 0);
    db.failStatement(1, TFault::DiskFull);
    EXPECT_FALSE(dm.Calender_Insert({"t", "1404/01/02", 0, 1, ""}));
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::DiskFull);
    TCalenderMapper read;
    dm.Calender_GetByID(id("1404/01/01"), read);
    db.failStatement(1);
    EXPECT_FALSE(dm.Calender_Update({"other", {}, 0, 1, ""}));
    EXPECT_EQ(db.rows("select Date,Title from Calender"), "1404/01/01|t");

    db.failStatement(1);
    EXPECT_THROW(dm.Calender_GetByID(1, read), TDatabaseError);
    db.failStatement(1);
    EXPECT_THROW(dm.Calender_GetWithDates("1", "2"), TDatabaseError);
    db.failStatement(1);
    EXPECT_THROW(dm.Calender_del("1"), TDatabaseError);
}

TEST_F(CalenderData, MoreDaysThanAServerTakesAtOnceAreDeleted)
{
    db.connection().BeginTrans();
    for (int i = 0; i < 2500; ++i)
        day(QString::number(i), 0);
    db.connection().CommitTrans();
    const QStringList ids = db.rows("select ID from Calender order by ID").split('\n');
    db.clearTrace();
    dm.Calender_del(ids.mid(0, 2400).join(','));
    EXPECT_EQ(db.trace().size(), 3);
    EXPECT_EQ(db.rows("select ID from Calender order by ID"), ids.mid(2400).join('\n'));
}

} // namespace
