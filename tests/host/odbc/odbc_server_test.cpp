#include "host/database/Engine.h"
#include "support/TestServer.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

// What the engine promises on a real server. Without one these tests say that they did not run.
class OdbcServer : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestServer::available())
            return;
        database = std::make_unique<TestServer::Database>();
        auto engine = OpenOdbcEngine(database->connectionString());
        engine->runScript(
            u"create table Person(ID int identity(1,1) not null constraint PK_Person primary key, Name nvarchar(50) null,"
            " Amount decimal(23,9) null, Note nvarchar(max) null, Picture varbinary(max) null, Flag bit null,"
            " Kind smallint null, Big bigint null, Ratio float null)"_s);
        engine->runScript(
            u"create table Coded(Code int not null constraint PK_Coded primary key, Title nvarchar(50) null,"
            " constraint UQ_Coded unique(Title))"_s);
        engine->runScript(u"create table Part(ID int identity(1,1) not null primary key,"
                          " Code int not null constraint FK_Part_Coded references Coded(Code))"_s);
    }
    static void TearDownTestSuite() { database.reset(); }

    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        engine = OpenOdbcEngine(database->connectionString());
        engine->execute({u"delete from Part delete from Coded delete from Person"_s, {}, {}});
    }

    QVariantList row(const QString &sql, const QVariantList &values = {})
    {
        const auto cursor = engine->select({sql, values, {}});
        QVariantList result;
        if (cursor->next()) {
            for (qsizetype i = 0; i < cursor->fields().size(); ++i)
                result.append(cursor->value(int(i)));
        }
        return result;
    }
    QVariant one(const QString &sql, const QVariantList &values = {}) { return row(sql, values).value(0); }
    int run(const QString &sql, const QVariantList &values = {})
    {
        return engine->execute({sql, values, {}});
    }
    TFault faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            lastDetail = error.detail();
            return error.fault();
        }
        ADD_FAILURE() << "no error";
        return TFault::Other;
    }

    static std::unique_ptr<TestServer::Database> database;
    std::unique_ptr<TEngine> engine;
    QString lastDetail;
};
std::unique_ptr<TestServer::Database> OdbcServer::database;

TEST_F(OdbcServer, EveryLetterOfAFullColumnComesBack)
{
    const QString name = QString::fromUtf8("پچژگکیكيءئآ‌۱٣ ").repeated(4).left(50);
    ASSERT_EQ(name.size(), 50);
    run("insert into Person(Name) values(?)", {name});
    EXPECT_EQ(one("select Name from Person").toString(), name);
    EXPECT_EQ(one("select count(*) from Person where Name=?", {name}).toInt(), 1);
    EXPECT_EQ(
        one("select count(*) from Person where Name=?", {QString(name).replace(QChar(0x06cc), QChar(0x0649))})
            .toInt(),
        0);
}

TEST_F(OdbcServer, AnEmptyTextIsNoNull)
{
    run("insert into Person(Name,Note) values(?,?)", {u""_s, QVariant()});
    const QVariantList read = row("select Name, Note from Person where Name=? and Note is null", {u""_s});
    ASSERT_EQ(read.size(), 2);
    EXPECT_FALSE(read[0].isNull());
    EXPECT_EQ(read[0].toString(), "");
    EXPECT_FALSE(read[1].isValid());
}

TEST_F(OdbcServer, FifteenDigitsOfAnAmountComeBack)
{
    for (const double amount : {0.0, 150.0, -0.1, 12345678901234.1, 99999999999999.9, 0.123456789, 1e-9,
                                123456.789012345, -99999999999999.0}) {
        run("delete from Person");
        run("insert into Person(Amount) values(?)", {amount});
        EXPECT_EQ(one("select Amount from Person").toDouble(), amount);
        EXPECT_EQ(one("select count(*) from Person where Amount=?", {amount}).toInt(), 1) << amount;
    }
}

TEST_F(OdbcServer, ADecimalOfMoreDigitsComesAsItsText)
{
    run("insert into Person(Amount) values(12345678901234.123456789)");
    EXPECT_EQ(one("select Amount from Person").toString(), "12345678901234.123456789");
}

TEST_F(OdbcServer, NumbersAndFlagsComeAsWholeNumbers)
{
    run("insert into Person(Flag,Kind,Big,Ratio) values(?,?,?,?)",
        {true, -7, std::numeric_limits<qint64>::max(), 0.1});
    const QVariantList read = row("select Flag, Kind, Big, Ratio from Person where Flag=? and Big=?",
                                  {1, std::numeric_limits<qint64>::max()});
    ASSERT_EQ(read.size(), 4);
    EXPECT_EQ(read[0], QVariant(qlonglong(1)));
    EXPECT_EQ(read[1], QVariant(qlonglong(-7)));
    EXPECT_EQ(read[2], QVariant(qlonglong(std::numeric_limits<qint64>::max())));
    EXPECT_EQ(read[3], QVariant(0.1));
}

TEST_F(OdbcServer, ANullGoesIntoEveryColumn)
{
    run("insert into Person(Name,Amount,Note,Picture,Flag,Kind,Big,Ratio) values(?,?,?,?,?,?,?,?)",
        QVariantList(8, QVariant()));
    EXPECT_EQ(row("select Name,Amount,Note,Picture,Flag,Kind,Big,Ratio from Person"),
              QVariantList(8, QVariant()));
}

TEST_F(OdbcServer, LongTextsAndPicturesAreNotCut)
{
    const QString note = QString::fromUtf8("یادداشت بلند ").repeated(20000);
    QByteArray picture;
    for (int i = 0; i < 700000; ++i)
        picture.append(char(i * 7 + i / 256));
    run("insert into Person(Note,Picture,Kind) values(?,?,?)", {note, picture, 1});
    run("insert into Person(Note,Picture,Kind) values(?,?,?)", {note.left(4000), picture.left(8000), 2});
    run("insert into Person(Note,Picture,Kind) values(?,?,?)", {note.left(4001), picture.left(8001), 3});
    run("insert into Person(Note,Picture,Kind) values(?,?,?)", {note.left(2048), QByteArray(), 4});
    const auto cursor = engine->select({"select Kind, Note, Picture from Person order by Kind", {}, {}});
    const QList<QPair<int, int>> sizes{
        {int(note.size()), int(picture.size())}, {4000, 8000}, {4001, 8001}, {2048, 0}};
    for (const auto &size : sizes) {
        ASSERT_TRUE(cursor->next());
        EXPECT_TRUE(cursor->value(1).toString() == note.left(size.first)) << size.first;
        EXPECT_TRUE(cursor->value(2).toByteArray() == picture.left(size.second)) << size.second;
    }
    EXPECT_FALSE(cursor->next());
}

TEST_F(OdbcServer, NamedPlacesAndQuestionMarksTakeTheirValuesInOrder)
{
    const auto cursor =
        engine->select({"select ? as A, :Code as B, 'a?:Code' as C, [D?] , :code as E -- ? :Code\n"
                        "from (select 5 as [D?]) T /* ? */ where 1=?",
                        {u"x"_s, 1},
                        {{"code", 7}}});
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0).toString(), "x");
    EXPECT_EQ(cursor->value(1).toInt(), 7);
    EXPECT_EQ(cursor->value(2).toString(), "a?:Code");
    EXPECT_EQ(cursor->value(3).toInt(), 5);
    EXPECT_EQ(cursor->value(4).toInt(), 7);
}

TEST_F(OdbcServer, ACommandTellsItsAffectedRows)
{
    EXPECT_EQ(run("insert into Coded(Code,Title) select 1,'a' union all select 2,'b' union all select 3,'c'"),
              3);
    EXPECT_EQ(run("update Coded set Title=Title+? where Code>?", {u"x"_s, 1}), 2);
    EXPECT_EQ(run("delete from Coded where Code=?", {9}), 0);
    EXPECT_EQ(run("delete from Coded where Code=? delete from Coded where Code>=? -- the last", {1, 2}), 2);
}

TEST_F(OdbcServer, ABatchIsDoneAsAWholeOrNotAtAll)
{
    run("insert into Coded(Code,Title) values(1,'a')");
    EXPECT_EQ(faultOf([&] { run("delete from Coded insert into Coded(Code,Title) values(null,'b')"); }),
              TFault::Refused);
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 1);
    engine->begin();
    run("insert into Coded(Code,Title) values(2,'b')");
    EXPECT_EQ(faultOf([&] { run("delete from Coded insert into Coded(Code,Title) values(null,'b')"); }),
              TFault::Refused);
    engine->commit();
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 2);
}

TEST_F(OdbcServer, AnInsertAnswersItsKey)
{
    const qlonglong first = engine->insert({"insert into [Person]([Name]) values(?)", {u"a"_s}, {}});
    const qlonglong second = engine->insert({"insert into [Person]([Name]) values(?)", {u"b"_s}, {}});
    EXPECT_GT(first, 0);
    EXPECT_EQ(second, first + 1);
    EXPECT_EQ(one("select Name from Person where ID=?", {second}).toString(), "b");
    EXPECT_EQ(engine->insert({"insert into [Coded]([Code],[Title]) values(?,?)", {5, u"t"_s}, {}}), 0);
}

TEST_F(OdbcServer, ATableIsDescribed)
{
    const TTableInfo *person = engine->table("person");
    ASSERT_TRUE(person);
    EXPECT_EQ(person->name.toLower(), "person");
    EXPECT_EQ(person->keys, QStringList{"ID"});
    ASSERT_EQ(person->columns.size(), 9);
    EXPECT_EQ(person->columns[0].name, "ID");
    EXPECT_TRUE(person->columns[0].autoIncrement);
    EXPECT_TRUE(person->columns[0].readOnly);
    EXPECT_EQ(person->columns[1].width, 50);
    EXPECT_FALSE(person->columns[1].autoIncrement);
    EXPECT_EQ(person->columns[3].width, 0);
    EXPECT_EQ(engine->table("Coded")->keys, QStringList{"Code"});
    EXPECT_FALSE(engine->table("NoSuchTable"));
}

TEST_F(OdbcServer, ColumnsOfAResultHaveNameAndWidth)
{
    const auto cursor = engine->select({"select Name, ID, Note, Amount*2 as Twice from Person", {}, {}});
    ASSERT_EQ(cursor->fields().size(), 4);
    EXPECT_EQ(cursor->fields()[0].name, "Name");
    EXPECT_EQ(cursor->fields()[0].width, 50);
    EXPECT_EQ(cursor->fields()[2].width, 0);
    EXPECT_EQ(cursor->fields()[3].name, "Twice");
    EXPECT_FALSE(cursor->next());
}

TEST_F(OdbcServer, AnotherStatementRunsWhileACursorIsOpen)
{
    run("insert into Coded(Code,Title) select 1,'a' union all select 2,'b' union all select 3,'c'");
    const auto cursor = engine->select({"select Code from Coded order by Code", {}, {}});
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 3);
    EXPECT_EQ(cursor->value(0).toInt(), 1);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0).toInt(), 2);
    run("delete from Coded");
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0).toInt(), 3);
    EXPECT_FALSE(cursor->next());
}

TEST_F(OdbcServer, ACursorLeftEarlyFreesTheLine)
{
    run("insert into Coded(Code,Title) select 1,'a' union all select 2,'b' union all select 3,'c'");
    for (int i = 0; i < 20; ++i) {
        const auto cursor =
            engine->select({"select a.Code from Coded a, Coded b, Coded c order by 1", {}, {}});
        ASSERT_TRUE(cursor->next());
    }
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 3);
}

TEST_F(OdbcServer, RefusalsAreToldApart)
{
    run("insert into Coded(Code,Title) values(1,'a')");
    EXPECT_EQ(faultOf([&] { run("insert into Coded(Code,Title) values(1,'b')"); }), TFault::Refused);
    EXPECT_EQ(faultOf([&] { run("insert into Coded(Code,Title) values(2,'a')"); }), TFault::Refused);
    EXPECT_EQ(faultOf([&] { run("insert into Coded(Code) values(null)"); }), TFault::Refused);
    EXPECT_EQ(faultOf([&] { run("insert into Part(Code) values(77)"); }), TFault::Refused);
    run("insert into Part(Code) values(1)");
    EXPECT_EQ(faultOf([&] { run("delete from Coded"); }), TFault::Refused);
    EXPECT_EQ(faultOf([&] { run("insert into Coded(Code,Title) values(2,?)", {QString(51, 'x')}); }),
              TFault::TooLong);
    EXPECT_EQ(faultOf([&] { run("selec * from Coded"); }), TFault::BadStatement);
    EXPECT_EQ(faultOf([&] { one("select Nothing from Coded"); }), TFault::BadStatement);
    EXPECT_EQ(faultOf([&] { one("select * from Nothing"); }), TFault::BadStatement);
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 1);
}

TEST_F(OdbcServer, ARefusedStatementLeavesTheTransactionToItsOwner)
{
    engine->begin();
    run("insert into Coded(Code,Title) values(1,'a')");
    EXPECT_EQ(faultOf([&] { run("insert into Coded(Code,Title) values(1,'b')"); }), TFault::Refused);
    EXPECT_TRUE(engine->inTransaction());
    run("insert into Coded(Code,Title) values(2,'b')");
    engine->commit();
    EXPECT_FALSE(engine->inTransaction());
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 2);
    engine->begin();
    run("delete from Coded");
    engine->rollback();
    EXPECT_EQ(one("select count(*) from Coded").toInt(), 2);
}

TEST_F(OdbcServer, AnotherUsersRowIsWaitedForOnlySoLong)
{
    run("insert into Coded(Code,Title) values(1,'a')");
    const auto other = OpenOdbcEngine(TestServer::with(database->connectionString(), "LockTimeout", "1"));
    engine->begin();
    run("update Coded set Title='b' where Code=1");
    EXPECT_EQ(faultOf([&] {
                  other->execute({"update Coded set Title='c' where Code=1", {}, {}});
              }),
              TFault::Locked);
    engine->commit();
    EXPECT_EQ(other->execute({"update Coded set Title='c' where Code=1", {}, {}}), 1);
}

TEST_F(OdbcServer, ADecimalOfTheServerNeedsNoLocale)
{
    EXPECT_EQ(one("select cast(0.5 as decimal(10,3))"), QVariant(0.5));
    EXPECT_EQ(one("select cast(-12 as decimal(10,0))"), QVariant(qlonglong(-12)));
}

} // namespace
