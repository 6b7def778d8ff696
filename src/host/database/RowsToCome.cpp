#include "host/database/RowsToCome.h"

#include "host/database/AnswerWait.h"
#include "host/database/Query.h"

#include <QTimer>

namespace {

const qsizetype mostWanted = 64; // rows; about what a screen shows, not what the user scrolled past
const int busyPause = 20;        // ms

} // namespace

TRowsToCome::TRowsToCome(TQuery &query, TConnection &connection, const std::shared_ptr<TQueryRows> &rows)
    : m_query(&query), m_connection(&connection), m_rows(rows)
{
}

void TRowsToCome::want(int row)
{
    if (m_hasFailed)
        return;
    m_wanted.removeAll(row);
    m_wanted.append(row);
    while (m_wanted.size() > mostWanted)
        m_wanted.removeFirst();
    if (!m_isReading)
        readOnSoon(0);
}

void TRowsToCome::askAgain()
{
    m_mayConnect = true;
    m_hasFailed = false;
}

void TRowsToCome::readOnSoon(int milliseconds)
{
    if (std::exchange(m_isComing, true))
        return;
    QTimer::singleShot(milliseconds, this, [this] {
        m_isComing = false;
        readOn();
    });
}

void TRowsToCome::readOn()
{
    const auto rows = m_rows.lock();
    if (!rows || m_isReading || !m_query || !m_connection || !m_connection->isOpen())
        return;
    if (AnswerWait().isWaiting() || m_connection->InTransaction())
        return readOnSoon(busyPause);
    while (!m_wanted.isEmpty() && rows->isHere(m_wanted.last()))
        m_wanted.removeLast();
    if (m_wanted.isEmpty())
        return;
    try {
        const TQueryRows::TStep step = rows->nextStep(m_wanted.last());
        m_connection->beforeStatement(step.statement);
        m_isReading = true;
        // Lives as long as the request does: the thread that reads knows nobody else here.
        const auto relay =
            std::shared_ptr<QObject>(new QObject, [](QObject *object) { object->deleteLater(); });
        const QPointer<TRowsToCome> guarded = this;
        m_connection->engine().readLater({rows->bound(step.statement), step.read,
                                          [relay, guarded, step](const std::optional<TDatabaseError> &error) {
                                              QMetaObject::invokeMethod(
                                                  relay.get(),
                                                  [guarded, step, error, relay] {
                                                      if (guarded)
                                                          guarded->came(step, error);
                                                  },
                                                  Qt::QueuedConnection);
                                          },
                                          m_mayConnect});
    } catch (const TDatabaseError &error) {
        fail(error);
    }
}

void TRowsToCome::came(const TQueryRows::TStep &step, const std::optional<TDatabaseError> &error)
{
    m_isReading = false;
    if (error)
        return fail(*error);
    m_mayConnect = false;
    if (const auto rows = m_rows.lock()) {
        step.take();
        Q_EMIT m_query->cameIn();
    }
    readOnSoon(0);
}

void TRowsToCome::fail(const TDatabaseError &error)
{
    m_isReading = false;
    m_wanted.clear();
    m_hasFailed = true;
    m_mayConnect = false;
    Q_EMIT m_query->readFailed(error);
}
