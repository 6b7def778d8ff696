#pragma once

#include "host/Export.h"

#include <QString>

/// The embedded database's file on the disk.
namespace SqliteFile {

/// Makes sure that the file is there: creates it (and its folder) private to the user where `create` says so. Throws
/// TDatabaseError: NoSuchFile, CannotOpen, ReadOnly, DiskFull, NetworkPath.
void prepare(const QString &path, bool create);

/// Looks into a file without changing a byte of it or beside it, before anything is set there. Throws TDatabaseError
/// OtherProgram when it is a database with tables that are not this suite's. What cannot be read is left to the opening.
void mustNotBeForeign(const QString &path);

/// The name of the log beside a database.
QString logOf(const QString &path);

/// Whether a database keeps a log but has none beside it: nobody works on it, and it can be read as it stands
/// ("immutable"), also from a medium that cannot be written. SQLite would lay a log beside it otherwise, and leave it
/// there. False for a file that this process has open.
bool isAtRest(const QString &path);

/// Whether this process has the file open. Such a file is never opened a second time by other means than SQLite's:
/// closing it drops every lock that the process holds on it, and another program may then delete the log.
KETEBIONPAP_CORE bool isHeldOpen(const QString &path);

/// Removes a database that nobody else has open, with what lies beside it; true when it is gone. The caller has closed it,
/// and knows that nothing in it is worth keeping.
KETEBIONPAP_CORE bool removeUnused(const QString &path);

/// Which file stands under a name. Looks at the name only, so that no lock is lost.
struct TIdentity {
    quint64 device = 0;
    quint64 number = 0; ///< 0: there is no such file
    bool operator==(const TIdentity &) const = default;
};
KETEBIONPAP_CORE TIdentity identityOf(const QString &path);

} // namespace SqliteFile
