#include "host/services/Services.h"

#include "host/Declaration_PKG/Login_unt.h"

#include <QDateTime>

#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString right = u"right-word-k7"_s;

QString utc(int seconds)
{
    return QDateTime::currentDateTimeUtc().addSecs(seconds).toString(u"yyyy-MM-ddTHH:mm:ss"_s);
}

/// The program may take no more memory than it has now and a little.
class TShortMemory {
public:
    explicit TShortMemory(rlim_t more)
    {
        QFile file(u"/proc/self/statm"_s);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const rlim_t held =
            rlim_t(file.readAll().split(' ').value(0).toLongLong()) * rlim_t(sysconf(_SC_PAGESIZE));
        EXPECT_EQ(getrlimit(RLIMIT_AS, &m_before), 0);
        const rlimit most{held + more, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_AS, &most), 0);
    }
    ~TShortMemory() { setrlimit(RLIMIT_AS, &m_before); }

private:
    rlimit m_before = {};
};

} // namespace

class Waits : public Services {
protected:
    Waits() { EXPECT_EQ(CreateFirstAdministrator("boss", {}, right), TLoginResult::Ok); }
    /// Wrong tries without their waits, and what the next ones answer.
    QString answersOf(const QString &name)
    {
        QStringList answers;
        for (int i = 0; i < 6; ++i) {
            const TLogin login = LogIn(name, u"wrong"_s);
            answers << u"%1 %2"_s.arg(int(login.result)).arg(LoginText(login));
            db.run(u"update UserAccount set NextTry=null"_s);
            db.run(u"update UnknownNameTry set NextTry='%1' where FailedCount>0"_s.arg(utc(-1)));
        }
        return answers.join(u'\n');
    }
};

TEST_F(Waits, AWaitIsKeptByTheDatabasesClock)
{
    db.run("update UserAccount set FailedCount=5");
    const QString now = db.text("select dbo.UtcNow_FNC()");
    EXPECT_EQ(LogIn("boss", "wrong").secondsToWait, 8);
    const qint64 wait =
        QDateTime::fromString(now, Qt::ISODate)
            .secsTo(QDateTime::fromString(db.text("select NextTry from UserAccount"), Qt::ISODate));
    EXPECT_GE(wait, 8);
    EXPECT_LE(wait, 10);
}

TEST_F(Waits, AClockThatIsSetBackNeitherEndsAWaitNorMakesItEndless)
{
    // As the database sees it: the next try lies further ahead than any wait is long.
    for (const int ahead : {3600, 86400 * 365}) {
        db.run(u"update UserAccount set FailedCount=20, NextTry='%1'"_s.arg(utc(ahead)));
        const TLogin login = LogIn("boss", right);
        EXPECT_EQ(login.result, TLoginResult::TooEarly) << ahead;
        EXPECT_EQ(login.secondsToWait, 900);
        EXPECT_LE(db.text("select NextTry from UserAccount"), utc(901));
    }
    db.run(u"update UserAccount set NextTry='%1'"_s.arg(utc(-1)));
    EXPECT_EQ(LogIn("boss", right).result, TLoginResult::Ok);
}

TEST_F(Waits, ANameThatNobodyHasIsAnsweredAsOneThatSomebodyHas)
{
    const QString known = answersOf("boss");
    EXPECT_EQ(answersOf("nobody"), known);
    EXPECT_TRUE(known.contains(u"8 ثانیه"_s)) << known.toStdString();
}

TEST_F(Waits, ANameThatNobodyHasTakesAsManyRequestsAsOneThatSomebodyHas)
{
    int requests = 0;
    db.connection().setStatementHook([&](const TStatement &) { ++requests; });
    LogIn("boss", "wrong");
    const int known = requests;
    LogIn("nobody", "wrong");
    EXPECT_EQ(requests, known * 2);
    EXPECT_EQ(known, 3) << "read, counted, told to the log";
    db.connection().setStatementHook({});
}

TEST_F(Waits, AnUnknownNameWaitsInAllItsForms)
{
    for (int i = 0; i < 4; ++i)
        LogIn(u"علي"_s, u"x"_s);
    EXPECT_EQ(LogIn(u" علی "_s, u"x"_s).result, TLoginResult::TooEarly);
    EXPECT_EQ(LogIn(u"\u202Eعلی\u200F"_s, u"x"_s).result, TLoginResult::TooEarly);
    EXPECT_EQ(LogIn("boss", right).result, TLoginResult::Ok) << "others do not wait with it";
    EXPECT_EQ(db.text("select count(*) from UnknownNameTry where FailedCount>0"), "1");
    EXPECT_EQ(db.text("select count(*) from UnknownNameTry"), "256");
}

TEST_F(Waits, TheTriesOfUnknownNamesAreForgottenAfterADay)
{
    for (int i = 0; i < 4; ++i)
        LogIn("nobody", "x");
    db.run(u"update UnknownNameTry set NextTry='%1' where FailedCount>0"_s.arg(utc(-3600)));
    EXPECT_EQ(LogIn("nobody", "x").secondsToWait, 4);
    db.run(u"update UnknownNameTry set NextTry='%1' where FailedCount>0"_s.arg(utc(-90000)));
    EXPECT_EQ(LogIn("nobody", "x").secondsToWait, 0);
}

TEST_F(Waits, ANameOfTenThousandLettersIsANameThatNobodyHas)
{
    EXPECT_EQ(LogIn(QString(10000, u'x'), "x").result, TLoginResult::WrongNameOrPassword);
    TUserInfo user{0, QString(10000, u'x'), QString(10000, u'y'), false, true};
    EXPECT_EQ(SaveUser(user, right), TLoginResult::Ok);
    EXPECT_EQ(user.Name.size(), 50);
    EXPECT_EQ(LogIn(user.Name, right).result, TLoginResult::Ok);
}

TEST_F(Waits, NamesAreStoredWithoutSignsThatAreNotSeen)
{
    TUserInfo user{0, u"\u202Eali\u200F\n\u0007"_s, u"\u2066علی\u2069 رضایی"_s, false, true};
    EXPECT_EQ(SaveUser(user, right), TLoginResult::Ok);
    EXPECT_EQ(user.Name, "ali");
    EXPECT_EQ(user.FullName, u"علی  رضایی"_s);
    TUserInfo twin{0, u"a\u200Eli\u200D"_s, {}, false, true};
    EXPECT_EQ(SaveUser(twin, right), TLoginResult::NameTaken);
    for (const QString &empty : {u"\u200F\u202E"_s, u"\u200C"_s, u"\n\t "_s}) {
        TUserInfo unseen{0, empty, {}, false, true};
        EXPECT_EQ(SaveUser(unseen, right), TLoginResult::NameEmpty);
    }
}

TEST_F(Waits, ShortMemoryIsNoWrongPasswordAndCostsNoTry)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer takes what it likes";
#endif
    db.run("update UserAccount set FailedCount=2");
    for (const char *name : {"boss", "nobody"}) {
        TLogin login;
        {
            const TShortMemory shortMemory(rlim_t(24) << 20); // a hash takes 64 MB
            login = LogIn(name, right);
        }
        EXPECT_EQ(login.result, TLoginResult::LowMemory) << name;
        EXPECT_TRUE(LoginText(login).contains(u"حافظه"_s));
    }
    EXPECT_EQ(db.rows("select FailedCount, NextTry from UserAccount"), "2|");
    EXPECT_EQ(db.text("select count(*) from UnknownNameTry where FailedCount>0"), "0");
    TUserInfo user{0, "ali", {}, false, true};
    {
        const TShortMemory shortMemory(rlim_t(24) << 20);
        EXPECT_EQ(SaveUser(user, right), TLoginResult::LowMemory);
    }
    EXPECT_EQ(LogIn("boss", right).result, TLoginResult::Ok);
}

TEST_F(Waits, APasswordThatIsEasilyGuessedIsRefusedWithTheReason)
{
    struct TCase {
        QString password;
        QString reason;
    };
    const TCase cases[] = {{u"12345"_s, u"دست کم 6"_s},
                           {u"password"_s, u"شناخته"_s},
                           {u"P@ssw0rd"_s, u"شناخته"_s},
                           {u"gggggggggg"_s, u"تکرار"_s},
                           {u"efghijkl"_s, u"پشت سر هم"_s},
                           {u"15021371"_s, u""_s},
                           {u"zandipour1"_s, u"نام کاربر"_s},
                           {u"Zandipour"_s, u"نام کاربر"_s},
                           {u"مریم زندی پور"_s, u"نام کاربر"_s},
                           {u"مريم۱۲"_s, u""_s},
                           {u"گذرواژه"_s, u"نام کاربر یا واژه"_s},
                           {u"شسیبلاتن"_s, u""_s},
                           {QString(10000, u'آ'), u"تکرار"_s},
                           {u"۱۲۳۴۵۶۷۸"_s, u""_s}};
    for (const TCase &one : cases) {
        const QString told = PasswordComplaint(one.password, {u"zandipour"_s, u"مریم زندی پور"_s});
        EXPECT_FALSE(told.isEmpty()) << one.password.toStdString();
        EXPECT_TRUE(told.contains(one.reason)) << one.password.toStdString() << ": " << told.toStdString();
    }
    for (const QString &good : {u"کتاب نارنجی پنجره"_s, u"k8F-3mqZ"_s, u"lamp river 82 stone"_s})
        EXPECT_EQ(PasswordComplaint(good, {u"zandipour"_s}), QString()) << good.left(40).toStdString();
}

TEST_F(Waits, AWeakPasswordThatIsInUseGoesOnWorking)
{
    db.run(u"update UserAccount set PasswordHash='%1'"_s.arg(QLatin1String(HashOfPassword(u"123456"_s))));
    EXPECT_EQ(LogIn("boss", "123456").result, TLoginResult::Ok);
    const TLogin changed = ChangePassword(1, "123456", "654321");
    EXPECT_EQ(changed.result, TLoginResult::WeakPassword);
    EXPECT_EQ(LoginText(changed), PasswordComplaint("654321", {u"boss"_s}));
}

TEST_F(Waits, AForgottenAdministratorIsResetAndLogged)
{
    db.run("update UserAccount set IsAdmin=0, IsActive=0, FailedCount=30, NextTry='2999-01-01T00:00:00'");
    UserInfo = {};
    EXPECT_EQ(ResetAdministrator("nobody", "new-word-kq7v", "root").result, TLoginResult::NoSuchUser);
    EXPECT_EQ(ResetAdministrator("boss", "123456", "root").result, TLoginResult::WeakPassword);
    EXPECT_EQ(LogIn("boss", right).result, TLoginResult::TooEarly) << "unchanged so far";
    EXPECT_EQ(ResetAdministrator("BOSS", "new-word-kq7v", "root").result, TLoginResult::Ok);
    const QString line = db.text("select top 1 EventText from UserEvent order by ID desc");
    EXPECT_TRUE(line.contains(u"بازنشانی مدیر"_s) && line.contains(u"«root»"_s) &&
                line.contains(u"«boss»"_s));
    const TLogin login = LogIn("boss", "new-word-kq7v");
    EXPECT_EQ(login.result, TLoginResult::Ok);
    EXPECT_TRUE(login.user.IsAdmin);
}
