#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>

/// The rights that the suite asks for, their names, and who holds them.

/// One right on one software part.
struct TRight {
    TSoftwarePart part;
    TPermission right;
    bool operator==(const TRight &) const = default;
};
/// All rights that the suite asks for, in the order of a screen that shows them, with Persian names.
struct TRightName {
    TRight right;
    QString partName;
    QString rightName;
};
KETEBIONPAP_CORE const QList<TRightName> &AllRights();
/// The Persian name of a software part; its number when it has none.
KETEBIONPAP_CORE QString SoftwarePartName(TSoftwarePart part);
/// The Persian name of a right; its number when it has none.
KETEBIONPAP_CORE QString PermissionName(TPermission right);

KETEBIONPAP_CORE QList<TRight> RightsOfUser(int code);
/// Replaces the user's rights as a whole, in a transaction, with a line of the event log for each part whose rights
/// change. False: who is logged in is no active administrator now.
[[nodiscard]] KETEBIONPAP_CORE bool SetRightsOfUser(int code, const QList<TRight> &rights);
