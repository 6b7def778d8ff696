#include "app/CommandLine.h"

#include "app/EntryPoints.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/SqliteFile.h"

#include <QFile>

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
    {"--odbc-file", "FILE", "the same, the connection string in the first line of a file"},
    {"--demo", nullptr, "fill a new database with a sample company and log its administrator in"},
    {"--user", "NAME", "log in as this user"},
    {"--password-file", "FILE", "the user's password is the first line of this file"},
    {"--call", "ENTRY [ARG...]", "run one entry point, print its result, end"},
    {"--tour", "FOLDER", "the guided tour: a picture of every screen goes into the folder"},
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

QString FirstLineOf(const QString &fileName, QString *error)
{
    QFile file(fileName);
    // Opening the database's own file beside SQLite would cost its locks.
    if (SqliteFile::isHeldOpen(fileName) || !file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(fileName, file.errorString());
        return {};
    }
    QString line = QString::fromUtf8(file.readLine(qint64(64) * 1024));
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    if (line.isEmpty())
        *error = QStringLiteral("the first line of %1 is empty").arg(fileName);
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

    bool odbcGiven = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const TOption *option = optionOf(argument);
        if (!option)
            return wrong(QStringLiteral("unknown argument '%1' (--help lists what there is)").arg(argument));
        QString value;
        if (option->value) {
            if (i + 1 >= arguments.size() || optionOf(arguments.at(i + 1)))
                return wrong(QStringLiteral("%1 needs a value: %2").arg(argument, option->value));
            value = arguments.at(++i);
            if (value.isEmpty())
                return wrong(QStringLiteral("the value of %1 is empty").arg(argument));
        }

        if (argument == QLatin1String("--database")) {
            line.databaseFile = value;
        } else if (argument == QLatin1String("--odbc")) {
            if (TOdbcConnectionString(value).hasPassword())
                return wrong(
                    QStringLiteral("a password does not belong on the command line, where everybody can "
                                   "read it: put the connection string into a file (--odbc-file) or into "
                                   "the environment (KETEBIONPAP_ODBC), or leave the password out to be "
                                   "asked for it"));
            line.odbc = value;
            odbcGiven = true;
        } else if (argument == QLatin1String("--odbc-file")) {
            QString error;
            line.odbc = FirstLineOf(value, &error);
            if (!error.isEmpty())
                return wrong(error);
            odbcGiven = true;
        } else if (argument == QLatin1String("--create")) {
            line.create = true;
        } else if (argument == QLatin1String("--demo")) {
            line.demo = true;
        } else if (argument == QLatin1String("--user")) {
            line.user = value;
        } else if (argument == QLatin1String("--password-file")) {
            line.passwordFile = value;
        } else if (argument == QLatin1String("--call")) {
            if (!setTask(Task::Call))
                return wrong(QStringLiteral("--call and --tour exclude each other"));
            line.entry = value;
            while (i + 1 < arguments.size() && !optionOf(arguments.at(i + 1)))
                line.entryArguments << arguments.at(++i);
        } else if (argument == QLatin1String("--tour")) {
            if (!setTask(Task::Tour))
                return wrong(QStringLiteral("--call and --tour exclude each other"));
            line.tourFolder = value;
        } else if (argument == QLatin1String("--help")) {
            line.task = Task::Help;
            return line;
        } else if (argument == QLatin1String("--version")) {
            line.task = Task::Version;
            return line;
        }
    }

    if (!line.databaseFile.isEmpty() && odbcGiven)
        return wrong(QStringLiteral("name one database: a file or a server"));
    if (line.create && line.databaseFile.isEmpty())
        return wrong(QStringLiteral("--create needs --database: the file to be made"));
    const bool named = !line.databaseFile.isEmpty() || odbcGiven;
    const bool sample = line.demo || line.task == Task::Tour;
    if (named && line.task == Task::Tour && !line.demo)
        return wrong(
            QStringLiteral("the guided tour works on a new sample company: add --demo, or name no database"));
    // Sample data never go to a database that was not named for them.
    if (!named && !sample)
        line.odbc = qEnvironmentVariable("KETEBIONPAP_ODBC");
    if (!line.passwordFile.isEmpty() && line.user.isEmpty())
        return wrong(QStringLiteral("--password-file needs --user"));
    if (line.task == Task::Call)
        line.error = EntryPoints::check(line.entry, line.entryArguments);
    return line;
}

QString TCommandLine::help()
{
    QString text = QStringLiteral("Usage: ketebionpap [OPTION...]\n"
                                  "The payroll base information of the accounting and payroll suite.\n\n");
    for (const TOption &option : options) {
        QString left = QString::fromLatin1(option.name);
        if (option.value)
            left += u' ' + QString::fromLatin1(option.value);
        text += QStringLiteral("  %1  %2\n").arg(left, -24).arg(QString::fromLatin1(option.help));
    }
    text += QStringLiteral(
        "\nWithout a database named here, the environment's KETEBIONPAP_ODBC (a connection string), then\n"
        "the database settings count, then one file in the user's data folder.\n"
        "Entry points:\n");
    for (const TEntryPoint &entry : EntryPoints::all())
        text += QStringLiteral("  %1 %2\n")
                    .arg(QString::fromLatin1(entry.name), EntryPoints::usage(entry))
                    .trimmed()
                    .prepend(QStringLiteral("  ")) +
                u'\n';
    text += QStringLiteral("Exit status: 0 done, 1 something failed, 2 a wrong argument.\n");
    return text;
}

QString TCommandLine::version()
{
    return QStringLiteral("ketebionpap " KETEBIONPAP_VERSION);
}
