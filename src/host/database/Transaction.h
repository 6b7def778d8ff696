#pragma once

#include "host/database/Connection.h"
#include "host/database/Engine.h"

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
/// one. They stay in their order, so that whatever breaks them off leaves the first of them, whole.
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
    bool m_finished = false;
};
