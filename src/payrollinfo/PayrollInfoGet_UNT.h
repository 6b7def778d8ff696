#pragma once

#include "host/NewBaseForms_PKG/RecordGet.h"
#include "payrollinfo/PayrollInfo_Mapper.h"

class TDetail_Rows_Frame;

/// The payroll settings: the employer's fixed data, and the fixed items with what they are linked to.
class TPayrollInfoGet_FRM : public TRecordGet<TPayrollInfo_Mapper> {
    Q_OBJECT
public:
    /// The settings are one record that is always there: `code` is 0, the mode fmEdit.
    TPayrollInfoGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    QTabWidget *Payroll_PC = nullptr;
    TSmartEdit_ZLM *CaseNo_EDT = nullptr;
    TSmartComboBox_ZLM *EmployeeTitle_CMB = nullptr;
    TSmartEdit_ZLM *EmployerName_EDT = nullptr;
    TSmartEdit_ZLM *Ejtemae_EDT = nullptr;
    TSmartEdit_ZLM *FactoryID_EDT = nullptr;
    TSmartComboBox_ZLM *LegalTitle_CMB = nullptr;
    TSmartEdit_ZLM *FactoryName_EDT = nullptr;
    TSmartEdit_ZLM *FactoryAdrr_EDT = nullptr;
    TSmartEdit_ZLM *LeisureIns_EDT = nullptr;
    TSmartMaskEdit_ZLM *NationalNo_EDT = nullptr;
    TSmartEdit_ZLM *BranchName_EDT = nullptr;
    TSmartEdit_ZLM *BranchCode_EDT = nullptr;
    TSmartEdit_ZLM *BranchNo_EDT = nullptr;
    TSmartEdit_ZLM *StageCode_EDT = nullptr;
    TSmartEdit_ZLM *OrganCode_EDT = nullptr;
    TSmartEdit_ZLM *PayerName_EDT = nullptr;
    TSmartEdit_ZLM *PayerFamily_EDT = nullptr;
    TSmartEdit_ZLM *SignaturNameFirst_EDT = nullptr;
    TSmartEdit_ZLM *SignaturFamilyFirst_EDT = nullptr;
    TSmartMaskEdit_ZLM *SignaturIdNationalFirst_EDT = nullptr;
    TSmartEdit_ZLM *SignaturPositionFirst_EDT = nullptr;
    TSmartEdit_ZLM *SignaturNameSecond_EDT = nullptr;
    TSmartEdit_ZLM *SignaturFamilySecond_EDT = nullptr;
    TSmartMaskEdit_ZLM *SignaturIdNationalSecond_EDT = nullptr;
    TSmartEdit_ZLM *SignaturPositionSecond_EDT = nullptr;

protected:
    bool Validate() override;
    bool RecordExists() override { return true; }
    void ShowRecord() override;
    TPayrollInfo_Mapper Typed() const override;
    bool SaveRecord() override;
    QString EventText() const override { return windowTitle(); }
    bool MayStartNew() override { return false; } ///< one record only: "save and new" saves and closes
    QWidget *FirstInput() override { return CaseNo_EDT; }

private:
    struct TRequired;
    void buildCompanyPage();
    void buildTaxOfficePage();
    TSmartEdit_ZLM *addText(QGridLayout *into, int row, int column, const QString &caption,
                            const QString &name, QString TPayrollInfo_Mapper::*field, int maxLength = 50);
    TSmartEdit_ZLM *addNumber(QGridLayout *into, int row, int column, const QString &caption,
                              const QString &name, QString TPayrollInfo_Mapper::*field,
                              const QString &suffix = {});
    TSmartMaskEdit_ZLM *addNationalNumber(QGridLayout *into, int row, int column, const QString &caption,
                                          const QString &name, QString TPayrollInfo_Mapper::*field);
    bool require(const QList<TRequired> &inputs);
    void applyBranchNumber();
    void applyEmployerTitle();
    void editRow();

    TDetail_Rows_Frame *m_rows = nullptr;
};
