#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

/// The base of all detail-row editors: a row of the record that the editor behind has open.
class KETEBIONPAP_HOST TBaseGetDetail_FRM : public TBaseEditor {
    Q_OBJECT
public:
    /// A new row of the master record.
    TBaseGetDetail_FRM(const QVariant &part, const QVariant &master);
    /// An existing row.
    TBaseGetDetail_FRM(const QVariant &part, const QVariant &master, TFormMode mode, const QVariant &rowId);

    TSoftwarePart Part() const { return m_part; }
    const QVariant &Master() const { return m_master; }

private:
    TSoftwarePart m_part;
    QVariant m_master;
};
