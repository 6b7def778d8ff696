#include "host/services/Services.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Login_unt.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QProcess>

#include <sodium.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const password = "pass word ۱۲";
const char *const other = "something else 9f";

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class Users : public Services {
protected:
    Users()
    {
        EXPECT_EQ(CreateFirstAdministrator(text("مدیر"), "The Administrator", text(password)),
                  TLoginResult::Ok);
    }
    static TLoginResult logIn(const char *name, const char *word)
    {
        return LogIn(text(name), text(word)).result;
    }
    TUserInfo clerk()
    {
        TUserInfo user{0, "clerk", "A Clerk", false, true};
        EXPECT_EQ(SaveUser(user, text(other)), TLoginResult::Ok);
        return user;
    }
};

class FirstStart : public Services {};

TEST_F(FirstStart, TheFirstAdministratorIsCreatedOnce)
{
    EXPECT_TRUE(NoUserYet());
    EXPECT_EQ(CreateFirstAdministrator("a", "A", "12345"), TLoginResult::WeakPassword);
    EXPECT_EQ(CreateFirstAdministrator("  ", "A", "g7kq2m-x"), TLoginResult::NameEmpty);
    EXPECT_TRUE(NoUserYet());
    EXPECT_EQ(CreateFirstAdministrator("a", "A", "g7kq2m-x"), TLoginResult::Ok);
    EXPECT_FALSE(NoUserYet());
    EXPECT_EQ(CreateFirstAdministrator("b", "B", "g7kq2m-x"), TLoginResult::NameTaken);
    EXPECT_EQ(db.rows("select Code, Name, FullName, IsAdmin, IsActive, FailedCount from UserAccount"),
              "1|a|A|1|1|0");
}

TEST_F(FirstStart, OfTwoWorkstationsOneMakesTheFirstAdministrator)
{
    bool other = false;
    db.connection().setStatementHook([&](const TStatement &statement) {
        if (!other && statement.boundText() == "begin transaction") {
            other = true;
            db.run("insert into UserAccount(Code, Name, IsAdmin) values(1, 'other', 1)");
        }
    });
    EXPECT_EQ(CreateFirstAdministrator("a", "A", "g7kq2m-x"), TLoginResult::NameTaken);
    db.connection().setStatementHook({});
    EXPECT_TRUE(other);
    EXPECT_EQ(db.rows("select Name from UserAccount"), "other");
}

TEST_F(Users, TheRightPasswordLogsIn)
{
    const TLogin login = LogIn(text("مدیر"), text(password));
    EXPECT_EQ(login.result, TLoginResult::Ok);
    EXPECT_EQ(login.user.Code, 1);
    EXPECT_EQ(login.user.Name, text("مدیر"));
    EXPECT_EQ(login.user.FullName, "The Administrator");
    EXPECT_TRUE(login.user.IsAdmin);
    EXPECT_EQ(LoginText(login), "");
}

TEST_F(Users, TheNameIsTakenAsItIsTypedThePasswordIsNot)
{
    EXPECT_EQ(logIn(" مدير ", password), TLoginResult::Ok) << "the other form of yeh";
    clerk();
    EXPECT_EQ(logIn("CLERK", other), TLoginResult::Ok);
    EXPECT_EQ(logIn("clerk", "Something else 9f"), TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(logIn("clerk", "something else 9f "), TLoginResult::WrongNameOrPassword);
}

TEST_F(Users, AWrongNameAndAWrongPasswordGetOneAnswer)
{
    const TLogin wrongName = LogIn("nobody", text(password));
    const TLogin wrongPassword = LogIn(text("مدیر"), "wrong");
    EXPECT_EQ(wrongName.result, TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(wrongPassword.result, TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(LoginText(wrongName), LoginText(wrongPassword));
    EXPECT_EQ(wrongPassword.user.Code, 0);
}

TEST_F(Users, OnlyAHashIsStored)
{
    const QString hash = db.text("select PasswordHash from UserAccount");
    EXPECT_TRUE(hash.startsWith("$argon2id$")) << hash.toStdString();
    EXPECT_FALSE(hash.contains("pass"));
    TUserInfo second{0, "second", {}, false, true};
    SaveUser(second, text(password));
    EXPECT_NE(db.text("select PasswordHash from UserAccount where Code = 2"), hash)
        << "each has a salt of its own";
}

TEST_F(Users, WrongPasswordsMakeTheUserWaitLongerAndLonger)
{
    struct TTry {
        int wrongBefore;
        int wait;
    };
    for (const auto &[wrongBefore, wait] :
         {TTry{0, 0}, {2, 0}, {3, 2}, {4, 4}, {11, 512}, {12, 900}, {500, 900}}) {
        db.run(QString("update UserAccount set FailedCount = %1, NextTry = '2000-01-01T00:00:00'")
                   .arg(wrongBefore));
        const TLogin login = LogIn(text("مدیر"), "wrong");
        EXPECT_EQ(login.result, TLoginResult::WrongNameOrPassword);
        EXPECT_EQ(login.secondsToWait, wait) << wrongBefore;
        if (wait == 0)
            continue;
        const TLogin early = LogIn(text("مدیر"), text(password));
        EXPECT_EQ(early.result, TLoginResult::TooEarly) << "the right one must wait too";
        EXPECT_GT(early.secondsToWait, 0);
        EXPECT_LE(early.secondsToWait, wait);
        EXPECT_TRUE(LoginText(early).contains(QString::number(early.secondsToWait)));
    }
    db.run("update UserAccount set NextTry = '2000-01-01T00:00:00'");
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::Ok);
    EXPECT_EQ(db.rows("select FailedCount, NextTry from UserAccount"), "0|");
    EXPECT_EQ(LogIn(text("مدیر"), "wrong").secondsToWait, 0) << "counting began anew";
}

TEST_F(Users, ATryThatAnotherWorkstationCountedFirstIsCountedAfterIt)
{
    bool counted = false;
    db.connection().setStatementHook([&](const TStatement &statement) {
        if (!counted && statement.boundText().startsWith("update UserAccount set FailedCount=")) {
            counted = true;
            db.run("update UserAccount set FailedCount = 4");
        }
    });
    EXPECT_EQ(LogIn(text("مدیر"), "wrong").secondsToWait, 4) << "the fifth wrong one";
    db.connection().setStatementHook({});
    EXPECT_EQ(db.text("select FailedCount from UserAccount"), "5");
}

TEST_F(Users, AnInactiveUserIsToldSoWithTheRightPasswordOnly)
{
    TUserInfo user = clerk();
    user.IsActive = false;
    EXPECT_EQ(SaveUser(user, {}), TLoginResult::Ok);
    EXPECT_EQ(logIn("clerk", other), TLoginResult::Inactive);
    EXPECT_EQ(logIn("clerk", "wrong"), TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(ReadUser(user.Code).result, TLoginResult::Inactive);
}

TEST_F(Users, AnOldHashIsRenewedAtTheNextLogIn)
{
    char old[crypto_pwhash_STRBYTES];
    ASSERT_EQ(crypto_pwhash_str(old, password, strlen(password), crypto_pwhash_OPSLIMIT_MIN,
                                crypto_pwhash_MEMLIMIT_MIN),
              0);
    db.run(QString("update UserAccount set PasswordHash = '%1'").arg(old));
    EXPECT_EQ(logIn("مدیر", "wrong"), TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(db.text("select PasswordHash from UserAccount"), old);
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::Ok);
    EXPECT_NE(db.text("select PasswordHash from UserAccount"), old);
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::Ok);
}

TEST_F(Users, AUserWithoutAHashCannotLogIn)
{
    db.run("update UserAccount set PasswordHash = null");
    EXPECT_EQ(logIn("مدیر", ""), TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::WrongNameOrPassword);
}

TEST_F(Users, AUserChangesTheOwnPassword)
{
    EXPECT_EQ(ChangePassword(1, "wrong", text(other)).result, TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(ChangePassword(1, text(password), "12345").result, TLoginResult::WeakPassword);
    EXPECT_EQ(ChangePassword(9, text(password), text(other)).result, TLoginResult::NoSuchUser);
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::Ok) << "unchanged so far";
    EXPECT_EQ(ChangePassword(1, text(password), text(other)).result, TLoginResult::Ok);
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(logIn("مدیر", other), TLoginResult::Ok);
}

TEST_F(Users, NamesAreUniqueInBothFormsOfTheirLetters)
{
    TUserInfo user{0, text("مدير"), {}, false, true};
    EXPECT_EQ(SaveUser(user, text(other)), TLoginResult::NameTaken);
    EXPECT_EQ(user.Code, 0);
    user.Name = "x";
    EXPECT_EQ(SaveUser(user, "12345"), TLoginResult::WeakPassword);
    EXPECT_EQ(SaveUser(user, {}), TLoginResult::WeakPassword);
    EXPECT_EQ(SaveUser(user, text(other)), TLoginResult::Ok);
    EXPECT_EQ(user.Code, 2);
    user.Name = text("مدیر");
    EXPECT_EQ(SaveUser(user, {}), TLoginResult::NameTaken);
}

TEST_F(Users, SavingWithoutAPasswordLeavesIt)
{
    TUserInfo user = clerk();
    user.FullName = QString(500, u'x');
    EXPECT_EQ(SaveUser(user, {}), TLoginResult::Ok);
    EXPECT_EQ(user.FullName.size(), 100);
    EXPECT_EQ(logIn("clerk", other), TLoginResult::Ok);
    db.run("update UserAccount set FailedCount = 9, NextTry = '2999-01-01T00:00:00'");
    EXPECT_EQ(SaveUser(user, "new-word-kq7v"), TLoginResult::Ok);
    EXPECT_EQ(logIn("clerk", "new-word-kq7v"), TLoginResult::Ok) << "and a new one ends the wait";
}

TEST_F(Users, OneActiveAdministratorAlwaysStays)
{
    TUserInfo admin = ReadUser(1).user;
    TUserInfo changed = admin;
    changed.IsAdmin = false;
    EXPECT_EQ(SaveUser(changed, {}), TLoginResult::LastAdministrator);
    changed = admin;
    changed.IsActive = false;
    EXPECT_EQ(SaveUser(changed, {}), TLoginResult::LastAdministrator);
    EXPECT_EQ(DeleteUser(1), TLoginResult::LastAdministrator);
    EXPECT_FALSE(db.connection().InTransaction());

    TUserInfo second = clerk();
    second.IsAdmin = true;
    EXPECT_EQ(SaveUser(second, {}), TLoginResult::Ok);
    UserInfo = second;
    EXPECT_EQ(DeleteUser(1), TLoginResult::Ok);
    EXPECT_EQ(DeleteUser(1), TLoginResult::NoSuchUser);
    EXPECT_EQ(ReadUser(1).result, TLoginResult::NoSuchUser);
}

TEST_F(Users, AUserGoesWithTheRightsAndTheLogStays)
{
    const TUserInfo user = clerk();
    EXPECT_TRUE(SetRightsOfUser(user.Code, {{cspTax, cpOpen}}));
    const TUserInfo administrator = UserInfo;
    UserInfo = user;
    SetUserEvent(cspTax, cpDelete, "x", false, false);
    UserInfo = administrator;
    EXPECT_EQ(DeleteUser(user.Code), TLoginResult::Ok);
    EXPECT_EQ(db.text("select count(*) from UserRight"), "0");
    EXPECT_EQ(db.text("select UserName from UserEvent where EventText='x'"), "clerk");
}

TEST_F(Users, WhoWasDemotedOrShutOutMeanwhileChangesNobody)
{
    TUserInfo user = clerk();
    for (const char *change : {"IsAdmin=0", "IsActive=0"}) {
        db.run(u"update UserAccount set %1 where Code=1"_s.arg(QLatin1String(change)));
        TUserInfo another{0, "another", {}, true, true};
        EXPECT_EQ(SaveUser(another, text(other)), TLoginResult::NotAdministrator);
        user.IsAdmin = true;
        EXPECT_EQ(SaveUser(user, {}), TLoginResult::NotAdministrator);
        EXPECT_EQ(DeleteUser(user.Code), TLoginResult::NotAdministrator);
        EXPECT_FALSE(SetRightsOfUser(user.Code, {{cspTax, cpOpen}}));
        db.run("update UserAccount set IsAdmin=1, IsActive=1 where Code=1");
    }
    EXPECT_EQ(db.text("select count(*) from UserAccount"), "2");
    EXPECT_EQ(db.text("select IsAdmin from UserAccount where Code=2"), "0");
    EXPECT_EQ(db.text("select count(*) from UserRight"), "0");
    EXPECT_FALSE(db.connection().InTransaction());
}

// One of two programs; only ever run by the test below.
TEST(Demoter, DISABLED_Demotes)
{
    TConnection connection;
    TestDatabase::open(connection, qEnvironmentVariable("DEMOTES_DATABASE"));
    DM.ADOConnection1 = &connection;
    UserInfo = {qEnvironmentVariableIntValue("DEMOTES_OWN"), "x", {}, true, true};
    TUserInfo victim = ReadUser(qEnvironmentVariableIntValue("DEMOTES_OTHER")).user;
    victim.IsAdmin = false;
    (void)SaveUser(victim, {});
    DM.ADOConnection1 = nullptr;
    UserInfo = {};
}

TEST_F(Users, OfTwoAdministratorsWhoDemoteEachOtherAtOnceOneStays)
{
    TUserInfo second{0, "second", {}, true, true};
    ASSERT_EQ(SaveUser(second, text(other)), TLoginResult::Ok);
    for (int round = 0; round < 5; ++round) {
        db.run("update UserAccount set IsAdmin=1");
        QProcess programs[2];
        for (const int own : {0, 1}) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(u"DEMOTES_DATABASE"_s, db.path());
            environment.insert(u"DEMOTES_OWN"_s, QString::number(own == 0 ? 1 : second.Code));
            environment.insert(u"DEMOTES_OTHER"_s, QString::number(own == 0 ? second.Code : 1));
            environment.remove(u"GTEST_OUTPUT"_s);
            programs[own].setProcessEnvironment(environment);
            programs[own].start(
                QCoreApplication::applicationFilePath(),
                {u"--gtest_filter=Demoter.DISABLED_Demotes"_s, u"--gtest_also_run_disabled_tests"_s});
        }
        for (QProcess &program : programs)
            EXPECT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(db.text("select count(*) from UserAccount where IsAdmin=1"), "1");
    }
}

TEST_F(Users, EveryDeedOnAUserHasItsLine)
{
    const auto last = [&] { return db.text("select top 1 EventText from UserEvent order by ID desc"); };
    TUserInfo user = clerk();
    EXPECT_EQ(last(), u"کاربر تازه «clerk»، A Clerk، کاربر عادی، فعال"_s);
    user.IsActive = false;
    EXPECT_EQ(SaveUser(user, {}), TLoginResult::Ok);
    EXPECT_EQ(last(),
              u"کاربر «clerk»، A Clerk، کاربر عادی، فعال اکنون «clerk»، A Clerk، کاربر عادی، غیر فعال"_s);
    EXPECT_EQ(SaveUser(user, "new-word-kq7v"), TLoginResult::Ok);
    EXPECT_EQ(last(), u"گذرواژه تازه برای کاربر clerk"_s);
    EXPECT_TRUE(SetRightsOfUser(user.Code, {{cspTax, cpOpen}, {cspTax, cpDelete}}));
    EXPECT_EQ(last(), u"دسترسی های کاربر «clerk» در جداول مالیاتی: از هیچ به مشاهده، حذف"_s);
    EXPECT_TRUE(SetRightsOfUser(user.Code, {{cspTax, cpOpen}}));
    EXPECT_EQ(last(), u"دسترسی های کاربر «clerk» در جداول مالیاتی: از حذف، مشاهده به مشاهده"_s);
    EXPECT_EQ(ChangePassword(1, text(password), text(other)).result, TLoginResult::Ok);
    EXPECT_EQ(last(), u"تغییر گذرواژه خود"_s);
    EXPECT_EQ(DeleteUser(user.Code), TLoginResult::Ok);
    EXPECT_EQ(last(), u"حذف کاربر «clerk»، A Clerk، کاربر عادی، غیر فعال"_s);
    EXPECT_TRUE(CheckEventLog().isWhole());
}

TEST_F(Users, ATryToLogInThatIsRefusedHasItsLineWithTheNameAsItWasTyped)
{
    LogIn(u"Nobody\nUser"_s, "x");
    EXPECT_EQ(db.text("select EventText from UserEvent order by ID desc"),
              u"ورود ناموفق با نام «Nobody User»: نام یا گذرواژه نادرست"_s);
    const int lines = db.text("select count(*) from UserEvent").toInt();
    EXPECT_EQ(logIn("مدیر", password), TLoginResult::Ok);
    EXPECT_EQ(db.text("select count(*) from UserEvent").toInt(), lines);
}

TEST_F(Users, UsersAreListedInTheOrderOfTheAlphabet)
{
    for (const char *name : {"گلناز", "آرش", "یاسمن", "پروین"}) {
        TUserInfo user{0, text(name), {}, false, true};
        SaveUser(user, text(other));
    }
    QStringList names;
    for (const TUserInfo &user : ListUsers())
        names << user.Name;
    EXPECT_EQ(names.join(u' '), text("آرش پروین گلناز مدیر یاسمن"));
}

TEST_F(Users, EveryResultButOkHasASentence)
{
    for (const auto result :
         {TLoginResult::WrongNameOrPassword, TLoginResult::TooEarly, TLoginResult::Inactive,
          TLoginResult::WeakPassword, TLoginResult::NameTaken, TLoginResult::NameEmpty,
          TLoginResult::NoSuchUser, TLoginResult::LastAdministrator}) {
        TLogin login;
        login.result = result;
        EXPECT_FALSE(LoginText(login).isEmpty()) << int(result);
    }
}
