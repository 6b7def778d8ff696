#pragma once

#include "host/Export.h"
#include "host/database/RecordFields.h"
#include "tax/Tax_Mapper.h"

/// The fields of a tax table, in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TTax_Mapper>> taxFields();

/// The fields of a bracket, in the same way.
KETEBIONPAP_CORE std::span<const TField<TTmpTax_Mapper>> bracketFields();
