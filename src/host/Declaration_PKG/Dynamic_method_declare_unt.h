#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QString>
#include <functional>

/// Lets the user pick a record of another part (802 tax tables, 101 person groups). 0: none chosen. When
/// nothing is registered for the part, the host says that there is none to pick.
KETEBIONPAP_CORE int Select_Entity(TSoftwarePart part, const QString &text, bool flag);
/// Opens the suite's earnings (804) or deductions (805) list to pick one (kind 4). 0: none chosen.
KETEBIONPAP_CORE int Open_FiscalDeductionList(TSoftwarePart part, int kind, const QString &text);

/// The screens behind Select_Entity and Open_FiscalDeductionList live in modules that the host loads: the
/// application registers how to reach them (by the module's exports); tests register their own. A null picker returns to
/// the usual one.
using TEntityPicker = std::function<int(const QString &text)>;
KETEBIONPAP_CORE void RegisterEntityPicker(TSoftwarePart part, const TEntityPicker &picker);
/// What picks where nothing is registered, such as the suite's own list of person groups. Set once at the start.
KETEBIONPAP_CORE void SetUsualEntityPicker(TSoftwarePart part, const TEntityPicker &picker);
/// Tells the user that there is nothing to pick; answers 0, as a cancel does.
KETEBIONPAP_CORE int SayNothingToPick();
