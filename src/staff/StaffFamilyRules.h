#pragma once

#include "host/database/RecordRules.h"
#include "staff/StaffFamilyFields.h"

class TStaffFamily_DM;

/// What the rules of a member of a family look at. A stored row's identifier is that of `loaded`.
struct TStaffFamilySubject : TRecordSubject<TFamilly_Mapper> {
    TStaffFamily_DM &data; ///< its Temp_QUR is used
};

/// What must hold of a member of a family before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TStaffFamilySubject>> staffFamilyRules();
