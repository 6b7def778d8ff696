#pragma once

#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/BoundInputs.h"
#include "tax/TaxRules.h"

#include <optional>

/// The screen of one salary bracket of the tax table that is open in the editor.
class TTax_GetDetail_FRM : public TBaseGetDetail_FRM {
    Q_OBJECT
    const TBoundInputs<TTmpTax_Mapper> m_inputs{bracketFields(), this}; ///< before those who look for them

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
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override {}
    bool RecordExists() override;
    QVariant StoredRow() override;
    QWidget *FirstInput() override { return FromSalary_EDT; }

private:
    void build();
    TTmpTax_Mapper typed() const;

    TTmpTax_Mapper m_bracket;             ///< as it was loaded
    std::optional<TTmpTax_Mapper> m_sent; ///< by the last save of this bracket
};
