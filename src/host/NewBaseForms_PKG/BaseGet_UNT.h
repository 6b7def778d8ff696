#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

#include <QList>
#include <QStringList>

class TRecordRows;
struct TLeftRows;

/// The base of all record editors: rights, code locks, recovery on top of TBaseEditor.
///
/// The constructors ask the user's right on the part (new: 1, edit: 2; on part 801 right 6) and set NotShowable when
/// it is refused; the caller then frees the screen without showing it.
///
/// Opening a new record: NewCode (again while the code turns out to be stored), the recovery question, ClearRecord.
/// Opening an existing one: RecordExists, the lock, the recovery question, LoadRecord, ShowRecord.
class KETEBIONPAP_HOST TBaseGet_FRM : public TBaseEditor {
    Q_OBJECT
public:
    /// A new record. `text` holds parameters parted by semicolons.
    TBaseGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    /// An existing record.
    TBaseGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);
    /// An existing record that needs one more value.
    TBaseGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, const QVariant &extra, bool flag1,
                 bool flag2);
    ~TBaseGet_FRM() override;

    bool NotShowable = false;

    TSoftwarePart Part() const { return m_part; }
    QVariant Parameter(int index) const { return ValuePart(m_value, index); }

    int exec() override;

protected:
    /// Gives up the lock on the code held so far and takes it on the new one; a code that another workstation holds is
    /// passed over for the next one.
    void AllotCode(const std::function<int()> &newCode) override;
    /// A code typed by hand: takes its lock and gives up the one held so far. Becomes Identifier(). False: another
    /// editor or workstation holds the code, nothing changed. Throws TDatabaseError, nothing changed either.
    [[nodiscard]] bool TakeCode(int code);
    /// A code that stands in its input, for a new record with working rows (Rows): takes it, and the rows move with it. An
    /// emptied input gets the held code back, as does one of a record that a save without an answer has stored. False:
    /// another `entity` or another editor has the code; the user was told, and the old code is back. What it throws leaves
    /// everything as it was, too.
    [[nodiscard]] bool TakeTypedCode(TSmartEdit_ZLM *input, const QString &entity);
    /// The same as TakeCode without becoming Identifier(): for a stored record that is to get another code.
    [[nodiscard]] bool HoldCode(int code);
    void ReleaseCode();
    /// Whether the lock on the code that was held is still this editor's. Throws TDatabaseError.
    [[nodiscard]] bool HoldsCode() const;
    /// Whether the lock on Identifier() was somebody else's, or nobody's, when the editor gave it up: rows under the code
    /// may not be its own then.
    bool CodeWasLost() const;

    /// Whether an existing record is locked while it is open; when another workstation holds it, the user is told
    /// (MSGInUse with this word) and the screen does not open. Empty: not locked.
    virtual QString LockedEntityWord() const { return {}; }

    /// The working rows of its record, where the editor has any: rows left behind are offered, and every save makes sure
    /// that those under edit are its own.
    virtual TRecordRows *Rows() { return nullptr; }
    /// The record opened with rows that were left behind and was not saved since: its working rows are there already
    /// and must not be copied in again by LoadRecord.
    bool RecoveryTaken() const { return m_recoveryTaken; }
    bool OpensUnsaved() const override { return m_recoveryTaken; }
    /// Leaves the working rows, and the lock that identifies them, to be offered when the record is opened next.
    void KeepRows();

    /// Before a row is added, changed or deleted: whether the lock and the rows are this editor's own, and the account still
    /// an active one (rows have rights of their own; the record's is asked by its save). Else the user is told and asked,
    /// and Yes makes them so. Throws nothing.
    [[nodiscard]] bool RowsAreOwn();

    /// What the event log calls a saved record; default: its code.
    virtual QString EventText() const { return Identifier().toString(); }

    bool Start() override;
    bool HoldRecord() override;
    void RecordSaved(bool wasNew) override; ///< writes the line of the event log
    /// Whether the user still holds the right that the screen asked for when it was opened (a record that was new and
    /// stays open keeps that one), and the lock and the working rows are still those of this editor.
    bool ReadyToSave() override;
    void CloseFailed(const TDatabaseError &error) override;
    void ReleaseHeld() override { ReleaseCode(); }
    bool MayStartNew() override;

private:
    void askRight(TPermission right);
    bool groundHolds(bool saving);
    void allotFreeCode();
    void recoverIntoNew();
    bool isStored(const QString &code);
    bool isLeft(const QString &code);
    bool changeHeld(int code);
    void moveRows(int held, int typed, bool own);
    bool rowsChanged();
    bool hasOthersRows(const QString &code);
    /// Of the locked `codes`, those whose rows a new record may take up. The rows of a stored record wait until that
    /// record is opened: taken up elsewhere, the copies of its stored rows would meet them again at the save.
    QList<TLeftRows> leftByNewRecords(const QStringList &codes, bool &storedWait);
    bool recoverExisting();
    TSoftwarePart m_part;
    TPermission m_right = cpOpen;
    QVariant m_value;
    QString m_heldCode; ///< the code whose lock this editor holds
    QString m_lostCode; ///< the code whose lock was no more its own when it was given up
    bool m_recoveryTaken = false;
    bool m_recoveryAsked = false;
};
