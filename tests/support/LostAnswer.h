#pragma once

#include "support/TestDatabase.h"

#include <gtest/gtest.h>

/// The database does the first statement that begins so (and stores the transaction that it ends), but the program gets
/// no answer. From here on the database counts and traces no statements any more.
class LostAnswer {
public:
    enum Ends { Nothing, ItsTransaction };
    LostAnswer(TestDatabase &db, const QString &beginning, Ends ends = Nothing)
        : m_connection(db.connection())
    {
        m_connection.setStatementHook([this, beginning, ends](const TStatement &statement) {
            if (m_lost || !statement.boundText().startsWith(beginning, Qt::CaseInsensitive))
                return;
            m_lost = true;
            m_connection.execute(statement);
            if (ends == ItsTransaction)
                m_connection.CommitTrans();
            throw TDatabaseError(TFault::ConnectionLost, "played");
        });
    }
    ~LostAnswer()
    {
        m_connection.setStatementHook({});
        EXPECT_TRUE(m_lost) << "no such statement ran";
    }

private:
    TConnection &m_connection;
    bool m_lost = false;
};

/// The line breaks before the server has the statement.
inline void breakBefore(TestDatabase &db, const QString &beginning, const std::function<void()> &work)
{
    bool broken = false;
    db.connection().setStatementHook([&](const TStatement &statement) {
        if (broken || !statement.boundText().startsWith(beginning, Qt::CaseInsensitive))
            return;
        broken = true;
        throw TDatabaseError(TFault::ConnectionLost, "played");
    });
    work();
    db.connection().setStatementHook({});
    EXPECT_TRUE(broken);
}
