#pragma once

#include "common/DataModule_UNT.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "staff/Family_Mapper.h"

#include <QStringList>

/// The part of the staff data module that keeps the families: saved rows (StaffFamily) and the working rows of the
/// employee under edit (tmpStaffFamily), which are copied in on opening and back as a whole on saving.
///
/// Operations that return a success answer false after a database error; all others throw TDatabaseError.
/// Staff codes travel as numbers or as texts of digits.
class KETEBIONPAP_CORE TStaffFamily_DM : public TDataModule {
    Q_OBJECT
public:
    TQuery *const Family_QUR;    ///< the working rows of the employee under edit
    TQuery *const Family_DS;     ///< what the family grid is bound to; the grid numbers its rows itself
    TQuery *const FamilyGet_QUR; ///< the working row under edit
    TQuery *const Temp_QUR;      ///< one-off statements and look-ups of the whole data module

    /// Copies the saved rows of an employee to the working rows and shows these.
    void Family_GetByStaffCode(const QVariant &staffCode);
    void FillDataFamily(int staffCode);
    /// Reads the working rows shown again.
    void FillDataFamilyList(int staffCode);
    void FillDataFamilyGet(int id);
    void Family_GetByID(const QVariant &id);
    /// The same, and copies the row into the record; an unknown ID gives an empty record.
    void Family_GetByID(const QVariant &id, TFamilly_Mapper &member);
    /// The next row identifier: unique over saved and working rows.
    int Family_GetNewCode();
    [[nodiscard]] bool TmpFamily_Insert(const TFamilly_Mapper &member);
    /// Changes the row that Family_GetByID opened.
    [[nodiscard]] bool TmpFamily_Update(const TFamilly_Mapper &member);
    /// Deletes working rows. `ids` parted by commas.
    [[nodiscard]] bool Family_Del(const QString &ids);
    /// Copies the working rows of an employee to the saved ones.
    void Family_Insert(const QVariant &staffCode);
    void ClearDataFamily(const QVariant &staffCode);
    void ClearDataTMPFamily(const QVariant &staffCode);

    /// Whether the working rows of an employee are no longer those that Family_QUR shows.
    bool TmpFamily_Changed(const QVariant &staffCode);
    /// Makes the rows that Family_QUR shows the working rows of an employee, and shows them. All or nothing.
    void TmpFamily_PutBack(const QVariant &staffCode);
    /// How many working rows and how many saved rows an employee has.
    int TmpFamily_Count(const QVariant &staffCode);
    int Family_Count(const QVariant &staffCode);

    // Recovery of working rows that an editor of this workstation left behind: rows of the codes that it holds
    // locked.
    void StaffFamily_DelTmp(const QVariant &staffCode);
    void StaffFamily_UpdateTmp(const QVariant &oldCode, const QVariant &newCode);
    /// The first row's code, as often as there are rows to recover.
    QStringList StaffFamily_GetRecoverysCode(TSoftwarePart part, int comIndex);
    bool StaffFamily_IsRecordHasRecovery(const QVariant &staffCode, TSoftwarePart part, int comIndex);
    void StaffFamily_DeleteAllRecovery(TSoftwarePart part, int comIndex);

protected:
    explicit TStaffFamily_DM(QObject *owner);

private:
    void copyToWorkingRows(const QVariant &staffCode);
};
