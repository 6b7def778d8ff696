#pragma once

#include "calcmethod/CalcMethodRules.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

#include <QTabWidget>

class QLabel;

/// The editor of one calculation method: its insurance and tax rules on the first page, attendance on the second.
class TCalcMethodGet_FRM : public TRecordGet<TCalcMethod_Mapper> {
    Q_OBJECT
public:
    QTabWidget *const CalcMethod_PC = new QTabWidget(this); ///< first: the focus goes from it to the inputs

private:
    const TBoundInputs<TCalcMethod_Mapper> &m_inputs =
        MakeInputs(calcMethodFields()); ///< before those who look for them

public:
    TCalcMethodGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    TCalcMethodGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    TSmartEdit_ZLM *const Title_EDT = Input<TSmartEdit_ZLM>("Title_EDT");
    TSmartCheckBox_ZLM *const Tax_CHK = Input<TSmartCheckBox_ZLM>("Tax_CHK");
    TSmartButtonEdit_ZLM *const CalcMethodCode_EDT = Input<TSmartButtonEdit_ZLM>("CalcMethodCode_EDT");
    QLabel *CalcMethodCode_LBL = nullptr; ///< the tax table's title
    TSmartSpinEdit_ZLM *const Maskok_SPNEDT = Input<TSmartSpinEdit_ZLM>("Maskok_SPNEDT");
    QLabel *MandeMaskok_LBL = nullptr; ///< the unit that the net pay is rounded to
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");
    TSmartCheckBox_ZLM *const BedBes_CHK = Input<TSmartCheckBox_ZLM>("BedBes_CHK");
    TSmartCheckBox_ZLM *const Loan_CHK = Input<TSmartCheckBox_ZLM>("Loan_CHK");
    TSmartCheckBox_ZLM *const DecTax_CHK = Input<TSmartCheckBox_ZLM>("DecTax_CHK");
    TSmartCheckBox_ZLM *const Insurance_CHK = Input<TSmartCheckBox_ZLM>("Insurance_CHK");
    TSmartEdit_ZLM *const StaffIns_EDT = Input<TSmartEdit_ZLM>("StaffIns_EDT");
    TSmartEdit_ZLM *const EmployerIns_EDT = Input<TSmartEdit_ZLM>("EmployerIns_EDT");
    TSmartEdit_ZLM *const DailyIns_EDT = Input<TSmartEdit_ZLM>("DailyIns_EDT");
    TSmartTime_ZLM *const Entrance_EDT = Input<TSmartTime_ZLM>("Entrance_EDT");
    TSmartTime_ZLM *const Exit_EDT = Input<TSmartTime_ZLM>("Exit_EDT");
    TSmartComboBox_ZLM *const OverDis_CMB = Input<TSmartComboBox_ZLM>("OverDis_CMB");
    TSmartEdit_ZLM *const OutPut_EDT = Input<TSmartEdit_ZLM>("OutPut_EDT");
    TSmartEdit_ZLM *const LeaveCeil_EDT = Input<TSmartEdit_ZLM>("LeaveCeil_EDT");
    TSmartEdit_ZLM *const OverTime_EDT = Input<TSmartEdit_ZLM>("OverTime_EDT");

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    void RecordSaved(bool wasNew) override;

private:
    void build();
    void buildGeneralPage();
    void applyTaxRule();
    void applyInsuranceRule();
    void showRoundingUnit();
    void showTaxTitle();
    /// Looks the typed tax code up and shows its title; tells the user about a code that is none.
    void checkTaxCode();
    void pickTaxCode();
    bool takeTypedCode();
    bool keeps(const TRule<TCalcMethodSubject> &rule);
    TCalcMethodSubject subject() const;
};
