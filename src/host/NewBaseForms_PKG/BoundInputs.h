#pragma once

#include "host/Component_ZLM/SmartInput.h"
#include "host/Utility_ZLM/Decimal.h"
#include "host/database/RecordFields.h"

#include <QList>

/// The inputs of an editor, each tied to the member of the record that it shows: all are filled and read in one go.
///
/// Texts go to and fro as they are typed; amounts are shown with as many decimal places as the tables keep; of a
/// drop-down list the position counts (0-based; none chosen is read as 0), and a flag in one is its second item.
template <class Record>
class TBoundInputs {
public:
    /// Ties an input to a member and gives it back.
    template <class Input>
    Input *add(Input *input, TMember<Record> member)
    {
        m_inputs.append({input, member});
        return input;
    }
    void show(const Record &record) const
    {
        for (const TBound &bound : m_inputs)
            std::visit([&](auto member) { put(bound.input, record.*member); }, bound.member);
    }
    void read(Record &record) const
    {
        for (const TBound &bound : m_inputs)
            std::visit([&](auto member) { take(bound.input, record.*member); }, bound.member);
    }

private:
    struct TBound {
        TSmartInput *input;
        TMember<Record> member;
    };
    static void put(TSmartInput *input, const QString &text) { input->SetText(text); }
    static void put(TSmartInput *input, int number) { input->SetValue(number); }
    static void put(TSmartInput *input, bool flag) { input->SetValue(flag); }
    static void put(TSmartInput *input, double amount) { input->SetText(RoundedText_ZLM(amount)); }
    static void take(const TSmartInput *input, QString &text) { text = input->GetText(); }
    static void take(const TSmartInput *input, int &number) { number = qMax(0, input->GetValue().toInt()); }
    static void take(const TSmartInput *input, bool &flag) { flag = input->GetValue().toInt() == 1; }
    static void take(const TSmartInput *input, double &amount) { amount = input->GetValue().toDouble(); }

    QList<TBound> m_inputs;
};
