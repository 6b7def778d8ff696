#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/database/AnswerWait.h"
#include "host/database/Query.h"

#include <QPointer>
#include <QSet>
#include <QTimer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

QString ShownInGrid(const TGridColumn &column, const QVariant &value)
{
    if (value.isNull())
        return {};
    if (column.nameOf)
        return column.nameOf(value.toInt());
    if (column.format == TGridColumn::YesNo)
        return value.toInt() != 0 ? u"بله"_s : u"خیر"_s;
    const bool real = value.typeId() == QMetaType::Double;
    if (column.format == TGridColumn::Money)
        return PersianText::grouped(real ? RoundedText_ZLM(value.toDouble()) : value.toString());
    return real ? FloatToStr_ZLM(value.toDouble()) : value.toString();
}

struct TQueryModel::Private {
    QPointer<TQuery> query;
    QList<TGridColumn> columns;
    QList<int> fields; // position of each column's field in the query, -1 where it has none
    int rows = 0;
    bool checkable = false;
    bool told = false; // the user knows already that rows cannot be read
    QSet<qlonglong> checks;

    qlonglong keyOf(int row) const { return query->keyField().isEmpty() ? row : query->keyAt(row); }
    QVariant value(int row, int column) const;
    QString shown(int row, int column) const;
    struct TLooked {
        int rows = 0;
        QList<int> fields;
    };
    TLooked look() const;
    void take(const TLooked &looked);
};

// Asking for the columns may wait for a server, and the rows are painted meanwhile as they were.
TQueryModel::Private::TLooked TQueryModel::Private::look() const
{
    TLooked looked;
    looked.rows = query && query->active() ? query->recordCount() : 0;
    for (const TGridColumn &column : columns)
        looked.fields << (looked.rows > 0 ? query->fieldIndex(column.field) : -1);
    return looked;
}

void TQueryModel::Private::take(const TLooked &looked)
{
    rows = looked.rows;
    fields = looked.fields;
    told = false;
}

QVariant TQueryModel::Private::value(int row, int column) const
{
    if (!query || row >= rows || fields.value(column, -1) < 0)
        return {};
    if (!query->isHere(row, fields[column])) {
        query->readSoon(row);
        return {};
    }
    return query->valueAt(row, fields[column]);
}

QString TQueryModel::Private::shown(int row, int column) const
{
    if (columns[column].format == TGridColumn::RowNumber)
        return QString::number(row + 1);
    return ShownInGrid(columns[column], value(row, column));
}

TQueryModel::TQueryModel(TQuery *query, const QList<TGridColumn> &columns, QObject *parent)
    : QAbstractTableModel(parent), d(std::make_unique<Private>())
{
    d->query = query;
    d->columns = columns;
    d->take(d->look());
    const auto again = [this] {
        Private::TLooked looked;
        std::exception_ptr failed;
        try {
            looked = d->look();
        } catch (...) {
            failed = std::current_exception(); // for who opened the query; the rows stay empty
        }
        beginResetModel();
        d->take(looked);
        if (d->query && d->query->keyField().isEmpty())
            d->checks.clear(); // rows without keys are known by their position only
        endResetModel();
        if (failed)
            std::rethrow_exception(failed);
    };
    connect(query, &TQuery::opened, this, again);
    connect(query, &TQuery::closed, this, again);
    connect(query, &QObject::destroyed, this, again);
    connect(query, &TQuery::cameIn, this, [this] {
        if (d->rows > 0)
            Q_EMIT dataChanged(index(0, 0), index(d->rows - 1, columnCount() - 1));
    });
    connect(query, &TQuery::readFailed, this, [this](const TDatabaseError &error) {
        if (error.fault() != TFault::GivenUp) // who gives up is told about what he asked for
            WhenAnswered(this, [error] { MsgDatabaseError(error); });
    });
    connect(query, &TQuery::posted, this, [this, again] {
        if (d->query->recordCount() != d->rows)
            again();
        else if (d->rows > 0)
            Q_EMIT dataChanged(index(0, 0), index(d->rows - 1, columnCount() - 1));
    });
}

TQueryModel::~TQueryModel() = default;

int TQueryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->rows;
}

int TQueryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->columns.size());
}

// An exception must not pass through the painting of a window.
QVariant TQueryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || !d->query)
        return {};
    try {
        switch (role) {
        case Qt::DisplayRole:
            return d->shown(index.row(), index.column());
        case Qt::EditRole:
            return d->value(index.row(), index.column());
        case Qt::CheckStateRole:
            if (d->checkable && index.column() == 0 && d->query->isHere(index.row()))
                return d->checks.contains(d->keyOf(index.row())) ? Qt::Checked : Qt::Unchecked;
            return {};
        case Qt::TextAlignmentRole:
            return int(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        default:
            return {};
        }
    } catch (const TDatabaseError &error) {
        tellOnce(error);
        return {};
    }
}

QVariant TQueryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= d->columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return d->columns[section].caption;
    // Set explicitly: the default mirrors wrongly in the header alone (QTBUG-97571).
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return {};
}

bool TQueryModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !d->checkable || !index.isValid() || !d->query)
        return false;
    const qlonglong key = d->keyOf(index.row());
    if (value.toInt() == Qt::Checked)
        d->checks.insert(key);
    else
        d->checks.remove(key);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    Q_EMIT checksChanged();
    return true;
}

Qt::ItemFlags TQueryModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (d->checkable && index.column() == 0)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

const QList<TGridColumn> &TQueryModel::columns() const
{
    return d->columns;
}

void TQueryModel::bringRow(int row) const
{
    if (!d->query || row < 0 || row >= d->rows || d->query->isHere(row))
        return;
    try {
        d->query->valueAt(row, 0);
    } catch (const TDatabaseError &error) {
        tellOnce(error);
    }
}

void TQueryModel::tellOnce(const TDatabaseError &error) const
{
    if (std::exchange(d->told, true))
        return;
    auto *model = const_cast<TQueryModel *>(this);
    QTimer::singleShot(0, model,
                       [model, error] { WhenAnswered(model, [error] { MsgDatabaseError(error); }); });
}

QString TQueryModel::nameOfRow(int row, const QStringList &fields) const
{
    bringRow(row);
    QStringList parts;
    int named = 0;
    const QList<TGridColumn> &columns = d->columns;
    for (int i = 0; i < columns.size(); ++i) {
        const TGridColumn &column = columns[i];
        if (column.format == TGridColumn::RowNumber ||
            (fields.isEmpty() && (!column.visible || named == 2)) ||
            (!fields.isEmpty() && !fields.contains(column.field, Qt::CaseInsensitive)))
            continue;
        ++named;
        // Whatever is in the value, it does not turn the line's order round.
        const QString value = index(row, i).data().toString().simplified();
        if (!value.isEmpty())
            parts << u"%1: \u2068%2\u2069"_s.arg(column.caption, value);
    }
    return parts.join(u" - "_s);
}

void TQueryModel::setCheckable(bool on)
{
    d->checkable = on;
    if (d->rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(d->rows - 1, 0));
}

bool TQueryModel::isCheckable() const
{
    return d->checkable;
}

QList<qlonglong> TQueryModel::checkedKeys() const
{
    QList<std::pair<int, qlonglong>> listed;
    if (!d->query)
        return {};
    for (const qlonglong key : d->checks) {
        const int row = d->query->keyField().isEmpty() ? int(key) : d->query->rowOfKey(key);
        if (row >= 0)
            listed.emplace_back(row, key);
    }
    std::sort(listed.begin(), listed.end());
    QList<qlonglong> keys;
    for (const auto &[row, key] : listed)
        keys << key;
    return keys;
}

QList<qlonglong> TQueryModel::unlistedChecks() const
{
    QList<qlonglong> keys;
    if (!d->query || d->query->keyField().isEmpty())
        return keys;
    for (const qlonglong key : d->checks) {
        if (d->query->rowOfKey(key) < 0)
            keys << key;
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

void TQueryModel::uncheck(qlonglong key)
{
    if (!d->checks.remove(key))
        return;
    if (d->rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(d->rows - 1, 0), {Qt::CheckStateRole});
    Q_EMIT checksChanged();
}

void TQueryModel::clearChecks()
{
    if (d->checks.isEmpty())
        return;
    d->checks.clear();
    if (d->rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(d->rows - 1, 0), {Qt::CheckStateRole});
    Q_EMIT checksChanged();
}
