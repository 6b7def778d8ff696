#include "Screens.h"

#include "app/Administration_FRM.h"
#include "app/DatabaseSettings_FRM.h"
#include "app/Users_FRM.h"
#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/database/OdbcConnectionString.h"

#include <QFile>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

QString cell(const QTableWidget *table, int row, int column)
{
    return table->item(row, column) ? table->item(row, column)->text() : QString();
}

int column(const QTableWidget *table, const QString &caption)
{
    for (int i = 0; i < table->columnCount(); ++i) {
        if (table->horizontalHeaderItem(i)->text() == caption)
            return i;
    }
    return -1;
}

TEST_F(Screens, AnAdministratorCreatesAUserWhoCanLogIn)
{
    user("boss", "secret-b0qx2", true);
    TUserGet_FRM editor(0);
    const int result = Keys::runModal([&] { return editor.exec(); },
                                      [&](QWidget *screen) {
                                          Keys::retype(editor.Name_EDT, "ali");
                                          Keys::retype(editor.Password_EDT, "secret-b7qx2");
                                          Keys::press(screen, Qt::Key_F3);
                                          EXPECT_NE(told().find("یکسان نیستند"), std::string::npos);
                                          EXPECT_TRUE(screen->isVisible());
                                          Keys::retype(editor.Repeat_EDT, "secret-b7qx2");
                                          Keys::picture(screen, "user");
                                          Keys::press(screen, Qt::Key_F3);
                                      });
    EXPECT_EQ(result, QDialog::Accepted);
    const TLogin login = LogIn("ali", "secret-b7qx2");
    EXPECT_EQ(login.result, TLoginResult::Ok);
    EXPECT_FALSE(login.user.IsAdmin);
    EXPECT_EQ(text("select count(*) from UserEvent where EventText like '%ali%'"), "1");
}

TEST_F(Screens, TheFirstUserOfASampleCompanyIsAnActiveAdministrator)
{
    // Its administrator has no account; a clerk alone would lock everybody else out.
    TUserGet_FRM editor(0);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       Keys::retype(editor.Name_EDT, "ali");
                       Keys::retype(editor.Password_EDT, "secret-b7qx2");
                       Keys::retype(editor.Repeat_EDT, "secret-b7qx2");
                       Keys::press(screen, Qt::Key_F3);
                       EXPECT_NE(told().find("نخستین کاربر"), std::string::npos);
                       EXPECT_EQ(text("select count(*) from UserAccount"), "0");
                       editor.IsAdmin_CHK->setChecked(true);
                       Keys::press(screen, Qt::Key_F3);
                   });
    EXPECT_EQ(text("select IsAdmin from UserAccount"), "1");
}

TEST_F(Screens, AnEditorOfAUserLeavesThePasswordThatIsNotTyped)
{
    user("boss", "secret-b0qx2", true);
    const int code = user("ali");
    TUserGet_FRM editor(code);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       EXPECT_EQ(editor.Password_EDT->text(), "");
                       Keys::retype(editor.FullName_EDT, "علی رضایی");
                       Keys::press(screen, Qt::Key_F3);
                   });
    EXPECT_EQ(text("select FullName from UserAccount where Name='ali'"), QString("علی رضایی"));
    EXPECT_EQ(LogIn("ali", "secret-b7qx2").result, TLoginResult::Ok);
}

TEST_F(Screens, TheLastAdministratorStays)
{
    const int code = user("boss", "secret-b7qx2", true);
    TUserGet_FRM editor(code);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       editor.IsAdmin_CHK->setChecked(false);
                       Keys::press(screen, Qt::Key_F3);
                       EXPECT_NE(told(), "");
                       EXPECT_TRUE(screen->isVisible());
                       messages.answer({TAnswer::No});
                   });
    EXPECT_EQ(text("select IsAdmin from UserAccount"), "1");
}

TEST_F(Screens, TheUserListEditsAndDeletesByItsKeys)
{
    user("ali");
    user("zahra", "secret-b0qx2", true);
    TUserList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       EXPECT_EQ(list.Table()->rowCount(), 2);
                       EXPECT_EQ(cell(list.Table(), 0, 0), "ali");
                       Keys::picture(screen, "users");
                       messages.answer({TAnswer::No});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 2);
                       messages.answer({TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 1);
                       EXPECT_EQ(cell(list.Table(), 0, 0), "zahra");
                   });
    EXPECT_EQ(text("select Name from UserAccount"), "zahra");
}

TEST_F(Screens, NobodyDeletesTheOwnUser)
{
    UserInfo.Code = user("boss", "secret-b7qx2", true);
    TUserList_FRM list;
    Keys::runModal([&] { return list.exec(); }, [&](QWidget *screen) { Keys::press(screen, Qt::Key_F7); });
    EXPECT_EQ(text("select count(*) from UserAccount"), "1");
    EXPECT_NE(told(), "");
}

TEST_F(Screens, TheTableOfRightsGrantsWhatIsTicked)
{
    const int code = user("ali");
    const TUserInfo ali{code, "ali", "ali", false, true};
    EXPECT_TRUE(SetRightsOfUser(code, {{cspStaff, cpOpen}}));
    EXPECT_FALSE(HavePermission(ali, cspTax, cpOpen, true, false, {}));
    TUserRights_FRM editor(ali);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       QTableWidget *table = editor.Rights_GRD;
                       const int open = column(table, PermissionName(cpOpen));
                       ASSERT_GE(open, 0);
                       for (int row = 0; row < table->rowCount(); ++row) {
                           const bool staff =
                               table->verticalHeaderItem(row)->text() == SoftwarePartName(cspStaff);
                           EXPECT_EQ(table->item(row, open)->checkState() == Qt::Checked, staff);
                           if (table->verticalHeaderItem(row)->text() == SoftwarePartName(cspTax))
                               table->setCurrentCell(row, open);
                       }
                       Keys::picture(screen, "user-rights");
                       Keys::press(screen, Qt::Key_Space, Qt::NoModifier, " ");
                       EXPECT_FALSE(editor.IsSaved());
                       Keys::press(screen, Qt::Key_F3);
                   });
    EXPECT_TRUE(HavePermission(ali, cspTax, cpOpen, true, false, {}));
    EXPECT_TRUE(HavePermission(ali, cspStaff, cpOpen, true, false, {}));
    EXPECT_FALSE(HavePermission(ali, cspTax, cpDelete, true, false, {}));
}

TEST_F(Screens, ALockOfAnotherWorkstationIsReleasedOnlyAfterTheQuestion)
{
    ASSERT_TRUE(RegisterWorkstation(5, "far away"));
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("17", cspStaff, 5, otLock, false));
    TLockList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       ASSERT_EQ(list.Table()->rowCount(), 1);
                       EXPECT_EQ(cell(list.Table(), 0, 0), SoftwarePartName(cspStaff));
                       EXPECT_EQ(cell(list.Table(), 0, 1), "17");
                       EXPECT_EQ(cell(list.Table(), 0, 2), "5");
                       EXPECT_EQ(cell(list.Table(), 0, 3), "far away");
                       Keys::picture(screen, "locks");
                       messages.answer({TAnswer::No});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_TRUE(LocateLockCode_SoftwarePart("17", cspStaff, 1, false));
                       messages.answer({TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 0);
                       EXPECT_FALSE(Keys::child(screen, "Release_BTN")->isEnabled());
                   });
    EXPECT_FALSE(LocateLockCode_SoftwarePart("17", cspStaff, 1, false));
    EXPECT_NE(text("select count(*) from UserEvent"), "0") << "the release is in the event log";
}

TEST_F(Screens, RowsUnderAFreedLockAreKeptForThisStationOrThrownAwayAsTheAdministratorSays)
{
    IniOptions.Com_Index = 1;
    ASSERT_TRUE(RegisterWorkstation(1, "here"));
    ASSERT_TRUE(RegisterWorkstation(5, "far away"));
    const auto leave = [&] {
        ASSERT_TRUE(OperationOnLockCode_SoftwarePart("17", cspStaff, 5, otLock, false));
        run("insert into tmpStaffFamily(ID, StaffCode, Name) values(1, 17, 'typed')");
    };
    leave();
    TLockList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       messages.answer({TAnswer::Yes, TAnswer::Cancel});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(text("select Com_Index from CodeLock_TBL"), "5") << "nothing was done";
                       messages.answer({TAnswer::Yes, TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(text("select Com_Index from CodeLock_TBL"), "1");
                       EXPECT_EQ(text("select count(*) from tmpStaffFamily"), "1");
                       messages.answer({TAnswer::Yes, TAnswer::No});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 0);
                   });
    EXPECT_EQ(text("select count(*) from tmpStaffFamily"), "0");
    leave();
    TWorkstationList_FRM stations;
    Keys::runModal([&] { return stations.exec(); },
                   [&](QWidget *screen) {
                       Keys::press(screen, Qt::Key_Down);
                       messages.answer({TAnswer::Yes, TAnswer::No});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(stations.Table()->rowCount(), 1);
                   });
    EXPECT_EQ(text("select count(*) from tmpStaffFamily"), "0");
    EXPECT_EQ(text("select count(*) from CodeLock_TBL"), "0");
}

TEST_F(Screens, AWorkstationThatIsGoneIsTakenOutWithItsLocks)
{
    IniOptions.Com_Index = 1;
    ASSERT_TRUE(RegisterWorkstation(1, "here"));
    ASSERT_TRUE(RegisterWorkstation(5, "far away"));
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("17", cspStaff, 5, otLock, false));
    TWorkstationList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       ASSERT_EQ(list.Table()->rowCount(), 2);
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 2) << "the one at work stays";
                       Keys::press(screen, Qt::Key_Down);
                       messages.answer({TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 1);
                   });
    EXPECT_EQ(text("select count(*) from CodeLock_TBL"), "0");
}

TEST_F(Screens, TheEventLogShowsNamesAndIsSearched)
{
    SetUserEvent(cspTax, cpDelete, u"جدول يک"_s, false, true);
    SetUserEvent(cspStaff, cpDelete, u"کارمند 12"_s, false, true);
    TEventLog_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       EXPECT_EQ(list.ListQuery()->recordCount(), 2);
                       EXPECT_EQ(list.ListQuery()->asString("UserName"), "boss");
                       for (const char *button : {"New_BTN", "EDit_BTN", "Del_BTN"})
                           EXPECT_FALSE(Keys::child(screen, button)->isVisible()) << button;
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(text("select count(*) from UserEvent"), "2")
                           << "nothing in it can be deleted";
                       Keys::picture(screen, "event-log");
                       Keys::type(list.General_Search->Search_EDT(), u"یک"_s);
                       EXPECT_TRUE(Keys::waitFor([&] { return list.ListQuery()->recordCount() == 1; }));
                       EXPECT_EQ(list.ListQuery()->asInteger("SoftwarePart"), int(cspTax))
                           << "both forms of letters are one";
                   });
}

TEST_F(Screens, TheDatabaseSettingsKeepNoPassword)
{
    TDatabaseSettings_FRM settings({home.filePath("suite.db"), {}});
    const int result = Keys::runModal([&] { return settings.exec(); },
                                      [&](QWidget *screen) {
                                          settings.Server_RB->setChecked(true);
                                          Keys::press(screen, Qt::Key_F3);
                                          EXPECT_EQ(messages.take().last(), "MsgRequiredField(نام سرور)");
                                          Keys::retype(settings.Server_EDT, "db.example");
                                          Keys::retype(settings.Database_EDT, "payroll");
                                          Keys::retype(settings.User_EDT, "clerk");
                                          Keys::retype(settings.Password_EDT, "Top;Secret}");
                                          Keys::picture(screen, "database-settings");
                                          Keys::press(screen, Qt::Key_F3);
                                      });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(TOdbcConnectionString(settings.Choice().odbc).value("PWD"), "Top;Secret}");
    const TDatabaseChoice stored = TDatabaseChoice::stored();
    const TOdbcConnectionString storedText(stored.odbc);
    EXPECT_EQ(storedText.value("Server"), "db.example");
    EXPECT_EQ(storedText.value("Database"), "payroll");
    EXPECT_FALSE(storedText.hasPassword());
    QFile file(home.filePath("config/ketebionpap/database.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("Secret"));
    EXPECT_FALSE(file.permissions() & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(ScreensOnAFile, TheTestOfAConnectionChangesNothing)
{
    const QString file = home.filePath("none.db");
    TDatabaseSettings_FRM settings({file, {}});
    Keys::runModal([&] { return settings.exec(); },
                   [&](QWidget *screen) {
                       Keys::press(screen, Qt::Key_F8);
                       EXPECT_NE(told().find("پرسیده می شود که ساخته شود"), std::string::npos);
                       EXPECT_FALSE(QFile::exists(file));
                       Keys::retype(settings.File_EDT, home.filePath("suite.db"));
                       Keys::press(screen, Qt::Key_F8);
                       EXPECT_NE(told().find("برقرار شد"), std::string::npos);
                       QFile letter(home.filePath("letter"));
                       ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
                       letter.write(QByteArray(5000, 'x'));
                       letter.close();
                       Keys::retype(settings.File_EDT, letter.fileName());
                       Keys::press(screen, Qt::Key_F8);
                       EXPECT_EQ(told().find("برقرار شد"), std::string::npos);
                       EXPECT_TRUE(screen->isVisible());
                   });
}

} // namespace
