#pragma once

#include "calender/Calender_Mapper.h"
#include "host/Export.h"
#include "host/database/RecordFields.h"

/// The fields of a day, in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TCalenderMapper>> dayFields();
