#include "app/CommandLine.h"

#include "app/EntryPoints.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/SqliteFile.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TOption {
    const char *name;
    const char *value; ///< what follows the option, null where nothing does
    const char *help;
};

const TOption options[] = {
    {"--database", "FILE", "work on this database file"},
    {"--create", nullptr, "make the file of --database, and its folder, when it is not there"},
    {"--odbc", "TEXT", "work on SQL Server through ODBC; the connection string without its password"},
    {"--odbc-file", "FILE",
     "the same, the connection string in the first line of a file; only you may read it"},
    {"--demo", nullptr, "fill a new database with a sample company and log its administrator in"},
    {"--user", "NAME", "log in as this user"},
    {"--password-file", "FILE", "the user's password is the first line of this file; only you may read it"},
    {"--call", "ENTRY [ARG...]", "run one entry point, print its result, end"},
    {"--tour", "FOLDER", "the guided tour: a picture of every screen goes into the folder"},
    {"--check-log", nullptr, "check the event log, print the result, end; status 0: whole, 1: broken"},
    {"--reset-administrator", "NAME",
     "make this user an active administrator with a new password, which is asked for here or read from "
     "--password-file"},
    {"--server-roles", nullptr, "a T-SQL script: database roles for people with a login of their own"},
    {"--help", nullptr, "this text"},
    {"--version", nullptr, "the version"},
};

const TOption *optionOf(const QString &argument)
{
    for (const TOption &option : options) {
        if (argument == QLatin1String(option.name))
            return &option;
    }
    return nullptr;
}

} // namespace

namespace {

bool othersMayRead(const QString &fileName)
{
    const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther;
    return (QFile::permissions(fileName) & others) != 0;
}

QString readableText(const QString &fileName)
{
    return u"others may read or change %1, which holds a password: 'chmod 600 %1' mends it"_s.arg(fileName);
}

} // namespace

QString PasswordOf(const QString &fileName, QString *error)
{
    const QString password = FirstLineOf(fileName, error);
    if (error->isEmpty() && othersMayRead(fileName))
        *error = readableText(fileName);
    return error->isEmpty() ? password : QString();
}

QString FirstLineOf(const QString &fileName, QString *error)
{
    QFile file(fileName);
    // Opening the database's own file beside SQLite would cost its locks.
    if (SqliteFile::isHeldOpen(fileName) || !file.open(QIODevice::ReadOnly)) {
        *error = u"cannot read %1: %2"_s.arg(fileName, file.errorString());
        return {};
    }
    QString line = QString::fromUtf8(file.readLine(qint64(64) * 1024));
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    if (line.isEmpty())
        *error = u"the first line of %1 is empty"_s.arg(fileName);
    return line;
}

TCommandLine TCommandLine::parse(const QStringList &arguments)
{
    TCommandLine line;
    const auto wrong = [&line](const QString &text) {
        line.error = text;
        return line;
    };
    const auto setTask = [&line](Task task) {
        if (line.task != Task::Run && line.task != task)
            return false;
        line.task = task;
        return true;
    };

    const QString exclude = u"--call, --tour, --check-log and --reset-administrator exclude each other"_s;
    bool odbcGiven = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const TOption *option = optionOf(argument);
        if (!option)
            return wrong(u"unknown argument '%1' (--help lists what there is)"_s.arg(argument));
        QString value;
        if (option->value) {
            if (i + 1 >= arguments.size() || optionOf(arguments.at(i + 1)))
                return wrong(u"%1 needs a value: %2"_s.arg(argument, option->value));
            value = arguments.at(++i);
            if (value.isEmpty())
                return wrong(u"the value of %1 is empty"_s.arg(argument));
        }

        if (argument == "--database"_L1) {
            line.databaseFile = value;
        } else if (argument == "--odbc"_L1) {
            if (TOdbcConnectionString(value).hasPassword())
                return wrong(u"a password does not belong on the command line, where everybody can "
                             "read it: put the connection string into a file (--odbc-file) or into "
                             "the environment (KETEBIONPAP_ODBC), or leave the password out to be "
                             "asked for it"_s);
            line.odbc = value;
            odbcGiven = true;
        } else if (argument == "--odbc-file"_L1) {
            QString error;
            line.odbc = FirstLineOf(value, &error);
            if (!error.isEmpty())
                return wrong(error);
            if (TOdbcConnectionString(line.odbc).hasPassword() && othersMayRead(value)) {
                line.odbc.clear();
                return wrong(readableText(value));
            }
            odbcGiven = true;
        } else if (argument == "--create"_L1) {
            line.create = true;
        } else if (argument == "--demo"_L1) {
            line.demo = true;
        } else if (argument == "--user"_L1) {
            line.user = value;
        } else if (argument == "--password-file"_L1) {
            line.passwordFile = value;
        } else if (argument == "--call"_L1) {
            if (!setTask(Task::Call))
                return wrong(exclude);
            line.entry = value;
            while (i + 1 < arguments.size() && !optionOf(arguments.at(i + 1)))
                line.entryArguments << arguments.at(++i);
        } else if (argument == "--tour"_L1) {
            if (!setTask(Task::Tour))
                return wrong(exclude);
            line.tourFolder = value;
        } else if (argument == "--check-log"_L1) {
            if (!setTask(Task::CheckLog))
                return wrong(exclude);
        } else if (argument == "--reset-administrator"_L1) {
            if (!setTask(Task::ResetAdministrator))
                return wrong(exclude);
            line.administrator = value;
        } else if (argument == "--server-roles"_L1) {
            line.task = Task::ServerRoles;
            return line;
        } else if (argument == "--help"_L1) {
            line.task = Task::Help;
            return line;
        } else if (argument == "--version"_L1) {
            line.task = Task::Version;
            return line;
        }
    }

    if (!line.databaseFile.isEmpty() && odbcGiven)
        return wrong(u"name one database: a file or a server"_s);
    if (line.create && line.databaseFile.isEmpty())
        return wrong(u"--create needs --database: the file to be made"_s);
    const bool named = !line.databaseFile.isEmpty() || odbcGiven;
    const bool sample = line.demo || line.task == Task::Tour;
    if (named && line.task == Task::Tour && !line.demo)
        return wrong(u"the guided tour works on a new sample company: add --demo, or name no database"_s);
    // Sample data never go to a database that was not named for them.
    if (!named && !sample)
        line.odbc = qEnvironmentVariable("KETEBIONPAP_ODBC");
    if (line.task == Task::ResetAdministrator && (line.demo || line.create || !line.user.isEmpty()))
        return wrong(
            u"--reset-administrator works on a database that is there, with no log-in: leave out --demo, --create and --user"_s);
    if (!line.passwordFile.isEmpty() && line.user.isEmpty() && line.administrator.isEmpty())
        return wrong(u"--password-file needs --user"_s);
    if (line.task == Task::Call)
        line.error = EntryPoints::check(line.entry, line.entryArguments);
    return line;
}

QString TCommandLine::help()
{
    QString text = u"Usage: ketebionpap [OPTION...]\n"
                   "The payroll base information of the accounting and payroll suite.\n\n"_s;
    for (const TOption &option : options) {
        QString left = QString::fromLatin1(option.name);
        if (option.value)
            left += u' ' + QString::fromLatin1(option.value);
        text += u"  %1  %2\n"_s.arg(left, -24).arg(QString::fromLatin1(option.help));
    }
    text +=
        u"\nWithout a database named here, the environment's KETEBIONPAP_ODBC (a connection string), then\n"
        "the database settings count, then one file in the user's data folder.\n"
        "Entry points:\n"_s;
    for (const TEntryPoint &entry : EntryPoints::all())
        text += u"  %1 %2\n"_s.arg(QString::fromLatin1(entry.name), EntryPoints::usage(entry))
                    .trimmed()
                    .prepend(u"  "_s) +
                u'\n';
    text += u"Exit status: 0 done, 1 something failed, 2 a wrong argument.\n"_s;
    return text;
}

QString TCommandLine::version()
{
    return QStringLiteral("ketebionpap " KETEBIONPAP_VERSION);
}
