#pragma once

#include <QString>

/// Copies of an embedded database, made and taken back while it is in use.
namespace Backup {

/// Writes the database as it stands now into `target`, one file that is whole in itself. An older file of that name is
/// replaced only after the copy was checked; after an error it is as it was. Throws TDatabaseError.
void save(const QString &databaseFile, const QString &target);

/// Replaces what the database holds by what `source` (a backup) holds, in one transaction: after an error, and for
/// every file that is no sound database of this suite, the database is as it was. A backup of an older version is
/// brought up to date. The code locks of the backup's time are left out. Throws TDatabaseError.
void restore(const QString &databaseFile, const QString &source);

} // namespace Backup
