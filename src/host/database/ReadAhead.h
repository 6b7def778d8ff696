#pragma once

#include "host/database/Connection.h"
#include "host/database/Engine.h"

/// Has a database behind a line read, with one request, what is about to be asked for; nothing where rows come at once.
/// While this lives, each of the statements is answered once with what was read then. Only for statements that nothing
/// which is written meanwhile changes. Throws TDatabaseError where the line is lost or given up.
class TReadAhead {
public:
    TReadAhead(TConnection &connection, const QList<TStatement> &statements) : m_connection(connection)
    {
        if (connection.engine().answersAtOnce())
            return;
        QList<TBoundStatement> bound;
        for (const TStatement &statement : statements)
            bound.append({statement.boundText(), statement.values(), {}});
        connection.engine().readAhead(bound);
    }
    ~TReadAhead()
    {
        if (m_connection.isOpen())
            m_connection.engine().forgetAhead();
    }
    TReadAhead(const TReadAhead &) = delete;
    TReadAhead &operator=(const TReadAhead &) = delete;

private:
    TConnection &m_connection;
};
