#include "host/database/Engine.h"
#include "host/database/Query.h"
#include "host/database/ReadAhead.h"
#include "host/database/Transaction.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// How often the program asks and waits, counted on the line between it and its server.

namespace {

class Trips : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        const QString place = TestServer::ownDatabase().connectionString();
        TestServer::emptyDatabase();
        proxy = std::make_unique<TestProxy>(place);
        connection.openOdbc(proxy->connectionString());
        run("create table Coded(Code int not null primary key, Name nvarchar(40), Amount numeric(18,2))");
        run("create table Counted(ID int identity(1,1) not null primary key, Name nvarchar(40) unique)");
    }
    void TearDown() override
    {
        if (!proxy)
            return;
        proxy->restore();
        run("if object_id('Coded') is not null drop table Coded");
        run("if object_id('Counted') is not null drop table Counted");
        connection.close();
    }
    void run(const char *sql) { connection.execute(TStatement(sql)); }
    int tripsOf(const std::function<void()> &work)
    {
        proxy->resetTrips();
        work();
        return proxy->trips();
    }
    int count(const char *table)
    {
        return connection.scalar(TStatement(u"select count(*) from %1"_s.arg(QLatin1String(table)))).toInt();
    }
    static TBoundStatement coded(int code, const QString &name)
    {
        return {u"insert into [Coded]([Code],[Name],[Amount]) values(?,?,?)"_s, {code, name, 1.005}, {}};
    }
    static TBoundStatement counted(const QString &name)
    {
        return {u"insert into [Counted]([Name]) values(?)"_s, {name}, {}};
    }
    TEngine &engine() { return connection.engine(); }

    std::unique_ptr<TestProxy> proxy;
    TConnection connection;
};

TEST_F(Trips, OneWriteIsOneRequest)
{
    engine().table(u"Coded"_s);
    EXPECT_EQ(tripsOf([&] { engine().insert(coded(1, u"یک"_s)); }), 1);
    EXPECT_EQ(tripsOf([&] { run("update Coded set Name=N'دو' where Code=1"); }), 1);
    EXPECT_EQ(tripsOf([&] { run("delete Coded where Code=1"); }), 1);
    engine().table(u"Counted"_s);
    EXPECT_EQ(tripsOf([&] { engine().insert(counted(u"یک"_s)); }), 2) << "its key, then the commit";
}

TEST_F(Trips, ABatchIsOneRequestAndOneWhole)
{
    EXPECT_EQ(tripsOf([&] { run("insert into Coded(Code) values(1) insert into Coded(Code) values(2)"); }),
              1);
    EXPECT_THROW(run("insert into Coded(Code) values(3) insert into Coded(Code) values(1)"), TDatabaseError);
    EXPECT_THROW(run("insert into Coded(Code) values(3) insert into NoSuchTable(Code) values(1)"),
                 TDatabaseError);
    EXPECT_EQ(count("Coded"), 2);
    run("insert into Coded(Code) values(3)");
    const TManyInserted done = engine().insertMany({coded(4, u"a"_s), coded(1, u"b"_s), coded(5, u"c"_s)});
    EXPECT_EQ(done.keys.size(), 1) << "stored one by one, as ever";
    EXPECT_EQ(count("Coded"), 4);
}

TEST_F(Trips, ATransactionCostsItsCommitOnly)
{
    const int trips = tripsOf([&] {
        TTransaction transaction(connection);
        run("insert into Coded(Code) values(1)");
        run("insert into Coded(Code) values(2) insert into Coded(Code) values(3)");
        transaction.commit();
    });
    EXPECT_EQ(trips, 3);
    EXPECT_EQ(count("Coded"), 3);
    EXPECT_EQ(tripsOf([&] { TTransaction nothing(connection); }), 0);
    const auto twoRows = [&] {
        TTransaction left(connection);
        connection.execute(TStatement("insert into Coded(Code,Name) values(7,").value(u"هفت"_s).sql(")"));
        EXPECT_EQ(count("Coded"), 4);
    };
    EXPECT_EQ(tripsOf(twoRows), 3) << "the row, the count, the way back";
    EXPECT_EQ(count("Coded"), 3);
}

TEST_F(Trips, ATransactionWhoseFirstStatementIsRefusedGoesOn)
{
    run("insert into Coded(Code) values(1)");
    {
        TTransaction transaction(connection);
        EXPECT_THROW(run("insert into Coded(Code) values(1)"), TDatabaseError);
        EXPECT_THROW(run("insert into Coded(Code) values(5) insert into Coded(Code) values(1)"),
                     TDatabaseError);
        run("insert into Coded(Code) values(2)");
        transaction.commit();
    }
    EXPECT_EQ(count("Coded"), 2);
    {
        TTransaction transaction(connection);
        EXPECT_THROW(run("insert into Coded(Code) values(5) insert into Coded(Code) values(1)"),
                     TDatabaseError);
        run("insert into Coded(Code) values(3)");
        transaction.commit();
    }
    EXPECT_EQ(count("Coded"), 3) << "of a batch that failed nothing is stored";
    {
        TTransaction transaction(connection);
        EXPECT_THROW(run("insert into NoSuchTable(Code) values(5)"), TDatabaseError);
        run("insert into Coded(Code) values(4)");
    }
    EXPECT_EQ(count("Coded"), 3);
}

TEST_F(Trips, ReadsAreOneRequestEach)
{
    run("insert into Coded(Code) values(1) insert into Coded(Code) values(2)");
    EXPECT_EQ(
        tripsOf([&] { EXPECT_EQ(connection.scalar(TStatement("select Code from Coded order by Code")), 1); }),
        1);
}

TEST_F(Trips, WhatIsReadAheadComesWithOneRequestAndIsToldApart)
{
    run("insert into Coded(Code,Name) values(1,N'یک') insert into Coded(Code,Name) values(2,N'دو')");
    const TStatement names("select Name from Coded order by Code");
    const TStatement none = TStatement("select Code from Coded where Code=").value(9);
    const TStatement second = TStatement("select Code,Name from Coded where Code=").value(2);
    const int trips = tripsOf([&] {
        const TReadAhead ahead(connection, {names, none, second});
        TQuery query(&connection, u"Query"_s);
        query.setStatement(second);
        query.open();
        EXPECT_EQ(query.asString("Name"), u"دو"_s);
        query.setStatement(names);
        query.open();
        EXPECT_EQ(query.recordCount(), 2);
        EXPECT_EQ(query.asString("Name"), u"یک"_s);
        query.setStatement(none);
        query.open();
        EXPECT_TRUE(query.isEmpty());
        EXPECT_EQ(query.fields().size(), 1);
    });
    EXPECT_EQ(trips, 1);
    EXPECT_EQ(tripsOf([&] { connection.scalar(names); }), 1) << "forgotten with its scope";
    const TReadAhead broken(connection, {names, TStatement("select NoSuchColumn from Coded")});
    EXPECT_EQ(connection.scalar(names), u"یک"_s) << "each is asked for in its turn then";
}

TEST_F(Trips, AListAsksForItsColumnsOnce)
{
    const auto openList = [&] {
        TQuery list(&connection, u"List_QUR"_s);
        list.setKeyField(u"Code"_s);
        list.setStatement("select * from Coded");
        list.open();
        list.last();
        EXPECT_EQ(list.fields().size(), 3);
    };
    EXPECT_EQ(tripsOf(openList), 3) << "the keys, the columns, the page";
    EXPECT_LE(tripsOf(openList), 2);
}

TEST_F(Trips, ManyRowsTravelTogether)
{
    QList<TBoundStatement> rows;
    for (int i = 1; i <= 60; ++i)
        rows.append(counted(u"روز %1"_s.arg(i)));
    engine().table(u"Counted"_s);
    ASSERT_GE(engine().insertsAtOnce(5), 60);
    ASSERT_LE(engine().insertsAtOnce(30) * 30, 2100);
    EXPECT_EQ(tripsOf([&] {
                  const TManyInserted done = engine().insertMany(rows);
                  EXPECT_FALSE(done.error);
                  EXPECT_EQ(done.keys.size(), 60);
              }),
              2)
        << "the highest key, so that they can be looked for, and the rows";
    EXPECT_EQ(
        connection.scalar(TStatement("select Name from Counted where ID=(select max(ID) from Counted)")),
        u"روز 60"_s);
}

TEST_F(Trips, TheRowsBeforeOneThatIsRefusedAreStoredAndTold)
{
    const TManyInserted done =
        engine().insertMany({counted(u"a"_s), counted(u"b"_s), counted(u"a"_s), counted(u"c"_s)});
    ASSERT_TRUE(done.error);
    EXPECT_EQ(done.error->fault(), TFault::Refused);
    EXPECT_EQ(done.keys.size(), 2);
    EXPECT_EQ(count("Counted"), 2);
}

TEST_F(Trips, ManyRowsWhoseAnswerIsLostAreLookedFor)
{
    engine().insert(counted(u"before"_s));
    proxy->cutAfter(u"insert into [Counted]"_s);
    TManyInserted done = engine().insertMany({counted(u"a"_s), counted(u"b"_s)});
    ASSERT_TRUE(done.error) << "the server cannot be reached";
    proxy->restore();
    done = engine().insertMany({counted(u"a"_s), counted(u"b"_s)});
    EXPECT_FALSE(done.error);
    EXPECT_EQ(done.keys.size(), 2);
    EXPECT_EQ(count("Counted"), 3) << "none twice";
}

TEST_F(Trips, ARowWhoseAnswerIsLostIsLookedFor)
{
    engine().table(u"Coded"_s);
    proxy->cutAfter(u"insert into [Coded]"_s);
    EXPECT_THROW(engine().insert(coded(1, u"یک"_s)), TDatabaseError);
    proxy->restore();
    EXPECT_NO_THROW(engine().insert(coded(1, u"یک"_s)));
    EXPECT_EQ(count("Coded"), 1);
}

TEST_F(Trips, ARowOfAnotherUserIsNotTakenForOneThatWasLost)
{
    engine().table(u"Coded"_s);
    run("insert into Coded(Code,Name) values(1,N'از دیگری')");
    proxy->cutAfter(u"insert into [Coded]"_s);
    EXPECT_THROW(engine().insert(coded(1, u"یک"_s)), TDatabaseError);
    proxy->restore();
    EXPECT_THROW(engine().insert(coded(1, u"یک"_s)), TDatabaseError) << "refused, as its key is taken";
    EXPECT_EQ(connection.scalar(TStatement("select Name from Coded")), u"از دیگری"_s);
}

TEST_F(Trips, ALineThatTheServerClosedMeanwhileIsOpenedAgainForAWrite)
{
    engine().table(u"Coded"_s);
    proxy->cut();
    proxy->restore();
    EXPECT_NO_THROW(engine().insert(coded(1, u"یک"_s)));
    proxy->cut();
    proxy->restore();
    EXPECT_NO_THROW(run("update Coded set Name=N'دو'"));
    proxy->cut();
    proxy->restore();
    TTransaction transaction(connection);
    EXPECT_NO_THROW(run("update Coded set Name=N'سه'"));
    transaction.commit();
    EXPECT_EQ(connection.scalar(TStatement("select Name from Coded")), u"سه"_s);
}

} // namespace
