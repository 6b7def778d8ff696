#include "host/Declaration_PKG/Commonlibrary_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Process_unt.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "host/database/Query.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isIdentifier(const QString &name)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c.isDigit() || c == u'_';
    });
}

enum class Holder { Nobody, Here, Elsewhere };

struct Lock {
    Holder holder = Holder::Nobody;
    qint64 process = 0;
    QString mark; ///< ThisProcess of the holder; empty for other programs
};

/// Who has the lock. A program of this workstation that still runs counts as somebody else: only what a dead one left
/// may be taken again.
Lock holderOf(const QString &code, TSoftwarePart part, int comIndex)
{
    TQuery query(DM.ADOConnection1, u"Locks_QUR"_s);
    query.setStatement(TStatement("Select Com_Index, ProcessID, Process From CodeLock_TBL Where Code = ")
                           .text(code)
                           .sql(" AND Status = ")
                           .integer(int(part)));
    query.open();
    if (query.isEmpty())
        return {};
    const qint64 process = query.value(u"ProcessID"_s).toLongLong();
    const QString mark = query.asString(u"Process"_s);
    const bool here = query.asInteger(u"Com_Index"_s) == comIndex && !RunsHere(process, mark);
    return {here ? Holder::Here : Holder::Elsewhere, process, mark};
}

/// False when somebody was faster.
bool insertLock(const QString &code, TSoftwarePart part, int comIndex)
{
    try {
        DM.ADOConnection1->execute(
            TStatement(
                "Insert Into CodeLock_TBL(Code, Status, Com_Index, UserName, ProcessID, Process, LockedAt) Values(")
                .text(code)
                .sql(", ")
                .integer(int(part))
                .sql(", ")
                .integer(comIndex)
                .sql(", ")
                .text(UserInfo.Name)
                .sql(", ")
                .integer(QCoreApplication::applicationPid())
                .sql(", ")
                .text(ThisProcess())
                .sql(", ")
                .text(NowDate() + u' ' + NowTime())
                .sql(")"));
        return true;
    } catch (const TDatabaseError &error) {
        if (error.fault() != TFault::Refused)
            throw;
        return false;
    }
}

/// The end of a statement on the one lock row that was seen.
TStatement seenRow(const char *beginning, const QString &code, TSoftwarePart part, int comIndex,
                   const Lock &lock)
{
    return TStatement(beginning)
        .text(code)
        .sql(" AND Status = ")
        .integer(int(part))
        .sql(" AND Com_Index = ")
        .integer(comIndex)
        .sql(" AND isnull(ProcessID, 0) = ")
        .integer(lock.process)
        .sql(" AND isnull(Process, '') = ")
        .text(lock.mark.isNull() ? u""_s : lock.mark);
}

/// Takes over what a program of this workstation left; false when another one took it over first.
bool takeOver(const QString &code, TSoftwarePart part, int comIndex, const Lock &lock)
{
    TStatement statement("Update CodeLock_TBL Set UserName = ");
    statement.text(UserInfo.Name)
        .sql(", ProcessID = ")
        .integer(QCoreApplication::applicationPid())
        .sql(", Process = ")
        .text(ThisProcess())
        .sql(", LockedAt = ")
        .text(NowDate() + u' ' + NowTime())
        .append(seenRow(" Where Code = ", code, part, comIndex, lock));
    return DM.ADOConnection1->execute(statement) == 1;
}

bool takeLock(const QString &code, TSoftwarePart part, int comIndex)
{
    // The primary key decides. Whoever finds the row gone again after losing to it tries once more.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const Lock lock = holderOf(code, part, comIndex);
        if (lock.holder == Holder::Elsewhere)
            return false;
        if (lock.holder == Holder::Here ? takeOver(code, part, comIndex, lock)
                                        : insertLock(code, part, comIndex))
            return true;
    }
    return false;
}

} // namespace

bool OperationOnLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex,
                                      TOperationType operation, bool)
{
    if (operation == otLock)
        return takeLock(code, part, comIndex);
    const Lock lock = holderOf(code, part, comIndex);
    if (lock.holder == Holder::Here)
        DM.ADOConnection1->execute(
            seenRow("Delete From CodeLock_TBL Where Code = ", code, part, comIndex, lock));
    return lock.holder != Holder::Elsewhere;
}

bool LocateLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex, bool)
{
    const Lock lock = holderOf(code, part, comIndex);
    // What a program of this workstation left when it died is open in no editor.
    const bool leftBehind =
        lock.holder == Holder::Here && lock.process != 0 && !IsThisProcess(lock.process, lock.mark);
    return lock.holder != Holder::Nobody && !leftBehind;
}

QString ScalerQuery(const QString &table, const QString &resultColumn, const QString &keyColumn,
                    const QVariant &keyValue)
{
    for (const QString &name : {table, resultColumn, keyColumn}) {
        if (!isIdentifier(name))
            throw TDatabaseError(TFault::BadStatement, u"not a name: "_s + name);
    }
    return DM.ADOConnection1
        ->scalar(
            TStatement(u"select %1 from %2 where %3="_s.arg(resultColumn, table, keyColumn)).value(keyValue))
        .toString();
}

QString AsStored(const QString &table, const QString &column, const QString &text)
{
    return PersianText::cut(text, DM.ADOConnection1->columnWidth(table, column));
}

void ResetDataset(TQuery *query)
{
    query->close();
}

bool VarIsNull_ZLM(const QVariant &value)
{
    return value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isNull());
}
