#include "host/database/Connection.h"
#include "host/database/Engine.h"
#include "host/database/OdbcHandles.h"
#include "support/TestListener.h"
#include "support/TestServer.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// Connection strings that lead nowhere: each is told by a sentence of its own, without the password, and nothing is
// changed where it led.

namespace {

const char secret[] = "S3cret-Of-The-Test";

struct TRefusal {
    TFault fault = TFault::Other;
    QString userText;
    QString detail;
};

TRefusal open(const QString &text)
{
    try {
        TConnection connection;
        connection.openOdbc(text);
        ADD_FAILURE() << "opened";
    } catch (const TDatabaseError &error) {
        EXPECT_FALSE(error.detail().contains(secret)) << qPrintable(error.detail());
        EXPECT_FALSE(QString::fromUtf8(error.what()).contains(secret)) << error.what();
        EXPECT_FALSE(error.userText().contains(secret));
        return {error.fault(), error.userText(), error.detail()};
    }
    return {};
}

QString withSecret(const QString &text)
{
    return text + u";DATABASE=d;UID=u;LoginTimeout=2;PWD="_s + secret;
}

TEST(OdbcOpening, AStringWithoutADriverIsToldSo)
{
    for (const QString &text :
         {QString(), withSecret("SERVER=127.0.0.1"), QString("just some words"), QString(";;=;")}) {
        const TRefusal refusal = open(text);
        EXPECT_EQ(refusal.fault, TFault::NoDriver) << qPrintable(text);
        EXPECT_TRUE(refusal.userText.contains(QString::fromUtf8("راه انداز ODBC")));
        EXPECT_TRUE(refusal.userText.contains("FreeTDS"));
    }
}

TEST(OdbcOpening, ADriverThatIsNotInstalledIsToldSo)
{
    EXPECT_EQ(open(withSecret("DRIVER=NoSuchDriver;SERVER=127.0.0.1;Encrypt=no")).fault, TFault::NoDriver);
    EXPECT_EQ(open(withSecret("DSN=NoSuchSource;Encrypt=no")).fault, TFault::NoDriver);
}

TEST(OdbcOpening, AWrongHostAndAWrongPortAreToldSo)
{
    const TRefusal port = open(withSecret("DRIVER=FreeTDS;SERVER=127.0.0.1;PORT=1"));
    EXPECT_EQ(port.fault, TFault::NoServer) << qPrintable(port.detail);
    EXPECT_TRUE(port.userText.contains(QString::fromUtf8("نام سرور")));
    const TRefusal host = open(withSecret("DRIVER=FreeTDS;SERVER=no-such-host.invalid;PORT=1433"));
    EXPECT_EQ(host.fault, TFault::NoServer) << qPrintable(host.detail);
}

TEST(OdbcOpening, AServerThatSaysNothingOrAByteNowAndThenIsGivenUpAfterTheLoginTime)
{
    for (const TestListener::Manner manner : {TestListener::Silent, TestListener::Trickles}) {
        const TestListener listener({}, manner);
        for (const char *words : {"", ";Encrypt=no"}) {
            QElapsedTimer timer;
            timer.start();
            const TRefusal refusal =
                open(TestServer::with(listener.connectionString(), "LoginTimeout", "2") + words);
            EXPECT_EQ(refusal.fault, TFault::NoServer) << qPrintable(refusal.detail);
            EXPECT_GE(timer.elapsed(), 1900);
            EXPECT_LT(timer.elapsed(), 3000);
        }
    }
}

// The server's messages in the order in which a driver may hand them out.
TEST(OdbcProblems, AreToldInTermsThatAUserCanActOn)
{
    const auto fault = [](const QList<Odbc::TProblem> &problems, bool connecting = true) {
        return Odbc::faultOf(problems, connecting);
    };
    EXPECT_EQ(fault({{"28000", 18456, "Login failed"}, {"42000", 4060, "Cannot open database"}}),
              TFault::NoSuchDatabase);
    EXPECT_EQ(fault({{"01000", 5701, "Changed database context"}, {"28000", 18456, "Login failed"}}),
              TFault::LoginRefused);
    EXPECT_EQ(fault({{"42000", 17809, "Could not connect because the maximum number of user connections"}}),
              TFault::ServerFull);
    EXPECT_EQ(fault({{"42000", 262, "CREATE TABLE permission denied"}}, false), TFault::NoRight);
    EXPECT_EQ(fault({{"42000", 229, "The SELECT permission was denied"}}, false), TFault::NoRight);
    EXPECT_EQ(fault({{"42000", 33557097, "permission denied for table staff"}}, false), TFault::NoRight);
    EXPECT_EQ(fault({{"37000", 1, "The EXECUTE permission was denied on the object"}}, false),
              TFault::NoRight);
    for (const int number : {4221, 40613, 976, 978, 983}) {
        EXPECT_EQ(fault({{"42000", number, "not now"}}), TFault::ChangingOver) << number;
        EXPECT_EQ(fault({{"42000", number, "not now"}}, false), TFault::ChangingOver) << number;
    }
    EXPECT_EQ(fault({{"08S01", 233, "No process is on the other end"}}, false), TFault::ChangingOver);
    EXPECT_EQ(fault({{"23000", 233, "The column 'Code' cannot be null"}}, false), TFault::Refused);
    EXPECT_EQ(fault({{"HYT00", 0, "Timeout expired"}}, false), TFault::NoAnswer);
    EXPECT_EQ(fault({{"HYT00", 0, "Timeout expired"}}), TFault::NoServer);
    EXPECT_EQ(fault({{"08S01", 0, "Write to the server failed"}}, false), TFault::ConnectionLost);
    EXPECT_EQ(fault({{"40001", 1205, "chosen as the deadlock victim"}}, false), TFault::Deadlock);
    EXPECT_EQ(fault({{"42000", 1222, "Lock request time out period exceeded"}}, false), TFault::Locked);
    EXPECT_EQ(
        fault({{"HY000", 596, "Cannot continue the execution because the session is in the kill state"}},
              false),
        TFault::ConnectionLost);
}

class OdbcOpeningOnAServer : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
    }
};

TEST_F(OdbcOpeningOnAServer, AWrongPasswordAndAWrongUserAreRefusedByTheServer)
{
    const TestServer::Database database;
    const QString good = database.connectionString();
    const TRefusal password = open(TestServer::with(good, "PWD", secret));
    EXPECT_EQ(password.fault, TFault::LoginRefused) << qPrintable(password.detail);
    EXPECT_TRUE(password.userText.contains(QString::fromUtf8("نام کاربر یا گذرواژه")));
    EXPECT_EQ(open(TestServer::with(good, "UID", "no_such_user")).fault, TFault::LoginRefused);
}

TEST_F(OdbcOpeningOnAServer, AWrongDatabaseIsToldSoAndNotMade)
{
    const TRefusal refusal = open(TestServer::connectionString("no_such_database"));
    EXPECT_EQ(refusal.fault, TFault::NoSuchDatabase) << qPrintable(refusal.detail);
    EXPECT_TRUE(refusal.userText.contains(QString::fromUtf8("چنین پایگاه داده ای روی سرور نیست")));
    EXPECT_THROW(TestServer::runOnServer("drop database no_such_database"), TDatabaseError);
}

TEST_F(OdbcOpeningOnAServer, TheServersOwnDatabaseIsNotTaken)
{
    EXPECT_EQ(open(TestServer::connectionString("master")).fault, TFault::NoSuchDatabase);
    EXPECT_EQ(open(TestServer::connectionString("tempdb")).fault, TFault::NoSuchDatabase);
}

TEST_F(OdbcOpeningOnAServer, ADatabaseOfAnotherProgramIsRefusedAndLeftAsItIs)
{
    const TestServer::Database database;
    TestServer::runOnServer("create table Song(Title nvarchar(50)) insert into Song values('x')",
                            database.name());
    const TRefusal refusal = open(database.connectionString());
    EXPECT_EQ(refusal.fault, TFault::OtherProgram) << qPrintable(refusal.detail);
    const auto engine = OpenOdbcEngine(database.connectionString());
    const auto tables = engine->select({"select TABLE_NAME from INFORMATION_SCHEMA.TABLES", {}, {}});
    ASSERT_TRUE(tables->next());
    EXPECT_EQ(tables->value(0).toString().toLower(), "song");
    EXPECT_FALSE(tables->next());
    const auto rows = engine->select({"select count(*) from Song", {}, {}});
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->value(0).toInt(), 1);
}

TEST_F(OdbcOpeningOnAServer, ADatabaseOfANewerVersionIsRefusedAndLeftAsItIs)
{
    const TestServer::Database database;
    TConnection connection;
    connection.openOdbc(database.connectionString());
    connection.execute(TStatement("update SchemaVersion_TBL set Version=Version+1"));
    connection.close();
    EXPECT_EQ(open(database.connectionString()).fault, TFault::NewerSchema);
}

// The collation is chosen for the database where the server allows that, else for the whole server.
TEST_F(OdbcOpeningOnAServer, ACollationThatLosesPersianLettersIsRefusedByNamingAFittingOne)
{
    std::unique_ptr<TestServer::Database> database;
    try {
        database = std::make_unique<TestServer::Database>("collate SQL_Latin1_General_CP1_CI_AS");
    } catch (const TDatabaseError &) {
        database = std::make_unique<TestServer::Database>();
        try {
            OpenOdbcEngine(database->connectionString());
            GTEST_SKIP() << "this server has one collation for all databases, and it keeps Persian letters";
        } catch (const TDatabaseError &) {
            // Such a server is what this test wants.
        }
    }
    const TRefusal refusal = open(database->connectionString());
    EXPECT_EQ(refusal.fault, TFault::UnfitServer) << qPrintable(refusal.detail);
    EXPECT_TRUE(refusal.userText.contains("Persian_100_CI_AS")) << qPrintable(refusal.userText);
    EXPECT_NO_THROW(TestServer::runOnServer(
        "if exists(select * from INFORMATION_SCHEMA.TABLES) raiserror('changed', 16, 1)", database->name()))
        << "nothing is made there";
}

} // namespace
