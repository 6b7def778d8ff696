#include "host/database/OdbcEngine.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <utility>

using namespace Qt::Literals::StringLiterals;

// It begins with its first request. Where that cannot be, it has a request of its own.
void TOdbcEngine::begin()
{
    rollback();
    makeReady({});
    {
        const std::lock_guard lock(m_mutex);
        m_inserted.clear();
    }
    if (takesBatches()) {
        m_begun = m_isToBegin = true;
        return;
    }
    for (bool again = true;; again = false) {
        makeReady({});
        try {
            run(u"begin transaction"_s);
            break;
        } catch (const TDatabaseError &error) {
            if (error.fault() == TFault::GivenUp)
                m_isDead = true; // it may have begun
            if (error.fault() != TFault::ConnectionLost || !again)
                throw;
        }
    }
    m_begun = true;
}

void TOdbcEngine::commit()
{
    if (!m_begun)
        return;
    if (m_gone || isGivenUp()) {
        const TFault fault = m_gone.value_or(TFault::GivenUp);
        rollback();
        throw TDatabaseError(fault, u"the transaction was rolled back by the server"_s);
    }
    if (std::exchange(m_isToBegin, false)) {
        m_begun = false; // nothing was asked for in it
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_isCommitting = true;
    }
    const auto decided = qScopeGuard([this] {
        const std::lock_guard lock(m_mutex);
        m_isCommitting = false;
        if (!m_begun)
            m_inserted.clear();
    });
    try {
        makeReady({});
        run(u"commit transaction"_s);
        m_begun = false;
    } catch (const TDatabaseError &error) {
        if (!IsLineLost(error.fault()))
            throw;
        m_begun = false;
        m_gone.reset();
        const QScopedValueRollback clearing(m_isClearing, true);
        endWithoutAnswer();
        if (!isStoredAfterAll(QList<TInserted>(m_inserted)))
            throw;
    }
}

// A transaction whose commit was given up may still be open on a line that works.
void TOdbcEngine::endWithoutAnswer()
{
    if (!m_connection || m_isDead)
        return;
    try {
        makeReady({});
        endTransaction();
    } catch (const TDatabaseError &) {
        m_isDead = true; // the server rolls back what a closed line leaves
    }
}

void TOdbcEngine::rollback()
{
    if (!m_begun)
        return;
    m_begun = false;
    m_gone.reset();
    {
        const std::lock_guard lock(m_mutex);
        m_inserted.clear();
    }
    if (std::exchange(m_isToBegin, false))
        return;
    const QScopedValueRollback clearing(m_isClearing, true);
    endWithoutAnswer();
}
