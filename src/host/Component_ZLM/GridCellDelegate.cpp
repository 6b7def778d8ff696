#include "host/Component_ZLM/GridCellDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace {

QColor textColor(const QStyleOptionViewItem &cell)
{
    QPalette::ColorGroup group = QPalette::Disabled;
    if (cell.state.testFlag(QStyle::State_Enabled))
        group = cell.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
    return cell.palette.color(group, cell.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText
                                                                                 : QPalette::Text);
}

/// A text of one line and nothing beside it.
bool isPlain(const QStyleOptionViewItem &cell)
{
    return !cell.text.isEmpty() && !cell.text.contains(QChar::LineSeparator) && cell.showDecorationSelected &&
           !(cell.features & (QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDecoration |
                              QStyleOptionViewItem::WrapText));
}

} // namespace

GridCellDelegate::GridCellDelegate(QObject *parent, const QList<TGridColumn> &columns)
    : QStyledItemDelegate(parent), m_columns(columns)
{
}

// The style shapes a cell's text three times, and shaping is most of what painting a list takes. The usual cell, a text
// that fits, is shaped once here and stands where the style would put it; all others are the style's.
void GridCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);

    QTextLayout layout(cell.text, cell.font);
    QTextLine line;
    if (isPlain(cell)) {
        QTextOption text;
        text.setTextDirection(cell.direction);
        text.setWrapMode(QTextOption::ManualWrap);
        text.setAlignment(QStyle::visualAlignment(cell.direction, cell.displayAlignment));
        layout.setTextOption(text);
        layout.beginLayout();
        line = layout.createLine();
        line.setLineWidth(room.width());
        layout.endLayout();
    }
    const bool ours = line.isValid() && line.naturalTextWidth() <= room.width();
    if (ours) {
        cell.text.clear();
        cell.features.setFlag(QStyleOptionViewItem::HasDisplay, false);
    }
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (!ours)
        return;
    painter->save();
    painter->setClipRect(cell.rect);
    painter->setPen(textColor(cell));
    const QSize size(room.width(), int(line.height()));
    layout.draw(painter, QStyle::alignedRect(cell.direction, cell.displayAlignment, size, room).topLeft());
    painter->restore();
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
