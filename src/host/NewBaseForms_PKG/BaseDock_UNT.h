#pragma once

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"

#include <QVariant>

class QLabel;
class QMenu;
class QSplitter;
class QVBoxLayout;
class TBaseGet_FRM;
class TGeneral_Search_Frame;
class TGroup_Pane;
class TQuery;
class TSmartGrid_ZLM;
class TTab_Search_Frame;

/// The base of all list screens: search, grid, caption, buttons; browse mode (1) or select mode (5).
///
/// A list screen's constructor builds its contents with the Build... helpers; the first showing then runs the hooks
/// in order: ParameterStep, SetListText, PrepareSearch, then SetShortCut, SetPopMenu, last row, AfterShow.
/// Buttons: Select only in select mode; edit, delete, select and print need a row.
class KETEBIONPAP_HOST TBaseDock_FRM : public TBaseForm {
    Q_OBJECT
public:
    TBaseDock_FRM(TFormMode mode, const QString &text);
    /// With a value: an integer, or a text of parts parted by semicolons (Parameter).
    TBaseDock_FRM(TFormMode mode, const QVariant &value, const QString &text);
    ~TBaseDock_FRM() override;

    TFormMode Mode() const { return m_mode; }
    /// Part `index` (0-based) of the value; a null variant past the end.
    QVariant Parameter(int index) const { return ValuePart(m_value, index); }

    TQuery *ListQuery() const { return m_listQuery; }
    TSmartGrid_ZLM *Grid() const { return m_grid; }

    TSmartButton_ZLM *New_BTN = nullptr;
    TSmartButton_ZLM *EDit_BTN = nullptr;
    TSmartButton_ZLM *Del_BTN = nullptr;
    TSmartButton_ZLM *Select_BTN = nullptr;
    TSmartButton_ZLM *PrintList_BTN = nullptr;
    TSmartButton_ZLM *EXit_BTN = nullptr;
    TZelmoSearchManager *ZelmoSearchManager1 = nullptr;
    TGeneral_Search_Frame *General_Search = nullptr;
    TTab_Search_Frame *Tab_Search = nullptr; ///< set by screens that have one; Ctrl+1... then choose its tabs

    TGroup_Pane *Groups = nullptr; ///< set by screens that have one (BuildGroups)

    void setVisible(bool visible) override;
    void done(int result) override;

protected:
    // The screen's hooks.
    virtual void ParameterStep() {}
    virtual void SetListText() = 0; ///< gives the list query its text
    virtual void PrepareSearch();   ///< default: script, init, which runs the search
    /// Reads the list anew (default: ResetDataset, then the search again) and stays on its row; when that one is gone, on
    /// the next one, or the one before it at the end.
    virtual void RefreshList();
    virtual TBaseGet_FRM *CreateEditor(bool newRecord) = 0; ///< null: nothing to open
    virtual void DeleteRecord() = 0;                        ///< runs only while Del_BTN is enabled
    virtual bool SelectRecord() { return true; } ///< stores the choice; true closes the screen with OK
    virtual void NewRecord();                    ///< default: ShowEditor(CreateEditor(true))
    virtual void EditRecord();                   ///< default: ShowEditor(CreateEditor(false))
    virtual void AfterShow();                    ///< default: the grid takes the focus

    // What the screens build themselves from.
    /// Names the list's query and its grid with columns and search items; call it first.
    void BuildList(TQuery *listQuery, const QString &gridName, const QList<TGridColumn> &columns,
                   const QList<TSearchItem> &items);
    /// Search panel above, grid, caption panel; the usual layout of a list.
    void BuildUsualLayout(const QString &captionPanelText);
    /// Places for what a list has beyond the usual: beside and below the general search; beside the grid (a group
    /// pane goes to index 0); between grid and caption panel.
    QVBoxLayout *SearchPanel() const { return m_searchPanel; }
    QSplitter *Center() const { return m_center; }
    QVBoxLayout *BelowGrid() const { return m_belowGrid; }
    QLabel *CaptionPanel() const { return m_captionPanel; }
    /// A pane of groups beside the list; after BuildUsualLayout.
    TGroup_Pane *BuildGroups(TQuery *groups, const QString &gridName, const QString &columnCaption,
                             const QString &buttonCaption);
    /// New F4, edit F5, delete F7, select Enter, [print F9], exit Esc.
    void BuildButtons(bool withSelect, bool withPrint);
    void SetShortCut(QWidget *control);
    void SetPopMenu(QWidget *control);

    /// Shows an editor modally unless it marked itself NotShowable, frees it; after OK reads the list again with the
    /// record that was saved as its current row, or tells that the search leaves it out. A record that turned out to be
    /// gone leaves the list. True on OK.
    bool ShowEditor(TBaseGet_FRM *editor);
    /// The buttons' enabled state from mode and rows; runs after every search and move.
    virtual void UpdateButtons();
    /// Runs the actions as their buttons do; nothing while their button is disabled.
    void Select();
    /// Whether the current row is still in the database; when it is not, the user is told and the row leaves the list.
    /// Throws TDatabaseError.
    bool CurrentIsStored();
    /// Whether what is to be picked is; default: the current row.
    virtual bool ChoiceIsStored() { return CurrentIsStored(); }
    void PrintPreview();
    /// Ctrl+E, in every list: the rows go to a spreadsheet file.
    void SaveSpreadsheet();

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

    bool HandleKey(QKeyEvent *event) override;
    void EnterKey() override {} ///< Enter is the Select button's, else nothing

private:
    void start();
    void restorePanes();
    QString splitterKey() const;
    void activateRow();
    void showSaved(qlonglong key);
    void dropIfGone(qlonglong key);
    TFormMode m_mode;
    QVariant m_value;
    TQuery *m_listQuery = nullptr;
    TSmartGrid_ZLM *m_grid = nullptr;
    QVBoxLayout *m_searchPanel = nullptr;
    QSplitter *m_center = nullptr;
    QVBoxLayout *m_belowGrid = nullptr;
    QLabel *m_captionPanel = nullptr;
    bool m_started = false;
};
