#include "payrollinfo/PayrollInfoFields.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using M = TPayrollInfo_Mapper;
using enum TFieldInput::Kind;

const QStringList &employerTitles()
{
    static const QStringList titles = {u"حقیقی"_s, u"حقوقی"_s};
    return titles;
}

const QStringList &legalTitles()
{
    static const QStringList titles = {
        u"وزارت خانه"_s,
        u"موسسه دولتی"_s,
        u"شرکت دولتی"_s,
        u"سایر دستگاههای دولتی"_s,
        u"نهادهای عمومی غیر دولتی"_s,
        u"بخش خصوصی"_s,
        u"سایر پرداخت کنندگان حقوق"_s,
    };
    return titles;
}

constexpr TField<M> fields[] = {
    {"6", &M::_FactoryID, {"FactoryID_EDT", u"  شما&ره کارگاه :", PlainCode, piGeneral, 2, 1, 50}},
    {"7", &M::_FactoryName, {"FactoryName_EDT", u"  نام &کارگاه :", Text, piGeneral, 3, 0, 50}},
    {"8", &M::_EmployerName, {"EmployerName_EDT", u"  ن&ام کارفرما :", Text, piGeneral, 1, 0, 50}},
    {"9", &M::_FactoryAdrr, {"FactoryAdrr_EDT", u"  نشانی کار&گاه :", Text, piGeneral, 3, 1, 200}},
    {"10", &M::_Ejtemae, {"Ejtemae_EDT", u"  نام شعبه &تامین اجتماعی :", Text, piGeneral, 2, 0, 50}},
    {"11",
     &M::_LeisureIns,
     {"LeisureIns_EDT", u"  &حق بیمه بیکاری :", Number, piGeneral, 4, 0, 15, nullptr, 0, u"%"}},
    {"12", &M::_BranchCode, {"BranchCode_EDT", u"  کد شع&به :", PlainCode, piBank, 0, 1, 50}},
    {"13", &M::_StageCode, {"StageCode_EDT", u"  کد مر&حله جاری :", Number, piBank, 1, 1, 15}},
    {"14", &M::_OrganCode, {"OrganCode_EDT", u"  کد &سازمان :", PlainCode, piBank, 2, 0, 50}},
    {"15", &M::_CaseNo, {"CaseNo_EDT", u"  &شماره پرونده :", PlainCode, piGeneral, 0, 0, 20}},
    {"16",
     &M::_EmployeeTitle,
     {"EmployeeTitle_CMB", u"  &عنوان کارفرما :", Choice, piGeneral, 0, 1, 0, employerTitles}},
    {"17",
     &M::_LegalTitle,
     {"LegalTitle_CMB", u"  عن&وان شخص حقوقی :", Choice, piGeneral, 1, 1, 0, legalTitles}},
    {"18", &M::_NationalNo, {"NationalNo_EDT", u"  ش&ماره ملی کارفرما :", NationalCode, piGeneral, 4, 1, 10}},
    {"19", &M::_BranchNo, {"BranchNo_EDT", u"  شماره شعب&ه :", LatinCode, piBank, 1, 0, 50}},
    {"20", &M::_BranchName, {"BranchName_EDT", u"  نام شعبه :", Text, piBank, 0, 0, 50}},
    {"21", &M::_PayerName, {"PayerName_EDT", u"  &نام پرداخت کننده :", Text, piPayer, 0, 0, 50}},
    {"22", &M::_PayerFamily, {"PayerFamily_EDT", u"  نام &خانوادگی پرداخت کننده :", Text, piPayer, 0, 1, 50}},
    {"23",
     &M::_SignaturNameFirst,
     {"SignaturNameFirst_EDT", u"  نام صاحب امضا اول :", Text, piSignatories, 0, 0, 50}},
    {"24",
     &M::_SignaturFamilyFirst,
     {"SignaturFamilyFirst_EDT", u"  نام خانوادگی صاحب امضا اول :", Text, piSignatories, 0, 1, 50}},
    {"25",
     &M::_SignaturIdNationalFirst,
     {"SignaturIdNationalFirst_EDT", u"  شماره ملی صاحب امضا اول :", NationalCode, piSignatories, 1, 0, 10}},
    {"26",
     &M::_SignaturPositionFirst,
     {"SignaturPositionFirst_EDT", u"  سمت صاحب امضا اول :", Text, piSignatories, 1, 1, 50}},
    {"27",
     &M::_SignaturNameSecond,
     {"SignaturNameSecond_EDT", u"  نام صاحب امضا دوم :", Text, piSignatories, 2, 0, 50}},
    {"28",
     &M::_SignaturFamilySecond,
     {"SignaturFamilySecond_EDT", u"  نام خانوادگی صاحب امضا دوم :", Text, piSignatories, 2, 1, 50}},
    {"29",
     &M::_SignaturIdNationalSecond,
     {"SignaturIdNationalSecond_EDT", u"  شماره ملی صاحب امضا دوم :", NationalCode, piSignatories, 3, 0, 10}},
    {"30",
     &M::_SignaturPositionSecond,
     {"SignaturPositionSecond_EDT", u"  سمت صاحب امضا دوم :", Text, piSignatories, 3, 1, 50}},
};
static_assert(std::size(fields) == 25);

constexpr TField<TPayrollInfoDetail_Mapper> linkFields[] = {
    {"UserCode",
     &TPayrollInfoDetail_Mapper::_Code,
     {"FiscalDeducationCode_EDT", u"  &کد :", PickedCode, 0, 1, 0, 6}},
};

} // namespace

std::span<const TField<TPayrollInfo_Mapper>> payrollInfoFields()
{
    return fields;
}

std::span<const TField<TPayrollInfoDetail_Mapper>> payrollItemFields()
{
    return linkFields;
}
