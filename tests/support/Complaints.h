#pragma once

#include "host/database/RecordRules.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// What the rules of a record say without a window.
namespace Complaints {

/// "column message word|more|detail" of the first complaint, with the notification's number where it has one; empty: the
/// record may be saved.
template <class Subject>
QString first(std::span<const TRule<Subject>> rules, const Subject &subject)
{
    const auto found = FirstComplaint(rules, subject);
    if (!found)
        return {};
    static const char *const told[] = {"Required",  "Repeated", "NotSaveable", "Hint",       "Explained",
                                       "WrongForm", "Note",     "NotZero",     "NotEntered", "Unknown"};
    const QString complaint = u"%1 %2 %3|%4|%5"_s.arg(QLatin1StringView(found->column),
                                                      QLatin1StringView(told[int(found->message)]),
                                                      found->word, found->more, found->detail);
    return found->number ? complaint + u" %1"_s.arg(found->number) : complaint;
}

/// Every rule concerns a field that the user finds on the screen.
template <class Subject, class Record>
void expectInputs(std::span<const TRule<Subject>> rules, std::span<const TField<Record>> fields)
{
    for (const auto &rule : rules) {
        const auto *field = Fields::ofColumn(fields, rule.column);
        ASSERT_TRUE(field) << rule.column;
        EXPECT_TRUE(field->input.name) << rule.column;
    }
}

} // namespace Complaints
