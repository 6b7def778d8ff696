#include "host/database/Connection.h"
#include "host/database/SqliteFile.h"
#include "support/TestDatabase.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sqlite3.h>
#include <sys/resource.h>

// The database's file on the disk: whose it is, whether it is still there, and when there is no room for it.

namespace {

std::optional<TFault> faultOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const TDatabaseError &error) {
        return error.fault();
    }
    return std::nullopt;
}

QByteArray bytesOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

class DatabaseFile : public testing::Test {
protected:
    std::optional<TFault> insert(TConnection &connection)
    {
        return faultOf(
            [&] { connection.execute(TStatement("insert into StaffGroup(Code, Name) values(7, 'x')")); });
    }
    QString file(const char *name) const { return folder.filePath(name); }
    /// Each file of a folder with its bytes and its time.
    static QMap<QString, std::pair<QByteArray, QDateTime>> contentOf(const QString &folder)
    {
        QMap<QString, std::pair<QByteArray, QDateTime>> content;
        for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
            content.insert(info.fileName(), {bytesOf(info.filePath()), info.lastModified()});
        return content;
    }
    static void execute(const QString &name, const char *sql)
    {
        sqlite3 *handle = nullptr;
        ASSERT_EQ(sqlite3_open(name.toUtf8(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    QTemporaryDir folder;
};

TEST_F(DatabaseFile, ASaveIntoAFileThatWasRemovedIsNoSuccess)
{
    TestDatabase db(TestDatabase::FileAlways);
    ASSERT_TRUE(QFile::remove(db.path()));
    EXPECT_EQ(insert(db.connection()), TFault::FileGone);
    EXPECT_EQ(faultOf([&] { db.connection().BeginTrans(); }), TFault::FileGone);
    EXPECT_FALSE(QFile::exists(db.path())) << "and no other one is made in its place";
}

TEST_F(DatabaseFile, ATransactionDuringWhichTheFileIsReplacedIsNotCommitted)
{
    TestDatabase db(TestDatabase::FileAlways);
    ASSERT_TRUE(QFile::copy(db.path(), file("older.db")));
    db.connection().BeginTrans();
    EXPECT_EQ(insert(db.connection()), std::nullopt);
    ASSERT_EQ(std::rename(file("older.db").toUtf8(), db.path().toUtf8()), 0);
    EXPECT_EQ(faultOf([&] { db.connection().CommitTrans(); }), TFault::FileGone);
    db.connection().RollbackTrans();
    EXPECT_EQ(insert(db.connection()), TFault::FileGone) << "and it is told each time";
}

TEST_F(DatabaseFile, AFileThatComesBackToItsPlaceIsWrittenAgain)
{
    TestDatabase db(TestDatabase::FileAlways);
    const QString away = file("away.db");
    ASSERT_TRUE(QFile::rename(db.path(), away));
    EXPECT_EQ(insert(db.connection()), TFault::FileGone);
    ASSERT_TRUE(QFile::rename(away, db.path()));
    EXPECT_EQ(insert(db.connection()), std::nullopt);
}

TEST_F(DatabaseFile, ALogThatWasRemovedIsFoundToo)
{
    TestDatabase db(TestDatabase::FileAlways);
    EXPECT_EQ(insert(db.connection()), std::nullopt);
    ASSERT_TRUE(QFile::remove(db.path() + "-wal"));
    EXPECT_EQ(faultOf([&] { db.connection().BeginTrans(); }), TFault::FileGone);
}

TEST_F(DatabaseFile, AConnectionToARemovedFileLeavesTheLogOfTheOneInItsPlace)
{
    const QString path = file("company.db");
    TConnection first;
    first.openFile(path);
    ASSERT_TRUE(QFile::remove(path));
    TConnection second;
    second.openFile(path);
    EXPECT_EQ(insert(second), std::nullopt);
    first.close();
    EXPECT_GT(QFileInfo(path + "-wal").size(), 0);
    EXPECT_EQ(faultOf([&] { second.BeginTrans(); }), std::nullopt);
    second.RollbackTrans();
}

TEST_F(DatabaseFile, AForeignDatabaseIsRefusedWithoutChangingAByte)
{
    const char *tables = "create table Song(Title text); insert into Song values('x')";
    for (const char *mode : {"delete", "wal"}) {
        const QString place = folder.filePath(mode);
        ASSERT_TRUE(QDir().mkdir(place));
        const QString foreign = place + "/a song %41?#.db";
        execute(foreign, (std::string("pragma journal_mode=") + mode + ";" + tables).c_str());
        const auto before = contentOf(place);
        ASSERT_EQ(before.size(), 1);
        TConnection connection;
        EXPECT_EQ(faultOf([&] { connection.openFile(foreign); }), TFault::OtherProgram) << mode;
        EXPECT_EQ(faultOf([&] { connection.openFile(foreign, TConnection::Missing::Refuse); }),
                  TFault::OtherProgram);
        EXPECT_TRUE(contentOf(place) == before) << mode;
    }
}

TEST_F(DatabaseFile, AForeignDatabaseWithALogKeepsBoth)
{
    const QString foreign = file("songs.db");
    sqlite3 *handle = nullptr;
    ASSERT_EQ(sqlite3_open(file("live.db").toUtf8(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "pragma journal_mode=wal; create table Song(Title text)", nullptr, nullptr,
                           nullptr),
              SQLITE_OK);
    // As its program left it when it was killed: all that it holds stands in the log.
    ASSERT_TRUE(QFile::copy(file("live.db"), foreign));
    ASSERT_TRUE(QFile::copy(file("live.db-wal"), foreign + "-wal"));
    sqlite3_close(handle);
    const QByteArray database = bytesOf(foreign);
    const QByteArray log = bytesOf(foreign + "-wal");
    ASSERT_GT(log.size(), 0);
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.openFile(foreign); }), TFault::OtherProgram);
    EXPECT_TRUE(bytesOf(foreign) == database);
    EXPECT_TRUE(bytesOf(foreign + "-wal") == log);
}

TEST_F(DatabaseFile, AMistypedNameMakesNeitherFolderNorDatabase)
{
    const QString path = file("typo/company.db");
    TConnection connection;
    EXPECT_EQ(faultOf([&] { connection.openFile(path, TConnection::Missing::Refuse); }), TFault::NoSuchFile);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    connection.openFile(path);
    connection.close();
    connection.openFile(path, TConnection::Missing::Refuse);
    EXPECT_TRUE(connection.isOpen());
}

TEST_F(DatabaseFile, AFullDiskAtTheStartIsToldAsOne)
{
    struct rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    QList<std::optional<TFault>> faults;
    for (const rlim_t bytes : {0, 2000, 10000, 30000, 60000}) {
        struct rlimit small = old;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
        TConnection connection;
        faults.append(faultOf([&] { connection.openFile(folder.filePath(QString::number(bytes))); }));
        connection.close();
        setrlimit(RLIMIT_FSIZE, &old);
    }
    std::signal(SIGXFSZ, handler);
    for (const std::optional<TFault> &fault : faults)
        EXPECT_EQ(fault, TFault::DiskFull) << faults.indexOf(fault);
}

TEST_F(DatabaseFile, WhatThisProcessHasOpenIsKnown)
{
    TestDatabase db(TestDatabase::FileAlways);
    EXPECT_TRUE(SqliteFile::isHeldOpen(db.path()));
    EXPECT_TRUE(SqliteFile::isHeldOpen(db.path() + "-wal"));
    ASSERT_TRUE(QFile::link(db.path(), file("link")));
    EXPECT_TRUE(SqliteFile::isHeldOpen(file("link")));
    EXPECT_FALSE(SqliteFile::isHeldOpen(file("none")));
    EXPECT_FALSE(SqliteFile::isHeldOpen({}));
    ASSERT_TRUE(QFile::copy(db.path(), file("copy.db")));
    EXPECT_FALSE(SqliteFile::isHeldOpen(file("copy.db")));
}

} // namespace
