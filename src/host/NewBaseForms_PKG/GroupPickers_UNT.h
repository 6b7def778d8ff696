#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QString>

/// Lets the user pick a group of a part (815, 816, 817). 0: none chosen.
KETEBIONPAP_HOST int Select_GroupList(TSoftwarePart part, const QString &text);
/// Group upkeep of a part; true when something changed.
KETEBIONPAP_HOST bool New_Group(TSoftwarePart part);
KETEBIONPAP_HOST bool Edit_Group(TSoftwarePart part, int code);
KETEBIONPAP_HOST bool Delete_Group(TSoftwarePart part, int code);
