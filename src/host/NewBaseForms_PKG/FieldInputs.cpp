#include "host/NewBaseForms_PKG/FieldInputs.h"

#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "host/NewBaseForms_PKG/InputForm_UNT.h"

namespace {

constexpr int shownOfWideItems = 16; // characters

TSmartEdit_ZLM *makeCode(const TFieldInput &field, QWidget *parent)
{
    auto *edit = new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Text, field.limit);
    edit->SetCodeForm(field.kind == TFieldInput::PlainCode ? TSmartEdit_ZLM::PlainCode
                                                           : TSmartEdit_ZLM::LatinDigits);
    return edit;
}

TSmartEdit_ZLM *makeEdit(const TFieldInput &field, QWidget *parent)
{
    switch (field.kind) {
    case TFieldInput::PlainCode:
    case TFieldInput::LatinCode:
        return makeCode(field, parent);
    case TFieldInput::Integer:
        return new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Integer, field.limit);
    case TFieldInput::Number:
        return new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Number, field.limit);
    case TFieldInput::Money:
        return new TSmartEdit_ZLM(parent, TSmartEdit_ZLM::Money, field.limit);
    case TFieldInput::PickedCode:
        return new TSmartButtonEdit_ZLM(parent, field.limit);
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
    case TFieldInput::Time:
        return new TSmartTime_ZLM(parent);
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

/// Whether its texts are all as long as their column or shorter.
bool hasFormOfItsOwn(TFieldInput::Kind kind)
{
    return kind == TFieldInput::Date || kind == TFieldInput::Time || kind == TFieldInput::Number ||
           kind == TFieldInput::Money;
}

TSmartInput *make(const TFieldInput &field, QWidget *parent)
{
    switch (field.kind) {
    case TFieldInput::Own:
        return nullptr;
    case TFieldInput::Choice:
    case TFieldInput::WideChoice:
    case TFieldInput::CodedChoice:
        return makeChoice(field, parent);
    case TFieldInput::Tick:
        return new TSmartCheckBox_ZLM(QString::fromUtf16(field.caption), parent);
    case TFieldInput::PlainTick:
        return new TSmartCheckBox_ZLM({}, parent);
    case TFieldInput::Spin:
        return new TSmartSpinEdit_ZLM(parent, int(field.least), int(field.most));
    default:
        break;
    }
    TSmartEdit_ZLM *edit = makeEdit(field, parent);
    if (field.least < field.most)
        edit->SetRange(field.least, field.most);
    return edit;
}

} // namespace

TSmartInput *MakeInput(const TFieldInput &field, QWidget *parent)
{
    TSmartInput *input = make(field, parent);
    if (input)
        input->Widget()->setObjectName(QString::fromLatin1(field.name));
    return input;
}

void TInputForm::PlaceField(QGridLayout *layout, const TFieldInput &field, const QString &table,
                            const char *column)
{
    auto *input = Input<QWidget>(field.name);
    if (!input)
        return;
    Place(layout, field.row, field.column,
          field.kind == TFieldInput::Tick ? QString() : QString::fromUtf16(field.caption),
          QString::fromLatin1(field.name), input, QString::fromUtf16(field.suffix));
    connect(input, SIGNAL(changed()), this, SLOT(InputChanged()));
    auto *edit = qobject_cast<TSmartEdit_ZLM *>(input);
    if (edit && column && !hasFormOfItsOwn(field.kind))
        m_keptTexts.Add(edit, table, QString::fromLatin1(column));
}

bool TInputForm::KeepsForm(QWidget *input)
{
    return CheckInput(dynamic_cast<TSmartInput *>(input));
}

void TInputForm::TellComplaint(const TComplaint &complaint, QWidget *input)
{
    switch (complaint.message) {
    case TRuleMessage::NotSaveable:
        NotSaveable(complaint.word, complaint.more, input);
        break;
    case TRuleMessage::Repeated:
        MsgRepeatedField(complaint.word, complaint.more, input, this, complaint.detail);
        break;
    case TRuleMessage::Hint:
        FocusInput(input);
        ShowTooltipMessage(complaint.word, input);
        return;
    case TRuleMessage::Explained:
        ShowSmartMessage(complaint.word, complaint.more + complaint.detail, miError);
        break;
    case TRuleMessage::Note:
        ShowSmartMessage(complaint.number, input, this, noteTime);
        break;
    case TRuleMessage::NotZero:
        NotZeroValue(complaint.word, input);
        break;
    case TRuleMessage::NotEntered:
        MsgNotEntered(complaint.word);
        break;
    case TRuleMessage::Unknown:
        MsgCodeNotAvailable(complaint.word, input, this);
        break;
    case TRuleMessage::Required:
    case TRuleMessage::WrongForm:
        MsgRequiredField(complaint.word, input, this);
        break;
    }
    FocusInput(input);
}
