#pragma once

#include "host/Export.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <functional>
#include <memory>

class QMenu;
class TDatabaseError;
class TQuery;

/// One column of a grid. Tables of these are the screens' column lists.
struct TGridColumn {
    enum Format { Plain, Money, Code, YesNo, RowNumber };
    QString field;
    QString caption;
    int width = 0; ///< pixels, 0 for the default; a caption that needs more gets more
    bool visible = true;
    Format format = Plain; ///< RowNumber: the 1-based position, whatever the field
    /// The word for a number that stands for something; wherever the column is shown, printed, copied or exported.
    QString (*nameOf)(int) = nullptr;
};

/// How a value is shown in a column: grouped money, bare codes, yes or no, the names of numbers; nothing for null.
KETEBIONPAP_HOST QString ShownInGrid(const TGridColumn &column, const QVariant &value);

/// The rows of a query as a table model: rows are asked of the query when they are painted; those of a server are empty
/// until they have come. A row that the database does not give stays empty, and the user is told once.
class KETEBIONPAP_HOST TQueryModel : public QAbstractTableModel {
    Q_OBJECT
public:
    TQueryModel(TQuery *query, const QList<TGridColumn> &columns, QObject *parent);
    ~TQueryModel() override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override; ///< check boxes only
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    const QList<TGridColumn> &columns() const;
    /// Waits until a row has come, for whoever needs its texts at once. One that does not come stays empty.
    void bringRow(int row) const;
    /// The row as a person would call it: "caption: value" of these fields, without any of the first two columns that the
    /// screen shows. Fields that are empty are left out.
    QString nameOfRow(int row, const QStringList &fields = {}) const;
    /// A check box in the first column; ticks are kept by the rows' keys.
    void setCheckable(bool on);
    bool isCheckable() const;
    QList<qlonglong> checkedKeys() const; ///< in list order; rows that are not listed any more are left out
    QList<qlonglong>
    unlistedChecks() const;      ///< of rows that a search or a group leaves out now; in key order
    void uncheck(qlonglong key); ///< listed or not
    void clearChecks();

Q_SIGNALS:
    void checksChanged();

private:
    void tellOnce(const TDatabaseError &error) const;
    struct Private;
    std::unique_ptr<Private> d;
};

/// The suite's grid on a query. Right to left, whole rows, current row = the query's current row (both ways), a
/// click on a header sorts a windowed list in the database (again: downwards, a third time: in key order), the
/// column layout is remembered under the grid's object name and its window's class. An empty grid shows
/// "<داده ای برای نمایش وجود ندارد>". Ctrl+C copies the current row (the selected ones, where several may be).
/// Enter, Esc, function keys and letters are left to the screen.
class KETEBIONPAP_HOST TSmartGrid_ZLM : public QTableView {
    Q_OBJECT
public:
    TSmartGrid_ZLM(const QString &objectName, QWidget *parent);
    ~TSmartGrid_ZLM() override;

    void SetColumns(TQuery *query, const QList<TGridColumn> &columns);
    TQueryModel *Model() const;
    TQuery *Query() const;
    /// Several rows may be selected (Ctrl, Shift); default one.
    void SetMultiSelect(bool on);
    void SetRowChecks(bool on);
    /// Asked with their number before rows are copied (Ctrl+C); false: they stay. Without it all may be copied.
    void SetCopyDoor(std::function<bool(int rows)> mayCopy);
    /// Positions of the selected rows in list order; empty when nothing beyond the current row is selected.
    QList<int> SelectedRows() const;
    /// The row as a person would call it (TQueryModel).
    QString NameOfRow(int row, const QStringList &fields = {}) const
    {
        return Model()->nameOfRow(row, fields);
    }
    /// The columns that are shown, in their order on the screen.
    QList<int> ShownColumns() const;
    /// Shows or hides a column and offers it in the column menu or not.
    void SetColumnOffered(const QString &field, bool offered);
    /// Adds the columns that the user may show and hide to a menu.
    void FillColumnMenu(QMenu *menu);
    void SaveLayout();
    void RestoreLayout();

Q_SIGNALS:
    void rowActivated();               ///< double click
    void keyPressed(QKeyEvent *event); ///< before the grid's own handling; accept it to stop that

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void showCurrent();
    void sortBy(int column);
    void copyRows();
    bool extendSelection(QKeyEvent *event);
    void applyColumns();
    struct Private;
    std::unique_ptr<Private> d;
};
