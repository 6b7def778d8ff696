#include "entity/EntityRules.h"

#include "entity/Entity_DM_UNT.h"

using namespace Rules;

namespace {

// A new item has no row of its own yet: any row is somebody else's.
TBroken codeIsFree(const TEntitySubject &subject, const char *)
{
    const int code = subject.record._code;
    if (subject.part == cspDeduction)
        subject.data.Deducation_GetCode(code);
    else
        subject.data.Fiscal_GetCode(code);
    return brokenUnless(subject.data.Temp_QUR->isEmpty() || (subject.own != 0 && code == subject.own));
}

TBroken groupIsReal(const TEntitySubject &subject, const char *)
{
    return brokenUnless(subject.record._Grpcode != 0);
}

TBroken titleIsFree(const TEntitySubject &subject, const char *)
{
    const QString &title = subject.record._title;
    if (subject.part == cspDeduction)
        subject.data.DeducationGet_ByTitle(title);
    else
        subject.data.FiscalGet_ByTitle(title);
    const bool found = !subject.data.Temp_QUR->isEmpty();
    if (title == subject.loaded._title)
        return {};
    const auto twin = subject.data.Title_Twin(title, subject.part, subject.record._code);
    if (!found && !twin)
        return {};
    return twin ? TwinText(*twin) : QString();
}

TBroken accountIsWhole(const TEntitySubject &subject, const char *)
{
    const auto &item = subject.record;
    return brokenUnless(item._Kol.toInt() != 0 && item._Moin.toInt() != 0 && item._Tafzili.toInt() != 0);
}

TBroken amountGiven(const TEntitySubject &subject, const char *column)
{
    return subject.record._CalcType == ebPercent ? TBroken() : given(subject, column);
}

TBroken rateGiven(const TEntitySubject &subject, const char *column)
{
    return subject.record._CalcType == ebPercent ? given(subject, column) : TBroken();
}

using enum TRuleMessage;

constexpr TRule<TEntitySubject> rules[] = {
    {"code", Required, u"کد", u"", given},
    {"code", Repeated, u"کد", u"", codeIsFree},
    {"Grpcode", NotSaveable, u"کليه گروه ها", u"رکوردي", groupIsReal},
    {"title", Required, u"عنوان", u"", given},
    // Users know this sentence with the word of the earnings, for deductions too.
    {"title", Repeated, u"عنوان", u"مزايا", titleIsFree},
    {"Kol", Required, u"حساب کارمند را به طور کامل", u"", accountIsWhole},
    {"cost", Required, u"مبلغ", u"", amountGiven},
    {"cost", Required, u"نرخ", u"", rateGiven},
};

} // namespace

std::span<const TRule<TEntitySubject>> entityRules()
{
    return rules;
}
