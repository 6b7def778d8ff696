#include "host/database/Backup.h"

#include "host/database/SealedFile.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// Backups with a password, from the database and back into it.

namespace {

const QString password = u"رمز-Right-7"_s;

class ASealedBackup : public testing::Test {
protected:
    ASealedBackup() { db.run("insert into StaffGroup(Code, Name) values(7, 'before')"); }
    QString file(const char *name) const { return folder.filePath(name); }
    QString names() { return db.rows("select Name from StaffGroup where Code=7"); }
    QStringList besideTheDatabase() const
    {
        return QDir(QFileInfo(db.path()).path())
            .entryList({"*.backup*", "*.restore*", "*part*"}, QDir::Files | QDir::Hidden);
    }
    static QByteArray read(const QString &name)
    {
        QFile in(name);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    std::optional<TSealFault> refusal(const QString &source, const QString &with)
    {
        std::optional<TSealFault> fault;
        try {
            Backup::restore(db.path(), source, with);
        } catch (const TSealError &error) {
            fault = error.fault();
        }
        EXPECT_EQ(besideTheDatabase(), QStringList()) << "nothing is left behind";
        return fault;
    }

    TestDatabase db{TestDatabase::FileAlways};
    QTemporaryDir folder;
};

TEST_F(ASealedBackup, IsOnePrivateFileThatBringsEverythingBack)
{
    Backup::save(db.path(), file("b.db"), password);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("b.db"));
    EXPECT_EQ(besideTheDatabase(), QStringList());
    EXPECT_FALSE(QFile::permissions(file("b.db")) &
                 (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
    const QByteArray bytes = read(file("b.db"));
    for (const char *word : {"SQLite", "StaffGroup", "before"})
        EXPECT_FALSE(bytes.contains(word)) << word;
    db.run("update StaffGroup set Name='after' where Code=7");
    Backup::restore(db.path(), file("b.db"), password);
    EXPECT_EQ(names(), "before");
    EXPECT_EQ(besideTheDatabase(), QStringList());
}

TEST_F(ASealedBackup, ReplacesAnOlderOneOfEitherKind)
{
    Backup::save(db.path(), file("b.db"));
    EXPECT_TRUE(read(file("b.db")).startsWith("SQLite"));
    Backup::save(db.path(), file("b.db"), password);
    EXPECT_FALSE(read(file("b.db")).contains("SQLite"));
    Backup::save(db.path(), file("b.db"));
    EXPECT_TRUE(read(file("b.db")).startsWith("SQLite"));
    Backup::restore(db.path(), file("b.db"), u"a password that it does not have"_s);
    EXPECT_EQ(names(), "before");
}

TEST_F(ASealedBackup, ChangesNothingWhenItCannotBeOpened)
{
    Backup::save(db.path(), file("b.db"), password);
    db.run("update StaffGroup set Name='now' where Code=7");
    const QByteArray whole = read(file("b.db"));
    EXPECT_EQ(refusal(file("b.db"), {}), TSealFault::NoPassword);
    EXPECT_EQ(refusal(file("b.db"), u"another one"_s), TSealFault::WrongPassword);
    ASSERT_TRUE(QFile::resize(file("b.db"), whole.size() / 2));
    EXPECT_EQ(refusal(file("b.db"), password), TSealFault::Cut);
    QFile damaged(file("b.db"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    QByteArray changed = whole;
    changed[changed.size() - 1000] = char(changed.at(changed.size() - 1000) ^ 1);
    damaged.write(changed);
    damaged.close();
    EXPECT_EQ(refusal(file("b.db"), password), TSealFault::Broken);
    EXPECT_EQ(names(), "now");
}

TEST_F(ASealedBackup, OfSomethingElseIsRefusedAsThatWouldBe)
{
    QFile letter(file("letter"));
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(10000, 'x'));
    letter.close();
    QFile target(file("sealed"));
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    target.close();
    SealedFile::seal(file("letter"), file("sealed"), password);
    std::optional<TFault> fault;
    try {
        Backup::restore(db.path(), file("sealed"), password);
    } catch (const TDatabaseError &error) {
        fault = error.fault();
    }
    EXPECT_EQ(fault, TFault::NotADatabase);
    EXPECT_EQ(names(), "before");
    EXPECT_EQ(besideTheDatabase(), QStringList());
}

const char killedDatabase[] = "SEALED_BACKUP_OF";
const char killedTarget[] = "SEALED_BACKUP_TO";

/// Who is killed: a process of its own.
TEST(SealedBackupClerk, DISABLED_MakesOne)
{
    Backup::save(qEnvironmentVariable(killedDatabase), qEnvironmentVariable(killedTarget), password);
}

TEST_F(ASealedBackup, ThatWasKilledLeavesNothingHalfUnderItsNameAndNoPlainCopyForLong)
{
    db.run("create table Filler(Text text)"); // some megabytes, so that a kill meets the writing, too
    for (int i = 0; i < 24; ++i)
        db.run("insert into Filler(Text) values(hex(randomblob(500000)))");
    const QByteArray older = "the older backup";
    int killed = 0;
    int withPlainCopy = 0;
    int withHalf = 0;
    for (int round = 0; round < 12; ++round) {
        QFile target(file("b.db"));
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(older);
        target.close();
        QProcess clerk;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(killedDatabase, db.path());
        environment.insert(killedTarget, file("b.db"));
        clerk.setProcessEnvironment(environment);
        clerk.start(
            QCoreApplication::applicationFilePath(),
            {"--gtest_filter=SealedBackupClerk.DISABLED_MakesOne", "--gtest_also_run_disabled_tests"});
        // Killed in the plain copy, amid the password, in the writing, at the reading back: where its files show it.
        const QString part = file("b.db.ketebionpap-part");
        QElapsedTimer time;
        time.start();
        const auto reached = [&] {
            switch (round % 3) {
            case 0:
                return QFile::exists(db.path() + ".backup");
            case 1:
                return QFile(part).size() > 0;
            default:
                return QFile(part).size() > (20 << 20);
            }
        };
        while (clerk.state() != QProcess::NotRunning && !reached() && time.elapsed() < 30000)
            clerk.waitForFinished(1);
        QThread::msleep(unsigned(round));
        clerk.kill();
        ASSERT_TRUE(clerk.waitForFinished());
        if (clerk.exitStatus() != QProcess::CrashExit)
            continue; // it was quicker
        ++killed;
        withPlainCopy += QFile::exists(db.path() + ".backup");
        withHalf += QFile(part).size() > 0;
        const QByteArray found = read(file("b.db"));
        EXPECT_TRUE(found == older || found.size() > (20 << 20))
            << "whole, or the older one: " << found.size();
        const QFile::Permissions others =
            QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        EXPECT_FALSE(QFile::permissions(db.path() + ".backup") & others);
        EXPECT_FALSE(read(part).contains("SQLite")) << "no plain copy where the backup goes";
        Backup::removeLeftovers(db.path());
        EXPECT_EQ(besideTheDatabase(), QStringList());
    }
    EXPECT_GT(killed, 3);
    EXPECT_GT(withPlainCopy, 0);
    EXPECT_GT(withHalf, 0);
    Backup::save(db.path(), file("b.db"), password);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("b.db"))
        << "the next backup takes away what is left there";
}

} // namespace
