#include "host/Declaration_PKG/Permission_logs_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QTime>

using namespace Qt::Literals::StringLiterals;

TUserInfo UserInfo;

namespace {

const int eventWidth = 400; // characters of UserEvent.EventText
const int userWidth = 50;

} // namespace

bool HoldsPermission(const TUserInfo &user, TSoftwarePart part, TPermission right)
{
    if (user.Code == 0 || !user.IsActive)
        return user.IsActive && user.IsAdmin;
    // Asked each time, the account too: it may have been shut out or demoted since the log-in.
    return DM.ADOConnection1
               ->scalar(
                   TStatement("select count(*) from UserAccount where Code=")
                       .integer(user.Code)
                       .sql(" and IsActive=1 and (IsAdmin=1 or exists (select Permission from UserRight "
                            "where UserCode=UserAccount.Code and SoftwarePart=")
                       .integer(int(part))
                       .sql(" and Permission=")
                       .integer(int(right))
                       .sql(") or exists (select RoleCode from UserRoleMember where "
                            "UserCode=UserAccount.Code and (RoleCode=1 or exists (select Permission from "
                            "UserRoleRight where RoleCode=UserRoleMember.RoleCode and SoftwarePart=")
                       .integer(int(part))
                       .sql(" and Permission=")
                       .integer(int(right))
                       .sql("))))"))
               .toInt() > 0;
}

bool IsAdministrator(const TUserInfo &user)
{
    if (user.Code == 0 || !user.IsActive)
        return user.IsActive && user.IsAdmin;
    return DM.ADOConnection1
               ->scalar(TStatement("select count(*) from UserAccount where Code=")
                            .integer(user.Code)
                            .sql(" and IsActive=1 and (IsAdmin=1 or exists (select RoleCode from "
                                 "UserRoleMember where UserCode=UserAccount.Code and RoleCode=1))"))
               .toInt() > 0;
}

TStatement StandingExpression(const TUserInfo &user, TSoftwarePart part, TPermission right)
{
    return TStatement("isnull((select case when IsActive=1 and (IsAdmin=1 or exists (select Permission from "
                      "UserRight where UserCode=UserAccount.Code and SoftwarePart=")
        .integer(int(part))
        .sql(" and Permission=")
        .integer(int(right))
        .sql(")) then 0 when IsActive=1 then 1 else 2 end from UserAccount where Code=")
        .integer(user.Code)
        .sql("),3)");
}

TStanding StandingOf(const TUserInfo &user, TSoftwarePart part, TPermission right)
{
    if (user.Code == 0)
        return !user.IsActive ? TStanding::ShutOut : user.IsAdmin ? TStanding::Holds : TStanding::NoRight;
    const TStatement read = TStatement("select ").append(StandingExpression(user, part, right));
    return TStanding(DM.ADOConnection1->scalar(read).toInt());
}

void TellStanding(TStanding standing, TSoftwarePart part, TPermission right, const QString &kept)
{
    QString why;
    QString what;
    switch (standing) {
    case TStanding::Holds:
        return;
    case TStanding::NoRight:
        why = u"شما دسترسی «%1» را در «%2» ندارید."_s.arg(PermissionName(right), SoftwarePartName(part));
        what = u"از مدیر سیستم بخواهید این دسترسی را به شما بدهد، سپس دوباره انجام دهید."_s;
        break;
    case TStanding::ShutOut:
        why = u"حساب کاربری شما («\u2068%1\u2069») غیر فعال شده است."_s.arg(UserInfo.Name);
        what = u"از مدیر سیستم بخواهید حساب را فعال کند، سپس دوباره انجام دهید."_s;
        break;
    case TStanding::Deleted:
        why = u"حساب کاربری شما («\u2068%1\u2069») حذف شده است."_s.arg(UserInfo.Name);
        what = u"آنچه لازم دارید یادداشت کنید و از مدیر سیستم بخواهید برای شما حساب دیگری بسازد."_s;
        break;
    }
    SetUserEvent(part, right, u"رد شد: %1"_s.arg(why), true, true);
    ShowSmartMessage(QStringList{why, kept, what}.join(u'\n'), {}, miWarning);
}

bool HaveAdministration(const TUserInfo &user, const QString &deed)
{
    try {
        if (IsAdministrator(user))
            return true;
        SetUserEvent(TSoftwarePart(0), cpEdit, u"رد شد: این کاربر مدیر فعال سیستم نیست: %1"_s.arg(deed), true,
                     true);
        ShowSmartMessage(
            u"این کار تنها با حساب یک مدیر فعال سیستم شدنی است و حساب شما اکنون چنین نیست: %1. از مدیر سیستم بخواهید آن را انجام دهد یا دسترسی را به شما بازگرداند."_s
                .arg(deed),
            {}, miWarning);
    } catch (const TDatabaseError &) {
        TellFault();
    }
    return false;
}

bool HavePermission(const TUserInfo &user, TSoftwarePart part, TPermission right, bool, bool tellUser,
                    const QString &)
{
    try {
        if (HoldsPermission(user, part, right))
            return true;
        if (tellUser) {
            SetUserEvent(part, right, u"رد شد: این کاربر این دسترسی را ندارد"_s, true, true);
            MsgNoPermission(part, right);
        }
    } catch (const TDatabaseError &) {
        if (tellUser)
            TellFault();
    }
    return false;
}

void SetUserEvent(TSoftwarePart part, TPermission right, const QString &text, bool ofSystem, bool tellUser)
{
    try {
        AddEventLine({.userCode = UserInfo.Code,
                      .userName = EventText(UserInfo.Name, userWidth),
                      .comIndex = IniOptions.Com_Index,
                      .part = int(part),
                      .right = int(right),
                      .text = EventText(text, eventWidth),
                      .date = NowDate(),
                      .time = QTime::currentTime().toString(u"HH:mm:ss"_s),
                      .ofSystem = ofSystem});
    } catch (const TDatabaseError &) {
        if (!tellUser)
            throw;
        TellFault();
    }
}
