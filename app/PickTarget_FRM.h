#pragma once

#include "app/Session.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

/// The records that earnings and deductions are picked into: personnel orders, or staff outputs. Other modules of the
/// suite edit them; this list shows their working rows and lets the payroll module add to them.
class TPickTarget_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    enum Kind { Orders, Outputs };
    TPickTarget_FRM(TSession &session, Kind kind);

    TSmartButton_ZLM *Fiscal_BTN = nullptr;
    TSmartButton_ZLM *Deduction_BTN = nullptr;
    TQuery *Items_QUR = nullptr; ///< the working rows of the current record

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool) override { return nullptr; }
    void DeleteRecord() override {}
    bool SelectRecord() override { return false; }
    void UpdateButtons() override;

private:
    TSmartButton_ZLM *addPick(const QString &name, const QString &caption, const QString &key,
                              const QString &shortCaption, const char *entry);
    void pick(const char *entry);
    void showItems();
    TSession &m_session;
    const Kind m_kind;
};
