#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

// The real program, started by somebody who may write the database and has lost the last password.

namespace {

const QString lost = u"lost-word-x81"_s;
const QString found = u"found-word-y92"_s;

class ResetsAdministrator : public testing::Test {
protected:
    ResetsAdministrator() : db(TestDatabase::FileAlways)
    {
        UserInfo = {0, "boss", {}, true, true};
        EXPECT_EQ(CreateFirstAdministrator("boss", {}, lost), TLoginResult::Ok);
        UserInfo = {};
        db.run("update UserAccount set IsActive=0");
    }
    ~ResetsAdministrator() override { UserInfo = {}; }
    QStringList arguments(const QString &name) const
    {
        return {"--database", db.path(), "--reset-administrator", name};
    }
    QString fileWith(const QString &password, QFile::Permissions others = {})
    {
        QFile file(home.filePath("password"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(password.toUtf8() + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | others);
        return file.fileName();
    }
    /// The exit code, and all that was said.
    std::pair<int, QString> run(const QStringList &arguments)
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
        environment.insert("XDG_DATA_HOME", home.filePath("data"));
        for (const char *display : {"DISPLAY", "QT_QPA_PLATFORM", "WAYLAND_DISPLAY"})
            environment.remove(display);
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(KETEBIONPAP_BIN "/ketebionpap", arguments);
        program.closeWriteChannel();
        EXPECT_TRUE(program.waitForFinished(60000));
        return {program.exitCode(), QString::fromUtf8(program.readAll())};
    }
    /// The same on a terminal, where `typed` is entered line by line, each when it is asked for.
    std::pair<int, QString> runOnTerminal(const QStringList &arguments, const QStringList &typed)
    {
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            QList<QByteArray> texts{KETEBIONPAP_BIN "/ketebionpap"};
            for (const QString &argument : arguments)
                texts << argument.toUtf8();
            QList<char *> pointers;
            for (QByteArray &text : texts)
                pointers << text.data();
            pointers << nullptr;
            execv(pointers.first(), pointers.data());
            _exit(99);
        }
        QByteArray seen;
        qsizetype entered = 0;
        QElapsedTimer watch;
        watch.start();
        while (watch.elapsed() < 60000) {
            pollfd ready{terminal, POLLIN, 0};
            if (poll(&ready, 1, 100) <= 0)
                continue;
            char bytes[500];
            const ssize_t count = read(terminal, bytes, sizeof bytes);
            if (count <= 0)
                break;
            seen.append(bytes, count);
            if (entered < typed.size() && seen.count(": ") > entered) {
                const QByteArray line = typed.at(entered++).toUtf8() + '\n';
                EXPECT_EQ(write(terminal, line.constData(), size_t(line.size())), line.size());
            }
        }
        int status = -1;
        waitpid(child, &status, 0);
        close(terminal);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, QString::fromUtf8(seen)};
    }
    QTemporaryDir home;
    TestDatabase db;
};

} // namespace

TEST_F(ResetsAdministrator, APasswordFileGivesTheNewPasswordWithoutALogInAndWithoutADisplay)
{
    EXPECT_EQ(LogIn("boss", lost).result, TLoginResult::Inactive);
    const auto [code, said] = run(arguments("BOSS") + QStringList{"--password-file", fileWith(found)});
    EXPECT_EQ(code, 0) << said.toStdString();
    EXPECT_EQ(said, "boss is an active administrator with the new password\n");
    EXPECT_EQ(LogIn("boss", lost).result, TLoginResult::WrongNameOrPassword);
    EXPECT_TRUE(LogIn("boss", found).user.IsAdmin);
    EXPECT_EQ(db.text("select count(*) from UserEvent where EventText like '%بازنشانی مدیر%'"), "1");
}

TEST_F(ResetsAdministrator, TheTerminalIsAskedTwiceAndShowsNothing)
{
    const auto [differs, first] = runOnTerminal(arguments("boss"), {found, lost});
    EXPECT_EQ(differs, 1);
    EXPECT_TRUE(first.contains("differ")) << first.toStdString();
    EXPECT_EQ(LogIn("boss", lost).result, TLoginResult::Inactive);
    const auto [code, said] = runOnTerminal(arguments("boss"), {found, found});
    EXPECT_EQ(code, 0) << said.toStdString();
    EXPECT_FALSE(said.contains(found)) << said.toStdString();
    EXPECT_TRUE(LogIn("boss", found).user.IsAdmin);
}

TEST_F(ResetsAdministrator, WhatCannotBeIsToldInOneLineAndChangesNothing)
{
    struct TCase {
        QStringList arguments;
        QString told;
    };
    const QString good = fileWith(found);
    const TCase cases[] = {
        {arguments("nobody") + QStringList{"--password-file", good}, "there is no user nobody"},
        {arguments("boss"), "no terminal"},
        {{"--database", home.filePath("none.db"), "--reset-administrator", "boss", "--password-file", good},
         "none.db"}};
    for (const auto &[given, told] : cases) {
        const auto [code, said] = run(given);
        EXPECT_EQ(code, 1) << told.toStdString();
        EXPECT_TRUE(said.contains(told)) << said.toStdString();
        EXPECT_EQ(said.count(u'\n'), 1) << said.toStdString();
    }
    EXPECT_FALSE(QFile::exists(home.filePath("none.db")));
    const auto [weak, why] = run(arguments("boss") + QStringList{"--password-file", fileWith("123456")});
    EXPECT_EQ(weak, 1);
    EXPECT_TRUE(why.contains(u"گذرواژه"_s)) << why.toStdString();
    const auto [open, others] =
        run(arguments("boss") + QStringList{"--password-file", fileWith(found, QFile::ReadOther)});
    EXPECT_EQ(open, 1);
    EXPECT_TRUE(others.contains("chmod 600")) << others.toStdString();
    EXPECT_EQ(run(arguments("boss") + QStringList{"--user", "x"}).first, 2);
    EXPECT_EQ(LogIn("boss", lost).result, TLoginResult::Inactive);
}
