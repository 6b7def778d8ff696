#include "tax/Tax_GetDetail_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "tax/Tax_DM_UNT.h"

using namespace Qt::Literals::StringLiterals;

TTax_GetDetail_FRM::TTax_GetDetail_FRM(const QVariant &part, const QVariant &master)
    : TRecordGet(part, master)
{
    build();
}

TTax_GetDetail_FRM::TTax_GetDetail_FRM(const QVariant &part, const QVariant &master, TFormMode mode,
                                       const QVariant &rowId)
    : TRecordGet(part, master, mode, rowId)
{
    build();
}

void TTax_GetDetail_FRM::build()
{
    SetTitle(u"جدول مالیاتی"_s);
    resize(420, 230);
    Store.read = [](const QVariant &id, TTmpTax_Mapper &bracket) {
        Tax_DM->TmpTax_GetById(id, bracket);
        return !Tax_DM->TmpGet_QUR->isEmpty();
    };
    Store.write = [this](const TTmpTax_Mapper &bracket, bool isNew) {
        const bool saved = isNew ? Tax_DM->TmpTax_Insert(bracket) : Tax_DM->TmpTax_Update(bracket);
        if (saved && isNew)
            SetIdentifier(Tax_DM->TmpGet_QUR->value(u"ID"_s)); // saving may leave the row open
        return saved;
    };
    SaveWords = {u"ذخيره سازي"_s, {}, {}};
    auto *inputs = new QGridLayout;
    AddFields(inputs, bracketFields(), u"TmpTax"_s);
    for (TSmartEdit_ZLM *number : {FromSalary_EDT, ToSalary_EDT, Percent_EDT})
        number->SetText(u"0"_s);
    Body()->addLayout(inputs);
    connect(Percent_EDT, &TSmartEdit_ZLM::changed, this, [this] { GuardPercent(Percent_EDT, false); });
    BuildFooter(u"ذخيره و خروج F3"_s, u"خروج Esc"_s);
}

void TTax_GetDetail_FRM::ClearRecord()
{
    for (TSmartEdit_ZLM *input : {FromSalary_EDT, ToSalary_EDT, Percent_EDT, Comment_EDT})
        input->Clear();
    Store.read(0, Stored);
    SetIsSaved(true);
}

// Its bounds overlapped nothing when it was sent, so at most one row has them now.
QVariant TTax_GetDetail_FRM::SentRecord()
{
    if (!Sent)
        return {};
    Tax_DM->TmpTax_GetID(Master().toInt(), 0, Sent->_FromSalary, Sent->_ToSalary);
    if (Tax_DM->Temp_QUR->isEmpty())
        return {};
    const QVariant id = Tax_DM->Temp_QUR->value(u"ID"_s);
    TTmpTax_Mapper stored, sent = *Sent;
    Store.read(id, stored);
    sent._Comment = AsStored(u"TmpTax"_s, u"Comment"_s, sent._Comment);
    const bool own = stored == sent;
    return own ? id : QVariant();
}

void TTax_GetDetail_FRM::ShowRecord()
{
    m_inputs.show(Stored);
    for (const auto &field : bracketFields())
        if (field.input.name && Tax_DM->TmpGet_QUR->value(QString::fromLatin1(field.column)).isNull())
            Input<TSmartEdit_ZLM>(field.input.name)
                ->Clear(); // another program of the suite may leave amounts out
    SetIsSaved(true);
}

bool TTax_GetDetail_FRM::Validate()
{
    const TBracketSubject subject{{bracketFields(), Typed(), Stored, m_inputs.empty()},
                                  *Tax_DM,
                                  Mode() == fmNew ? 0 : Identifier().toInt()};
    return std::ranges::all_of(bracketRules(),
                               [&](const auto &rule) { return Keeps(rule, bracketFields(), subject); });
}

TTmpTax_Mapper TTax_GetDetail_FRM::Typed() const
{
    TTmpTax_Mapper bracket = TRecordGet::Typed();
    bracket._TaxMainCode = Master().toInt();
    return bracket;
}
