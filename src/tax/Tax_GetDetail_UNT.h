#pragma once

#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "tax/TaxRules.h"

/// The screen of one salary bracket of the tax table that is open in the editor.
class TTax_GetDetail_FRM : public TRecordGet<TTmpTax_Mapper, TBaseGetDetail_FRM> {
    Q_OBJECT
    const TBoundInputs<TTmpTax_Mapper> &m_inputs =
        MakeInputs(bracketFields()); ///< before those who look for them

public:
    /// A new bracket of tax table `master`.
    TTax_GetDetail_FRM(const QVariant &part, const QVariant &master);
    /// The bracket whose working row is `rowId`.
    TTax_GetDetail_FRM(const QVariant &part, const QVariant &master, TFormMode mode, const QVariant &rowId);

    TSmartEdit_ZLM *const FromSalary_EDT = Input<TSmartEdit_ZLM>("FromSalary_EDT");
    TSmartEdit_ZLM *const ToSalary_EDT = Input<TSmartEdit_ZLM>("ToSalary_EDT");
    TSmartEdit_ZLM *const Percent_EDT = Input<TSmartEdit_ZLM>("Percent_EDT");
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    TTmpTax_Mapper Typed() const override;
    QVariant SentRecord() override;
    QWidget *FirstInput() override { return FromSalary_EDT; }

private:
    void build();
};
