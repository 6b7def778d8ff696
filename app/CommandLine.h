#pragma once

#include <QStringList>

/// What the user asked for on the command line.
struct TCommandLine {
    enum class Task { Run, Help, Version, ServerRoles, Call, Tour, CheckLog, ResetAdministrator };

    Task task = Task::Run;
    QString databaseFile; ///< --database
    QString odbc;         ///< the whole connection string, from --odbc, --odbc-file or the environment
    bool create = false;  ///< the file of --database may be made
    bool demo = false;
    QString user;
    QString passwordFile;
    QString entry; ///< --call
    QStringList entryArguments;
    QString tourFolder;
    QString administrator; ///< --reset-administrator
    QString error;         ///< one line that says what is wrong; empty when all is well

    /// Reads the arguments (without the program's name) and the file that --odbc-file names. The environment's
    /// KETEBIONPAP_ODBC counts when no database is named. A connection string with a password is refused as an
    /// argument, since everybody on the machine can read those, and in a file that others may read.
    static TCommandLine parse(const QStringList &arguments);
    static QString help();
    static QString version();
};

/// The first line of a file without its line break: a password or a connection string. `error` gets one line when
/// there is none.
QString FirstLineOf(const QString &fileName, QString *error);
/// The same of a file that holds a password: refused when others may read or change it.
QString PasswordOf(const QString &fileName, QString *error);
