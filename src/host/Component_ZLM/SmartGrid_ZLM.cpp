#include "host/Component_ZLM/SmartGrid_ZLM.h"

#include "host/Component_ZLM/GridCellDelegate.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/database/Query.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString emptyText = u"<داده ای برای نمایش وجود ندارد>"_s;
const int defaultWidth = 100;

} // namespace

struct TSmartGrid_ZLM::Private {
    TQueryModel *model = nullptr;
    QPointer<TQuery> query;
    std::function<bool(int rows)> mayCopy;
    QList<bool> offered;
    QList<bool> shown;
    QList<int> widths;
    int sortColumn = -1;
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
    int anchor = -1;         // where a selection with Shift begins
    bool following = false;  // a move of one side is being passed on to the other
    bool arranging = false;  // the program sets widths
    bool rearranged = false; // the user changed the layout
    bool restored = false;
    QString layoutKey;

    int columnOf(const QString &field) const
    {
        const auto &columns = model->columns();
        for (int i = 0; i < columns.size(); ++i) {
            if (columns[i].field.compare(field, Qt::CaseInsensitive) == 0)
                return i;
        }
        return -1;
    }
};

TSmartGrid_ZLM::TSmartGrid_ZLM(const QString &objectName, QWidget *parent)
    : QTableView(parent), d(std::make_unique<Private>())
{
    setObjectName(objectName);
    setLayoutDirection(Qt::RightToLeft);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setShowGrid(true);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    // The style's own least sizes follow the font's widest letter.
    verticalHeader()->setMinimumSectionSize(12);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2);
    horizontalHeader()->setMinimumSectionSize(24);
    QHeaderView *header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    header->setSortIndicatorShown(false);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::sectionClicked, this, &TSmartGrid_ZLM::sortBy);
    connect(header, &QHeaderView::sectionMoved, this, [this] { d->rearranged = true; });
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        // The last visible column only fills the rest.
        QHeaderView *header = horizontalHeader();
        bool isLast = true;
        for (int place = header->visualIndex(column) + 1; place < header->count(); ++place)
            isLast = isLast && header->isSectionHidden(header->logicalIndex(place));
        if (d->arranging || isLast || width <= 0 || column >= d->widths.size() || !isVisible())
            return;
        d->widths[column] = width;
        d->rearranged = true;
    });
    connect(header, &QWidget::customContextMenuRequested, this, [this](const QPoint &point) {
        QMenu menu(this);
        FillColumnMenu(&menu);
        menu.exec(horizontalHeader()->mapToGlobal(point));
    });
}

TSmartGrid_ZLM::~TSmartGrid_ZLM() = default;

void TSmartGrid_ZLM::SetColumns(TQuery *query, const QList<TGridColumn> &columns)
{
    if (d->query)
        d->query->disconnect(this);
    QAbstractItemModel *oldModel = model();
    QItemSelectionModel *oldSelection = selectionModel();
    d->query = query;
    d->model = new TQueryModel(query, columns, this);
    d->offered.fill(true, columns.size());
    d->shown.clear();
    d->widths.clear();
    const QFontMetrics metrics(horizontalHeader()->font());
    for (const TGridColumn &column : columns) {
        d->shown << column.visible;
        const int caption = metrics.horizontalAdvance(column.caption) + 24; // margins and the sort arrow
        d->widths << std::max(column.width > 0 ? column.width : defaultWidth, caption);
    }
    setModel(d->model);
    delete oldSelection;
    delete oldModel;
    setItemDelegate(new GridCellDelegate(this, columns));
    connect(query, &TQuery::currentChanged, this, &TSmartGrid_ZLM::showCurrent);
    connect(d->model, &QAbstractItemModel::modelReset, this, &TSmartGrid_ZLM::showCurrent);
    d->restored = false;
    applyColumns();
    showCurrent();
}

TQueryModel *TSmartGrid_ZLM::Model() const
{
    return d->model;
}

TQuery *TSmartGrid_ZLM::Query() const
{
    return d->query;
}

void TSmartGrid_ZLM::SetMultiSelect(bool on)
{
    setSelectionMode(on ? ExtendedSelection : SingleSelection);
}

void TSmartGrid_ZLM::SetRowChecks(bool on)
{
    if (on != d->model->isCheckable())
        d->widths[0] += on ? 24 : -24;
    d->model->setCheckable(on);
    horizontalHeader()->setFirstSectionMovable(!on);
    applyColumns();
}

QList<int> TSmartGrid_ZLM::SelectedRows() const
{
    QList<int> rows;
    if (!selectionModel())
        return rows;
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows << row;
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.size() == 1 && rows[0] == currentIndex().row())
        rows.clear();
    return rows;
}

void TSmartGrid_ZLM::SetColumnOffered(const QString &field, bool offered)
{
    const int column = d->columnOf(field);
    if (column < 0)
        return;
    d->offered[column] = offered;
    if (offered)
        d->shown[column] = true;
    applyColumns();
}

void TSmartGrid_ZLM::FillColumnMenu(QMenu *menu)
{
    const auto &columns = d->model->columns();
    const bool onlyOne = ShownColumns().size() == 1;
    for (int i = 0; i < columns.size(); ++i) {
        if (!d->offered[i])
            continue;
        QAction *action = menu->addAction(columns[i].caption);
        action->setCheckable(true);
        action->setChecked(d->shown[i]);
        // One column must stay, and the ticks' one.
        action->setEnabled(!(d->shown[i] && onlyOne) && !(i == 0 && d->model->isCheckable()));
        connect(action, &QAction::toggled, this, [this, i](bool on) {
            d->shown[i] = on;
            d->rearranged = true;
            applyColumns();
        });
    }
}

void TSmartGrid_ZLM::applyColumns()
{
    d->arranging = true;
    for (int i = 0; i < d->widths.size(); ++i) {
        setColumnWidth(i, d->widths[i]);
        setColumnHidden(i, !d->shown[i] || !d->offered[i]);
    }
    d->arranging = false;
}

// Written as "field:width:shown" in the order of the columns, so that a column that is new, or gone, does no harm.
void TSmartGrid_ZLM::SaveLayout()
{
    if (!d->model || d->layoutKey.isEmpty())
        return;
    QStringList entries;
    for (int place = 0; place < d->widths.size(); ++place) {
        const int i = horizontalHeader()->logicalIndex(place);
        entries << u"%1:%2:%3"_s.arg(d->model->columns()[i].field).arg(d->widths[i]).arg(d->shown[i] ? 1 : 0);
    }
    LayoutStore::setValue(d->layoutKey, entries);
    d->rearranged = false;
}

void TSmartGrid_ZLM::RestoreLayout()
{
    if (!d->model)
        return;
    d->restored = true;
    d->layoutKey = LayoutStore::windowKey(window()) + u'/' + objectName();
    int place = 0;
    bool anyShown = false;
    d->arranging = true;
    const QStringList entries = LayoutStore::value(d->layoutKey).toStringList();
    for (const QString &entry : entries) {
        const QStringList parts = entry.split(u':');
        const int column = parts.size() == 3 ? d->columnOf(parts[0]) : -1;
        const int width = parts.value(1).toInt();
        if (column < 0 || width < 10 || width > 5000)
            continue;
        d->widths[column] = width;
        d->shown[column] = parts[2] == "1"_L1 || (column == 0 && d->model->isCheckable());
        horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), place++);
    }
    for (int i = 0; i < d->shown.size(); ++i)
        anyShown = anyShown || (d->shown[i] && d->offered[i]);
    if (!anyShown && !d->shown.isEmpty())
        d->shown.fill(true);
    d->arranging = false;
    applyColumns();
    d->rearranged = false;
}

void TSmartGrid_ZLM::showEvent(QShowEvent *event)
{
    if (!d->restored)
        RestoreLayout();
    QTableView::showEvent(event);
}

void TSmartGrid_ZLM::hideEvent(QHideEvent *event)
{
    QTableView::hideEvent(event);
    if (d->rearranged)
        SaveLayout();
}

QList<int> TSmartGrid_ZLM::ShownColumns() const
{
    QList<int> columns;
    for (int place = 0; place < horizontalHeader()->count(); ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(column))
            columns << column;
    }
    return columns;
}

// The query moved, or was read again: the grid follows.
void TSmartGrid_ZLM::showCurrent()
{
    if (d->following || !d->query || !selectionModel())
        return;
    d->following = true;
    const int row = d->query->active() ? d->query->position() : -1;
    if (row >= 0 && row < d->model->rowCount()) {
        // The first shown column is on the right, whatever the window has scrolled to.
        const int column = currentIndex().isValid() ? currentIndex().column() : ShownColumns().value(0);
        const QModelIndex index = d->model->index(row, column);
        if (index != currentIndex() || !selectionModel()->isSelected(index)) {
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                         QItemSelectionModel::Rows);
            scrollTo(index);
        }
    }
    d->following = false;
}

void TSmartGrid_ZLM::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (!QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier) || d->following)
        d->anchor = current.row();
    if (d->following || !d->query || !d->query->active() || !current.isValid())
        return;
    d->following = true;
    Guarded([&] {
        if (d->query->position() != current.row())
            d->query->moveTo(current.row());
    });
    d->following = false;
}

void TSmartGrid_ZLM::sortBy(int column)
{
    if (!d->query || !d->query->active() || d->query->keyField().isEmpty())
        return;
    const TGridColumn &clicked = d->model->columns()[column];
    if (clicked.format == TGridColumn::RowNumber || (d->query->fieldIndex(clicked.field) < 0))
        return;
    if (d->sortColumn != column) {
        d->sortColumn = column;
        d->sortOrder = Qt::AscendingOrder;
    } else if (d->sortOrder == Qt::AscendingOrder) {
        d->sortOrder = Qt::DescendingOrder;
    } else {
        d->sortColumn = -1;
    }
    Guarded([&] {
        const qlonglong key = d->query->isEmpty() ? 0 : d->query->keyAt(std::max(0, d->query->position()));
        d->query->setOrder(d->sortColumn < 0 ? QString() : clicked.field, d->sortOrder);
        if (!d->query->active())
            d->query->open();
        const int row = d->query->rowOfKey(key);
        if (row >= 0)
            d->query->moveTo(row);
    });
    horizontalHeader()->setSortIndicatorShown(d->sortColumn >= 0);
    if (d->sortColumn >= 0)
        horizontalHeader()->setSortIndicator(d->sortColumn, d->sortOrder);
    showCurrent();
}

// The view's own Shift selection begins where the user's last key or click was, even when the query has moved since.
bool TSmartGrid_ZLM::extendSelection(QKeyEvent *event)
{
    if (selectionMode() != ExtendedSelection || !event->modifiers().testFlag(Qt::ShiftModifier) ||
        !currentIndex().isValid())
        return false;
    const int row = currentIndex().row();
    const int last = d->model->rowCount() - 1;
    const int page =
        std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
    int target;
    switch (event->key()) {
    case Qt::Key_Up:
        target = row - 1;
        break;
    case Qt::Key_Down:
        target = row + 1;
        break;
    case Qt::Key_PageUp:
        target = row - page;
        break;
    case Qt::Key_PageDown:
        target = row + page;
        break;
    case Qt::Key_Home:
        target = 0;
        break;
    case Qt::Key_End:
        target = last;
        break;
    default:
        return false;
    }
    target = std::clamp(target, 0, last);
    const int anchor = d->anchor >= 0 && d->anchor <= last ? d->anchor : row;
    selectionModel()->setCurrentIndex(d->model->index(target, currentIndex().column()),
                                      QItemSelectionModel::NoUpdate);
    selectionModel()->select(
        QItemSelection(d->model->index(std::min(anchor, target), 0),
                       d->model->index(std::max(anchor, target), d->model->columnCount() - 1)),
        QItemSelectionModel::ClearAndSelect);
    d->anchor = anchor;
    event->accept();
    return true;
}

void TSmartGrid_ZLM::SetCopyDoor(std::function<bool(int rows)> mayCopy)
{
    d->mayCopy = std::move(mayCopy);
}

void TSmartGrid_ZLM::copyRows()
{
    QList<int> rows = SelectedRows();
    if (rows.isEmpty() && currentIndex().isValid())
        rows << currentIndex().row();
    if (d->mayCopy && !d->mayCopy(int(rows.size())))
        return;
    QStringList lines;
    for (const int row : rows) {
        d->model->bringRow(row);
        QStringList cells;
        for (const int column : ShownColumns())
            cells << d->model->index(row, column).data().toString();
        lines << cells.join(u'\t');
    }
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(u'\n'));
}

void TSmartGrid_ZLM::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
    Q_EMIT keyPressed(event);
    if (event->isAccepted() || !d->model)
        return;
    if (d->query) { // rows that could not be read are asked for again
        d->query->askAgain();
        viewport()->update();
    }
    if (extendSelection(event))
        return;
    const auto goTo = [&](int row) {
        if (row >= 0 && row < d->model->rowCount())
            setCurrentIndex(d->model->index(row, std::max(0, currentIndex().column())));
        event->accept();
    };
    if (event->matches(QKeySequence::Copy)) {
        copyRows();
        event->accept();
        return;
    }
    const bool plain = (event->modifiers() & ~(Qt::KeypadModifier | Qt::ControlModifier)) == Qt::NoModifier;
    switch (event->key()) {
    case Qt::Key_Home:
        if (plain)
            return goTo(0);
        break;
    case Qt::Key_End:
        if (plain)
            return goTo(d->model->rowCount() - 1);
        break;
    case Qt::Key_Space:
        if (d->model->isCheckable() && currentIndex().isValid()) {
            const QModelIndex first = d->model->index(currentIndex().row(), 0);
            const bool on = first.data(Qt::CheckStateRole).toInt() != Qt::Checked;
            QList<int> rows = SelectedRows();
            if (rows.isEmpty())
                rows << currentIndex().row();
            for (const int row : rows)
                d->model->setData(d->model->index(row, 0), on ? Qt::Checked : Qt::Unchecked,
                                  Qt::CheckStateRole);
            event->accept();
            return;
        }
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    default:
        // Letters, Enter, Esc and function keys are the screen's; Ctrl+A selects all where several may be selected.
        if (!event->matches(QKeySequence::SelectAll) || selectionMode() == SingleSelection)
            return;
    }
    QTableView::keyPressEvent(event);
}

void TSmartGrid_ZLM::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        Q_EMIT rowActivated();
}

void TSmartGrid_ZLM::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    FillColumnMenu(&menu);
    menu.exec(event->globalPos());
}

void TSmartGrid_ZLM::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (d->model && d->model->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setLayoutDirection(Qt::RightToLeft);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, emptyText);
}
