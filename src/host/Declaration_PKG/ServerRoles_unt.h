#pragma once

#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>

/// What the suite's rights mean to a server where everybody has a login of his own: a database role for each, with what
/// its screens do to which tables.

/// What a role may do with one table, view or function.
struct TServerGrant {
    QString object;
    QString deeds;        ///< of "SIUD" (select, insert, update, delete), or "X" (execute)
    QString columns = {}; ///< that it may update; empty: all
};

struct TServerRole {
    QString name;
    QList<TServerGrant> grants; ///< none: the right is the program's own affair
};

/// Everybody's: log-in, locks, the event log's new lines, working rows.
KETEBIONPAP_CORE const TServerRole &EverydayServerRole();
/// What only who manages users, locks and workstations does.
KETEBIONPAP_CORE const TServerRole &AdministrationServerRole();
/// What goes with putting picked earnings and deductions into an order or an output.
KETEBIONPAP_CORE const TServerRole &PickServerRole();
/// The role of one of AllRights().
KETEBIONPAP_CORE TServerRole ServerRoleOf(const TRight &right);
/// All of them as T-SQL that makes them and grants their statements; may be run again.
KETEBIONPAP_CORE QString ServerRolesScript();
