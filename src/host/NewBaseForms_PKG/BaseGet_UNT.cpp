#include "host/NewBaseForms_PKG/BaseGet_UNT.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/Recovery_UNT.h"
#include "host/database/Query.h"

#include <QSet>

namespace {

// The codes that open editors of this process hold, as "part:code".
QSet<QString> &openCodes()
{
    static QSet<QString> codes;
    return codes;
}

QString openKey(TSoftwarePart part, const QString &code)
{
    return QString::number(part) + u':' + code;
}

// The codes of a part that this workstation has locked.
struct TLockedCodes {
    /// Held by an editor that is open now, here or in another process: its working rows look like rows left behind, but
    /// somebody is at work on them.
    QSet<QString> atWork;
    QStringList left; ///< the others
};

TLockedCodes lockedCodes(TSoftwarePart part)
{
    TLockedCodes codes;
    TQuery query(DM.ADOConnection1, QStringLiteral("Locks_QUR"));
    query.setStatement(TStatement::format(
        QStringLiteral("Select Code, ProcessID From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)"),
        {int(part), IniOptions.Com_Index}));
    query.open();
    for (int row = 0; row < query.recordCount(); ++row) {
        query.moveTo(row);
        const QString code = query.asString(QStringLiteral("Code"));
        if (openCodes().contains(openKey(part, code)) ||
            RunsHere(query.value(QStringLiteral("ProcessID")).toLongLong()))
            codes.atWork.insert(code);
        else
            codes.left.append(code);
    }
    return codes;
}

bool lockCode(const QString &code, TSoftwarePart part, TOperationType operation)
{
    return OperationOnLockCode_SoftwarePart(code, part, IniOptions.Com_Index, operation, false);
}

} // namespace

TBaseGet_FRM::TBaseGet_FRM(TSoftwarePart part, bool, const QString &text)
    : TBaseEditor(fmNew), m_part(part), m_value(text)
{
    askRight(cpNew);
}

TBaseGet_FRM::TBaseGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool)
    : TBaseEditor(mode), m_part(part)
{
    SetIdentifier(code);
    askRight(mode == fmNew ? cpNew : cpEdit);
}

TBaseGet_FRM::TBaseGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, const QVariant &extra,
                           bool, bool)
    : TBaseEditor(mode), m_part(part), m_value(extra)
{
    SetIdentifier(code);
    askRight(mode == fmNew ? cpNew : cpEdit);
}

TBaseGet_FRM::~TBaseGet_FRM()
{
    if (!m_heldCode.isEmpty())
        Guarded([this] { ReleaseCode(); });
}

void TBaseGet_FRM::askRight(TPermission right)
{
    NotShowable =
        !HavePermission(UserInfo, m_part, m_part == cspPayrollInfo ? cpOpen : right, true, true, {});
}

bool TBaseGet_FRM::MayStartNew()
{
    return HavePermission(UserInfo, m_part, m_part == cspPayrollInfo ? cpOpen : cpNew, false, true, {});
}

int TBaseGet_FRM::exec()
{
    return NotShowable ? int(Rejected) : TBaseEditor::exec();
}

void TBaseGet_FRM::ReleaseCode()
{
    if (m_heldCode.isEmpty())
        return;
    const QString code = m_heldCode;
    m_heldCode.clear();
    openCodes().remove(openKey(m_part, code));
    lockCode(code, m_part, otUnlock);
}

void TBaseGet_FRM::AllotCode(const std::function<int()> &newCode)
{
    ReleaseCode();
    int code = newCode();
    // Another editor of this program may have the code: its workstation would be given the lock once more.
    while (openCodes().contains(openKey(m_part, QString::number(code))) ||
           !lockCode(QString::number(code), m_part, otLock))
        code = qMax(newCode(), code + 1);
    m_heldCode = QString::number(code);
    openCodes().insert(openKey(m_part, m_heldCode));
    SetIdentifier(code);
}

bool TBaseGet_FRM::TakeCode(int code)
{
    const QString wanted = QString::number(code);
    if (wanted == m_heldCode)
        return true;
    if (openCodes().contains(openKey(m_part, wanted)) || !lockCode(wanted, m_part, otLock))
        return false;
    if (!m_heldCode.isEmpty()) {
        try {
            lockCode(m_heldCode, m_part, otUnlock);
        } catch (...) {
            Guarded([&] { lockCode(wanted, m_part, otUnlock); });
            throw;
        }
        openCodes().remove(openKey(m_part, m_heldCode));
    }
    m_heldCode = wanted;
    openCodes().insert(openKey(m_part, m_heldCode));
    SetIdentifier(code);
    return true;
}

void TBaseGet_FRM::allotFreeCode()
{
    // Another workstation may have saved a record under the code, and given up its lock, after the code was
    // computed here and before it was locked.
    QVariant before;
    do {
        before = Identifier();
        NewCode();
    } while (Identifier() != before && RecordExists());
}

bool TBaseGet_FRM::Start()
{
    m_recoveryTaken = false;
    if (Mode() == fmNew) {
        allotFreeCode();
        if (HasRecovery() && !m_recoveryAsked) {
            m_recoveryAsked = true;
            recoverIntoNew();
        }
        m_touched = true;
        ClearRecord();
        return true;
    }
    if (!RecordExists()) {
        MsgRecordGone();
        return false;
    }
    const QString code = Identifier().toString();
    const bool leftBehind =
        HasRecovery() && RecordHasRecovery(code) && !lockedCodes(m_part).atWork.contains(code);
    if (const QString word = LockedEntityWord(); leftBehind || !word.isEmpty()) {
        if (!lockCode(code, m_part, otLock)) {
            MSGInUse(word);
            return false;
        }
        m_heldCode = code;
        openCodes().insert(openKey(m_part, code));
    }
    if (leftBehind && !recoverExisting())
        return false;
    m_touched = !m_recoveryTaken;
    try {
        LoadRecord();
        ShowRecord();
    } catch (...) {
        if (m_recoveryTaken)
            keepForLater();
        throw;
    }
    m_touched = true;
    return true;
}

void TBaseGet_FRM::RecordSaved(bool wasNew)
{
    m_recoveryTaken = false; // the stored rows are the working ones now
    // The record is stored: an event that cannot be written is told, and takes nothing back.
    SetUserEvent(m_part, wasNew ? cpNew : cpEdit, EventText(), false, true);
}

bool TBaseGet_FRM::isStored(const QString &code)
{
    const QVariant own = Identifier();
    const auto ask = [&](const QVariant &identifier) {
        SetIdentifier(identifier);
        return RecordExists();
    };
    try {
        const bool stored = ask(code.toInt());
        ask(own); // what the record's query holds is where the new record is appended
        return stored;
    } catch (...) {
        SetIdentifier(own);
        throw;
    }
}

QList<TLeftRows> TBaseGet_FRM::leftByNewRecords(const QStringList &codes, bool &storedWait)
{
    storedWait = false;
    QStringList offered;
    for (const QString &code : codes) {
        if (!RecordHasRecovery(code))
            continue;
        if (isStored(code))
            storedWait = true;
        else
            offered.append(code);
    }
    QList<TLeftRows> left;
    for (const QString &code : RecoveryCodes()) {
        if (!offered.contains(code))
            continue;
        auto found =
            std::find_if(left.begin(), left.end(), [&](const TLeftRows &rows) { return rows.code == code; });
        if (found == left.end())
            left.append({code, 1});
        else
            ++found->rows;
    }
    // An editor may name one code only, and that may be one that is not offered.
    if (left.isEmpty())
        for (const QString &code : std::as_const(offered))
            left.append({code, 0});
    return left;
}

void TBaseGet_FRM::recoverIntoNew()
{
    bool taken = false;
    for (;;) {
        const QString newCode = Identifier().toString();
        TLockedCodes locked = lockedCodes(m_part);
        locked.atWork.remove(newCode);
        bool storedWait = false;
        TRecoveryRequest request;
        request.title = windowTitle();
        request.newCode = newCode;
        request.left = leftByNewRecords(locked.left, storedWait);
        // All at once would take the rows of open editors and of stored records, and those just taken up, with it.
        request.allOffered = locked.atWork.isEmpty() && !storedWait && !taken;
        if (request.left.isEmpty())
            return;
        const TRecoveryChoice choice = RecoveryChooser().choose(request, this);
        if (choice.action == TRecoveryChoice::DiscardAll && request.allOffered) {
            DiscardAllRecovery();
            allotFreeCode(); // the lock on the new code went with the others
            return;
        }
        bool done = false;
        for (const TLeftRows &left : std::as_const(request.left)) {
            if (!choice.codes.contains(left.code))
                continue;
            if (choice.action == TRecoveryChoice::TakeUp) {
                MoveRecovery(left.code, newCode);
                taken = m_recoveryTaken = true;
            } else if (choice.action == TRecoveryChoice::Discard) {
                DiscardRecovery(left.code);
            } else {
                continue;
            }
            // Rows first, then the lock that identifies them.
            lockCode(left.code, m_part, otUnlock);
            done = true;
        }
        if (!done)
            return;
    }
}

bool TBaseGet_FRM::recoverExisting()
{
    const QString code = Identifier().toString();
    TRecoveryRequest request;
    request.title = windowTitle();
    request.newRecord = false;
    int rows = 0;
    for (const QString &left : RecoveryCodes())
        rows += left == code ? 1 : 0;
    request.left.append({code, rows});
    const TRecoveryChoice choice = RecoveryChooser().choose(request, this);
    switch (choice.action) {
    case TRecoveryChoice::TakeUp:
        m_recoveryTaken = true;
        return true;
    case TRecoveryChoice::Discard:
    case TRecoveryChoice::DiscardAll:
        DiscardRecovery(code);
        return true;
    case TRecoveryChoice::Later:
        break;
    }
    keepForLater();
    return false;
}

// Rows that were left behind stay for another time, and so must the lock that identifies them.
void TBaseGet_FRM::keepForLater()
{
    openCodes().remove(openKey(m_part, m_heldCode));
    m_heldCode.clear();
}
