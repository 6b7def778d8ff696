#include "host/database/Engine.h"
#include "host/database/Schema.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const char fileOfChild[] = "KETEBIONPAP_SCHEMA_FILE";

class SchemaVersions : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path() const { return folder.filePath("suite.db"); }
    std::unique_ptr<TEngine> open() const { return OpenSqliteEngine(path()); }
    static QString text(TEngine &engine, const QString &sql)
    {
        const std::unique_ptr<TCursor> cursor = engine.select({sql, {}, {}});
        return cursor->next() ? cursor->value(0).toString() : u"nothing"_s;
    }
    static int version(TEngine &engine)
    {
        return text(engine, "select Version from SchemaVersion_TBL").toInt();
    }
    /// What a caller is told, if anything.
    static std::optional<TFault> faultOf(TEngine &engine, const QList<Schema::TStep> &steps = Schema::steps())
    {
        try {
            Schema::bringUpToDate(engine, steps);
            return {};
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
    }
    static QString objects(TEngine &engine)
    {
        return text(engine,
                    "select group_concat(type || ' ' || name || ' ' || ifnull(sql,''), char(10)) from "
                    "(select * from sqlite_master order by type, name)");
    }
};

TEST_F(SchemaVersions, ANewFileGetsEverything)
{
    const auto engine = open();
    EXPECT_EQ(faultOf(*engine), std::nullopt);
    EXPECT_EQ(version(*engine), Schema::version());
    EXPECT_EQ(text(*engine, "select Suite from SchemaVersion_TBL"), "Ketebionpap");
    EXPECT_EQ(text(*engine, "select count(*) from PayrollInfo"), "25");
    EXPECT_FALSE(engine->inTransaction());
}

TEST_F(SchemaVersions, ASecondOpeningChangesNothing)
{
    QString before;
    {
        const auto engine = open();
        Schema::bringUpToDate(*engine);
        engine->execute({"update PayrollInfo set Value='kept' where Code=6", {}, {}});
        before = objects(*engine);
    }
    const auto engine = open();
    EXPECT_EQ(faultOf(*engine), std::nullopt);
    EXPECT_EQ(faultOf(*engine), std::nullopt);
    EXPECT_EQ(objects(*engine), before);
    EXPECT_EQ(text(*engine, "select Value from PayrollInfo where Code=6"), "kept");
    EXPECT_EQ(text(*engine, "select count(*) from StaffGroup"), "1");
}

TEST_F(SchemaVersions, ANewerVersionIsRefusedAndLeftAlone)
{
    const auto engine = open();
    Schema::bringUpToDate(*engine);
    engine->execute({"update SchemaVersion_TBL set Version=?", {Schema::version() + 1}, {}});
    const QString before = objects(*engine);
    EXPECT_EQ(faultOf(*engine), TFault::NewerSchema);
    EXPECT_EQ(version(*engine), Schema::version() + 1);
    EXPECT_EQ(objects(*engine), before);
}

TEST_F(SchemaVersions, AnotherProgramsDatabaseIsRefusedAndLeftAlone)
{
    const auto engine = open();
    engine->runScript("create table Customer(Id INTEGER)");
    EXPECT_EQ(faultOf(*engine), TFault::OtherProgram);
    EXPECT_EQ(text(*engine, "select count(*) from sqlite_master"), "1");
    EXPECT_FALSE(engine->inTransaction());
}

TEST_F(SchemaVersions, AVersionTableOfAnotherSuiteIsRefused)
{
    const auto engine = open();
    engine->runScript("create table SchemaVersion_TBL(Suite TEXT, Version INT); "
                      "insert into SchemaVersion_TBL values('Other', 1)");
    EXPECT_EQ(faultOf(*engine), TFault::OtherProgram);
    EXPECT_EQ(text(*engine, "select Suite || Version from SchemaVersion_TBL"), "Other1");
}

TEST_F(SchemaVersions, OnlyTheStepsThatAreMissingRun)
{
    const auto engine = open();
    const int beforeTheRows = 4;
    const QList<Schema::TStep> steps = Schema::steps().first(beforeTheRows);
    EXPECT_EQ(faultOf(*engine, steps), std::nullopt);
    EXPECT_EQ(version(*engine), beforeTheRows);
    EXPECT_EQ(text(*engine, "select count(*) from PayrollInfo"), "0");
    EXPECT_EQ(faultOf(*engine), std::nullopt);
    EXPECT_EQ(version(*engine), Schema::version());
    EXPECT_EQ(text(*engine, "select count(*) from PayrollInfo"), "25");
}

TEST_F(SchemaVersions, WhoeverCouldSeeAListMayPrintItAfterTheRightToPrintCame)
{
    const auto engine = open();
    const int beforeTheRight = 7;
    EXPECT_EQ(faultOf(*engine, Schema::steps().first(beforeTheRight)), std::nullopt);
    engine->runScript(
        "insert into UserRight(UserCode, SoftwarePart, Permission) values"
        "(1,802,6),(1,802,1),(2,802,1),(3,815,2),(3,815,3),(4,804,6),(5,805,6),(5,805,4),(6,801,6),"
        "(7,804,6),(7,805,6),(8,806,4)");
    EXPECT_EQ(faultOf(*engine), std::nullopt);
    EXPECT_EQ(text(*engine,
                   "select group_concat(UserCode || '/' || SoftwarePart, ' ') from (select UserCode, "
                   "SoftwarePart from UserRight where Permission=4 order by 1, 2)"),
              "1/802 3/815 4/804 4/805 5/805 7/804 7/805 8/806");
    EXPECT_EQ(text(*engine, "select count(*) from UserRight where Permission<>4"), "10")
        << "and nothing went";
}

TEST_F(SchemaVersions, AStepThatFailsLeavesTheDatabaseAsItWasBeforeIt)
{
    const auto engine = open();
    Schema::bringUpToDate(*engine);
    engine->execute({"insert into StaffGroup(Code,Name) values(1,'a')", {}, {}});
    const QString before = objects(*engine);
    QList<Schema::TStep> steps = Schema::steps();
    const int next = Schema::version() + 1;
    steps.append({next, "create table Fresh (a nvarchar(5))\nGO\ndelete from StaffGroup where Code=1\nGO\n"
                        "insert into StaffGroup(Code,Name) values(0,'again')\n"});
    EXPECT_EQ(faultOf(*engine, steps), TFault::Refused);
    EXPECT_EQ(objects(*engine), before);
    EXPECT_EQ(version(*engine), Schema::version());
    EXPECT_EQ(text(*engine, "select count(*) from StaffGroup"), "2");
    EXPECT_FALSE(engine->inTransaction());
    // Mended, it runs.
    steps.last().script = "create table Fresh (a nvarchar(5))\n";
    EXPECT_EQ(faultOf(*engine, steps), std::nullopt);
    EXPECT_EQ(version(*engine), next);
}

TEST_F(SchemaVersions, AFirstStepThatFailsLeavesAnEmptyDatabase)
{
    const auto engine = open();
    EXPECT_TRUE(faultOf(*engine, {{1, "create table A (a int)\nGO\ncreate nonsense"}}));
    EXPECT_EQ(text(*engine, "select count(*) from sqlite_master"), "0");
    EXPECT_EQ(faultOf(*engine), std::nullopt) << "nothing marks it as another program's";
}

// One of the programs that open a new database together.
TEST(SchemaChild, DISABLED_OpensTheFileItIsGiven)
{
    const auto engine = OpenSqliteEngine(qEnvironmentVariable(fileOfChild));
    Schema::bringUpToDate(*engine);
}

TEST_F(SchemaVersions, ProgramsThatOpenANewFileAtOnceMakeOneSchema)
{
    qputenv(fileOfChild, path().toUtf8());
    std::vector<std::unique_ptr<QProcess>> programs;
    for (int i = 0; i < 4; ++i) {
        programs.push_back(std::make_unique<QProcess>());
        programs.back()->start(QCoreApplication::applicationFilePath(),
                               {"--gtest_also_run_disabled_tests", "--gtest_filter=SchemaChild.*"});
    }
    for (const auto &program : programs) {
        ASSERT_TRUE(program->waitForFinished(60000));
        EXPECT_EQ(program->exitCode(), 0) << program->readAllStandardOutput().toStdString();
    }
    qunsetenv(fileOfChild);
    const auto engine = open();
    EXPECT_EQ(version(*engine), Schema::version());
    EXPECT_EQ(text(*engine, "select count(*) from SchemaVersion_TBL"), "1");
    EXPECT_EQ(text(*engine, "select count(*) from PayrollInfo"), "25");
}

} // namespace
