#include "host/database/QueryRows.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const int keptRows = 8192;
const int tailRows = 2048; // the keys of shorter lists are read at once
const int nextRows = 8192; // keys that are read when the user goes up beyond the known ones

QVariantList readRow(TCursor &cursor, qsizetype columns)
{
    QVariantList row;
    row.reserve(columns);
    for (int i = 0; i < columns; ++i)
        row.append(cursor.value(i));
    return row;
}

} // namespace

TQueryRows::TQueryRows(const TSource &source)
    : m_source(source), m_pageRows(source.connection->engine().pageRows()), m_columns(source.columns),
      m_pages(keptRows / m_pageRows)
{
    m_source.connection->beforeStatement(m_source.statement);
    if (!windowed()) {
        readAll();
    } else if (m_source.orderField.isEmpty()) {
        readFromEnd();
    } else {
        m_keys = readKeys();
        m_count = int(m_keys.size());
    }
}

TBoundStatement TQueryRows::bound(const TStatement &statement) const
{
    return {statement.boundText(), statement.values(), m_source.named};
}

TStatement TQueryRows::wrapped(const QString &before, const QString &after) const
{
    return TStatement(before + u" from ("_s).append(m_source.statement).sql(u") as ListT "_s + after);
}

void TQueryRows::setFields(const QList<TFieldInfo> &fields)
{
    m_columns = TColumns::of(fields);
    if (windowed())
        m_source.connection->engine().rememberColumns(m_source.statement.boundText(), fields);
}

TQueryRows::TColumns TQueryRows::TColumns::of(const QList<TFieldInfo> &fields)
{
    return {fields, std::ranges::any_of(fields, &TFieldInfo::large)};
}

int TQueryRows::TColumns::indexOf(const QString &name) const
{
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const QString &known = fields[i].name;
        if (known.size() == name.size() && known.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

void TQueryRows::readAll()
{
    const auto cursor = m_source.connection->engine().select(bound(m_source.statement));
    setFields(cursor->fields());
    while (cursor->next())
        m_rows.append(readRow(*cursor, m_columns.fields.size()));
}

QString TQueryRows::orderClause() const
{
    const QString key = u"["_s + m_source.keyField + u']';
    if (m_source.orderField.isEmpty())
        return u"order by "_s + key;
    const QString field = u'[' + m_source.orderField + u']';
    const QString term = m_source.connection->engine().sortTerm(field);
    const QString way = m_source.order == Qt::DescendingOrder ? u" desc"_s : QString();
    if (m_source.orderField.compare(m_source.keyField, Qt::CaseInsensitive) == 0)
        return u"order by "_s + key + way;
    return u"order by "_s + term + way + u", "_s + key + way;
}

TStatement TQueryRows::keysStatement() const
{
    return wrapped(u"select [%1]"_s.arg(m_source.keyField), orderClause());
}

QList<qlonglong> TQueryRows::readKeys()
{
    QList<qlonglong> keys;
    const auto cursor = m_source.connection->engine().select(bound(keysStatement()));
    while (cursor->next())
        keys.append(cursor->integer(0));
    return keys;
}

void TQueryRows::run(const TStep &step)
{
    step.read(*m_source.connection->engine().select(bound(step.statement)));
    step.take();
}

// The last keys, and the number of rows. A list that is searched is walked over once: what a search costs is its
// condition, which is asked for each row. Other lists are counted from their indexes.
void TQueryRows::readFromEnd()
{
    TEngine &engine = m_source.connection->engine();
    QList<qlonglong> last;
    {
        const auto cursor = engine.select(bound(wrapped(
            u"select top %1 [%2]"_s.arg(tailRows).arg(m_source.keyField), orderClause() + u" desc"_s)));
        while (cursor->next())
            last.append(cursor->integer(0));
    }
    std::reverse(last.begin(), last.end());
    if (last.size() < tailRows) {
        m_keys = last;
        m_count = int(last.size());
        return;
    }
    const bool walked = m_source.statement.isWalking();
    TStatement count = wrapped(u"select count(*)"_s, {});
    if (walked)
        count.sql(u"where [%1] < "_s.arg(m_source.keyField)).value(last.first());
    const auto cursor = engine.select(bound(count));
    const int counted = cursor->next() ? cursor->value(0).toInt() : 0;
    m_tail = last;
    m_count = std::max(counted + (walked ? int(last.size()) : 0), int(last.size()));
    m_tailFrom = m_count - int(m_tail.size());
}

// Whether a row of this key is in the list; asked before all keys are read for one that is not.
bool TQueryRows::hasKey(qlonglong key)
{
    TStatement statement =
        wrapped(u"select [%1]"_s.arg(m_source.keyField), u"where [%1] = "_s.arg(m_source.keyField))
            .value(key);
    m_source.connection->beforeStatement(statement);
    return m_source.connection->engine().select(bound(statement))->next();
}

void TQueryRows::needKeys()
{
    while (!m_tail.isEmpty()) {
        m_source.connection->beforeStatement(m_source.statement);
        run(allKeys());
    }
}

TQueryRows::TStep TQueryRows::allKeys()
{
    const auto keys = std::make_shared<QList<qlonglong>>();
    return {keysStatement(),
            [keys](TCursor &cursor) {
                while (cursor.next())
                    keys->append(cursor.integer(0));
            },
            [this, keys, from = m_tailFrom] {
                if (!m_tail.isEmpty() && m_tailFrom == from)
                    takeAllKeys(*keys);
            }};
}

void TQueryRows::takeAllKeys(QList<qlonglong> keys)
{
    // Rows that came or went since the opening make the far end longer or shorter, never the part that was shown.
    keys.erase(std::lower_bound(keys.begin(), keys.end(), m_tail.first()), keys.end());
    if (keys.size() > m_tailFrom)
        keys.remove(0, keys.size() - m_tailFrom);
    if (keys.size() < m_tailFrom)
        keys.insert(0, m_tailFrom - keys.size(), std::numeric_limits<qlonglong>::min());
    m_keys = keys + m_tail;
    m_tail.clear();
}

// The keys before the known ones, for a user who goes up row by row: all of a million would make a step stutter.
TQueryRows::TStep TQueryRows::keysBefore()
{
    const auto keys = std::make_shared<QList<qlonglong>>();
    return {wrapped(u"select top %1 [%2]"_s.arg(nextRows).arg(m_source.keyField),
                    u"where [%1] < "_s.arg(m_source.keyField))
                .value(m_tail.first())
                .sql(u' ' + orderClause() + u" desc"_s),
            [keys, most = m_tailFrom](TCursor &cursor) {
                while (keys->size() < most && cursor.next())
                    keys->append(cursor.integer(0));
            },
            [this, keys, from = m_tailFrom] {
                if (!m_tail.isEmpty() && m_tailFrom == from)
                    takeKeysBefore(*keys);
            }};
}

void TQueryRows::takeKeysBefore(QList<qlonglong> keys)
{
    std::reverse(keys.begin(), keys.end());
    if (keys.size() <
        std::min(nextRows, m_tailFrom)) // others have deleted rows: places at the far end are empty
        keys.insert(0, m_tailFrom - keys.size(), std::numeric_limits<qlonglong>::min());
    m_tailFrom -= int(keys.size());
    m_tail = keys + m_tail;
    if (m_tailFrom == 0)
        m_keys = std::exchange(m_tail, {});
}

TQueryRows::TStep TQueryRows::columns()
{
    const auto fields = std::make_shared<QList<TFieldInfo>>();
    return {wrapped(u"select *"_s, u"where 1=0"_s), [fields](TCursor &cursor) { *fields = cursor.fields(); },
            [this, fields] { setFields(*fields); }};
}

bool TQueryRows::isHere(int row) const
{
    if (!windowed())
        return row >= 0 && row < m_rows.size();
    return row >= 0 && row < m_count && m_pages.contains(pageOf(row));
}

TQueryRows::TStep TQueryRows::nextStep(int row)
{
    const int number = pageOf(row);
    const int first = firstOf(number);
    if (m_columns.fields.isEmpty())
        return columns();
    if (!m_tail.isEmpty() && first < m_tailFrom)
        return m_tailFrom - first > nextRows ? allKeys() : keysBefore();
    return pageStep(number);
}

QString TQueryRows::pageColumns() const
{
    if (!m_columns.anyLarge)
        return u"*"_s;
    QStringList columns;
    for (const TFieldInfo &field : std::as_const(m_columns.fields)) {
        const QString name = u'[' + field.name + u']';
        columns.append(field.large ? u"null as "_s + name : name);
    }
    return columns.join(u',');
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
    const TStatement statement =
        wrapped(u"select [%1]"_s.arg(m_columns.fields[field].name), u"where [%1] = "_s.arg(m_source.keyField))
            .value(key);
    m_source.connection->beforeStatement(statement);
    const auto cursor = m_source.connection->engine().select(bound(statement));
    QVariant value = cursor->next() ? cursor->value(0) : QVariant();
    m_large.insert(field, value);
    return value;
}

// Pages are counted from the end, so that the last one, at which a list opens, is a whole one.
int TQueryRows::firstOf(int page) const
{
    return std::max(0, m_count - (page + 1) * m_pageRows);
}

QVariantList &TQueryRows::held(int row)
{
    const int number = pageOf(row);
    return (*page(number))[row - firstOf(number)];
}

TQueryRows::TPage *TQueryRows::page(int number)
{
    if (TPage *known = m_pages.object(number))
        return known;
    if (m_columns.fields.isEmpty())
        run(columns());
    keyAt(firstOf(number));
    const TStep step = pageStep(number);
    m_source.connection->beforeStatement(step.statement);
    run(step);
    return m_pages.object(number);
}

TQueryRows::TStep TQueryRows::pageStep(int number)
{
    const int first = firstOf(number);
    const int count = std::min(m_count - first, m_pageRows);
    QList<qlonglong> keys;
    for (int i = 0; i < count; ++i)
        keys.append(keyAt(first + i));
    TStatement statement = wrapped(u"select "_s + pageColumns(), u"where [%1] in ("_s.arg(m_source.keyField));
    for (int i = 0; i < m_pageRows; ++i) {
        if (i > 0)
            statement.sql(u","_s);
        // Places left over repeat the last key; an empty list asks for no row.
        statement.value(count > 0 ? QVariant(keys.at(std::min(i, count - 1))) : QVariant());
    }
    statement.sql(u")"_s);
    const auto byKey = std::make_shared<QHash<qlonglong, QVariantList>>();
    return {statement,
            [byKey, keyIndex = m_columns.indexOf(m_source.keyField),
             columns = m_columns.fields.size()](TCursor &cursor) {
                while (cursor.next()) {
                    const QVariantList row = readRow(cursor, columns);
                    byKey->insert(keyIndex < 0 ? 0 : row[keyIndex].toLongLong(), row);
                }
            },
            [this, byKey, number, keys, all = m_count] {
                if (m_count != all)
                    return; // pages are counted from the end
                auto *page = new TPage;
                // A row that was deleted since the keys were read stays in its place, empty.
                for (const qlonglong key : keys)
                    page->append(byKey->value(key));
                m_pages.insert(number, page);
            }};
}

const QList<TFieldInfo> &TQueryRows::fields()
{
    if (m_columns.fields.isEmpty() && windowed())
        page(0); // lists open at their last row
    return m_columns.fields;
}

int TQueryRows::fieldIndex(const QString &name)
{
    fields();
    return m_columns.indexOf(name);
}

QVariantList TQueryRows::row(int row)
{
    if (row < 0 || row >= count())
        return {};
    return windowed() ? held(row) : m_rows[row];
}

QVariant TQueryRows::value(int row, int field)
{
    if (row < 0 || row >= count() || field < 0)
        return {};
    if (!windowed())
        return m_rows[row].value(field);
    if (field >= fields().size())
        return {};
    if (m_columns.fields.at(field).large)
        return largeValue(row, field);
    return held(row).value(field);
}

qlonglong TQueryRows::keyAt(int row)
{
    if (!windowed() || row < 0 || row >= m_count)
        return 0;
    if (!m_tail.isEmpty() && row >= m_tailFrom)
        return m_tail[row - m_tailFrom];
    if (!m_tail.isEmpty()) {
        m_source.connection->beforeStatement(m_source.statement);
        run(m_tailFrom - row > nextRows ? allKeys() : keysBefore());
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
    TStatement statement = wrapped(u"select [%1]"_s.arg(m_source.keyField), u"where "_s);
    statement.append(condition).sql(u' ' + orderClause());
    m_source.connection->beforeStatement(statement);
    const auto cursor = m_source.connection->engine().select(bound(statement));
    return cursor->next() ? rowOfKey(cursor->integer(0)) : -1;
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
        m_keys = readKeys();
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
        held(row) = values;
    else
        m_rows[row] = values;
}
