#pragma once

#include "calcmethod/CalcMethod_Mapper.h"
#include "host/Export.h"
#include "host/database/RecordFields.h"

/// Where the editor shows fields: its first page, the insurance there, its second page.
enum TCalcMethodPage { cmGeneral, cmInsurance, cmAttendance };

/// The fields of a calculation method, in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TCalcMethod_Mapper>> calcMethodFields();
