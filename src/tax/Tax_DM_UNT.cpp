#include "tax/Tax_DM_UNT.h"

#include "common/QueryTools.h"
#include "common/WorkingRows.h"
#include "tax/TaxFields.h"

using namespace Qt::Literals::StringLiterals;

using namespace QueryTools;

TTax_DM *Tax_DM = nullptr;

namespace {
TWorkingRows brackets(TQuery *shown)
{
    return {shown, u"TmpTax"_s, u"TaxMainCode"_s, Fields::columns(bracketFields().subspan(1))};
}

const char detailList[] = "select * from Tmptax where TaxMainCode=:TaxMainCode order by fromSalary";
} // namespace

TTax_DM::TTax_DM(QObject *owner)
    : TDataModule(owner), List_QUR(NewQuery("List_QUR")), List_DS(List_QUR),
      DetailList_QUR(NewQuery("DetailList_QUR")), DetailList_DS(DetailList_QUR),
      TmpGet_QUR(NewQuery("TmpGet_QUR")), Get_QUR(NewQuery("Get_QUR")), Temp_QUR(NewQuery("Temp_QUR"))
{
    List_QUR->setKeyField("Code");
    List_QUR->setStatement("select * from taxMain");
    DetailList_QUR->setStatement(detailList);
}

void TTax_DM::Tax_Get()
{
    List_QUR->setStatement("select * from TaxMain ");
}

void TTax_DM::Tax_GetByID(const QVariant &code)
{
    open(Get_QUR, TStatement("select * from TaxMain where Code=").integer(code));
}

void TTax_DM::Tax_GetByID(const QVariant &code, TTax_Mapper &tax)
{
    Tax_GetByID(code);
    Fields::read(*Get_QUR, taxFields(), tax);
}

int TTax_DM::Tax_GetNewCode()
{
    open(Temp_QUR, "Select isnull(Max(Code),0)+1 From TaxMain");
    return integerAt(Temp_QUR);
}

bool TTax_DM::Tax_Insert(const TTax_Mapper &tax)
{
    if (!Get_QUR->active() && !Try([&] { Tax_GetByID(tax._Code); }))
        return false;
    return Post(Get_QUR, true, [&] { Fields::write(*Get_QUR, taxFields(), tax); });
}

bool TTax_DM::Tax_Update(const TTax_Mapper &tax)
{
    return Post(Get_QUR, false, [&] { Fields::write(*Get_QUR, taxFields(), tax, false); });
}

void TTax_DM::Tax_Del(const QString &codes)
{
    run(Temp_QUR, TStatement("Delete TaxMain where Code in (").integers(codes).sql(")"));
}

bool TTax_DM::Tax_DelWhole(int code)
{
    return Try([&] {
        InOneUnit(Temp_QUR->connection(), [&] {
            ClearDataDetail(code);
            Tax_Del(QString::number(code));
        });
    });
}

void TTax_DM::copyToWorkingRows(const QVariant &taxCode)
{
    run(Temp_QUR,
        TStatement("INSERT INTO TmpTax(TaxMainCode,FromSalary,Tosalary,Comment,[Percent])"
                   "   SELECT TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM Tax where TaxMainCode=")
            .integer(taxCode));
}

void TTax_DM::FillDataDetail(int taxCode)
{
    copyToWorkingRows(taxCode);
    open(DetailList_QUR, detailList, "TaxMainCode", taxCode);
}

void TTax_DM::TmpTax_GetByTaxMainCode(const QVariant &taxCode)
{
    copyToWorkingRows(taxCode);
    TmpTax_OpenList(taxCode);
}

void TTax_DM::TmpTax_OpenList(const QVariant &taxCode)
{
    open(
        DetailList_QUR,
        TStatement("select * from Tmptax where TaxMainCode = ").integer(taxCode).sql(" order by fromSalary"));
}

int TTax_DM::TmpTax_Count(const QVariant &taxCode)
{
    open(Temp_QUR, TStatement("select count(*) from TmpTax where TaxMainCode=").integer(taxCode));
    return integerAt(Temp_QUR);
}

void TTax_DM::TmpTax_MoveToCode(int fromCode, int toCode)
{
    InOneUnit(Temp_QUR->connection(), [&] {
        ClearDataTempDetail(toCode);
        run(Temp_QUR, TStatement("update TmpTax set TaxMainCode=")
                          .integer(toCode)
                          .sql(" where TaxMainCode=")
                          .integer(fromCode));
        TmpTax_OpenList(toCode);
    });
}

bool TTax_DM::TmpTax_Changed(const QVariant &taxCode)
{
    return brackets(DetailList_QUR).Changed(taxCode);
}

void TTax_DM::TmpTax_PutBack(const QVariant &taxCode)
{
    brackets(DetailList_QUR).PutBack(taxCode);
    TmpTax_OpenList(taxCode);
}

QStringList TTax_DM::TmpTax_GetRecoverysCode(TSoftwarePart part, int comIndex)
{
    open(Temp_QUR, TStatement::format("Select TaxMainCode From TmpTax Where TaxMainCode IN(Select Code From "
                                      "CodeLock_TBL Where (Status=%d) AND (Com_Index = %d))",
                                      {int(part), comIndex}));
    QStringList codes;
    for (int row = 0; row < Temp_QUR->recordCount(); ++row)
        codes.append(Temp_QUR->valueAt(row, 0).toString());
    return codes;
}

void TTax_DM::TmpTax_DeleteAllRecovery(TSoftwarePart part, int comIndex)
{
    InOneUnit(Temp_QUR->connection(), [&] {
        for (const char *rows : {"Delete From TmpTax Where TaxMainCode IN(Select Code From CodeLock_TBL "
                                 "Where (Status=%d) AND (Com_Index = %d))",
                                 "Delete From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)"})
            run(Temp_QUR, TStatement::format(QString::fromLatin1(rows), {int(part), comIndex}));
    });
}

void TTax_DM::TmpTax_GetById(const QVariant &id)
{
    open(TmpGet_QUR, TStatement("select * from TmpTax where ID=").integer(id));
}

void TTax_DM::TmpTax_GetById(const QVariant &id, TTmpTax_Mapper &bracket)
{
    TmpTax_GetById(id);
    Fields::read(*TmpGet_QUR, bracketFields(), bracket);
}

bool TTax_DM::TmpTax_Insert(const TTmpTax_Mapper &bracket)
{
    // The bracket screen adds rows without having loaded one.
    if (!TmpGet_QUR->active() && !Try([&] { TmpTax_GetById(0); }))
        return false;
    return Post(TmpGet_QUR, true, [&] { Fields::write(*TmpGet_QUR, bracketFields(), bracket); });
}

bool TTax_DM::TmpTax_Update(const TTmpTax_Mapper &bracket)
{
    return Post(TmpGet_QUR, false, [&] { Fields::write(*TmpGet_QUR, bracketFields(), bracket, false); });
}

void TTax_DM::TmpTax_GetID(int taxCode, int id, double from, double to)
{
    open(Temp_QUR, TStatement("select ID from Tmptax where TaxMainCode=")
                       .integer(taxCode)
                       .sql(" and ID<>")
                       .integer(id)
                       .sql(" and fromsalary<=")
                       .amount(to)
                       .sql(" and tosalary>=")
                       .amount(from));
}

void TTax_DM::TaxDetail_Del(const QString &ids)
{
    run(Temp_QUR, TStatement("Delete tmptax where ID in (").integers(ids).sql(")"));
}

bool TTax_DM::TaxDetail_Insert(const QVariant &taxCode)
{
    return Try([&] {
        // One unit: a replacement that stops half way would leave the table without any bracket.
        InOneUnit(Temp_QUR->connection(), [&] {
            ClearDataDetail(taxCode.toInt());
            run(Temp_QUR,
                TStatement(
                    "INSERT into Tax(TaxMainCode, FromSalary, Tosalary, Comment, [Percent])"
                    " SELECT TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM TmpTax where TaxMainCode=")
                    .integer(taxCode));
        });
    });
}

void TTax_DM::ClearDataDetail(int taxCode)
{
    run(Temp_QUR, TStatement("delete from Tax where TaxMainCode=").integer(taxCode));
}

void TTax_DM::ClearDataTempDetail(int taxCode)
{
    run(Temp_QUR, TStatement("delete from tmpTax where TaxMainCode=").integer(taxCode));
}
