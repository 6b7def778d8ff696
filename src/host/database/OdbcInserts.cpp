#include "host/database/OdbcEngine.h"

#include "host/database/OdbcText.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// Rows on their way to the server: what is a whole by itself goes with one request, and many of them together.

qlonglong TOdbcEngine::insert(const TBoundStatement &statement)
{
    m_lastMany = {};
    if (const auto key = storedBefore(statement))
        return *key;
    TInserted inserted{statement.text, statement.values, 0, {}, {}, {}, {}, false};
    if (!m_begun) {
        identify(inserted);
        // A row under its own key can be looked for without a word of the server; one that is counted cannot.
        if (!inserted.table.isEmpty() &&
            keyValuesOf(inserted, inserted.values).size() == inserted.keys.size())
            return insertAtOnce(statement, inserted);
    }
    return inOneTransaction([&] {
        const Odbc::TPlacedText placed = Odbc::placed(statement);
        inserted.key = runInsert(placed.text, placed.values);
        identify(inserted);
        const std::lock_guard lock(m_mutex);
        m_inserted.append(inserted);
        return inserted.key;
    });
}

qlonglong TOdbcEngine::insertAtOnce(const TBoundStatement &statement, const TInserted &inserted)
{
    QList<TInserted> rows{inserted};
    rows.first().isGuess = true;
    makeReady(statement.text);
    {
        const std::lock_guard lock(m_mutex);
        m_inserted = rows;
        m_isCommitting = true;
    }
    const auto decided = qScopeGuard([this] {
        const std::lock_guard lock(m_mutex);
        m_isCommitting = false;
        m_inserted.clear();
    });
    try {
        const Odbc::TPlacedText placed = Odbc::placed(statement);
        runInsert(placed.text, placed.values);
    } catch (const TDatabaseError &error) {
        const QScopedValueRollback clearing(m_isClearing, true);
        if (!IsLineLost(error.fault()) || !isStoredAfterAll(rows))
            throw;
    }
    return 0; // the table has no counter
}

int TOdbcEngine::insertsAtOnce(qsizetype values) const
{
    const qsizetype mostRows = 100;    // the user sees how far it is, and may stop, between the requests
    const qsizetype mostValues = 2000; // a server takes 2100 with one request
    return takesBatches()
               ? int(std::clamp(mostValues / std::max(values, qsizetype(1)), qsizetype(1), mostRows))
               : 1;
}

TManyInserted TOdbcEngine::insertMany(const QList<TBoundStatement> &rows)
{
    if (m_begun || !takesBatches() || !m_uncertain.isEmpty() || rows.size() < 2)
        return TEngine::insertMany(rows);
    TManyInserted done;
    TInserted like{rows.first().text, rows.first().values, 0, {}, {}, {}, {}, true};
    try {
        identify(like);
        makeReady(like.text);
        if (!like.table.isEmpty() && keyValuesOf(like, like.values).isEmpty())
            like.keyValues = {m_lastMany.first == like.table ? m_lastMany.second : highestKey(like)};
    } catch (const TDatabaseError &error) {
        done.error = error;
        return done;
    }
    QList<TInserted> all;
    for (const TBoundStatement &row : rows) {
        all.append(like);
        all.last().text = row.text;
        all.last().values = row.values;
        if (const QVariantList keys = keyValuesOf(like, row.values); !keys.isEmpty())
            all.last().keyValues = keys;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_inserted = all; // for an engine that takes over
        m_isCommitting = true;
    }
    try {
        sendMany(rows, done.keys);
    } catch (const TDatabaseError &error) {
        done.error = error;
        if (IsLineLost(error.fault()))
            findAfterLoss(all, done);
    }
    if (!done.error && !like.table.isEmpty())
        m_lastMany = {like.table, done.keys.last()};
    const std::lock_guard lock(m_mutex);
    m_isCommitting = false;
    m_inserted.clear();
    return done;
}

// What was not there before is beyond this.
qlonglong TOdbcEngine::highestKey(const TInserted &inserted)
{
    return run(u"select isnull(max([%1]),0) from [%2]"_s.arg(inserted.keys.first(), inserted.table))
        .toLongLong();
}

// Each is stored before the next begins, and answers its key; the first that fails ends the request.
void TOdbcEngine::sendMany(const QList<TBoundStatement> &rows, QList<qlonglong> &keys)
{
    QString text;
    QVariantList values;
    for (const TBoundStatement &row : rows) {
        const Odbc::TPlacedText placed = Odbc::placed(row);
        text += placed.text + u"\nif @@ERROR<>0 return\nselect cast(SCOPE_IDENTITY() as bigint)\n"_s;
        values += placed.values;
    }
    const Odbc::TStatementHandle statement = start(text, values);
    const TOdbcLine::TTurn turn(m_line, m_string.answerSeconds());
    const Odbc::TRunning::TScope running(m_running, statement);
    do {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        if (columns == 0)
            continue;
        SQLRETURN code = SQL_SUCCESS;
        while (SQL_SUCCEEDED(code = SQLFetch(statement)))
            keys.append(Odbc::read(statement, 1, {SQL_BIGINT, 0, 0}, code).toLongLong());
        if (code != SQL_NO_DATA)
            fail(SQL_HANDLE_STMT, statement, text);
    } while (nextAnswer(statement, text));
}

// The line was lost amid them: those that are stored are the first ones.
void TOdbcEngine::findAfterLoss(const QList<TInserted> &rows, TManyInserted &done)
{
    const QScopedValueRollback clearing(m_isClearing, true);
    const auto known = done.keys.size();
    try {
        for (qsizetype i = known; i < rows.size() && !rows[i].table.isEmpty(); ++i) {
            const auto key = storedKey(rows[i]);
            if (!key)
                break;
            done.keys.append(*key);
        }
        if (done.keys.size() == rows.size())
            done.error.reset();
    } catch (const TDatabaseError &) {
        remember(rows.mid(done.keys.size()));
    }
}
