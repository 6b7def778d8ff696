#include "entity/Entity_DM_UNT.h"

#include "entity/EntityFields.h"
#include "host/Declaration_PKG/DM_UNT.h"

using namespace QueryTools;

namespace {

TStatement itemStatement(const QVariant &code, TSoftwarePart part)
{
    return TStatement(part == cspDeduction ? "select * from Deduction_VW where code="
                                           : "select * from Fiscal_VW where code=")
        .integer(code);
}

TStatement orderRowStatement(const QVariant &itemCode, const QVariant &recruitmentCode, bool isDeduction)
{
    return TStatement(isDeduction ? "select ID from tmpRecDeduction where ItemCode="
                                  : "select ID from tmpRecFiscal where ItemCode=")
        .integer(itemCode)
        .sql(isDeduction ? " and Recruitmentcode=" : " and RecruitmentCode=")
        .integer(recruitmentCode);
}

TStatement outputRowStatement(const QVariant &itemCode, const QVariant &outputCode)
{
    return TStatement("select ID from tmpstaffOutPutDetail where ItemCode=")
        .integer(itemCode)
        .sql(" and OutputCode=")
        .integer(outputCode);
}

TStatement repeatStatement(const QString &recruitmentCode, const QString &itemCode)
{
    return TStatement(" SELECT  case    when cd.Insurance = 1 and (")
        .integer(itemCode)
        .sql(" = (select UserCode from PayrollInfoDetail where id = 16) ) then 1 else 0 end as RepeatBime,")
        .sql(" case")
        .sql(" when cd.Tax = 1 and (")
        .integer(itemCode)
        .sql(" = (select UserCode from PayrollInfoDetail where id = 17) ) then 1 else 0 end as RepeatMaliat")
        .sql(" FROM            CalcMethod cd ")
        .sql(" WHERE        (cd.Code = (select CalcMethodCode from Recruitment where code = ")
        .integer(recruitmentCode)
        .sql("))");
}

} // namespace

TEntity_DM *Entity_DM = nullptr;

TEntity_DM::TEntity_DM(QObject *owner)
    : TDataModule(owner), List_QUR(NewQuery("List_QUR")), List_DS(List_QUR),
      GroupList_QUR(NewQuery("GroupList_QUR")), GroupList_DS(GroupList_QUR), Get_QUR(NewQuery("Get_QUR")),
      GetGrp_QUR(NewQuery("GetGrp_QUR")), Temp_QUR(NewQuery("Temp_QUR")),
      FiscalList_QUR(NewQuery("FiscalList_QUR")), FiscalList_DS(FiscalList_QUR),
      DeductionList_QUR(NewQuery("DeductionList_QUR")), DeductionList_DS(DeductionList_QUR),
      FiscalGrp_QUR(NewQuery("FiscalGrp_QUR")), FiscalGrp_DS(FiscalGrp_QUR),
      DeductionGrp_QUR(NewQuery("DeductionGrp_QUR")), DeductionGrp_DS(DeductionGrp_QUR)
{
    for (TQuery *list : {List_QUR, FiscalList_QUR, DeductionList_QUR})
        list->setKeyField("Code");
    FiscalList_QUR->setStatement("select * from Fiscal_vw");
    DeductionList_QUR->setStatement("select * from Deduction_vw");
    FiscalGrp_QUR->setStatement("select * from FiscalGrp");
    DeductionGrp_QUR->setStatement("select * from DeductionGrp");
}

void TEntity_DM::FiscalDeducationList_get(TEntityDataset kind)
{
    if (kind == edFiscal)
        List_QUR->setStatement("select * from Fiscal_VW");
    else if (kind == edDeduction)
        List_QUR->setStatement("select * from Deduction_VW");
}

void TEntity_DM::FiscalDeducationGroup_Get(TEntityDataset kind)
{
    GroupList_QUR->close();
    if (kind == edFiscalGrp)
        GroupList_QUR->setStatement("select * from FiscalGrp");
    else if (kind == edDeductionGrp)
        GroupList_QUR->setStatement("select * from DeductionGrp");
    GroupList_QUR->open();
}

void TEntity_DM::FillDataGrp(int code, TEntityDataset kind)
{
    GetGrp_QUR->close();
    if (kind == edFiscalGrp)
        GetGrp_QUR->setStatement(TStatement("select * from FiscalGrp where code=").integer(code));
    else if (kind == edDeductionGrp)
        GetGrp_QUR->setStatement(TStatement("select * from DeductionGrp where code=").integer(code));
    GetGrp_QUR->open();
}

TNamedCodes TEntity_DM::FiscalGroup_Fill()
{
    open(Temp_QUR, "select Code,Name from FiscalGrp order by code");
    return namedCodes(Temp_QUR);
}

TNamedCodes TEntity_DM::DeducationGroup_Fill()
{
    open(Temp_QUR, "select Code,Name from DeductionGrp order by code");
    return namedCodes(Temp_QUR);
}

int TEntity_DM::FiscalDeducation_GetNewCode()
{
    open(Temp_QUR,
         "select(select isnull(max(code),0)+1 from fiscal),(select isnull(max(code),0)+1 from deduction)");
    return qMax(integerAt(Temp_QUR, 0), integerAt(Temp_QUR, 1));
}

void TEntity_DM::checkCode(const QVariant &code)
{
    open(
        Temp_QUR,
        TStatement(
            "select code from (select code from deduction union all select code from fiscal)as a where a.code=")
            .integer(code));
}

void TEntity_DM::Fiscal_GetCode(const QVariant &code)
{
    checkCode(code);
}

void TEntity_DM::Deducation_GetCode(const QVariant &code)
{
    checkCode(code);
}

void TEntity_DM::FiscalGet_ByTitle(const QString &title)
{
    open(Temp_QUR, TStatement("select code from Fiscal where Title=").text(title));
}

void TEntity_DM::DeducationGet_ByTitle(const QString &title)
{
    open(Temp_QUR, TStatement("select code from Deduction where Title=").text(title));
}

std::optional<TTwin> TEntity_DM::Title_Twin(const QString &title, TSoftwarePart part, int own)
{
    return FindTwin(*DM.ADOConnection1, part == cspDeduction ? "Deduction" : "Fiscal", {{"Title", title}},
                    own, {"Title"});
}

void TEntity_DM::FiscalDeducation_GetByID(const QVariant &code, TSoftwarePart part,
                                          TFiscalDeducation_Mapper &item)
{
    open(Get_QUR, itemStatement(code, part));
    item = {};
    Fields::read(*Get_QUR, entityFields(part), item);
}

bool TEntity_DM::FiscalDeducation_Insert(const TFiscalDeducation_Mapper &item, TSoftwarePart part)
{
    return Post(Get_QUR, true, [&] { Fields::write(*Get_QUR, entityFields(part), item); });
}

bool TEntity_DM::FiscalDeducation_Update(const TFiscalDeducation_Mapper &item, TSoftwarePart part)
{
    return Post(Get_QUR, false, [&] { Fields::write(*Get_QUR, entityFields(part), item); });
}

bool TEntity_DM::FiscalDeducation_Delete(const QVariant &code, bool isDeduction)
{
    return Try([&] {
        run(Temp_QUR,
            TStatement(isDeduction ? "delete from Deduction where code=" : "delete from fiscal where code=")
                .integer(code));
    });
}

void TEntity_DM::TmpStaff_Count(const QVariant &code, bool isDeduction)
{
    open(Temp_QUR, TStatement(isDeduction ? "select(select count(*) from tmpstaffdeduction where ItemCode="
                                          : "select(select count(*) from tmpstaffFiscal where ItemCode=")
                       .integer(code)
                       .sql("),(select count(*) from tmpsalarybilldetail where itemcode=")
                       .integer(code)
                       .sql(")"));
}

void TEntity_DM::tmpRec_GetID(const QVariant &itemCode, const QVariant &recruitmentCode, bool isDeduction)
{
    open(Temp_QUR, orderRowStatement(itemCode, recruitmentCode, isDeduction));
}

void TEntity_DM::tmpRec_Insert(const QVariant &itemCode, const QVariant &recruitmentCode, bool isDeduction,
                               double cost)
{
    run(Temp_QUR,
        TStatement(isDeduction ? "insert into tmpRecDeduction(Recruitmentcode,ItemCode,Cost) values("
                               : "insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(")
            .integer(recruitmentCode)
            .sql(",")
            .integer(itemCode)
            .sql(",")
            .amount(cost)
            .sql(")"));
}

void TEntity_DM::tmpstaffOutPutDetail_Get(const QVariant &itemCode, const QVariant &outputCode)
{
    open(Temp_QUR, outputRowStatement(itemCode, outputCode));
}

void TEntity_DM::tmpstaffOutPutDetail_Insert(const QVariant &itemCode, const QVariant &outputCode, int type)
{
    run(Temp_QUR, TStatement("insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(")
                      .integer(outputCode)
                      .sql(",0,")
                      .integer(type)
                      .sql(",")
                      .integer(itemCode)
                      .sql(")"));
}

int TEntity_DM::RepeatInfo(const QString &recruitmentCode, const QString &itemCode)
{
    open(Temp_QUR, repeatStatement(recruitmentCode, itemCode));
    if (Temp_QUR->asInteger("RepeatBime") == 1)
        return 1;
    return Temp_QUR->asInteger("RepeatMaliat") == 1 ? 2 : 0;
}

QList<TStatement> TEntity_DM::StatementsOfPick(const QList<int> &codes, TSoftwarePart part,
                                               const QString &target, bool toOrder)
{
    QList<TStatement> all;
    for (const int code : codes) {
        all.append(itemStatement(code, part));
        if (toOrder) {
            all.append(orderRowStatement(code, target, part == cspDeduction));
            all.append(repeatStatement(target, QString::number(code)));
        } else {
            all.append(outputRowStatement(code, target));
        }
    }
    return all;
}
