#pragma once

#include "host/Export.h"

#include <memory>
#include <sqlite3.h>

namespace Sqlite {

/// A database, closed when it goes. Statements that are still there keep it open until they go, too.
class TDatabase {
public:
    /// Answers SQLite's code; after a failure the database still tells the reason.
    int open(const char *file, int flags)
    {
        sqlite3 *db = nullptr;
        const int code = sqlite3_open_v2(file, &db, flags, nullptr);
        m_db.reset(db);
        return code;
    }
    operator sqlite3 *() const { return m_db.get(); }

private:
    struct TClose {
        void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
    };
    std::unique_ptr<sqlite3, TClose> m_db;
};

/// A prepared statement, finalized when it goes.
class KETEBIONPAP_CORE TStatement {
public:
    /// Answers SQLite's code. A text without a statement leaves this empty.
    int prepare(sqlite3 *db, const char *sql, int size = -1, unsigned flags = 0)
    {
        sqlite3_stmt *statement = nullptr;
        const int code = sqlite3_prepare_v3(db, sql, size, flags, &statement, nullptr);
        m_statement.reset(statement);
        return code;
    }
    operator sqlite3_stmt *() const { return m_statement.get(); }

private:
    struct TFinalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, TFinalize> m_statement;
};

} // namespace Sqlite
