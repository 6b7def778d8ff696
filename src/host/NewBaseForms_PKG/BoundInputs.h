#pragma once

#include "host/NewBaseForms_PKG/FieldInputs.h"
#include "host/Utility_ZLM/Decimal.h"

/// The inputs of an editor, each tied to the member of the record that it shows: all are filled and read in one go.
///
/// Texts go to and fro as they are typed; amounts are shown with as many decimal places as the tables keep; of a
/// drop-down list the position counts (none chosen is read as the first), and a flag in one is its second item. Where the
/// position is stored as a text, none chosen is an empty one.
template <class Record>
class TBoundInputs {
public:
    TBoundInputs() = default;
    /// Makes the inputs of a record's fields, in their order, and ties them to their members.
    TBoundInputs(std::span<const TField<Record>> fields, QWidget *parent)
    {
        for (const TField<Record> &field : fields)
            if (TSmartInput *input = field.input.name ? MakeInput(field.input, parent) : nullptr)
                m_inputs.append({input, field});
    }

    void show(const Record &record) const
    {
        for (const TBound &bound : m_inputs)
            if (bound.kind() != TFieldInput::CodedChoice)
                std::visit([&](auto member) { put(bound, record.*member); }, bound.field.member);
    }
    void read(Record &record) const
    {
        for (const TBound &bound : m_inputs)
            if (bound.kind() != TFieldInput::CodedChoice)
                std::visit([&](auto member) { take(bound, record.*member); }, bound.field.member);
    }
    /// The columns of the fields whose inputs are empty.
    QList<QByteArray> empty() const
    {
        QList<QByteArray> columns;
        for (const TBound &bound : m_inputs)
            if (bound.input->IsEmpty())
                columns.append(bound.field.column);
        return columns;
    }

private:
    struct TBound {
        TSmartInput *input;
        TField<Record> field;
        TFieldInput::Kind kind() const { return field.input.kind; }
    };
    static void put(const TBound &bound, const QString &text)
    {
        bool isPosition = false;
        const int position = text.toInt(&isPosition);
        if (bound.kind() == TFieldInput::Choice)
            bound.input->SetValue(isPosition ? position : -1);
        else
            bound.input->SetText(text);
    }
    static void put(const TBound &bound, int number)
    {
        const bool none = bound.kind() == TFieldInput::PickedCode && number == 0;
        bound.input->SetValue(none ? QVariant() : number - bound.field.input.first);
    }
    static void put(const TBound &bound, bool flag) { bound.input->SetValue(flag); }
    static void put(const TBound &bound, double amount) { bound.input->SetText(RoundedText_ZLM(amount)); }
    static void take(const TBound &bound, QString &text)
    {
        const bool position = bound.kind() == TFieldInput::Choice;
        if (position && bound.input->IsEmpty())
            text.clear();
        else
            text = position ? bound.input->GetValue().toString() : bound.input->GetText();
    }
    static void take(const TBound &bound, int &number)
    {
        number = qMax(0, bound.input->GetValue().toInt()) + bound.field.input.first;
    }
    static void take(const TBound &bound, bool &flag) { flag = bound.input->GetValue().toInt() == 1; }
    static void take(const TBound &bound, double &amount) { amount = bound.input->GetValue().toDouble(); }

    QList<TBound> m_inputs;
};
