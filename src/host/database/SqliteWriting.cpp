#include "host/database/Faults.h"
#include "host/database/SqliteEngine.h"

#include <QRandomGenerator>

#include <cerrno>
#include <chrono>
#include <thread>

// How the embedded engine comes to write: its turn among others, the file in its place, and the way to the disk.

using namespace Qt::Literals::StringLiterals;

namespace {

void pauseShortly()
{
    std::this_thread::sleep_for(std::chrono::microseconds(QRandomGenerator::global()->bounded(200, 1500)));
}

} // namespace

// A new file turns to its log once, and SQLite does not wait for another program that is just doing the same.
void TSqliteEngine::keepLog()
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        try {
            exec("pragma journal_mode=WAL");
            return;
        } catch (const TDatabaseError &error) {
            if (error.fault() != TFault::Locked || waited.hasExpired(m_patience))
                throw;
        }
        pauseShortly();
    }
}

// Somebody is writing. One that wants to write, too, takes its place in the queue; then only those meet here who stand
// first in it, who came while it was empty, and who know no queue, such as another tool. SQLite's own wait looks ever
// more rarely; the pauses are random, so that two of a kind do not meet again and again.
int TSqliteEngine::waitForWriter(void *engine, int attempt)
{
    auto *own = static_cast<TSqliteEngine *>(engine);
    if (attempt == 0) {
        if (own->m_writing && !own->m_queue->enter())
            return 0;
        own->m_waited.start();
    }
    if (own->m_waited.hasExpired(own->m_patience))
        return 0;
    pauseShortly();
    return 1;
}

bool TSqliteEngine::isInPlace() const
{
    return SqliteFile::identityOf(m_realPath) == m_file &&
           (m_log.number == 0 || SqliteFile::identityOf(SqliteFile::logOf(m_realPath)) == m_log);
}

// What is written into a file that no longer stands under its name is lost with the program's end.
void TSqliteEngine::mustBeInPlace() const
{
    if (!isInPlace())
        throw TDatabaseError(TFault::FileGone, m_path);
}

void TSqliteEngine::startWriting()
{
    mustBeInPlace();
    if (!m_queue->isEmpty() && !m_queue->enter())
        throw TDatabaseError(TFault::Locked, u"the writers ahead do not finish"_s);
    m_writing = true;
}

/// After each end of a transaction, whether it was asked for or came with a fault.
void TSqliteEngine::endWriting()
{
    if (inTransaction())
        return;
    m_queue->leave();
    m_writing = false;
}

// A log whose end is not on the disk is read up to its first page that did not come there, so that what a power failure
// takes are the last commits, never one amid them.
void TSqliteEngine::setLateFlush(bool on)
{
    exec(on ? "pragma synchronous=NORMAL" : "pragma synchronous=FULL");
    sqlite3_file *log = nullptr;
    if (on || sqlite3_file_control(m_db, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log) != SQLITE_OK ||
        !log->pMethods)
        return;
    if (const int code = log->pMethods->xSync(log, SQLITE_SYNC_NORMAL | SQLITE_SYNC_DATAONLY);
        code != SQLITE_OK)
        throw TDatabaseError(Faults::ofSqlite(code, errno), m_path);
}
