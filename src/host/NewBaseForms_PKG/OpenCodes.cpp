#include "host/NewBaseForms_PKG/OpenCodes.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "host/database/AnswerWait.h"
#include "host/database/Query.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace OpenCodes {
namespace {

constexpr int againAfter = 3000; // milliseconds

QString key(TSoftwarePart part, const QString &code)
{
    return QString::number(part) + u':' + code;
}

QSet<QString> &codes()
{
    static QSet<QString> open;
    return open;
}

struct TLate {
    TSoftwarePart part;
    QString code;
    bool rows;
    QPointer<TConnection> connection; ///< of its database
};

QList<TLate> &late()
{
    static QList<TLate> list;
    return list;
}

void giveUp(const TLate &what)
{
    const int station = IniOptions.Com_Index;
    const bool held = HoldsCodeLock(what.code, what.part, station);
    // Rows under a code that somebody else got meanwhile are not this program's any more.
    const TRowsOwner owner = WorkingRowsOwner(what.part, what.code, station);
    const bool nobodys =
        owner == TRowsOwner::Nobody && !LocateLockCode_SoftwarePart(what.code, what.part, station, false);
    if (what.rows && (held || owner == TRowsOwner::Own || nobodys))
        DiscardWorkingRows(what.part, what.code);
    if (held)
        OperationOnLockCode_SoftwarePart(what.code, what.part, station, otUnlock, false);
}

void tryAgainSoon()
{
    QTimer::singleShot(againAfter, DM.ADOConnection1, [] {
        WhenAnswered(DM.ADOConnection1, [] {
            if (!giveUpNow())
                tryAgainSoon();
        });
    });
}

} // namespace

void add(TSoftwarePart part, const QString &code)
{
    codes().insert(key(part, code));
}

void remove(TSoftwarePart part, const QString &code)
{
    codes().remove(key(part, code));
}

bool contains(TSoftwarePart part, const QString &code)
{
    return codes().contains(key(part, code));
}

TLocked locked(TSoftwarePart part)
{
    TLocked result;
    TQuery query(DM.ADOConnection1, u"Locks_QUR"_s);
    query.setStatement(TStatement::format(
        u"Select Code, ProcessID, Process From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)"_s,
        {int(part), IniOptions.Com_Index}));
    query.open();
    for (int row = 0; row < query.recordCount(); ++row) {
        query.moveTo(row);
        const QString code = query.asString(u"Code"_s);
        if (contains(part, code) ||
            RunsHere(query.value(u"ProcessID"_s).toLongLong(), query.asString(u"Process"_s)))
            result.atWork.insert(code);
        else
            result.left.append(code);
    }
    return result;
}

void giveUpLater(TSoftwarePart part, const QString &code, bool rows, const TDatabaseError &error)
{
    if (error.fault() != TFault::Locked && error.fault() != TFault::Deadlock && !IsLineLost(error.fault()))
        return;
    const bool waiting = !late().isEmpty();
    const auto known = std::find_if(late().begin(), late().end(), [&](const TLate &what) {
        return what.part == part && what.code == code;
    });
    if (known == late().end())
        late().append({part, code, rows, DM.ADOConnection1});
    else
        known->rows = known->rows || rows;
    add(part, code);
    if (!waiting)
        tryAgainSoon();
}

bool giveUpNow()
{
    const QList<TLate> list = std::exchange(late(), {});
    for (const TLate &what : list) {
        const bool here = what.connection && what.connection == DM.ADOConnection1;
        try {
            if (here)
                giveUp(what);
            remove(what.part, what.code);
        } catch (const TDatabaseError &) {
            late().append(what);
        }
    }
    return late().isEmpty();
}

} // namespace OpenCodes
