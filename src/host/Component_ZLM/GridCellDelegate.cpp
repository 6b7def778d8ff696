#include "host/Component_ZLM/GridCellDelegate.h"

GridCellDelegate::GridCellDelegate(QObject *parent, const QList<TGridColumn> &columns)
    : QStyledItemDelegate(parent), m_columns(columns)
{
}

void GridCellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus;
    const TGridColumn::Format format = m_columns.value(index.column()).format;
    const bool number = format == TGridColumn::Money || format == TGridColumn::Code;
    if (number && !option->features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) {
        option->direction = Qt::LeftToRight;
        option->displayAlignment = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
    }
}
