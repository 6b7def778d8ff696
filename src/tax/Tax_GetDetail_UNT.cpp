#include "tax/Tax_GetDetail_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "tax/TaxFields.h"
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
    Store.read = [](const QVariant &id, TTmpTax_Mapper &bracket) {
        Tax_DM->TmpTax_GetById(id);
        Fields::read<TTmpTax_Mapper>(*Tax_DM->TmpGet_QUR, bracketFields, bracket);
        return !Tax_DM->TmpGet_QUR->isEmpty();
    };
    Store.write = [this](const TTmpTax_Mapper &bracket, bool isNew) {
        if (!isNew)
            return Tax_DM->TmpTax_Update(bracket);
        const bool entered = Tax_DM->TmpTax_Insert(bracket);
        if (entered)
            SetIdentifier(Tax_DM->TmpGet_QUR->value(u"ID"_s)); // saving may leave the row open
        return entered;
    };
    SaveWords = {u"ذخيره سازي"_s, {}, {}};
    resize(420, 230);
    auto *inputs = new QGridLayout;
    const auto number = [&](int row, const QString &caption, const QString &name, TSmartEdit_ZLM::Kind kind,
                            const QString &suffix) {
        auto *input = new TSmartEdit_ZLM(this, kind, 15);
        input->SetText(u"0"_s);
        return AddInput(inputs, row, 0, caption, name, input, suffix);
    };
    FromSalary_EDT = number(0, u"  &از حقوق :"_s, u"FromSalary_EDT"_s, TSmartEdit_ZLM::Money, {});
    ToSalary_EDT = number(1, u"  &تا حقوق :"_s, u"ToSalary_EDT"_s, TSmartEdit_ZLM::Money, {});
    Percent_EDT = number(2, u"  نر&خ مالیات :"_s, u"Percent_EDT"_s, TSmartEdit_ZLM::Number, u"%"_s);
    Comment_EDT = AddInput(inputs, 3, 0, u"  &شرح :"_s, u"Comment_EDT"_s,
                           new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    Body()->addLayout(inputs);
    connect(Percent_EDT, &TSmartEdit_ZLM::changed, this, [this] { GuardPercent(Percent_EDT, false); });
    KeepIn(u"TmpTax"_s, {{Comment_EDT, "Comment"}});
    BuildFooter(u"ذخيره و خروج F3"_s, u"خروج Esc"_s);
}

void TTax_GetDetail_FRM::ClearRecord()
{
    FromSalary_EDT->Clear();
    ToSalary_EDT->Clear();
    Percent_EDT->Clear();
    Comment_EDT->Clear();
    Tax_DM->TmpTax_GetById(0);
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
    TTmpTax_Mapper row;
    Store.read(id, row);
    const bool own = row._FromSalary == Sent->_FromSalary && row._ToSalary == Sent->_ToSalary &&
                     row._Percent == Sent->_Percent &&
                     row._Comment == AsStored(u"TmpTax"_s, u"Comment"_s, Sent->_Comment);
    return own ? id : QVariant();
}

void TTax_GetDetail_FRM::ShowRecord()
{
    FromSalary_EDT->SetValue(Stored._FromSalary);
    ToSalary_EDT->SetValue(Stored._ToSalary);
    Percent_EDT->SetValue(Stored._Percent);
    Comment_EDT->SetText(Stored._Comment);
    SetIsSaved(true);
}

bool TTax_GetDetail_FRM::Validate()
{
    if (FromSalary_EDT->IsEmpty()) {
        MsgRequiredField(u"از حقوق"_s, FromSalary_EDT, this);
        FocusInput(FromSalary_EDT);
        return false;
    }
    if (ToSalary_EDT->IsEmpty()) {
        MsgRequiredField(u"تا حقوق"_s, ToSalary_EDT, this);
        FocusInput(ToSalary_EDT);
        return false;
    }
    const double from = FromSalary_EDT->asFloat();
    const double to = ToSalary_EDT->asFloat();
    if (to < from) {
        ShowSmartMessage(ntBoundsReversed, ToSalary_EDT, this, noteTime);
        FocusInput(ToSalary_EDT);
        return false;
    }
    if (to == from) {
        ShowSmartMessage(ntBoundsEqual, ToSalary_EDT, this, noteTime);
        FocusInput(ToSalary_EDT);
        return false;
    }
    // The message names the rate differently from the input's caption; users know it so.
    if (Percent_EDT->GetText().trimmed().isEmpty()) {
        MsgRequiredField(u"در صد"_s, Percent_EDT, this);
        FocusInput(Percent_EDT);
        return false;
    }
    const int row = Mode() == fmNew ? 0 : Identifier().toInt();
    Tax_DM->TmpTax_GetID(Master().toInt(), row, from, to);
    if (!Tax_DM->Temp_QUR->isEmpty()) {
        ShowSmartMessage(ntBracketsOverlap, FromSalary_EDT, this, noteTime);
        FocusInput(FromSalary_EDT);
        return false;
    }
    return true;
}

TTmpTax_Mapper TTax_GetDetail_FRM::Typed() const
{
    return {Master().toInt(), FromSalary_EDT->asFloat(), ToSalary_EDT->asFloat(), Percent_EDT->asFloat(),
            Comment_EDT->GetText()};
}
