#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>

/// The rights that the suite asks for, and their names.

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
