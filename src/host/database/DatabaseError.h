#pragma once

#include "host/Export.h"

#include <QString>

#include <exception>

/// What went wrong, in the terms that a user can act on.
enum class TFault {
    Refused,            ///< a key, a reference or a check of the schema forbids the change
    Locked,             ///< another user holds the row, the table or the file; the wait ran out
    Deadlock,           ///< this transaction was chosen to give way and is rolled back as a whole
    ConnectionLost,     ///< the server went away, or the network did
    NoAnswer,           ///< the server was too late with its answer; the line was given up
    GivenUp,            ///< the user did not want to wait for the server's answer any longer
    Waiting,            ///< asked for while another request was waited for
    LoginRefused,       ///< the server does not accept the user and the password
    NoRight,            ///< the server's user may not do this
    NoSuchDatabase,     ///< none of that name on the server, or not for this user
    NoServer,           ///< nobody answers at that address
    ServerFull,         ///< the server takes no further connection
    NoDriver,           ///< no ODBC driver is named, or none of that name is installed
    ChangingOver,       ///< another server takes the database over, or it comes up: it passes by itself
    NoEncryption,       ///< the server does not encrypt, and the connection string wants that
    UnknownIssuer,      ///< the server's certificate is of no known authority
    OtherName,          ///< the server's certificate is another server's
    ExpiredCertificate, ///< the server's certificate is no longer valid, or not yet
    NoAuthorities,      ///< the file of the authorities cannot be read, or holds none
    UnknownPrivacy,     ///< the driver cannot encrypt and check as the connection string wants
    UnfitPassword,      ///< the driver cannot be told this password
    DiskFull,
    ReadOnly,     ///< the file or its folder cannot be written
    CannotOpen,   ///< no such file, or the driver gives no better reason
    NotADatabase, ///< the file is no database, or a damaged one
    OtherProgram, ///< a database, but not one of this suite
    NewerSchema,  ///< made by a newer version of the suite
    UnfitServer,  ///< the server's collation loses Persian letters
    BadStatement, ///< the statement itself is wrong
    TooLong,      ///< a value does not fit its column
    RowGone,      ///< the row under edit was deleted by somebody else
    NetworkPath,  ///< the embedded file lies on a network drive, where it is not safe
    NoSuchFile,   ///< no database file there, and none is to be created
    FileGone,     ///< the database file was removed or replaced while it was open
    Unsound,      ///< a backup whose structure or references are not those of its version
    BeingEdited,  ///< records are open in editors, which a restore would take away
    Other
};

/// True when the server's answer did not come, and what was not committed is lost: with the line, or given up.
inline bool IsLineLost(TFault fault)
{
    return fault == TFault::ConnectionLost || fault == TFault::NoAnswer || fault == TFault::GivenUp ||
           fault == TFault::ChangingOver;
}

/// Every failure of the database layer. Copyable, and safe to keep.
class KETEBIONPAP_CORE TDatabaseError : public std::exception {
public:
    TDatabaseError(TFault fault, const QString &detail, const QString &statement = {});
    ~TDatabaseError() override;

    TFault fault() const { return m_fault; }
    /// The engine's own words (English, for logs); never holds a password.
    const QString &detail() const { return m_detail; }
    /// The statement that failed, values left out; empty where none was run.
    const QString &statement() const { return m_statement; }
    /// One clear Persian sentence: what happened and what the user can do.
    QString userText() const;
    const char *what() const noexcept override;

private:
    TFault m_fault;
    QString m_detail;
    QString m_statement;
    QByteArray m_what;
};
