#include "staff/StaffFamily_DM_UNT.h"

#include "common/QueryTools.h"
#include "common/WorkingRows.h"
#include "staff/StaffFamilyFields.h"

using namespace Qt::Literals::StringLiterals;

using namespace QueryTools;

namespace {

TWorkingRows members(TQuery *shown)
{
    return {shown, u"tmpStaffFamily"_s, u"StaffCode"_s, Fields::columns(staffFamilyFields().subspan(1))};
}

const char familyOfParameter[] =
    "SELECT     a.*, SexTitle = CASE sex WHEN 0 THEN 'مرد' WHEN 1 THEN 'زن' END, "
    "TypeTitle = CASE type WHEN 1 THEN 'فرزند' WHEN 2 THEN 'همسر ' END,"
    "Deathtitle= case Death when 0 then 'خير' when 1 then 'بلي' end\n"
    "FROM         tmpStaffFamily AS a\n"
    "where StaffCode=:StaffCode";
const char familyOfCode[] = "SELECT a.*,  "
                            "SexTitle = CASE sex WHEN 0 THEN 'مرد' WHEN 1 THEN 'زن' END, "
                            "TypeTitle = CASE type WHEN 1 THEN 'فرزند' WHEN 2 THEN 'همسر ' END,"
                            "Deathtitle= case Death when 0 then 'خير' when 1 then 'بلي' end"
                            "  FROM tmpStaffFamily AS a   where StaffCode=";
const char memberOfParameter[] = "select * from tmpStaffFamily where ID=:ID";

} // namespace

TStaffFamily_DM::TStaffFamily_DM(QObject *owner)
    : TDataModule(owner), Family_QUR(NewQuery("Family_QUR")), Family_DS(Family_QUR),
      FamilyGet_QUR(NewQuery("FamilyGet_QUR")), Temp_QUR(NewQuery("Temp_QUR"))
{
    Family_QUR->setStatement(familyOfParameter);
    FamilyGet_QUR->setStatement(memberOfParameter);
}

void TStaffFamily_DM::copyToWorkingRows(const QVariant &staffCode)
{
    run(Temp_QUR, TStatement("INSERT INTO tmpstafffamily   SELECT * FROM stafffamily where staffcode=")
                      .integer(staffCode));
}

void TStaffFamily_DM::Family_GetByStaffCode(const QVariant &staffCode)
{
    copyToWorkingRows(staffCode);
    open(Family_QUR, TStatement(familyOfCode).integer(staffCode));
}

void TStaffFamily_DM::FillDataFamily(int staffCode)
{
    copyToWorkingRows(staffCode);
    FillDataFamilyList(staffCode);
}

void TStaffFamily_DM::FillDataFamilyList(int staffCode)
{
    open(Family_QUR, familyOfParameter, "StaffCode", staffCode);
}

void TStaffFamily_DM::FillDataFamilyGet(int id)
{
    open(FamilyGet_QUR, memberOfParameter, "ID", id);
}

void TStaffFamily_DM::Family_GetByID(const QVariant &id)
{
    open(FamilyGet_QUR, TStatement("select * from tmpStaffFamily where ID=").integer(id));
}

void TStaffFamily_DM::Family_GetByID(const QVariant &id, TFamilly_Mapper &member)
{
    Family_GetByID(id);
    Fields::read(*FamilyGet_QUR, staffFamilyFields(), member);
}

int TStaffFamily_DM::Family_GetNewCode()
{
    open(
        Temp_QUR,
        "select(select isnull(max(id),0)+1 from StaffFamily),(select isnull(max(id),0)+1 from TMPStaffFamily)");
    return qMax(integerAt(Temp_QUR, 0), integerAt(Temp_QUR, 1));
}

bool TStaffFamily_DM::TmpFamily_Insert(const TFamilly_Mapper &member)
{
    // The family member screen adds rows without having loaded one.
    if (!FamilyGet_QUR->active() && !Try([&] { FillDataFamilyGet(0); }))
        return false;
    return Post(FamilyGet_QUR, true, [&] { Fields::write(*FamilyGet_QUR, staffFamilyFields(), member); });
}

bool TStaffFamily_DM::TmpFamily_Update(const TFamilly_Mapper &member)
{
    return Post(FamilyGet_QUR, false, [&] { Fields::write(*FamilyGet_QUR, staffFamilyFields(), member); });
}

bool TStaffFamily_DM::Family_Del(const QString &ids)
{
    return Try(
        [&] { run(Temp_QUR, TStatement("Delete tmpstafffamily where ID in (").integers(ids).sql(")")); });
}

void TStaffFamily_DM::Family_Insert(const QVariant &staffCode)
{
    run(Temp_QUR, TStatement("INSERT INTO Stafffamily   SELECT * FROM tmpstafffamily where staffcode=")
                      .integer(staffCode));
}

void TStaffFamily_DM::ClearDataFamily(const QVariant &staffCode)
{
    run(Temp_QUR, TStatement("delete from stafffamily where StaffCode=").integer(staffCode));
}

void TStaffFamily_DM::ClearDataTMPFamily(const QVariant &staffCode)
{
    run(Temp_QUR, TStatement("delete from tmpstafffamily where StaffCode=").integer(staffCode));
}

void TStaffFamily_DM::StaffFamily_DelTmp(const QVariant &staffCode)
{
    run(Temp_QUR,
        TStatement::format("Delete From tmpstafffamily Where StaffCode = %s", {staffCode.toLongLong()}));
}

void TStaffFamily_DM::StaffFamily_UpdateTmp(const QVariant &oldCode, const QVariant &newCode)
{
    run(Temp_QUR, TStatement::format("Update tmpstafffamily Set StaffCode = %s Where (StaffCode = %s)",
                                     {newCode.toLongLong(), oldCode.toLongLong()}));
}

QStringList TStaffFamily_DM::StaffFamily_GetRecoverysCode(TSoftwarePart part, int comIndex)
{
    open(Temp_QUR,
         TStatement::format("Select StaffCode From tmpstafffamily Where StaffCode IN(Select Code From "
                            "CodeLock_TBL Where (Status=%d) AND (Com_Index = %d))",
                            {int(part), comIndex}));
    // The current row stays the first one: recovery is offered one code at a time.
    QStringList codes;
    for (int row = 0; row < Temp_QUR->recordCount(); ++row)
        codes.append(Temp_QUR->asString("StaffCode"));
    return codes;
}

bool TStaffFamily_DM::StaffFamily_IsRecordHasRecovery(const QVariant &staffCode, TSoftwarePart part,
                                                      int comIndex)
{
    open(Temp_QUR, TStatement::format(
                       "Select StaffCode From TmpStaffFamily  Where (StaffCode = %s) AND StaffCode IN(Select "
                       "Code From CodeLock_TBL  Where (Status=%d) AND (Com_Index = %d))",
                       {staffCode.toLongLong(), int(part), comIndex}));
    return !Temp_QUR->isEmpty();
}

void TStaffFamily_DM::StaffFamily_DeleteAllRecovery(TSoftwarePart part, int comIndex)
{
    run(Temp_QUR, TStatement::format("Delete From TmpStaffFamily Where StaffCode  IN(Select Code From "
                                     "CodeLock_TBL Where (Status=%d) AND (Com_Index = %d))",
                                     {int(part), comIndex}));
}

bool TStaffFamily_DM::TmpFamily_Changed(const QVariant &staffCode)
{
    return members(Family_QUR).Changed(staffCode);
}

void TStaffFamily_DM::TmpFamily_PutBack(const QVariant &staffCode)
{
    members(Family_QUR).PutBack(staffCode, [&](const QVariant &id) -> QVariant {
        // Another employee's new member may have got the number meanwhile.
        open(Temp_QUR, TStatement("select ID from tmpStaffFamily where ID=")
                           .integer(id)
                           .sql(" union all select ID from StaffFamily where ID=")
                           .integer(id)
                           .sql(" and StaffCode<>")
                           .integer(staffCode));
        return Temp_QUR->isEmpty() ? id : QVariant(Family_GetNewCode());
    });
    FillDataFamilyList(staffCode.toInt());
}

int TStaffFamily_DM::TmpFamily_Count(const QVariant &staffCode)
{
    open(Temp_QUR, TStatement("select count(*) from tmpStaffFamily where StaffCode=").integer(staffCode));
    return integerAt(Temp_QUR);
}

int TStaffFamily_DM::Family_Count(const QVariant &staffCode)
{
    open(Temp_QUR, TStatement("select count(*) from StaffFamily where StaffCode=").integer(staffCode));
    return integerAt(Temp_QUR);
}
