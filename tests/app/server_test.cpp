#include "Screens.h"

#include "app/Login_FRM.h"
#include "app/Program.h"
#include "host/database/OdbcConnectionString.h"
#include "support/TestServer.h"

#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

// The program on a server: the password comes from a file, from the environment or from whoever sits there, and is
// seen nowhere else.

namespace {

class ProgramOnAServer : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        place = TestServer::ownDatabase().connectionString();
        password = TOdbcConnectionString(place).value("PWD");
        ASSERT_FALSE(password.isEmpty()) << "the tests want a connection string with a password";
        qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
        qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    }
    void TearDown() override { UserInfo = {}; }
    QString write(const QString &name, const QString &text)
    {
        QFile file(home.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8() + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        return file.fileName();
    }
    /// Starts the real program, which opens the database and then refuses the user; answers what could be seen of it.
    QByteArray seenOf(QStringList arguments, const QProcessEnvironment &environment)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setProcessEnvironment(environment);
        arguments << "--user"
                  << "ali"
                  << "--password-file" << write("wrong", "not-the-password") << "--call"
                  << "Open_TaxList";
        process.start(QStringLiteral(KETEBIONPAP_BIN "/ketebionpap"), arguments);
        EXPECT_TRUE(process.waitForStarted());
        QFile commandLine(u"/proc/%1/cmdline"_s.arg(process.processId()));
        EXPECT_TRUE(commandLine.open(QIODevice::ReadOnly));
        QByteArray seen = commandLine.readAll();
        EXPECT_TRUE(seen.contains("Open_TaxList"));
        EXPECT_TRUE(process.waitForFinished(60000));
        const QByteArray said = process.readAll();
        EXPECT_EQ(process.exitCode(), 1);
        EXPECT_TRUE(said.contains("cannot log in as ali")) << said.toStdString();
        return seen + said;
    }

    QTemporaryDir home;
    QString place;
    QString password;
};

TEST_F(ProgramOnAServer, ThePasswordOfAFileOrOfTheEnvironmentIsInNoOutputNoArgumentAndNoSetting)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.remove("KETEBIONPAP_TEST_ODBC");
    const QString file = write("place", place);
    QByteArray seen = seenOf({"--odbc-file", file}, environment);
    environment.insert("KETEBIONPAP_ODBC", place);
    seen += seenOf({}, environment);
    EXPECT_FALSE(seen.contains(password.toUtf8()));
    ASSERT_TRUE(QFile::remove(file));
    int files = 0;
    QDirIterator entries(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        QFile one(entries.next());
        ASSERT_TRUE(one.open(QIODevice::ReadOnly));
        EXPECT_FALSE(one.readAll().contains(password.toUtf8())) << one.fileName().toStdString();
        ++files;
    }
    EXPECT_GE(files, 2) << "the workstation's options are among them";
}

TEST_F(ProgramOnAServer, AStringWithoutItsPasswordAsksForIt)
{
    QString out;
    QString err;
    QStringList shown;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        QWidget *screen = QApplication::activeModalWidget();
        if (!screen || !screen->isVisible())
            return;
        shown << screen->objectName();
        if (auto *input = screen->findChild<QLineEdit *>("Password_EDT")) {
            Keys::retype(input, password);
            Keys::press(screen, Qt::Key_Return);
        } else {
            Keys::press(screen, Qt::Key_Escape);
        }
    });
    poll.start(20);
    QTextStream outStream(&out), errStream(&err);
    const int result =
        RunProgram(TCommandLine::parse({"--odbc", TOdbcConnectionString(place).withoutPassword().text(),
                                        "--demo", "--call", "Select_CalculatingMethods"}),
                   outStream, errStream);
    EXPECT_EQ(result, 0) << err.toStdString();
    EXPECT_EQ(out, "0\n");
    EXPECT_EQ(shown, QStringList({"TServerPassword_FRM", "TCalcMethodList_FRM"}));
}

} // namespace
