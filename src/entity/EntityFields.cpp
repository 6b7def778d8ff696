#include "entity/EntityFields.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using M = TFiscalDeducation_Mapper;
using enum TFieldInput::Kind;
using enum TFieldForm;
constexpr auto always = TFieldChange::Always;

const QStringList &earningBases()
{
    static const QStringList items = {u"مبلغ"_s, u"درصد"_s, u"ماهيانه"_s, u"ثابت"_s};
    return items;
}

const QStringList &deductionBases()
{
    static const QStringList items = {u"مبلغ"_s, u"درصد"_s, u"ثابت"_s};
    return items;
}

/// The fields of an earning.
constexpr TField<M> fields[] = {
    {"code",
     &M::_code,
     {"Code_EDT", u"  کد :", Integer, etAboveAccount, 0, 0, 15, nullptr, 0, u"", 1, 999999}},
    {"Grpcode", &M::_Grpcode, {"Group_CMB", u"  کد &گروه :", CodedChoice, etAboveAccount, 1, 0}},
    {"CalcType",
     &M::_CalcType,
     {"CalcType_CMB", u"  &مبنای محاسباتی :", Choice, etBelowAccount, 4, 0, 0, earningBases}},
    {"title", &M::_title, {"Title_EDT", u"  &عنوان :", Text, etAboveAccount, 2, 0, 50}},
    {"Kol", &M::_Kol, {"TotalCode_EDT", u"کد کل", Own, etAccount}, always, SmallNumber},
    {"Moin", &M::_Moin, {"AssistantCode_EDT", u"کد معین", Own, etAccount}, always, SmallNumber},
    {"Tafzili", &M::_Tafzili, {"DetailCode_EDT", u"کد تفصیلی", Own, etAccount}, always, LargeNumber},
    {"cost", &M::_cost, {"Cost_EDT", u"  مبل&غ :", Money, etBelowAccount, 4, 1, 15}, always, Decimal},
    {"Insurance", &M::_Insurance, {"Insurance_CHK", u"بیم&ه", PlainTick, etAboveAccount, 0, 1}},
    {"Tax", &M::_Tax, {"Tax_CHK", u"مالیا&ت", PlainTick, etAboveAccount, 0, 2}},
    {"comment", &M::_comment, {"Comment_EDT", u"  &شرح :", Text, etBelowAccount, 5, 0, 50}},
};

/// The same without what earnings alone have; the column of the detail account is narrower.
QList<TField<M>> ofDeductions()
{
    QList<TField<M>> made;
    for (TField<M> field : fields) {
        if (std::holds_alternative<bool M::*>(field.member))
            continue;
        if (field.form == LargeNumber)
            field.form = SmallNumber;
        if (field.input.choices)
            field.input.choices = deductionBases;
        made.append(field);
    }
    return made;
}

} // namespace

std::span<const TField<TFiscalDeducation_Mapper>> entityFields(TSoftwarePart part)
{
    static const QList<TField<M>> deductions = ofDeductions();
    if (part == cspDeduction)
        return deductions;
    return fields;
}
