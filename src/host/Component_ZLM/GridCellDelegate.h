#pragma once

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Export.h"

#include <QStyledItemDelegate>

/// Paints the grid's cells: whole rows are marked, not cells, and numbers run from left to right whatever the
/// window does.
class KETEBIONPAP_HOST GridCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    GridCellDelegate(QObject *parent, const QList<TGridColumn> &columns);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QList<TGridColumn> m_columns;
};
