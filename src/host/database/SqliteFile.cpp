#include "host/database/SqliteFile.h"

#include "host/database/Faults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <linux/magic.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// WAL keeps its index in memory that the processes of one machine share.
bool isNetworkFolder(const QByteArray &folder)
{
    const unsigned long smb2 = 0xfe534d42, cifs = 0xff534d42; // not in every linux/magic.h
    struct statfs info = {};
    if (statfs(folder.constData(), &info) != 0)
        return false;
    const auto kind = static_cast<unsigned long>(info.f_type) & 0xffffffff;
    return kind == NFS_SUPER_MAGIC || kind == SMB_SUPER_MAGIC || kind == smb2 || kind == cifs ||
           kind == AFS_SUPER_MAGIC || kind == CODA_SUPER_MAGIC || kind == V9FS_MAGIC;
}

// New folders on the way are private; existing ones stay as they are.
void makeFolders(const QString &folder)
{
    if (folder.isEmpty() || QFileInfo(folder).isDir())
        return;
    makeFolders(QFileInfo(folder).path());
    if (mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
        Faults::failWithErrno(folder);
}

// Read past SQLite, so only for a file that nobody here has open.
QByteArray headOf(const QByteArray &name)
{
    QByteArray head(100, '\0');
    const int file = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const ssize_t size = file < 0 ? -1 : ::read(file, head.data(), size_t(head.size()));
    if (file >= 0)
        ::close(file);
    head.resize(qMax<qsizetype>(0, size));
    return head;
}

/// What a database holds, as far as it can be read.
enum class TOwner { Nobody, ThisSuite, Another, Unknown };

int countOf(sqlite3 *db, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    int count = -1;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        count = sqlite3_column_int(statement, 0);
    sqlite3_finalize(statement);
    return count;
}

TOwner ownerOf(const QString &path, const char *way)
{
    QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath()).toPercentEncoding("/");
    sqlite3 *db = nullptr;
    TOwner owner = TOwner::Unknown;
    if (sqlite3_open_v2(("file://" + name + way).constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI,
                        nullptr) == SQLITE_OK) {
        sqlite3_busy_timeout(db, 1000);
        const int tables =
            countOf(db, "select count(*) from sqlite_master where type='table' and name not like 'sqlite~_%' "
                        "escape '~'");
        const int ours = countOf(db, "select count(*) from sqlite_master where type='table' and "
                                     "lower(name)='schemaversion_tbl'");
        if (tables >= 0 && ours >= 0)
            owner = tables == 0 ? TOwner::Nobody : ours == 0 ? TOwner::Another : TOwner::ThisSuite;
    }
    sqlite3_close(db);
    return owner;
}

} // namespace

void SqliteFile::prepare(const QString &path, bool create)
{
    const QByteArray name = QFile::encodeName(path);
    if (!create && access(name.constData(), F_OK) != 0 && (errno == ENOENT || errno == ENOTDIR))
        throw TDatabaseError(TFault::NoSuchFile, path);
    const QString folder = QFileInfo(path).absolutePath();
    if (create)
        makeFolders(folder);
    if (isNetworkFolder(QFile::encodeName(folder)))
        throw TDatabaseError(TFault::NetworkPath, path);
    // Only ever opened when it is new: closing a file drops every lock that this process holds on it.
    const int file =
        create ? ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR) : -1;
    if (file >= 0)
        ::close(file);
    else if ((create && errno != EEXIST) || access(name.constData(), R_OK | W_OK) != 0)
        Faults::failWithErrno(path);
}

void SqliteFile::mustNotBeForeign(const QString &path)
{
    if (isHeldOpen(path)) // it was looked at when it was opened
        return;
    const QByteArray head = headOf(QFile::encodeName(path));
    if (!head.startsWith("SQLite format 3"))
        return;
    const char *immutable = "?immutable=1";
    TOwner owner = ownerOf(path, isAtRest(path) ? immutable : "?mode=ro");
    if (owner == TOwner::Unknown)
        owner = ownerOf(path, immutable);
    if (owner == TOwner::Another)
        throw TDatabaseError(TFault::OtherProgram, path + u": tables of another program"_s);
}

QString SqliteFile::logOf(const QString &path)
{
    return path + u"-wal"_s;
}

bool SqliteFile::isAtRest(const QString &path)
{
    if (isHeldOpen(path))
        return false;
    const QByteArray head = headOf(QFile::encodeName(path));
    return head.startsWith("SQLite format 3") && head.size() > 18 && head.at(18) == 2 &&
           identityOf(logOf(path)).number == 0;
}

bool SqliteFile::isHeldOpen(const QString &path)
{
    const TIdentity wanted = identityOf(path);
    if (wanted.number == 0)
        return false;
    const QStringList descriptors =
        QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    for (const QString &descriptor : descriptors) {
        struct stat info = {};
        if (fstat(descriptor.toInt(), &info) == 0 && info.st_dev == wanted.device &&
            info.st_ino == wanted.number)
            return true;
    }
    return false;
}

SqliteFile::TIdentity SqliteFile::identityOf(const QString &path)
{
    struct stat info = {};
    if (stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {info.st_dev, info.st_ino};
}

bool SqliteFile::removeUnused(const QString &path)
{
    sqlite3 *db = nullptr;
    // A log can only be given up, and the file taken whole, by one who is alone.
    const bool alone =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK &&
        sqlite3_exec(db, "pragma journal_mode=delete", nullptr, nullptr, nullptr) == SQLITE_OK &&
        sqlite3_exec(db, "begin exclusive", nullptr, nullptr, nullptr) == SQLITE_OK;
    const bool gone = alone && unlink(QFile::encodeName(path).constData()) == 0;
    sqlite3_close(db);
    for (const char *beside : {"-wal", "-shm", "-journal", "-queue"}) {
        if (gone)
            unlink(QFile::encodeName(path + QLatin1String(beside)).constData());
    }
    return gone;
}
