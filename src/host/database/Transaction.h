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
