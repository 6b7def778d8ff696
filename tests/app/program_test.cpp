#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// The real program in a home of its own.
class Program : public testing::Test {
protected:
    QProcessEnvironment environment()
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert("QT_QPA_PLATFORM", "offscreen");
        variables.insert("XDG_CONFIG_HOME", home.filePath("config"));
        variables.insert("XDG_DATA_HOME", home.filePath("data"));
        variables.insert("XDG_RUNTIME_DIR", home.path());
        variables.remove("KETEBIONPAP_ODBC");
        variables.remove("DISPLAY");
        variables.remove("WAYLAND_DISPLAY");
        return variables;
    }
    TRun run(const QStringList &arguments) { return run(arguments, environment()); }
    TRun run(const QStringList &arguments, const QProcessEnvironment &variables)
    {
        QProcess process;
        process.setProcessEnvironment(variables);
        process.start(program(), arguments);
        process.closeWriteChannel();
        if (!process.waitForFinished(300000)) {
            process.kill();
            process.waitForFinished();
            ADD_FAILURE() << "the program did not end";
        }
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
    static QString program() { return QStringLiteral(KETEBIONPAP_BIN "/ketebionpap"); }
    QString write(const QString &name, const QByteArray &text)
    {
        QFile file(home.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        return file.fileName();
    }
    static QByteArray read(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir home;
};

int lines(const std::string &text)
{
    return int(std::count(text.begin(), text.end(), '\n'));
}

TEST_F(Program, HelpAndVersionNeedNoDisplay)
{
    QProcessEnvironment bare = environment();
    bare.remove("QT_QPA_PLATFORM");
    const TRun help = run({"--help"}, bare);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("--call ENTRY [ARG...]"), std::string::npos);
    EXPECT_EQ(help.err, "");
    const TRun version = run({"--version"}, bare);
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.out.rfind("ketebionpap ", 0), 0u);
    const TRun roles = run({"--server-roles"}, bare);
    EXPECT_EQ(roles.exitCode, 0);
    EXPECT_NE(roles.out.find("grant select, update on dbo.CalcMethod to ketebionpap_methods_edit\n"),
              std::string::npos);
}

TEST_F(Program, SaysInOneLineThatThereIsNoDisplay)
{
    QProcessEnvironment bare = environment();
    bare.remove("QT_QPA_PLATFORM");
    const TRun result = run({}, bare);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "ketebionpap: there is no display to show a window on\n");
}

TEST_F(Program, AWrongArgumentEndsItWith2AndOneLine)
{
    for (const QStringList &arguments : {QStringList{"--nonsense"},
                                         {"--call", "Open_Nothing"},
                                         {"--call", "Select_FiscalList", "x", "y"},
                                         {"--odbc", "UID=u;PWD=secret"}}) {
        const TRun result = run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(lines(result.err), 1) << result.err;
        EXPECT_EQ(result.err.rfind("ketebionpap: ", 0), 0u);
        EXPECT_EQ(result.err.find("secret"), std::string::npos);
    }
    EXPECT_FALSE(QDir(home.filePath("data")).exists()) << "nothing is created on the way";
}

TEST_F(Program, RefusesAFileThatIsNoDatabase)
{
    const QByteArray text =
        "this is a letter to nobody, and long enough to be looked at as a page of something";
    const QString file = write("letter.txt", text.repeated(40));
    const TRun result = run({"--database", file, "--call", "Open_TaxList"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(lines(result.err), 1) << result.err;
    EXPECT_NE(result.err.find("not a database"), std::string::npos) << result.err;
    EXPECT_EQ(read(file), text.repeated(40)) << "the file stays as it was";
}

TEST_F(Program, RefusesTheDatabaseOfAnotherProgram)
{
    const QString file = home.filePath("other.db");
    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "create table Song(Title text); insert into Song values('x')", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(db);
    const TRun result = run({"--database", file, "--call", "Open_TaxList"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(lines(result.err), 1) << result.err;
    EXPECT_NE(result.err.find("another program"), std::string::npos) << result.err;
    ASSERT_EQ(sqlite3_open(file.toUtf8(), &db), SQLITE_OK);
    char **rows = nullptr;
    int count = 0;
    ASSERT_EQ(sqlite3_get_table(db, "select name from sqlite_master", &rows, &count, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_EQ(count, 1) << "no table was added";
    sqlite3_free_table(rows);
    sqlite3_close(db);
}

TEST_F(Program, SaysThatAFolderIsNoDatabaseAndThatAPathCannotBeCreated)
{
    const QString file = write("plain", "x");
    for (const QString &path : {home.path(), file + "/below.db"}) {
        const TRun result = run({"--database", path, "--call", "Open_TaxList"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(lines(result.err), 1) << result.err;
    }
}

TEST_F(Program, AMistypedDatabaseIsNotMade)
{
    const QString path = home.filePath("typo/company.db");
    const TRun result = run({"--database", path, "--call", "Open_TaxList"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "ketebionpap: database: no such file: " + path.toStdString() +
                              " (add --create to make a new database)\n");
    EXPECT_FALSE(QFile::exists(home.filePath("typo")));
}

TEST_F(Program, ALogInThatFailsSaysSoAndEndsWith1)
{
    const QString password = write("password", "not-the-password\n");
    const QString file = home.filePath("new.db");
    const TRun result = run({"--database", file, "--create", "--user", "ali", "--password-file", password,
                             "--call", "Open_TaxList"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "ketebionpap: cannot log in as ali: wrong name or password\n");
    EXPECT_EQ(result.out, "");
    const TRun missing = run({"--database", file, "--user", "ali", "--password-file", home.filePath("none"),
                              "--call", "Open_TaxList"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("cannot read "), std::string::npos);
}

TEST_F(Program, AnUnreachableServerGivesOneLineWithoutThePassword)
{
    const QString file = write(
        "odbc", "Driver=FreeTDS;Server=127.0.0.1;Port=9;Database=d;UID=u;PWD=TopSecret;LoginTimeout=3\n");
    const TRun result = run({"--odbc-file", file, "--call", "Open_TaxList"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(lines(result.err), 1) << result.err;
    EXPECT_EQ(result.err.find("TopSecret"), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "");
}

TEST_F(Program, ThePasswordIsNotInTheProcessListWhileItRuns)
{
    const QString file =
        write("odbc", "Driver=FreeTDS;Server=192.0.2.1;Database=d;UID=u;PWD=TopSecret;LoginTimeout=3\n");
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(program(), {"--odbc-file", file, "--call", "Open_TaxList"});
    ASSERT_TRUE(process.waitForStarted());
    const QByteArray list = read(u"/proc/%1/cmdline"_s.arg(process.processId()));
    EXPECT_TRUE(list.contains("--odbc-file"));
    EXPECT_FALSE(list.contains("TopSecret"));
    process.kill();
    process.waitForFinished();
}

/// The screens of the sources: what is named ..._FRM and is no base of others.
QStringList screensOfTheSources()
{
    QStringList screens;
    const QRegularExpression screen(
        "class (?:KETEBIONPAP_\\w+ )?(T\\w+_FRM)\\s+: public (?:\\w+<\\w+, )?(\\w+)");
    QStringList bases;
    for (const char *folder : {"/src", "/app"}) {
        QDirIterator files(QStringLiteral(KETEBIONPAP_SOURCE) + folder, {"*.h"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (auto found = screen.globalMatch(text); found.hasNext();) {
                const auto match = found.next();
                screens << match.captured(1);
                bases << match.captured(2);
            }
        }
    }
    screens.removeIf([&](const QString &name) { return bases.contains(name); });
    return screens;
}

QStringList picturesOfTheDocuments()
{
    QStringList names;
    const QRegularExpression link("pictures/([\\w-]+\\.png)\\)");
    for (const char *document : {"/README.md", "/docs/user-guide.md", "/docs/administrator.md"}) {
        QFile file(QStringLiteral(KETEBIONPAP_SOURCE) + document);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << document;
        const QString text = QString::fromUtf8(file.readAll());
        for (auto found = link.globalMatch(text); found.hasNext();)
            names << found.next().captured(1);
    }
    names.removeDuplicates();
    names.sort();
    return names;
}

TEST_F(Program, TheTourLeavesAPictureOfEveryScreenOnANewDatabaseOnly)
{
    const QString file = home.filePath("sample.db");
    const QStringList arguments = {"--database", file, "--demo", "--tour", home.filePath("pictures")};
    const TRun tour = run(arguments);
    EXPECT_EQ(tour.exitCode, 0) << tour.out << tour.err;
    EXPECT_EQ(tour.err, "");
    const QStringList screens = screensOfTheSources();
    EXPECT_GT(screens.size(), 30);
    const QStringList said = QString::fromStdString(tour.out).split(u'\n');
    for (const QString &screen : screens)
        EXPECT_EQ(said.filter(QRegularExpression("\\.png " + screen + "$")).isEmpty(), false)
            << screen.toStdString();
    const QStringList pictures = QDir(home.filePath("pictures")).entryList({"*.png"});
    EXPECT_EQ(said.filter(".png").size(), pictures.size()) << "no picture over another";
    EXPECT_EQ(picturesOfTheDocuments(),
              QDir(QStringLiteral(KETEBIONPAP_SOURCE "/docs/pictures")).entryList(QDir::Files))
        << "the documents' pictures are linked, and what is linked is there";
    for (const QString &name : picturesOfTheDocuments())
        EXPECT_TRUE(pictures.contains(name)) << name.toStdString() << " can be made again";
    for (const QString &name : pictures)
        EXPECT_FALSE(QImage(home.filePath("pictures/" + name)).isNull()) << name.toStdString();
    EXPECT_EQ(tour.out.find("skipped,"), std::string::npos) << tour.out;
    EXPECT_FALSE(QDir(home.filePath("config/ketebionpap")).exists())
        << "the user's own settings are not touched";

    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8(), &db), SQLITE_OK);
    char **rows = nullptr;
    int count = 0;
    ASSERT_EQ(sqlite3_get_table(db, "select Name from UserAccount", &rows, &count, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_EQ(count, 0) << "the next start makes the first administrator";
    sqlite3_free_table(rows);
    sqlite3_close(db);

    const TRun second = run(arguments);
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(second.err, "ketebionpap: the sample company goes into a new database only\n");
}

TEST_F(Program, ADatabaseFileAndItsSettingsArePrivateToTheUser)
{
    const QString password = write("password", "wrong-password\n");
    run({"--user", "ali", "--password-file", password, "--call", "Open_TaxList"});
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    for (const char *name : {"data/ketebionpap/ketebionpap.db", "config/ketebionpap/ketebionpap.ini"}) {
        ASSERT_TRUE(QFile::exists(home.filePath(name))) << name;
        EXPECT_FALSE(QFile::permissions(home.filePath(name)) & others) << name;
    }
}

TEST_F(Program, SaysInOneLineThatTheModuleIsMissing)
{
    // The program alone in a folder of its own, without the module beside it.
    const QString alone = home.filePath("ketebionpap");
    ASSERT_TRUE(QFile::copy(program(), alone));
    QProcessEnvironment variables = environment();
    variables.insert("LD_LIBRARY_PATH", KETEBIONPAP_BIN);
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(alone, {"--demo", "--call", "Open_TaxList"});
    ASSERT_TRUE(process.waitForFinished(60000));
    const std::string err = process.readAllStandardError().toStdString();
    EXPECT_EQ(process.exitCode(), 1) << err;
    EXPECT_EQ(lines(err), 1) << err;
    EXPECT_NE(err.find("Ketebionpap_ZLM"), std::string::npos) << err;
}

} // namespace
