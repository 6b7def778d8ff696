#pragma once

#include "host/Export.h"
#include "host/database/RecordRules.h"
#include "host/database/Statement.h"
#include "staff/Staff_Mapper.h"

class TStaff_DM;

/// What the rules of an employee look at.
struct TStaffSubject {
    TStaff_DM &data;      ///< its Temp_QUR is used
    TStaff_Mapper staff;  ///< as it is to be saved
    TStaff_Mapper loaded; ///< as it is stored; empty for a new employee
    int firstGroup = 0;   ///< the code of the first group of the list, which stands for all employees
    bool left = false;    ///< whether a date of leaving is asked for
};

/// What must hold of an employee before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE std::span<const TRule<TStaffSubject>> staffRules();
/// What the rules read of every employee, so that it may be read together.
KETEBIONPAP_CORE QList<TStatement> staffReads(const TStaffSubject &subject);
