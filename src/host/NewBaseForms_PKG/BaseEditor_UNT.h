#pragma once

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/NewBaseForms_PKG/KeptTexts_UNT.h"
#include "host/database/DatabaseError.h"
#include "host/database/RecordRules.h"

#include <QGridLayout>
#include <QHash>
#include <QPointer>
#include <QVariant>

#include <functional>
#include <optional>

class QLabel;

/// What record editors and detail-row editors share: inputs that mark the record as changed, save and exit
/// buttons, the unsaved question, and the hooks in their order.
///
/// Opening (exec): new record: NewCode, ClearRecord; existing one: RecordExists, LoadRecord, ShowRecord. A database
/// error while opening is told to the user and the screen does not open; later ones leave everything as typed.
class KETEBIONPAP_HOST TBaseEditor : public TBaseForm {
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
    virtual void ClearRecord() = 0; ///< inputs to the defaults of a new record
    /// Loads the record, and leaves its working rows and the inputs alone: it runs, too, when the save of a record got no
    /// answer and the record is found stored.
    virtual void LoadRecord() = 0;
    virtual void ShowRecord() = 0; ///< shows the loaded record
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
    /// Whether the base tells the user that SaveRecord answered false, because the screen leaves it to it.
    virtual bool BaseTellsFailure() const { return false; }
    virtual void NewCode() = 0;      ///< computes and locks a new code, SetIdentifier
    virtual bool RecordExists() = 0; ///< whether Identifier() is stored
    /// Whether a stored record is the one whose save got no answer; a screen that holds no lock on its code must look,
    /// since another workstation may have stored its own under it meanwhile.
    virtual bool StoredIsOwn() { return true; }
    /// The same for rows that get their identifier from the database: the stored row that a save without an answer sent;
    /// null when there is none.
    virtual QVariant StoredRow() { return {}; }

    /// Runs when a record is left: once on every way of closing, after the base's own handling (the code's lock is
    /// given up by then), and before the next record when saving goes on to a new one.
    virtual void BeforeClose() {}
    /// BeforeClose met a database error, which the user was told.
    virtual void CloseFailed(const TDatabaseError & /*error*/) {}
    virtual QWidget *FirstInput()
    {
        return nullptr;
    } ///< gets the focus on opening; null: the first in tab order

    /// Whether the record opens with something that is not stored yet: closing asks then.
    virtual bool OpensUnsaved() const { return false; }

    QVariant Identifier() const { return m_identifier; }
    void SetIdentifier(const QVariant &identifier) { m_identifier = identifier; }
    void SetMode(TFormMode mode) { m_mode = mode; }
    /// How F3 saves, and the button's caption ("ذخيره F3", as the screen writes it). Shift+F3 saves and stays,
    /// Ctrl+F3 saves and starts a new record.
    void BuildFooter(const QString &saveCaption, const QString &exitCaption, TSaveMode way = svSaveClose);

    // Building inputs: a caption (byte for byte, its "&" names the key of the input) and an input side by side.
    /// Adds the input to the layout's next free row (row -1) or at (row, column), names it, marks changes as
    /// unsaved. A column is a pair of caption and input.
    template <class Input>
    Input *AddInput(QGridLayout *layout, int row, int column, const QString &caption,
                    const QString &objectName, Input *input, const QString &suffix = {})
    {
        Place(layout, row, column, caption, objectName, input, suffix);
        connect(input, &Input::changed, this, [this] { SetIsSaved(false); });
        return input;
    }
    /// The input or another widget with a name; null when there is none.
    template <class Widget>
    Widget *Input(const char *name) const
    {
        return findChild<Widget *>(QString::fromLatin1(name));
    }
    /// AddInput and KeepIn for all fields of a record whose inputs stand on a page and are made, by row and column.
    /// `column` keeps their texts where that is not the fields' own.
    template <class Record>
    void AddFields(QGridLayout *layout, std::span<const TField<Record>> fields, const QString &table,
                   int page = 0, const char *column = nullptr)
    {
        for (const TField<Record> *field : Fields::onPage(fields, page))
            PlaceField(layout, field->input, table,
                       std::holds_alternative<QString Record::*>(field->member)
                           ? (column ? column : field->column)
                           : nullptr);
    }
    /// Whether what is typed keeps a rule; when it does not, the user is told, and the focus goes to the input of the
    /// rule's field. For fields without one the screen names it.
    template <class Record, class Subject>
    [[nodiscard]] bool Keeps(const TRule<Subject> &rule, std::span<const TField<Record>> fields,
                             const Subject &subject, QWidget *otherwise = nullptr)
    {
        const TField<Record> *field = Fields::ofColumn(fields, rule.column);
        auto *input = field && field->input.name ? Input<QWidget>(field->input.name) : otherwise;
        if (rule.message == TRuleMessage::WrongForm)
            return KeepsForm(input); // brings what is being typed into its form, too
        const auto complaint = rule.complaint(subject);
        if (complaint)
            TellComplaint(*complaint, input);
        else if (auto *typed = dynamic_cast<TSmartInput *>(input);
                 typed && rule.message == TRuleMessage::Required)
            RefuseBlanks(typed, rule.firstWord());
        return !complaint;
    }
    /// Tells the user what a rule has against what is typed, and gives the focus to the input.
    void TellComplaint(const TComplaint &complaint, QWidget *input);
    /// Names the table's columns that keep what is typed into these inputs. A text that is longer than its column is told
    /// after Validate, before SaveRecord, and the user may go back to it.
    void KeepIn(const QString &table,
                std::initializer_list<std::pair<TSmartEdit_ZLM *, const char *>> inputsAndColumns);
    /// The label that AddInput put beside an input; null when its caption is empty.
    QLabel *CaptionOf(QWidget *input) const { return m_captions.value(input); }
    /// Gives a widget that AddInput does not know (a grid, a selector) its place in the tab order: behind an input, or
    /// behind all inputs added so far.
    void AddTabStop(QWidget *widget, QWidget *behind = nullptr)
    {
        m_inputs.insert(behind ? m_inputs.indexOf(QPointer<QWidget>(behind)) + 1 : m_inputs.size(), widget);
    }
    /// Puts a check box before the caption of an input that counts only while the box is ticked, and before the input
    /// in the tab order. What ticking does is the screen's.
    TSmartCheckBox_ZLM *AddTickBox(QWidget *input, const QString &objectName);
    /// Puts a widget beside an input, behind its suffix: a title label, a rounding unit.
    void AddBeside(QWidget *input, QWidget *widget);
    /// A page with a grid layout; a framed group with one.
    static QGridLayout *AddPage(QTabWidget *pages, const QString &caption, const QString &objectName);
    static QGridLayout *AddGroup(QLayout *into, const QString &caption, const QString &objectName);
    /// A page that is shown only to users with a right on a part; the others get the page before it back.
    /// Uses the tab widget given to SetPages.
    void GuardPage(int page, TSoftwarePart part, TPermission right);
    /// Focus to an input, turning to its page first.
    void FocusInput(QWidget *input);
    /// Whether an input holds a value of its kind; when it does not, its page, the focus, and the balloon beside it.
    [[nodiscard]] bool CheckInput(TSmartInput *input);
    /// Whether an input holds anything; when it does not, MsgRequiredField with this word, its page and the focus.
    /// Blanks are a text, and stored ones stay; but typed ones alone are refused with the same message behind all
    /// that Validate checks.
    [[nodiscard]] bool RequireInput(TSmartInput *input, const QString &word);
    /// The latter, for a screen that asks for the input in its own way.
    void RefuseBlanks(TSmartInput *input, const QString &word);

    /// Registers the check that runs when an input is left; the user is told about its errors.
    void CheckOnLeaving(TSmartEdit_ZLM *input, const std::function<void()> &check);
    /// Runs that check before a save, unless it ran for what stands there now; errors pass. An input that the user is
    /// at is checked in any case, whether the screen is the active window or a question was in front of it. True: it ran.
    bool CheckTyped(TSmartEdit_ZLM *input);

    void reject() override;
    void done(int result) override;
    bool HandleKey(QKeyEvent *event) override;

    /// Starts a record: new code, clear; or exists, load, show. False: told the user, do not show.
    virtual bool Start();
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
    void Place(QGridLayout *layout, int row, int column, const QString &caption, const QString &objectName,
               QWidget *input, const QString &suffix);
    void PlaceField(QGridLayout *layout, const TFieldInput &field, const QString &table, const char *column);
    bool KeepsForm(QWidget *input);
    Q_SLOT void noteChange() { SetIsSaved(false); }
    bool confirmClose();
    void stay();
    void startNext();
    void leaveRecord();
    void focusFirst();
    void forgetPagesFocus();
    void rollBackLeftOpen();
    void noteLostLine();
    void finishTyping();
    bool blanksRefused();
    void runLeavingCheck(TSmartEdit_ZLM *input);
    TFormMode m_mode;
    QVariant m_identifier = 0;
    std::optional<QVariant> m_lostSave; ///< the record whose save lost the line: what was typed may be stored
    QVariant m_savedIdentifier;
    bool m_isSaved = true;
    bool m_busy = false;     ///< a save or the question of closing is under way
    bool m_finished = false; ///< done() ran
    QList<QPointer<QWidget>> m_inputs;
    QHash<QWidget *, QLabel *> m_captions;
    struct TBlank {
        TSmartInput *input;
        QString word;
    };
    QList<TBlank> m_blanks; ///< what the validation under way found
    struct TLeavingCheck {
        std::function<void()> run;
        QString seen; ///< the text that it ran for last
    };
    QHash<TSmartEdit_ZLM *, TLeavingCheck> m_leavingChecks;
    TKeptTexts m_keptTexts;
    struct TPageGuard {
        int page;
        TSoftwarePart part;
        TPermission right;
    };
    QList<TPageGuard> m_guards;
    int m_lastPage = 0;
};
