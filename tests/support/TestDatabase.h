#pragma once

#include "host/database/Connection.h"

#include <QTemporaryDir>

/// A database file of a test's own, open as DM.ADOConnection1 while this lives.
class TestDatabase {
public:
    TestDatabase();
    ~TestDatabase();
    TConnection &connection() { return m_connection; }
    QString path() const;
    /// Runs a statement of the test.
    void run(const QString &sql);
    /// The first value of a query of the test, as text.
    QString text(const QString &sql);
    /// All rows of a query, columns joined by "|", rows by a line break.
    QString rows(const QString &sql);
    /// Makes the n-th statement from now on (1-based) fail with this fault; 0 makes none fail.
    void failStatement(int n, TFault fault = TFault::Refused);
    /// Statements counted since failStatement (or the beginning).
    int statementCount() const { return m_count; }
    /// The statements since clearTrace(), values written in.
    QStringList trace() const { return m_trace; }
    void clearTrace() { m_trace.clear(); }

private:
    QTemporaryDir m_folder;
    TConnection m_connection;
    int m_failAt = 0;
    int m_count = 0;
    TFault m_fault = TFault::Refused;
    QStringList m_trace;
};
