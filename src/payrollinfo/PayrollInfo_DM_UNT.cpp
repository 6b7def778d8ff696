#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include "common/QueryTools.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "payrollinfo/PayrollInfoFields.h"

using namespace Qt::Literals::StringLiterals;

using namespace QueryTools;

TPayrollInfo_DM *PayrollInfo_DM = nullptr;

namespace {

QString &valueOf(TPayrollInfo_Mapper &info, const TField<TPayrollInfo_Mapper> &setting)
{
    return info.*std::get<QString TPayrollInfo_Mapper::*>(setting.member);
}

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
    const auto settings = payrollInfoFields();
    const int rows = qMin(Temp_QUR->recordCount(), int(settings.size()));
    for (int row = 0; row < rows; ++row)
        valueOf(info, settings[row]) = Temp_QUR->valueAt(row, 0).toString();
}

void TPayrollInfo_DM::PayrollInfo_Insert(const TPayrollInfo_Mapper &info)
{
    TPayrollInfo_Mapper kept = info;
    TStatement batch;
    for (const auto &setting : payrollInfoFields()) {
        batch.sql(batch.isEmpty() ? "update PayrollInfo set Value=" : " update PayrollInfo set Value=");
        batch.text(AsStored(u"PayrollInfo"_s, u"Value"_s, valueOf(kept, setting)));
        // " where code=6", then " where code=7" and so on up to " where code=30"
        batch.sql(u" where code=%1"_s.arg(QLatin1StringView(setting.column)));
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
                [&] { Fields::write(*PayrollDetailGet_QUR, payrollItemFields(), detail); });
}
