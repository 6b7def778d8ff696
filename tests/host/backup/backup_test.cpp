#include "host/database/Backup.h"

#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>

namespace {

class BackupOfADatabase : public testing::Test {
protected:
    BackupOfADatabase() { db.run("insert into StaffGroup(Code, Name) values(7, 'before')"); }
    QString file(const char *name) const { return folder.filePath(name); }
    QString names() { return db.rows("select Name from StaffGroup where Code=7"); }
    std::optional<TFault> faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        return std::nullopt;
    }
    /// A restore that must be refused and leave everything as it is.
    void mustRefuse(const QString &source, TFault fault)
    {
        EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), source); }), fault);
        EXPECT_EQ(names(), "before");
        EXPECT_TRUE(QDir(QFileInfo(db.path()).path()).entryList({"*.restore*"}).isEmpty())
            << "nothing is left behind";
    }
    static void execute(const QString &name, const char *sql)
    {
        sqlite3 *handle = nullptr;
        ASSERT_EQ(sqlite3_open(name.toUtf8(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

    TestDatabase db{TestDatabase::FileAlways};
    QTemporaryDir folder;
};

TEST_F(BackupOfADatabase, IsOneFileThatBringsEverythingBack)
{
    Backup::save(db.path(), file("b.db"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("b.db"));
    db.run("update StaffGroup set Name='after' where Code=7");
    EXPECT_EQ(names(), "after");
    Backup::restore(db.path(), file("b.db"));
    EXPECT_EQ(names(), "before") << "the open connection sees the restored rows";
}

TEST_F(BackupOfADatabase, IsPrivateToTheUser)
{
    Backup::save(db.path(), file("b.db"));
    EXPECT_FALSE(QFile::permissions(file("b.db")) &
                 (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther));
}

TEST_F(BackupOfADatabase, HoldsWhatIsNotYetInTheMainFile)
{
    // The newest rows stand in the write-ahead log while the program runs.
    db.run("insert into StaffGroup(Code, Name) values(8, 'newest')");
    Backup::save(db.path(), file("b.db"));
    db.run("delete from StaffGroup where Code=8");
    Backup::restore(db.path(), file("b.db"));
    EXPECT_EQ(db.text("select Name from StaffGroup where Code=8"), "newest");
}

TEST_F(BackupOfADatabase, ReplacesAnOlderOneOnlyWhenItIsWhole)
{
    Backup::save(db.path(), file("b.db"));
    QFile older(file("b.db"));
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    const QByteArray before = older.readAll();
    older.close();
    for (int i = 100; i < 400; ++i)
        db.run(QString("insert into StaffGroup(Code, Name) values(%1, 'many rows that take room')").arg(i));

    // A file may not grow beyond the older one: as on a disk that fills up.
    struct rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 20000;
    setrlimit(RLIMIT_FSIZE, &small);
    const auto fault = faultOf([&] { Backup::save(db.path(), file("b.db")); });
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(fault, TFault::DiskFull);
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    EXPECT_TRUE(older.readAll() == before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("b.db")) << "no half of a copy is left";
}

TEST_F(BackupOfADatabase, CannotGoToAFolderThatIsNotThereNorOntoTheDatabaseItself)
{
    EXPECT_TRUE(faultOf([&] { Backup::save(db.path(), file("none/b.db")); }).has_value());
    EXPECT_EQ(faultOf([&] { Backup::save(db.path(), db.path()); }), TFault::Refused);
    EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), db.path()); }), TFault::Refused);
    EXPECT_EQ(names(), "before");
}

TEST_F(BackupOfADatabase, RefusesFilesThatAreNone)
{
    QFile letter(file("letter"));
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(10000, 'x'));
    letter.close();
    mustRefuse(file("letter"), TFault::NotADatabase);

    QFile empty(file("empty"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    mustRefuse(file("empty"), TFault::NotADatabase);

    execute(file("other.db"), "create table Song(Title text)");
    mustRefuse(file("other.db"), TFault::OtherProgram);

    EXPECT_TRUE(faultOf([&] { Backup::restore(db.path(), file("none.db")); }).has_value());
    EXPECT_EQ(names(), "before");
}

TEST_F(BackupOfADatabase, RefusesADamagedOne)
{
    for (int i = 100; i < 900; ++i)
        db.run(QString("insert into StaffGroup(Code, Name) values(%1, 'row')").arg(i));
    Backup::save(db.path(), file("b.db"));
    QFile backup(file("b.db"));
    ASSERT_TRUE(backup.open(QIODevice::ReadWrite));
    const qint64 size = backup.size();
    ASSERT_GT(size, 40000);
    // Every page but the first one loses its middle.
    for (qint64 at = 4096 + 100; at + 3000 < size; at += 4096) {
        backup.seek(at);
        backup.write(QByteArray(3000, '\xff'));
    }
    backup.close();
    mustRefuse(file("b.db"), TFault::NotADatabase);

    Backup::save(db.path(), file("short.db"));
    ASSERT_TRUE(QFile::resize(file("short.db"), size / 2));
    mustRefuse(file("short.db"), TFault::NotADatabase);
}

TEST_F(BackupOfADatabase, TheLocksOfItsTimeAreNotTakenBack)
{
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 806, 3)");
    Backup::save(db.path(), file("b.db"));
    db.run("delete from CodeLock_TBL");
    Backup::restore(db.path(), file("b.db"));
    EXPECT_EQ(db.text("select count(*) from CodeLock_TBL"), "0");
}

} // namespace
