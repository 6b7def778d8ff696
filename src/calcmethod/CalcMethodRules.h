#pragma once

#include "calcmethod/CalcMethodFields.h"
#include "host/database/RecordRules.h"

class TCalcMethod_DM;

/// What the rules of a calculation method look at.
struct TCalcMethodSubject : TRecordSubject<TCalcMethod_Mapper> {
    TCalcMethod_DM &data; ///< its Temp_QUR is used
    int own = 0;          ///< the code that its row has, or that was offered to a new one
};

/// What must hold of a calculation method before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TCalcMethodSubject>> calcMethodRules();
