#include "host/Declaration_PKG/CodeLocks_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSysInfo>

#include <algorithm>

#include <pwd.h>
#include <unistd.h>

namespace {

const QString nameKey = QStringLiteral("Workstation/Name");
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
        .integer(lock.processId);
}

bool deleteLock(const TCodeLock &lock)
{
    return DM.ADOConnection1->execute(lockRow("delete from CodeLock_TBL where Code=", lock)) > 0;
}

QString now()
{
    return NowDate() + u' ' + NowTime();
}

QString programOf(qint64 process)
{
    QString program = QFileInfo(QStringLiteral("/proc/%1/exe").arg(process)).symLinkTarget();
    // A program that was brought up to date while it runs.
    const QString replaced = QStringLiteral(" (deleted)");
    if (program.endsWith(replaced))
        program.chop(replaced.size());
    return program;
}

} // namespace

bool RunsHere(qint64 processId)
{
    const qint64 own = QCoreApplication::applicationPid();
    if (processId <= 0 || processId == own)
        return false;
    const QString program = programOf(processId);
    return !program.isEmpty() && program == programOf(own);
}

QList<TCodeLock> ListCodeLocks()
{
    TQuery query(DM.ADOConnection1, QStringLiteral("Locks_QUR"));
    query.setStatement(TStatement("select l.Code, l.Status, l.Com_Index, w.Name, l.UserName, l.LockedAt, "
                                  "l.ProcessID from CodeLock_TBL as l left join Workstation as w "
                                  "on w.Com_Index = l.Com_Index order by l.Status, l.Code"));
    query.open();
    QList<TCodeLock> locks;
    for (int row = 0; row < query.recordCount(); ++row) {
        locks.append({query.valueAt(row, 0).toString(), TSoftwarePart(query.valueAt(row, 1).toInt()),
                      query.valueAt(row, 2).toInt(), query.valueAt(row, 3).toString(),
                      query.valueAt(row, 4).toString(), query.valueAt(row, 5).toString(),
                      query.valueAt(row, 6).toLongLong()});
    }
    return locks;
}

bool ReleaseCodeLock(const TCodeLock &lock)
{
    if (!deleteLock(lock))
        return false;
    SetUserEvent(lock.part, cpEdit,
                 QStringLiteral("آزاد کردن قفل کد %1 از %2 (%3)")
                     .arg(lock.code, SoftwarePartName(lock.part),
                          lock.workstation.isEmpty() ? QString::number(lock.comIndex) : lock.workstation),
                 false, false);
    return true;
}

int ReleaseLeftLocks(int comIndex, const QList<TSoftwarePart> &kept)
{
    int released = 0;
    for (const TCodeLock &lock : ListCodeLocks()) {
        const bool left = lock.comIndex == comIndex && lock.processId != 0 &&
                          lock.processId != QCoreApplication::applicationPid() && !RunsHere(lock.processId);
        if (left && !kept.contains(lock.part) && deleteLock(lock))
            ++released;
    }
    return released;
}

QList<TWorkstation> ListWorkstations()
{
    TQuery query(DM.ADOConnection1, QStringLiteral("Workstations_QUR"));
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
    const QString shortName = name.left(nameWidth);
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
    const auto before = DM.ADOConnection1->lastError();
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
        if (before)
            DM.ADOConnection1->noteError(*before);
        else
            DM.ADOConnection1->clearLastError();
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

void RemoveWorkstation(int comIndex)
{
    TConnection &connection = *DM.ADOConnection1;
    TTransaction transaction(connection);
    connection.execute(TStatement("delete from CodeLock_TBL where Com_Index=").integer(comIndex));
    connection.execute(TStatement("delete from Workstation where Com_Index=").integer(comIndex));
    transaction.commit();
}

QString ThisMachineName()
{
    const QString name = QSysInfo::machineHostName();
    return name.isEmpty() ? QStringLiteral("localhost") : name;
}

QString OwnWorkstationName()
{
    const QString kept = IniOptions.FileName.isEmpty()
                             ? QString()
                             : QSettings(IniOptions.FileName, PlainIni::format()).value(nameKey).toString();
    if (!kept.isEmpty())
        return kept;
    const struct passwd *user = getpwuid(geteuid());
    return user ? QStringLiteral("%1 (%2)").arg(ThisMachineName(), QString::fromLocal8Bit(user->pw_name))
                : ThisMachineName();
}

bool KeepWorkstationName(const QString &name)
{
    QSettings settings(IniOptions.FileName, PlainIni::format());
    settings.setValue(nameKey, name);
    settings.sync();
    return settings.status() == QSettings::NoError;
}
