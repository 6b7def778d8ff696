#pragma once

#include "host/Declaration_PKG/LoginResult_unt.h"
#include "host/Declaration_PKG/Password_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Declaration_PKG/UserRights_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The users of the suite: who may log in, and with which rights. Passwords are kept as Argon2id hashes only.
/// Every function throws TDatabaseError unless its comment says otherwise.

struct TLogin {
    TLoginResult result = TLoginResult::WrongNameOrPassword;
    int secondsToWait = 0;
    TUserInfo user = {}; ///< with Ok only; an administrator by a role counts as one
    QString why = {};    ///< with WeakPassword: what PasswordComplaint says
};

/// One clear Persian sentence for a result other than Ok.
KETEBIONPAP_CORE QString LoginText(const TLogin &login);

/// Whether the database has no user yet: the first start asks for the first administrator.
KETEBIONPAP_CORE bool NoUserYet();
/// Creates the first administrator (WeakPassword, NameTaken when there are users already, Ok). Does not log in.
KETEBIONPAP_CORE TLoginResult CreateFirstAdministrator(const QString &name, const QString &fullName,
                                                       const QString &password);

/// Checks name and password. The name compares without regard to case and to the two forms of yeh and kaf; the
/// password counts as it is typed. The first three wrong passwords cost nothing; from then on each one doubles the
/// wait (2, 4, 8 ... at most 900 seconds), for this user on all workstations, by the database's clock. The right password
/// ends it. A name that no user has waits alike; its tries are forgotten after a day.
/// Sets nothing: `UserInfo = login.user` logs in.
KETEBIONPAP_CORE TLogin LogIn(const QString &name, const QString &password);
/// The user's record again, for rights that were changed while the user worked.
KETEBIONPAP_CORE TLogin ReadUser(int code);

/// A user changes the own password (WrongNameOrPassword: the old one is wrong; TooEarly; WeakPassword; Ok).
KETEBIONPAP_CORE TLogin ChangePassword(int userCode, const QString &oldPassword, const QString &newPassword);

/// Upkeep by an administrator: who is logged in is asked for it at the moment of the deed (NotAdministrator). Each deed
/// has its lines in the event log, written with it.
KETEBIONPAP_CORE QList<TUserInfo> ListUsers(); ///< by name; IsAdmin is the user's own, not by a role
/// Code 0 creates the user and sets the code; otherwise name, full name and both flags are changed.
/// `password` empty leaves it (WeakPassword for a new user).
KETEBIONPAP_CORE TLoginResult SaveUser(TUserInfo &user, const QString &password);
/// Deletes a user and the user's rights; the event log keeps its lines.
KETEBIONPAP_CORE TLoginResult DeleteUser(int code);

/// For whoever may write the database: makes a user an active administrator with a new password and ends the wait, without
/// a log-in (NoSuchUser, WeakPassword, LowMemory, Ok). `by` is named in the event log.
KETEBIONPAP_CORE TLogin ResetAdministrator(const QString &name, const QString &password, const QString &by);
