#include "host/database/WriterQueue.h"

#include <QElapsedTimer>
#include <QFile>

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const std::chrono::microseconds next{150}; // between two looks of the one whose turn comes next
const std::chrono::microseconds later{1000};
const int longestWait = 6; // patiences

struct flock bytes(short kind, off_t first, off_t count)
{
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = first;
    lock.l_len = count;
    return lock;
}

} // namespace

TWriterQueue::TWriterQueue(const QString &databaseFile, int patience)
    : m_databaseFile(databaseFile), m_patience(patience)
{
}

TWriterQueue::~TWriterQueue()
{
    if (m_file >= 0)
        ::close(m_file);
}

QString TWriterQueue::fileOf(const QString &databaseFile)
{
    return databaseFile + u"-queue"_s;
}

bool TWriterQueue::open()
{
    if (m_tried)
        return m_file >= 0;
    m_tried = true;
    const QByteArray name = QFile::encodeName(fileOf(m_databaseFile));
    struct stat database = {};
    if (stat(QFile::encodeName(m_databaseFile).constData(), &database) != 0)
        return false;
    m_file = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    // Who may write the database may queue for it.
    struct stat own = {};
    if (m_file >= 0 && fstat(m_file, &own) == 0 && own.st_uid == geteuid() &&
        (own.st_mode & 0666) != (database.st_mode & 0666))
        fchmod(m_file, database.st_mode & 0666);
    return m_file >= 0;
}

/// 0 when nobody queues.
off_t TWriterQueue::highestTicket() const
{
    off_t highest = 0;
    for (;;) {
        struct flock held = bytes(F_WRLCK, highest + 1, 0); // 0: up to the end
        if (fcntl(m_file, F_OFD_GETLK, &held) != 0 || held.l_type == F_UNLCK)
            return highest;
        highest = held.l_start;
    }
}

/// How many tickets others hold. The kernel tells any one of them, not the first.
int TWriterQueue::heldBetween(off_t first, off_t end) const
{
    if (first >= end)
        return 0;
    struct flock held = bytes(F_WRLCK, first, end - first);
    if (fcntl(m_file, F_OFD_GETLK, &held) != 0 || held.l_type == F_UNLCK)
        return 0;
    return 1 + heldBetween(first, held.l_start) + heldBetween(held.l_start + 1, end);
}

bool TWriterQueue::takeTicket()
{
    // Byte 0 keeps the places from being given away twice. It is held for two calls only.
    QElapsedTimer waited;
    waited.start();
    struct flock desk = bytes(F_WRLCK, 0, 1);
    while (fcntl(m_file, F_OFD_SETLK, &desk) != 0) {
        if (waited.hasExpired(m_patience))
            return false;
        std::this_thread::sleep_for(next);
    }
    const off_t mine = highestTicket() + 1;
    struct flock ticket = bytes(F_WRLCK, mine, 1);
    if (fcntl(m_file, F_OFD_SETLK, &ticket) == 0)
        m_ticket = mine;
    desk = bytes(F_UNLCK, 0, 1);
    fcntl(m_file, F_OFD_SETLK, &desk);
    return m_ticket > 0;
}

bool TWriterQueue::isEmpty()
{
    if (!open())
        return true;
    struct flock held = bytes(F_WRLCK, 0, 0); // 0: up to the end
    return fcntl(m_file, F_OFD_GETLK, &held) != 0 || held.l_type == F_UNLCK;
}

bool TWriterQueue::enter()
{
    if (m_ticket > 0 || !open())
        return true;
    if (!takeTicket())
        return false;
    QElapsedTimer waited;
    waited.start();
    QElapsedTimer still;
    still.start();
    int before = -1;
    for (;;) {
        const int ahead = heldBetween(1, m_ticket);
        if (ahead == 0)
            return true;
        if (ahead != before)
            still.start();
        before = ahead;
        if (still.hasExpired(m_patience) || waited.hasExpired(longestWait * m_patience)) {
            leave();
            return false;
        }
        std::this_thread::sleep_for(ahead == 1 ? next : later);
    }
}

void TWriterQueue::leave()
{
    if (m_ticket <= 0)
        return;
    struct flock ticket = bytes(F_UNLCK, m_ticket, 1);
    fcntl(m_file, F_OFD_SETLK, &ticket);
    m_ticket = -1;
}
