#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/NewBaseForms_PKG/ListForm_UNT.h"

#include <QVariant>

class TBaseGet_FRM;

/// The base of all lists of records: new, edit, delete, select; browse mode (1) or select mode (5).
/// Buttons: Select only in select mode; edit, delete, select and print need a row.
class KETEBIONPAP_HOST TBaseDock_FRM : public TListForm {
    Q_OBJECT
public:
    TBaseDock_FRM(TFormMode mode, const QString &text);
    /// With a value: an integer, or a text of parts parted by semicolons (Parameter).
    TBaseDock_FRM(TFormMode mode, const QVariant &value, const QString &text);

    TFormMode Mode() const { return m_mode; }
    /// Part `index` (0-based) of the value; a null variant past the end.
    QVariant Parameter(int index) const { return ValuePart(m_value, index); }

    TSmartButton_ZLM *New_BTN = nullptr;
    TSmartButton_ZLM *EDit_BTN = nullptr;
    TSmartButton_ZLM *Del_BTN = nullptr;
    TSmartButton_ZLM *Select_BTN = nullptr;
    TSmartButton_ZLM *PrintList_BTN = nullptr;
    TSmartButton_ZLM *EXit_BTN = nullptr;

protected:
    // The screen's hooks.
    virtual TBaseGet_FRM *CreateEditor(bool newRecord) = 0; ///< null: nothing to open
    virtual void DeleteRecord() = 0;                        ///< runs only while Del_BTN is enabled
    virtual bool SelectRecord() { return true; } ///< stores the choice; true closes the screen with OK
    virtual void NewRecord();                    ///< default: ShowEditor(CreateEditor(true))
    virtual void EditRecord();                   ///< default: ShowEditor(CreateEditor(false))

    /// New F4, edit F5, delete F7, select Enter, [print F9], exit Esc.
    void BuildButtons(bool withSelect, bool withPrint);
    void SetShortCut(QWidget *control);
    void SetPopMenu(QWidget *control);

    /// Shows an editor modally unless it marked itself NotShowable, frees it; after OK reads the list again with the
    /// record that was saved as its current row, or tells that the search leaves it out. A record that turned out to be
    /// gone leaves the list. True on OK.
    virtual bool ShowEditor(TBaseGet_FRM *editor);
    void UpdateButtons() override;
    void ActivateRow() override;
    /// Runs the actions as their buttons do; nothing while their button is disabled.
    void Select();
    /// Whether the current row is still in the database; when it is not, the user is told and the row leaves the list.
    /// Throws TDatabaseError.
    bool CurrentIsStored();
    /// Whether what is to be picked is; default: the current row.
    virtual bool ChoiceIsStored() { return CurrentIsStored(); }

    // How deletes begin. False: refused or not wanted, stop silently.
    /// The right 3 on a part; the host tells about a refusal.
    static bool MayDelete(TSoftwarePart part);
    /// The question, which names the record, then the event line (none when the text is null; throws TDatabaseError when
    /// it cannot be written).
    static bool ConfirmDelete(TSoftwarePart part, const QString &eventText, const QString &record);
    /// Both, for the current row as long as it is stored.
    bool BeginDelete(TSoftwarePart part, const QString &eventText);
    /// How the current row is called in questions; default: the first two columns of the grid.
    virtual QString RecordName() const;
    /// Why a delete failed, by the connection's last error: other records refer to this `word`, or what happened instead.
    static void TellDeleteFailed(const QString &word);

    void ServeGrid() override;  ///< SetShortCut, SetPopMenu
    void EnterKey() override {} ///< Enter is the Select button's, else nothing

private:
    void showSaved(qlonglong key);
    void dropIfGone(qlonglong key);
    TFormMode m_mode;
    QVariant m_value;
};
