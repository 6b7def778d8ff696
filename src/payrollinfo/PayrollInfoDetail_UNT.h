#pragma once

#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "payrollinfo/PayrollInfoRules.h"

/// Links one fixed payroll item to an earning or a deduction.
class TPayrollInfoDetail_FRM : public TRecordGet<TPayrollInfoDetail_Mapper, TBaseGetDetail_FRM> {
    Q_OBJECT
    const TBoundInputs<TPayrollInfoDetail_Mapper> &m_inputs = MakeInputs(payrollItemFields());

public:
    /// `type` of the item: 0 links it to an earning, 1 to a deduction. `rowId` is the item's ID.
    TPayrollInfoDetail_FRM(const QVariant &part, const QVariant &type, TFormMode mode, const QVariant &rowId);

    QLabel *Title1_LBL = nullptr;
    TSmartButtonEdit_ZLM *const FiscalDeducationCode_EDT =
        Input<TSmartButtonEdit_ZLM>("FiscalDeducationCode_EDT");
    QLabel *Code_LBL = nullptr;

protected:
    bool Validate() override;
    void ShowRecord() override;
    /// The link is stored at once: the right that the settings ask for is asked once more.
    bool ReadyToSave() override;
    bool MayStartNew() override { return false; } ///< "save and new" saves and closes
    /// The link is stored at once, so it has its line in the event log.
    void RecordSaved(bool wasNew) override;

private:
    bool isDeduction() const { return Master().toInt() == 1; }
    void codeExit();
    void lookUpCode(); ///< throws TDatabaseError: what was typed stays, its title is empty
    void pickCode();
    TPayrollItemSubject subject() const;
};
