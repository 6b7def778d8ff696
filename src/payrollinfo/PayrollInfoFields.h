#pragma once

#include "host/Export.h"
#include "host/database/RecordFields.h"
#include "payrollinfo/PayrollInfo_Mapper.h"

/// Where the editor shows settings: the groups of its first page, then those of its second one.
enum TPayrollInfoPage { piGeneral, piBank, piPayer, piSignatories };

/// The settings in the order in which they are read and written. A setting is a row of its own: in place of a column
/// stands the row's code.
KETEBIONPAP_CORE std::span<const TField<TPayrollInfo_Mapper>> payrollInfoFields();

/// The field of a fixed item's link.
KETEBIONPAP_CORE std::span<const TField<TPayrollInfoDetail_Mapper>> payrollItemFields();
