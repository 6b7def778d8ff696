#pragma once

#include "host/database/Connection.h"

#include <QString>

/// Which database the program works on.
struct TDatabaseChoice {
    QString file; ///< the embedded database's file
    QString odbc; ///< SQL Server's connection string; may hold a password. Where it is not empty it counts.

    /// Whether a file that is not there is made: where it is the ordinary one, or where the user said so.
    TConnection::Missing missing = TConnection::Missing::Refuse;

    bool onServer() const { return !odbc.isEmpty(); }

    /// What the user chose in the database settings; else the one file in the user's data folder.
    static TDatabaseChoice stored();
    /// Keeps the choice for the next start, in a file private to the user, never with a password. False when the
    /// file cannot be written.
    bool store() const;
    static QString ordinaryFile();
};
