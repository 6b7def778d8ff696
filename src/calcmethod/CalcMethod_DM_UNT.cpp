#include "calcmethod/CalcMethod_DM_UNT.h"

#include "common/QueryTools.h"

using namespace QueryTools;

TCalcMethod_DM *CalcMethod_DM = nullptr;

TCalcMethod_DM::TCalcMethod_DM(QObject *owner)
    : TDataModule(owner), List_QUR(NewQuery("List_QUR")), List_DS(List_QUR), Temp_QUR(NewQuery("Temp_QUR")),
      Get_QUR(NewQuery("Get_QUR"))
{
    List_QUR->setKeyField("Code");
}

void TCalcMethod_DM::CalcMethod_Get()
{
    // DecTaxTitle reads the flag the other way round, as the users know it.
    List_QUR->setStatement(
        "select *,Case DecTax when 0 then 'دارد' when 1 then 'ندارد' end as DecTaxTitle from CalcMethod_VW ");
}

void TCalcMethod_DM::CalcMethod_GetById(const QVariant &code, TCalcMethod_Mapper &method)
{
    open(Get_QUR, TStatement("select * from CalcMethod where code=").integer(code));
    const TQuery &row = *Get_QUR;
    method._Code = row.asInteger("Code");
    method._Title = row.asString("Title");
    method._StaffIns = row.asFloat("StaffIns");
    method._EmployerIns = row.asFloat("EmployerIns");
    method._OverTime = row.asInteger("OverTime");
    method._TaxMainCode = row.asInteger("TaxMainCode");
    method._DailyIns = row.asFloat("DailyIns");
    method._DecTax = row.asBoolean("DecTax");
    method._Maskok = row.asInteger("Maskok");
    method._LeaveCeil = row.asFloat("LeaveCeil");
    method._OutPut = row.asFloat("OutPut");
    method._Comment = row.asString("Comment");
    method._Insurance = row.asBoolean("Insurance");
    method._Tax = row.asBoolean("Tax");
    method._BedBes = row.asBoolean("BedBes");
    method._Loan = row.asBoolean("Loan");
    method._OverDis = row.asBoolean("OverDis");
    method._Entrance = row.asString("Entrance");
    method._Exit = row.asString("Exit");
}

bool TCalcMethod_DM::CalcMedtho_GetCode(const QVariant &code)
{
    open(Temp_QUR, TStatement("select code from CalcMethod where code=").integer(code));
    return !Temp_QUR->isEmpty();
}

int TCalcMethod_DM::CalcMethod_GetNewCode()
{
    open(Temp_QUR, "select isnull(max(code),0)+1 from CalcMethod");
    return integerAt(Temp_QUR);
}

void TCalcMethod_DM::setMethod(const TCalcMethod_Mapper &method)
{
    TQuery &row = *Get_QUR;
    row.setValue("Code", method._Code);
    row.setValue("Title", method._Title);
    row.setValue("StaffIns", method._StaffIns);
    row.setValue("EmployerIns", method._EmployerIns);
    row.setValue("OverTime", method._OverTime);
    row.setValue("TaxMainCode", method._TaxMainCode);
    row.setValue("DailyIns", method._DailyIns);
    row.setValue("DecTax", method._DecTax);
    row.setValue("Maskok", method._Maskok);
    row.setValue("LeaveCeil", method._LeaveCeil);
    row.setValue("OutPut", method._OutPut);
    row.setValue("Comment", method._Comment);
    row.setValue("Insurance", method._Insurance);
    row.setValue("Tax", method._Tax);
    row.setValue("BedBes", method._BedBes);
    row.setValue("Loan", method._Loan);
    row.setValue("OverDis", method._OverDis);
    row.setValue("Entrance", method._Entrance);
    row.setValue("Exit", method._Exit);
}

bool TCalcMethod_DM::CalcMethod_Insert(const TCalcMethod_Mapper &method)
{
    return Post(Get_QUR, true, [&] { setMethod(method); });
}

bool TCalcMethod_DM::CalcMethod_Update(const TCalcMethod_Mapper &method)
{
    return Post(Get_QUR, false, [&] { setMethod(method); });
}

bool TCalcMethod_DM::CalcMethod_Delete(int code)
{
    return Try([&] { run(Temp_QUR, TStatement("delete from CalcMethod where Code=").integer(code)); });
}
