#pragma once

/// Names a screen or an entity in rights, event log, code locks and groups.
enum TSoftwarePart : int {
    cspPerson = 101,
    cspPayrollInfo = 801,
    cspTax = 802,
    cspTaxualList = 802,
    cspCalender = 803,
    cspFiscal = 804,
    cspDeduction = 805,
    cspStaff = 806,
    cspCalcMethod = 813,
    cspStaffGroup = 815,
    cspFiscalGrp = 816,
    cspDeductionGrp = 817
};

/// What a user may do with a software part.
enum TPermission : int {
    cpNew = 1,
    cpEdit = 2,
    cpDelete = 3,
    cpPrint = 4,
    cpOpen = 6,
    cpPayrollSecondPage = 8011,
    cpStaffFamilyPage = 8062
};

enum TFormMode : int {
    fmBrowse = 1, ///< a list for browsing and maintenance
    fmNew = 2,    ///< an editor's own state: a record being inserted
    fmEdit = 3,   ///< an editor on an existing record
    fmSelect = 5  ///< a list for choosing one record
};

enum TOperationType : int { otLock = 0, otUnlock = 2 };

enum TMessageIconType : int { miError = 1, miInformation = 2, miQuestion = 3, miWarning = 4 };
