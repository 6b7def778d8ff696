#pragma once

#include "host/NewBaseForms_PKG/InputForm_UNT.h"
#include "host/database/DatabaseError.h"

#include <QVariant>

#include <optional>

/// What record editors and detail-row editors share: save and exit buttons, the unsaved question, and the hooks in their
/// order.
///
/// Opening (exec): new record: NewCode, ClearRecord; existing one: RecordExists, LoadRecord, ShowRecord. A database
/// error while opening is told to the user and the screen does not open; later ones leave everything as typed.
class KETEBIONPAP_HOST TBaseEditor : public TInputForm {
    Q_OBJECT
public:
    TFormMode Mode() const { return m_mode; }
    bool IsSaved() const { return m_isSaved; }
    /// The record that was saved last; null when none was.
    QVariant SavedIdentifier() const { return m_savedIdentifier; }
    void SetIsSaved(bool saved);

    TSmartButton_ZLM *Save_BTN = nullptr;
    TSmartButton_ZLM *EXit_BTN = nullptr;

    /// Runs the save sequence: validate, save, mark as saved; then closes, stays or starts a new record, as the
    /// way of saving says. True when the record was saved. A database error is told to the user and leaves
    /// everything as typed. A transaction that the save left open is rolled back.
    ///
    /// A record that stays open turns to mode 3 and is read back as stored (RecordExists, BeforeClose, LoadRecord,
    /// ShowRecord run), so that ShowRecord may run more than once in a screen's life.
    bool Save(TSaveMode way);

    int exec() override;

protected:
    explicit TBaseEditor(TFormMode mode);

    // The hooks, in the order of the editor's table of operations.
    virtual bool Validate() = 0; ///< true when all is well; otherwise it has told the user and set the focus
    virtual void ClearRecord() {
    } ///< inputs to the defaults of a new record; a screen of stored ones has none
    /// Loads the record, and leaves its working rows and the inputs alone: it runs, too, when the save of a record got no
    /// answer and the record is found stored.
    virtual void LoadRecord() {}
    virtual void ShowRecord() {} ///< shows the loaded record
    /// Insert or update, then the success or failure message. A screen whose code can be typed makes the saved
    /// code its identifier.
    virtual bool SaveRecord() = 0;
    /// Whether what the save relies on is still the editor's own; false: the user was told, nothing is saved.
    virtual bool ReadyToSave() { return true; }
    /// Runs after a save that failed, when the user was told so and what was left open is rolled back: says what is
    /// stored now, where that is not what was stored before.
    virtual void SaveFailed() {}
    /// Runs when the user does not want to save on closing. False: the screen stays open.
    virtual bool MayDiscard() { return true; }
    /// Runs after every successful save, before the screen goes on.
    virtual void RecordSaved(bool /*wasNew*/) {}
    virtual void NewCode() {}                    ///< computes and locks a new code, SetIdentifier
    virtual bool RecordExists() { return true; } ///< whether Identifier() is stored
    /// The identifier of the stored record that a save without an answer sent; null when there is none. A screen whose
    /// rows get theirs from the database looks for it, and one that holds no lock on its code looks whose record it is,
    /// since another workstation may have stored its own under it meanwhile.
    virtual QVariant SentRecord();

    /// Runs when a record is left: once on every way of closing, after the base's own handling (the code's lock is
    /// given up by then), and before the next record when saving goes on to a new one.
    virtual void BeforeClose() {}
    /// BeforeClose met a database error, which the user was told.
    virtual void CloseFailed(const TDatabaseError & /*error*/) {}

    /// Whether the record opens with something that is not stored yet: closing asks then.
    virtual bool OpensUnsaved() const { return false; }

    QVariant Identifier() const { return m_identifier; }
    void SetIdentifier(const QVariant &identifier) { m_identifier = identifier; }
    void SetMode(TFormMode mode) { m_mode = mode; }
    /// How F3 saves, and the button's caption ("ذخيره F3", as the screen writes it). Shift+F3 saves and stays,
    /// Ctrl+F3 saves and starts a new record.
    void BuildFooter(const QString &saveCaption, const QString &exitCaption, TSaveMode way = svSaveClose);

    void InputChanged() override { SetIsSaved(false); }
    void reject() override;
    void done(int result) override;
    bool HandleKey(QKeyEvent *event) override;

    /// Starts a record: new code, clear; or exists, load, show. False: told the user, do not show.
    virtual bool Start();
    /// Gets what the record is held by: a new one its code, an existing one its lock. False: told the user.
    virtual bool HoldRecord();
    /// The usual new-code hook: asks `newCode`, which becomes Identifier().
    virtual void AllotCode(const std::function<int()> &newCode);
    /// Runs the write of a save; a database error answers false, and the message of a save that failed tells it.
    [[nodiscard]] static bool Written(const std::function<bool()> &write);
    /// Gives up what the base holds for the record (its lock).
    virtual void ReleaseHeld() {}
    /// Whether the user may go on to a new record after a save.
    virtual bool MayStartNew() { return true; }
    /// When the last save got no answer, finds out what is stored: a new record that is stored turns to mode 3, a stored
    /// one is loaded anew, the inputs stay as typed. Every save begins with it; so must what else relies on whether
    /// the record is stored.
    void SettleLostSave();

    bool m_savedOnce = false; ///< a save succeeded: the result of closing is OK
    bool m_touched = false;   ///< the record's hooks began to run: leaving it needs BeforeClose

private:
    void stay();
    void startNext();
    void leaveRecord();
    TFormMode m_mode;
    QVariant m_identifier = 0;
    std::optional<QVariant> m_lostSave; ///< the record whose save lost the line: what was typed may be stored
    QVariant m_savedIdentifier;
    bool m_isSaved = true;
    bool m_busy = false;     ///< a save or the question of closing is under way
    bool m_finished = false; ///< done() ran
};
