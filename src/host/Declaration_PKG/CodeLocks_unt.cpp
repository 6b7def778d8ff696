#include "host/Declaration_PKG/CodeLocks_unt.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QSysInfo>

#include <algorithm>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString nameKey = u"Workstation/Name"_s;
const int nameWidth = 100; // characters of Workstation.Name

TStatement lockRow(const char *beginning, const TCodeLock &lock)
{
    return TStatement(beginning)
        .text(lock.code)
        .sql(" and Status=")
        .integer(int(lock.part))
        .sql(" and Com_Index=")
        .integer(lock.comIndex)
        .sql(" and isnull(ProcessID,0)=")
        .integer(lock.processId)
        .sql(" and isnull(Process,'')=")
        .text(lock.process.isNull() ? u""_s : lock.process);
}

/// How many locks on a code are this program's.
TStatement ownLock(const QString &code, TSoftwarePart part, int comIndex)
{
    return TStatement("select count(*) from CodeLock_TBL where Code=")
        .text(code)
        .sql(" and Status=")
        .integer(int(part))
        .sql(" and Com_Index=")
        .integer(comIndex)
        .sql(" and Process=")
        .text(ThisProcess());
}

bool deleteLock(const TCodeLock &lock)
{
    return DM.ADOConnection1->execute(lockRow("delete from CodeLock_TBL where Code=", lock)) > 0;
}

QString now()
{
    return NowDate() + u' ' + NowTime();
}

/// Left by a program of this workstation that runs no more.
bool isLeft(const TCodeLock &lock, int comIndex)
{
    return lock.comIndex == comIndex && lock.processId != 0 && !IsThisProcess(lock.processId, lock.process) &&
           !RunsHere(lock.processId, lock.process);
}

/// Runs work as one unit.
template <class Work>
void inOne(Work work)
{
    TTransaction transaction(*DM.ADOConnection1);
    work();
    transaction.commit();
}

/// Takes a lock away from its holder, with what becomes of the rows under it. False when it is held no more.
bool takeAway(const TCodeLock &lock, TRowsFate fate)
{
    if (fate == TRowsFate::Keep && CountWorkingRows(lock.part, lock.code) > 0) {
        // A lock of no process is one whose rows were left behind.
        TStatement keep("update CodeLock_TBL set ProcessID=null, Process=null, Com_Index=");
        keep.integer(IniOptions.Com_Index).append(lockRow(" where Code=", lock));
        if (DM.ADOConnection1->execute(keep) == 0)
            return false;
        LeaveWorkingRows(lock.part, lock.code, IniOptions.Com_Index);
        return true;
    }
    if (!deleteLock(lock))
        return false;
    DiscardWorkingRows(lock.part, lock.code);
    return true;
}

QString fateText(TRowsFate fate, int rows)
{
    if (rows == 0)
        return {};
    return fate == TRowsFate::Keep ? u"، %1 سطر ثبت نشده برای بازیابی نگه داشته شد"_s.arg(rows)
                                   : u"، %1 سطر ثبت نشده دور ریخته شد"_s.arg(rows);
}

} // namespace

QList<TCodeLock> ListCodeLocks()
{
    TQuery query(DM.ADOConnection1, u"Locks_QUR"_s);
    query.setStatement(TStatement("select l.Code, l.Status, l.Com_Index, w.Name, l.UserName, l.LockedAt, "
                                  "l.ProcessID, l.Process from CodeLock_TBL as l left join Workstation as w "
                                  "on w.Com_Index = l.Com_Index order by l.Status, l.Code"));
    query.open();
    QList<TCodeLock> locks;
    for (int row = 0; row < query.recordCount(); ++row) {
        locks.append({query.valueAt(row, 0).toString(), TSoftwarePart(query.valueAt(row, 1).toInt()),
                      query.valueAt(row, 2).toInt(), query.valueAt(row, 3).toString(),
                      query.valueAt(row, 4).toString(), query.valueAt(row, 5).toString(),
                      query.valueAt(row, 6).toLongLong(), query.valueAt(row, 7).toString()});
    }
    return locks;
}

bool ReleaseCodeLock(const TCodeLock &lock, TRowsFate fate)
{
    const int rows = CountWorkingRows(lock.part, lock.code);
    bool released = false;
    inOne([&] { released = takeAway(lock, fate); });
    if (!released)
        return false;
    SetUserEvent(lock.part, cpEdit,
                 u"آزاد کردن قفل کد %1 از %2 (%3)%4"_s.arg(
                     lock.code, SoftwarePartName(lock.part),
                     lock.workstation.isEmpty() ? QString::number(lock.comIndex) : lock.workstation,
                     fateText(fate, rows)),
                 false, false);
    return true;
}

int ReleaseLeftLocks(int comIndex)
{
    int released = 0;
    for (const TCodeLock &lock : ListCodeLocks()) {
        if (!isLeft(lock, comIndex) || WorkingRowsDiffer(lock.part, lock.code))
            continue;
        inOne([&] {
            if (takeAway(lock, TRowsFate::Discard))
                ++released;
        });
    }
    return released;
}

bool HoldsCodeLock(const QString &code, TSoftwarePart part, int comIndex)
{
    return DM.ADOConnection1->scalar(ownLock(code, part, comIndex)).toInt() > 0;
}

TSaveGround AskSaveGround(const QString &code, TSoftwarePart part, int comIndex, TPermission right)
{
    if (code.isEmpty())
        return {true, StandingOf(UserInfo, part, right)};
    if (UserInfo.Code == 0)
        return {HoldsCodeLock(code, part, comIndex), StandingOf(UserInfo, part, right)};
    const int answer = DM.ADOConnection1
                           ->scalar(TStatement("select (")
                                        .append(ownLock(code, part, comIndex))
                                        .sql(")*10+")
                                        .append(StandingExpression(UserInfo, part, right)))
                           .toInt();
    return {answer >= 10, TStanding(answer % 10)};
}

QList<TWorkstation> ListWorkstations()
{
    TQuery query(DM.ADOConnection1, u"Workstations_QUR"_s);
    query.setStatement(TStatement("select Com_Index, Name, LastSeen from Workstation order by Com_Index"));
    query.open();
    QList<TWorkstation> list;
    for (int row = 0; row < query.recordCount(); ++row)
        list.append({query.valueAt(row, 0).toInt(), query.valueAt(row, 1).toString(),
                     query.valueAt(row, 2).toString()});
    return list;
}

bool RegisterWorkstation(int comIndex, const QString &name)
{
    const QString shortName = PersianText::cut(name, nameWidth);
    const auto seen = [&] {
        return DM.ADOConnection1->execute(TStatement("update Workstation set LastSeen=")
                                              .text(now())
                                              .sql(" where Com_Index=")
                                              .integer(comIndex)
                                              .sql(" and Name=")
                                              .text(shortName)) > 0;
    };
    if (seen())
        return true;
    try {
        DM.ADOConnection1->execute(TStatement("insert into Workstation(Com_Index, Name, LastSeen) values(")
                                       .integer(comIndex)
                                       .sql(",")
                                       .text(shortName)
                                       .sql(",")
                                       .text(now())
                                       .sql(")"));
        return true;
    } catch (const TDatabaseError &error) {
        if (error.fault() != TFault::Refused)
            throw;
    }
    // Another program of this workstation may have registered it meanwhile.
    return seen();
}

bool RegisterOwnWorkstation()
{
    const QString name = OwnWorkstationName();
    if (!IniOptions.IsNew && RegisterWorkstation(IniOptions.Com_Index, name))
        return true;
    // The next one where another workstation was faster.
    do
        IniOptions.Com_Index = FreeWorkstationIndexes(1).value(0, 1);
    while (!RegisterWorkstation(IniOptions.Com_Index, name));
    return IniOptions.save() && KeepWorkstationName(name);
}

QList<int> FreeWorkstationIndexes(int count)
{
    QList<int> taken;
    for (const TWorkstation &workstation : ListWorkstations())
        taken << workstation.comIndex;
    QList<int> free;
    for (int index = 1; free.size() < count; ++index) {
        if (!taken.contains(index))
            free << index;
    }
    return free;
}

int CountWorkingRowsOf(int comIndex)
{
    int rows = 0;
    for (const TCodeLock &lock : ListCodeLocks())
        if (lock.comIndex == comIndex)
            rows += CountWorkingRows(lock.part, lock.code);
    return rows;
}

void RemoveWorkstation(int comIndex, TRowsFate fate)
{
    const int rows = CountWorkingRowsOf(comIndex);
    const QString name = ScalerQuery(u"Workstation"_s, u"Name"_s, u"Com_Index"_s, comIndex);
    inOne([&] {
        for (const TCodeLock &lock : ListCodeLocks())
            if (lock.comIndex == comIndex)
                takeAway(lock, fate);
        // The rows of records that are not locked: another station's next opening drops them in any case.
        DM.ADOConnection1->execute(
            fate == TRowsFate::Keep
                ? TStatement("update WorkingRows set ProcessID=null, Process=null, Com_Index=")
                      .integer(IniOptions.Com_Index)
                      .sql(" where Com_Index=")
                      .integer(comIndex)
                : TStatement("delete from WorkingRows where Com_Index=").integer(comIndex));
        DM.ADOConnection1->execute(TStatement("delete from Workstation where Com_Index=").integer(comIndex));
    });
    SetUserEvent(TSoftwarePart(0), cpDelete,
                 u"حذف ایستگاه %1 (%2)%3"_s.arg(comIndex).arg(name, fateText(fate, rows)), true, false);
}

QString ThisMachineName()
{
    const QString name = QSysInfo::machineHostName();
    return name.isEmpty() ? u"localhost"_s : name;
}

QString OwnWorkstationName()
{
    const QString kept = IniOptions.FileName.isEmpty()
                             ? QString()
                             : QSettings(IniOptions.FileName, PlainIni::format()).value(nameKey).toString();
    if (!kept.isEmpty())
        return kept;
    const struct passwd *user = getpwuid(geteuid());
    return user ? u"%1 (%2)"_s.arg(ThisMachineName(), QString::fromLocal8Bit(user->pw_name))
                : ThisMachineName();
}

bool KeepWorkstationName(const QString &name)
{
    QSettings settings(IniOptions.FileName, PlainIni::format());
    settings.setValue(nameKey, name);
    settings.sync();
    return settings.status() == QSettings::NoError;
}
