#include "host/Declaration_PKG/Login_unt.h"

#include "host/Declaration_PKG/Administrators_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Sha256.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

const int nameWidth = 50;                // characters of UserAccount.Name
const int fullNameWidth = 100;           // characters of UserAccount.FullName
const int freeTries = 3;                 // wrong passwords that cost no wait
const int longestWait = 900;             // s
const int forgottenAfter = 24 * 60 * 60; // s

struct TAccount {
    TUserInfo user; ///< IsAdmin: the own flag
    bool isAdminByRole = false;
    QByteArray hash;
    bool isUnknown = false; ///< the tries of names that no user has; Code is their row
    int failedCount = 0;
    QDateTime nextTry;
    QDateTime now; ///< by the database's clock, when this was read
};

QDateTime timeOf(const QVariant &text)
{
    QDateTime time = QDateTime::fromString(text.toString(), Qt::ISODate);
    time.setTimeSpec(Qt::UTC);
    return time;
}

/// All users, and behind them the tries of unknown names in a row, if one is asked for.
QList<TAccount> accounts(int unknownRow = -1)
{
    TQuery query(DM.ADOConnection1, u"Users_QUR"_s);
    query.setStatement(
        TStatement(
            "select Code, Name, FullName, PasswordHash, IsAdmin, IsActive, FailedCount, NextTry, "
            "dbo.UtcNow_FNC() as TimeNow, (select count(*) from UserRoleMember where "
            "UserCode=UserAccount.Code and RoleCode=1) as ByRole, 0 as Unknown from UserAccount union all "
            "select Bucket, null, null, null, 0, 0, FailedCount, NextTry, dbo.UtcNow_FNC(), 0, 1 from "
            "UnknownNameTry where Bucket=")
            .integer(unknownRow));
    query.open();
    QList<TAccount> list;
    for (int row = 0; row < query.recordCount(); ++row) {
        TAccount account;
        account.user = {query.valueAt(row, 0).toInt(), query.valueAt(row, 1).toString(),
                        query.valueAt(row, 2).toString(), query.valueAt(row, 4).toInt() != 0,
                        query.valueAt(row, 5).toInt() != 0};
        account.hash = query.valueAt(row, 3).toString().toLatin1();
        account.failedCount = query.valueAt(row, 6).toInt();
        account.nextTry = timeOf(query.valueAt(row, 7));
        account.now = timeOf(query.valueAt(row, 8));
        account.isAdminByRole = query.valueAt(row, 9).toInt() > 0;
        account.isUnknown = query.valueAt(row, 10).toInt() != 0;
        list.append(account);
    }
    return list;
}

QString nameKey(const QString &name)
{
    return NameKey(name, nameWidth);
}

/// The user with a name; without one the tries of such names, where `unknownRow` asks for them.
std::optional<TAccount> accountNamed(const QString &name, int unknownRow = -1)
{
    const QString key = nameKey(name);
    std::optional<TAccount> unknown;
    for (const TAccount &account : accounts(unknownRow)) {
        if (account.isUnknown)
            unknown = account;
        else if (nameKey(account.user.Name) == key)
            return account;
    }
    return unknown;
}

std::optional<TAccount> accountOf(int code, bool unknown = false)
{
    for (const TAccount &account : accounts(unknown ? code : -1)) {
        if (account.user.Code == code && account.isUnknown == unknown)
            return account;
    }
    return std::nullopt;
}

int rowOfUnknown(const QString &name)
{
    return Sha256::hex(nameKey(name).toUtf8()).left(2).toInt(nullptr, 16);
}

/// The user as the program knows one: an administrator by a role is one.
TUserInfo userOf(const TAccount &account)
{
    TUserInfo user = account.user;
    user.IsAdmin = user.IsAdmin || account.isAdminByRole;
    return user;
}

int waitAfter(int failedCount)
{
    return failedCount <= freeTries ? 0
                                    : int(std::min(double(longestWait), std::exp2(failedCount - freeTries)));
}

QString timeText(const QDateTime &time)
{
    return time.toString(u"yyyy-MM-ddTHH:mm:ss"_s);
}

/// Sets the tries of an account or of unknown names, unless another try was counted since they were read.
bool setTries(const TAccount &account, int failed, const QVariant &nextTry, int failedBefore)
{
    return DM.ADOConnection1->execute(TStatement(account.isUnknown ? "update UnknownNameTry set FailedCount="
                                                                   : "update UserAccount set FailedCount=")
                                          .integer(failed)
                                          .sql(", NextTry=")
                                          .value(nextTry)
                                          .sql(account.isUnknown ? u" where Bucket="_s : u" where Code="_s)
                                          .integer(account.user.Code)
                                          .sql(" and FailedCount=")
                                          .integer(failedBefore)) == 1;
}

/// Seconds until the account may be tried again. The database's clock was set back, or wrong before, where that is beyond
/// the longest wait: the wait then begins anew, so that it is neither shorter nor without end.
int secondsToWait(TAccount &account)
{
    if (!account.nextTry.isValid())
        return 0;
    const qint64 seconds = account.now.secsTo(account.nextTry);
    if (seconds <= longestWait)
        return int(std::max(qint64(0), seconds));
    const int wait = waitAfter(account.failedCount);
    account.nextTry = account.now.addSecs(wait);
    setTries(account, account.failedCount, timeText(account.nextTry), account.failedCount);
    return wait;
}

/// How many tries count: those of unknown names are nobody's, and no log-in ends them.
int countedTries(const TAccount &account)
{
    const bool isOld = account.isUnknown && account.nextTry.isValid() &&
                       account.nextTry.secsTo(account.now) > forgottenAfter;
    return isOld ? 0 : account.failedCount;
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

/// Who has no password takes as long as who has one: the time must not tell names apart.
bool matches(const TAccount &account, const QString &password)
{
    if (!account.hash.isEmpty())
        return PasswordMatches(account.hash, password);
    HashOfPassword(password);
    return false;
}

/// Checks the password of an account that was just read. The try is counted as failed before it is looked at, so that
/// tries at the same time on many workstations are counted one by one.
TLogin check(TAccount account, const QString &password)
{
    TLogin login;
    int failed = 0;
    for (;;) {
        login.secondsToWait = secondsToWait(account);
        if (login.secondsToWait > 0) {
            login.result = TLoginResult::TooEarly;
            return login;
        }
        failed = std::min(countedTries(account) + 1, 1000);
        const int wait = waitAfter(failed);
        const QVariant next = wait || account.isUnknown ? timeText(account.now.addSecs(wait)) : QVariant();
        if (setTries(account, failed, next, account.failedCount))
            break;
        const auto again = accountOf(account.user.Code, account.isUnknown);
        if (!again)
            return login;
        account = *again;
    }
    try {
        if (!matches(account, password)) {
            login.secondsToWait = waitAfter(failed);
            return login;
        }
        const QByteArray renewed = IsOldPasswordHash(account.hash) ? HashOfPassword(password) : QByteArray();
        forgetTries(account.user.Code);
        if (!renewed.isEmpty())
            storeHash(account.user.Code, renewed);
    } catch (const std::bad_alloc &) {
        const QVariant before = account.nextTry.isValid() ? timeText(account.nextTry) : QVariant();
        setTries(account, account.failedCount, before, failed);
        login.result = TLoginResult::LowMemory;
        return login;
    }
    login.result = account.user.IsActive ? TLoginResult::Ok : TLoginResult::Inactive;
    if (account.user.IsActive)
        login.user = userOf(account);
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

/// A try to log in that was refused; the name as it was typed.
void noteRefused(const QString &name, const TLogin &login)
{
    if (login.result == TLoginResult::Ok)
        return;
    const QString why = login.result == TLoginResult::Inactive    ? u"غیر فعال است"_s
                        : login.result == TLoginResult::TooEarly  ? u"پیش از پایان انتظار"_s
                        : login.result == TLoginResult::LowMemory ? u"کمبود حافظه"_s
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

/// Empty for an empty password, nothing where memory is short.
std::optional<QByteArray> newHash(const QString &password)
{
    try {
        return password.isEmpty() ? QByteArray() : HashOfPassword(password);
    } catch (const std::bad_alloc &) {
        return {};
    }
}

/// Writes a user; `asFirst`: only while there is none.
TLoginResult save(TUserInfo &user, const QString &password, bool asFirst)
{
    TUserInfo saved = user;
    saved.Name = StoredName(user.Name, nameWidth);
    saved.FullName = StoredName(user.FullName, fullNameWidth);
    if (nameKey(saved.Name).isEmpty())
        return TLoginResult::NameEmpty;
    if ((saved.Code == 0 || !password.isEmpty()) &&
        !PasswordComplaint(password, {saved.Name, saved.FullName}).isEmpty())
        return TLoginResult::WeakPassword;
    const auto hash = newHash(password);
    if (!hash)
        return TLoginResult::LowMemory;
    const TLoginResult result = AsAdministrator(asFirst, saved.Code != 0, [&] {
        if (asFirst && !NoUserYet())
            return TLoginResult::NameTaken;
        if (const auto other = accountNamed(saved.Name); other && other->user.Code != saved.Code)
            return TLoginResult::NameTaken;
        if (saved.Code == 0) {
            saved.Code =
                DM.ADOConnection1->scalar(TStatement("select isnull(max(Code),0)+1 from UserAccount"))
                    .toInt();
            insertUser(saved, *hash);
            NoteUpkeep(cpNew, u"کاربر تازه %1"_s.arg(described(saved)));
            return TLoginResult::Ok;
        }
        const auto before = accountOf(saved.Code);
        if (!before)
            return TLoginResult::NoSuchUser;
        updateUser(saved);
        if (described(before->user) != described(saved))
            NoteUpkeep(cpEdit, u"کاربر %1 اکنون %2"_s.arg(described(before->user), described(saved)));
        if (!hash->isEmpty()) {
            storeHash(saved.Code, *hash);
            forgetTries(saved.Code);
            NoteUpkeep(cpEdit, u"گذرواژه تازه برای کاربر %1"_s.arg(saved.Name));
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
        return login.why.isEmpty() ? u"گذرواژه باید دست کم %1 نویسه باشد و به آسانی حدس زده نشود."_s.arg(
                                         MinimalPasswordLength)
                                   : login.why;
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
    case TLoginResult::LowMemory:
        return u"حافظه رایانه برای بررسی گذرواژه کافی نیست و این کوشش شمرده نشد. چند برنامه یا پنجره را ببندید و دوباره تلاش کنید."_s;
    case TLoginResult::NoSuchRole:
        return u"این نقش دیگر وجود ندارد."_s;
    case TLoginResult::RoleStays:
        return u"نقش مدیر سیستم حذف نمی شود."_s;
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
    TLogin login;
    if (const auto account = accountNamed(name, rowOfUnknown(name)))
        login = check(*account, password);
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
        login.user = userOf(*account);
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
    login.why = PasswordComplaint(newPassword, {account->user.Name, account->user.FullName});
    const auto hash = login.why.isEmpty() ? newHash(newPassword) : QByteArray();
    login.result = !login.why.isEmpty() ? TLoginResult::WeakPassword
                   : hash               ? TLoginResult::Ok
                                        : TLoginResult::LowMemory;
    if (login.result != TLoginResult::Ok)
        return login;
    TTransaction transaction(*DM.ADOConnection1);
    storeHash(userCode, *hash);
    NoteUpkeep(cpEdit, u"تغییر گذرواژه خود"_s);
    transaction.commit();
    return login;
}

TLogin ResetAdministrator(const QString &name, const QString &password, const QString &by)
{
    TLogin login;
    const auto account = accountNamed(name);
    if (!account) {
        login.result = TLoginResult::NoSuchUser;
        return login;
    }
    login.why = PasswordComplaint(password, {account->user.Name, account->user.FullName});
    const auto hash = login.why.isEmpty() ? newHash(password) : QByteArray();
    if (!login.why.isEmpty() || !hash) {
        login.result = hash ? TLoginResult::WeakPassword : TLoginResult::LowMemory;
        return login;
    }
    login.user = account->user;
    login.user.IsAdmin = login.user.IsActive = true;
    login.result = AsAdministrator(true, true, [&] {
        updateUser(login.user);
        storeHash(login.user.Code, *hash);
        forgetTries(login.user.Code);
        NoteUpkeep(
            cpEdit,
            u"بازنشانی مدیر با خط فرمان، بی ورود به برنامه، به دست «%1»: کاربر %2 اکنون %3، با گذرواژه تازه"_s
                .arg(by, described(account->user), described(login.user)));
        return TLoginResult::Ok;
    });
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
    return AsAdministrator(false, true, [&] {
        const auto account = accountOf(code);
        if (!account)
            return TLoginResult::NoSuchUser;
        DM.ADOConnection1->execute(TStatement("delete from UserRoleMember where UserCode=").integer(code));
        DM.ADOConnection1->execute(TStatement("delete from UserRight where UserCode=").integer(code));
        DM.ADOConnection1->execute(TStatement("delete from UserAccount where Code=").integer(code));
        NoteUpkeep(cpDelete, u"حذف کاربر %1"_s.arg(described(account->user)));
        return TLoginResult::Ok;
    });
}
