#include "host/database/Backup.h"
#include "host/database/PassingFile.h"
#include "host/database/SqliteFunctions.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

// What a restore takes, what it refuses, and what others do meanwhile.

namespace {

class ARestore : public testing::Test {
protected:
    ARestore()
    {
        db.run("insert into StaffGroup(Code, Name) values(7, 'before')");
        Backup::save(db.path(), backup);
        db.run("update StaffGroup set Name='now' where Code=7");
    }
    QString name() { return db.text("select Name from StaffGroup where Code=7"); }
    std::optional<TFault> faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        return std::nullopt;
    }
    /// Changes the backup past the program.
    void change(const char *sql)
    {
        sqlite3 *handle = nullptr;
        ASSERT_EQ(sqlite3_open(backup.toUtf8(), &handle), SQLITE_OK);
        registerSqliteFunctions(handle);
        EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    QStringList beside() const
    {
        const QFileInfo file(db.path());
        return file.dir().entryList({file.fileName() + ".*"}, QDir::Files | QDir::Hidden);
    }

    TestDatabase db{TestDatabase::FileAlways};
    QTemporaryDir folder;
    QString backup = folder.filePath("b.db");
    QString before = folder.filePath("before.db");
};

/// A change of the backup that makes it unsound.
class AnUnsoundBackup : public ARestore, public testing::WithParamInterface<const char *> {};

TEST_P(AnUnsoundBackup, IsRefused)
{
    change(GetParam());
    EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), backup); }), TFault::Unsound);
    EXPECT_EQ(name(), "now");
    EXPECT_EQ(beside(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    ByItsStructure, AnUnsoundBackup,
    testing::Values("drop table tmpRecFiscal", "alter table StaffGroup add column Strange INT",
                    "alter table StaffGroup rename column Name to Title", "drop view CalcMethod_VW",
                    "drop view CalcMethod_VW; create view CalcMethod_VW as select 1 as Code",
                    "drop index IX_UserEvent_EventDate", "create unique index Strange_IX on StaffGroup(Name)",
                    "create trigger Strange_TRG after insert on Staff begin delete from Staff; end",
                    "create table Note(T text); create trigger Strange_TRG after insert on Note begin delete "
                    "from Staff; end",
                    "pragma foreign_keys=off; insert into Tax(TaxMainCode) values(999)"));

TEST_F(ARestore, TakesABackupWithAReportOfTheAdministrators)
{
    change(
        "create table Note(T text); create view Report_VW as select Name from StaffGroup; create index Note_IX "
        "on Note(T)");
    EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), backup); }), std::nullopt);
    EXPECT_EQ(name(), "before");
}

TEST_F(ARestore, TakesABackupWithPagesOfAnotherSize)
{
    for (const char *size : {"1024", "16384"}) {
        change((std::string("pragma page_size=") + size + "; vacuum").c_str());
        db.run("update StaffGroup set Name='now' where Code=7");
        EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), backup); }), std::nullopt) << size;
        EXPECT_EQ(name(), "before");
        EXPECT_EQ(db.text("pragma page_size"), "4096");
        EXPECT_EQ(db.text("pragma integrity_check"), "ok");
        EXPECT_EQ(db.text("pragma journal_mode"), "wal");
    }
}

// The file itself, copied while no program worked on it: on a medium that cannot be written there is no other way.
TEST_F(ARestore, LaysNothingBesideACopyOfADatabaseThatKeepsALog)
{
    change("pragma journal_mode=wal");
    EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), backup); }), std::nullopt);
    EXPECT_EQ(name(), "before");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("b.db"));
}

TEST_F(ARestore, ReadsTheLogOfACopyThatHasOne)
{
    sqlite3 *handle = nullptr;
    ASSERT_EQ(sqlite3_open(backup.toUtf8(), &handle), SQLITE_OK);
    registerSqliteFunctions(handle);
    ASSERT_EQ(sqlite3_exec(handle,
                           "pragma journal_mode=wal; pragma wal_autocheckpoint=0; "
                           "update StaffGroup set Name='in the log' where Code=7",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    const QString copy = folder.filePath("copy.db");
    for (const char *end : {"", "-wal"})
        ASSERT_TRUE(QFile::copy(backup + end, copy + end));
    sqlite3_close(handle);
    EXPECT_EQ(faultOf([&] { Backup::restore(db.path(), copy); }), std::nullopt);
    EXPECT_EQ(name(), "in the log");
}

TEST_F(ARestore, TellsWhatTheBackupHolds)
{
    db.run("insert into UserEvent(UserCode, EventText, EventDate, EventTime) values(1, 'x', '1403/02/03', "
           "'04:05:06')");
    Backup::save(db.path(), backup);
    db.run("insert into StaffGroup(Code, Name) values(8, 'later')");
    const Backup::TRestore restore(db.path(), backup);
    EXPECT_EQ(restore.contents().lastEvent, "1403/02/03 04:05:06");
    EXPECT_EQ(restore.contents().rows.value("StaffGroup"),
              db.text("select count(*) from StaffGroup").toLongLong() - 1);
    EXPECT_EQ(restore.contents().fileTime, QFileInfo(backup).lastModified());
    EXPECT_EQ(name(), "now") << "nothing is restored yet";
}

TEST_F(ARestore, IsRefusedWhenARecordWasOpenedAfterTheQuestion)
{
    Backup::TRestore restore(db.path(), backup);
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 806, 3)");
    EXPECT_EQ(faultOf([&] { restore.run(before); }), TFault::BeingEdited);
    EXPECT_EQ(name(), "now");
    EXPECT_FALSE(QFile::exists(before));
    db.run("delete from CodeLock_TBL");
    EXPECT_EQ(faultOf([&] { restore.run(before); }), std::nullopt) << "it may be tried again";
    EXPECT_EQ(name(), "before");
}

TEST_F(ARestore, KeepsAlsoWhatWasSavedAfterTheQuestion)
{
    Backup::TRestore restore(db.path(), backup);
    db.run("insert into StaffGroup(Code, Name) values(9, 'last minute')");
    restore.run(before);
    EXPECT_EQ(name(), "before");
    EXPECT_EQ(db.text("select Name from StaffGroup where Code=9"), "");
    TConnection kept;
    kept.openFile(before);
    EXPECT_EQ(kept.scalar(TStatement("select Name from StaffGroup where Code=9")).toString(), "last minute");
    EXPECT_EQ(kept.scalar(TStatement("select Name from StaffGroup where Code=7")).toString(), "now");
}

TEST_F(ARestore, WaitsForAWriterAndIsToldWhenItDoesNotFinish)
{
    Backup::TRestore restore(db.path(), backup);
    TConnection other;
    other.openFile(db.path());
    other.BeginTrans();
    restore.setPatience(300);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(faultOf([&] { restore.run(before); }), TFault::Locked);
    EXPECT_GE(timer.elapsed(), 250);
    EXPECT_LT(timer.elapsed(), 3000);
    EXPECT_FALSE(QFile::exists(before));
    other.RollbackTrans();
    EXPECT_EQ(name(), "now");
}

TEST_F(ARestore, ThatIsKilledLeavesNothingForLong)
{
    const pid_t child = fork();
    if (child == 0) {
        const Backup::TRestore restore(db.path(), backup);
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    ASSERT_NE(beside(), QStringList()) << "a whole copy of a database";
    Backup::removeLeftovers(db.path());
    EXPECT_EQ(beside(), QStringList());
    EXPECT_EQ(name(), "now");
}

TEST_F(ARestore, ThatRunsKeepsItsCopyWhenAnotherProgramStarts)
{
    Backup::TRestore restore(db.path(), backup);
    const QStringList copy = beside();
    ASSERT_NE(copy, QStringList());
    Backup::removeLeftovers(db.path());
    EXPECT_EQ(beside(), copy);
    EXPECT_EQ(faultOf([&] { Backup::TRestore(db.path(), backup); }), TFault::Locked) << "one at a time";
    restore.run(before);
    EXPECT_EQ(name(), "before");
}

TEST_F(ARestore, ABackupThatWasKilledIsClearedAwayByTheNextOneInItsFolder)
{
    const pid_t child = fork();
    if (child == 0) {
        const TPassingFile half(folder.filePath("killed.db.ketebionpap-part"));
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    QFile download(folder.filePath("film.part"));
    ASSERT_TRUE(download.open(QIODevice::WriteOnly));
    download.close();
    ASSERT_TRUE(QFile::exists(folder.filePath("killed.db.ketebionpap-part")));
    Backup::save(db.path(), folder.filePath("next.db"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"b.db", "film.part", "next.db"}));
}

} // namespace
