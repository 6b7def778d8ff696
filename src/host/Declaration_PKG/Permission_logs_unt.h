#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QString>

class TStatement;

/// The user who is logged in. What it may do is asked of its account each time; the flags are those of the log-in.
struct TUserInfo {
    int Code =
        0; ///< 0: no account (nobody, or the program itself with a sample company); the flags count then
    QString Name;         ///< login name
    QString FullName;     ///< shown in the status bar
    bool IsAdmin = false; ///< holds every right
    bool IsActive = true;
};
extern KETEBIONPAP_CORE TUserInfo UserInfo;

/// Whether the user holds a right on a software part. The first flag says that a whole screen is asked for
/// (false: an action in one); with the second one true the host itself tells the user about a refusal,
/// through MessageService, so the caller stops silently. A database error refuses.
KETEBIONPAP_CORE bool HavePermission(const TUserInfo &user, TSoftwarePart part, TPermission right,
                                     bool wholeScreen, bool tellUser, const QString &text);

/// The same question for a rule that must not go on without an answer: nobody is told, and a database error is
/// thrown (TDatabaseError).
KETEBIONPAP_CORE bool HoldsPermission(const TUserInfo &user, TSoftwarePart part, TPermission right);

/// Whether the user's account is an active administrator's now. Throws TDatabaseError.
KETEBIONPAP_CORE bool IsAdministrator(const TUserInfo &user);

/// How a user stands at the moment of a deed.
enum class TStanding {
    Holds,
    NoRight, ///< the account is an active one without the right
    ShutOut, ///< the account is not active
    Deleted  ///< there is no such account
};
/// Throws TDatabaseError.
KETEBIONPAP_CORE TStanding StandingOf(const TUserInfo &user, TSoftwarePart part, TPermission right);
/// The same as an expression of a statement, for a read that is sent in any case: the number of the standing. Only for
/// a user with an account.
TStatement StandingExpression(const TUserInfo &user, TSoftwarePart part, TPermission right);
/// Tells a user who may not do a thing why, and what is to be done (nothing for one who may), and notes the refusal in
/// the event log. `kept` says what becomes of his work.
KETEBIONPAP_CORE void TellStanding(TStanding standing, TSoftwarePart part, TPermission right,
                                   const QString &kept);

/// IsAdministrator for a door: a refusal is told and noted in the event log, and a database error refuses.
[[nodiscard]] KETEBIONPAP_CORE bool HaveAdministration(const TUserInfo &user, const QString &deed);

/// Writes a line to the event log (table UserEvent): who, when, where, what. The first flag marks an event of
/// the system itself, the second one keeps an error from the caller (the host then tells the user).
KETEBIONPAP_CORE void SetUserEvent(TSoftwarePart part, TPermission right, const QString &text, bool ofSystem,
                                   bool tellUser);
