#include "host/Declaration_PKG/Login_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QDateTime>

#include <sodium.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

const int nameWidth = 50;      // characters of UserAccount.Name
const int fullNameWidth = 100; // characters of UserAccount.FullName
const int freeTries = 3;       // wrong passwords that cost no wait
const int longestWait = 900;   // s

struct TAccount {
    TUserInfo user;
    QByteArray hash;
    int failedCount = 0;
    QDateTime nextTry;
};

void startSodium()
{
    if (sodium_init() < 0)
        throw std::runtime_error("the password library does not start");
}

QByteArray hashOf(const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    char hash[crypto_pwhash_STRBYTES] = {};
    if (crypto_pwhash_str(hash, text.constData(), size_t(text.size()), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::bad_alloc();
    return QByteArray(hash);
}

bool matches(const QByteArray &hash, const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    return crypto_pwhash_str_verify(hash.constData(), text.constData(), size_t(text.size())) == 0;
}

bool isOld(const QByteArray &hash)
{
    return crypto_pwhash_str_needs_rehash(hash.constData(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0;
}

bool isWeak(const QString &password)
{
    return password.size() < MinimalPasswordLength;
}

QList<TAccount> accounts()
{
    TQuery query(DM.ADOConnection1, u"Users_QUR"_s);
    query.setStatement(
        TStatement("select Code, Name, FullName, PasswordHash, IsAdmin, IsActive, FailedCount, "
                   "NextTry from UserAccount order by Name"));
    query.open();
    QList<TAccount> list;
    for (int row = 0; row < query.recordCount(); ++row) {
        TAccount account;
        account.user = {query.valueAt(row, 0).toInt(), query.valueAt(row, 1).toString(),
                        query.valueAt(row, 2).toString(), query.valueAt(row, 4).toInt() != 0,
                        query.valueAt(row, 5).toInt() != 0};
        account.hash = query.valueAt(row, 3).toString().toLatin1();
        account.failedCount = query.valueAt(row, 6).toInt();
        account.nextTry = QDateTime::fromString(query.valueAt(row, 7).toString(), Qt::ISODate);
        account.nextTry.setTimeSpec(Qt::UTC);
        list.append(account);
    }
    return list;
}

/// Names as people type them: case, both forms of letters and blanks make no difference.
QString nameKey(const QString &name)
{
    return PersianText::fold(PersianText::cut(name.trimmed(), nameWidth)).trimmed();
}

std::optional<TAccount> accountNamed(const QString &name)
{
    for (const TAccount &account : accounts()) {
        if (nameKey(account.user.Name) == nameKey(name))
            return account;
    }
    return std::nullopt;
}

std::optional<TAccount> accountOf(int code)
{
    for (const TAccount &account : accounts()) {
        if (account.user.Code == code)
            return account;
    }
    return std::nullopt;
}

int waitAfter(int failedCount)
{
    return failedCount <= freeTries ? 0
                                    : int(std::min(double(longestWait), std::exp2(failedCount - freeTries)));
}

/// Seconds until the account may be tried again. A time beyond the longest wait comes from a clock that was wrong.
int secondsToWait(const TAccount &account)
{
    if (!account.nextTry.isValid())
        return 0;
    const qint64 seconds = (QDateTime::currentDateTimeUtc().msecsTo(account.nextTry) + 999) / 1000;
    return seconds > 0 && seconds <= longestWait ? int(seconds) : 0;
}

/// Counts a try as failed before it is looked at, so that tries at the same time on many workstations are counted
/// one by one. False when another one was counted first.
bool countTry(const TAccount &account)
{
    const int failed = std::min(account.failedCount + 1, 1000);
    const int wait = waitAfter(failed);
    const QString nextTry =
        wait ? QDateTime::currentDateTimeUtc().addSecs(wait).toString(u"yyyy-MM-ddTHH:mm:ss"_s) : QString();
    return DM.ADOConnection1->execute(TStatement("update UserAccount set FailedCount=")
                                          .integer(failed)
                                          .sql(", NextTry=")
                                          .value(wait ? QVariant(nextTry) : QVariant())
                                          .sql(" where Code=")
                                          .integer(account.user.Code)
                                          .sql(" and FailedCount=")
                                          .integer(account.failedCount)) == 1;
}

void forgetTries(int code)
{
    DM.ADOConnection1->execute(
        TStatement("update UserAccount set FailedCount=0, NextTry=null where Code=").integer(code));
}

void storeHash(int code, const QByteArray &hash)
{
    DM.ADOConnection1->execute(TStatement("update UserAccount set PasswordHash=")
                                   .text(QString::fromLatin1(hash))
                                   .sql(" where Code=")
                                   .integer(code));
}

/// Checks the password of an account that was just read.
TLogin check(TAccount account, const QString &password)
{
    TLogin login;
    for (;;) {
        login.secondsToWait = secondsToWait(account);
        if (login.secondsToWait > 0) {
            login.result = TLoginResult::TooEarly;
            return login;
        }
        if (countTry(account))
            break;
        const auto again = accountOf(account.user.Code);
        if (!again)
            return login;
        account = *again;
    }
    if (!matches(account.hash, password)) {
        login.secondsToWait = waitAfter(account.failedCount + 1);
        return login;
    }
    forgetTries(account.user.Code);
    if (isOld(account.hash))
        storeHash(account.user.Code, hashOf(password));
    login.result = account.user.IsActive ? TLoginResult::Ok : TLoginResult::Inactive;
    if (account.user.IsActive)
        login.user = account.user;
    return login;
}

/// A user as the event log shows one.
QString described(const TUserInfo &user)
{
    QStringList what{u"«%1»"_s.arg(user.Name)};
    if (!user.FullName.isEmpty())
        what << user.FullName;
    what << (user.IsAdmin ? u"مدیر سیستم"_s : u"کاربر عادی"_s) << (user.IsActive ? u"فعال"_s : u"غیر فعال"_s);
    return what.join(u"، "_s);
}

/// Upkeep of users goes to the event log under no software part, and with the deed or not at all.
void note(TPermission right, const QString &text)
{
    SetUserEvent(TSoftwarePart(0), right, text, true, false);
}

/// A try to log in that was refused; the name as it was typed.
void noteRefused(const QString &name, const TLogin &login)
{
    if (login.result == TLoginResult::Ok)
        return;
    const QString why = login.result == TLoginResult::Inactive   ? u"غیر فعال است"_s
                        : login.result == TLoginResult::TooEarly ? u"پیش از پایان انتظار"_s
                                                                 : u"نام یا گذرواژه نادرست"_s;
    SetUserEvent(TSoftwarePart(0), cpOpen, u"ورود ناموفق با نام «%1»: %2"_s.arg(name, why), true, true);
}

void insertUser(const TUserInfo &user, const QByteArray &hash)
{
    DM.ADOConnection1->execute(
        TStatement(
            "insert into UserAccount(Code, Name, FullName, PasswordHash, IsAdmin, IsActive, FailedCount) "
            "values(")
            .integer(user.Code)
            .sql(",")
            .text(user.Name)
            .sql(",")
            .text(user.FullName)
            .sql(",")
            .text(QString::fromLatin1(hash))
            .sql(",")
            .integer(user.IsAdmin ? 1 : 0)
            .sql(",")
            .integer(user.IsActive ? 1 : 0)
            .sql(",0)"));
}

void updateUser(const TUserInfo &user)
{
    DM.ADOConnection1->execute(TStatement("update UserAccount set Name=")
                                   .text(user.Name)
                                   .sql(", FullName=")
                                   .text(user.FullName)
                                   .sql(", IsAdmin=")
                                   .integer(user.IsAdmin ? 1 : 0)
                                   .sql(", IsActive=")
                                   .integer(user.IsActive ? 1 : 0)
                                   .sql(" where Code=")
                                   .integer(user.Code));
}

bool anotherAdministrator(int code)
{
    const QList<TAccount> list = accounts();
    return std::any_of(list.begin(), list.end(), [&](const TAccount &account) {
        return account.user.Code != code && account.user.IsAdmin && account.user.IsActive;
    });
}

/// Runs an administrator's work in a transaction that is kept only when it ends Ok. Who comes second of two waits, so
/// that two who demote each other at once do not both succeed.
template <class Work>
TLoginResult asAdministrator(bool asFirst, Work work)
{
    TTransaction transaction(*DM.ADOConnection1);
    DM.ADOConnection1->execute(TStatement("update UserAccount set IsAdmin=1 where IsAdmin=1"));
    if (!asFirst && !IsAdministrator(UserInfo))
        return TLoginResult::NotAdministrator;
    const TLoginResult result = work();
    if (result == TLoginResult::Ok)
        transaction.commit();
    return result;
}

/// Writes a user; `asFirst`: only while there is none.
TLoginResult save(TUserInfo &user, const QString &password, bool asFirst)
{
    TUserInfo saved = user;
    saved.Name = PersianText::cut(user.Name.trimmed(), nameWidth);
    saved.FullName = PersianText::cut(user.FullName.trimmed(), fullNameWidth);
    if (nameKey(saved.Name).isEmpty())
        return TLoginResult::NameEmpty;
    if (isWeak(password) && (saved.Code == 0 || !password.isEmpty()))
        return TLoginResult::WeakPassword;
    const QByteArray hash = password.isEmpty() ? QByteArray() : hashOf(password);
    const TLoginResult result = asAdministrator(asFirst, [&] {
        if (asFirst && !NoUserYet())
            return TLoginResult::NameTaken;
        if (const auto other = accountNamed(saved.Name); other && other->user.Code != saved.Code)
            return TLoginResult::NameTaken;
        if (saved.Code == 0) {
            saved.Code =
                DM.ADOConnection1->scalar(TStatement("select isnull(max(Code),0)+1 from UserAccount"))
                    .toInt();
            insertUser(saved, hash);
            note(cpNew, u"کاربر تازه %1"_s.arg(described(saved)));
            return TLoginResult::Ok;
        }
        const auto before = accountOf(saved.Code);
        if (!before)
            return TLoginResult::NoSuchUser;
        if ((!saved.IsAdmin || !saved.IsActive) && !anotherAdministrator(saved.Code))
            return TLoginResult::LastAdministrator;
        updateUser(saved);
        if (described(before->user) != described(saved))
            note(cpEdit, u"کاربر %1 اکنون %2"_s.arg(described(before->user), described(saved)));
        if (!hash.isEmpty()) {
            storeHash(saved.Code, hash);
            forgetTries(saved.Code);
            note(cpEdit, u"گذرواژه تازه برای کاربر %1"_s.arg(saved.Name));
        }
        return TLoginResult::Ok;
    });
    if (result == TLoginResult::Ok)
        user = saved;
    return result;
}

} // namespace

QString LoginText(const TLogin &login)
{
    const QString wait =
        login.secondsToWait > 0 ? u" پس از %1 ثانیه دوباره تلاش کنید."_s.arg(login.secondsToWait) : QString();
    switch (login.result) {
    case TLoginResult::WrongNameOrPassword:
        return u"نام کاربر یا گذرواژه درست نیست."_s + wait;
    case TLoginResult::TooEarly:
        return u"به دلیل چند ورود نادرست، ورود موقتا بسته شده است."_s + wait;
    case TLoginResult::Inactive:
        return u"این کاربر غیر فعال است. با مدیر سیستم تماس بگیرید."_s;
    case TLoginResult::WeakPassword:
        return u"گذرواژه باید دست کم %1 نویسه باشد."_s.arg(MinimalPasswordLength);
    case TLoginResult::NameTaken:
        return u"کاربر دیگری با این نام ثبت شده است."_s;
    case TLoginResult::NameEmpty:
        return u"نام کاربری وارد نشده است."_s;
    case TLoginResult::NoSuchUser:
        return u"این کاربر دیگر وجود ندارد."_s;
    case TLoginResult::NotAdministrator:
        return u"شما اکنون مدیر فعال سیستم نیستید و نمی توانید کاربران را تغییر دهید. چیزی ثبت نشد."_s;
    case TLoginResult::LastAdministrator:
        return u"دست کم یک مدیر فعال باید در سیستم بماند."_s;
    case TLoginResult::Ok:
        break;
    }
    return {};
}

bool NoUserYet()
{
    return DM.ADOConnection1->scalar(TStatement("select count(*) from UserAccount")).toInt() == 0;
}

TLoginResult CreateFirstAdministrator(const QString &name, const QString &fullName, const QString &password)
{
    TUserInfo user{0, name, fullName, true, true};
    return save(user, password, true);
}

TLogin LogIn(const QString &name, const QString &password)
{
    const auto account = accountNamed(name);
    TLogin login;
    if (account)
        login = check(*account, password);
    else
        hashOf(password); // as long as for a user who is there: the time must not tell names apart
    noteRefused(name, login);
    return login;
}

TLogin ReadUser(int code)
{
    TLogin login;
    const auto account = accountOf(code);
    login.result = !account                 ? TLoginResult::NoSuchUser
                   : account->user.IsActive ? TLoginResult::Ok
                                            : TLoginResult::Inactive;
    if (login.result == TLoginResult::Ok)
        login.user = account->user;
    return login;
}

TLogin ChangePassword(int userCode, const QString &oldPassword, const QString &newPassword)
{
    TLogin login;
    const auto account = accountOf(userCode);
    if (!account) {
        login.result = TLoginResult::NoSuchUser;
        return login;
    }
    login = check(*account, oldPassword);
    if (login.result != TLoginResult::Ok)
        return login;
    if (isWeak(newPassword)) {
        login.result = TLoginResult::WeakPassword;
        return login;
    }
    TTransaction transaction(*DM.ADOConnection1);
    storeHash(userCode, hashOf(newPassword));
    note(cpEdit, u"تغییر گذرواژه خود"_s);
    transaction.commit();
    return login;
}

QList<TUserInfo> ListUsers()
{
    QList<TUserInfo> users;
    for (const TAccount &account : accounts())
        users << account.user;
    std::stable_sort(users.begin(), users.end(), [](const TUserInfo &a, const TUserInfo &b) {
        return PersianText::compare(a.Name, b.Name) < 0;
    });
    return users;
}

TLoginResult SaveUser(TUserInfo &user, const QString &password)
{
    return save(user, password, false);
}

TLoginResult DeleteUser(int code)
{
    return asAdministrator(false, [&] {
        const auto account = accountOf(code);
        if (!account)
            return TLoginResult::NoSuchUser;
        if (!anotherAdministrator(code))
            return TLoginResult::LastAdministrator;
        DM.ADOConnection1->execute(TStatement("delete from UserRight where UserCode=").integer(code));
        DM.ADOConnection1->execute(TStatement("delete from UserAccount where Code=").integer(code));
        note(cpDelete, u"حذف کاربر %1"_s.arg(described(account->user)));
        return TLoginResult::Ok;
    });
}
