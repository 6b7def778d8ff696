#include "calender/CalenderRules.h"

using namespace Rules;

namespace {

// A stored day keeps its date, also one that the calendar does not have (12/30 of a common year).
TBroken dateIsReal(const TDaySubject &subject, const char *column)
{
    const bool kept = subject.record._Date == subject.loaded._Date && !subject.isEmpty(column);
    return kept ? TBroken() : brokenUnless(!subject.isEmpty(column) && !wellFormed(subject, column));
}

using enum TRuleMessage;

constexpr TRule<TDaySubject> rules[] = {
    {"Title", Required, u"عنوان", u"", given},
    {"Date", WrongForm, u"", u"", dateIsReal},
};

} // namespace

std::span<const TRule<TDaySubject>> dayRules()
{
    return rules;
}
