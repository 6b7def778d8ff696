#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/NewBaseForms_PKG/Recovery_UNT.h"

class QTableWidget;

/// Asks what becomes of rows that an editor left behind when it did not close properly. Esc decides nothing: the
/// rows stay. Throwing away asks once more.
class KETEBIONPAP_HOST TRecovery_FRM : public TBaseForm {
    Q_OBJECT
public:
    TRecovery_FRM(const TRecoveryRequest &request, QWidget *parent);
    const TRecoveryChoice &Choice() const { return m_choice; }

private:
    void decide(TRecoveryChoice::Action action);
    TRecoveryRequest m_request;
    TRecoveryChoice m_choice;
    QTableWidget *m_codes;
};
