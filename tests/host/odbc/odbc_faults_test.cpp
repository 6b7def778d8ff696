#include "host/database/Connection.h"
#include "host/database/Engine.h"
#include "host/database/OdbcConnectionString.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

// What happens when the server or the line fails. The line runs through the test, which cuts it.
class OdbcFaults : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestServer::available())
            return;
        database = std::make_unique<TestServer::Database>();
        const auto engine = OpenOdbcEngine(database->connectionString());
        engine->runScript(
            u"create table Person(ID int identity(1,1) not null constraint PK_Person primary key, Name nvarchar(50))"_s);
        engine->runScript(
            u"create table Coded(Code int not null constraint PK_Coded primary key, Title nvarchar(50))"_s);
    }
    static void TearDownTestSuite() { database.reset(); }

    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        direct = OpenOdbcEngine(database->connectionString());
        direct->execute({u"delete from Coded delete from Person"_s, {}, {}});
        proxy = std::make_unique<TestProxy>(database->connectionString());
        engine = OpenOdbcEngine(
            TestServer::with(TestServer::with(proxy->connectionString(), u"AnswerTimeout"_s, u"2"_s),
                             u"LoginTimeout"_s, u"2"_s));
    }
    void TearDown() override
    {
        engine.reset();
        proxy.reset();
        direct.reset();
    }

    int count(const QString &table, const QString &condition = u"1=1"_s)
    {
        const auto cursor =
            direct->select({u"select count(*) from %1 where %2"_s.arg(table, condition), {}, {}});
        return cursor->next() ? cursor->value(0).toInt() : -1;
    }
    qlonglong insertPerson(const QString &name)
    {
        return engine->insert({u"insert into [Person]([Name]) values(?)"_s, {name}, {}});
    }
    void insertCoded(int code)
    {
        engine->insert({u"insert into [Coded]([Code],[Title]) values(?,?)"_s, {code, u"t"_s}, {}});
    }
    TFault faultOf(const std::function<void()> &work)
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

    static std::unique_ptr<TestServer::Database> database;
    std::unique_ptr<TEngine> direct;
    std::unique_ptr<TestProxy> proxy;
    std::unique_ptr<TEngine> engine;
};
std::unique_ptr<TestServer::Database> OdbcFaults::database;

TEST_F(OdbcFaults, ALineLostWhileIdleIsConnectedAgainWithoutAWord)
{
    proxy->cut();
    proxy->restore();
    EXPECT_GT(insertPerson("a"), 0);
    proxy->cut();
    proxy->restore();
    EXPECT_TRUE(engine->select({"select Name from Person", {}, {}})->next());
    proxy->cut();
    proxy->restore();
    EXPECT_EQ(engine->execute({"update Person set Name='b'", {}, {}}), 1);
    EXPECT_EQ(count("Person", "Name='b'"), 1);
    proxy->cut();
    proxy->restore();
    EXPECT_TRUE(engine->table("Coded"));
}

TEST_F(OdbcFaults, WhileTheServerIsAwayEveryTryIsRefusedAndTheNextOneAfterItsReturnWorks)
{
    proxy->cut();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ConnectionLost);
        EXPECT_FALSE(engine->inTransaction());
    }
    proxy->restore();
    EXPECT_GT(insertPerson("a"), 0);
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ASaveThatTheServerNeverSawIsNotStoredAndTheNextTryStoresItOnce)
{
    proxy->cutBefore("insert into [Person]");
    EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ConnectionLost);
    proxy->restore();
    EXPECT_EQ(count("Person"), 0);
    insertPerson("a");
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ASaveCutAmidItsTransactionIsNotStored)
{
    proxy->cutAfter("insert into [Person]");
    EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ConnectionLost);
    proxy->restore();
    insertPerson("a");
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ASaveWhoseCommitGotNoAnswerIsNotStoredASecondTime)
{
    proxy->cutAfter("commit transaction");
    EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ConnectionLost);
    EXPECT_EQ(count("Person"), 1);
    proxy->restore();
    const qlonglong key = insertPerson("a");
    EXPECT_EQ(count("Person"), 1);
    EXPECT_EQ(count("Person", u"ID=%1"_s.arg(key)), 1);
    insertPerson("a"); // a second person of that name is another matter
    EXPECT_EQ(count("Person"), 2);
}

TEST_F(OdbcFaults, ACodedRecordWhoseInsertGotNoAnswerIsSavedByTheNextTry)
{
    proxy->cutAfter("insert into [Coded]");
    EXPECT_EQ(faultOf([&] { insertCoded(7); }), TFault::ConnectionLost);
    proxy->restore();
    insertCoded(7);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(OdbcFaults, WhatWasTypedSinceIsStoredInTheRecordWhoseInsertGotNoAnswer)
{
    proxy->cutAfter("insert into [Coded]");
    EXPECT_EQ(faultOf([&] { insertCoded(7); }), TFault::ConnectionLost);
    proxy->restore();
    engine->insert({u"insert into [Coded]([Code],[Title]) values(?,?)"_s, {7, u"new"_s}, {}});
    EXPECT_EQ(count("Coded"), 1);
    EXPECT_EQ(count("Coded", "Title='new'"), 1);
    EXPECT_EQ(faultOf([&] { insertCoded(7); }), TFault::Refused); // the code is another record's by now
}

TEST_F(OdbcFaults, ACommitThatNeverReachedTheServerIsMadeAgain)
{
    proxy->cutBefore("commit transaction");
    EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ConnectionLost);
    proxy->restore();
    insertPerson("a");
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ATransactionWhoseLineIsLostRefusesWhatFollowsUntilItIsRolledBack)
{
    engine->begin();
    insertCoded(1);
    proxy->cut();
    proxy->restore();
    EXPECT_EQ(faultOf([&] { insertCoded(2); }), TFault::ConnectionLost);
    // The line would be there again, but the rest of the transaction must not be stored alone.
    EXPECT_EQ(faultOf([&] { insertCoded(3); }), TFault::ConnectionLost);
    EXPECT_EQ(faultOf([&] { engine->commit(); }), TFault::ConnectionLost);
    EXPECT_FALSE(engine->inTransaction());
    EXPECT_EQ(count("Coded"), 0);
    engine->begin();
    insertCoded(1);
    insertCoded(2);
    engine->commit();
    EXPECT_EQ(count("Coded"), 2);
}

TEST_F(OdbcFaults, ATransactionOfSeveralRowsWhoseCommitGotNoAnswerIsNotStoredTwice)
{
    const auto save = [&] {
        engine->begin();
        insertCoded(1);
        insertPerson("child");
        insertPerson("child");
        engine->commit();
    };
    proxy->cutAfter("commit transaction");
    EXPECT_EQ(faultOf(save), TFault::ConnectionLost);
    engine->rollback();
    proxy->restore();
    save();
    EXPECT_EQ(count("Coded"), 1);
    EXPECT_EQ(count("Person"), 2);
}

TEST_F(OdbcFaults, ALateAnswerIsWaitedForAndATooLateOneEndsTheLine)
{
    proxy->setDelay(600);
    EXPECT_TRUE(engine->select({"select 1", {}, {}})->next());
    proxy->setDelay(6000);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(faultOf([&] { engine->execute({"delete from Coded", {}, {}}); }), TFault::NoAnswer);
    EXPECT_GE(timer.elapsed(), 1900);
    EXPECT_LT(timer.elapsed(), 3500) << "the driver waits twice as long";
    proxy->cut();
    proxy->setDelay(0);
    proxy->restore();
    insertCoded(1);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(OdbcFaults, AnAnswerThatComesByteByByteIsGivenUpInTimeAllTheSame)
{
    QElapsedTimer timer;
    proxy->setTrickle(200); // each within the time that an answer may take
    timer.start();
    EXPECT_EQ(faultOf([&] { engine->select({"select 'a long answer'", {}, {}})->next(); }), TFault::NoAnswer);
    EXPECT_GE(timer.elapsed(), 1900);
    EXPECT_LT(timer.elapsed(), 3500);
    proxy->setTrickle(0);
    insertCoded(1);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(OdbcFaults, AServerThatChangesOverIsToldSoAndTheOtherOneIsAskedByTheNextTry)
{
    TestProxy other(database->connectionString());
    const TOdbcConnectionString there(other.connectionString());
    engine = OpenOdbcEngine(TestServer::with(proxy->connectionString(), "Failover_Partner",
                                             u"127.0.0.1,%1"_s.arg(there.value("PORT"))));
    for (const int number : {4060, 983}) {
        proxy->cut();
        proxy->refuseLogins(number, u"not now"_s);
        other.cut();
        other.refuseLogins(number, u"not now"_s);
        proxy->restore();
        other.restore();
        EXPECT_EQ(faultOf([&] { insertCoded(number); }), TFault::ChangingOver);
        other.refuseLogins(0, {});
        insertCoded(number);
        EXPECT_EQ(count("Coded", u"Code=%1"_s.arg(number)), 1);
        proxy->refuseLogins(0, {});
    }
}

TEST_F(OdbcFaults, ATransactionWhoseAnswerWasTooLateIsGone)
{
    engine->begin();
    insertCoded(1);
    proxy->setDelay(6000);
    EXPECT_EQ(faultOf([&] { insertCoded(2); }), TFault::NoAnswer);
    proxy->setDelay(0);
    EXPECT_EQ(faultOf([&] { insertCoded(3); }), TFault::NoAnswer);
    engine->rollback();
    EXPECT_EQ(count("Coded"), 0);
    insertCoded(2);
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(OdbcFaults, AServerWithoutRoomIsToldApartAndTheNextTryWorks)
{
    proxy->cut();
    proxy->refuseLogins(17809, u"The maximum number of '60' user connections has been reached."_s);
    proxy->restore();
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::ServerFull);
    EXPECT_EQ(faultOf([&] { OpenOdbcEngine(proxy->connectionString()); }), TFault::ServerFull);
    proxy->refuseLogins(0, {});
    EXPECT_GT(insertPerson("a"), 0);
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ALoginThatTheServerRefusesAfterItsReturnIsToldAndTheNextTryWorks)
{
    proxy->cut();
    proxy->refuseLogins(18456, u"Login failed for user 'clerk'."_s);
    proxy->restore();
    EXPECT_EQ(faultOf([&] { insertPerson("a"); }), TFault::LoginRefused);
    proxy->refuseLogins(0, {});
    EXPECT_GT(insertPerson("a"), 0);
    EXPECT_EQ(count("Person"), 1);
}

TEST_F(OdbcFaults, ACursorWhoseLineIsLostSaysSo)
{
    for (int i = 0; i < 2000; ++i)
        direct->execute({"insert into Coded(Code,Title) values(?,?)", {i, QString(50, 'x')}, {}});
    const auto cursor =
        engine->select({"select a.Code, a.Title, b.Title from Coded a, Coded b where b.Code<50", {}, {}});
    ASSERT_TRUE(cursor->next());
    proxy->cut();
    EXPECT_EQ(faultOf([&] {
                  while (cursor->next()) {
                  }
              }),
              TFault::ConnectionLost);
    proxy->restore();
    EXPECT_TRUE(engine->select({"select 1", {}, {}})->next());
}

TEST_F(OdbcFaults, AfterALockTimeOutTheNextTryWorks)
{
    insertCoded(1);
    insertCoded(2);
    const auto impatient =
        OpenOdbcEngine(TestServer::with(database->connectionString(), u"LockTimeout"_s, u"1"_s));
    engine->begin();
    engine->execute({"update Coded set Title='x' where Code=1", {}, {}});
    impatient->begin();
    impatient->execute({"update Coded set Title='y' where Code=2", {}, {}});
    EXPECT_EQ(faultOf([&] {
                  impatient->execute({"update Coded set Title='y' where Code=1", {}, {}});
              }),
              TFault::Locked);
    EXPECT_TRUE(impatient->inTransaction());
    engine->commit();
    const auto again = [&] {
        return impatient->execute({"update Coded set Title='y' where Code=1", {}, {}});
    };
    try {
        EXPECT_EQ(again(), 1);
    } catch (const TDatabaseError &error) {
        // A server of the protocol that ends the whole transaction says so, and all of it is done again.
        EXPECT_EQ(error.fault(), TFault::Deadlock) << error.what();
        impatient->begin();
        impatient->execute({"update Coded set Title='y' where Code=2", {}, {}});
        EXPECT_EQ(again(), 1);
    }
    impatient->commit();
    EXPECT_EQ(count("Coded", "Title='y'"), 2);
}

TEST_F(OdbcFaults, ADeadlocksVictimHasLostItsTransactionAndTheNextTryWorks)
{
    insertCoded(1);
    insertCoded(2);
    const QString patient = TestServer::with(database->connectionString(), u"LockTimeout"_s, u"30"_s);
    const auto one = OpenOdbcEngine(patient);
    const auto two = OpenOdbcEngine(patient);
    one->begin();
    two->begin();
    one->execute({"update Coded set Title='1' where Code=1", {}, {}});
    two->execute({"update Coded set Title='2' where Code=2", {}, {}});
    int victims = 0;
    const auto cross = [&](TEngine &engine, int code) {
        try {
            engine.execute({"update Coded set Title='c' where Code=?", {code}, {}});
            engine.commit();
            return false;
        } catch (const TDatabaseError &error) {
            EXPECT_EQ(error.fault(), TFault::Deadlock) << error.what();
            // Nothing of it may be stored by what follows.
            EXPECT_EQ(faultOf([&] { engine.execute({"delete from Coded", {}, {}}); }), TFault::Deadlock);
            engine.rollback();
            return true;
        }
    };
    bool otherLost = false;
    std::thread other([&] { otherLost = cross(*two, 1); });
    victims += cross(*one, 2);
    other.join();
    victims += otherLost;
    EXPECT_EQ(victims, 1);
    EXPECT_EQ(count("Coded"), 2);
    TEngine &loser = otherLost ? *two : *one;
    loser.begin();
    loser.execute({"update Coded set Title='again' where Code=1", {}, {}});
    loser.commit();
    EXPECT_EQ(count("Coded", "Title='again'"), 1);
}

TEST_F(OdbcFaults, ARefusedLoginAndALostLineNeverTellThePassword)
{
    const QString secret = u"N0t-The-Secret"_s;
    const QString wrong = TestServer::with(proxy->connectionString(), u"PWD"_s, secret);
    for (const bool cut : {false, true}) {
        if (cut)
            proxy->cut();
        try {
            OpenOdbcEngine(wrong);
            ADD_FAILURE() << "opened";
        } catch (const TDatabaseError &error) {
            EXPECT_EQ(error.fault(), cut ? TFault::NoServer : TFault::LoginRefused) << error.what();
            EXPECT_FALSE(QString(error.what()).contains(secret)) << error.what();
        }
    }
    proxy->restore();
}

} // namespace
