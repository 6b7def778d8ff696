#pragma once

#include "host/Export.h"
#include "host/database/RecordFields.h"
#include "staff/Staff_Mapper.h"

/// The pages of the staff editor that show fields.
enum TStaffPage { spGeneral, spPersonnel, spFurther };

/// The fields of an employee, in the order in which a save sets their columns. One that is added here is read, saved,
/// shown, typed and kept within its column.
KETEBIONPAP_CORE std::span<const TField<TStaff_Mapper>> staffFields();

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
