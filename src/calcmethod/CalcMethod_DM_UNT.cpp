#include "calcmethod/CalcMethod_DM_UNT.h"

#include "calcmethod/CalcMethodFields.h"
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
    Fields::read(*Get_QUR, calcMethodFields(), method);
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

bool TCalcMethod_DM::CalcMethod_Insert(const TCalcMethod_Mapper &method)
{
    return Post(Get_QUR, true, [&] { Fields::write(*Get_QUR, calcMethodFields(), method); });
}

bool TCalcMethod_DM::CalcMethod_Update(const TCalcMethod_Mapper &method)
{
    return Post(Get_QUR, false, [&] { Fields::write(*Get_QUR, calcMethodFields(), method); });
}

bool TCalcMethod_DM::CalcMethod_Delete(int code)
{
    return Try([&] { run(Temp_QUR, TStatement("delete from CalcMethod where Code=").integer(code)); });
}
