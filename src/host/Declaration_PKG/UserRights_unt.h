#pragma once

#include "host/Declaration_PKG/LoginResult_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Export.h"

#include <QHash>
#include <QList>
#include <QStringList>

/// Which rights the users hold: their own, and those of their roles. Who is logged in must be an active administrator at
/// the moment of a change (NotAdministrator), and each change has its lines in the event log, from what to what.
/// Every function throws TDatabaseError.

/// A named set of rights.
struct TRole {
    int code = 0;
    QString name;
    QList<TRight> rights; ///< the administrator's role names none and holds all
};
/// Role 1 makes an administrator of who has it.
const int AdministratorRole = 1;

/// The user's own rights.
KETEBIONPAP_CORE QList<TRight> RightsOfUser(int code);
/// The codes of the user's roles.
KETEBIONPAP_CORE QList<int> RolesOfUser(int code);
/// Replaces the user's own rights as a whole, in a transaction, with a line of the event log for each part whose rights
/// change. False: who is logged in is no active administrator now.
[[nodiscard]] KETEBIONPAP_CORE bool SetRightsOfUser(int code, const QList<TRight> &rights);
/// The same for own rights and roles together (NotAdministrator, NoSuchUser, NoSuchRole, LastAdministrator, Ok).
KETEBIONPAP_CORE TLoginResult SetRightsAndRoles(int code, const QList<TRight> &rights,
                                                const QList<int> &roles);

KETEBIONPAP_CORE QList<TRole> ListRoles(); ///< by code
/// The names of the roles of all users who have any, by the user's code.
KETEBIONPAP_CORE QHash<int, QStringList> RoleNamesOfUsers();
/// Code 0 creates the role and sets the code; otherwise name and rights are changed (those of the administrator's role
/// stay all). NameEmpty, NameTaken, NoSuchRole, NotAdministrator, Ok.
KETEBIONPAP_CORE TLoginResult SaveRole(TRole &role);
/// Takes the role away from all who have it, and deletes it (NoSuchRole, RoleStays for the administrator's, Ok).
KETEBIONPAP_CORE TLoginResult DeleteRole(int code);
