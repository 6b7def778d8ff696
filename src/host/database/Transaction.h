#pragma once

#include "host/database/Connection.h"
#include "host/database/Engine.h"

#include <QScopeGuard>

#include <utility>

/// A transaction of the suite's connection: begun here, stored by commit(), rolled back when it goes without one. A
/// transaction that was left open before is rolled back first. The beginning and commit() throw TDatabaseError.
class TTransaction {
public:
    explicit TTransaction(TConnection &connection) : m_connection(connection) { connection.BeginTrans(); }
    ~TTransaction()
    {
        if (!m_committed)
            m_connection.RollbackTrans();
    }
    TTransaction(const TTransaction &) = delete;
    TTransaction &operator=(const TTransaction &) = delete;

    void commit()
    {
        m_connection.CommitTrans();
        m_committed = true;
    }

private:
    TConnection &m_connection;
    bool m_committed = false;
};

/// Runs work as one unit: all of it is stored, or nothing. Within a transaction that is begun it is a part of that.
template <class Work>
void InOneUnit(TConnection *connection, Work work)
{
    if (connection->InTransaction()) {
        work();
        return;
    }
    TTransaction transaction(*connection);
    work();
    transaction.commit();
}

/// Many writes one after the other, each on its own: what was written is on the disk at the end of all, not after each
/// one. They stay in their order, so that whatever breaks them off leaves the first of them, whole. Rows for a server
/// travel together.
class TManyWrites {
public:
    /// Throws TDatabaseError.
    explicit TManyWrites(TConnection &connection) : m_connection(connection)
    {
        connection.engine().setLateFlush(true);
    }
    ~TManyWrites()
    {
        try {
            finish();
        } catch (const TDatabaseError &error) {
            m_connection.noteError(error);
        }
    }
    TManyWrites(const TManyWrites &) = delete;
    TManyWrites &operator=(const TManyWrites &) = delete;

    /// Runs work that posts one new row and answers whether it did. The row may wait for others to be sent with it; its
    /// key is not known then.
    template <class Work>
    bool add(Work work)
    {
        TEngine &engine = m_connection.engine();
        const qsizetype before = m_kept.size();
        if (engine.insertsAtOnce(1) > 1)
            engine.keepInserts(&m_kept);
        const auto back = qScopeGuard([&engine] { engine.keepInserts(nullptr); });
        const bool done = work();
        if (done && m_kept.size() == before)
            ++m_stored;
        return done;
    }
    /// Whether it is time to send(): what waits fills a request, or nothing has to wait.
    bool isFull() const
    {
        return m_kept.isEmpty() ||
               m_kept.size() >= m_connection.engine().insertsAtOnce(m_kept.first().values.size());
    }
    /// Sends what waits; throws TDatabaseError when not all of it is stored.
    void send()
    {
        const TManyInserted done = m_connection.engine().insertMany(std::exchange(m_kept, {}));
        m_stored += done.keys.size();
        if (done.error)
            throw TDatabaseError(*done.error);
    }
    /// How many rows are stored, the first ones.
    qsizetype stored() const { return m_stored; }

    /// Returns when all of it is on the disk; throws TDatabaseError when that cannot be had.
    void finish()
    {
        if (m_finished)
            return;
        m_finished = true;
        m_connection.engine().setLateFlush(false);
    }

private:
    TConnection &m_connection;
    QList<TBoundStatement> m_kept;
    qsizetype m_stored = 0;
    bool m_finished = false;
};
