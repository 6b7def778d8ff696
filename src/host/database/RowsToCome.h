#pragma once

#include "host/database/QueryRows.h"

#include <QObject>
#include <QPointer>

class TQuery;

/// The rows that a list shows empty until they come: their pages are read one after the other when nothing else is under
/// way, the one that was wanted last first. A read that failed ends it, until the user asks again; only then a line that
/// is lost is opened for it.
class TRowsToCome : public QObject {
public:
    TRowsToCome(TQuery &query, TConnection &connection, const std::shared_ptr<TQueryRows> &rows);

    void want(int row);
    void askAgain();

private:
    void readOn();
    void readOnSoon(int milliseconds);
    void came(const TQueryRows::TStep &step, const std::optional<TDatabaseError> &error);
    void fail(const TDatabaseError &error);

    QPointer<TQuery> m_query;
    QPointer<TConnection> m_connection;
    std::weak_ptr<TQueryRows> m_rows;
    QList<int> m_wanted;
    bool m_isComing = false; ///< readOn is called soon
    bool m_isReading = false;
    bool m_hasFailed = false;
    bool m_mayConnect = false;
};
