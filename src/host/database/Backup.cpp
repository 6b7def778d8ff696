#include "host/database/Backup.h"

#include "host/database/Connection.h"
#include "host/database/SqliteFunctions.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <sqlite3.h>

namespace {

const int busyMilliseconds = 5000;

[[noreturn]] void fail(sqlite3 *db, int code, const QString &file)
{
    TFault fault = TFault::Other;
    const int systemError = sqlite3_system_errno(db);
    const bool noRoom = systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
    switch (code & 0xff) {
    case SQLITE_FULL:
        fault = TFault::DiskFull;
        break;
    case SQLITE_IOERR:
        fault = noRoom ? TFault::DiskFull : TFault::Other;
        break;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        fault = TFault::Locked;
        break;
    case SQLITE_CANTOPEN:
        fault = TFault::CannotOpen;
        break;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        fault = TFault::ReadOnly;
        break;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        fault = TFault::NotADatabase;
        break;
    default:
        break;
    }
    throw TDatabaseError(fault, file + QStringLiteral(": ") + QString::fromUtf8(sqlite3_errmsg(db)));
}

/// A handle of its own on a database file.
class THandle {
public:
    THandle(const QString &file, int flags) : m_file(file)
    {
        const int code = sqlite3_open_v2(QFile::encodeName(file).constData(), &m_db, flags, nullptr);
        if (code != SQLITE_OK) {
            const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> closing(m_db, sqlite3_close);
            fail(m_db, code, file);
        }
        sqlite3_busy_timeout(m_db, busyMilliseconds);
        registerSqliteFunctions(m_db); // the indexes are checked by their collation
    }
    ~THandle() { sqlite3_close(m_db); }
    THandle(const THandle &) = delete;
    THandle &operator=(const THandle &) = delete;

    sqlite3 *db() const { return m_db; }
    const QString &file() const { return m_file; }

    /// The first value of the first row, as text.
    QString text(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        int code = sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr);
        QString value;
        if (code == SQLITE_OK) {
            code = sqlite3_step(statement);
            if (code == SQLITE_ROW)
                value = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        }
        sqlite3_finalize(statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            fail(m_db, code, m_file);
        return value;
    }
    void mustBeSound()
    {
        const QString answer = text("PRAGMA integrity_check(1)");
        if (answer != QLatin1String("ok"))
            throw TDatabaseError(TFault::NotADatabase, m_file + QStringLiteral(": ") + answer);
    }

private:
    QString m_file;
    sqlite3 *m_db = nullptr;
};

/// All pages in one go, so that nothing changes in between; the target changes as a whole or not at all.
void copy(THandle &from, THandle &to)
{
    sqlite3_backup *backup = sqlite3_backup_init(to.db(), "main", from.db(), "main");
    if (!backup)
        fail(to.db(), sqlite3_errcode(to.db()), to.file());
    int code = SQLITE_OK;
    // The backup does not wait for other writers by itself.
    for (int waited = 0; waited <= busyMilliseconds; waited += 50) {
        code = sqlite3_backup_step(backup, -1);
        if (code != SQLITE_BUSY && code != SQLITE_LOCKED)
            break;
        sqlite3_sleep(50);
    }
    const int finished = sqlite3_backup_finish(backup);
    if (code != SQLITE_DONE)
        fail(to.db(), code, to.file());
    if (finished != SQLITE_OK)
        fail(to.db(), finished, to.file());
}

/// A file that goes when this goes, with what SQLite laid beside it.
class TPassingFile {
public:
    explicit TPassingFile(const QString &name) : m_name(name) { remove(); }
    ~TPassingFile() { remove(); }
    const QString &name() const { return m_name; }

private:
    void remove()
    {
        for (const char *ending : {"", "-wal", "-shm", "-journal"})
            QFile::remove(m_name + QLatin1String(ending));
    }
    QString m_name;
};

bool sameFile(const QString &a, const QString &b)
{
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
}

/// Created private to the user before SQLite writes into it.
void createPrivate(const QString &name)
{
    QFile file(name);
    const bool created = file.open(QIODevice::ReadWrite | QIODevice::NewOnly);
    if (!created || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        throw TDatabaseError(TFault::ReadOnly, name + QStringLiteral(": ") + file.errorString());
}

/// A copy in one file, checked.
void copyInto(const QString &source, const QString &target)
{
    createPrivate(target);
    THandle from(source, SQLITE_OPEN_READONLY);
    THandle to(target, SQLITE_OPEN_READWRITE);
    copy(from, to);
    to.text("PRAGMA journal_mode=DELETE");
    to.mustBeSound();
}

} // namespace

void Backup::save(const QString &databaseFile, const QString &target)
{
    if (sameFile(databaseFile, target))
        throw TDatabaseError(TFault::Refused, target + QStringLiteral(": this is the database itself"));
    const TPassingFile passing(target + QStringLiteral(".part"));
    copyInto(databaseFile, passing.name());
    if (std::rename(QFile::encodeName(passing.name()).constData(), QFile::encodeName(target).constData()) !=
        0)
        throw TDatabaseError(TFault::ReadOnly, target);
}

void Backup::restore(const QString &databaseFile, const QString &source)
{
    if (sameFile(databaseFile, source))
        throw TDatabaseError(TFault::Refused, source + QStringLiteral(": this is the database itself"));
    // The backup itself stays as it is: a copy is checked and brought up to date.
    const TPassingFile passing(databaseFile + QStringLiteral(".restore"));
    copyInto(source, passing.name());
    {
        THandle checked(passing.name(), SQLITE_OPEN_READONLY);
        if (checked.text("select count(*) from sqlite_master") == QLatin1String("0"))
            throw TDatabaseError(TFault::NotADatabase, source + QStringLiteral(": it is empty"));
    }
    {
        TConnection connection;
        connection.openFile(passing.name());
        connection.execute(TStatement("Delete From CodeLock_TBL"));
    }
    THandle from(passing.name(), SQLITE_OPEN_READWRITE);
    THandle to(databaseFile, SQLITE_OPEN_READWRITE);
    copy(from, to);
}
