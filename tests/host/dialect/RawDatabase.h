#pragma once

#include "host/database/Dialect.h"
#include "host/database/Schema.h"
#include "host/database/SqliteFunctions.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <ostream>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

/// Readable in the report of a failure.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

/// A database in memory with the schema, and nothing of the suite's engine between it and the test.
class RawDatabase {
public:
    explicit RawDatabase(bool withSchema = true)
    {
        sqlite3_open(":memory:", &m_db);
        registerSqliteFunctions(m_db);
        run("pragma foreign_keys=ON");
        if (withSchema) {
            for (const Schema::TStep &step : Schema::steps())
                for (const QString &batch : Schema::batches(step.script, TEngineKind::Embedded))
                    EXPECT_EQ(run(batch), "") << batch.toStdString();
        }
    }
    ~RawDatabase() { sqlite3_close(m_db); }
    RawDatabase(const RawDatabase &) = delete;
    RawDatabase &operator=(const RawDatabase &) = delete;

    sqlite3 *handle() const { return m_db; }

    /// Runs a text in the engine's own words; answers its error, empty when there is none.
    QString run(const QString &sql)
    {
        char *message = nullptr;
        sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &message);
        const QString error = QString::fromUtf8(message);
        sqlite3_free(message);
        return error;
    }
    /// Runs T-SQL; answers its error, empty when there is none.
    QString tsql(const QString &sql)
    {
        for (const QString &statement : Dialect::toSqlite(sql).statements)
            if (const QString error = run(statement); !error.isEmpty())
                return error;
        return {};
    }
    /// All rows of T-SQL, columns joined by "|", rows by a line break, NULL as "null"; or its error.
    QString rows(const QString &sql)
    {
        sqlite3_stmt *statement = prepare(Dialect::toSqlite(sql).statements.value(0));
        if (!statement)
            return QString::fromUtf8(sqlite3_errmsg(m_db));
        QStringList lines;
        int code;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
            QStringList columns;
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, i));
                columns << (text ? QString::fromUtf8(text) : u"null"_s);
            }
            lines << columns.join('|');
        }
        const QString error = QString::fromUtf8(sqlite3_errmsg(m_db));
        sqlite3_finalize(statement);
        return code == SQLITE_DONE ? lines.join('\n') : error;
    }
    /// A statement in the engine's own words; null when it refuses.
    sqlite3_stmt *prepare(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &statement, nullptr);
        return statement;
    }

private:
    sqlite3 *m_db = nullptr;
};
