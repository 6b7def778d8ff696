#pragma once

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Export.h"
#include "host/database/Query.h"

/// Runs work as one unit: all of it is stored, or nothing. Within a transaction that is begun it is a part of that.
template <class Work>
void InOneUnit(TConnection *connection, Work work)
{
    if (connection->InTransaction()) {
        work();
        return;
    }
    connection->BeginTrans();
    try {
        work();
        connection->CommitTrans();
    } catch (...) {
        connection->RollbackTrans();
        throw;
    }
}

/// The common shape of all data modules: queries on the host's connection, and writes that answer true or false.
class KETEBIONPAP_CORE TDataModule : public QObject {
    Q_OBJECT
public:
    explicit TDataModule(QObject *owner);

protected:
    TQuery *NewQuery(const QString &name);

    /// Runs a write; a database error is kept in the connection's lastError and answers false.
    template <class Work>
    static bool Try(Work work)
    {
        try {
            work();
            return true;
        } catch (const TDatabaseError &error) {
            DM.ADOConnection1->noteError(error);
            return false;
        }
    }

    /// Fills a row under append or edit and posts it; a refused row is cancelled, and false is the answer.
    template <class Fill>
    static bool Post(TQuery *query, bool newRow, Fill fill)
    {
        return Try([&] {
            if (newRow)
                query->append();
            else
                query->edit();
            try {
                fill();
                query->post();
            } catch (...) {
                query->cancel();
                throw;
            }
        });
    }
};
