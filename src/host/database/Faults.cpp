#include "host/database/Faults.h"

#include <cerrno>
#include <cstring>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

TFault Faults::ofSystem(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return TFault::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return TFault::ReadOnly;
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case ELOOP:
    case ENAMETOOLONG:
    case EMFILE:
    case ENFILE:
        return TFault::CannotOpen;
    default:
        return TFault::Other;
    }
}

TFault Faults::ofSqlite(int code, int systemError)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return TFault::Locked;
    case SQLITE_CONSTRAINT:
        return TFault::Refused;
    case SQLITE_FULL:
        return TFault::DiskFull;
    case SQLITE_READONLY:
        return code == SQLITE_READONLY_DBMOVED ? TFault::FileGone : TFault::ReadOnly;
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return TFault::ReadOnly;
    case SQLITE_CANTOPEN: {
        // A full disk cannot take the log beside the file either.
        const TFault fault = ofSystem(systemError);
        return fault == TFault::Other ? TFault::CannotOpen : fault;
    }
    case SQLITE_IOERR:
        // SQLite's clearing up may lose the reason of a failed write; a quota or a limit are the ones that it does not
        // call a full disk itself.
        return code == SQLITE_IOERR_WRITE && systemError == 0 ? TFault::DiskFull : ofSystem(systemError);
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return TFault::NotADatabase;
    case SQLITE_TOOBIG:
        return TFault::TooLong;
    case SQLITE_ERROR:
        return TFault::BadStatement;
    default:
        return TFault::Other;
    }
}

TFault Faults::lastOf(sqlite3 *db)
{
    return db ? ofSqlite(sqlite3_extended_errcode(db), sqlite3_system_errno(db)) : TFault::Other;
}

void Faults::failWithErrno(const QString &path)
{
    const int error = errno;
    const TFault fault = ofSystem(error);
    throw TDatabaseError(fault == TFault::Other ? TFault::CannotOpen : fault,
                         path + u": "_s + QString::fromLocal8Bit(std::strerror(error)));
}
