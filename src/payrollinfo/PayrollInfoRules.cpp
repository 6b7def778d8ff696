#include "payrollinfo/PayrollInfoRules.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"

using namespace Qt::Literals::StringLiterals;
using namespace Rules;

namespace {

constexpr int caseNumberDigits = 12;

TBroken caseNumberIsLong(const TPayrollInfoSubject &subject, const char *)
{
    return brokenUnless(subject.record._CaseNo.size() >= caseNumberDigits);
}

// The payer's name is tested again, so that the family name is in effect never required.
TBroken payerNameGiven(const TPayrollInfoSubject &subject, const char *)
{
    return brokenUnless(!subject.record._PayerName.isEmpty());
}

/// Whether the code is stored; also without a title.
TBroken isStored(const QString &table, int code)
{
    return brokenUnless(!ScalerQuery(table, u"Title"_s, u"Code"_s, code).isEmpty() ||
                        !ScalerQuery(table, u"Code"_s, u"Code"_s, code).isEmpty());
}

TBroken earningIsStored(const TPayrollItemSubject &subject, const char *column)
{
    const bool none = subject.isDeduction || subject.isEmpty(column);
    return none ? TBroken() : isStored(u"Fiscal"_s, subject.record._Code);
}

TBroken deductionIsStored(const TPayrollItemSubject &subject, const char *column)
{
    const bool none = !subject.isDeduction || subject.isEmpty(column);
    return none ? TBroken() : isStored(u"Deduction"_s, subject.record._Code);
}

using enum TRuleMessage;

constexpr TRule<TPayrollInfoSubject> rules[] = {
    {"15", Hint, u"شماره پرونده نمي تواند کوچکتر از 12 رقم باشد", u"", caseNumberIsLong},
    {"18", WrongForm, u"", u"", wellFormed},
    {"11", Required, u"حق بيمه بيکاري", u"", given},
    {"12", Required, u"کد شعبه", u"", given},
    {"13", Required, u"کد مرحله جاري", u"", given},
    {"14", Required, u"کد سازمان", u"", given},
    {"19", Required, u"شماره شعبه", u"", given},
};

constexpr TRule<TPayrollInfoSubject> rulesOfTaxOffice[] = {
    {"21", Required, u"نام پرداخت کننده", u"", given},
    {"22", Required, u"نام خانوادگي پرداخت کننده", u"", payerNameGiven},
    {"23", Required, u"نام صاحب امضا اول", u"", given},
    {"24", Required, u"نام خانوادگي صاحب امضا اول", u"", given},
    {"25", Required, u"شماره ملي صاحب امضا اول", u"", given},
    {"26", Required, u"سمت صاحب امضا اول", u"", given},
};

constexpr TRule<TPayrollItemSubject> rulesOfItems[] = {
    {"UserCode", Unknown, u"مزايا", u"", earningIsStored},
    {"UserCode", Unknown, u"کسورات", u"", deductionIsStored},
    {"UserCode", Required, u"کد", u"", given},
};

} // namespace

std::span<const TRule<TPayrollInfoSubject>> payrollInfoRules()
{
    return rules;
}

std::span<const TRule<TPayrollInfoSubject>> taxOfficeRules()
{
    return rulesOfTaxOffice;
}

std::span<const TRule<TPayrollItemSubject>> payrollItemRules()
{
    return rulesOfItems;
}
