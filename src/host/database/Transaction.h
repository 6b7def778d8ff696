#pragma once

#include "host/database/Connection.h"

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
