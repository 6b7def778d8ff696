#pragma once

#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

#include <functional>

class QTableWidget;
class TSmartButton_ZLM;

/// A short list that is read as a whole (users, locks, workstations), with buttons under it.
class TSmallList_FRM : public TBaseForm {
    Q_OBJECT
public:
    QTableWidget *Table() const { return m_table; }
    /// Reads the rows again and stays on the current one; when that one is gone, on the next one that is left, or the
    /// one before it at the end.
    void Refresh();
    int exec() override;

protected:
    /// `keyColumns`: how many of the first columns tell a row from the others.
    TSmallList_FRM(const QString &title, const QString &gridName, const QStringList &captions,
                   int keyColumns = 1);
    /// A button that works on the current row; without rows it is disabled.
    TSmartButton_ZLM *AddRowButton(const QString &objectName, const QString &caption, const QString &key,
                                   std::function<void()> action);
    /// A button that needs no row.
    TSmartButton_ZLM *AddFreeButton(const QString &objectName, const QString &caption, const QString &key,
                                    std::function<void()> action);
    void AddRefreshButton();
    void AddExitButton();
    /// The rows' texts, in the columns' order. May throw TDatabaseError.
    virtual QList<QStringList> ReadRows() = 0;
    template <class Item, class Texts>
    static QList<QStringList> TextsOf(const QList<Item> &items, Texts texts)
    {
        QList<QStringList> rows;
        for (const Item &item : items)
            rows << texts(item);
        return rows;
    }
    int CurrentRow() const;
    void EnterKey() override;

private:
    int firstLeft(const QList<QStringList> &keys) const;
    QStringList keyOf(int row) const;
    QTableWidget *m_table;
    int m_keyColumns;
    QList<TSmartButton_ZLM *> m_rowButtons;
};
