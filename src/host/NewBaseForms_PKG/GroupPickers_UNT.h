#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

#include <QString>

/// Lets the user pick a group of a part (815, 816, 817). 0: none chosen.
int Select_GroupList(TSoftwarePart part, const QString &text);
/// Group upkeep of a part; true when something changed.
bool New_Group(TSoftwarePart part);
bool Edit_Group(TSoftwarePart part, int code);
bool Delete_Group(TSoftwarePart part, int code);
