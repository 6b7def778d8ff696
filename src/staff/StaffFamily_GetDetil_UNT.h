#pragma once

#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "staff/StaffFamilyRules.h"

/// One member of the family of the employee that the staff editor has open. Works on the working rows only.
class TStaffFamily_GetDetil_FRM : public TRecordGet<TFamilly_Mapper, TBaseGetDetail_FRM> {
    Q_OBJECT
    const TBoundInputs<TFamilly_Mapper> &m_inputs =
        MakeInputs(staffFamilyFields()); ///< before those who look for them

public:
    /// A new row; `master` is the staff code.
    TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master);
    TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master, TFormMode mode,
                              const QVariant &id);

    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    TSmartEdit_ZLM *const Name_EDT = Input<TSmartEdit_ZLM>("Name_EDT");
    TSmartComboBox_ZLM *const Sex_CMB = Input<TSmartComboBox_ZLM>("Sex_CMB");
    TSmartDateEdit_ZLM *const BirthDate_EDT = Input<TSmartDateEdit_ZLM>("BirthDate_EDT");
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");
    TSmartComboBox_ZLM *const Type_CMB = Input<TSmartComboBox_ZLM>("Type_CMB");
    TSmartEdit_ZLM *const InsuranceNumber_EDT = Input<TSmartEdit_ZLM>("InsuranceNumber_EDT");
    TSmartCheckBox_ZLM *Death_CHK = nullptr;
    TSmartDateEdit_ZLM *const DeathDate_EDT = Input<TSmartDateEdit_ZLM>("DeathDate_EDT");

    /// The row that the screen shows, new or existing.
    int RowId() const { return Identifier().toInt(); }

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    TFamilly_Mapper Typed() const override;
    QVariant SentRecord() override;
    QWidget *FirstInput() override { return Name_EDT; }
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void deathChanged();
    bool keeps(const TRule<TStaffFamilySubject> &rule);
};
