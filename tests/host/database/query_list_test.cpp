#include "Things.h"

#include <limits>

class ListTest : public QueryTest {
protected:
    ListTest() { query.setKeyField("Code"); }
};

TEST_F(ListTest, AListReadsKeysOnlyUntilARowIsAskedFor)
{
    fill(1000);
    query.setStatement("select * from Thing");
    db.clearTrace();
    query.open();
    query.last();
    EXPECT_EQ(query.recordCount(), 1000);
    EXPECT_EQ(query.keyAt(999), 2000);
    EXPECT_EQ(db.trace().size(), 1);
    EXPECT_EQ(query.asString("Title"), "1000");
    EXPECT_EQ(query.valueAt(998, query.fieldIndex("Title")).toString(), "999");
    EXPECT_EQ(db.trace().size(), 2) << "one page holds both";
}

TEST_F(ListTest, EveryRowOfEveryPageIsTheRightOne)
{
    fill(700);
    query.setStatement("select * from Thing");
    query.open();
    const int title = query.fieldIndex("Title");
    for (int row = 699; row >= 0; --row)
        ASSERT_EQ(query.valueAt(row, title).toInt(), row + 1);
}

TEST_F(ListTest, ALongListReadsItsLastKeysOnlyUntilTheUserGoesUp)
{
    fill(10000);
    query.setStatement("select * from Thing");
    query.open();
    EXPECT_EQ(query.recordCount(), 10000);
    EXPECT_EQ(query.keyAt(9999), 20000);
    EXPECT_EQ(query.rowOfKey(19990), 9994);
    EXPECT_EQ(query.rowOfKey(19991), -1);
    const int title = query.fieldIndex("Title");
    for (int row : {9999, 9800, 9600, 9488, 9487, 5000, 0, 9999})
        EXPECT_EQ(query.valueAt(row, title).toInt(), row + 1);
    EXPECT_EQ(query.rowOfKey(2), 0);
}

// A search walks over its rows once: its last keys and the number before them. Other conditions are counted.
TEST_F(ListTest, ASearchedListOfAnyLengthKnowsItsRows)
{
    fill(5000); // titles 1 to 5000
    const auto openAndCompare = [this](int rows, bool walking) {
        TStatement search = TStatement("select * from (select * from Thing) as S where (charindex(")
                                .text("")
                                .sql(", Title) = 0) and (Code > ")
                                .integer(10000 - 2 * rows)
                                .sql(")");
        if (walking)
            search.walking();
        query.setStatement(search);
        query.open();
        ASSERT_EQ(query.recordCount(), rows);
        for (int row = rows - 1; row >= 0; row -= 97)
            ASSERT_EQ(query.keyAt(row), 10000 - 2 * (rows - 1 - row)) << rows;
        EXPECT_EQ(query.rowOfKey(10000), rows - 1);
        EXPECT_EQ(query.rowOfKey(10000 - 2 * rows), -1);
    };
    for (const int rows : {0, 1, 2047, 2048, 2049, 5000}) {
        openAndCompare(rows, true);
        openAndCompare(rows, false);
    }
}

TEST_F(ListTest, AKeyThatIsNotInTheListIsNotLookedForInAllKeys)
{
    fill(5000);
    query.setStatement("select * from Thing");
    query.open();
    db.clearTrace();
    EXPECT_EQ(query.rowOfKey(101), -1);
    EXPECT_EQ(db.trace().size(), 1);
    EXPECT_EQ(query.rowOfKey(102), 50);
    EXPECT_EQ(db.trace().size(), 3) << "asked for, and then all keys read";
    EXPECT_EQ(query.rowOfKey(101), -1);
    EXPECT_EQ(db.trace().size(), 3);
}

TEST_F(ListTest, GoingUpRowByRowReadsSomeMoreKeysAndNotAll)
{
    fill(12000);
    for (const int deleted : {0, 7}) {
        query.setStatement("select * from Thing");
        query.open();
        db.run(QString("delete from Thing where Code<=%1").arg(2 * deleted));
        db.clearTrace();
        for (int row = 11999; row >= deleted; --row)
            ASSERT_EQ(query.keyAt(row), 2 * (row + 1));
        EXPECT_EQ(db.trace().size(), 2);
        for (int row = deleted - 1; row >= 0; --row)
            ASSERT_EQ(query.keyAt(row), std::numeric_limits<qlonglong>::min());
        EXPECT_EQ(query.rowOfKey(24000), 11999);
        EXPECT_EQ(query.rowOfKey(20), 9);
    }
}

TEST_F(ListTest, RowsThatWereSeenKeepTheirPlacesWhenOthersAddAndDelete)
{
    fill(5000);
    query.setStatement("select * from Thing");
    query.open();
    query.last();
    const int title = query.fieldIndex("Title");
    EXPECT_EQ(query.valueAt(4990, title).toString(), "4991");
    db.run("delete from Thing where Code<=20");
    db.run("insert into Thing(Code,Title) values(20000,'later')");
    EXPECT_EQ(query.keyAt(0), std::numeric_limits<qlonglong>::min()) << "ten places are empty";
    EXPECT_TRUE(query.valueAt(9, title).isNull());
    EXPECT_EQ(query.valueAt(10, title).toString(), "11");
    EXPECT_EQ(query.valueAt(4990, title).toString(), "4991");
    EXPECT_EQ(query.recordCount(), 5000);
    query.open();
    EXPECT_EQ(query.recordCount(), 4991);
}

TEST_F(ListTest, RowsThatWereAddedBeforeTheSeenOnesAreLeftOutUntilTheListIsReadAnew)
{
    fill(5000);
    query.setStatement("select * from Thing");
    query.open();
    db.run("insert into Thing(Code,Title) values(1,'new')");
    EXPECT_EQ(query.keyAt(0), 2);
    EXPECT_EQ(query.keyAt(4999), 10000);
    EXPECT_EQ(query.recordCount(), 5000);
}

TEST_F(ListTest, ARowIsFoundByItsKey)
{
    fill(300);
    query.setStatement("select * from Thing");
    query.open();
    EXPECT_EQ(query.rowOfKey(4), 1);
    EXPECT_EQ(query.rowOfKey(5), -1);
    query.setOrder("Amount", Qt::DescendingOrder);
    EXPECT_EQ(query.rowOfKey(600), 0);
    EXPECT_EQ(query.rowOfKey(4), 298);
    EXPECT_EQ(query.rowOfKey(5), -1);
}

TEST_F(ListTest, SortingByATextFollowsThePersianAlphabet)
{
    db.run(QString::fromUtf8(
        "insert into Thing(Code,Title) values(1,'هما'),(2,'پری'),(3,'گیو'),(4,'بابک'),(5,null),(6,'یلدا')"));
    query.setStatement("select * from Thing");
    query.setOrder("Title");
    query.open();
    QStringList codes;
    for (int row = 0; row < query.recordCount(); ++row)
        codes << QString::number(query.keyAt(row));
    EXPECT_EQ(codes, (QStringList{"5", "4", "2", "3", "1", "6"}));
    query.setOrder({});
    EXPECT_EQ(query.keyAt(0), 1);
}

TEST_F(ListTest, SortingByANumberIsNumerical)
{
    fill(12);
    query.setStatement("select * from Thing");
    query.setOrder("Amount", Qt::DescendingOrder);
    query.open();
    EXPECT_EQ(query.keyAt(0), 24);
    EXPECT_EQ(query.keyAt(11), 2);
}

TEST_F(ListTest, ARowThatWasDeletedMeanwhileIsEmptyAndDisturbsNoOther)
{
    fill(3);
    query.setStatement("select * from Thing");
    query.open();
    db.run("delete from Thing where Code=4");
    EXPECT_EQ(query.valueAt(0, query.fieldIndex("Title")).toString(), "1");
    EXPECT_TRUE(query.valueAt(1, query.fieldIndex("Title")).isNull());
    EXPECT_EQ(query.valueAt(2, query.fieldIndex("Title")).toString(), "3");
}

TEST_F(ListTest, AListIsSearchedInTheDatabase)
{
    fill(500);
    query.setStatement("select * from Thing");
    query.open();
    EXPECT_TRUE(query.locate("Title", "450"));
    EXPECT_EQ(query.position(), 449);
    EXPECT_TRUE(query.locate("Title", "30", TQuery::PartialKey));
    EXPECT_EQ(query.position(), 29);
    EXPECT_FALSE(query.locate("Title", "x"));
}

TEST_F(ListTest, AnEmptyListKnowsItsFields)
{
    query.setStatement("select * from Thing");
    query.open();
    EXPECT_EQ(query.fieldIndex("Title"), 1);
    EXPECT_EQ(query.fields()[1].width, 5);
}

TEST_F(ListTest, ARowIsEditedInItsPlace)
{
    fill(200);
    query.setStatement("select * from Thing");
    query.open();
    query.moveTo(150);
    query.edit();
    query.setValue("Title", "new");
    query.post();
    EXPECT_EQ(query.asString("Title"), "new");
    EXPECT_EQ(db.text("select Title from Thing where Code=302"), "new");
}
