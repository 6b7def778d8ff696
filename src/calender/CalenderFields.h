#pragma once

#include "calender/Calender_Mapper.h"
#include "host/database/RecordFields.h"

/// The fields of a day, in the order in which they are set for a new one.
inline constexpr TField<TCalenderMapper> dayFields[] = {
    {"Title", &TCalenderMapper::_Title},     {"Date", &TCalenderMapper::_Date},
    {"Day", &TCalenderMapper::_Day},         {"Type", &TCalenderMapper::_Type},
    {"Comment", &TCalenderMapper::_Comment},
};
