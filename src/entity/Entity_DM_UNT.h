#pragma once

#include "common/DataModule_UNT.h"
#include "common/QueryTools.h"
#include "entity/Entity_Mapper.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/ZelmoSearch/FoldedTwin.h"

/// The database work of earnings (Fiscal) and deductions (Deduction), their groups, and the picking of items into
/// a personnel order or a staff output. Both kinds draw their codes from one sequence.
///
/// Operations that return a bool answer false after a database error; all others throw TDatabaseError.
/// Checks leave their rows open in Temp_QUR for the caller.
class KETEBIONPAP_CORE TEntity_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TEntity_DM(QObject *owner);

    TQuery *const List_QUR;      ///< the items of the kind that FiscalDeducationList_get chose
    TQuery *const List_DS;       ///< what a grid of the items is bound to
    TQuery *const GroupList_QUR; ///< the groups of the kind that FiscalDeducationGroup_Get chose
    TQuery *const GroupList_DS;  ///< what a grid of the groups is bound to
    TQuery *const Get_QUR;       ///< the item under edit
    TQuery *const GetGrp_QUR;    ///< one group
    TQuery *const Temp_QUR;      ///< checks and commands
    // Ready for other screens of the suite; nothing here opens them.
    TQuery *const FiscalList_QUR;
    TQuery *const FiscalList_DS;
    TQuery *const DeductionList_QUR;
    TQuery *const DeductionList_DS;
    TQuery *const FiscalGrp_QUR;
    TQuery *const FiscalGrp_DS;
    TQuery *const DeductionGrp_QUR;
    TQuery *const DeductionGrp_DS;

    /// Gives the item list its statement; the caller opens it. Kinds other than items change nothing.
    void FiscalDeducationList_get(TEntityDataset kind);
    /// Opens the group list. Kinds other than groups open it with the statement it has.
    void FiscalDeducationGroup_Get(TEntityDataset kind);
    void FillDataGrp(int code, TEntityDataset kind);
    TNamedCodes FiscalGroup_Fill();
    TNamedCodes DeducationGroup_Fill();

    int FiscalDeducation_GetNewCode();
    /// Finds the code among earnings and deductions alike; so does Deducation_GetCode.
    void Fiscal_GetCode(const QVariant &code);
    void Deducation_GetCode(const QVariant &code);
    void FiscalGet_ByTitle(const QString &title);
    void DeducationGet_ByTitle(const QString &title);
    /// Another item of the kind than `own` that has the title, however it is written.
    std::optional<TTwin> Title_Twin(const QString &title, TSoftwarePart part, int own);
    /// Opens an item and copies it into the record; an unknown code gives an empty record, and Get_QUR stays open on
    /// no row, ready for FiscalDeducation_Insert.
    void FiscalDeducation_GetByID(const QVariant &code, TSoftwarePart part, TFiscalDeducation_Mapper &item);
    [[nodiscard]] bool FiscalDeducation_Insert(const TFiscalDeducation_Mapper &item, TSoftwarePart part);
    [[nodiscard]] bool FiscalDeducation_Update(const TFiscalDeducation_Mapper &item, TSoftwarePart part);
    [[nodiscard]] bool FiscalDeducation_Delete(const QVariant &code, bool isDeduction);
    /// Column 0: staff assignments of the item; column 1: its salary-bill lines.
    void TmpStaff_Count(const QVariant &code, bool isDeduction);

    /// What is read for each of the items before it is added to an order, or an output.
    static QList<TStatement> StatementsOfPick(const QList<int> &codes, TSoftwarePart part,
                                              const QString &target, bool toOrder);
    void tmpRec_GetID(const QVariant &itemCode, const QVariant &recruitmentCode, bool isDeduction);
    void tmpRec_Insert(const QVariant &itemCode, const QVariant &recruitmentCode, bool isDeduction,
                       double cost);
    void tmpstaffOutPutDetail_Get(const QVariant &itemCode, const QVariant &outputCode);
    /// `type`: 0 earning, 1 deduction. The amount is 0 until the staff-output editor fills it in.
    void tmpstaffOutPutDetail_Insert(const QVariant &itemCode, const QVariant &outputCode, int type);
    /// Whether the item repeats what the order's calculation method computes itself: 1 insurance, 2 tax, 0 neither.
    int RepeatInfo(const QString &recruitmentCode, const QString &itemCode);

private:
    void checkCode(const QVariant &code);
};

/// The one instance, made and freed by the list screen.
extern KETEBIONPAP_CORE TEntity_DM *Entity_DM;
