#pragma once

#include <QString>

#include <optional>
#include <span>

/// How a user is told what a rule has against a record.
enum class TRuleMessage {
    Required,    ///< MsgRequiredField with the word
    Repeated,    ///< MsgRepeatedField with both words; the detail names who has it
    NotSaveable, ///< NotSaveable with both words
    Hint,        ///< a hint beside the input: the word is the sentence
    Explained,   ///< a message: the word is the sentence; its explanation the second word and the detail
    WrongForm,   ///< what the input itself says of a text that is no value of its kind
};

/// What a rule has against a record.
struct TComplaint {
    TRuleMessage message;
    const char *column; ///< of the field concerned
    QString word;
    QString more;
    QString detail;
};

/// One rule of a record: the field concerned, the words for the user, and the check. `Subject` is what the checks look
/// at: the record and what else they need. A record's rules stand in one table, in the order in which a user is told.
template <class Subject>
struct TRule {
    const char *column;
    TRuleMessage message;
    const char16_t *word;
    const char16_t *more;
    /// Null: the record keeps the rule; otherwise the detail of the complaint. May throw TDatabaseError.
    std::optional<QString> (*broken)(const Subject &subject, const char *column);

    QString firstWord() const { return QString::fromUtf16(word); }
    std::optional<TComplaint> complaint(const Subject &subject) const
    {
        const auto detail = broken(subject, column);
        if (!detail)
            return {};
        return TComplaint{message, column, firstWord(), QString::fromUtf16(more), *detail};
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
