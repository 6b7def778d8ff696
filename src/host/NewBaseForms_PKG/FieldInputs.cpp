#include "host/NewBaseForms_PKG/FieldInputs.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

namespace {

constexpr int shownOfWideItems = 16; // characters

TSmartEdit_ZLM *makeEdit(const TFieldInput &field, QWidget *parent)
{
    switch (field.kind) {
    case TFieldInput::PlainCode: {
        auto *edit = new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Text, field.limit);
        edit->SetCodeForm(TSmartEdit_ZLM::PlainCode);
        return edit;
    }
    case TFieldInput::Integer:
        return new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Integer, field.limit);
    case TFieldInput::NationalCode:
        return new TSmartMaskEdit_ZLM(parent, TSmartMaskEdit_ZLM::NationalCode, field.limit);
    case TFieldInput::IdNumber:
        return new TSmartMaskEdit_ZLM(parent, TSmartMaskEdit_ZLM::IdNumber, field.limit);
    case TFieldInput::Telephone:
        return new TSmartMaskEdit_ZLM(parent, TSmartMaskEdit_ZLM::Telephone, field.limit);
    case TFieldInput::PostCode:
        return new TSmartMaskEdit_ZLM(parent, TSmartMaskEdit_ZLM::PostCode, field.limit);
    case TFieldInput::Email:
        return new TSmartMaskEdit_ZLM(parent, TSmartMaskEdit_ZLM::Email, field.limit);
    case TFieldInput::Date:
        return new TSmartDateEdit_ZLM(parent);
    default:
        return new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Text, field.limit);
    }
}

TSmartComboBox_ZLM *makeChoice(const TFieldInput &field, QWidget *parent)
{
    auto *choice = new TSmartComboBox_ZLM(parent, field.choices ? field.choices() : QStringList());
    if (field.kind == TFieldInput::WideChoice) {
        choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        choice->setMinimumContentsLength(shownOfWideItems);
    }
    return choice;
}

bool isChoice(const TFieldInput &field)
{
    return field.kind == TFieldInput::Choice || field.kind == TFieldInput::WideChoice ||
           field.kind == TFieldInput::CodedChoice;
}

} // namespace

TSmartInput *MakeInput(const TFieldInput &field, QWidget *parent)
{
    TSmartInput *input = nullptr;
    if (isChoice(field))
        input = makeChoice(field, parent);
    else
        input = makeEdit(field, parent);
    input->Widget()->setObjectName(QString::fromLatin1(field.name));
    return input;
}

bool IsFreeText(const TFieldInput &field)
{
    return !isChoice(field) && field.kind != TFieldInput::Integer && field.kind != TFieldInput::Date;
}
