#include "ScriptedLine.h"

#include "host/database/AnswerWait.h"
#include "host/database/ServerEngine.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Gives a wait up once the line has a text, as a user does who presses Esc.
class ImpatientWait : public TAnswerWait {
public:
    explicit ImpatientWait(LineScript &script) : m_script(script) { SetUsualAnswerWait(this); }
    ~ImpatientWait() override { SetUsualAnswerWait(nullptr); }
    void giveUpAt(const QString &text) { m_text = text; }
    void wait(TAwaited &awaited) override
    {
        ++waits;
        while (!awaited.wait(5)) {
            if (!m_text.isEmpty() && !m_script.texts().filter(m_text, Qt::CaseInsensitive).isEmpty())
                awaited.giveUp();
        }
    }
    int waits = 0;

private:
    LineScript &m_script;
    QString m_text;
};

// The server's engine with its thread, on the driver of SQLite.
class ServerEngine : public testing::Test {
protected:
    void SetUp() override
    {
        script = std::make_shared<LineScript>();
        engine = std::make_unique<TServerEngine>(
            std::make_unique<ScriptedLine>(folder.filePath("line.db"), script));
        run("create table Person(ID integer primary key autoincrement, Name varchar(50))");
        run("create table Coded(Code integer not null, Title varchar(50), primary key(Code))");
        other = std::make_unique<SqliteDriverEngine>(folder.filePath("line.db"));
    }
    void TearDown() override
    {
        script->speak();
        other.reset();
        engine.reset();
    }
    int run(const QString &sql) { return engine->execute({sql, {}, {}}); }
    qlonglong insertPerson(const QString &name)
    {
        return engine->insert({u"insert into [Person]([Name]) values(?)"_s, {name}, {}});
    }
    void insertCoded(int code)
    {
        engine->insert({u"insert into [Coded]([Code],[Title]) values(?,?)"_s, {code, u"t"_s}, {}});
    }
    // As somebody else sees it.
    int count(const QString &table)
    {
        const auto cursor = other->select({u"select count(*) from "_s + table, {}, {}});
        return cursor->next() ? cursor->value(0).toInt() : -1;
    }
    static TFault faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            EXPECT_FALSE(error.userText().isEmpty());
            return error.fault();
        }
        ADD_FAILURE() << "no error";
        return TFault::Other;
    }

    QTemporaryDir folder;
    std::shared_ptr<LineScript> script;
    std::unique_ptr<TServerEngine> engine;
    std::unique_ptr<TEngine> other;
};

TEST_F(ServerEngine, RowsComeInTheirOrderHoweverManyTheyAre)
{
    engine->begin();
    run("insert into Coded(Code,Title) with recursive N(C) as (select 1 union all select C+1 from N where "
        "C<10000) select C, 't' from N");
    engine->commit();
    const auto cursor = engine->select({"select Code, Title from Coded order by Code", {}, {}});
    ASSERT_EQ(cursor->fields().size(), 2);
    int expected = 0;
    while (cursor->next())
        ASSERT_EQ(cursor->value(0).toInt(), ++expected);
    EXPECT_EQ(expected, 10000);
    EXPECT_FALSE(cursor->next());
}

TEST_F(ServerEngine, AStatementRunsWhileRowsAreStillToCome)
{
    run("insert into Coded(Code,Title) with recursive N(C) as (select 1 union all select C+1 from N where C<1000) "
        "select C, 't' from N");
    const auto cursor = engine->select({"select Code from Coded order by Code", {}, {}});
    ASSERT_TRUE(cursor->next());
    insertPerson("a");
    int rows = 1;
    while (cursor->next())
        ++rows;
    EXPECT_EQ(rows, 1000);
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(ServerEngine, FaultsComeToTheCallerAsTheyWere)
{
    insertCoded(1);
    EXPECT_EQ(faultOf([&] { insertCoded(1); }), TFault::Refused);
    try {
        engine->select({"selec 1", {}, {}});
        ADD_FAILURE() << "no error";
    } catch (const TDatabaseError &error) {
        EXPECT_TRUE(error.detail().contains("syntax")) << error.what();
        EXPECT_EQ(error.statement(), "selec 1");
    }
    insertCoded(2);
    EXPECT_EQ(count("Coded"), 2);
}

TEST_F(ServerEngine, AnOpeningThatFailsSaysWhy)
{
    const auto open = [&] {
        TServerEngine(std::make_unique<ScriptedLine>(folder.filePath("none/line.db"), script))
            .select({"select 1 from Nothing", {}, {}});
    };
    EXPECT_NE(faultOf(open), TFault::GivenUp);
}

TEST_F(ServerEngine, ALongStatementIsCancelledAndTheLineStays)
{
    ImpatientWait wait(*script);
    wait.giveUpAt("with recursive Endless");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(faultOf([&] {
                  engine->select({"with recursive Endless(N) as (select 1 union all select N+1 from Endless) "
                                  "select max(N) from Endless",
                                  {},
                                  {}});
              }),
              TFault::GivenUp);
    EXPECT_LT(timer.elapsed(), 2000); // the driver ended it; the line was not left
    wait.giveUpAt({});
    insertCoded(1);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(ServerEngine, ASilentLineIsLeftTwoSecondsAfterItWasGivenUp)
{
    ImpatientWait wait(*script);
    script->silenceAt("select 17");
    wait.giveUpAt("select 17");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(faultOf([&] { engine->select({"select 17", {}, {}}); }), TFault::GivenUp);
    EXPECT_GE(timer.elapsed(), 1900);
    EXPECT_LT(timer.elapsed(), 4000);
    wait.giveUpAt({});
    script->silenceAt("nothing any more");
    insertCoded(1);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(ServerEngine, ATransactionThatWasGivenUpRefusesWhatFollowsUntilItIsRolledBack)
{
    ImpatientWait wait(*script);
    engine->begin();
    insertCoded(1);
    script->silenceAt("select 17");
    wait.giveUpAt("select 17");
    EXPECT_EQ(faultOf([&] { engine->select({"select 17", {}, {}}); }), TFault::GivenUp);
    wait.giveUpAt({});
    EXPECT_TRUE(engine->inTransaction());
    EXPECT_EQ(faultOf([&] { insertCoded(2); }), TFault::GivenUp);
    EXPECT_EQ(faultOf([&] { engine->commit(); }), TFault::GivenUp);
    EXPECT_FALSE(engine->inTransaction());
    script->speak(); // the thread of the line that was left comes back, and must store nothing
    while (faultOf([&] {
               insertCoded(3);
               throw TDatabaseError(TFault::Other, "stored");
           }) != TFault::Other)
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // its lock on the file goes with the line
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(ServerEngine, AnInsertThatWasGivenUpIsNeverStoredLater)
{
    // A row under its own key is stored by its one request; one that is counted has its commit for itself.
    for (const char *at :
         {"begin transaction", "insert into [Coded]", "insert into [Person]", "commit transaction"}) {
        ImpatientWait wait(*script);
        const bool isCoded = QByteArray(at).contains("Coded");
        const char *table = isCoded ? "Coded" : "Person";
        const int before = count(table);
        auto fresh = std::make_shared<LineScript>();
        TServerEngine save(std::make_unique<ScriptedLine>(folder.filePath("line.db"), fresh));
        ImpatientWait impatient(*fresh);
        fresh->silenceAt(QString::fromLatin1(at));
        impatient.giveUpAt(QString::fromLatin1(at));
        const auto insert = [&] {
            if (isCoded)
                save.insert({u"insert into [Coded]([Code],[Title]) values(?,?)"_s, {before + 1, u"t"_s}, {}});
            else
                save.insert({u"insert into [Person]([Name]) values(?)"_s, {u"t"_s}, {}});
        };
        EXPECT_EQ(faultOf(insert), TFault::GivenUp) << at;
        impatient.giveUpAt({});
        fresh->speak();
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // the old thread ends what it had begun
        EXPECT_EQ(count(table), before) << at;
        insert();
        EXPECT_EQ(count(table), before + 1) << at;
    }
}

TEST_F(ServerEngine, ASecondRequestWithinAWaitIsRefused)
{
    struct Nosy : TAnswerWait {
        explicit Nosy(TServerEngine *engine) : engine(engine) { SetUsualAnswerWait(this); }
        ~Nosy() override { SetUsualAnswerWait(nullptr); }
        void wait(TAwaited &awaited) override
        {
            if (!asked) {
                asked = true;
                fault = faultOf([this] { engine->execute({"delete from Coded", {}, {}}); });
            }
            TAnswerWait::wait(awaited);
        }
        TServerEngine *engine;
        bool asked = false;
        TFault fault = TFault::Other;
    } nosy(engine.get());
    insertCoded(1);
    EXPECT_EQ(nosy.fault, TFault::Waiting);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(ServerEngine, AReadForLaterIsDoneInItsTurnAndNobodyWaits)
{
    ImpatientWait wait(*script);
    const auto rows = std::make_shared<std::atomic<int>>(0);
    const auto fault = std::make_shared<std::atomic<int>>(-1);
    script->silenceAt("from Coded");
    engine->readLater({{"select Code from Coded", {}, {}},
                       [rows](TCursor &cursor) {
                           while (cursor.next())
                               ++*rows;
                       },
                       [fault](const std::optional<TDatabaseError> &error) { *fault = error ? 1 : 0; }});
    EXPECT_EQ(wait.waits, 0);
    EXPECT_TRUE(script->waitFor("from Coded"));
    EXPECT_EQ(*fault, -1);
    script->speak();
    insertPerson("a"); // comes after it
    EXPECT_EQ(*fault, 0);
}

TEST_F(ServerEngine, AnEngineGoesWhileItsLineIsSilent)
{
    script->silenceAt("select 17");
    const auto failed = std::make_shared<std::atomic<bool>>(false);
    engine->readLater(
        {{"select 17", {}, {}},
         [](TCursor &) {},
         [failed](const std::optional<TDatabaseError> &error) { *failed = error.has_value(); }});
    ASSERT_TRUE(script->waitFor("select 17"));
    QElapsedTimer timer;
    timer.start();
    engine.reset();
    EXPECT_LT(timer.elapsed(), 4000);
    script->speak();
    for (int i = 0; i < 500 && !*failed; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_TRUE(*failed);
}

} // namespace
