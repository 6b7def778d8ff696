#include "app/CommandLine.h"
#include "app/EntryPoints.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Task = TCommandLine::Task;

TCommandLine parse(const QStringList &arguments)
{
    return TCommandLine::parse(arguments);
}

std::string errorOf(const QStringList &arguments)
{
    return parse(arguments).error.toStdString();
}

QString fileWith(QTemporaryDir &folder, const QByteArray &text)
{
    QFile file(folder.filePath("given"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return file.fileName();
}

TEST(CommandLine, NothingMeansTheWindowOnTheOrdinaryDatabase)
{
    const TCommandLine line = parse({});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.task, Task::Run);
    EXPECT_EQ(line.databaseFile + line.odbc, "");
}

TEST(CommandLine, ReadsEveryOption)
{
    const TCommandLine line =
        parse({"--database", "a b.db", "--create", "--demo", "--user", "مریم", "--password-file", "p"});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.databaseFile, "a b.db");
    EXPECT_TRUE(line.create);
    EXPECT_TRUE(line.demo);
    EXPECT_EQ(line.user, QString("مریم"));
    EXPECT_EQ(line.passwordFile, "p");
}

TEST(CommandLine, RefusesWhatItDoesNotKnow)
{
    EXPECT_EQ(errorOf({"--datbase", "x"}), "unknown argument '--datbase' (--help lists what there is)");
    EXPECT_EQ(errorOf({"x.db"}), "unknown argument 'x.db' (--help lists what there is)");
}

TEST(CommandLine, RefusesAnOptionWithoutItsValue)
{
    for (const char *option : {"--database", "--odbc", "--odbc-file", "--user", "--call", "--tour"})
        EXPECT_NE(errorOf({option}).find(" needs a value: "), std::string::npos) << option;
    EXPECT_EQ(errorOf({"--database", "--demo"}), "--database needs a value: FILE");
    EXPECT_EQ(errorOf({"--database", ""}), "the value of --database is empty");
}

TEST(CommandLine, CallTakesTheArgumentsOfItsEntry)
{
    const TCommandLine line = parse({"--call", "Select_FiscalDeducation", "-1", "4", "", "--user", "a"});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.task, Task::Call);
    EXPECT_EQ(line.entryArguments, QStringList({"-1", "4", ""}));
    EXPECT_EQ(line.user, "a");
}

TEST(CommandLine, CallRefusesAnUnknownEntryAndWrongArguments)
{
    EXPECT_EQ(errorOf({"--call", "Open_Nothing"}),
              "there is no entry point 'Open_Nothing' (--help lists them)");
    EXPECT_EQ(errorOf({"--call", "open_taxlist"}),
              "there is no entry point 'open_taxlist' (--help lists them)");
    EXPECT_EQ(errorOf({"--call", "Open_TaxList", "1"}), "Open_TaxList takes no arguments");
    EXPECT_EQ(errorOf({"--call", "Select_FiscalList", "1"}),
              "Select_FiscalList takes 2 arguments: SelectType Filter");
    EXPECT_EQ(errorOf({"--call", "Select_FiscalDeducation", "0", "one", "x"}),
              "SelectType is an integer, not 'one'");
}

TEST(CommandLine, CallAndTourExcludeEachOther)
{
    EXPECT_EQ(errorOf({"--call", "Open_TaxList", "--tour", "out"}),
              "--call, --tour, --check-log and --reset-administrator exclude each other");
    EXPECT_EQ(errorOf({"--tour", "out", "--call", "Open_TaxList"}),
              "--call, --tour, --check-log and --reset-administrator exclude each other");
}

TEST(CommandLine, APasswordIsNoArgument)
{
    const std::string error = errorOf({"--odbc", "Driver=FreeTDS;Server=s;UID=u;pwd={se;cret}"});
    EXPECT_NE(error.find("does not belong on the command line"), std::string::npos);
    EXPECT_EQ(error.find("cret"), std::string::npos);
    EXPECT_EQ(errorOf({"--odbc", "Driver=FreeTDS;Server=s;UID=u"}), "");
}

TEST(CommandLine, AConnectionStringWithItsPasswordComesFromAFile)
{
    QTemporaryDir folder;
    const QString file = fileWith(folder, "Driver=FreeTDS;UID=u;PWD=p\r\nsecond line\n");
    const TCommandLine line = parse({"--odbc-file", file});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.odbc, "Driver=FreeTDS;UID=u;PWD=p");
    EXPECT_NE(errorOf({"--odbc-file", folder.filePath("none")}).find("cannot read "), std::string::npos);
    EXPECT_NE(errorOf({"--odbc-file", fileWith(folder, "\n")}).find(" is empty"), std::string::npos);
}

TEST(CommandLine, AFileWithAPasswordThatOthersMayReadIsRefusedWithHowToMendIt)
{
    QTemporaryDir folder;
    const QString file = fileWith(folder, "Driver=FreeTDS;UID=u;PWD=TopSecret\n");
    for (const auto others : {QFile::ReadGroup, QFile::ReadOther, QFile::WriteOther}) {
        ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | others));
        const TCommandLine line = parse({"--odbc-file", file});
        EXPECT_TRUE(line.error.contains("chmod 600 " + file)) << line.error.toStdString();
        EXPECT_FALSE(line.error.contains("TopSecret"));
        EXPECT_EQ(line.odbc, "");
        QString error;
        EXPECT_EQ(PasswordOf(file, &error), "");
        EXPECT_TRUE(error.contains("chmod 600 " + file)) << error.toStdString();
    }
    // Without a password there is nothing to hide: an administrator may give one to all.
    const QString open = fileWith(folder, "Driver=FreeTDS;Server=s;UID=u\n");
    ASSERT_TRUE(QFile::setPermissions(open, QFile::ReadOwner | QFile::ReadOther));
    EXPECT_EQ(errorOf({"--odbc-file", open}), "");
}

TEST(CommandLine, TheEnvironmentCountsWhenNoDatabaseIsNamed)
{
    qputenv("KETEBIONPAP_ODBC", "Driver=FreeTDS;PWD=p");
    const TCommandLine unnamed = parse({});
    const TCommandLine named = parse({"--database", "x.db"});
    const TCommandLine sample = parse({"--demo"});
    const TCommandLine tour = parse({"--tour", "out"});
    qunsetenv("KETEBIONPAP_ODBC");
    EXPECT_EQ(unnamed.odbc, "Driver=FreeTDS;PWD=p");
    EXPECT_EQ(named.odbc, "");
    EXPECT_EQ(sample.odbc, "") << "sample data must not go to a database that was not named for them";
    EXPECT_EQ(tour.odbc, "");
}

TEST(CommandLine, OnlyANamedFileIsMade)
{
    EXPECT_EQ(errorOf({"--create"}), "--create needs --database: the file to be made");
    EXPECT_EQ(errorOf({"--create", "--odbc", "Driver=FreeTDS"}),
              "--create needs --database: the file to be made");
    EXPECT_FALSE(parse({"--database", "x.db"}).create);
}

TEST(CommandLine, OneDatabaseOnly)
{
    EXPECT_EQ(errorOf({"--database", "x.db", "--odbc", "Driver=FreeTDS"}),
              "name one database: a file or a server");
    EXPECT_EQ(errorOf({"--password-file", "p"}), "--password-file needs --user");
}

TEST(CommandLine, TheTourNeverWritesToADatabaseOfTheUser)
{
    EXPECT_NE(errorOf({"--tour", "out", "--database", "mine.db"}).find("add --demo"), std::string::npos);
    EXPECT_EQ(errorOf({"--tour", "out", "--database", "new.db", "--demo"}), "");
    EXPECT_EQ(errorOf({"--tour", "out"}), "");
}

TEST(CommandLine, HelpNamesEveryOptionAndEveryEntry)
{
    const QString help = TCommandLine::help();
    for (const char *option :
         {"--database", "--create", "--odbc", "--odbc-file", "--demo", "--user", "--password-file", "--call",
          "--tour", "--reset-administrator", "--check-log", "--server-roles", "--help", "--version"})
        EXPECT_TRUE(help.contains(QLatin1String(option))) << option;
    EXPECT_EQ(EntryPoints::all().size(), 14);
    for (const TEntryPoint &entry : EntryPoints::all())
        EXPECT_TRUE(help.contains(QLatin1String(entry.name))) << entry.name;
}

TEST(EntryPoint, TheMenuCallsEachWithArgumentsThatItTakes)
{
    for (const TEntryPoint &entry : EntryPoints::all())
        EXPECT_EQ(EntryPoints::check(QLatin1String(entry.name), entry.usualArguments), "") << entry.name;
}

} // namespace
