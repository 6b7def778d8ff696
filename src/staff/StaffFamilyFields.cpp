#include "staff/StaffFamilyFields.h"

#include "staff/StaffLists.h"

namespace {

using M = TFamilly_Mapper;
using enum TFieldInput::Kind;

const QStringList &relations()
{
    static const QStringList items = {u"فرزند"_s, u"همسر"_s};
    return items;
}

constexpr TField<M> fields[] = {
    {"StaffCode", &M::_StaffCode},
    {"id", &M::_ID, {"Code_EDT", u"  &کد :", Text, 0, 0, 0, 15}},
    {"Name", &M::_Name, {"Name_EDT", u"  نام و نام خانواد&گی :", Text, 0, 1, 0, 100}},
    {"Sex", &M::_Sex, {"Sex_CMB", u"  جن&سیت :", Choice, 0, 2, 0, 0, StaffLists::sexes}},
    {"BirthDate", &M::_BirthDate, {"BirthDate_EDT", u"  تاریخ تو&لد :", Date, 0, 3, 0}},
    {"Death", &M::_Death, {"Death_CHK", u"  تاریخ &فوت :", Own}},
    {"DeathDate", &M::_DeathDate, {"DeathDate_EDT", u"  تاریخ &فوت :", Date, 0, 7, 0}},
    {"comment", &M::_Comment, {"Comment_EDT", u"  شرح& :", Text, 0, 4, 0, 50}},
    {"Type", &M::_Type, {"Type_CMB", u"  &نسبت :", Choice, 0, 5, 0, 0, relations, familyChild}},
    {"InsuranceNumber",
     &M::_InsuranceNumber,
     {"InsuranceNumber_EDT", u"  کد بیم&ه :", PlainCode, 0, 6, 0, 20}},
};

} // namespace

std::span<const TField<TFamilly_Mapper>> staffFamilyFields()
{
    return fields;
}
