#include "Things.h"

#include "host/database/Engine.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

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
    query.setValue("Title", u"abcd\U0001F600"_s);
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
