#pragma once

#include "host/database/SqliteHandles.h"

#include <QString>
#include <QStringList>

/// A handle of its own on a SQLite database, for work on whole files. Every function throws TDatabaseError.
class TSqliteHandle {
public:
    /// The flags are those of sqlite3_open_v2. An empty name opens a database in memory.
    TSqliteHandle(const QString &file, int flags);
    /// To read a file that somebody named; one that is at rest (SqliteFile::isAtRest) gets nothing laid beside it.
    static TSqliteHandle reading(const QString &file);

    sqlite3 *db() const { return m_db; }
    const QString &file() const { return m_file; }

    void run(const QString &sql);
    /// The rows of a query, the columns of each as text.
    QList<QStringList> rows(const QString &sql);
    /// The first value of the first row, as text.
    QString text(const QString &sql);
    /// Throws NotADatabase when a page or a row is damaged.
    void mustBeSound();
    [[noreturn]] void fail(int code) const;

private:
    TSqliteHandle(const QString &file, const QByteArray &name, int flags);
    QString m_file;
    Sqlite::TDatabase m_db;
};
