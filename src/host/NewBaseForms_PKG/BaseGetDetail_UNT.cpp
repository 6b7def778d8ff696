#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"

TBaseGetDetail_FRM::TBaseGetDetail_FRM(const QVariant &part, const QVariant &master)
    : TBaseEditor(fmNew), m_part(TSoftwarePart(part.toInt())), m_master(master)
{
}

TBaseGetDetail_FRM::TBaseGetDetail_FRM(const QVariant &part, const QVariant &master, TFormMode mode,
                                       const QVariant &rowId)
    : TBaseEditor(mode), m_part(TSoftwarePart(part.toInt())), m_master(master)
{
    SetIdentifier(rowId);
}
