#pragma once

#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/database/Query.h"

/// Who may do what: a row for each user and part, a column for each right, and in it where the right comes from (own, a
/// role, an administrator). Printed and written to a spreadsheet as every list. For administrators.
class TRightsMatrix_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TRightsMatrix_FRM();

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool) override { return nullptr; }
    void DeleteRecord() override {}

private:
    TQuery m_query;
};
