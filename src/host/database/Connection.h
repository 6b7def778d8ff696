#pragma once

#include "host/Export.h"
#include "host/database/DatabaseError.h"
#include "host/database/Field.h"
#include "host/database/LineState.h"
#include "host/database/Statement.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class TEngine;

/// The suite's one connection to its database, on an embedded SQLite file or on SQL Server.
///
/// T-SQL goes in; for the embedded engine it is translated by tokens and remembered by statement.
/// All calls throw TDatabaseError unless their comment says otherwise. User-interface thread only.
class KETEBIONPAP_CORE TConnection : public QObject {
    Q_OBJECT
public:
    using Kind = TEngineKind;
    using Missing = TMissingFile;

    explicit TConnection(QObject *parent = nullptr);
    ~TConnection() override;

    /// Opens the database file and brings its schema up to date. One that is not there is created, private to the
    /// user, with the folders on the way to it, or refused with TFault::NoSuchFile.
    void openFile(const QString &path, Missing missing = Missing::Create);
    /// Opens SQL Server through ODBC and brings its schema up to date. The text may hold a password: it is
    /// never logged and never part of an error.
    void openOdbc(const QString &connectionString);
    /// Takes an engine that is open and brings its schema up to date. For tests.
    void openEngine(std::unique_ptr<TEngine> engine);
    void close();
    bool isOpen() const;
    Kind kind() const;
    /// Whether statements may call the suite's own search functions (zelmo_finds, zelmo_same).
    bool hasSearchFunctions() const;
    /// How long a statement that wants to write waits for another program's transaction, in milliseconds. Without it a
    /// file waits for usualPatience, a server as long as its connection string says. Holds until the connection is closed.
    void setPatience(int milliseconds);
    /// The file's path, or server and database without user and password.
    QString displayName() const;
    /// The line to the database: which server, and whether it is encrypted and checked.
    TLineState line() const;

    /// Begins a transaction. One that was left open is rolled back first.
    void BeginTrans();
    /// Throws when the transaction is gone (a deadlock, a lost connection): nothing of it is stored then. Without a
    /// begun transaction it does nothing.
    void CommitTrans();
    /// Rolls back; without an open transaction it does nothing. Never throws.
    void RollbackTrans();
    bool InTransaction() const;

    /// Runs a command (or a batch parted by blanks) and returns the affected rows of the last statement.
    int execute(const TStatement &statement);
    /// First column of the first row, null when there is none.
    QVariant scalar(const TStatement &statement);

    /// Characters that a table's text column keeps; 0 where there is no limit or no such column.
    int columnWidth(const QString &table, const QString &column) const;

    /// The last failure of a statement on this connection, kept for the message of a save that answered false.
    const std::optional<TDatabaseError> &lastError() const { return m_lastError; }
    void clearLastError() { m_lastError.reset(); }
    void noteError(const TDatabaseError &error) { m_lastError = error; }

    /// Called with every statement's given text before it runs; it may throw TDatabaseError to play a fault.
    /// For tests and tracing.
    void setStatementHook(std::function<void(const TStatement &)> hook) { m_hook = std::move(hook); }
    void beforeStatement(const TStatement &statement) const
    {
        if (m_hook)
            m_hook(statement);
    }

    /// The engine behind; only the database folder uses it.
    TEngine &engine() const;

private:
    std::unique_ptr<TEngine> m_engine;
    bool m_begun = false;
    std::optional<TDatabaseError> m_lastError;
    std::function<void(const TStatement &)> m_hook;
};
