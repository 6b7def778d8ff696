#include "calcmethod/CalcMethodRules.h"

#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"

using namespace Qt::Literals::StringLiterals;
using namespace Rules;

namespace {

TBroken codeIsFree(const TCalcMethodSubject &subject, const char *)
{
    return brokenUnless(!subject.data.CalcMedtho_GetCode(subject.record._Code) ||
                        subject.record._Code == subject.own);
}

TBroken givenForTax(const TCalcMethodSubject &subject, const char *column)
{
    return subject.record._Tax ? given(subject, column) : TBroken();
}

TBroken givenForInsurance(const TCalcMethodSubject &subject, const char *column)
{
    return subject.record._Insurance ? given(subject, column) : TBroken();
}

/// One column of the tax table's row; null without a row.
QString taxTable(const TCalcMethodSubject &subject, const QString &column)
{
    return ScalerQuery(u"TaxMain"_s, column, u"Code"_s, subject.record._TaxMainCode);
}

TBroken taxTableIsNamed(const TCalcMethodSubject &subject, const char *column)
{
    return brokenUnless(subject.isEmpty(column) || !taxTable(subject, u"Title"_s).isNull() ||
                        taxTable(subject, u"Code"_s).isEmpty());
}

TBroken taxTableIsStored(const TCalcMethodSubject &subject, const char *column)
{
    return brokenUnless(subject.isEmpty(column) || !taxTable(subject, u"Title"_s).isEmpty());
}

using enum TRuleMessage;

constexpr TRule<TCalcMethodSubject> rules[] = {
    {"Code", Repeated, u"کد", u"", codeIsFree},
    {"Title", Required, u"عنوان", u"", given},
    {"TaxMainCode", Required, u"کد جدول مالياتي", u"", givenForTax},
    {"TaxMainCode", Unknown, u"جدول مالياتي", u"", taxTableIsNamed},
    {"TaxMainCode", Hint, u"جدول مالیاتی با این کد ثبت نشده است", u"", taxTableIsStored},
    {"StaffIns", Required, u"حق بيمه کارمند", u"", givenForInsurance},
    {"EmployerIns", Required, u"حق بيمه کارفرما", u"", givenForInsurance},
    {"OverTime", Required, u"سقف اضافه کاري", u"", given},
    {"LeaveCeil", Required, u"سقف مرخصي", u"", given},
    {"OutPut", Required, u"حداقل کارکرد روزانه", u"", given},
    {"Entrance", WrongForm, u"", u"", wellFormed},
    {"Exit", WrongForm, u"", u"", wellFormed},
};

} // namespace

std::span<const TRule<TCalcMethodSubject>> calcMethodRules()
{
    return rules;
}
