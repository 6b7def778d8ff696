#pragma once

#include "common/DataModule_UNT.h"
#include "host/Export.h"
#include "payrollinfo/PayrollInfo_Mapper.h"

/// The database work of the payroll settings (PayrollInfo) and of the fixed payroll items (PayrollInfoDetail).
///
/// Operations that return a bool answer false after a database error; all others throw TDatabaseError.
class KETEBIONPAP_CORE TPayrollInfo_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TPayrollInfo_DM(QObject *owner);

    TQuery *const PayrollDetailList_QUR; ///< the fixed items with the titles of what they are linked to
    TQuery *const PayrollDetailList_DS;  ///< what a grid of the items is bound to
    TQuery *const PayrollDetailGet_QUR;  ///< the item under edit
    TQuery *const Temp_QUR;              ///< one-off statements

    /// Reads the first 25 values in the order of their codes, by position: a database that holds codes below 6
    /// shifts every value. Values that are not there stay empty.
    void PayrollInfo_Get(TPayrollInfo_Mapper &info);
    /// Writes the 25 values to the codes 6 to 30, in one batch. A row that is not there stays so, silently.
    void PayrollInfo_Insert(const TPayrollInfo_Mapper &info);
    /// Gives the list of items its statement; the caller opens it.
    void PayRollInfoDetill_Get();
    void PayRollInfoDetill_GetByID(const QVariant &id);
    /// Links the item that PayRollInfoDetill_GetByID opened; no item is ever added.
    [[nodiscard]] bool PayrollInfoDetails_Insert(const TPayrollInfoDetail_Mapper &detail);
};

/// The one instance, made by the entry point and kept for the life of the process.
extern KETEBIONPAP_CORE TPayrollInfo_DM *PayrollInfo_DM;
