#pragma once

#include "host/Declaration_PKG/LoginResult_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QString>

#include <functional>

/// What only an active administrator does: users, rights, roles.

/// Runs an administrator's work in a transaction that is kept only when it ends Ok and leaves an active administrator
/// (`mayLose`: where it can take one away). Who comes second of two waits, so that two who demote each other at once do
/// not both succeed. `asFirst`: without asking for an administrator.
TLoginResult AsAdministrator(bool asFirst, bool mayLose, const std::function<TLoginResult()> &work);

/// Whether the database has an active administrator, by flag or by role.
bool AdministratorIsLeft();

/// Upkeep of users goes to the event log under no software part, and with the deed or not at all.
void NoteUpkeep(TPermission right, const QString &text);

/// A name of a user or a role as it is stored: in one line, without signs that are not seen or turn the direction.
QString StoredName(const QString &name, int width);
/// Names as people type them: case, both forms of letters and blanks make no difference.
QString NameKey(const QString &name, int width);
