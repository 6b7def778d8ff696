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

bool TOdbcEngine::isStored(const TInserted &inserted)
{
    makeReady({});
    return run(u"select count(*) from [%1] where %2"_s.arg(inserted.table, conditionOf(inserted.keys)),
               inserted.keyValues)
               .toLongLong() > 0;
}

bool TOdbcEngine::isStoredAfterAll(const QList<TInserted> &inserted)
{
    for (const TInserted &row : inserted) {
        if (row.table.isEmpty())
            continue;
        try {
            return isStored(row);
        } catch (const TDatabaseError &) {
            // Not to be told now: asked again when the same row is posted again.
            const std::lock_guard lock(m_mutex);
            m_uncertain += inserted;
            while (m_uncertain.size() > keptUncertain)
                m_uncertain.removeFirst();
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
        if (!same && (row.key != 0 || keyValuesOf(row, statement.values) != row.keyValues))
            continue;
        if (!isStored(row)) {
            forget(i);
            return std::nullopt;
        }
        const TInserted stored = forget(i);
        if (!same)
            execute({u"update [%1] set [%2]=? where %3"_s.arg(stored.table, stored.columns.join(u"]=?,["_s),
                                                              conditionOf(stored.keys)),
                     statement.values + stored.keyValues,
                     {}});
        return stored.key;
    }
    return std::nullopt;
}
