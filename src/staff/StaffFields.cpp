#include "staff/StaffFields.h"

#include "staff/StaffLists.h"

namespace {

using M = TStaff_Mapper;
using enum TFieldInput::Kind;
using namespace StaffLists;

constexpr TField<M> fields[] = {
    {"Code", &M::_Code, {"Code_EDT", u"  &کد :", Integer, spGeneral, 0, 0, 15}},
    {"CoDate", &M::_CoDate, {"CoDate_EDT", u"  تاری&خ استخدام :", Date, spPersonnel, 0, 0}},
    {"LeaveDate", &M::_LeaveDate, {"LeaveDate_EDT", u"  تاریخ &ترک کار :", Date, spPersonnel, 0, 1}},
    {"StaffGroup", &M::_StaffGroup, {"StaffGroup_CMB", u"  &گروه کارمند :", CodedChoice, spGeneral, 0, 1}},
    {"PersonnelCode",
     &M::_PersonnelCode,
     {"PersonnelCode_EDT", u"  کد پرس&نلی :", PlainCode, spPersonnel, 3, 0, 15}},
    {"Department", &M::_Department, {"Department_EDT", u"  م&حل خدمت :", Text, spPersonnel, 4, 1, 50}},
    {"CardNumber", &M::_CardNumber, {"CardNumber_EDT", u"  شماره ک&ارت :", PlainCode, spPersonnel, 3, 1, 20}},
    {"InsuranceNumber",
     &M::_InsuranceNumber,
     {"InsuranceNumber_EDT", u"  کد &بیمه :", PlainCode, spPersonnel, 6, 1, 10}},
    {"NationalID", &M::_NationalID, {"NationalCode_EDT", u"  کد م&لی :", NationalCode, spGeneral, 2, 0, 10}},
    {"IDNumber", &M::_IDNumber, {"IDNumber_EDT", u"  شماره شناسنا&مه :", IdNumber, spGeneral, 2, 1, 10}},
    {"FatherName", &M::_FatherName, {"FatherName_EDT", u"  نام پد&ر :", Text, spGeneral, 3, 1, 50}},
    {"BirthPlace", &M::_BirthPlace, {"BirthPlace_EDT", u"  محل &تولد :", Text, spGeneral, 4, 0, 50}},
    {"IssuePlace", &M::_IssuePlace, {"IssuePlace_EDT", u"  محل &صدور :", Text, spGeneral, 5, 0, 50}},
    {"IssueDate", &M::_IssueDate, {"IssueDate_EDT", u"  تاریخ ص&دور :", Date, spGeneral, 5, 1}},
    {"BirthDate", &M::_BirthDate, {"BirthDate_EDT", u"  تاریخ ت&ولد :", Date, spGeneral, 4, 1}},
    {"Major", &M::_Major, {"Major_EDT", u"  رشته تح&صیلی :", Text, spFurther, 3, 1, 50}},
    {"BankTitle", &M::_BankTitle, {"BankTitle_EDT", u"  &عنوان بانک :", Text, spPersonnel, 5, 0, 50}},
    {"Job", &M::_Job, {"Job_EDT", u"  ش&غل :", Text, spPersonnel, 4, 0, 50}},
    {"AccountNumber",
     &M::_AccountNumber,
     {"AccountNumber_EDT", u"  شماره ح&ساب :", PlainCode, spPersonnel, 5, 1, 30}},
    {"Comment", &M::_Comment, {"Comment_EDT", u"  &شرح :", Text, spPersonnel, 7, 0, 50}},
    {"Sex", &M::_Sex, {"Sex_CMB", u"  &جنسیت :", Choice, spGeneral, 3, 0, 0, sexes}},
    {"Military",
     &M::_Military,
     {"Military_CMB", u"  وضعیت ن&ظام وظیفه :", Choice, spFurther, 2, 1, 0, militaryStates}},
    {"IsMarried",
     &M::_IsMarried,
     {"IsMarried_CMB", u"  و&ضعیت تاهل :", Choice, spGeneral, 6, 0, 0, maritalStates}},
    {"Degree", &M::_Degree, {"Degree_CMB", u"  م&درک تحصیلی :", Choice, spFurther, 1, 1, 0, degrees}},
    {"Name", &M::_Name, {"Name_EDT", u"  &نام :", Text, spGeneral, 1, 0, 50}},
    {"LastName", &M::_LastName, {"LastName_EDT", u"  نام خانواد&گی :", Text, spGeneral, 1, 1, 50}},
    {"Tel1", &M::_Tel1, {"Tel1_EDT", u"  ت&لفن1 :", Telephone, spFurther, 0, 0, 15}},
    {"Tel2", &M::_Tel2, {"Tel2_EDT", u"  &تلفن2 :", Telephone, spFurther, 1, 0, 15}},
    {"Fax", &M::_Fax, {"Fax_EDT", u"  فاکس& :", PlainCode, spFurther, 2, 0, 50}},
    {"Mob", &M::_Mob, {"Mobile_EDT", u"  موبایل& :", PlainCode, spFurther, 3, 0, 50}},
    {"Add1", &M::_Add1, {"Addr1_EDT", u"  آدر&س1 :", Text, spFurther, 4, 0, 300}},
    {"Add2", &M::_Add2, {"Addr2_EDT", u"  آد&رس2 :", Text, spFurther, 5, 0, 300}},
    {"Email", &M::_Email, {"Email_EDT", u"  پست الکترونی&کی :", Email, spFurther, 4, 1, 50}},
    {"PostCode", &M::_PostCode, {"PostCode_EDT", u"  کد پستی :", PostCode, spFurther, 0, 1, 10}},
    {"Employment",
     &M::_Employment,
     {"EmploymentTitle_CMB", u"  استخدام :", WideChoice, spPersonnel, 1, 0, 0, employments}},
    {"Category", &M::_Category, {"Category_CMB", u"  رسته :", WideChoice, spPersonnel, 1, 1, 0, categories}},
    {"FiscalExemption",
     &M::_FiscalExemption,
     {"FiscalExemption_CMB", u"  معافیت مالی :", WideChoice, spPersonnel, 2, 0, 0, fiscalExemptions}},
    {"National",
     &M::_National,
     {"National_CMB", u"  ملیت :", WideChoice, spPersonnel, 2, 1, 0, nationalities}},
    {"Insurance", &M::_Insurance, {"Insurance_CMB", u"  بیمه :", WideChoice, spPersonnel, 6, 0, 0, insurers}},
    {"JobCode", &M::_JobCode, {"JobCode_EDT", u"  کد شغ&ل :", PlainCode, spPersonnel, 7, 1, 6}},
    {"JobGroup", &M::_JobGroup, {"JobGroup_EDT", u"  &گروه شغل :", Text, spPersonnel, 8, 1, 50}},
};

} // namespace

std::span<const TField<TStaff_Mapper>> staffFields()
{
    return fields;
}
