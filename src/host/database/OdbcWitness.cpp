#include "host/database/OdbcEngine.h"

#include "host/database/SqlText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// A commit whose answer never came may or may not have happened. The rows that the transaction inserted are its
// witnesses: a row that is there after the line came back was saved, and is not saved a second time.

namespace {

const qsizetype keptUncertain = 200;

QString conditionOf(const QStringList &columns)
{
    return u'[' + columns.join(u"]=? and ["_s) + u"]=?"_s;
}

} // namespace

// The values of the key columns among the values of an insert like this one.
QVariantList TOdbcEngine::keyValuesOf(const TInserted &inserted, const QVariantList &values)
{
    QVariantList found;
    for (const QString &key : inserted.keys) {
        for (qsizetype i = 0; i < inserted.columns.size(); ++i) {
            if (inserted.columns[i].compare(key, Qt::CaseInsensitive) == 0)
                found.append(values.value(i));
        }
    }
    return found;
}

// Finds how to tell the row from all others, and forgets a key that is none of its table's.
void TOdbcEngine::identify(TInserted &inserted)
{
    // Only the form in which a dataset posts a new row has columns.
    const TSqlText read = ReadSql(inserted.text);
    const TTableInfo *info = read.columns.isEmpty() ? nullptr : table(read.table);
    if (!info)
        return;
    inserted.columns = read.columns;
    const auto counter = std::find_if(info->columns.begin(), info->columns.end(),
                                      [](const TFieldInfo &column) { return column.autoIncrement; });
    if (counter != info->columns.end()) {
        inserted.keys = {counter->name};
        inserted.keyValues = {inserted.key};
    } else {
        inserted.key = 0; // of an earlier row elsewhere
        inserted.keys = info->keys;
        inserted.keyValues = keyValuesOf(inserted, inserted.values);
    }
    if (!inserted.keys.isEmpty() && inserted.keyValues.size() == inserted.keys.size())
        inserted.table = info->name;
}

std::optional<qlonglong> TOdbcEngine::storedKey(const TInserted &inserted)
{
    makeReady({});
    const bool hasCounter = keyValuesOf(inserted, inserted.values).size() < inserted.keys.size();
    TInserted asked = inserted;
    QString condition = conditionOf(inserted.keys);
    if (inserted.isGuess) {
        if (hasCounter)
            condition = u'[' + inserted.keys.first() + u"]>?"_s;
        // Amounts are rounded by their columns, and pictures are not compared.
        for (qsizetype i = 0; i < inserted.columns.size(); ++i) {
            const QVariant value = inserted.values.value(i);
            if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::QByteArray)
                continue;
            condition += u" and ["_s + inserted.columns[i] + (value.isNull() ? u"] is null"_s : u"]=?"_s);
            if (!value.isNull())
                asked.keyValues.append(value);
        }
    }
    const QString found = hasCounter ? u"min(["_s + inserted.keys.first() + u"])"_s : u"min(0)"_s;
    const QVariant key =
        run(u"select %1 from [%2] where %3"_s.arg(found, inserted.table, condition), asked.keyValues);
    return key.isNull() ? std::nullopt : std::optional(key.toLongLong());
}

// Not to be told now: asked again when the same row is posted again.
void TOdbcEngine::remember(const QList<TInserted> &uncertain)
{
    const std::lock_guard lock(m_mutex);
    m_uncertain += uncertain;
    while (m_uncertain.size() > keptUncertain)
        m_uncertain.removeFirst();
}

bool TOdbcEngine::isStoredAfterAll(const QList<TInserted> &inserted)
{
    for (const TInserted &row : inserted) {
        if (row.table.isEmpty())
            continue;
        try {
            return storedKey(row).has_value();
        } catch (const TDatabaseError &) {
            remember(inserted);
            return false;
        }
    }
    return false;
}

TOdbcEngine::TInserted TOdbcEngine::forget(qsizetype uncertain)
{
    const std::lock_guard lock(m_mutex);
    return m_uncertain.takeAt(uncertain);
}

std::optional<qlonglong> TOdbcEngine::storedBefore(const TBoundStatement &statement)
{
    for (qsizetype i = 0; i < m_uncertain.size(); ++i) {
        const TInserted &row = m_uncertain[i];
        if (row.table.isEmpty() || row.text != statement.text || row.values.size() != statement.values.size())
            continue;
        const bool same = row.values == statement.values;
        // A record under its own code is the same one even when something else was typed since; a counted one is
        // not.
        if (!same && (row.key != 0 || keyValuesOf(row, row.values).isEmpty() ||
                      keyValuesOf(row, statement.values) != row.keyValues))
            continue;
        const auto key = storedKey(row);
        if (!key) {
            forget(i);
            return std::nullopt;
        }
        const TInserted stored = forget(i);
        if (!same)
            execute({u"update [%1] set [%2]=? where %3"_s.arg(stored.table, stored.columns.join(u"]=?,["_s),
                                                              conditionOf(stored.keys)),
                     statement.values + stored.keyValues,
                     {}});
        return *key;
    }
    return std::nullopt;
}
