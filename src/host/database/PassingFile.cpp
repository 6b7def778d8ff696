#include "host/database/PassingFile.h"

#include "host/database/Faults.h"
#include "host/database/SqliteFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const besides[] = {"-wal", "-shm", "-journal", "-queue"};

} // namespace

TPassingFile::TPassingFile(const QString &name) : m_name(name)
{
    const QByteArray encoded = QFile::encodeName(name);
    for (;;) {
        m_file = ::open(encoded.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
        if (m_file < 0)
            Faults::failWithErrno(name);
        // Not the locks of SQLite, which would go with any other file of this process on it.
        if (flock(m_file, LOCK_EX | LOCK_NB) != 0) {
            ::close(m_file);
            throw TDatabaseError(TFault::Locked, name + u": another program works on it"_s);
        }
        struct stat info = {};
        const SqliteFile::TIdentity there = SqliteFile::identityOf(name);
        if (fstat(m_file, &info) == 0 && there == SqliteFile::TIdentity{info.st_dev, info.st_ino})
            break;
        ::close(m_file); // its owner took it away meanwhile
    }
    for (const char *ending : besides)
        QFile::remove(name + QLatin1String(ending));
    if (ftruncate(m_file, 0) != 0 || fchmod(m_file, S_IRUSR | S_IWUSR) != 0) {
        const int error = errno;
        ::close(m_file);
        errno = error;
        Faults::failWithErrno(name);
    }
}

TPassingFile::~TPassingFile()
{
    for (const char *ending : besides)
        QFile::remove(m_name + QLatin1String(ending));
    QFile::remove(m_name);
    ::close(m_file);
}

void TPassingFile::removeLeft(const QString &name)
{
    bool left = QFile::exists(name);
    for (const char *ending : besides)
        left = left || QFile::exists(name + QLatin1String(ending));
    if (!left)
        return;
    try {
        const TPassingFile ours(name);
    } catch (const TDatabaseError &) {
        // A running program's, or in a folder where nothing can be changed: it stays.
    }
}
