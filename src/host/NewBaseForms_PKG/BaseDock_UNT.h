#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"

#include <QVariant>

class QMenu;
class TBaseGet_FRM;
class TGeneral_Search_Frame;
class TQuery;
class TSmartGrid_ZLM;

/// The base of all list screens: search, grid, caption, buttons; browse mode (1) or select mode (5).
///
/// A list screen's constructor builds its contents with the Build... helpers; `showEvent` then runs the hooks in
/// order: ParameterStep, SetListText, PrepareSearch, then SetShortCut, SetPopMenu, last row, focus.
/// Buttons: Select only in select mode; edit, delete, select and print need a row.
class TBaseDock_FRM : public TBaseForm {
    Q_OBJECT
public:
    TBaseDock_FRM(TFormMode mode, const QString &text);
    /// With a value: an integer, or a text of parts parted by semicolons (Parameter).
    TBaseDock_FRM(TFormMode mode, const QVariant &value, const QString &text);
    ~TBaseDock_FRM() override;

    TFormMode Mode() const { return m_mode; }
    /// Part `index` (0-based) of the value; a null variant past the end. The last part keeps its semicolons when
    /// `restFrom` parts were asked for (a filter text may hold some).
    QVariant Parameter(int index) const;

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

protected:
    // The screen's hooks.
    virtual void ParameterStep() {}
    virtual void SetListText() = 0;            ///< gives the list query its text
    virtual void PrepareSearch();              ///< default: script, init, last row
    virtual void RefreshList();                ///< default: ResetDataset, then the search again
    virtual TBaseGet_FRM *CreateEditor(bool newRecord) = 0; ///< null: nothing to open
    virtual void DeleteRecord() = 0;           ///< runs only while Del_BTN is enabled
    virtual void SelectRecord() {}             ///< stores the choice; then the screen closes with OK (see Select)
    virtual void NewRecord();                  ///< default: ShowEditor(CreateEditor(true))
    virtual void EditRecord();                 ///< default: ShowEditor(CreateEditor(false))
    virtual void AfterShow();                  ///< default: the grid takes the focus

    // What the screens build themselves from.
    /// Names the list's query and its grid with columns and search items; call it first.
    void BuildList(TQuery *listQuery, const QString &gridName, const QList<TGridColumn> &columns,
                   const QList<TSearchItem> &items);
    /// Search frame above, grid, caption panel; the usual layout of a list.
    void BuildUsualLayout(const QString &captionPanelText);
    /// New F4, edit F5, delete F7, select Enter, [print F9], exit Esc.
    void BuildButtons(bool withSelect, bool withPrint);
    void SetShortCut(QWidget *control);
    void SetPopMenu(QWidget *control);

    /// Shows an editor modally unless it marked itself NotShowable, frees it, refreshes after OK. True on OK.
    bool ShowEditor(TBaseGet_FRM *editor);
    /// The buttons' enabled state from mode and rows; runs after every search and move.
    virtual void UpdateButtons();
    /// Runs the actions as their buttons do.
    void Select();
    void PrintPreview();

    bool HandleKey(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void start();
    TFormMode m_mode;
    QVariant m_value;
    TQuery *m_listQuery = nullptr;
    TSmartGrid_ZLM *m_grid = nullptr;
    bool m_started = false;
};
