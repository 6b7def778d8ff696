#include "host/database/OdbcCursor.h"

#include "host/database/OdbcText.h"
#include "host/database/SqlText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

TReadRows allRows(TCursor &cursor)
{
    TReadRows read{cursor.fields(), {}};
    while (cursor.next()) {
        QVariantList row;
        for (int i = 0; i < int(read.fields.size()); ++i)
            row.append(cursor.value(i));
        read.rows.append(row);
    }
    return read;
}

} // namespace

QList<TReadRows> TLineEngine::selectMany(const QList<TBoundStatement> &statements)
{
    QList<TReadRows> all;
    for (const TBoundStatement &statement : statements)
        all.append(allRows(*select(statement)));
    return all;
}

// The answers come in the order of the selects, one for each.
QList<TReadRows> TOdbcEngine::selectMany(const QList<TBoundStatement> &statements)
{
    const bool together = takesBatches() && std::ranges::all_of(statements, [](const auto &statement) {
                              const TSqlText read = ReadSql(statement.text);
                              return read.onlyReads && read.statements == 1;
                          });
    if (!together)
        return TLineEngine::selectMany(statements);
    QString text;
    QVariantList values;
    for (const TBoundStatement &statement : statements) {
        const Odbc::TPlacedText placed = Odbc::placed(statement);
        text += placed.text + u'\n';
        values += placed.values;
    }
    const auto read = [&] {
        TOdbcCursor cursor(*this, start(text, values), text);
        cursor.expectMore();
        QList<TReadRows> all;
        do
            all.append(allRows(cursor));
        while (cursor.nextSelect());
        return all;
    };
    QList<TReadRows> all;
    if (m_begun) {
        makeReady(text);
        all = read();
    } else {
        for (bool again = true;; again = false) {
            makeReady(text);
            try {
                all = read();
                break;
            } catch (const TDatabaseError &error) {
                if (error.fault() != TFault::ConnectionLost || !again)
                    throw;
            }
        }
    }
    if (all.size() != statements.size())
        throw TDatabaseError(TFault::BadStatement, u"a select without an answer of its own"_s, text);
    return all;
}
