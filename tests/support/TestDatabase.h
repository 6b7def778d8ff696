#pragma once

#include "host/database/Connection.h"

#include <QTemporaryDir>

/// A database of a test's own, open as DM.ADOConnection1 while this lives: a file, or, with KETEBIONPAP_TEST_ODBC set,
/// the database that this test program has on that server, emptied for each test.
class TestDatabase {
public:
    /// FileAlways is for what only the embedded engine has (its file, its backup): a file also where a server is named.
    enum Place { AnyEngine, FileAlways };
    explicit TestDatabase(Place place = AnyEngine);
    ~TestDatabase();
    TConnection &connection() { return m_connection; }
    /// Where it is: the file's path, or the connection string.
    QString path() const;
    /// Opens one more connection to a place that path() told, as another workstation does.
    static void open(TConnection &connection, const QString &path);
    /// Runs a statement of the test.
    void run(const QString &sql);
    /// The first value of a query of the test, as text.
    QString text(const QString &sql);
    /// All rows of a query, columns joined by "|", rows by a line break; bytes as hexadecimal digits.
    QString rows(const QString &sql);
    /// Makes the n-th statement from now on (1-based) fail with this fault; 0 makes none fail.
    void failStatement(int n, TFault fault = TFault::Refused);
    /// Statements counted since failStatement (or the beginning).
    int statementCount() const { return m_count; }
    /// The statements since clearTrace(), values written in.
    QStringList trace() const { return m_trace; }
    void clearTrace() { m_trace.clear(); }

private:
    bool m_onServer;
    QTemporaryDir m_folder;
    TConnection m_connection;
    int m_failAt = 0;
    int m_count = 0;
    TFault m_fault = TFault::Refused;
    QStringList m_trace;
};
