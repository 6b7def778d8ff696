#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include "common/QueryTools.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"

using namespace Qt::Literals::StringLiterals;

using namespace QueryTools;

TPayrollInfo_DM *PayrollInfo_DM = nullptr;

namespace {

/// The fields in the order of reading, each with the piece of the batch that names its row.
struct TSetting {
    QString TPayrollInfo_Mapper::*field;
    const char *row;
};
const TSetting settings[] = {
    {&TPayrollInfo_Mapper::_FactoryID, " where code=6"},
    {&TPayrollInfo_Mapper::_FactoryName, " where code=7"},
    {&TPayrollInfo_Mapper::_EmployerName, " where code=8"},
    {&TPayrollInfo_Mapper::_FactoryAdrr, " where code=9"},
    {&TPayrollInfo_Mapper::_Ejtemae, " where code=10"},
    {&TPayrollInfo_Mapper::_LeisureIns, " where code=11"},
    {&TPayrollInfo_Mapper::_BranchCode, " where code=12"},
    {&TPayrollInfo_Mapper::_StageCode, " where code=13"},
    {&TPayrollInfo_Mapper::_OrganCode, " where code=14"},
    {&TPayrollInfo_Mapper::_CaseNo, " where code=15"},
    {&TPayrollInfo_Mapper::_EmployeeTitle, " where code=16"},
    {&TPayrollInfo_Mapper::_LegalTitle, " where code=17"},
    {&TPayrollInfo_Mapper::_NationalNo, " where code=18"},
    {&TPayrollInfo_Mapper::_BranchNo, " where code=19"},
    {&TPayrollInfo_Mapper::_BranchName, " where code=20"},
    {&TPayrollInfo_Mapper::_PayerName, " where code=21"},
    {&TPayrollInfo_Mapper::_PayerFamily, " where code=22"},
    {&TPayrollInfo_Mapper::_SignaturNameFirst, " where code=23"},
    {&TPayrollInfo_Mapper::_SignaturFamilyFirst, " where code=24"},
    {&TPayrollInfo_Mapper::_SignaturIdNationalFirst, " where code=25"},
    {&TPayrollInfo_Mapper::_SignaturPositionFirst, " where code=26"},
    {&TPayrollInfo_Mapper::_SignaturNameSecond, " where code=27"},
    {&TPayrollInfo_Mapper::_SignaturFamilySecond, " where code=28"},
    {&TPayrollInfo_Mapper::_SignaturIdNationalSecond, " where code=29"},
    {&TPayrollInfo_Mapper::_SignaturPositionSecond, " where code=30"},
};
static_assert(std::size(settings) == 25);

} // namespace

TPayrollInfo_DM::TPayrollInfo_DM(QObject *owner)
    : TDataModule(owner), PayrollDetailList_QUR(NewQuery("PayrollDetailList_QUR")),
      PayrollDetailList_DS(PayrollDetailList_QUR), PayrollDetailGet_QUR(NewQuery("PayrollDetailGet_QUR")),
      Temp_QUR(NewQuery("Temp_QUR"))
{
    PayrollDetailList_QUR->setKeyField("ID");
    PayrollDetailList_QUR->setStatement("select *,\n"
                                        "case Type\n"
                                        "when 0 then (select Title from Fiscal where Code=p.Usercode)\n"
                                        "when 1 then (select Title from Deduction where Code=p.Usercode)\n"
                                        "end as UserTitle\n"
                                        "from PayrollInfoDetail as p");
}

void TPayrollInfo_DM::PayrollInfo_Get(TPayrollInfo_Mapper &info)
{
    info = {};
    open(Temp_QUR, "select value from payrollinfo order by code");
    const int rows = qMin(Temp_QUR->recordCount(), int(std::size(settings)));
    for (int row = 0; row < rows; ++row)
        info.*settings[row].field = Temp_QUR->valueAt(row, 0).toString();
}

void TPayrollInfo_DM::PayrollInfo_Insert(const TPayrollInfo_Mapper &info)
{
    TStatement batch;
    for (const TSetting &setting : settings) {
        batch.sql(batch.isEmpty() ? "update PayrollInfo set Value=" : " update PayrollInfo set Value=");
        batch.text(AsStored(u"PayrollInfo"_s, u"Value"_s, info.*setting.field)).sql(setting.row);
    }
    run(Temp_QUR, batch);
}

void TPayrollInfo_DM::PayRollInfoDetill_Get()
{
    PayrollDetailList_QUR->setStatement("select *,  case Type"
                                        "  when 0 then (select Title from Fiscal where Code=p.Usercode)"
                                        "  when 1 then (select Title from Deduction where Code=p.Usercode)"
                                        "  end as UserTitle  from PayrollInfoDetail as p ");
}

void TPayrollInfo_DM::PayRollInfoDetill_GetByID(const QVariant &id)
{
    open(PayrollDetailGet_QUR, TStatement("select * from PayrollInfoDetail where Id=").integer(id));
}

bool TPayrollInfo_DM::PayrollInfoDetails_Insert(const TPayrollInfoDetail_Mapper &detail)
{
    return Post(PayrollDetailGet_QUR, false,
                [&] { PayrollDetailGet_QUR->setValue("UserCode", detail._Code); });
}
