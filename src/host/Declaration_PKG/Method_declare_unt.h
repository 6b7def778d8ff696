#pragma once

#include "host/Export.h"
#include "host/database/Statement.h"

/// Whether a Persian year (1300 to 1500) is a leap year.
bool IsKabiseYear(int year);

/// Appends a condition to a filter: an empty filter becomes the condition, otherwise both are joined by AND.
/// An empty condition leaves the filter as it is.
KETEBIONPAP_CORE void AddFilter(TStatement &filter, const TStatement &condition);
