#pragma once

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/NewBaseForms_PKG/ListDoor.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"

class QSplitter;
class QVBoxLayout;
class TGeneral_Search_Frame;
class TGroup_Pane;
class TQuery;
class TTab_Search_Frame;

/// A screen with a list to look at: search, grid, caption, the panes beside it; printing and the spreadsheet.
///
/// Its constructor builds the contents with the Build... helpers; the first showing then runs the hooks in order:
/// ParameterStep, SetListText, PrepareSearch, ServeGrid, last row, AfterShow.
class KETEBIONPAP_HOST TListForm : public TBaseForm {
    Q_OBJECT
public:
    TQuery *ListQuery() const { return m_listQuery; }
    TSmartGrid_ZLM *Grid() const { return m_grid; }

    TZelmoSearchManager *ZelmoSearchManager1 = nullptr;
    TGeneral_Search_Frame *General_Search = nullptr;
    TTab_Search_Frame *Tab_Search = nullptr; ///< set by screens that have one; Ctrl+1... then choose its tabs
    TGroup_Pane *Groups = nullptr;           ///< set by screens that have one (BuildGroups)

    void setVisible(bool visible) override;
    void done(int result) override;

protected:
    TListForm();

    // The screen's hooks.
    virtual void ParameterStep() {}
    virtual void SetListText() = 0; ///< gives the list query its text
    virtual void PrepareSearch();   ///< default: script, init, which runs the search
    /// Reads the list anew (default: ResetDataset, then the search again) and stays on its row; when that one is gone, on
    /// the next one, or the one before it at the end.
    virtual void RefreshList();
    virtual void ServeGrid() {} ///< keys and menu of the grid
    virtual void AfterShow();   ///< default: the grid takes the focus
    /// The buttons' enabled state from mode and rows; runs after every search and move.
    virtual void UpdateButtons() {}
    /// A row was chosen in the grid: Enter, a double click.
    virtual void ActivateRow() {}

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
    /// A pane of groups beside the list; after BuildUsualLayout.
    TGroup_Pane *BuildGroups(TQuery *groups, const QString &gridName, const QString &columnCaption,
                             const QString &buttonCaption);

    /// Of which part the list is (TListDoor); part 0, of none, where a screen does not say it.
    void SetListPart(TSoftwarePart part) { m_door.part = part; }
    /// A list that only administrators may take out.
    void KeepToAdministrators() { m_door.forAdministrators = true; }

    void PrintPreview();
    /// Ctrl+E, in every list: the rows go to a spreadsheet file.
    void SaveSpreadsheet();
    virtual TListDoor Door() const;
    bool HandleKey(QKeyEvent *event) override;

private:
    void start();
    void restorePanes();
    QString splitterKey() const;
    TQuery *m_listQuery = nullptr;
    TListDoor m_door;
    TSmartGrid_ZLM *m_grid = nullptr;
    QVBoxLayout *m_searchPanel;
    QSplitter *m_center;
    QVBoxLayout *m_belowGrid;
    bool m_started = false;
};
