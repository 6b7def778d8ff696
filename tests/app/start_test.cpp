#include "InProcess.h"
#include "Screens.h"

#include "app/Login_FRM.h"
#include "app/Program.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTextStream>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

void fill(QWidget *screen, std::initializer_list<std::pair<const char *, const char *>> inputs)
{
    for (const auto &[name, text] : inputs)
        Keys::retype(Keys::child(screen, name), text);
}

TEST_F(Screens, TheFirstStartMakesTheAdministratorAndLogsIn)
{
    TFirstUser_FRM dialog;
    const int result = Keys::runModal([&] { return dialog.exec(); },
                                      [&](QWidget *screen) {
                                          fill(screen, {{"User_EDT", "مدیر"},
                                                        {"FullName_EDT", "مریم کریمی"},
                                                        {"Password_EDT", "x1y2z3"},
                                                        {"Repeat_EDT", "x1y2z3"}});
                                          Keys::picture(screen, "first-user");
                                          Keys::press(screen, Qt::Key_Return);
                                      });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.User().FullName, QString("مریم کریمی"));
    EXPECT_TRUE(dialog.User().IsAdmin);
    EXPECT_FALSE(NoUserYet());
    EXPECT_FALSE(text("select PasswordHash from UserAccount").contains("x1y2z3"));
}

TEST_F(Screens, EachDialogOfTheStartOpensInItsFirstInputAndEnterGoesOnToTheLast)
{
    TWorkstation_FRM workstation("here");
    TFirstUser_FRM first;
    TLogin_FRM login;
    TChangePassword_FRM change;
    for (TStart_FRM *dialog : {static_cast<TStart_FRM *>(&workstation), static_cast<TStart_FRM *>(&first),
                               static_cast<TStart_FRM *>(&login), static_cast<TStart_FRM *>(&change)}) {
        dialog->OfferOtherDatabase();
        Keys::runModal([&] { return dialog->exec(); },
                       [&](QWidget *screen) {
                           Keys::waitFor([&] { return screen->isActiveWindow(); });
                           const auto inputs = screen->findChildren<QLineEdit *>();
                           for (qsizetype i = 0; i < inputs.size(); ++i) {
                               EXPECT_EQ(screen->focusWidget(), inputs.at(i))
                                   << screen->objectName().toStdString();
                               if (i + 1 < inputs.size())
                                   Keys::press(screen, Qt::Key_Return);
                           }
                           Keys::press(screen, Qt::Key_Tab);
                           EXPECT_EQ(screen->focusWidget()->objectName(), "Ok_BTN");
                       });
    }
}

TEST_F(Screens, TheFirstStartRefusesAWeakPasswordAndAnUnequalRepetition)
{
    TFirstUser_FRM dialog;
    Keys::runModal(
        [&] { return dialog.exec(); },
        [&](QWidget *screen) {
            fill(screen, {{"User_EDT", "a"}, {"Password_EDT", "x1y2z3"}, {"Repeat_EDT", "x1y2z4"}});
            Keys::press(screen, Qt::Key_F3);
            EXPECT_NE(told().find("یکسان نیستند"), std::string::npos);
            fill(screen, {{"Password_EDT", "x1"}, {"Repeat_EDT", "x1"}});
            Keys::press(screen, Qt::Key_F3);
            EXPECT_NE(told(), "");
            fill(screen, {{"User_EDT", ""}});
            Keys::press(screen, Qt::Key_F3);
            EXPECT_EQ(messages.take().last(), "MsgRequiredField(نام کاربر)");
            EXPECT_TRUE(screen->isVisible());
        });
    EXPECT_TRUE(NoUserYet());
}

TEST_F(Screens, LogInTakesTheRightPasswordWhateverTheNamesCase)
{
    user("Ali");
    TLogin_FRM dialog;
    const int result =
        Keys::runModal([&] { return dialog.exec(); },
                       [&](QWidget *screen) {
                           fill(screen, {{"User_EDT", "aLI"}, {"Password_EDT", "secret-b7qx2"}});
                           Keys::press(screen, Qt::Key_Return);
                       });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.User().Name, "Ali");
    TLogin_FRM next;
    EXPECT_EQ(next.User_EDT->text(), "Ali") << "the last user is offered again";
}

TEST_F(Screens, AWrongPasswordIsRefusedAndTheButtonWaitsAfterMany)
{
    user("ali");
    TLogin_FRM dialog("ali");
    Keys::runModal([&] { return dialog.exec(); },
                   [&](QWidget *screen) {
                       QWidget *button = Keys::child(screen, "Ok_BTN");
                       for (int i = 0; i < 3; ++i) {
                           fill(screen, {{"Password_EDT", "wrong"}});
                           Keys::press(screen, Qt::Key_Return);
                           EXPECT_NE(told(), "") << i;
                           EXPECT_TRUE(button->isEnabled()) << "the first wrong ones cost nothing";
                           EXPECT_EQ(dialog.Password_EDT->text(), "") << "and are not left standing";
                       }
                       fill(screen, {{"Password_EDT", "wrong"}});
                       Keys::press(screen, Qt::Key_Return);
                       fill(screen, {{"Password_EDT", "secret-b7qx2"}});
                       Keys::press(screen, Qt::Key_Return);
                       EXPECT_FALSE(button->isEnabled());
                       EXPECT_TRUE(Keys::child(screen, "Text_LBL")->isVisible());
                       EXPECT_TRUE(screen->isVisible()) << "the right password does not shorten the wait";
                       Keys::picture(screen, "login-waits");
                       EXPECT_TRUE(Keys::waitFor([&] { return button->isEnabled(); }, 6000));
                       fill(screen, {{"Password_EDT", "secret-b7qx2"}});
                       Keys::press(screen, Qt::Key_Return);
                   });
    EXPECT_EQ(dialog.User().Name, "ali");
}

TEST_F(Screens, ADisabledUserIsToldSoOnlyWithTheRightPassword)
{
    const int code = user("ali");
    run(QString("update UserAccount set IsActive=0 where Code=%1").arg(code));
    TLogin_FRM dialog("ali");
    Keys::runModal([&] { return dialog.exec(); },
                   [&](QWidget *screen) {
                       fill(screen, {{"Password_EDT", "wrong"}});
                       Keys::press(screen, Qt::Key_Return);
                       const std::string wrong = told();
                       fill(screen, {{"Password_EDT", "secret-b7qx2"}});
                       Keys::press(screen, Qt::Key_Return);
                       EXPECT_NE(told(), wrong);
                       EXPECT_TRUE(screen->isVisible());
                   });
    EXPECT_EQ(dialog.User().Code, 0);
}

TEST_F(Screens, TextsThatLookLikeStatementsDoNoHarmInTheLogIn)
{
    user("ali");
    TLogin_FRM dialog;
    Keys::runModal([&] { return dialog.exec(); },
                   [&](QWidget *screen) {
                       fill(screen, {{"User_EDT", "ali' or 1=1 --"},
                                     {"Password_EDT", "'; delete from UserAccount; --"}});
                       Keys::press(screen, Qt::Key_Return);
                       EXPECT_TRUE(screen->isVisible());
                       dialog.Password_EDT->setText(QString(10000, 'x'));
                       Keys::press(screen, Qt::Key_F3);
                       EXPECT_TRUE(screen->isVisible());
                   });
    EXPECT_EQ(text("select count(*) from UserAccount"), "1");
}

TEST_F(Screens, AUserChangesTheOwnPassword)
{
    UserInfo = TUserInfo{user("ali"), "ali", "ali", false, true};
    TChangePassword_FRM dialog;
    const int result = Keys::runModal(
        [&] { return dialog.exec(); },
        [&](QWidget *screen) {
            fill(screen, {{"Old_EDT", "wrong"}, {"New_EDT", "better-k9zt4"}, {"Repeat_EDT", "better-k9zt4"}});
            Keys::press(screen, Qt::Key_F3);
            EXPECT_TRUE(screen->isVisible());
            fill(screen, {{"Old_EDT", "secret-b7qx2"}});
            Keys::press(screen, Qt::Key_F3);
        });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(LogIn("ali", "better-k9zt4").result, TLoginResult::Ok);
}

TEST_F(Screens, AWorkstationTakesANumberThatNobodyHas)
{
    ASSERT_TRUE(RegisterWorkstation(1, "another machine"));
    TWorkstation_FRM dialog("my machine");
    EXPECT_EQ(dialog.Index_EDT->text(), "2") << "the first free one is offered";
    const int result =
        Keys::runModal([&] { return dialog.exec(); },
                       [&](QWidget *screen) {
                           fill(screen, {{"Index_EDT", "1"}});
                           Keys::press(screen, Qt::Key_F3);
                           EXPECT_NE(told().find("از آن ایستگاه دیگری است"), std::string::npos);
                           fill(screen, {{"Index_EDT", "0"}});
                           Keys::press(screen, Qt::Key_F3);
                           EXPECT_NE(told().find("بزرگتر از صفر"), std::string::npos);
                           fill(screen, {{"Index_EDT", "۷"}});
                           Keys::picture(screen, "workstation");
                           Keys::press(screen, Qt::Key_F3);
                       });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.ComIndex(), 7);
    EXPECT_EQ(text("select Name from Workstation where Com_Index=7"), "my machine");
}

TEST_F(InProcess, CallPrintsTheCodeOfTheChosenMethod)
{
    const int result = Keys::runModal(
        [&] {
            return run({"--demo", "--call", "Select_CalculatingMethods"});
        },
        [](QWidget *screen) {
            EXPECT_EQ(screen->objectName(), "TCalcMethodList_FRM");
            Keys::press(screen, Qt::Key_Home, Qt::ControlModifier);
            Keys::press(screen, Qt::Key_Return);
        });
    EXPECT_EQ(result, 0) << err.toStdString();
    EXPECT_EQ(out, "1\n");
}

TEST_F(InProcess, CallPrintsZeroWhenNothingWasChosen)
{
    const int result = Keys::runModal(
        [&] {
            return run({"--demo", "--call", "Select_CalculatingMethods"});
        },
        [](QWidget *screen) { Keys::press(screen, Qt::Key_Escape); });
    EXPECT_EQ(result, 0) << err.toStdString();
    EXPECT_EQ(out, "0\n");
}

TEST_F(InProcess, AFirstStartMakesTheAdministratorAndTheNextOneAsksForThePassword)
{
    ScriptedMessages messages;
    QStringList shown;
    const auto answer = [&](QWidget *screen) {
        shown << screen->objectName();
        if (auto *name = screen->findChild<QLineEdit *>("User_EDT"))
            Keys::retype(name, "boss");
        for (const char *input : {"Password_EDT", "Repeat_EDT"}) {
            if (auto *edit = screen->findChild<QLineEdit *>(input))
                Keys::retype(edit, "x1y2z3");
        }
        Keys::press(screen, Qt::Key_F3);
    };
    // Each dialog is a modal loop of its own; the entry's screen is the last one.
    const auto start = [&] {
        shown.clear();
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            QWidget *screen = QApplication::activeModalWidget();
            if (!screen || !screen->isVisible())
                return;
            if (screen->inherits("TStart_FRM"))
                answer(screen);
            else
                static_cast<QDialog *>(screen)->reject();
        });
        poll.start(20);
        return run({"--call", "Open_CalculatingMethods"});
    };
    EXPECT_EQ(start(), 0) << err.toStdString();
    EXPECT_EQ(shown, QStringList({"TFirstUser_FRM"})) << "nobody is asked for a number by --call";
    EXPECT_EQ(start(), 0) << err.toStdString();
    EXPECT_EQ(shown, QStringList({"TLogin_FRM"}));
}

TEST_F(InProcess, TheFirstStartAsksForTheNumberThenForTheAdministratorThenShowsTheWindow)
{
    ScriptedMessages messages;
    QStringList shown;
    const auto answer = [&](QWidget *screen) {
        shown << screen->objectName();
        for (const auto &[name, text] : {std::pair("User_EDT", "boss"),
                                         {"Password_EDT", "x1y2z3"},
                                         {"Repeat_EDT", "x1y2z3"},
                                         {"Index_EDT", "31"}}) {
            if (auto *input = screen->findChild<QLineEdit *>(name))
                Keys::retype(input, text);
        }
        Keys::press(screen, Qt::Key_F3);
    };
    const auto start = [&] {
        shown.clear();
        return runWithWindow([&] { return run({}); }, answer,
                             [&](QWidget *window) {
                                 EXPECT_EQ(window->findChild<QLabel *>("Workstation_LBL")->text(),
                                           u"ایستگاه: 31"_s);
                                 window->close();
                             });
    };
    EXPECT_EQ(start(), 0) << err.toStdString();
    EXPECT_EQ(shown, QStringList({"TWorkstation_FRM", "TFirstUser_FRM"}));
    EXPECT_EQ(start(), 0) << err.toStdString();
    EXPECT_EQ(shown, QStringList({"TLogin_FRM"})) << "number and administrator are remembered";
}

TEST_F(InProcess, AnotherUserLogsInWithoutANewStart)
{
    ScriptedMessages messages;
    int windows = 0;
    QStringList users;
    const auto answer = [&](QWidget *screen) {
        for (const auto &[name, text] : {std::pair("User_EDT", "boss"),
                                         {"FullName_EDT", "boss"},
                                         {"Password_EDT", "x1y2z3"},
                                         {"Repeat_EDT", "x1y2z3"}}) {
            if (auto *input = screen->findChild<QLineEdit *>(name))
                Keys::retype(input, text);
        }
        Keys::press(screen, Qt::Key_F3);
    };
    EXPECT_EQ(runWithWindow([&] { return run({"--demo"}); }, answer,
                            [&](QWidget *window) {
                                users << window->findChild<QLabel *>("User_LBL")->text();
                                if (++windows == 1)
                                    window->findChild<QAction *>("LogOut_ACT")->trigger();
                                else
                                    window->close();
                            }),
              0)
        << err.toStdString();
    EXPECT_EQ(users, QStringList({u"کاربر: مدیر شرکت نمونه"_s, u"کاربر: boss"_s}))
        << "the sample company has no account, so its first one is made now";
}

TEST_F(InProcess, ASampleCompanyOnADatabaseWithAnotherFirstWorkstationIsRefusedWithAWord)
{
    const QString file = home.filePath("others.db");
    {
        TSession session;
        session.open({file, {}, TConnection::Missing::Create});
        ASSERT_TRUE(RegisterWorkstation(1, u"ایستگاه دیگر"_s));
    }
    EXPECT_EQ(run({"--database", file, "--demo", "--call", "Open_TaxList"}), 1);
    EXPECT_EQ(err.count('\n'), 1) << err.toStdString();
    EXPECT_TRUE(err.contains("workstation 1 of this database is another one")) << err.toStdString();
}

TEST_F(InProcess, ANamedServerThatCannotBeReachedIsToldAndEndsTheStart)
{
    ScriptedMessages messages;
    const auto told = [&](const QString &place, const QString &words) {
        EXPECT_EQ(run({"--odbc", place}), 1);
        EXPECT_TRUE(messages.last().text.contains(words)) << messages.last().text.toStdString();
    };
    told("Server=127.0.0.1;Database=d", u"راه انداز ODBC"_s);
    told("Driver=FreeTDS;Server=127.0.0.1;Port=1;Database=d;LoginTimeout=2", u"نام سرور، شماره درگاه"_s);
    EXPECT_EQ(messages.all().size(), 2);
    EXPECT_EQ(err.count('\n'), 2) << err.toStdString();
}

/// Turns to another database by F8 in the dialog `where`, and leaves the dialog that comes up there.
TEST_F(InProcess, EachDialogOfTheStartLeadsToTheDatabaseSettings)
{
    ScriptedMessages messages;
    const QString other = home.filePath("other.db");
    for (const char *where : {"TWorkstation_FRM", "TFirstUser_FRM", "TLogin_FRM"}) {
        const QString first = home.filePath(QLatin1String(where) + ".db");
        IniOptions.load();
        ASSERT_TRUE((TDatabaseChoice{first, {}}.store()));
        QFile::remove(other);
        // Neither file is there yet: the user is asked before one is made.
        if (where == "TLogin_FRM"_L1)
            messages.answer({TAnswer::Yes});
        else
            messages.answer({TAnswer::Yes, TAnswer::Yes});
        QStringList shown;
        bool turned = false;
        if (where == "TLogin_FRM"_L1) {
            TSession session;
            session.open({first, {}, TConnection::Missing::Create});
            ASSERT_EQ(CreateFirstAdministrator("boss", "boss", "x1y2z3"), TLoginResult::Ok);
        }
        const auto answer = [&](QWidget *screen) {
            shown << screen->objectName();
            if (auto *input = screen->findChild<QLineEdit *>("File_EDT")) {
                Keys::retype(input, other);
                Keys::press(screen, Qt::Key_F3);
            } else if (turned) {
                Keys::press(screen, Qt::Key_Escape);
            } else if (screen->objectName() == where) {
                turned = true;
                Keys::press(screen, Qt::Key_F8);
            } else {
                Keys::press(screen, Qt::Key_F3);
            }
        };
        EXPECT_EQ(runWithWindow([&] { return run({}); }, answer, [](QWidget *window) { window->close(); }),
                  1);
        EXPECT_EQ(shown.filter("TDatabaseSettings_FRM").size(), 1) << where;
        EXPECT_TRUE(QFile::exists(other)) << where;
        EXPECT_EQ(TDatabaseChoice::stored().file, other) << where;
    }
}

TEST_F(InProcess, AFirstStartThatTurnsToAnotherDatabaseLeavesNoFileBehind)
{
    ScriptedMessages messages;
    messages.answer({TAnswer::Yes}); // the other file is to be made
    const QString other = home.filePath("other.db");
    QStringList shown;
    const auto answer = [&](QWidget *screen) {
        shown << screen->objectName();
        if (auto *input = screen->findChild<QLineEdit *>("File_EDT")) {
            EXPECT_TRUE(QFile::exists(TDatabaseChoice::ordinaryFile()));
            Keys::retype(input, other);
            Keys::press(screen, Qt::Key_F3);
        } else if (QFile::exists(other)) {
            Keys::press(screen, Qt::Key_Escape);
        } else {
            Keys::press(screen, shown.size() == 1 ? Qt::Key_F3 : Qt::Key_F8);
        }
    };
    EXPECT_EQ(runWithWindow([&] { return run({}); }, answer, [](QWidget *window) { window->close(); }), 1);
    EXPECT_EQ(shown.mid(0, 3), QStringList({"TWorkstation_FRM", "TFirstUser_FRM", "TDatabaseSettings_FRM"}));
    EXPECT_TRUE(QFile::exists(other));
    const QFileInfo ordinary(TDatabaseChoice::ordinaryFile());
    EXPECT_EQ(ordinary.dir().entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(InProcess, AServerThatAsksForAPasswordIsLeftForAFile)
{
    IniOptions.load();
    ASSERT_TRUE((TDatabaseChoice{{}, "Driver=FreeTDS;Server=db.example;Database=d;UID=u"}.store()));
    ScriptedMessages messages;
    QStringList shown;
    const auto answer = [&](QWidget *screen) {
        shown << screen->objectName();
        if (auto *file = screen->findChild<QRadioButton *>("File_RB")) {
            file->setChecked(true);
            Keys::press(screen, Qt::Key_F3);
        } else {
            Keys::press(screen, screen->objectName() == "TServerPassword_FRM" ? Qt::Key_F8 : Qt::Key_Escape);
        }
    };
    EXPECT_EQ(runWithWindow([&] { return run({}); }, answer, [](QWidget *window) { window->close(); }), 1);
    EXPECT_EQ(shown, QStringList({"TServerPassword_FRM", "TDatabaseSettings_FRM", "TWorkstation_FRM"}));
}

TEST_F(InProcess, AShutOutUserAndAUserWithoutRightsGetNoScreen)
{
    const QString file = home.filePath("suite.db");
    {
        TSession session;
        session.open({file, {}, TConnection::Missing::Create});
        UserInfo = {0, "boss", {}, true, true};
        for (const bool active : {true, false}) {
            TUserInfo user{0, active ? "clerk" : "gone", {}, false, active};
            ASSERT_EQ(SaveUser(user, "secret-b7qx2"), TLoginResult::Ok);
        }
    }
    QFile password(home.filePath("password"));
    ASSERT_TRUE(password.open(QIODevice::WriteOnly));
    password.write("secret-b7qx2\n");
    password.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    password.close();
    ScriptedMessages messages;
    const auto call = [&](const char *user, const char *entry) {
        return run(
            {"--database", file, "--user", user, "--password-file", password.fileName(), "--call", entry});
    };
    EXPECT_EQ(call("gone", "Select_TaxInfo"), 1);
    EXPECT_EQ(err, "ketebionpap: cannot log in as gone: the user is shut out\n");
    EXPECT_EQ(out, "");
    EXPECT_EQ(call("clerk", "Select_TaxInfo"), 0);
    EXPECT_EQ(out, "0\n") << "as after a cancel";
    ASSERT_EQ(messages.all().size(), 1);
    EXPECT_EQ(messages.last().operation, "MsgNoPermission");
}

} // namespace
