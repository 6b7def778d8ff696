#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

#include <QString>
#include <functional>

/// Lets the user pick a record of another part (802 tax tables, 101 person groups). 0: none chosen. When
/// nothing is registered for the part, the host says that there is none to pick.
int Select_Entity(TSoftwarePart part, const QString &text, bool flag);
/// Opens the suite's earnings (804) or deductions (805) list to pick one (kind 4). 0: none chosen.
int Open_FiscalDeductionList(TSoftwarePart part, int kind, const QString &text);

/// Lets the user pick a group of a part (815, 816, 817). 0: none chosen.
int Select_GroupList(TSoftwarePart part, const QString &text);
/// Group upkeep of a part; true when something changed.
bool New_Group(TSoftwarePart part);
bool Edit_Group(TSoftwarePart part, int code);
bool Delete_Group(TSoftwarePart part, int code);

/// The screens behind Select_Entity and Open_FiscalDeductionList live in modules that the host loads: the
/// application registers how to reach them (by the module's exports); tests register their own.
using TEntityPicker = std::function<int(const QString &text)>;
void RegisterEntityPicker(TSoftwarePart part, const TEntityPicker &picker);
