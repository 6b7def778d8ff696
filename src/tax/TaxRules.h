#pragma once

#include "host/database/RecordRules.h"
#include "tax/TaxFields.h"

class TTax_DM;

/// What the rules of a tax table look at.
struct TTaxSubject : TRecordSubject<TTax_Mapper> {
    int brackets = 0; ///< how many it is to have
};

/// What the rules of a bracket look at.
struct TBracketSubject : TRecordSubject<TTmpTax_Mapper> {
    TTax_DM &data; ///< its Temp_QUR is used
    int row = 0;   ///< the bracket's working row; 0 for a new one
};

/// What must hold of a tax table, or of a bracket, before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TTaxSubject>> taxRules();
KETEBIONPAP_CORE std::span<const TRule<TBracketSubject>> bracketRules();
