#pragma once

#include "calcmethod/CalcMethod_Mapper.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

class QLabel;
class QTabWidget;

/// The editor of one calculation method: its insurance and tax rules on the first page, attendance on the second.
class TCalcMethodGet_FRM : public TRecordGet<TCalcMethod_Mapper> {
    Q_OBJECT
public:
    TCalcMethodGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    TCalcMethodGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    QTabWidget *CalcMethod_PC = nullptr;
    TSmartEdit_ZLM *Code_EDT = nullptr;
    TSmartEdit_ZLM *Title_EDT = nullptr;
    TSmartCheckBox_ZLM *Tax_CHK = nullptr;
    TSmartButtonEdit_ZLM *CalcMethodCode_EDT = nullptr;
    QLabel *CalcMethodCode_LBL = nullptr; ///< the tax table's title
    TSmartSpinEdit_ZLM *Maskok_SPNEDT = nullptr;
    QLabel *MandeMaskok_LBL = nullptr; ///< the unit that the net pay is rounded to
    TSmartEdit_ZLM *Comment_EDT = nullptr;
    TSmartCheckBox_ZLM *BedBes_CHK = nullptr;
    TSmartCheckBox_ZLM *Loan_CHK = nullptr;
    TSmartCheckBox_ZLM *DecTax_CHK = nullptr;
    TSmartCheckBox_ZLM *Insurance_CHK = nullptr;
    TSmartEdit_ZLM *StaffIns_EDT = nullptr;
    TSmartEdit_ZLM *EmployerIns_EDT = nullptr;
    TSmartEdit_ZLM *DailyIns_EDT = nullptr;
    TSmartTime_ZLM *Entrance_EDT = nullptr;
    TSmartTime_ZLM *Exit_EDT = nullptr;
    TSmartComboBox_ZLM *OverDis_CMB = nullptr;
    TSmartEdit_ZLM *OutPut_EDT = nullptr;
    TSmartEdit_ZLM *LeaveCeil_EDT = nullptr;
    TSmartEdit_ZLM *OverTime_EDT = nullptr;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    TCalcMethod_Mapper Typed() const override;
    void RecordSaved(bool wasNew) override;

private:
    void build();
    void buildGeneralPage();
    void buildInsurance(QLayout *into);
    void buildAttendancePage();
    void applyTaxRule();
    void applyInsuranceRule();
    void showRoundingUnit();
    void showTaxTitle();
    /// Looks the typed tax code up and shows its title; tells the user about a code that is none.
    void checkTaxCode();
    void pickTaxCode();
    bool takeTypedCode();
    bool isMissing(TSmartEdit_ZLM *input, const QString &caption);
};
