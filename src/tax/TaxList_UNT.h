#pragma once

#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "tax/Tax_DM_UNT.h"

/// The list of tax tables, to keep them (mode 1) or to choose one (mode 5).
class TTaxList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TTaxList_FRM(TFormMode mode, const QString &text);

    int SelectedCode = 0;
    QString SelectedTitle;
    bool IsSelected = false;

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void DeleteRecord() override;
    bool SelectRecord() override;

private:
    TDataModuleHolder<TTax_DM> m_data;
};
extern TTaxList_FRM *TaxList_FRM;
