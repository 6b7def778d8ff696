#pragma once

#include "host/database/DatabaseError.h"

struct sqlite3;

/// What the system's and SQLite's codes mean to a user: one table for the engine, the backup and the files beside.
namespace Faults {

/// A failure of the system (errno); Other for one that says nothing to a user.
TFault ofSystem(int error);
/// A result code of SQLite, plain or extended, with the system's error behind it (0 where there is none).
TFault ofSqlite(int code, int systemError = 0);
/// The last failure of a SQLite connection.
TFault lastOf(sqlite3 *db);

/// Throws the failure of a file, by errno.
[[noreturn]] void failWithErrno(const QString &path);

} // namespace Faults
