#pragma once

#include "host/database/RecordRules.h"
#include "payrollinfo/PayrollInfoFields.h"

using TPayrollInfoSubject = TRecordSubject<TPayrollInfo_Mapper>;

/// What must hold of the settings before they are saved, in the order in which the users are told; behind it, what must
/// hold of the tax office's page, for those who may open it.
KETEBIONPAP_CORE std::span<const TRule<TPayrollInfoSubject>> payrollInfoRules();
KETEBIONPAP_CORE std::span<const TRule<TPayrollInfoSubject>> taxOfficeRules();

/// What the rules of a fixed item's link look at.
struct TPayrollItemSubject : TRecordSubject<TPayrollInfoDetail_Mapper> {
    bool isDeduction = false; ///< what the item is linked to, else an earning
};

/// What must hold of a link before it is saved.
KETEBIONPAP_CORE std::span<const TRule<TPayrollItemSubject>> payrollItemRules();
