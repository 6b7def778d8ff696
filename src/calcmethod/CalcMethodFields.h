#pragma once

#include "calcmethod/CalcMethod_Mapper.h"
#include "host/database/RecordFields.h"

/// The fields of a calculation method, in the order in which a save sets their columns.
inline constexpr TField<TCalcMethod_Mapper> calcMethodFields[] = {
    {"Code", &TCalcMethod_Mapper::_Code},           {"Title", &TCalcMethod_Mapper::_Title},
    {"StaffIns", &TCalcMethod_Mapper::_StaffIns},   {"EmployerIns", &TCalcMethod_Mapper::_EmployerIns},
    {"OverTime", &TCalcMethod_Mapper::_OverTime},   {"TaxMainCode", &TCalcMethod_Mapper::_TaxMainCode},
    {"DailyIns", &TCalcMethod_Mapper::_DailyIns},   {"DecTax", &TCalcMethod_Mapper::_DecTax},
    {"Maskok", &TCalcMethod_Mapper::_Maskok},       {"LeaveCeil", &TCalcMethod_Mapper::_LeaveCeil},
    {"OutPut", &TCalcMethod_Mapper::_OutPut},       {"Comment", &TCalcMethod_Mapper::_Comment},
    {"Insurance", &TCalcMethod_Mapper::_Insurance}, {"Tax", &TCalcMethod_Mapper::_Tax},
    {"BedBes", &TCalcMethod_Mapper::_BedBes},       {"Loan", &TCalcMethod_Mapper::_Loan},
    {"OverDis", &TCalcMethod_Mapper::_OverDis},     {"Entrance", &TCalcMethod_Mapper::_Entrance},
    {"Exit", &TCalcMethod_Mapper::_Exit},
};
