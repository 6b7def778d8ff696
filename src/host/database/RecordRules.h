#pragma once

#include "host/database/RecordFields.h"

#include <optional>

/// How a user is told what a rule has against a record.
enum class TRuleMessage {
    Required,    ///< MsgRequiredField with the word
    Repeated,    ///< MsgRepeatedField with both words; the detail names who has it
    NotSaveable, ///< NotSaveable with both words
    Hint,        ///< a hint beside the input: the word is the sentence
    Explained,   ///< a message: the word is the sentence; its explanation the second word and the detail
    WrongForm,   ///< what the input itself says of a text that is no value of its kind
    Note,        ///< the catalogued notification of the number, beside the input
    NotZero,     ///< NotZeroValue with the word
    NotEntered,  ///< MsgNotEntered with the word
    Unknown,     ///< MsgCodeNotAvailable with the word
};

/// What a rule has against a record.
struct TComplaint {
    TRuleMessage message;
    const char *column; ///< of the field concerned
    QString word;
    QString more;
    QString detail;
    int number = 0; ///< of the notification
};

/// None: the record keeps the rule; otherwise the detail of the complaint.
using TBroken = std::optional<QString>;

/// One rule of a record: the field concerned, the words for the user, and the check. `Subject` is what the checks look
/// at: the record and what else they need. A record's rules stand in one table, in the order in which a user is told.
template <class Subject>
struct TRule {
    const char *column;
    TRuleMessage message;
    const char16_t *word;
    const char16_t *more;
    TBroken (*broken)(const Subject &subject, const char *column); ///< may throw TDatabaseError
    qsizetype number = 0;                                          ///< of the notification

    QString firstWord() const { return QString::fromUtf16(word); }
    std::optional<TComplaint> complaint(const Subject &subject) const
    {
        const auto detail = broken(subject, column);
        if (!detail)
            return {};
        return TComplaint{message, column, firstWord(), QString::fromUtf16(more), *detail, int(number)};
    }
};

/// What the first rule that the subject breaks has against it; none: it may be saved. Throws TDatabaseError.
template <class Subject>
std::optional<TComplaint> FirstComplaint(std::span<const TRule<Subject>> rules, const Subject &subject)
{
    for (const TRule<Subject> &rule : rules)
        if (auto complaint = rule.complaint(subject))
            return complaint;
    return {};
}

/// What the rules of a record look at; a record whose rules need more adds it.
template <class Record>
struct TRecordSubject {
    std::span<const TField<Record>> fields;
    Record record = {};           ///< as it is to be saved
    Record loaded = {};           ///< as it is stored; empty for a new one
    QList<QByteArray> empty = {}; ///< columns of numbers that nothing was entered for; the record has 0 there

    const QString *text(const char *column) const
    {
        const auto *member = std::get_if<QString Record::*>(&Fields::ofColumn(fields, column)->member);
        return member ? &(record.**member) : nullptr;
    }
    bool isEmpty(const char *column) const
    {
        const QString *entered = text(column);
        return entered ? entered->isEmpty() : empty.contains(column);
    }
};

/// The checks that many records have.
namespace Rules {

inline TBroken brokenUnless(bool kept)
{
    return kept ? TBroken() : TBroken(QString());
}

/// Whether a text is a value of the kind; kinds without a form of their own take any. Empty is well-formed.
KETEBIONPAP_CORE bool isWellFormed(TFieldInput::Kind kind, const QString &text);

template <class Subject>
TBroken given(const Subject &subject, const char *column)
{
    return brokenUnless(!subject.isEmpty(column));
}

template <class Subject>
TBroken wellFormed(const Subject &subject, const char *column)
{
    return brokenUnless(
        isWellFormed(Fields::ofColumn(subject.fields, column)->input.kind, *subject.text(column)));
}

} // namespace Rules
