#pragma once

#include <QString>

/// The embedded database's file on the disk.
namespace SqliteFile {

/// Creates the file (and its folder) private to the user when it is not there. Throws TDatabaseError: CannotOpen,
/// ReadOnly, DiskFull, NetworkPath.
void prepare(const QString &path);

} // namespace SqliteFile
