#pragma once

#include "calender/CalenderFields.h"
#include "host/database/RecordRules.h"

using TDaySubject = TRecordSubject<TCalenderMapper>;

/// What must hold of a day before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TDaySubject>> dayRules();
