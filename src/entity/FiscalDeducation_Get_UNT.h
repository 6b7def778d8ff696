#pragma once

#include "entity/Entity_Mapper.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

class TSelect_AccountCode;

/// The editor of one earning (part 804) or one deduction (part 805). Needs Entity_DM.
class TFiscalDeducation_Get_FRM : public TRecordGet<TFiscalDeducation_Mapper> {
    Q_OBJECT
public:
    /// A new item; `text`: the code of the group that it begins in, -1 for the first group.
    TFiscalDeducation_Get_FRM(TSoftwarePart part, bool flag, const QString &text);
    /// An existing item; `kind`: 0 earning, 1 deduction.
    TFiscalDeducation_Get_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, const QVariant &kind,
                              bool flag1, bool flag2);

    TSmartEdit_ZLM *Code_EDT = nullptr;
    QLabel *Insurance_LBL = nullptr;
    TSmartCheckBox_ZLM *Insurance_CHK = nullptr;
    QLabel *Tax_LBL = nullptr;
    TSmartCheckBox_ZLM *Tax_CHK = nullptr;
    TSmartComboBox_ZLM *Group_CMB = nullptr;
    TSmartEdit_ZLM *Title_EDT = nullptr;
    QLabel *InstallmentWarning_LBL = nullptr;
    TSelect_AccountCode *TSelect_AccountCode1 = nullptr;
    TSmartComboBox_ZLM *CalcType_CMB = nullptr;
    QLabel *Cost_LBL = nullptr;
    TSmartEdit_ZLM *Cost_EDT = nullptr;
    TSmartEdit_ZLM *CostPercent_EDT = nullptr; ///< in the place of Cost_EDT while the basis is percent
    QLabel *Percent_LBL = nullptr;
    TSmartEdit_ZLM *Comment_EDT = nullptr;

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
    void fillGroups(int chosen);
    void showKind();
    void applyBasis();
    int initialGroup() const;

    bool m_percent = false;
    const bool m_openedNew;
};
