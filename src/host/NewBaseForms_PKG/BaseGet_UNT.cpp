#include "host/NewBaseForms_PKG/BaseGet_UNT.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/RecordRows_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "host/NewBaseForms_PKG/OpenCodes.h"
#include "host/NewBaseForms_PKG/Recovery_UNT.h"

using namespace Qt::Literals::StringLiterals;

namespace {

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
    m_right = m_part == cspPayrollInfo ? cpOpen : right;
    NotShowable = !HavePermission(UserInfo, m_part, m_right, true, true, {});
}

bool TBaseGet_FRM::MayStartNew()
{
    const TPermission right = m_part == cspPayrollInfo ? cpOpen : cpNew;
    if (!HavePermission(UserInfo, m_part, right, false, true, {}))
        return false;
    m_right = right;
    return true;
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
    OpenCodes::remove(m_part, code);
    try {
        // One that an administrator took away may be somebody else's by now, with the rows under it.
        const bool lost = Rows() && !HoldsCodeLock(code, m_part, IniOptions.Com_Index) &&
                          LocateLockCode_SoftwarePart(code, m_part, IniOptions.Com_Index, false);
        m_lostCode = lost ? code : QString();
        lockCode(code, m_part, otUnlock);
    } catch (const TDatabaseError &error) {
        OpenCodes::giveUpLater(m_part, code, false, error);
        throw;
    }
}

void TBaseGet_FRM::CloseFailed(const TDatabaseError &error)
{
    OpenCodes::giveUpLater(m_part, Identifier().toString(), true, error);
}

bool TBaseGet_FRM::CodeWasLost() const
{
    return m_lostCode == Identifier().toString();
}

bool TBaseGet_FRM::HoldsCode() const
{
    return !m_heldCode.isEmpty() && HoldsCodeLock(m_heldCode, m_part, IniOptions.Com_Index);
}

bool TBaseGet_FRM::hasOthersRows(const QString &code)
{
    if (!Rows() || CountWorkingRows(m_part, code) == 0)
        return false;
    return !Rows()->DroppedOnOpening() ||
           WorkingRowsOwner(m_part, code, IniOptions.Com_Index) != TRowsOwner::Nobody;
}

void TBaseGet_FRM::AllotCode(const std::function<int()> &newCode)
{
    ReleaseCode();
    int code = newCode();
    for (;;) {
        const QString text = QString::number(code);
        // Another editor of this program may have the code: its workstation would be given the lock once more.
        if (!OpenCodes::contains(m_part, text) && lockCode(text, m_part, otLock)) {
            m_heldCode = text;
            OpenCodes::add(m_part, text);
            if (!hasOthersRows(text))
                break;
            // Rows under a code that nobody has stored are not this record's. Those that somebody is at work on without
            // a lock stay his; the others were left behind, and the lock makes them offered.
            if (WorkingRowsOwner(m_part, text, IniOptions.Com_Index) == TRowsOwner::AtWork)
                lockCode(text, m_part, otUnlock);
            m_heldCode.clear();
            OpenCodes::remove(m_part, text);
        }
        code = qMax(newCode(), code + 1);
    }
    SetIdentifier(code);
}

bool TBaseGet_FRM::HoldCode(int code)
{
    const QString wanted = QString::number(code);
    return wanted == m_heldCode || (!hasOthersRows(wanted) && changeHeld(code));
}

bool TBaseGet_FRM::rowsChanged()
{
    return Rows() && Rows()->Changed(Identifier().toString());
}

bool TBaseGet_FRM::TakeTypedCode(TSmartEdit_ZLM *input, const QString &entity)
{
    const int held = Identifier().toInt();
    const auto putBack = [&] {
        SetIdentifier(held);
        input->SetValue(held);
        FocusInput(input);
    };
    try {
        const int typed = input->asInteger();
        // Once the lock is somebody else's, so are the rows under it.
        const bool own = HoldsCode() && !rowsChanged();
        SettleLostSave();
        // Emptied, or stored by a save that got no answer: the code stays.
        if (typed == 0 || Mode() != fmNew) {
            input->SetValue(held);
            return true;
        }
        SetIdentifier(typed);
        const bool stored = RecordExists();
        SetIdentifier(held);
        if (!stored && TakeCode(typed)) {
            moveRows(held, typed, own);
            return true;
        }
        RecordExists(); // what the record's query holds is where the new record is appended
        if (const QString word = LockedEntityWord(); stored || word.isEmpty())
            MsgRepeatedField(u"کد"_s, entity, input, this);
        else
            MSGInUse(word);
    } catch (...) {
        putBack();
        throw;
    }
    putBack();
    return false;
}

void TBaseGet_FRM::moveRows(int held, int typed, bool own)
{
    const QString from = QString::number(held);
    const QString to = QString::number(typed);
    try {
        Rows()->Move(from, to, own);
    } catch (...) {
        if (Rows()->HaveMoved(from, to))
            return;
        Guarded([&] {
            Rows()->MoveBack(from, to);
            changeHeld(held); // the rows are still there
            Rows()->Show(from);
        });
        throw;
    }
}

bool TBaseGet_FRM::changeHeld(int code)
{
    const QString wanted = QString::number(code);
    if (wanted == m_heldCode)
        return true;
    if (OpenCodes::contains(m_part, wanted) || !lockCode(wanted, m_part, otLock))
        return false;
    if (!m_heldCode.isEmpty()) {
        try {
            lockCode(m_heldCode, m_part, otUnlock);
        } catch (...) {
            Guarded([&] { lockCode(wanted, m_part, otUnlock); });
            throw;
        }
        OpenCodes::remove(m_part, m_heldCode);
    }
    m_heldCode = wanted;
    OpenCodes::add(m_part, m_heldCode);
    return true;
}

bool TBaseGet_FRM::TakeCode(int code)
{
    if (!HoldCode(code))
        return false;
    SetIdentifier(code);
    return true;
}

// Whoever opened the record may have lost the right or the account since; a lock may be freed by an administrator while
// the record is open, and working rows are everybody's. What stands on the screen is what the user wants stored.
bool TBaseGet_FRM::ReadyToSave()
{
    return groundHolds(true);
}

bool TBaseGet_FRM::groundHolds(bool saving)
{
    const TSaveGround ground = AskSaveGround(m_heldCode, m_part, IniOptions.Com_Index, m_right);
    const bool mayGoOn = ground.standing == TStanding::NoRight && !saving;
    if (ground.standing != TStanding::Holds && !mayGoOn) {
        TellStanding(ground.standing, m_part, m_right, u"آنچه نوشته اید ذخیره نشده و روی صفحه می ماند."_s);
        return false;
    }
    const bool lost = !ground.holdsLock;
    if (lost && !lockCode(m_heldCode, m_part, otLock)) {
        ShowSmartMessage(
            u"قفل کد %1 آزاد شده و اکنون ایستگاه دیگری آن را باز کرده است. آنچه نوشته اید ذخیره نشده و روی صفحه می ماند. پس از بسته شدن آن پنجره دوباره ذخیره کنید."_s
                .arg(m_heldCode),
            {}, miWarning);
        return false;
    }
    if (lost && Mode() == fmNew && RecordExists()) {
        ShowSmartMessage(
            u"قفل کد %1 آزاد شده و در این میان رکورد دیگری با همین کد ثبت شده است. آنچه نوشته اید ذخیره نشده و روی صفحه می ماند. کد دیگری بنویسید و دوباره ذخیره کنید."_s
                .arg(m_heldCode),
            {}, miWarning);
        lockCode(m_heldCode, m_part, otUnlock);
        return false;
    }
    const bool changed = rowsChanged();
    if (!lost && !changed)
        return true;
    const QString what =
        changed
            ? u"سطرهای این رکورد در پنجره دیگری تغییر کرده یا پاک شده است و دیگر همان نیست که در این صفحه می بینید."_s
            : u"قفل این رکورد در این میان آزاد شده است و شاید کس دیگری آن را تغییر داده باشد."_s;
    if (ShowSmartMessage(
            what +
                u"\nآنچه در این صفحه می بینید ذخیره شود؟ (با «خیر» چیزی ذخیره نمی شود و همه چیز روی صفحه می ماند.)"_s,
            TMessageButtons::YesNo, TAnswer::No) != TAnswer::Yes) {
        if (lost) // or the next save would not ask
            lockCode(m_heldCode, m_part, otUnlock);
        return false;
    }
    if (changed)
        Rows()->PutBack(Identifier().toString());
    return true;
}

bool TBaseGet_FRM::RowsAreOwn()
{
    bool own = false;
    Guarded([&] { own = groundHolds(false); });
    return own;
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
    OpenCodes::giveUpNow();
    try {
        return TBaseEditor::Start();
    } catch (...) {
        if (m_recoveryTaken && Mode() != fmNew)
            KeepRows();
        throw;
    }
}

bool TBaseGet_FRM::HoldRecord()
{
    if (Mode() == fmNew) {
        allotFreeCode();
        if (Rows() && !m_recoveryAsked) {
            m_recoveryAsked = true;
            recoverIntoNew();
        }
        return true;
    }
    const QString code = Identifier().toString();
    const bool leftBehind = Rows() && isLeft(code) && Rows()->AreLeft(code);
    if (const QString word = LockedEntityWord(); leftBehind || !word.isEmpty()) {
        if (!lockCode(code, m_part, otLock)) {
            MSGInUse(word.isEmpty() ? windowTitle().trimmed() : word);
            return false;
        }
        m_heldCode = code;
        OpenCodes::add(m_part, code);
    }
    return !leftBehind || recoverExisting();
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
        if (!Rows()->AreLeft(code))
            continue;
        if (isStored(code))
            storedWait = true;
        else
            offered.append(code);
    }
    QList<TLeftRows> left;
    for (const QString &code : std::as_const(offered))
        left.append({code, Rows()->Count(code)});
    return left;
}

bool TBaseGet_FRM::isLeft(const QString &code)
{
    const OpenCodes::TLocked locked = OpenCodes::locked(m_part);
    if (OpenCodes::contains(m_part, code) || locked.atWork.contains(code))
        return false;
    return locked.left.contains(code) ||
           WorkingRowsOwner(m_part, code, IniOptions.Com_Index) == TRowsOwner::Left;
}

void TBaseGet_FRM::recoverIntoNew()
{
    bool taken = false;
    for (;;) {
        const QString newCode = Identifier().toString();
        OpenCodes::TLocked locked = OpenCodes::locked(m_part);
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
            Rows()->DiscardAll();
            allotFreeCode(); // the lock on the new code went with the others
            return;
        }
        bool done = false;
        for (const TLeftRows &left : std::as_const(request.left)) {
            if (!choice.codes.contains(left.code))
                continue;
            if (choice.action == TRecoveryChoice::TakeUp) {
                Rows()->TakeUp(left.code, newCode);
                taken = m_recoveryTaken = true;
            } else if (choice.action == TRecoveryChoice::Discard) {
                Rows()->Discard(left.code);
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
    request.left.append({code, Rows()->Count(code)});
    const TRecoveryChoice choice = RecoveryChooser().choose(request, this);
    switch (choice.action) {
    case TRecoveryChoice::TakeUp:
        m_recoveryTaken = true;
        return true;
    case TRecoveryChoice::Discard:
    case TRecoveryChoice::DiscardAll:
        Rows()->Discard(code);
        return true;
    case TRecoveryChoice::Later:
        break;
    }
    KeepRows();
    return false;
}

// Rows that were left behind stay for another time, and so must the lock that identifies them.
void TBaseGet_FRM::KeepRows()
{
    m_touched = false; // the record is left without BeforeClose, which would clear them
    OpenCodes::remove(m_part, m_heldCode);
    if (Rows() && Rows()->DroppedOnOpening() && Mode() == fmEdit) // here it is the note that does
        lockCode(m_heldCode, m_part, otUnlock);
    m_heldCode.clear();
}
