#include "host/Declaration_PKG/Permission_logs_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
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
