#pragma once

#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "staff/Family_Mapper.h"

/// One member of the family of the employee that the staff editor has open. Works on the working rows only.
class TStaffFamily_GetDetil_FRM : public TRecordGet<TFamilly_Mapper, TBaseGetDetail_FRM> {
    Q_OBJECT
public:
    /// A new row; `master` is the staff code.
    TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master);
    TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master, TFormMode mode,
                              const QVariant &id);

    TSmartEdit_ZLM *Code_EDT = nullptr;
    TSmartEdit_ZLM *Name_EDT = nullptr;
    TSmartComboBox_ZLM *Sex_CMB = nullptr;
    TSmartDateEdit_ZLM *BirthDate_EDT = nullptr;
    TSmartEdit_ZLM *Comment_EDT = nullptr;
    TSmartComboBox_ZLM *Type_CMB = nullptr;
    TSmartEdit_ZLM *InsuranceNumber_EDT = nullptr;
    TSmartCheckBox_ZLM *Death_CHK = nullptr;
    TSmartDateEdit_ZLM *DeathDate_EDT = nullptr;

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
    bool codeIsFree();
    bool deathAfterBirth();
};
