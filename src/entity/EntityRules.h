#pragma once

#include "entity/EntityFields.h"
#include "host/database/RecordRules.h"

class TEntity_DM;

/// What the rules of an earning or a deduction look at. `loaded` has its title as it is stored.
struct TEntitySubject : TRecordSubject<TFiscalDeducation_Mapper> {
    TEntity_DM &data; ///< its Temp_QUR is used
    TSoftwarePart part = cspFiscal;
    int own = 0; ///< the code of a stored item's row; 0 for a new one
};

/// What must hold of an item before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TEntitySubject>> entityRules();
