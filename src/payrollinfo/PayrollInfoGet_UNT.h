#pragma once

#include "host/NewBaseForms_PKG/RecordGet.h"
#include "payrollinfo/PayrollInfoRules.h"

#include <QTabWidget>

class TDetail_Rows_Frame;

/// The payroll settings: the employer's fixed data, and the fixed items with what they are linked to.
class TPayrollInfoGet_FRM : public TRecordGet<TPayrollInfo_Mapper> {
    Q_OBJECT
public:
    QTabWidget *const Payroll_PC = new QTabWidget(this); ///< first: the focus goes from it to the inputs

private:
    const TBoundInputs<TPayrollInfo_Mapper> &m_inputs =
        MakeInputs(payrollInfoFields()); ///< before those who look for them

public:
    /// The settings are one record that is always there: `code` is 0, the mode fmEdit.
    TPayrollInfoGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    TSmartEdit_ZLM *const CaseNo_EDT = Input<TSmartEdit_ZLM>("CaseNo_EDT");
    TSmartComboBox_ZLM *const EmployeeTitle_CMB = Input<TSmartComboBox_ZLM>("EmployeeTitle_CMB");
    TSmartEdit_ZLM *const EmployerName_EDT = Input<TSmartEdit_ZLM>("EmployerName_EDT");
    TSmartEdit_ZLM *const Ejtemae_EDT = Input<TSmartEdit_ZLM>("Ejtemae_EDT");
    TSmartEdit_ZLM *const FactoryID_EDT = Input<TSmartEdit_ZLM>("FactoryID_EDT");
    TSmartComboBox_ZLM *const LegalTitle_CMB = Input<TSmartComboBox_ZLM>("LegalTitle_CMB");
    TSmartEdit_ZLM *const FactoryName_EDT = Input<TSmartEdit_ZLM>("FactoryName_EDT");
    TSmartEdit_ZLM *const FactoryAdrr_EDT = Input<TSmartEdit_ZLM>("FactoryAdrr_EDT");
    TSmartEdit_ZLM *const LeisureIns_EDT = Input<TSmartEdit_ZLM>("LeisureIns_EDT");
    TSmartMaskEdit_ZLM *const NationalNo_EDT = Input<TSmartMaskEdit_ZLM>("NationalNo_EDT");
    TSmartEdit_ZLM *const BranchName_EDT = Input<TSmartEdit_ZLM>("BranchName_EDT");
    TSmartEdit_ZLM *const BranchCode_EDT = Input<TSmartEdit_ZLM>("BranchCode_EDT");
    TSmartEdit_ZLM *const BranchNo_EDT = Input<TSmartEdit_ZLM>("BranchNo_EDT");
    TSmartEdit_ZLM *const StageCode_EDT = Input<TSmartEdit_ZLM>("StageCode_EDT");
    TSmartEdit_ZLM *const OrganCode_EDT = Input<TSmartEdit_ZLM>("OrganCode_EDT");
    TSmartEdit_ZLM *const PayerName_EDT = Input<TSmartEdit_ZLM>("PayerName_EDT");
    TSmartEdit_ZLM *const PayerFamily_EDT = Input<TSmartEdit_ZLM>("PayerFamily_EDT");
    TSmartEdit_ZLM *const SignaturNameFirst_EDT = Input<TSmartEdit_ZLM>("SignaturNameFirst_EDT");
    TSmartEdit_ZLM *const SignaturFamilyFirst_EDT = Input<TSmartEdit_ZLM>("SignaturFamilyFirst_EDT");
    TSmartMaskEdit_ZLM *const SignaturIdNationalFirst_EDT =
        Input<TSmartMaskEdit_ZLM>("SignaturIdNationalFirst_EDT");
    TSmartEdit_ZLM *const SignaturPositionFirst_EDT = Input<TSmartEdit_ZLM>("SignaturPositionFirst_EDT");
    TSmartEdit_ZLM *const SignaturNameSecond_EDT = Input<TSmartEdit_ZLM>("SignaturNameSecond_EDT");
    TSmartEdit_ZLM *const SignaturFamilySecond_EDT = Input<TSmartEdit_ZLM>("SignaturFamilySecond_EDT");
    TSmartMaskEdit_ZLM *const SignaturIdNationalSecond_EDT =
        Input<TSmartMaskEdit_ZLM>("SignaturIdNationalSecond_EDT");
    TSmartEdit_ZLM *const SignaturPositionSecond_EDT = Input<TSmartEdit_ZLM>("SignaturPositionSecond_EDT");

protected:
    bool Validate() override;
    bool RecordExists() override { return true; }
    void ShowRecord() override;
    bool SaveRecord() override;
    QString EventText() const override { return windowTitle(); }
    bool MayStartNew() override { return false; } ///< one record only: "save and new" saves and closes
    QWidget *FirstInput() override { return CaseNo_EDT; }

private:
    void buildCompanyPage();
    void buildTaxOfficePage();
    bool keeps(const TRule<TPayrollInfoSubject> &rule);
    void applyBranchNumber();
    void applyEmployerTitle();
    void editRow();

    TDetail_Rows_Frame *m_rows = nullptr;
};
