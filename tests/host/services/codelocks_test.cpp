#include "host/services/Services.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

bool take(int code, int comIndex, TSoftwarePart part = cspTax)
{
    return OperationOnLockCode_SoftwarePart(QString::number(code), part, comIndex, otLock, false);
}

bool give(int code, int comIndex, TSoftwarePart part = cspTax)
{
    return OperationOnLockCode_SoftwarePart(QString::number(code), part, comIndex, otUnlock, false);
}

bool locked(int code, int comIndex, TSoftwarePart part = cspTax)
{
    return LocateLockCode_SoftwarePart(QString::number(code), part, comIndex, false);
}

} // namespace

class Locks : public Services {
protected:
    QString rows()
    {
        return db.rows("select Code, Status, Com_Index from CodeLock_TBL order by Status, Code");
    }
};

TEST_F(Locks, ALockNamesCodePartWorkstationUserAndProcess)
{
    EXPECT_TRUE(take(5, 1));
    EXPECT_EQ(rows(), "5|802|1");
    EXPECT_EQ(db.text("select UserName from CodeLock_TBL"), "admin");
    EXPECT_EQ(db.text("select ProcessID from CodeLock_TBL"),
              QString::number(QCoreApplication::applicationPid()));
    EXPECT_EQ(db.text("select LockedAt from CodeLock_TBL").size(), 16);
}

TEST_F(Locks, AnotherWorkstationDoesNotGetAHeldCode)
{
    EXPECT_TRUE(take(5, 1));
    EXPECT_FALSE(take(5, 2));
    EXPECT_TRUE(take(5, 2, cspStaff)) << "another part's code of the same number";
    EXPECT_TRUE(take(6, 2));
    EXPECT_EQ(rows(), "5|802|1\n6|802|2\n5|806|2");
}

TEST_F(Locks, TheWorkstationItselfTakesItsLockAgain)
{
    EXPECT_TRUE(take(5, 1));
    EXPECT_TRUE(take(5, 1));
    EXPECT_EQ(rows(), "5|802|1");
}

TEST_F(Locks, ALockOfAnotherProgramOfTheSuiteCountsWithoutAProcess)
{
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('5', 802, 2)");
    EXPECT_FALSE(take(5, 1));
    EXPECT_TRUE(locked(5, 1));
    EXPECT_TRUE(take(5, 2)) << "but the workstation that has it takes it again";
    EXPECT_EQ(rows(), "5|802|2");
}

TEST_F(Locks, OnlyTheHolderGivesALockUp)
{
    take(5, 1);
    EXPECT_FALSE(give(5, 2));
    EXPECT_EQ(rows(), "5|802|1");
    EXPECT_TRUE(give(5, 1));
    EXPECT_EQ(rows(), "");
    EXPECT_TRUE(give(5, 1)) << "what nobody holds is given up";
}

TEST_F(Locks, ALockedCodeIsFoundWhoeverHoldsIt)
{
    EXPECT_FALSE(locked(5, 1));
    take(5, 2);
    EXPECT_TRUE(locked(5, 1));
    EXPECT_TRUE(locked(5, 2));
    EXPECT_FALSE(locked(5, 1, cspStaff));
    EXPECT_FALSE(locked(50, 1));
}

TEST_F(Locks, AnyTextIsACode)
{
    const QString code = QString::fromUtf8("ک'--");
    EXPECT_TRUE(OperationOnLockCode_SoftwarePart(code, cspTax, 1, otLock, false));
    EXPECT_FALSE(OperationOnLockCode_SoftwarePart(code, cspTax, 2, otLock, false));
    EXPECT_TRUE(LocateLockCode_SoftwarePart(code, cspTax, 1, false));
    EXPECT_TRUE(OperationOnLockCode_SoftwarePart(code, cspTax, 1, otUnlock, false));
    EXPECT_EQ(rows(), "");
}

TEST_F(Locks, ALostRaceForACodeIsNoErrorOfTheNextSave)
{
    // Somebody else inserts the lock after it was found free.
    bool inserted = false;
    db.connection().setStatementHook([&](const TStatement &statement) {
        if (!inserted && statement.boundText().startsWith("Insert Into CodeLock_TBL")) {
            inserted = true;
            db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('5', 802, 9)");
        }
    });
    EXPECT_FALSE(take(5, 1));
    db.connection().setStatementHook({});
    EXPECT_TRUE(inserted);
    EXPECT_FALSE(db.connection().lastError());
}

TEST_F(Locks, ADatabaseErrorIsNoRefusal)
{
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_THROW(take(5, 1), TDatabaseError);
    db.failStatement(2, TFault::DiskFull);
    EXPECT_THROW(take(5, 1), TDatabaseError);
    db.failStatement(0);
    EXPECT_EQ(rows(), "");
}

namespace {

/// The other program: this one, started once more with a database in its environment. It never comes to its tests.
class TOtherProgram : public testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("LOCK_TEST_DATABASE"))
            return;
        int result = 0;
        try {
            TConnection connection;
            TestDatabase::open(connection, qEnvironmentVariable("LOCK_TEST_DATABASE"));
            DM.ADOConnection1 = &connection;
            const int index = qEnvironmentVariableIntValue("LOCK_TEST_INDEX");
            const int rounds = qEnvironmentVariableIntValue("LOCK_TEST_ROUNDS");
            rounds > 0 ? work(index, rounds) : hold(index);
            DM.ADOConnection1 = nullptr;
        } catch (const std::exception &error) {
            std::fprintf(stderr, "%s\n", error.what());
            result = 1;
        }
        std::fflush(stdout);
        std::_Exit(result);
    }

private:
    /// Takes the lock on 5 and keeps it until the first program says so or goes.
    static void hold(int index)
    {
        std::printf("lock:%s\n", take(5, index) ? "taken" : "refused");
        std::fflush(stdout);
        std::getchar();
        give(5, index);
    }
    /// Allots codes as an editor does, saves a record under each, and deletes every third one again.
    static void work(int index, int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            int code = 0;
            for (;;) {
                code = newCode();
                while (!take(code, index))
                    code = qMax(newCode(), code + 1);
                if (!stored(code))
                    break;
                give(code, index);
            }
            DM.ADOConnection1->execute(TStatement("insert into TaxMain(Code, Title) values(")
                                           .integer(code)
                                           .sql(",")
                                           .text(QString::number(index))
                                           .sql(")"));
            give(code, index);
            if (round % 3 == 2)
                DM.ADOConnection1->execute(TStatement("delete from TaxMain where Code=").integer(code));
        }
    }
    static int newCode()
    {
        return DM.ADOConnection1->scalar(TStatement("select isnull(max(Code),0)+1 from TaxMain")).toInt();
    }
    static bool stored(int code)
    {
        return DM.ADOConnection1->scalar(TStatement("select count(*) from TaxMain where Code=").integer(code))
                   .toInt() > 0;
    }
};
const auto *const otherProgram = testing::AddGlobalTestEnvironment(new TOtherProgram);

} // namespace

/// Several programs on one database.
class LocksOfTwoPrograms : public Locks {
protected:
    void start(QProcess &other, int comIndex, int rounds = 0,
               const QStringList &command = {QCoreApplication::applicationFilePath()})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LOCK_TEST_DATABASE", db.path());
        environment.insert("LOCK_TEST_INDEX", QString::number(comIndex));
        environment.insert("LOCK_TEST_ROUNDS", QString::number(rounds));
        other.setProcessEnvironment(environment);
        other.start(command.first(), command.mid(1) << "--gtest_filter=LocksOfTwoPrograms.*");
    }
    /// Starts the other program; it has taken the lock on 5 (or was refused) when this returns its answer.
    QString startOther(QProcess &other, int comIndex)
    {
        start(other, comIndex);
        return answer(other);
    }
    static QString answer(QProcess &other)
    {
        QByteArray line;
        while (!line.startsWith("lock:")) {
            if (!other.canReadLine() && !other.waitForReadyRead(20000))
                return "no answer: " + other.readAllStandardError();
            line = other.readLine();
        }
        return QString::fromUtf8(line).trimmed();
    }
    static void end(QProcess &other)
    {
        other.write("end\n");
        EXPECT_TRUE(other.waitForFinished(20000));
        EXPECT_EQ(other.exitCode(), 0);
    }
    static void kill(QProcess &other)
    {
        ::kill(pid_t(other.processId()), SIGKILL);
        EXPECT_TRUE(other.waitForFinished(20000));
    }
};

TEST_F(LocksOfTwoPrograms, EightWorkstationsAtOnceGetNoCodeTwiceAndLeaveNoLock)
{
    const int rounds = 15;
    std::vector<std::unique_ptr<QProcess>> others;
    for (int index = 1; index <= 8; ++index) {
        others.push_back(std::make_unique<QProcess>());
        start(*others.back(), index, rounds);
    }
    for (const auto &other : others) {
        EXPECT_TRUE(other->waitForFinished(120000));
        EXPECT_EQ(other->exitCode(), 0) << other->readAllStandardError().toStdString();
    }
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(db.text("select count(*) from TaxMain"), QString::number(8 * rounds * 2 / 3));
    for (int index = 1; index <= 8; ++index)
        EXPECT_EQ(db.text(QString("select count(*) from TaxMain where Title = '%1'").arg(index)),
                  QString::number(rounds * 2 / 3));
}

TEST_F(LocksOfTwoPrograms, TwoWorkstationsNeverHoldOneCode)
{
    QProcess other;
    ASSERT_EQ(startOther(other, 2), "lock:taken");
    EXPECT_FALSE(take(5, 1));
    EXPECT_TRUE(locked(5, 1));
    end(other);
    EXPECT_TRUE(take(5, 1));
}

TEST_F(LocksOfTwoPrograms, WhatThisProgramHoldsTheOtherOneDoesNotGet)
{
    ASSERT_TRUE(take(5, 1));
    QProcess other;
    EXPECT_EQ(startOther(other, 2), "lock:refused");
    end(other);
    EXPECT_EQ(rows(), "5|802|1") << "and it does not give up what it never had";
}

TEST_F(LocksOfTwoPrograms, ARunningProgramOfTheSameWorkstationKeepsItsLock)
{
    QProcess other;
    ASSERT_EQ(startOther(other, 1), "lock:taken");
    EXPECT_TRUE(RunsHere(other.processId()));
    EXPECT_FALSE(take(5, 1));
    EXPECT_TRUE(locked(5, 1));
    EXPECT_EQ(ReleaseLeftLocks(1), 0);
    end(other);
    EXPECT_TRUE(take(5, 1));
}

TEST_F(LocksOfTwoPrograms, ACopyOfTheProgramAtAnotherPathKeepsItsLockWhileItRuns)
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath("copy");
    ASSERT_TRUE(QFile::copy(QCoreApplication::applicationFilePath(), copy));
    QProcess other;
    start(other, 1, 0, {"env", "LD_LIBRARY_PATH=" + QCoreApplication::applicationDirPath(), copy});
    ASSERT_EQ(answer(other), "lock:taken");
    EXPECT_FALSE(take(5, 1));
    EXPECT_TRUE(locked(5, 1));
    EXPECT_EQ(ReleaseLeftLocks(1), 0);
    kill(other);
    EXPECT_EQ(ReleaseLeftLocks(1), 1);
    EXPECT_TRUE(take(5, 1));
}

// Each space of process numbers counts from 1: a number of the one means another program in the other.
TEST_F(LocksOfTwoPrograms, AProgramInAContainerCountsAsRunning)
{
    QProcess probe;
    const QStringList container{"unshare", "-U", "-r", "-p", "-f", "--kill-child", "--mount-proc"};
    probe.start(container.first(), container.mid(1) << "true");
    if (!probe.waitForFinished() || probe.exitCode() != 0)
        GTEST_SKIP() << "this machine allows no space of process numbers of one's own";
    QProcess other;
    start(other, 1, 0, container + QStringList{QCoreApplication::applicationFilePath()});
    ASSERT_EQ(answer(other), "lock:taken");
    EXPECT_EQ(db.text("select ProcessID from CodeLock_TBL"), "1");
    EXPECT_FALSE(take(5, 1));
    EXPECT_EQ(ReleaseLeftLocks(1), 0);
    // And the other way round.
    EXPECT_TRUE(take(6, 1));
    QProcess second;
    start(second, 1, 0, container + QStringList{QCoreApplication::applicationFilePath()});
    EXPECT_EQ(answer(second), "lock:refused");
    end(second);
    end(other);
    EXPECT_TRUE(take(5, 1));
}

TEST_F(LocksOfTwoPrograms, AKilledProgramsLockIsTakenAgainByItsWorkstationOnly)
{
    QProcess other;
    ASSERT_EQ(startOther(other, 1), "lock:taken");
    const QString process = db.text("select ProcessID from CodeLock_TBL");
    kill(other);
    EXPECT_EQ(rows(), "5|802|1") << "the lock outlives the program";
    EXPECT_EQ(db.text("select ProcessID from CodeLock_TBL"), process);
    EXPECT_FALSE(take(5, 2));
    EXPECT_TRUE(locked(5, 2)) << "another workstation cannot know";
    EXPECT_FALSE(locked(5, 1)) << "no editor has it open";
    EXPECT_TRUE(take(5, 1));
    EXPECT_TRUE(locked(5, 1));
    EXPECT_EQ(db.text("select ProcessID from CodeLock_TBL"),
              QString::number(QCoreApplication::applicationPid()));
}

TEST_F(LocksOfTwoPrograms, LocksLeftByKilledProgramsGoAtTheNextStart)
{
    QProcess other;
    ASSERT_EQ(startOther(other, 1), "lock:taken");
    const qint64 process = other.processId();
    kill(other);
    take(6, 1);
    for (int code : {7, 10})
        db.run(
            QString("insert into CodeLock_TBL(Code, Status, Com_Index, ProcessID) values('%1', 806, 1, %2)")
                .arg(code)
                .arg(process));
    db.run("insert into tmpStaffFamily(ID, StaffCode, Name) values(1, 7, 'typed')");
    db.run(QString("insert into CodeLock_TBL(Code, Status, Com_Index, ProcessID) values('8', 802, 2, %1)")
               .arg(process));
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 802, 1)");
    EXPECT_EQ(ReleaseLeftLocks(1), 2);
    EXPECT_EQ(rows(), "6|802|1\n8|802|2\n9|802|1\n7|806|1")
        << "own ones, those with rows to recover, other workstations' and those of unknown programs stay";
}

TEST_F(Locks, TheOwnProcessAndAForeignOneAreNoOtherProgramOfTheSuite)
{
    EXPECT_FALSE(RunsHere(QCoreApplication::applicationPid()));
    EXPECT_FALSE(RunsHere(0));
    EXPECT_FALSE(RunsHere(-1));
    EXPECT_FALSE(RunsHere(1)) << "the first process is no payroll program";
}

TEST_F(Locks, AnAdministratorSeesAllLocksWithWorkstationAndUser)
{
    EXPECT_TRUE(RegisterWorkstation(1, QString::fromUtf8("حسابداری")));
    take(10, 1);
    take(5, 1, cspStaff);
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('3', 806, 9)");
    const QList<TCodeLock> locks = ListCodeLocks();
    ASSERT_EQ(locks.size(), 3);
    EXPECT_EQ(locks[0].code, "10");
    EXPECT_EQ(locks[0].part, cspTax);
    EXPECT_EQ(locks[0].workstation, QString::fromUtf8("حسابداری"));
    EXPECT_EQ(locks[0].userName, "admin");
    EXPECT_EQ(locks[0].processId, QCoreApplication::applicationPid());
    EXPECT_EQ(locks[1].comIndex, 9);
    EXPECT_EQ(locks[1].workstation, "");
    EXPECT_EQ(locks[1].processId, 0);
    EXPECT_EQ(locks[2].code, "5");
}

TEST_F(Locks, AnAdministratorReleasesOneLockAndTheLogSaysSo)
{
    take(5, 1);
    take(6, 1);
    const TCodeLock lock = ListCodeLocks().first();
    EXPECT_TRUE(ReleaseCodeLock(lock));
    EXPECT_EQ(rows(), "6|802|1");
    EXPECT_FALSE(ReleaseCodeLock(lock)) << "it is gone";
    EXPECT_EQ(db.text("select count(*) from UserEvent where SoftwarePart = 802"), "1");
}

TEST_F(Locks, ALockThatChangedHandsMeanwhileIsNotReleased)
{
    take(5, 1);
    const TCodeLock seen = ListCodeLocks().first();
    give(5, 1);
    take(5, 2);
    EXPECT_FALSE(ReleaseCodeLock(seen));
    EXPECT_EQ(rows(), "5|802|2");
}

class Workstations : public Services {};

TEST_F(Workstations, AnIndexBelongsToOneName)
{
    EXPECT_TRUE(RegisterWorkstation(1, "one"));
    EXPECT_TRUE(RegisterWorkstation(1, "one")) << "the same one at its next start";
    EXPECT_FALSE(RegisterWorkstation(1, "two"));
    EXPECT_TRUE(RegisterWorkstation(2, "two"));
    EXPECT_EQ(db.rows("select Com_Index, Name from Workstation order by 1"), "1|one\n2|two");
    EXPECT_EQ(ListWorkstations().size(), 2);
    EXPECT_EQ(ListWorkstations()[1].name, "two");
    EXPECT_EQ(ListWorkstations()[1].lastSeen.size(), 16);
    EXPECT_FALSE(db.connection().lastError());
}

TEST_F(Workstations, FreeIndexesAreTheFirstThatNobodyHas)
{
    for (int index : {1, 3, 4})
        RegisterWorkstation(index, QString::number(index));
    EXPECT_EQ(FreeWorkstationIndexes(3), (QList<int>{2, 5, 6}));
}

TEST_F(Workstations, AWorkstationThatIsGoneLeavesIndexAndLocks)
{
    RegisterWorkstation(1, "one");
    RegisterWorkstation(2, "two");
    take(5, 1);
    take(6, 2);
    RemoveWorkstation(2);
    EXPECT_EQ(db.rows("select Code, Com_Index from CodeLock_TBL"), "5|1");
    EXPECT_EQ(FreeWorkstationIndexes(1), QList<int>{2});
}

TEST_F(Workstations, ThisMachineHasAName)
{
    EXPECT_FALSE(ThisMachineName().isEmpty());
}
