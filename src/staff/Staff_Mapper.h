#pragma once

#include <QString>

/// One employee. Dates are texts such as "1404/01/05", empty where there is none; pictures travel apart.
struct TStaff_Mapper {
    int _Code = 0;
    int _StaffGroup = 0;
    QString _PersonnelCode;
    QString _InsuranceNumber;
    QString _CardNumber;
    QString _NationalID;
    bool _Sex = false; ///< false man, true woman
    QString _FatherName;
    QString _IDNumber;
    QString _BirthDate;
    QString _BirthPlace;
    QString _IssueDate;
    QString _Department;
    int _Degree = 0; ///< like the other numbers below: a position in the editor's list
    QString _Major;
    int _Military = 0;
    bool _IsMarried = false;
    QString _AccountNumber;
    QString _BankTitle;
    QString _CoDate; ///< date of employment
    QString _Job;
    QString _Comment;
    QString _Name;
    QString _LastName;
    QString _Tel1;
    QString _Tel2;
    QString _Fax;
    QString _Mob;
    QString _Add1;
    QString _Add2;
    QString _Email;
    QString _LeaveDate; ///< empty while employed
    int _Employment = 0;
    QString _PostCode;
    int _Category = 0;
    int _FiscalExemption = 0;
    int _National = 0; ///< 0 Iranian, 1 foreign
    int _Insurance = 0;
    QString _IssuePlace;
    QString _JobCode;
    QString _JobGroup;
    QString _CreatedTime; ///< "08:05"
    QString _CreatedDate;
    QString _ModifiedTime;
    QString _ModifiedDate;
    QString _UserCreated;
    QString _UserModified;
};

/// One person of the accounting side.
struct TPerinf_Mapper {
    int _GrpCode = 0;
    QString _SitbgPrd;
    int _Code = 0;
    QString _UserName;
    QString _Name;
    QString _LName;
    QString _FullName;
    QString _Tel1;
    QString _Tel2;
    QString _Addr1;
    QString _Addr2;
    QString _Fax;
    QString _Email;
    QString _Mobile;
};
