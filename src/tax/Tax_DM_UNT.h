#pragma once

#include "common/DataModule_UNT.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "tax/Tax_Mapper.h"

#include <QStringList>

/// The database work of the tax tables: headers (TaxMain), their brackets (Tax), and the working copy of the
/// brackets of a table under edit (TmpTax).
///
/// Operations that return a bool answer false after a database error; all others throw TDatabaseError.
class KETEBIONPAP_CORE TTax_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TTax_DM(QObject *owner);

    TQuery *const List_QUR;       ///< the tax tables
    TQuery *const List_DS;        ///< what a grid of the tax tables is bound to
    TQuery *const DetailList_QUR; ///< the working brackets, always by lower bound
    TQuery *const DetailList_DS;  ///< what a grid of the working brackets is bound to
    TQuery *const TmpGet_QUR;     ///< the working bracket under edit
    TQuery *const Get_QUR;        ///< the header under edit
    TQuery *const Temp_QUR;       ///< one-off statements

    /// Gives the list its statement; the caller opens it.
    void Tax_Get();
    void Tax_GetByID(const QVariant &code);
    /// The same, and copies the header into the record; an unknown code gives an empty record. So does TmpTax_GetById.
    void Tax_GetByID(const QVariant &code, TTax_Mapper &tax);
    int Tax_GetNewCode();
    [[nodiscard]] bool Tax_Insert(const TTax_Mapper &tax);
    /// Changes title and comment of the header that Tax_GetByID opened, never its code.
    [[nodiscard]] bool Tax_Update(const TTax_Mapper &tax);
    /// Deletes headers. `codes` parted by commas.
    void Tax_Del(const QString &codes);
    /// Deletes a tax table: its brackets and its header; all or nothing.
    [[nodiscard]] bool Tax_DelWhole(int code);

    /// Copies the brackets of a tax table to the working rows and opens their list.
    void FillDataDetail(int taxCode);
    void TmpTax_GetByTaxMainCode(const QVariant &taxCode);
    void TmpTax_GetById(const QVariant &id);
    void TmpTax_GetById(const QVariant &id, TTmpTax_Mapper &bracket);
    [[nodiscard]] bool TmpTax_Insert(const TTmpTax_Mapper &bracket);
    /// Changes the bracket that TmpTax_GetById opened; it stays with its tax table.
    [[nodiscard]] bool TmpTax_Update(const TTmpTax_Mapper &bracket);
    /// Leaves open in Temp_QUR the other working brackets of the table that share a point with the closed interval
    /// from..to. `id`: the row under edit, which does not count; 0 for a new one.
    void TmpTax_GetID(int taxCode, int id, double from, double to);
    /// Deletes working brackets. `ids` parted by commas.
    void TaxDetail_Del(const QString &ids);
    /// Replaces the brackets of a tax table by its working rows; all or nothing.
    [[nodiscard]] bool TaxDetail_Insert(const QVariant &taxCode);
    void ClearDataDetail(int taxCode);
    void ClearDataTempDetail(int taxCode);
    /// Opens the list of the working rows as they are, copying nothing.
    void TmpTax_OpenList(const QVariant &taxCode);
    /// How many working rows a tax table has now.
    int TmpTax_Count(const QVariant &taxCode);
    /// Whether the working rows of a tax table are no longer those that the open list shows.
    bool TmpTax_Changed(const QVariant &taxCode);
    /// Makes the rows that the open list shows the working rows of a tax table, and opens its list. All or nothing.
    void TmpTax_PutBack(const QVariant &taxCode);
    /// The codes that this workstation has locked, once for each working row under them.
    QStringList TmpTax_GetRecoverysCode(TSoftwarePart part, int comIndex);
    /// Throws away all working rows under codes that this workstation has locked, with these locks.
    void TmpTax_DeleteAllRecovery(TSoftwarePart part, int comIndex);
    /// Gives the working rows of one tax table to another, whose own are dropped, and opens their list. All or
    /// nothing.
    void TmpTax_MoveToCode(int fromCode, int toCode);

private:
    void copyToWorkingRows(const QVariant &taxCode);
};

/// The one instance, made and freed by the entry points and screens.
extern KETEBIONPAP_CORE TTax_DM *Tax_DM;
