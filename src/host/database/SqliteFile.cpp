#include "host/database/SqliteFile.h"

#include "host/database/DatabaseError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

TFault faultOfErrno(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return TFault::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return TFault::ReadOnly;
    default:
        return TFault::CannotOpen;
    }
}

[[noreturn]] void failWithErrno(const QString &path)
{
    const int error = errno;
    throw TDatabaseError(faultOfErrno(error),
                         path + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error)));
}

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
        failWithErrno(folder);
}

} // namespace

void SqliteFile::prepare(const QString &path)
{
    const QString folder = QFileInfo(path).absolutePath();
    makeFolders(folder);
    if (isNetworkFolder(QFile::encodeName(folder)))
        throw TDatabaseError(TFault::NetworkPath, path);
    const QByteArray name = QFile::encodeName(path);
    // Only ever opened when it is new: closing a file drops every lock that this process holds on it.
    const int file = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0)
        ::close(file);
    else if (errno != EEXIST || access(name.constData(), R_OK | W_OK) != 0)
        failWithErrno(path);
}
