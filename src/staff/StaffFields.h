#pragma once

#include "host/database/RecordFields.h"
#include "staff/Staff_Mapper.h"

/// The fields of an employee, in the order in which a save sets their columns.
inline constexpr TField<TStaff_Mapper> staffFields[] = {
    {"Code", &TStaff_Mapper::_Code},
    {"CoDate", &TStaff_Mapper::_CoDate},
    {"LeaveDate", &TStaff_Mapper::_LeaveDate},
    {"StaffGroup", &TStaff_Mapper::_StaffGroup},
    {"PersonnelCode", &TStaff_Mapper::_PersonnelCode},
    {"Department", &TStaff_Mapper::_Department},
    {"CardNumber", &TStaff_Mapper::_CardNumber},
    {"InsuranceNumber", &TStaff_Mapper::_InsuranceNumber},
    {"NationalID", &TStaff_Mapper::_NationalID},
    {"IDNumber", &TStaff_Mapper::_IDNumber},
    {"FatherName", &TStaff_Mapper::_FatherName},
    {"BirthPlace", &TStaff_Mapper::_BirthPlace},
    {"IssuePlace", &TStaff_Mapper::_IssuePlace},
    {"IssueDate", &TStaff_Mapper::_IssueDate},
    {"BirthDate", &TStaff_Mapper::_BirthDate},
    {"Major", &TStaff_Mapper::_Major},
    {"BankTitle", &TStaff_Mapper::_BankTitle},
    {"Job", &TStaff_Mapper::_Job},
    {"AccountNumber", &TStaff_Mapper::_AccountNumber},
    {"Comment", &TStaff_Mapper::_Comment},
    {"Sex", &TStaff_Mapper::_Sex},
    {"Military", &TStaff_Mapper::_Military},
    {"IsMarried", &TStaff_Mapper::_IsMarried},
    {"Degree", &TStaff_Mapper::_Degree},
    {"Name", &TStaff_Mapper::_Name},
    {"LastName", &TStaff_Mapper::_LastName},
    {"Tel1", &TStaff_Mapper::_Tel1},
    {"Tel2", &TStaff_Mapper::_Tel2},
    {"Fax", &TStaff_Mapper::_Fax},
    {"Mob", &TStaff_Mapper::_Mob},
    {"Add1", &TStaff_Mapper::_Add1},
    {"Add2", &TStaff_Mapper::_Add2},
    {"Email", &TStaff_Mapper::_Email},
    {"PostCode", &TStaff_Mapper::_PostCode},
    {"Employment", &TStaff_Mapper::_Employment},
    {"Category", &TStaff_Mapper::_Category},
    {"FiscalExemption", &TStaff_Mapper::_FiscalExemption},
    {"National", &TStaff_Mapper::_National},
    {"Insurance", &TStaff_Mapper::_Insurance},
    {"JobCode", &TStaff_Mapper::_JobCode},
    {"JobGroup", &TStaff_Mapper::_JobGroup},
};

/// Who entered an employee and when, set by the first save.
inline constexpr TField<TStaff_Mapper> staffCreation[] = {
    {"CreatedTime", &TStaff_Mapper::_CreatedTime},
    {"CreatedDate", &TStaff_Mapper::_CreatedDate},
    {"UserCreated", &TStaff_Mapper::_UserCreated},
};

/// Who changed an employee last and when, set by every later save.
inline constexpr TField<TStaff_Mapper> staffChange[] = {
    {"ModifiedTime", &TStaff_Mapper::_ModifiedTime},
    {"ModifiedDate", &TStaff_Mapper::_ModifiedDate},
    {"UserModified", &TStaff_Mapper::_UserModified},
};

/// The fields of a person of the accounting side that are read.
inline constexpr TField<TPerinf_Mapper> personFields[] = {
    {"GrpCode", &TPerinf_Mapper::_GrpCode},   {"SitbgPrd", &TPerinf_Mapper::_SitbgPrd},
    {"Code", &TPerinf_Mapper::_Code},         {"UserName", &TPerinf_Mapper::_UserName},
    {"Name", &TPerinf_Mapper::_Name},         {"LName", &TPerinf_Mapper::_LName},
    {"FullName", &TPerinf_Mapper::_FullName}, {"Tel1", &TPerinf_Mapper::_Tel1},
    {"Tel2", &TPerinf_Mapper::_Tel2},         {"Addr1", &TPerinf_Mapper::_Addr1},
    {"Addr2", &TPerinf_Mapper::_Addr2},       {"Fax", &TPerinf_Mapper::_Fax},
    {"Email", &TPerinf_Mapper::_Email},       {"Mobile", &TPerinf_Mapper::_Mobile},
};
