#pragma once

#include "host/database/RecordFields.h"
#include "tax/Tax_Mapper.h"

/// The fields of a tax table, in the order in which a save sets their columns. The code is never changed.
inline constexpr TField<TTax_Mapper> taxFields[] = {
    {"Code", &TTax_Mapper::_Code},
    {"Title", &TTax_Mapper::_Title},
    {"Comment", &TTax_Mapper::_Comment},
};

/// The fields of a bracket, in the same way. The tax table that it belongs to is never changed.
inline constexpr TField<TTmpTax_Mapper> bracketFields[] = {
    {"TaxMainCode", &TTmpTax_Mapper::_TaxMainCode}, {"FromSalary", &TTmpTax_Mapper::_FromSalary},
    {"ToSalary", &TTmpTax_Mapper::_ToSalary},       {"Percent", &TTmpTax_Mapper::_Percent},
    {"Comment", &TTmpTax_Mapper::_Comment},
};
