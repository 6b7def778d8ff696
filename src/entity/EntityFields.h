#pragma once

#include "entity/Entity_Mapper.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/database/RecordFields.h"

/// Where the editor shows fields: in the rows above the account, in the boxes of its levels, in the rows below it.
enum TEntityPage { etAboveAccount, etAccount, etBelowAccount };

/// Positions in the list of bases.
enum TEntityBasis : int { ebAmount = 0, ebPercent = 1, ebMonthly = 2 /* of an earning */ };

/// The fields of an earning (cspFiscal) or a deduction (cspDeduction), in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TFiscalDeducation_Mapper>> entityFields(TSoftwarePart part);
