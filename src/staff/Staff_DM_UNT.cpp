#include "staff/Staff_DM_UNT.h"

#include "host/Declaration_PKG/Confirmation_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "staff/StaffFields.h"

using namespace Qt::Literals::StringLiterals;

using namespace QueryTools;

TStaff_DM *Staff_DM = nullptr;

namespace {

const char staffOfParameter[] = "select * from staff where code=:Code";
const char groupOfParameter[] = "select * from StaffGroup\nwhere Code=:Code";

constexpr int personsKind = 2; // what the unique detail code is drawn for

} // namespace

TStaff_DM::TStaff_DM(QObject *owner)
    : TStaffFamily_DM(owner), StaffGet_QUR(NewQuery("StaffGet_QUR")), List_QUR(NewQuery("List_QUR")),
      List_DS(List_QUR), GroupList_QUR(NewQuery("GroupList_QUR")), GroupList_DS(GroupList_QUR),
      GroupGet_QUR(NewQuery("GroupGet_QUR")), Perinf_QUR(NewQuery("Perinf_QUR"))
{
    StaffGet_QUR->setStatement(staffOfParameter);
    List_QUR->setKeyField("Code");
    List_QUR->setStatement("select * from staff_VW");
    GroupList_QUR->setStatement("select * from StaffGroup");
    GroupGet_QUR->setStatement(groupOfParameter);
    // Every editor that opens asks for the first person: read by page, not whole.
    Perinf_QUR->setKeyField("code");
    Perinf_QUR->setStatement("select * from Perinf");
}

void TStaff_DM::FillDataStaff(int code)
{
    open(StaffGet_QUR, staffOfParameter, "code", code);
}

void TStaff_DM::FillDataStaffGroup(int code)
{
    open(GroupGet_QUR, groupOfParameter, "code", code);
}

void TStaff_DM::Staff_Get()
{
    open(List_QUR, "select * from staff_VW");
}

void TStaff_DM::StaffGroup_Get()
{
    open(GroupList_QUR, "select * from StaffGroup");
}

TNamedCodes TStaff_DM::StaffGroup_Fill()
{
    open(Temp_QUR, "select distinct Name,code from Staffgroup  order by code");
    return namedCodes(Temp_QUR);
}

void TStaff_DM::Staff_GetById(const QVariant &code, TStaff_Mapper &staff)
{
    open(StaffGet_QUR, TStatement("select * from staff where Code = ").integer(code));
    Fields::read<TStaff_Mapper>(*StaffGet_QUR, staffFields(), staff);
    Fields::read<TStaff_Mapper>(*StaffGet_QUR, staffCreation, staff);
    Fields::read<TStaff_Mapper>(*StaffGet_QUR, staffChange, staff);
}

TStatement TStaff_DM::NameStatement(const QString &name, const QString &lastName, int code)
{
    return TStatement("select Code from staff where Name=")
        .text(name)
        .sql(" and LastName=")
        .text(lastName)
        .sql(" and Code<>")
        .integer(code);
}

void TStaff_DM::Staff_GetCode(const QString &name, const QString &lastName, int code)
{
    open(Temp_QUR, NameStatement(name, lastName, code));
}

void TStaff_DM::find(const char *statement, const QString &value)
{
    open(Temp_QUR, TStatement(statement).text(value));
}

void TStaff_DM::Staff_GetCardNumber(const QString &cardNumber)
{
    find("select CardNumber from Staff where CardNumber=", cardNumber);
}

void TStaff_DM::Staff_GetInsuranceNumbber(const QString &insuranceNumber)
{
    find("select InsuranceNumber from Staff where InsuranceNumber=", insuranceNumber);
}

void TStaff_DM::Staff_GetNationallID(const QString &nationalId)
{
    find("select NationalID from Staff where NationalID=", nationalId);
}

std::optional<TTwin> TStaff_DM::Staff_Twin(const QList<TUniqueText> &texts, int own)
{
    return FindTwin(*DM.ADOConnection1, "Staff", texts, own, {"Name", "LastName"});
}

int TStaff_DM::Staff_GetNewCode()
{
    open(Temp_QUR,
         TStatement("Select Max(Code)+1 From (Select IsNull(Max(Code),0)As Code From Staff  Union All "
                    "Select IsNull(Max(CAST(Code AS BIGINT)),0)As Code From CodeLock_TBL Where Status=")
             .integer(int(cspStaff))
             .sql(")As T1"));
    return integerAt(Temp_QUR);
}

bool TStaff_DM::Staff_Insert(const TStaff_Mapper &staff)
{
    if (!StaffGet_QUR->active() && !Try([&] { FillDataStaff(0); }))
        return false;
    return Post(StaffGet_QUR, true, [&] {
        Fields::write<TStaff_Mapper>(*StaffGet_QUR, staffFields(), staff);
        Fields::write<TStaff_Mapper>(*StaffGet_QUR, staffCreation, staff);
    });
}

bool TStaff_DM::Staff_Update(const TStaff_Mapper &staff)
{
    return Post(StaffGet_QUR, false, [&] {
        Fields::write<TStaff_Mapper>(*StaffGet_QUR, staffFields(), staff);
        Fields::write<TStaff_Mapper>(*StaffGet_QUR, staffChange, staff);
    });
}

bool TStaff_DM::Staff_Del(const QString &codes)
{
    return Try([&] { run(Temp_QUR, TStatement("Delete Staff where Code in (").integers(codes).sql(")")); });
}

void TStaff_DM::Perinf_Get(TPerinf_Mapper &person)
{
    open(Perinf_QUR, "select * from Perinf");
    Fields::read<TPerinf_Mapper>(*Perinf_QUR, personFields, person);
}

int TStaff_DM::Perinf_GetNewCode(int group)
{
    open(
        Temp_QUR,
        TStatement(
            "Select Case When Isnull((Select Code From (Select IsNull(Max(Code),0)+1 As Code From PerInf "
            "Where GrpCode=")
            .integer(group)
            .sql(
                ")As T1 Where"
                " Code Not in(Select Code From PerInf) And Code Not In(Select Code From CodeLock_TBL Where Status=")
            .integer(int(cspPerson))
            .sql(")),0)"
                 " <>0 Then"
                 " (Select IsNull(Max(Code),0)+1 From PerInf Where GrpCode=")
            .integer(group)
            .sql(")"
                 " Else"
                 "(select Max(Code)+1 as NewCode From("
                 " select ISNull(Max(Code),0) as Code from PerINF"
                 " union all"
                 " select ISNull(Max(CAST(Code AS BIGINT)),0) as Code from CodeLock_TBl where Status = ")
            .integer(int(cspPerson))
            .sql(" ) as t1 )"
                 " End As NewCode"));
    return integerAt(Temp_QUR);
}

int TStaff_DM::groupForNewPerson(const TPerinf_Mapper &person)
{
    open(Temp_QUR, TStatement("select code from perinf where name=")
                       .text(person._Name)
                       .sql(" and LName=")
                       .text(person._LName));
    if (!Temp_QUR->isEmpty())
        return 0;
    if (ShowSmartMessage(ntEnterAsPerson, TMessageButtons::YesNo, TAnswer::Yes) != TAnswer::Yes)
        return 0;
    return Select_Entity(cspPerson, {}, false);
}

bool TStaff_DM::PerInf_Insert(const TPerinf_Mapper &person)
{
    int group = 0;
    int code = 0;
    const bool ready = Try([&] {
        group = groupForNewPerson(person);
        if (group == 0)
            return;
        if (!Perinf_QUR->active())
            open(Perinf_QUR, "select * from Perinf");
        code = Perinf_GetNewCode(group);
    });
    if (!ready || group == 0)
        return ready;
    return Post(Perinf_QUR, true, [&] {
        TQuery &row = *Perinf_QUR;
        row.setValue("GrpCode", group);
        row.setValue("SitbgPrd", u"0"_s);
        row.setValue("Code", code);
        row.setValue("UserName", QString::number(code));
        row.setValue("Name", person._Name);
        row.setValue("LName", person._LName);
        row.setValue("FullName", QString(person._Name + ' ' + person._LName));
        row.setValue("Tel1", person._Tel1);
        row.setValue("Tel2", person._Tel2);
        row.setValue("Addr1", person._Addr1);
        row.setValue("Addr2", person._Addr2);
        row.setValue("Fax", person._Fax);
        row.setValue("Email", person._Email);
        row.setValue("Mobile", person._Mobile);
        open(Temp_QUR, TStatement("SELECT dbo.GetUinqueCode_FNC(").integer(personsKind).sql(")"));
        row.setValue("DetailUniqueCode", integerAt(Temp_QUR));
    });
}

void TStaff_DM::CodeLock_DeleteAllRecovery(TSoftwarePart part, int comIndex)
{
    run(Temp_QUR, TStatement::format("Delete From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)",
                                     {int(part), comIndex}));
}
