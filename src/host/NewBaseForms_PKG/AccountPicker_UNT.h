#pragma once

#include "host/Declaration_PKG/Accounts_unt.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/database/Query.h"

class QLabel;

/// The chart of accounts, one level of it, to pick a code from. The caller keeps the query.
class TAccountPicker_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    /// Assistants of every total when `total` is 0.
    TAccountPicker_FRM(TQuery *list, TAccountLevel level, int total);

    TAccountCode Selected; ///< the levels that the list does not show stay 0

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool) override { return nullptr; } ///< the ledger keeps its accounts
    void DeleteRecord() override {}
    bool SelectRecord() override;
    void AfterShow() override;
    void UpdateButtons() override;

private:
    void tellWhereFrom();
    TAccountLevel m_level;
    int m_total;
    QLabel *m_none = nullptr; ///< stands for the grid while there is no account to be listed
};
