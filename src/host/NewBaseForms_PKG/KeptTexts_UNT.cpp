#include "host/NewBaseForms_PKG/KeptTexts_UNT.h"

#include "host/Component_ZLM/SmartEdit_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianText.h"

namespace {

/// "  &عنوان :" as a word of a sentence.
QString wordOf(const TSmartEdit_ZLM *input)
{
    QString word = input->accessibleName().trimmed();
    if (word.endsWith(u':'))
        word.chop(1);
    return word.trimmed();
}

} // namespace

void TKeptTexts::Add(TSmartEdit_ZLM *input, const QString &table, const QString &column)
{
    m_kept.append({input, table, column});
}

TSmartEdit_ZLM *TKeptTexts::Refused() const
{
    TSmartEdit_ZLM *first = nullptr;
    QList<TCutText> cuts;
    for (const TKept &kept : m_kept) {
        if (!kept.input)
            continue;
        const QString text = kept.input->GetText();
        const QString stored =
            PersianText::cut(text, DM.ADOConnection1->columnWidth(kept.table, kept.column));
        const QString lost = text.mid(stored.size()).trimmed();
        if (lost.isEmpty())
            continue;
        if (!first)
            first = kept.input;
        cuts.append({wordOf(kept.input), int(stored.size()), lost});
    }
    return cuts.isEmpty() || MsgTextsCut(cuts) ? nullptr : first;
}
