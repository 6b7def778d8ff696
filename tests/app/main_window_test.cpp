#include "Screens.h"

#include "app/MainWindow.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

#include <csignal>
#include <sqlite3.h>
#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList buttonsOf(const TMain_FRM &window)
{
    QStringList names;
    for (const auto *button : window.findChildren<QPushButton *>())
        names << button->objectName();
    return names;
}

QStringList itemsOf(const TMain_FRM &window, const char *menu)
{
    QStringList names;
    if (auto *found = window.findChild<QMenu *>(menu)) {
        for (const QAction *item : found->actions())
            names << item->objectName();
    }
    return names;
}

void showActive(TMain_FRM &window)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(Keys::waitFor([&] { return window.isActiveWindow(); }));
}

TEST_F(Screens, ATaxTableIsPickedFromTheModulesOwnList)
{
    run("insert into TaxMain(Code, Title, Comment) values(7, 'seven', '')");
    run("insert into TaxMain(Code, Title, Comment) values(9, 'nine', '')");
    EXPECT_EQ(Keys::runModal([] { return Select_Entity(cspTax, {}, false); },
                             [](QWidget *screen) {
                                 EXPECT_EQ(screen->objectName(), "TTaxList_FRM");
                                 Keys::press(screen, Qt::Key_Up);
                                 Keys::press(screen, Qt::Key_Return);
                             }),
              7);
    EXPECT_EQ(Keys::runModal([] { return Select_Entity(cspTax, {}, false); },
                             [](QWidget *screen) { Keys::press(screen, Qt::Key_Escape); }),
              0);
}

TEST_F(Screens, AnAdministratorSeesEveryEntryAndTheAdministration)
{
    TMain_FRM window(session);
    showActive(window);
    EXPECT_EQ(buttonsOf(window).size(), 7);
    EXPECT_EQ(itemsOf(window, "Select_MNU").mid(7),
              QStringList({"", "PickIntoOrder_ACT", "PickIntoOutput_ACT"}));
    EXPECT_EQ(itemsOf(window, "Administration_MNU"),
              QStringList({"Users_ACT", "Events_ACT", "Locks_ACT", "Workstations_ACT"}));
    Keys::picture(&window, "main-window");
}

TEST_F(Screens, AUserSeesOnlyWhatMayBeOpened)
{
    const int code = user("ali");
    EXPECT_TRUE(SetRightsOfUser(code, {{cspTax, cpOpen}, {cspStaff, cpNew}}));
    UserInfo = LogIn("ali", "secret-b7qx2").user;
    TMain_FRM window(session);
    showActive(window);
    EXPECT_EQ(buttonsOf(window), QStringList({"Open_TaxList_BTN"}));
    EXPECT_EQ(itemsOf(window, "Select_MNU"), QStringList({"Select_StaffGroup", "Select_TaxInfo"}));
    EXPECT_EQ(window.findChild<QMenu *>("Administration_MNU"), nullptr);
    EXPECT_EQ(told(), "") << "building the window asks for rights without a word";
}

TEST_F(Screens, AUserWithoutAnyRightIsToldSoInTheWindow)
{
    user("ali");
    UserInfo = LogIn("ali", "secret-b7qx2").user;
    TMain_FRM window(session);
    showActive(window);
    EXPECT_TRUE(buttonsOf(window).isEmpty());
    QStringList texts;
    for (const auto *label : window.centralWidget()->findChildren<QLabel *>())
        texts << label->text();
    EXPECT_TRUE(texts.join(' ').contains(u"دسترسی ندارید"_s));
    Keys::picture(&window, "main-window-without-rights");
}

TEST_F(Screens, TheStatusBarSaysWhoWhereAndWhen)
{
    UserInfo.FullName = u"مریم کریمی"_s;
    IniOptions.Com_Index = 12;
    TMain_FRM window(session);
    const auto shown = [&](const char *name) { return window.findChild<QLabel *>(name)->text(); };
    EXPECT_EQ(shown("User_LBL"), u"کاربر: مریم کریمی"_s);
    EXPECT_EQ(shown("Workstation_LBL"), u"ایستگاه: 12"_s);
    EXPECT_TRUE(shown("Database_LBL").contains(session.connection().displayName().section('/', -1)));
    EXPECT_FALSE(shown("Database_LBL").contains("PWD", Qt::CaseInsensitive));
    EXPECT_TRUE(shown("Date_LBL").contains(NowDate()));
}

TEST_F(Screens, TheStatusBarSaysWhichServerAndHowTheLineToItIsKept)
{
    TMain_FRM window(session);
    showActive(window);
    const auto *label = window.findChild<QLabel *>("Line_LBL");
    ASSERT_NE(label, nullptr);
    const TLineState line = session.connection().line();
    EXPECT_EQ(label->isVisible(), line.toServer) << "a file has no line";
    if (line.toServer) {
        EXPECT_TRUE(label->text().contains(line.server));
        EXPECT_TRUE(label->text().contains(PrivacyText(line.privacy))) << label->text().toStdString();
    }
}

TEST_F(Screens, AKeyOpensAnEntryAndEscComesBack)
{
    TMain_FRM window(session);
    showActive(window);
    const QString opened = [&] {
        QString name;
        Keys::runModal(
            [&] {
                Keys::press(&window, Qt::Key_2, Qt::ControlModifier);
                return 0;
            },
            [&](QWidget *screen) {
                name = screen->objectName();
                Keys::press(screen, Qt::Key_Escape);
            });
        return name;
    }();
    EXPECT_EQ(opened, "TCalcMethodList_FRM");
}

TEST_F(Screens, ArrowsWalkOverTheButtonsAndEnterOpens)
{
    TMain_FRM window(session);
    showActive(window);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Open_PayRollInfo_BTN");
    Keys::press(&window, Qt::Key_Left);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Open_CalculatingMethods_BTN");
    Keys::press(&window, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Open_WorkCalender_BTN");
    Keys::press(&window, Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Open_TaxList_BTN");
    Keys::press(&window, Qt::Key_Up);
    Keys::press(&window, Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Open_PayRollInfo_BTN") << "the edge holds";
    Keys::press(&window, Qt::Key_Left);
    QString name;
    Keys::runModal(
        [&] {
            Keys::press(&window, Qt::Key_Return);
            return 0;
        },
        [&](QWidget *screen) { name = screen->objectName(); });
    EXPECT_EQ(name, "TCalcMethodList_FRM");
}

TEST_F(Screens, F10GoesToTheMenus)
{
    TMain_FRM window(session);
    showActive(window);
    Keys::press(&window, Qt::Key_F10);
    ASSERT_NE(window.menuBar()->activeAction(), nullptr);
    EXPECT_EQ(window.menuBar()->activeAction()->menu()->objectName(), "File_MNU");
}

TEST_F(Screens, ASelectionShowsWhatItReturned)
{
    run("insert into CalcMethod(Code, Title) values(41, 'x')");
    TMain_FRM window(session);
    showActive(window);
    const TEntryPoint &entry = *EntryPoints::find("Select_CalculatingMethods");
    const auto select = [&](Qt::Key key) {
        Keys::runModal(
            [&] {
                window.OpenEntry(entry);
                return 0;
            },
            [&](QWidget *screen) { Keys::press(screen, key); });
        return window.statusBar()->currentMessage();
    };
    EXPECT_EQ(select(Qt::Key_Return), u"کد انتخاب شده: 41"_s);
    EXPECT_EQ(select(Qt::Key_Escape), u"چیزی انتخاب نشد."_s);
}

TEST_F(Screens, ALostConnectionIsAskedAboutAndMadeAgain)
{
    TMain_FRM window(session);
    showActive(window);
    session.connection().close();
    messages.answer({TAnswer::No});
    window.OpenEntry(*EntryPoints::find("Open_CalculatingMethods"));
    EXPECT_NE(told().find("دوباره وصل شود؟"), std::string::npos);
    EXPECT_FALSE(session.connection().isOpen());

    messages.answer({TAnswer::Yes});
    QString name;
    Keys::runModal(
        [&] {
            window.OpenEntry(*EntryPoints::find("Open_CalculatingMethods"));
            return 0;
        },
        [&](QWidget *screen) { name = screen->objectName(); });
    EXPECT_EQ(name, "TCalcMethodList_FRM");
    EXPECT_TRUE(session.connection().isOpen());
}

TEST_F(Screens, AMissingModuleIsToldToTheUser)
{
    TModule module(home.filePath("Ketebionpap_ZLM.so"));
    EXPECT_FALSE(module.load());
    EXPECT_FALSE(module.errorText().isEmpty());
    bool missing = false;
    EXPECT_EQ(module.call(*EntryPoints::find("Select_TaxInfo"), {}, &missing), 0);
    EXPECT_TRUE(missing);
}

/// Names a file in a dialog of files and accepts it.
void nameFile(QWidget *screen, const QString &file)
{
    auto *dialog = qobject_cast<QFileDialog *>(screen);
    ASSERT_NE(dialog, nullptr);
    Keys::retype(Keys::child(dialog, "fileNameEdit"), file);
    Keys::press(dialog, Qt::Key_Return);
}

TEST_F(ScreensOnAFile, ABackupIsMadeAndRestoredFromTheMenu)
{
    TMain_FRM window(session);
    showActive(window);
    run("insert into StaffGroup(Code, Name) values(7, 'before')");
    const QString file = home.filePath("b.db");
    const auto choose = [&](const char *item, const QString &name) {
        Keys::runModal(
            [&] {
                window.findChild<QAction *>(item)->trigger();
                return 0;
            },
            [&](QWidget *screen) { nameFile(screen, name); });
    };
    choose("Backup_ACT", file);
    EXPECT_TRUE(QFile::exists(file));
    run("update StaffGroup set Name='after' where Code=7");

    bool loggedOut = false;
    QObject::connect(&window, &TMain_FRM::logOutWanted, [&] { loggedOut = true; });
    messages.answer({TAnswer::No});
    choose("Restore_ACT", file);
    EXPECT_EQ(text("select Name from StaffGroup where Code=7"), "after") << "nothing without a Yes";
    messages.answer({TAnswer::Yes});
    choose("Restore_ACT", file);
    EXPECT_EQ(text("select Name from StaffGroup where Code=7"), "before");
    EXPECT_TRUE(loggedOut);
    const QStringList kept = QDir(home.path()).entryList({"suite.db.before-restore-*"});
    EXPECT_EQ(kept.size(), 1) << "what was there is kept beside it";
}

/// A backup or a restore from the menu, the file named in the dialog.
void choose(TMain_FRM &window, const char *item, const QString &file)
{
    Keys::runModal(
        [&] {
            window.findChild<QAction *>(item)->trigger();
            return 0;
        },
        [&](QWidget *screen) { nameFile(screen, file); });
}

TEST_F(ScreensOnAFile, TwoRestoresInOneMinuteKeepWhatWasThereBeforeEach)
{
    TMain_FRM window(session);
    showActive(window);
    const QString file = home.filePath("b.db");
    choose(window, "Backup_ACT", file);
    for (const char *name : {"first", "second"}) {
        run(QString("insert into StaffGroup(Code, Name) values(7, '%1')").arg(name));
        messages.answer({TAnswer::Yes});
        choose(window, "Restore_ACT", file);
    }
    QStringList kept;
    for (const QString &name : QDir(home.path()).entryList({"suite.db.before-restore-*"})) {
        TSession other;
        other.open({home.filePath(name), {}});
        kept << other.connection().scalar(TStatement("select Name from StaffGroup where Code=7")).toString();
    }
    DM.ADOConnection1 = &session.connection();
    kept.sort();
    EXPECT_EQ(kept, QStringList({"first", "second"}));
}

TEST_F(ScreensOnAFile, ABackupOntoAFullDiskIsToldAndLeavesTheOlderOne)
{
    TMain_FRM window(session);
    showActive(window);
    const QString file = home.filePath("b.db");
    choose(window, "Backup_ACT", file);
    const auto content = [&] {
        QFile backup(file);
        return backup.open(QIODevice::ReadOnly) ? backup.readAll() : QByteArray();
    };
    const QByteArray before = content();
    ASSERT_GT(before.size(), 0);
    run("insert into StaffGroup(Code, Name) values(7, 'mine')");
    told();

    // No file may grow beyond this: as on a disk that fills up.
    struct rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 30000;
    setrlimit(RLIMIT_FSIZE, &small);
    messages.answer({TAnswer::Yes});
    choose(window, "Backup_ACT", home.filePath("b")); // the ending comes by itself
    const std::string backup = told();
    choose(window, "Restore_ACT", file);
    const std::string restore = told();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);

    for (const std::string &said : {backup, restore})
        EXPECT_NE(said.find("فضای دیسک پر است"), std::string::npos) << said;
    EXPECT_EQ(backup.find("ساخته"), std::string::npos) << backup;
    EXPECT_TRUE(content() == before);
    messages.answer({TAnswer::No});
    choose(window, "Backup_ACT", file);
    EXPECT_TRUE(content() == before) << "no older one is replaced without a Yes";
    EXPECT_EQ(text("select Name from StaffGroup where Code=7"), "mine");
    EXPECT_EQ(QDir(home.path()).entryList({"*part*", "*.restore*", "*before*"}), QStringList());
}

TEST_F(ScreensOnAFile, ARestoreOfAnotherProgramsDatabaseOrOfHalfABackupIsRefused)
{
    TMain_FRM window(session);
    showActive(window);
    const QString half = home.filePath("half.db");
    choose(window, "Backup_ACT", half);
    ASSERT_TRUE(QFile::resize(half, QFile(half).size() / 2));
    const QString other = home.filePath("other.db");
    sqlite3 *songs = nullptr;
    ASSERT_EQ(sqlite3_open(other.toUtf8(), &songs), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(songs, "create table Song(Title text)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(songs);
    run("insert into StaffGroup(Code, Name) values(7, 'mine')");
    told();
    for (const QString &file : {half, other}) {
        choose(window, "Restore_ACT", file);
        EXPECT_NE(told(), "") << file.toStdString();
        EXPECT_EQ(text("select Name from StaffGroup where Code=7"), "mine");
        EXPECT_EQ(QDir(home.path()).entryList({"*before*"}), QStringList())
            << "nothing changed, nothing is kept";
    }
}

TEST_F(ScreensOnAFile, ARestoreWaitsForOpenEditorsAndRefusesABrokenFile)
{
    TMain_FRM window(session);
    showActive(window);
    QFile letter(home.filePath("letter.db"));
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(5000, 'x'));
    letter.close();
    run("insert into StaffGroup(Code, Name) values(7, 'mine')");
    const auto restore = [&] {
        Keys::runModal(
            [&] {
                window.findChild<QAction *>("Restore_ACT")->trigger();
                return 0;
            },
            [&](QWidget *screen) { nameFile(screen, letter.fileName()); });
        return told();
    };
    run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 806, 3)");
    EXPECT_NE(restore().find("در حال ویرایش"), std::string::npos);
    run("delete from CodeLock_TBL");
    EXPECT_NE(restore().find("پایگاه داده نیست"), std::string::npos);
    EXPECT_EQ(text("select Name from StaffGroup where Code=7"), "mine");
}

} // namespace
