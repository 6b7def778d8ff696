#include "calcmethod/CalcMethodFields.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using M = TCalcMethod_Mapper;
using enum TFieldInput::Kind;

constexpr double mostHours = 1000;

const QStringList &overtimeBases()
{
    static const QStringList items = {u"روزانه"_s, u"ماهانه"_s};
    return items;
}

constexpr TField<M> fields[] = {
    {"Code", &M::_Code, {"Code_EDT", u"  &کد :", Integer, cmGeneral, 0, 0, 15, nullptr, 0, u"", 1, 999999}},
    {"Title", &M::_Title, {"Title_EDT", u"  &عنوان :", Text, cmGeneral, 0, 1, 50}},
    {"StaffIns",
     &M::_StaffIns,
     {"StaffIns_EDT", u"  حق بیمه کارم&ند :", Number, cmInsurance, 1, 0, 15, nullptr, 0, u"%"}},
    {"EmployerIns",
     &M::_EmployerIns,
     {"EmployerIns_EDT", u"  حق بیمه کار&فرما :", Number, cmInsurance, 1, 1, 15, nullptr, 0, u"%"}},
    {"OverTime",
     &M::_OverTime,
     {"OverTime_EDT", u"  سقف اضافه کاری :", Integer, cmAttendance, 2, 1, 15, nullptr, 0, u"ساعت ", 0,
      mostHours}},
    {"TaxMainCode",
     &M::_TaxMainCode,
     {"CalcMethodCode_EDT", u"  کد جدول مالیاتی :", PickedCode, cmGeneral, 1, 1, 6}},
    {"DailyIns", &M::_DailyIns, {"DailyIns_EDT", u"  سقف بیمه روزانه& :", Money, cmInsurance, 2, 0, 15}},
    {"DecTax", &M::_DecTax, {"DecTax_CHK", u"کسر 2.7 مالي&ات", Tick, cmGeneral, 4, 0}},
    {"Maskok",
     &M::_Maskok,
     {"Maskok_SPNEDT", u"  &مانده مسکوک :", Spin, cmGeneral, 2, 0, 0, nullptr, 0, u"", 0, 6}},
    {"LeaveCeil",
     &M::_LeaveCeil,
     {"LeaveCeil_EDT", u"  سقف مرخصی :", Number, cmAttendance, 2, 0, 15, nullptr, 0, u"روز در ماه"}},
    {"OutPut",
     &M::_OutPut,
     {"OutPut_EDT", u"  حداقل کارکرد روزانه :", Number, cmAttendance, 1, 1, 15, nullptr, 0, u"ساعت", 0,
      mostHours}},
    {"Comment", &M::_Comment, {"Comment_EDT", u"  ش&رح :", Text, cmGeneral, 2, 1, 50}},
    {"Insurance", &M::_Insurance, {"Insurance_CHK", u"   مشمو&ل بیمه  ", Tick, cmInsurance, 0, 0}},
    {"Tax", &M::_Tax, {"Tax_CHK", u"م&شمول  مالیات", Tick, cmGeneral, 1, 0}},
    {"BedBes", &M::_BedBes, {"BedBes_CHK", u"محاسبه بدهکاري / &بستانکاري", Tick, cmGeneral, 3, 0}},
    {"Loan", &M::_Loan, {"Loan_CHK", u"محاسبه ا&قساط", Tick, cmGeneral, 3, 1}},
    {"OverDis",
     &M::_OverDis,
     {"OverDis_CMB", u"  مبنای اضافه کار / کسر کار :", Choice, cmAttendance, 1, 0, 0, overtimeBases}},
    {"Entrance", &M::_Entrance, {"Entrance_EDT", u"  ساعت ورود :", Time, cmAttendance, 0, 0}},
    {"Exit", &M::_Exit, {"Exit_EDT", u"  ساعت خروج :", Time, cmAttendance, 0, 1}},
};

} // namespace

std::span<const TField<TCalcMethod_Mapper>> calcMethodFields()
{
    return fields;
}
