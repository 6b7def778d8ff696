#pragma once

#include "entity/EntityRules.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

class TSelect_AccountCode;

/// The editor of one earning (part 804) or one deduction (part 805). Needs Entity_DM.
class TFiscalDeducation_Get_FRM : public TRecordGet<TFiscalDeducation_Mapper> {
    Q_OBJECT
    /// Before those who look for them; the boxes of an earning stay hidden for a deduction.
    const TBoundInputs<TFiscalDeducation_Mapper> &m_inputs = MakeInputs(entityFields(cspFiscal));

public:
    /// A new item; `text`: the code of the group that it begins in, -1 for the first group.
    TFiscalDeducation_Get_FRM(TSoftwarePart part, bool flag, const QString &text);
    /// An existing item; `kind`: 0 earning, 1 deduction.
    TFiscalDeducation_Get_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, const QVariant &kind,
                              bool flag1, bool flag2);

    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    QLabel *Insurance_LBL = nullptr;
    TSmartCheckBox_ZLM *const Insurance_CHK = Input<TSmartCheckBox_ZLM>("Insurance_CHK");
    QLabel *Tax_LBL = nullptr;
    TSmartCheckBox_ZLM *const Tax_CHK = Input<TSmartCheckBox_ZLM>("Tax_CHK");
    TSmartComboBox_ZLM *const Group_CMB = Input<TSmartComboBox_ZLM>("Group_CMB");
    TSmartEdit_ZLM *const Title_EDT = Input<TSmartEdit_ZLM>("Title_EDT");
    QLabel *InstallmentWarning_LBL = nullptr;
    TSelect_AccountCode *TSelect_AccountCode1 = nullptr;
    TSmartComboBox_ZLM *const CalcType_CMB = Input<TSmartComboBox_ZLM>("CalcType_CMB");
    QLabel *Cost_LBL = nullptr;
    TSmartEdit_ZLM *const Cost_EDT = Input<TSmartEdit_ZLM>("Cost_EDT");
    TSmartEdit_ZLM *CostPercent_EDT = nullptr; ///< in the place of Cost_EDT while the basis is percent
    QLabel *Percent_LBL = nullptr;
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    TFiscalDeducation_Mapper Typed() const override;
    /// Both kinds draw from one sequence, and the code is not reserved: two users may be offered the same one, and the
    /// second to save is told.
    void AllotCode(const std::function<int()> &newCode) override { TBaseEditor::AllotCode(newCode); }
    QVariant SentRecord() override;
    QWidget *FirstInput() override { return Title_EDT; }

private:
    void build();
    bool isEarning() const { return Part() == cspFiscal; }
    QString table() const { return isEarning() ? u"Fiscal"_s : u"Deduction"_s; }
    void fillGroups(int chosen);
    void showKind();
    void applyBasis();
    int initialGroup() const;
    bool keeps(const TRule<TEntitySubject> &rule);
    TFiscalDeducation_Mapper typedInputs() const; ///< all but the account
    void takeAccount(TFiscalDeducation_Mapper &item) const;

    bool m_percent = false;
    const bool m_openedNew;
};
