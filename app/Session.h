#pragma once

#include "app/DatabaseChoice.h"
#include "app/Module.h"
#include "host/database/Connection.h"

/// One run of the program: its database, its user, its module. While it lives it is behind DM.ADOConnection1.
class TSession {
public:
    TSession();
    ~TSession();

    /// Opens the database and remembers the choice for reconnect(). Throws TDatabaseError.
    void open(const TDatabaseChoice &choice);
    const TDatabaseChoice &choice() const { return m_choice; }
    TConnection &connection() { return m_connection; }
    TModule &module() { return m_module; }

    /// Asks the database for a sign of life. A server that went away is waited for, while the user sees it and may stop
    /// with Esc. When the connection stays lost the user is told and asked whether to connect again, as often as wanted.
    /// False: there is no connection.
    bool ensureConnected();
    /// Opens the same database again. Throws TDatabaseError.
    void reconnect();

    /// Runs an entry point for the user; tells about a missing module.
    int callEntry(const TEntryPoint &entry, const QStringList &arguments);

private:
    void registerPickers();
    void waitForServer();
    TConnection m_connection;
    TDatabaseChoice m_choice;
    TModule m_module;
};
