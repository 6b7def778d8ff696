#include "host/database/QueryRows.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

const int pageRows = 128; // one statement text for all pages, so that it is prepared once
const int keptPages = 64;
const int tailRows = 16 * pageRows; // the keys of shorter lists are read at once
const int nextRows = 64 * pageRows; // keys that are read when the user goes up beyond the known ones

// The functions that the search finds texts by.
bool isSearched(const QString &statement)
{
    return statement.contains(u"zelmo_finds(") || statement.contains(u"charindex(");
}

QVariantList readRow(TCursor &cursor, qsizetype columns)
{
    QVariantList row;
    row.reserve(columns);
    for (int i = 0; i < columns; ++i)
        row.append(cursor.value(i));
    return row;
}

} // namespace

TQueryRows::TQueryRows(const TSource &source) : m_source(source), m_pages(keptPages)
{
    m_source.connection->beforeStatement(m_source.statement);
    if (!windowed()) {
        readAll();
    } else if (m_source.orderField.isEmpty()) {
        readFromEnd();
    } else {
        readKeys();
        m_count = int(m_keys.size());
    }
}

TBoundStatement TQueryRows::bound(const TStatement &statement) const
{
    return {statement.boundText(), statement.values(), m_source.named};
}

TStatement TQueryRows::wrapped(const QString &before, const QString &after) const
{
    return TStatement(before + QStringLiteral(" from ("))
        .append(m_source.statement)
        .sql(QStringLiteral(") as ListT ") + after);
}

void TQueryRows::setFields(const TCursor &cursor)
{
    m_fields = cursor.fields();
    m_index.clear();
    for (qsizetype i = m_fields.size() - 1; i >= 0; --i)
        m_index.insert(m_fields[i].name.toLower(),
                       int(i)); // of two columns with one name the first one counts
}

void TQueryRows::readAll()
{
    const auto cursor = m_source.connection->engine().select(bound(m_source.statement));
    setFields(*cursor);
    while (cursor->next())
        m_rows.append(readRow(*cursor, m_fields.size()));
}

QString TQueryRows::orderClause() const
{
    const QString key = QStringLiteral("[") + m_source.keyField + u']';
    if (m_source.orderField.isEmpty())
        return QStringLiteral("order by ") + key;
    // A server sorts by its collation; the embedded engine knows none of Persian, so a sort key is asked for.
    const QString field = u'[' + m_source.orderField + u']';
    const bool embedded = m_source.connection->kind() == TConnection::Kind::Embedded;
    const QString term = embedded ? QStringLiteral("zelmo_sort(") + field + u')' : field;
    const QString way = m_source.order == Qt::DescendingOrder ? QStringLiteral(" desc") : QString();
    if (m_source.orderField.compare(m_source.keyField, Qt::CaseInsensitive) == 0)
        return QStringLiteral("order by ") + key + way;
    return QStringLiteral("order by ") + term + way + QStringLiteral(", ") + key + way;
}

void TQueryRows::readKeys()
{
    m_keys.clear();
    const TStatement statement = wrapped(QStringLiteral("select [%1]").arg(m_source.keyField), orderClause());
    const auto cursor = m_source.connection->engine().select(bound(statement));
    while (cursor->next())
        m_keys.append(cursor->value(0).toLongLong());
}

// The last keys, and the number of rows. A list that is searched is walked over once: what a search costs is its
// condition, which is asked for each row. Other lists are counted from their indexes.
void TQueryRows::readFromEnd()
{
    TEngine &engine = m_source.connection->engine();
    QList<qlonglong> last;
    {
        const auto cursor = engine.select(
            bound(wrapped(QStringLiteral("select top %1 [%2]").arg(tailRows).arg(m_source.keyField),
                          orderClause() + QStringLiteral(" desc"))));
        while (cursor->next())
            last.append(cursor->value(0).toLongLong());
    }
    std::reverse(last.begin(), last.end());
    if (last.size() < tailRows) {
        m_keys = last;
        m_count = int(last.size());
        return;
    }
    const bool walked = isSearched(m_source.statement.boundText());
    TStatement count = wrapped(QStringLiteral("select count(*)"), {});
    if (walked)
        count.sql(QStringLiteral("where [%1] < ").arg(m_source.keyField)).value(last.first());
    const auto cursor = engine.select(bound(count));
    const int counted = cursor->next() ? cursor->value(0).toInt() : 0;
    m_tail = last;
    m_count = std::max(counted + (walked ? int(last.size()) : 0), int(last.size()));
    m_tailFrom = m_count - int(m_tail.size());
}

// Whether a row of this key is in the list; asked before all keys are read for one that is not.
bool TQueryRows::hasKey(qlonglong key)
{
    TStatement statement = wrapped(QStringLiteral("select [%1]").arg(m_source.keyField),
                                   QStringLiteral("where [%1] = ").arg(m_source.keyField))
                               .value(key);
    m_source.connection->beforeStatement(statement);
    return m_source.connection->engine().select(bound(statement))->next();
}

void TQueryRows::needKeys()
{
    if (m_tail.isEmpty())
        return;
    m_source.connection->beforeStatement(m_source.statement);
    readKeys();
    // Rows that came or went since the opening make the far end longer or shorter, never the part that was shown.
    m_keys.erase(std::lower_bound(m_keys.begin(), m_keys.end(), m_tail.first()), m_keys.end());
    while (m_keys.size() > m_tailFrom)
        m_keys.removeFirst();
    if (m_keys.size() < m_tailFrom)
        m_keys.insert(0, m_tailFrom - m_keys.size(), std::numeric_limits<qlonglong>::min());
    m_keys += m_tail;
    m_tail.clear();
}

// The keys before the known ones, for a user who goes up row by row: all of a million would make a step stutter.
void TQueryRows::readOn(int row)
{
    if (m_tailFrom - row > nextRows)
        return needKeys();
    m_source.connection->beforeStatement(m_source.statement);
    const TStatement statement =
        wrapped(QStringLiteral("select top %1 [%2]").arg(nextRows).arg(m_source.keyField),
                QStringLiteral("where [%1] < ").arg(m_source.keyField))
            .value(m_tail.first())
            .sql(u' ' + orderClause() + QStringLiteral(" desc"));
    QList<qlonglong> keys;
    const auto cursor = m_source.connection->engine().select(bound(statement));
    while (keys.size() < m_tailFrom && cursor->next())
        keys.append(cursor->value(0).toLongLong());
    std::reverse(keys.begin(), keys.end());
    if (keys.size() <
        std::min(nextRows, m_tailFrom)) // others have deleted rows: places at the far end are empty
        keys.insert(0, m_tailFrom - keys.size(), std::numeric_limits<qlonglong>::min());
    m_tailFrom -= int(keys.size());
    m_tail = keys + m_tail;
    if (m_tailFrom == 0)
        m_keys = std::exchange(m_tail, {});
}

QString TQueryRows::pageColumns()
{
    if (m_fields.isEmpty()) {
        const auto cursor = m_source.connection->engine().select(
            bound(wrapped(QStringLiteral("select *"), QStringLiteral("where 1=0"))));
        setFields(*cursor);
    }
    QStringList columns;
    bool large = false;
    for (const TFieldInfo &field : std::as_const(m_fields)) {
        const QString name = u'[' + field.name + u']';
        columns.append(field.large ? QStringLiteral("null as ") + name : name);
        large = large || field.large;
    }
    return large ? columns.join(u',') : QStringLiteral("*");
}

// A page of pictures would be read for the one that is shown.
QVariant TQueryRows::largeValue(int row, int field)
{
    const qlonglong key = keyAt(row);
    if (key != m_largeKey)
        m_large.clear();
    m_largeKey = key;
    if (const auto known = m_large.constFind(field); known != m_large.constEnd())
        return *known;
    const TStatement statement = wrapped(QStringLiteral("select [%1]").arg(m_fields[field].name),
                                         QStringLiteral("where [%1] = ").arg(m_source.keyField))
                                     .value(key);
    m_source.connection->beforeStatement(statement);
    const auto cursor = m_source.connection->engine().select(bound(statement));
    const QVariant value = cursor->next() ? cursor->value(0) : QVariant();
    m_large.insert(field, value);
    return value;
}

TQueryRows::TPage *TQueryRows::page(int number)
{
    if (TPage *known = m_pages.object(number))
        return known;
    const qsizetype first = qsizetype(number) * pageRows;
    const qsizetype count = std::clamp<qsizetype>(m_count - first, 0, pageRows);
    TStatement statement = wrapped(QStringLiteral("select ") + pageColumns(),
                                   QStringLiteral("where [%1] in (").arg(m_source.keyField));
    for (int i = 0; i < pageRows; ++i) {
        if (i > 0)
            statement.sql(QStringLiteral(","));
        // Places left over repeat the last key; an empty list asks for no row.
        statement.value(count > 0 ? QVariant(keyAt(int(first + std::min<qsizetype>(i, count - 1))))
                                  : QVariant());
    }
    statement.sql(QStringLiteral(")"));
    m_source.connection->beforeStatement(statement);
    const auto cursor = m_source.connection->engine().select(bound(statement));
    QHash<qlonglong, QVariantList> byKey;
    const int keyIndex = m_index.value(m_source.keyField.toLower(), -1);
    while (cursor->next()) {
        const QVariantList row = readRow(*cursor, m_fields.size());
        byKey.insert(keyIndex < 0 ? 0 : row[keyIndex].toLongLong(), row);
    }
    auto *page = new TPage;
    // A row that was deleted since the keys were read stays in its place, empty.
    for (qsizetype i = 0; i < count; ++i)
        page->append(byKey.value(keyAt(int(first + i))));
    m_pages.insert(number, page);
    return page;
}

const QList<TFieldInfo> &TQueryRows::fields()
{
    if (m_fields.isEmpty() && windowed())
        page(m_count == 0 ? 0 : (m_count - 1) / pageRows); // lists open at their last row
    return m_fields;
}

int TQueryRows::fieldIndex(const QString &name)
{
    fields();
    return m_index.value(name.toLower(), -1);
}

QVariantList TQueryRows::row(int row)
{
    if (row < 0 || row >= count())
        return {};
    return windowed() ? page(row / pageRows)->value(row % pageRows) : m_rows[row];
}

QVariant TQueryRows::value(int row, int field)
{
    if (row < 0 || row >= count() || field < 0)
        return {};
    if (!windowed())
        return m_rows[row].value(field);
    if (m_fields.value(field).large)
        return largeValue(row, field);
    return page(row / pageRows)->at(row % pageRows).value(field);
}

qlonglong TQueryRows::keyAt(int row)
{
    if (!windowed() || row < 0 || row >= m_count)
        return 0;
    if (!m_tail.isEmpty() && row >= m_tailFrom)
        return m_tail[row - m_tailFrom];
    if (!m_tail.isEmpty()) {
        readOn(row);
        return keyAt(row);
    }
    return m_keys[row];
}

int TQueryRows::rowOfKey(qlonglong key)
{
    if (!m_tail.isEmpty() && key >= m_tail.first()) {
        const auto found = std::lower_bound(m_tail.begin(), m_tail.end(), key);
        return found != m_tail.end() && *found == key ? m_tailFrom + int(found - m_tail.begin()) : -1;
    }
    if (!m_tail.isEmpty() && !hasKey(key))
        return -1;
    needKeys();
    if (m_source.orderField.isEmpty()) {
        const auto found = std::lower_bound(m_keys.begin(), m_keys.end(), key);
        return found != m_keys.end() && *found == key ? int(found - m_keys.begin()) : -1;
    }
    return int(m_keys.indexOf(key));
}

int TQueryRows::find(const TStatement &condition)
{
    TStatement statement =
        wrapped(QStringLiteral("select [%1]").arg(m_source.keyField), QStringLiteral("where "));
    statement.append(condition).sql(u' ' + orderClause());
    m_source.connection->beforeStatement(statement);
    const auto cursor = m_source.connection->engine().select(bound(statement));
    return cursor->next() ? rowOfKey(cursor->value(0).toLongLong()) : -1;
}

int TQueryRows::append(const QVariantList &values, qlonglong key)
{
    if (!windowed()) {
        m_rows.append(values);
        return count() - 1;
    }
    m_large.clear();
    m_pages.clear();
    if (!m_tail.isEmpty()) { // the other keys are not here; the new one is among them
        m_tail.clear();
        readKeys();
        m_count = int(m_keys.size());
        return rowOfKey(key);
    }
    const auto at =
        m_source.orderField.isEmpty() ? std::lower_bound(m_keys.begin(), m_keys.end(), key) : m_keys.end();
    const int row = int(at - m_keys.begin());
    m_keys.insert(row, key);
    m_count = int(m_keys.size());
    return row;
}

void TQueryRows::replace(int row, const QVariantList &values)
{
    m_large.clear();
    if (windowed())
        (*page(row / pageRows))[row % pageRows] = values;
    else
        m_rows[row] = values;
}
