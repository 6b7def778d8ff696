#include "host/database/Connection.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TFault faultOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const TDatabaseError &error) {
        return error.fault();
    }
    ADD_FAILURE() << "no error";
    return TFault::Other;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(EmbeddedDatabase, ANewFileAndItsFolderArePrivateToTheUser)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a/b/company.db");
    TConnection connection;
    connection.openFile(path);
    struct stat info = {};
    ASSERT_EQ(stat(QFile::encodeName(path).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    ASSERT_EQ(stat(QFile::encodeName(path + "-wal").constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    ASSERT_EQ(stat(QFile::encodeName(folder.filePath("a/b")).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    EXPECT_EQ(connection.displayName(), path);
    EXPECT_EQ(connection.kind(), TConnection::Kind::Embedded);
}

TEST(EmbeddedDatabase, EveryCommitIsOnTheDisk)
{
    TestDatabase db(TestDatabase::FileAlways);
    EXPECT_EQ(db.text("pragma synchronous"), "2");
    EXPECT_EQ(db.text("pragma journal_mode"), "wal");
    EXPECT_EQ(db.text("pragma foreign_keys"), "1");
}

TEST(EmbeddedDatabase, AFileThatIsNoDatabaseIsRefusedAndLeftAsItIs)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("letter.txt");
    const QByteArray text = QByteArray("Dear colleague, this is no database.\n").repeated(100);
    write(path, text);
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.openFile(path); }), TFault::NotADatabase);
    EXPECT_FALSE(connection.isOpen());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), text);
}

TEST(EmbeddedDatabase, AFolderIsNoDatabase)
{
    QTemporaryDir folder;
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.openFile(folder.path()); }), TFault::CannotOpen);
}

TEST(EmbeddedDatabase, AFileThatCannotBeWrittenIsRefused)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("x.db");
    {
        TConnection connection;
        connection.openFile(path);
    }
    QFile::setPermissions(path, QFile::ReadOwner);
    const bool root = geteuid() == 0; // may write everywhere: somebody else opens the file then
    const uid_t nobody = 65534;
    if (root) {
        for (const QString &mine : {folder.path(), path})
            ASSERT_EQ(chown(QFile::encodeName(mine).constData(), nobody, gid_t(-1)), 0);
        ASSERT_EQ(seteuid(nobody), 0);
    }
    {
        TConnection connection;
        EXPECT_EQ(faultOf([&] { connection.openFile(path); }), TFault::ReadOnly);
    }
    ASSERT_EQ(root ? seteuid(0) : 0, 0);
}

TEST(EmbeddedDatabase, APathThroughAFileCannotBeOpened)
{
    QTemporaryDir folder;
    write(folder.filePath("file"), "x");
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.openFile(folder.filePath("file/x.db")); }), TFault::CannotOpen);
}

TEST(Transactions, ARollbackTakesEverythingBack)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    db.connection().BeginTrans();
    db.run("insert into T values(1)");
    EXPECT_TRUE(db.connection().InTransaction());
    db.connection().RollbackTrans();
    EXPECT_FALSE(db.connection().InTransaction());
    EXPECT_EQ(db.text("select count(*) from T"), "0");
}

TEST(Transactions, BeginningAnotherRollsBackTheOneLeftOpen)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    db.connection().BeginTrans();
    db.run("insert into T values(1)");
    db.connection().BeginTrans();
    db.run("insert into T values(2)");
    db.connection().CommitTrans();
    EXPECT_EQ(db.rows("select A from T"), "2");
}

TEST(Transactions, CommitAndRollbackWithoutOneDoNothing)
{
    TestDatabase db;
    EXPECT_NO_THROW(db.connection().CommitTrans());
    EXPECT_NO_THROW(db.connection().RollbackTrans());
}

TEST(Transactions, ACommitThatFailsLeavesTheTransactionToRollBack)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    db.connection().BeginTrans();
    db.run("insert into T values(1)");
    db.failStatement(1, TFault::DiskFull);
    EXPECT_EQ(faultOf([&] { db.connection().CommitTrans(); }), TFault::DiskFull);
    db.failStatement(0);
    db.connection().RollbackTrans();
    EXPECT_EQ(db.text("select count(*) from T"), "0");
}

TEST(Transactions, AnOwnedOneIsStoredByItsCommitOnly)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    {
        TTransaction stored(db.connection());
        db.run("insert into T values(1)");
        stored.commit();
        EXPECT_FALSE(db.connection().InTransaction());
    }
    {
        const TTransaction left(db.connection());
        db.run("insert into T values(2)");
    }
    EXPECT_FALSE(db.connection().InTransaction());
    EXPECT_EQ(db.rows("select A from T"), "1");
}

TEST(Transactions, AnOwnedOneRollsBackWhenItsWorkOrItsCommitFails)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    for (const bool commitFails : {false, true}) {
        EXPECT_EQ(faultOf([&] {
                      TTransaction transaction(db.connection());
                      db.connection().execute(TStatement("insert into T values(1)"));
                      db.failStatement(1, TFault::DiskFull);
                      if (!commitFails)
                          db.connection().execute(TStatement("insert into T values(2)"));
                      transaction.commit();
                  }),
                  TFault::DiskFull);
        db.failStatement(0);
        EXPECT_FALSE(db.connection().InTransaction());
        EXPECT_EQ(db.text("select count(*) from T"), "0");
    }
}

TEST(EmbeddedDatabase, StatementsThatFailedHoldTheFileNoLongerThanItsConnection)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("x.db");
    {
        TConnection connection;
        connection.openFile(file);
        connection.execute(TStatement("create table T(A INT NOT NULL PRIMARY KEY)"));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(faultOf([&] { connection.execute(TStatement("insert into T values(null)")); }),
                      TFault::Refused);
            EXPECT_EQ(faultOf([&] { connection.scalar(TStatement("select nothing from T")); }),
                      TFault::BadStatement);
            EXPECT_EQ(faultOf([&] { connection.scalar(TStatement("select abs(-9223372036854775808)")); }),
                      TFault::BadStatement); // it fails at its first row
        }
        EXPECT_TRUE(QFile::exists(file + "-wal"));
    }
    EXPECT_FALSE(QFile::exists(file + "-wal")) << "a statement that is left keeps the file open";
}

// On a server other rows may be written meanwhile; its own wait is among the tests of the ODBC engine.
TEST(EmbeddedDatabase, AWriterWaitsForAnotherAndIsToldWhenItsPatienceEnds)
{
    TestDatabase db(TestDatabase::FileAlways);
    db.run("create table T(A INT)");
    TConnection other;
    other.openFile(db.path());
    other.BeginTrans();
    EXPECT_EQ(usualPatience, 5000);
    db.connection().setPatience(300);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(faultOf([&] { db.connection().execute(TStatement("insert into T values(1)")); }),
              TFault::Locked);
    EXPECT_GE(timer.elapsed(), 250);
    EXPECT_LT(timer.elapsed(), 3000);
    EXPECT_EQ(db.text("select count(*) from T"), "0") << "readers never wait";
    other.RollbackTrans();
    EXPECT_EQ(db.connection().execute(TStatement("insert into T values(1)")), 1);
}

TEST(Commands, ABatchIsDoneAsAWholeOrNotAtAll)
{
    TestDatabase db;
    db.run("create table T(A INT NOT NULL PRIMARY KEY)");
    EXPECT_EQ(faultOf([&] {
                  db.connection().execute(TStatement("insert into T(A) values(")
                                              .integer(1)
                                              .sql(") insert into T(A) values(")
                                              .integer(1)
                                              .sql(")"));
              }),
              TFault::Refused);
    EXPECT_EQ(db.text("select count(*) from T"), "0");
    db.connection().BeginTrans();
    db.run("insert into T(A) values(5)");
    EXPECT_THROW(db.connection().execute(TStatement("insert into T(A) values(6) insert into T(A) values(6)")),
                 TDatabaseError);
    EXPECT_TRUE(db.connection().InTransaction()) << "a failed batch does not end the transaction around it";
    db.connection().CommitTrans();
    EXPECT_EQ(db.rows("select A from T"), "5");
}

TEST(Commands, TheAffectedRowsAreThoseOfTheLastStatement)
{
    TestDatabase db;
    db.run("create table T(A INT)");
    EXPECT_EQ(db.connection().execute(TStatement("insert into T values(1) insert into T values(2)")), 1);
    EXPECT_EQ(db.connection().execute(TStatement("update T set A=A+1")), 2);
}

TEST(Commands, ABrokenStatementIsToldWithItsTextAndTheConnectionStaysUsable)
{
    TestDatabase db;
    try {
        db.connection().execute(TStatement("selekt 1"));
        FAIL();
    } catch (const TDatabaseError &error) {
        EXPECT_EQ(error.fault(), TFault::BadStatement);
        EXPECT_TRUE(error.statement().contains("selekt"));
    }
    EXPECT_EQ(db.text("select 1"), "1");
}

TEST(Commands, AClosedConnectionAnswersWithAFault)
{
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.execute(TStatement("select 1")); }), TFault::ConnectionLost);
    EXPECT_EQ(faultOf([&] { connection.BeginTrans(); }), TFault::ConnectionLost);
}

TEST(Values, TextAmountsFlagsAndPicturesComeBackExactly)
{
    TestDatabase db;
    db.run("create table T(ID INT, Txt NVARCHAR(50), Amount FLOAT, Flag BIT, Picture VARBINARY(MAX))");
    const QString persian = QString::fromUtf8("كيك و کیک، نیم‌فاصله ۱۲۳");
    QByteArray picture(100000, '\0');
    for (int i = 0; i < picture.size(); ++i)
        picture[i] = char(i % 251);
    db.connection().execute(TStatement("insert into T values(1,")
                                .text(persian)
                                .sql(",")
                                .amount(123456789012.345)
                                .sql(",")
                                .value(true)
                                .sql(",")
                                .value(picture)
                                .sql(")"));
    TQuery query(&db.connection(), u"q"_s);
    query.setStatement("select * from T");
    query.open();
    EXPECT_EQ(query.asString("Txt"), persian);
    EXPECT_EQ(query.asFloat("Amount"), 123456789012.345);
    EXPECT_TRUE(query.asBoolean("Flag"));
    EXPECT_EQ(query.value("Picture").toByteArray(), picture);
}

TEST(DatabaseErrors, EveryFaultHasASentenceForTheUser)
{
    for (int fault = 0; fault <= int(TFault::Other); ++fault) {
        const TDatabaseError error(static_cast<TFault>(fault), u"detail"_s);
        EXPECT_GT(error.userText().size(), 20) << fault;
        if (fault != int(TFault::Other)) {
            EXPECT_NE(error.userText(), TDatabaseError(TFault::Other, {}).userText()) << fault;
        }
    }
}
