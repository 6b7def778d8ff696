#include "tax/TaxRules.h"

#include "host/Declaration_PKG/MessageCatalogue.h"
#include "tax/Tax_DM_UNT.h"

using namespace Rules;

namespace {

TBroken codeIsNotZero(const TTaxSubject &subject, const char *)
{
    return brokenUnless(subject.record._Code != 0);
}

TBroken hasBrackets(const TTaxSubject &subject, const char *)
{
    return brokenUnless(subject.brackets > 0);
}

TBroken boundsInOrder(const TBracketSubject &subject, const char *)
{
    return brokenUnless(subject.record._ToSalary >= subject.record._FromSalary);
}

TBroken boundsDiffer(const TBracketSubject &subject, const char *)
{
    return brokenUnless(subject.record._ToSalary != subject.record._FromSalary);
}

TBroken overlapsNone(const TBracketSubject &subject, const char *)
{
    const TTmpTax_Mapper &bracket = subject.record;
    subject.data.TmpTax_GetID(bracket._TaxMainCode, subject.row, bracket._FromSalary, bracket._ToSalary);
    return brokenUnless(subject.data.Temp_QUR->isEmpty());
}

using enum TRuleMessage;

constexpr TRule<TTaxSubject> rules[] = {
    {"Code", Required, u"کد", u"", given},
    {"Code", NotZero, u"کد", u"", codeIsNotZero},
    {"Title", Required, u"عنوان", u"", given},
    {"", NotEntered, u"سطري", u"", hasBrackets},
};

constexpr TRule<TBracketSubject> rulesOfBrackets[] = {
    {"FromSalary", Required, u"از حقوق", u"", given},
    {"ToSalary", Required, u"تا حقوق", u"", given},
    {"ToSalary", Note, u"", u"", boundsInOrder, ntBoundsReversed},
    {"ToSalary", Note, u"", u"", boundsDiffer, ntBoundsEqual},
    // The message names the rate differently from the input's caption; users know it so.
    {"Percent", Required, u"در صد", u"", given},
    {"FromSalary", Note, u"", u"", overlapsNone, ntBracketsOverlap},
};

} // namespace

std::span<const TRule<TTaxSubject>> taxRules()
{
    return rules;
}

std::span<const TRule<TBracketSubject>> bracketRules()
{
    return rulesOfBrackets;
}
