#include "host/services/Services.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

/// This process's mark with one part forged.
QString forged(int part, const QString &text)
{
    QStringList parts = ThisProcess().split(u' ');
    parts[part] = text;
    return parts.join(u' ');
}

} // namespace

/// What is known of processes, and of the rows that they left.
class LeftRows : public Services {
protected:
    LeftRows() { IniOptions.Com_Index = 1; }
    void lock(int code, TSoftwarePart part, int comIndex, const QString &process = forged(4, "1"))
    {
        db.run(QString("insert into CodeLock_TBL(Code, Status, Com_Index, ProcessID, Process) "
                       "values('%1', %2, %3, 77, '%4')")
                   .arg(code)
                   .arg(int(part))
                   .arg(comIndex)
                   .arg(process));
    }
    void member(int id, int staff, const QString &table = "tmpStaffFamily")
    {
        db.run(
            QString("insert into %1(ID, StaffCode, Name) values(%2, %3, 'n')").arg(table).arg(id).arg(staff));
    }
    QString locks()
    {
        return db.rows("select Code, Status, Com_Index from CodeLock_TBL order by Status, Code");
    }
    QString working() { return db.rows("select ID, StaffCode from tmpStaffFamily order by ID"); }
    QString event()
    {
        return db.text("select EventText from UserEvent where ID=(select max(ID) from UserEvent)");
    }
};

TEST_F(LeftRows, AProcessIsKnownByItsMachineItsStartAndItsSpaceOfNumbers)
{
    const QString own = ThisProcess();
    ASSERT_EQ(own.split(u' ').size(), 5) << own.toStdString();
    EXPECT_LE(own.size(), 100);
    for (const QString &part : own.split(u' '))
        EXPECT_FALSE(part.isEmpty()) << own.toStdString();
    const qint64 pid = QCoreApplication::applicationPid();
    EXPECT_FALSE(RunsHere(pid, own)) << "this one is no other one";
    EXPECT_FALSE(RunsHere(pid, forged(4, "1"))) << "the number came round again";
    EXPECT_FALSE(RunsHere(pid, forged(1, "x"))) << "the machine was started anew";
    EXPECT_TRUE(RunsHere(pid, forged(0, "x"))) << "another machine";
    EXPECT_TRUE(RunsHere(pid, forged(2, "1"))) << "another space of numbers";
    EXPECT_TRUE(RunsHere(pid, "of a later version"));
    EXPECT_TRUE(IsThisProcess(1, own));
    EXPECT_FALSE(IsThisProcess(pid, forged(4, "1")));
    EXPECT_TRUE(IsThisProcess(pid, {})) << "a lock of an earlier version";
}

TEST_F(LeftRows, ALockOfAPredecessorWithTheSameNumberIsTakenAgain)
{
    lock(5, cspTax, 1);
    db.run(QString("update CodeLock_TBL set ProcessID=%1").arg(QCoreApplication::applicationPid()));
    EXPECT_FALSE(LocateLockCode_SoftwarePart("5", cspTax, 1, false));
    EXPECT_TRUE(OperationOnLockCode_SoftwarePart("5", cspTax, 1, otLock, false));
    EXPECT_TRUE(HoldsCodeLock("5", cspTax, 1));
}

TEST_F(LeftRows, ALockThatAnotherProgramGotMeanwhileIsNotGivenUp)
{
    lock(5, cspTax, 1, forged(2, "1"));
    EXPECT_FALSE(HoldsCodeLock("5", cspTax, 1));
    EXPECT_FALSE(OperationOnLockCode_SoftwarePart("5", cspTax, 1, otUnlock, false));
    EXPECT_EQ(locks(), "5|802|1");
}

TEST_F(LeftRows, TheNextStartFreesWhatHasNothingToRecover)
{
    db.run("insert into Staff(Code, Name, LastName, StaffGroup) values(5, 'n', 'l', 0)");
    db.run("insert into Staff(Code, Name, LastName, StaffGroup) values(6, 'm', 'l', 0)");
    member(1, 5, "StaffFamily");
    member(1, 5); // as it is stored
    member(2, 6);
    lock(4, cspStaff, 1);
    lock(5, cspStaff, 1);
    lock(6, cspStaff, 1);
    lock(8, cspTax, 1);
    lock(9, cspTax, 1, forged(2, "1"));
    EXPECT_EQ(ReleaseLeftLocks(1), 3);
    EXPECT_EQ(locks(), "9|802|1\n6|806|1") << "one has rows, one may be at work";
    EXPECT_EQ(working(), "2|6");
}

TEST_F(LeftRows, AFreedLockTakesItsRowsAlongOrKeepsThemForThisWorkstation)
{
    lock(5, cspStaff, 2);
    lock(6, cspStaff, 2);
    member(1, 5);
    member(2, 6);
    ASSERT_EQ(ListCodeLocks().size(), 2);
    EXPECT_TRUE(ReleaseCodeLock(ListCodeLocks()[0], TRowsFate::Discard));
    EXPECT_EQ(working(), "2|6");
    EXPECT_TRUE(event().contains(QString::fromUtf8("1 سطر ثبت نشده دور ریخته شد"))) << event().toStdString();
    EXPECT_TRUE(ReleaseCodeLock(ListCodeLocks()[0], TRowsFate::Keep));
    EXPECT_EQ(working(), "2|6");
    EXPECT_EQ(locks(), "6|806|1");
    EXPECT_TRUE(event().contains(QString::fromUtf8("برای بازیابی نگه داشته شد"))) << event().toStdString();
    EXPECT_TRUE(OperationOnLockCode_SoftwarePart("6", cspStaff, 1, otLock, false));
}

TEST_F(LeftRows, AWorkstationThatGoesTakesItsRowsAlongOrLeavesThemHere)
{
    for (const TRowsFate fate : {TRowsFate::Keep, TRowsFate::Discard}) {
        db.run("delete from CodeLock_TBL");
        db.run("delete from tmpStaffFamily");
        ASSERT_TRUE(RegisterWorkstation(2, "two"));
        lock(5, cspStaff, 2);
        lock(7, cspTax, 2);
        lock(8, cspTax, 3);
        member(1, 5);
        EXPECT_EQ(CountWorkingRowsOf(2), 1);
        RemoveWorkstation(2, fate);
        EXPECT_EQ(locks(), fate == TRowsFate::Keep ? "8|802|3\n5|806|1" : "8|802|3");
        EXPECT_EQ(working(), fate == TRowsFate::Keep ? "1|5" : "");
        EXPECT_TRUE(event().contains("two")) << event().toStdString();
        EXPECT_TRUE(ListWorkstations().isEmpty());
    }
}

TEST_F(LeftRows, TheNoteOfRowsSaysWhoseTheyAre)
{
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 1), TRowsOwner::Nobody);
    NoteWorkingRows(cspTax, "5", 1);
    NoteWorkingRows(cspTax, "5", 1);
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 1), TRowsOwner::Own);
    db.run(QString("update WorkingRows set Process='%1'").arg(forged(4, "1")));
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 1), TRowsOwner::Left);
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 2), TRowsOwner::AtWork) << "another workstation cannot know";
    ForgetWorkingRows(cspTax, "5");
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 1), TRowsOwner::Left) << "only its own note is taken back";
    db.run(QString("update WorkingRows set Process='%1'").arg(forged(2, "1")));
    EXPECT_EQ(WorkingRowsOwner(cspTax, "5", 1), TRowsOwner::AtWork);
}
