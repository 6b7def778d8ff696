#include "host/database/Backup.h"

#include "host/database/BackupCheck.h"
#include "host/database/Connection.h"
#include "host/database/Faults.h"
#include "host/database/PassingFile.h"
#include "host/database/SealedFile.h"
#include "host/database/SqliteFile.h"
#include "host/database/SqliteHandle.h"
#include "host/database/WriterQueue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <sqlite3.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

QString unfinishedEnding()
{
    return u".ketebionpap-part"_s;
}

QString checkedCopyOf(const QString &databaseFile)
{
    return databaseFile + u".restore"_s;
}

/// What is to be encrypted stands beside the database, which is as readable, and never where the backup goes.
QString plainCopyOf(const QString &databaseFile)
{
    return databaseFile + u".backup"_s;
}

/// The pages of one database on their way into another, which is locked for other writers meanwhile. The target changes
/// as a whole, or not at all when this goes before the end.
class TPages {
public:
    TPages(TSqliteHandle &from, TSqliteHandle &to, int patience = usualPatience)
        : m_to(to), m_patience(patience), m_backup(sqlite3_backup_init(to.db(), "main", from.db(), "main"))
    {
        if (!m_backup)
            to.fail(sqlite3_errcode(to.db()));
        sqlite3_busy_timeout(to.db(), 0); // step() waits, also where SQLite does not
    }
    ~TPages() { sqlite3_backup_finish(m_backup); }
    TPages(const TPages &) = delete;
    TPages &operator=(const TPages &) = delete;

    /// Locks the target.
    void begin() { step(0, SQLITE_OK); }
    /// All pages in one go, so that nothing changes in between.
    void copy()
    {
        step(-1, SQLITE_DONE);
        const int code = sqlite3_backup_finish(std::exchange(m_backup, nullptr));
        if (code != SQLITE_OK)
            m_to.fail(code);
    }

private:
    void step(int pages, int expected)
    {
        int code = SQLITE_OK;
        for (int waited = 0; waited <= m_patience; waited += 50) {
            code = sqlite3_backup_step(m_backup, pages);
            if (code != SQLITE_BUSY && code != SQLITE_LOCKED)
                break;
            sqlite3_sleep(50);
        }
        if (code == expected)
            return;
        sqlite3_backup_finish(
            std::exchange(m_backup, nullptr)); // hands the system's error over to the target
        m_to.fail(code);
    }
    TSqliteHandle &m_to;
    int m_patience;
    sqlite3_backup *m_backup;
};

void mustBeOneSoundFile(TSqliteHandle &copy)
{
    copy.text(u"PRAGMA journal_mode=DELETE"_s);
    copy.mustBeSound();
}

/// A copy in one file, checked. The target is there, and empty.
void copyInto(const QString &source, const QString &target)
{
    TSqliteHandle from = TSqliteHandle::reading(source);
    TSqliteHandle to(target, SQLITE_OPEN_READWRITE);
    TPages(from, to).copy();
    mustBeOneSoundFile(to);
}

/// The same of a backup, encrypted or not.
void takeOut(const QString &backup, const QString &target, const QString &password)
{
    if (!SealedFile::isSealed(backup)) {
        copyInto(backup, target);
        return;
    }
    SealedFile::open(backup, target, password);
    TSqliteHandle copy(target, SQLITE_OPEN_READWRITE);
    mustBeOneSoundFile(copy);
}

void mustBeAnotherFile(const QString &databaseFile, const QString &other)
{
    const SqliteFile::TIdentity identity = SqliteFile::identityOf(other);
    if ((identity.number != 0 && identity == SqliteFile::identityOf(databaseFile)) ||
        SqliteFile::isHeldOpen(other))
        throw TDatabaseError(TFault::Refused, other + u": this is the database itself"_s);
}

/// A database's pages go into another one with pages of the same size only.
void setPageSize(TSqliteHandle &copy, const QString &size)
{
    copy.text(u"PRAGMA journal_mode=DELETE"_s);
    if (copy.text(u"PRAGMA page_size"_s) == size)
        return;
    copy.run(u"PRAGMA page_size=%1; VACUUM"_s.arg(size.toInt()));
    copy.mustBeSound();
}

Backup::TContents contentsOf(TSqliteHandle &copy, const QString &source)
{
    Backup::TContents contents;
    contents.fileTime = QFileInfo(source).lastModified();
    contents.lastEvent = copy.text(u"select max(EventDate || ' ' || EventTime) from UserEvent"_s);
    for (const QStringList &table : copy.rows(u"select name from sqlite_master where type='table'"_s))
        contents.rows.insert(table.first(),
                             copy.text(u"select count(*) from \"%1\""_s.arg(table.first())).toLongLong());
    return contents;
}

} // namespace

void Backup::save(const QString &databaseFile, const QString &target, const QString &password)
{
    mustBeAnotherFile(databaseFile, target);
    const QDir folder = QFileInfo(target).absoluteDir();
    for (const QString &left : folder.entryList({u'*' + unfinishedEnding()}, QDir::Files | QDir::Hidden))
        TPassingFile::removeLeft(folder.filePath(left));
    const TPassingFile passing(target + unfinishedEnding());
    if (password.isEmpty()) {
        copyInto(databaseFile, passing.name());
    } else {
        const TPassingFile plain(plainCopyOf(databaseFile));
        copyInto(databaseFile, plain.name());
        SealedFile::seal(plain.name(), passing.name(), password);
    }
    if (std::rename(QFile::encodeName(passing.name()).constData(), QFile::encodeName(target).constData()) !=
        0)
        Faults::failWithErrno(target);
}

void Backup::removeLeftovers(const QString &databaseFile)
{
    const QFileInfo database(databaseFile);
    TPassingFile::removeLeft(checkedCopyOf(databaseFile));
    TPassingFile::removeLeft(plainCopyOf(databaseFile));
    const QDir folder = database.absoluteDir();
    for (const QString &left : folder.entryList({u'*' + unfinishedEnding()}, QDir::Files | QDir::Hidden))
        TPassingFile::removeLeft(folder.filePath(left));
}

struct Backup::TRestore::TParts {
    explicit TParts(const QString &file) : databaseFile(file), passing(checkedCopyOf(file)) {}

    QString databaseFile;
    TPassingFile passing;
    TContents contents;
    int patience = usualPatience;
};

Backup::TRestore::TRestore(const QString &databaseFile, const QString &source, const QString &password)
{
    mustBeAnotherFile(databaseFile, source);
    // The backup itself stays as it is: a copy is checked and brought up to date.
    m_parts = std::make_unique<TParts>(databaseFile);
    const QString copy = m_parts->passing.name();
    takeOut(source, copy, password);
    {
        TSqliteHandle checked(copy, SQLITE_OPEN_READONLY);
        BackupCheck::mustBeWhole(checked);
    }
    {
        TConnection connection;
        connection.openFile(copy, TConnection::Missing::Refuse);
        connection.execute(TStatement("Delete From CodeLock_TBL"));
    }
    TSqliteHandle ready(copy, SQLITE_OPEN_READWRITE);
    TSqliteHandle database(databaseFile, SQLITE_OPEN_READONLY);
    setPageSize(ready, database.text(u"PRAGMA page_size"_s));
    m_parts->contents = contentsOf(ready, source);
}

Backup::TRestore::~TRestore() = default;

const Backup::TContents &Backup::TRestore::contents() const
{
    return m_parts->contents;
}

void Backup::TRestore::setPatience(int milliseconds)
{
    m_parts->patience = milliseconds;
}

void Backup::TRestore::run(const QString &before)
{
    const QString &databaseFile = m_parts->databaseFile;
    TWriterQueue queue(QFileInfo(databaseFile).canonicalFilePath(), m_parts->patience);
    if (!queue.enter())
        throw TDatabaseError(TFault::Locked, databaseFile);
    TSqliteHandle from(m_parts->passing.name(), SQLITE_OPEN_READWRITE);
    TSqliteHandle to(databaseFile, SQLITE_OPEN_READWRITE);
    TPages pages(from, to, m_parts->patience);
    pages.begin();
    // Nobody can open a record, nor save one, from here on.
    {
        TSqliteHandle reader(databaseFile, SQLITE_OPEN_READONLY);
        if (reader.text(u"select count(*) from CodeLock_TBL"_s) != "0"_L1)
            throw TDatabaseError(TFault::BeingEdited, databaseFile);
    }
    if (!before.isEmpty())
        save(databaseFile, before);
    try {
        pages.copy();
    } catch (...) {
        if (!before.isEmpty())
            QFile::remove(before);
        throw;
    }
}

void Backup::restore(const QString &databaseFile, const QString &source, const QString &password)
{
    TRestore(databaseFile, source, password).run();
}
