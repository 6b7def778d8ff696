#pragma once

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Export.h"

#include <QWidget>

class QVBoxLayout;
class TQuery;
class TSmartButton_ZLM;

/// The rows of a record under edit: a grid and its buttons "new", "edit" and "delete" row, with the suite's keys.
/// While the grid has the focus the numeric pad's plus adds a row, its star edits the current one, its minus and
/// Delete delete it; Enter (where the screen wants it) and a double click edit.
class KETEBIONPAP_HOST TDetail_Rows_Frame : public QWidget {
    Q_OBJECT
public:
    /// Captions of the buttons; an empty one leaves the button out.
    struct Captions {
        QString add;
        QString edit;
        QString del;
    };
    TDetail_Rows_Frame(QWidget *parent, const QString &gridName, const Captions &captions,
                       const QStringList &buttonNames, bool enterEdits);

    void SetColumns(TQuery *query, const QList<TGridColumn> &columns);
    TSmartGrid_ZLM *Grid() const { return m_grid; }
    /// Reads the query anew; the row whose `keyField` has `key` becomes current (null: the one that was current).
    /// When that row is gone, the next one that is left, or the one before it at the end.
    void Reread(const QString &keyField, const QVariant &key = {});

    TSmartButton_ZLM *AddRow = nullptr;
    TSmartButton_ZLM *EditRow = nullptr;
    TSmartButton_ZLM *DelRow = nullptr;

Q_SIGNALS:
    void addRow();
    void editRow();   ///< only when there is a current row
    void deleteRow(); ///< only when there is a current row and the button is enabled

private:
    void onKey(QKeyEvent *event);
    void requestEdit();
    void requestDelete();
    void updateButtons();
    TSmartGrid_ZLM *m_grid;
    QVBoxLayout *m_side;
    TQuery *m_query = nullptr;
    bool m_enterEdits;
};
