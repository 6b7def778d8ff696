#include "host/database/Engine.h"
#include "host/database/Query.h"
#include "support/TestDatabase.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>

namespace {

class QueryTest : public testing::Test {
protected:
    QueryTest()
    {
        db.run(
            "create table Thing(Code INT NOT NULL PRIMARY KEY, Title NVARCHAR(5), Amount FLOAT, Active BIT)");
        db.run("create table Line(ID INT IDENTITY(1,1) PRIMARY KEY, ThingCode INT, Name NVARCHAR(50))");
    }
    void fill(int count)
    {
        db.connection().BeginTrans();
        for (int i = 1; i <= count; ++i)
            db.connection().execute(TStatement("insert into Thing(Code,Title,Amount,Active) values(")
                                        .integer(i * 2)
                                        .sql(",")
                                        .text(QString::number(i))
                                        .sql(",")
                                        .amount(i / 2.0)
                                        .sql(",1)"));
        db.connection().CommitTrans();
    }
    void openAll(const char *sql = "select * from Thing order by Code")
    {
        query.setStatement(sql);
        query.open();
    }

    TestDatabase db;
    TQuery query{&db.connection(), QStringLiteral("Get_QUR")};
};

} // namespace

TEST_F(QueryTest, AnEmptyResultHasNoCurrentRow)
{
    openAll();
    EXPECT_TRUE(query.active());
    EXPECT_TRUE(query.isEmpty());
    EXPECT_TRUE(query.eof());
    EXPECT_EQ(query.position(), -1);
    EXPECT_TRUE(query.value("Title").isNull());
    EXPECT_THROW(query.value("Nothing"), TDatabaseError);
    EXPECT_THROW(query.edit(), TDatabaseError);
}

TEST_F(QueryTest, FieldsAreFoundWithoutRegardToCase)
{
    fill(1);
    openAll();
    EXPECT_EQ(query.asString("tITLE"), "1");
    EXPECT_EQ(query.fieldIndex("AMOUNT"), 2);
    EXPECT_EQ(query.fieldIndex("nothing"), -1);
    EXPECT_TRUE(query.asBoolean("Active"));
    EXPECT_EQ(query.asFloat("Amount"), 0.5);
}

TEST_F(QueryTest, TheRowsNumberIsAColumnThatIsNeverBelowOne)
{
    openAll();
    EXPECT_EQ(query.value("Row"), 1);
    fill(3);
    openAll();
    EXPECT_EQ(query.asInteger("row"), 1);
    query.last();
    EXPECT_EQ(query.asInteger("Row"), 3);
    openAll("select Code as Row from Thing order by Code"); // a column of the result's own comes first
    EXPECT_EQ(query.asInteger("Row"), 2);
    query.close();
    EXPECT_THROW(query.value("Row"), TDatabaseError);
}

TEST_F(QueryTest, GoingThroughTheRowsEndsBehindTheLastOne)
{
    fill(3);
    openAll();
    QStringList seen;
    for (query.first(); !query.eof(); query.next())
        seen << query.asString("Code");
    EXPECT_EQ(seen, (QStringList{"2", "4", "6"}));
    EXPECT_EQ(query.position(), 2) << "the last row stays current";
    query.prior();
    EXPECT_EQ(query.asInteger("Code"), 4);
    EXPECT_FALSE(query.eof());
}

TEST_F(QueryTest, LocateFindsExactFoldedAndBeginningTexts)
{
    db.run(QString::fromUtf8("insert into Thing(Code,Title) values(1,'كي'),(2,'AB'),(3,'abc')"));
    openAll();
    EXPECT_FALSE(query.locate("Title", "ab"));
    EXPECT_TRUE(query.locate("Title", "ab", TQuery::CaseInsensitive));
    EXPECT_EQ(query.asInteger("Code"), 2);
    EXPECT_TRUE(query.locate("Title", "ab", TQuery::PartialKey));
    EXPECT_EQ(query.asInteger("Code"), 3) << "the second title begins with capitals";
    EXPECT_FALSE(query.locate("Title", "aB", TQuery::PartialKey));
    EXPECT_TRUE(query.locate("Title", "aB", TQuery::PartialKey | TQuery::CaseInsensitive));
    EXPECT_EQ(query.asInteger("Code"), 2);
    EXPECT_TRUE(query.locate("Title", QString::fromUtf8("ک"), TQuery::PartialKey));
    EXPECT_EQ(query.asInteger("Code"), 1);
    EXPECT_TRUE(query.locate("Title", QString::fromUtf8("کی"), TQuery::CaseInsensitive));
    EXPECT_EQ(query.asInteger("Code"), 1);
    EXPECT_FALSE(query.locate("Code", 9));
    EXPECT_EQ(query.asInteger("Code"), 1) << "not moved";
}

TEST_F(QueryTest, AnAppendedRowIsStoredByPostAndNotBefore)
{
    openAll();
    query.append();
    query.setValue("Code", 7);
    query.setValue("Title", "t");
    EXPECT_EQ(query.asInteger("Code"), 7) << "the row under edit is read";
    EXPECT_EQ(db.text("select count(*) from Thing"), "0");
    query.post();
    EXPECT_EQ(db.rows("select Code,Title,Active from Thing"), "7|t|");
    EXPECT_EQ(query.recordCount(), 1);
    EXPECT_EQ(query.asInteger("Code"), 7);
}

TEST_F(QueryTest, ACancelledRowLeavesNothing)
{
    fill(1);
    openAll();
    query.append();
    query.setValue("Code", 99);
    query.cancel();
    EXPECT_EQ(query.state(), TQuery::State::Browse);
    EXPECT_EQ(query.asInteger("Code"), 2);
    query.edit();
    query.setValue("Title", "x");
    query.cancel();
    EXPECT_EQ(db.text("select Title from Thing"), "1");
}

TEST_F(QueryTest, AnEditWritesTheSetColumnsOnly)
{
    fill(2);
    openAll();
    query.next();
    db.run("update Thing set Amount=77 where Code=4"); // somebody else's change of another column
    query.edit();
    query.setValue("Title", "new");
    db.clearTrace();
    query.post();
    EXPECT_EQ(db.trace(), QStringList{"update [Thing] set [Title]='new' where [Code]=4"});
    EXPECT_EQ(db.rows("select Code,Title,Amount from Thing order by Code"), "2|1|0.5\n4|new|77");
}

TEST_F(QueryTest, ATextIsCutToTheWidthOfItsColumn)
{
    openAll();
    query.append();
    query.setValue("Code", 1);
    query.setValue("Title", QString::fromUtf8("یکدوسهچهار"));
    query.post();
    EXPECT_EQ(db.text("select Title from Thing"), QString::fromUtf8("یکدوس"));
    EXPECT_EQ(query.asString("Title"), QString::fromUtf8("یکدوس")) << "the query shows what is stored";
}

TEST_F(QueryTest, TheCutNeverSplitsALetterBeyondTheBasicPlane)
{
    openAll();
    query.append();
    query.setValue("Code", 1);
    query.setValue("Title", QStringLiteral("abcd\U0001F600"));
    query.post();
    EXPECT_EQ(db.text("select Title from Thing"), "abcd");
}

TEST_F(QueryTest, AnAutoIncrementKeyIsReadBackAndNeverWritten)
{
    openAll("select * from Line");
    query.append();
    query.setValue("ID", 500);
    query.setValue("Name", "n");
    query.post();
    EXPECT_EQ(query.asInteger("ID"), 1);
    query.edit();
    query.setValue("Name", "m");
    query.post();
    EXPECT_EQ(db.rows("select ID,Name from Line"), "1|m");
}

TEST_F(QueryTest, ARefusedRowStaysUnderEditWithWhatWasTyped)
{
    fill(1);
    openAll();
    query.append();
    query.setValue("Code", 2);
    query.setValue("Title", "twin");
    try {
        query.post();
        FAIL() << "the key is taken";
    } catch (const TDatabaseError &error) {
        EXPECT_EQ(error.fault(), TFault::Refused);
        EXPECT_FALSE(error.userText().isEmpty());
    }
    EXPECT_EQ(query.state(), TQuery::State::Insert);
    EXPECT_EQ(query.asString("Title"), "twin");
    query.setValue("Code", 3);
    query.post();
    EXPECT_EQ(db.text("select Title from Thing where Code=3"), "twin");
}

TEST_F(QueryTest, EditingARowThatSomebodyDeletedTellsSo)
{
    fill(1);
    openAll();
    query.edit();
    query.setValue("Title", "x");
    db.run("delete from Thing");
    try {
        query.post();
        FAIL() << "the row is gone";
    } catch (const TDatabaseError &error) {
        EXPECT_EQ(error.fault(), TFault::RowGone);
    }
}

TEST_F(QueryTest, ANamedParameterIsBoundWhereverItStands)
{
    fill(3);
    query.setStatement("select * from Thing where Code=:Code or Code=:code+2 order by Code");
    query.setParam("CODE", 2);
    query.open();
    EXPECT_EQ(query.recordCount(), 2);
}

TEST_F(QueryTest, SettingTheStatementClosesTheQuery)
{
    openAll();
    QSignalSpy closed(&query, &TQuery::closed);
    query.setStatement("select 1 as One");
    EXPECT_FALSE(query.active());
    EXPECT_EQ(closed.count(), 1);
    query.open();
    EXPECT_EQ(query.asInteger("One"), 1);
}

TEST_F(QueryTest, AFailedOpenLeavesTheRowsThatWereThere)
{
    fill(2);
    openAll();
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_THROW(query.open(), TDatabaseError);
    EXPECT_EQ(query.recordCount(), 2);
}

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

// A search walks over its rows once: its last keys and the number before them.
TEST_F(ListTest, ASearchedListOfAnyLengthKnowsItsRows)
{
    fill(5000); // titles 1 to 5000
    for (const int rows : {0, 1, 2047, 2048, 2049, 5000}) {
        query.setStatement(TStatement("select * from (select * from Thing) as S where (charindex(")
                               .text("")
                               .sql(", Title) = 0) and (Code > ")
                               .integer(10000 - 2 * rows)
                               .sql(")"));
        query.open();
        ASSERT_EQ(query.recordCount(), rows);
        for (int row = rows - 1; row >= 0; row -= 97)
            ASSERT_EQ(query.keyAt(row), 10000 - 2 * (rows - 1 - row)) << rows;
        EXPECT_EQ(query.rowOfKey(10000), rows - 1);
        EXPECT_EQ(query.rowOfKey(10000 - 2 * rows), -1);
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

TEST_F(QueryTest, ARowIsWrittenThroughAView)
{
    // A view is made by a batch of its own.
    db.connection().engine().runScript(
        "create view LineView as select L.ID, L.Name, L.ThingCode, T.Title as ThingTitle "
        "from Line L left join Thing T on T.Code=L.ThingCode");
    fill(1);
    db.run("insert into Line(ThingCode,Name) values(2,'n')");
    openAll("select * from Line where ID=1");
    query.edit();
    query.setValue("Name", "m");
    query.post();
    EXPECT_EQ(db.rows("select Name,ThingTitle from LineView"), "m|1");
}

TEST_F(QueryTest, PicturesOfAListAreReadWhenTheyAreAskedFor)
{
    db.run("create table Face(Code INT NOT NULL PRIMARY KEY, Title NVARCHAR(5), Photo VARBINARY(MAX))");
    db.connection().execute(TStatement("insert into Face(Code,Title,Photo) values(1,'a',")
                                .value(QByteArray("\x01\x02"))
                                .sql(")"));
    db.run("insert into Face(Code,Title,Photo) values(2,'b',null)");
    query.setKeyField("Code");
    query.setStatement("select * from Face");
    query.open();
    db.clearTrace();
    EXPECT_EQ(query.asString("Title"), "a");
    ASSERT_EQ(db.trace().size(), 1);
    EXPECT_TRUE(db.trace()[0].contains("null as [Photo]"));
    EXPECT_EQ(query.value("Photo").toByteArray(), QByteArray("\x01\x02"));
    EXPECT_EQ(query.value("Photo").toByteArray(), QByteArray("\x01\x02"));
    EXPECT_EQ(db.trace().size(), 2); // once for the row, not once for each look
    query.next();
    EXPECT_TRUE(query.value("Photo").isNull());
    EXPECT_EQ(query.valueAt(0, query.fieldIndex("Photo")).toByteArray(), QByteArray("\x01\x02"));
    query.edit();
    query.setValue("Photo", QByteArray("\x03"));
    query.post();
    EXPECT_EQ(query.value("Photo").toByteArray(), QByteArray("\x03"));
    EXPECT_EQ(query.asString("Title"), "b");
}

TEST_F(QueryTest, ARowAppendedToALongListFindsItsPlace)
{
    fill(3000); // even codes
    for (const int code : {3001, 7001}) {
        query.setKeyField("Code");
        query.setStatement("select * from Thing");
        query.open();
        const int before = query.recordCount();
        query.append();
        query.setValue("Code", code);
        query.setValue("Title", "new");
        query.post();
        EXPECT_EQ(query.recordCount(), before + 1);
        EXPECT_EQ(query.asInteger("Code"), code);
        EXPECT_EQ(query.asString("Title"), "new");
        EXPECT_EQ(query.position(), code == 3001 ? 1500 : before);
        query.prior();
        EXPECT_LT(query.asInteger("Code"), code);
    }
}
