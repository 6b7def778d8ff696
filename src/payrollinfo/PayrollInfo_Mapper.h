#pragma once

#include <QString>

/// The employer's payroll settings. All are texts, numbers included.
struct TPayrollInfo_Mapper {
    QString _FactoryID;
    QString _FactoryName;
    QString _EmployerName;
    QString _FactoryAdrr;
    QString _Ejtemae;    ///< social-security branch name
    QString _LeisureIns; ///< unemployment insurance rate, percent
    QString _BranchCode; ///< bank file
    QString _StageCode;  ///< bank file
    QString _OrganCode;  ///< bank file
    QString _CaseNo;
    QString _EmployeeTitle; ///< position in the list of employer titles
    QString _LegalTitle;    ///< position in the list of legal entities
    QString _NationalNo;
    QString _BranchNo;   ///< bank file
    QString _BranchName; ///< bank file
    QString _PayerName;
    QString _PayerFamily;
    QString _SignaturNameFirst;
    QString _SignaturFamilyFirst;
    QString _SignaturIdNationalFirst;
    QString _SignaturPositionFirst;
    QString _SignaturNameSecond;
    QString _SignaturFamilySecond;
    QString _SignaturIdNationalSecond;
    QString _SignaturPositionSecond;
    bool operator==(const TPayrollInfo_Mapper &) const = default;
};

/// The link of one fixed payroll item to an earning or a deduction.
struct TPayrollInfoDetail_Mapper {
    int _Code = 0; ///< code of the earning or deduction
};
