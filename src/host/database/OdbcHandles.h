#pragma once

#include "host/Export.h"
#include "host/database/DatabaseError.h"

#include <QList>
#include <QString>

#include <sql.h>
#include <sqlext.h>
#include <utility>

namespace Odbc {

/// One line of what a driver has to say about a call.
struct TProblem {
    QString state; ///< SQLSTATE, five characters
    int native;    ///< the server's own number
    QString text;
};

/// An ODBC handle of one type, freed when it goes.
template <SQLSMALLINT Type>
class THandle {
public:
    THandle() = default;
    explicit THandle(SQLHANDLE parent) { SQLAllocHandle(Type, parent, &m_handle); }
    THandle(THandle &&other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    THandle &operator=(THandle &&other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~THandle()
    {
        if (m_handle)
            SQLFreeHandle(Type, m_handle);
    }
    operator SQLHANDLE() const { return m_handle; }

private:
    SQLHANDLE m_handle = nullptr;
};
using TStatementHandle = THandle<SQL_HANDLE_STMT>;

class TEnvironment : public THandle<SQL_HANDLE_ENV> {
public:
    TEnvironment() : THandle(SQL_NULL_HANDLE)
    {
        SQLSetEnvAttr(*this, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    }
};

/// A connection, ended when it goes. Its statements must be gone by then.
class TConnectionHandle : public THandle<SQL_HANDLE_DBC> {
public:
    using THandle::THandle;
    TConnectionHandle() = default;
    TConnectionHandle(TConnectionHandle &&) noexcept = default;
    TConnectionHandle &operator=(TConnectionHandle &&) noexcept = default;
    ~TConnectionHandle()
    {
        if (SQLHANDLE(*this))
            SQLDisconnect(*this);
    }
};

/// What the driver says about the last call on a handle.
KETEBIONPAP_CORE QList<TProblem> problemsOf(SQLSMALLINT type, SQLHANDLE handle);

/// What a list of problems means to the user; `connecting`: they come from the opening of a connection.
KETEBIONPAP_CORE TFault faultOf(const QList<TProblem> &problems, bool connecting = false);

/// The problems in one line for a log.
KETEBIONPAP_CORE QString textOf(const QList<TProblem> &problems);

inline SQLWCHAR *wide(const QString &text)
{
    return const_cast<SQLWCHAR *>(reinterpret_cast<const SQLWCHAR *>(text.utf16()));
}

} // namespace Odbc
