#pragma once

#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

/// The list of calculation methods, to keep them (mode 1) or to choose one (mode 5).
class TCalcMethodList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TCalcMethodList_FRM(TFormMode mode, const QString &text);

    int SelectedCode = 0; ///< the method that was chosen
    QString SelectedTitle;

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void DeleteRecord() override;
    bool SelectRecord() override;
};

/// The list while an entry point shows it.
extern TCalcMethodList_FRM *CalcMethodList_FRM;
