#include "tax/TaxFields.h"

namespace {

using M = TTax_Mapper;
using B = TTmpTax_Mapper;
using enum TFieldInput::Kind;
constexpr auto never = TFieldChange::Never;

// Zero may be typed as a code: saving then says that it must not stay.
constexpr TField<M> fields[] = {
    {"Code", &M::_Code, {"Code_EDT", u"  &کد :", Integer, 0, 0, 1, 15, nullptr, 0, u"", 0, 999999}, never},
    {"Title", &M::_Title, {"Title_EDT", u"  &عنوان :", Text, 0, 0, 0, 100}},
    {"Comment", &M::_Comment, {"Comment_EDT", u"  &شرح :", Text, 0, 1, 0, 50}},
};

constexpr TField<B> brackets[] = {
    {"TaxMainCode", &B::_TaxMainCode, {}, never},
    {"FromSalary", &B::_FromSalary, {"FromSalary_EDT", u"  &از حقوق :", Money, 0, 0, 0, 15}},
    {"ToSalary", &B::_ToSalary, {"ToSalary_EDT", u"  &تا حقوق :", Money, 0, 1, 0, 15}},
    {"Percent", &B::_Percent, {"Percent_EDT", u"  نر&خ مالیات :", Number, 0, 2, 0, 15, nullptr, 0, u"%"}},
    {"Comment", &B::_Comment, {"Comment_EDT", u"  &شرح :", Text, 0, 3, 0, 50}},
};

} // namespace

std::span<const TField<TTax_Mapper>> taxFields()
{
    return fields;
}

std::span<const TField<TTmpTax_Mapper>> bracketFields()
{
    return brackets;
}
