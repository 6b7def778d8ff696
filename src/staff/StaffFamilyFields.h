#pragma once

#include "host/Export.h"
#include "host/database/RecordFields.h"
#include "staff/Family_Mapper.h"

/// The fields of a member of a family, in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TFamilly_Mapper>> staffFamilyFields();
