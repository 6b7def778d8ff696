#pragma once

#include "host/NewBaseForms_PKG/RecordGet.h"
#include "tax/TaxRows.h"
#include "tax/TaxRules.h"

class TDetail_Rows_Frame;

/// The editor of one tax table: its header and its salary brackets, which stand in the working table until the
/// header is saved.
class TTaxGet_FRM : public TRecordGet<TTax_Mapper> {
    Q_OBJECT
    const TBoundInputs<TTax_Mapper> &m_inputs = MakeInputs(taxFields()); ///< before those who look for them

public:
    /// A new tax table.
    TTaxGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    /// An existing one.
    TTaxGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    TSmartEdit_ZLM *const Title_EDT = Input<TSmartEdit_ZLM>("Title_EDT");
    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");

protected:
    bool Validate() override;
    void ClearRecord() override;
    void ShowRecord() override;
    QVariant SentRecord() override;
    void SaveFailed() override;
    void BeforeClose() override;
    QWidget *FirstInput() override { return Title_EDT; }

    TRecordRows *Rows() override { return m_workingRows.get(); }

private:
    void build();
    void openWorkingRows();
    void addRow();
    void editRow();
    void deleteRow();
    /// A code typed by hand: a new table moves to it with its working rows when it is free, else the old code
    /// comes back. False: the user was told.
    [[nodiscard]] bool codeTyped();
    bool keeps(const TRule<TTaxSubject> &rule);
    bool store(const TTax_Mapper &record, bool isNew);

    bool m_headerOnly = false; ///< the save that failed has stored the header
    const std::unique_ptr<TRecordRows> m_workingRows = BracketRows();
    TDetail_Rows_Frame *m_rows = nullptr;
};
