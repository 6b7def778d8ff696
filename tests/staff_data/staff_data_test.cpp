#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "staff/Staff_DM_UNT.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

class StaffData : public testing::Test {
protected:
    TestDatabase db;
    TStaff_DM dm{nullptr};

    void SetUp() override { db.run("insert into StaffGroup(Code,Name) values(1,'workers')"); }
    static TStaff_Mapper employee(int code, const QString &name = "n", const QString &lastName = "l")
    {
        TStaff_Mapper staff;
        staff._Code = code;
        staff._StaffGroup = 1;
        staff._Name = name;
        staff._LastName = lastName;
        return staff;
    }
    void add(const TStaff_Mapper &staff)
    {
        TStaff_Mapper nothing;
        dm.Staff_GetById(staff._Code, nothing);
        ASSERT_TRUE(dm.Staff_Insert(staff));
    }
    void lock(const QString &code, int status, int comIndex)
    {
        db.run(QString("insert into CodeLock_TBL(Code,Status,Com_Index) values('%1',%2,%3)")
                   .arg(code)
                   .arg(status)
                   .arg(comIndex));
    }
    int rowsOpen() { return dm.Temp_QUR->recordCount(); }
};

TStaff_Mapper whole()
{
    TStaff_Mapper staff;
    staff._Code = 5;
    staff._StaffGroup = 1;
    staff._PersonnelCode = "p1";
    staff._InsuranceNumber = "0012345678";
    staff._CardNumber = "5";
    staff._NationalID = "0012345679";
    staff._Sex = true;
    staff._FatherName = QString::fromUtf8("علي");
    staff._IDNumber = "123";
    staff._BirthDate = "1370/12/30";
    staff._BirthPlace = QString::fromUtf8("تهران");
    staff._IssueDate = "1371/01/05";
    staff._Department = "dept";
    staff._Degree = 4;
    staff._Major = "major";
    staff._Military = 6;
    staff._IsMarried = true;
    staff._AccountNumber = "account";
    staff._BankTitle = "bank";
    staff._CoDate = "1395/07/01";
    staff._Job = "job";
    staff._Comment = "comment";
    staff._Name = "o'name";
    staff._LastName = QString::fromUtf8("یزدی یزدي");
    staff._Tel1 = "t1";
    staff._Tel2 = "t2";
    staff._Fax = "fax";
    staff._Mob = "mob";
    staff._Add1 = "a1";
    staff._Add2 = "a2";
    staff._Email = "a@b.ir";
    staff._LeaveDate = "1403/12/30";
    staff._Employment = 10;
    staff._PostCode = "1234567890";
    staff._Category = 18;
    staff._FiscalExemption = 8;
    staff._National = 1;
    staff._Insurance = 3;
    staff._IssuePlace = "ip";
    staff._JobCode = "123456";
    staff._JobGroup = "group";
    staff._CreatedTime = "08:05";
    staff._CreatedDate = "1404/01/05";
    staff._ModifiedTime = "09:10";
    staff._ModifiedDate = "1404/01/06";
    staff._UserCreated = "maker (1)";
    staff._UserModified = "changer (2)";
    return staff;
}

const char allColumns[] =
    "select Code,StaffGroup,PersonnelCode,InsuranceNumber,CardNumber,NationalID,Sex,FatherName,IDNumber,BirthDate,"
    "BirthPlace,IssueDate,Department,Degree,Major,Military,IsMarried,AccountNumber,BankTitle,CoDate,Job,Comment,Name,"
    "LastName,Tel1,Tel2,Fax,Mob,Add1,Add2,Email,LeaveDate,Employment,PostCode,Category,FiscalExemption,[National],"
    "Insurance,IssuePlace,JobCode,JobGroup,";
const char allValues[] =
    "5|1|p1|0012345678|5|0012345679|1|علي|123|1370/12/30|تهران|1371/01/05|dept|4|major|6|1|account|bank|1395/07/01|job|"
    "comment|o'name|یزدی یزدي|t1|t2|fax|mob|a1|a2|a@b.ir|1403/12/30|10|1234567890|18|8|1|3|ip|123456|group|";

TEST_F(StaffData, AnInsertWritesEveryColumnButTheMarksOfChange)
{
    add(whole());
    EXPECT_EQ(db.rows(QString(allColumns) + "CreatedTime,CreatedDate,UserCreated from Staff"),
              QString::fromUtf8(allValues) + "08:05|1404/01/05|maker (1)");
    EXPECT_EQ(db.text("select count(*) from Staff where ModifiedTime is null and UserModified is null"), "1");
}

TEST_F(StaffData, AnUpdateWritesEveryColumnButTheMarksOfCreation)
{
    add(employee(5));
    TStaff_Mapper read;
    dm.Staff_GetById(5, read);
    ASSERT_TRUE(dm.Staff_Update(whole()));
    EXPECT_EQ(db.rows(QString(allColumns) + "ModifiedTime,ModifiedDate,UserModified,CreatedTime from Staff"),
              QString::fromUtf8(allValues) + "09:10|1404/01/06|changer (2)|");
}

TEST_F(StaffData, WhatIsWrittenIsReadIntoTheSameFields)
{
    add(whole());
    TStaff_Mapper read;
    dm.Staff_GetById(QString("5"), read);
    const TStaff_Mapper expected = whole();
    dm.Staff_GetById(5, read);
    EXPECT_EQ(read._Code, 5);
    EXPECT_TRUE(read._Sex);
    EXPECT_TRUE(read._IsMarried);
    EXPECT_EQ(read._CreatedDate, expected._CreatedDate);
    EXPECT_EQ(read._ModifiedDate, "");
    // Written again as read, under another code: each field came from its own column.
    read._Code = 6;
    add(read);
    EXPECT_EQ(db.rows(QString(allColumns) + "CreatedTime from Staff where Code=6").mid(1),
              QString::fromUtf8(allValues).mid(1) + "08:05");
}

TEST_F(StaffData, AnUnknownCodeGivesAnEmptyRecordAndAnEmptyQuery)
{
    TStaff_Mapper read = whole();
    dm.Staff_GetById(77, read);
    EXPECT_TRUE(dm.StaffGet_QUR->isEmpty());
    EXPECT_EQ(read._Code, 0);
    EXPECT_EQ(read._LastName, "");
    EXPECT_EQ(read._Category, 0);
}

TEST_F(StaffData, TheLeaveDateOfOneEmployedIsAnEmptyTextNotNull)
{
    TStaff_Mapper staff = employee(1);
    staff._LeaveDate = QString();
    add(staff);
    EXPECT_EQ(db.text("select count(*) from Staff where LeaveDate = ''"), "1");
    EXPECT_EQ(db.text("select count(*) from staff_VW where LeaveDate <> ''"), "0");
}

TEST_F(StaffData, TextsAreCutToTheirColumns)
{
    TStaff_Mapper staff = employee(1);
    staff._Comment = QString(10000, QChar(0x06A9));
    staff._FatherName = QString(50, 'f');
    staff._Job = QString(50, 'j');
    staff._Add1 = QString(301, 'a');
    add(staff);
    EXPECT_EQ(db.text("select Comment from Staff"), QString(150, QChar(0x06A9)));
    EXPECT_EQ(db.text("select FatherName from Staff"), QString(30, 'f'));
    EXPECT_EQ(db.text("select Job from Staff"), QString(20, 'j'));
    EXPECT_EQ(db.text("select Add1 from Staff"), QString(300, 'a'));
}

TEST_F(StaffData, AfterAnInsertTheRowIsOpenForItsPicturesAndForAnUpdate)
{
    add(employee(5, "a"));
    ASSERT_EQ(dm.StaffGet_QUR->asInteger("Code"), 5);
    dm.StaffGet_QUR->edit();
    dm.StaffGet_QUR->setValue("Picture", QByteArray("\xff\xd8\0jpeg", 7));
    dm.StaffGet_QUR->post();
    ASSERT_TRUE(dm.Staff_Update(employee(5, "b")));
    dm.FillDataStaff(5);
    EXPECT_EQ(dm.StaffGet_QUR->asString("Name"), "b");
    EXPECT_EQ(dm.StaffGet_QUR->value("Picture").toByteArray(), QByteArray("\xff\xd8\0jpeg", 7));
}

TEST_F(StaffData, ARowIsOpenedByItsParameterAlsoAfterItWasOpenedByItsCode)
{
    add(employee(5));
    TStaff_Mapper read;
    dm.FillDataStaff(5);
    EXPECT_EQ(dm.StaffGet_QUR->recordCount(), 1);
    dm.Staff_GetById(5, read);
    dm.FillDataStaff(6);
    EXPECT_TRUE(dm.StaffGet_QUR->isEmpty());
    dm.FillDataStaffGroup(1);
    EXPECT_EQ(dm.GroupGet_QUR->asString("Name"), "workers");
    EXPECT_EQ(dm.GroupGet_QUR->statement().asText(), "select * from StaffGroup\nwhere Code=:Code");
}

TEST_F(StaffData, ListAndGroupsAreOpenedWithTheirStatements)
{
    add(employee(9, "Ali", "Rezaei"));
    dm.Staff_Get();
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from staff_VW");
    ASSERT_EQ(dm.List_QUR->recordCount(), 1);
    EXPECT_EQ(dm.List_QUR->asString("fullnameTitle"), "Ali Rezaei");
    EXPECT_EQ(dm.List_QUR->asString("StaffGroupTitle"), "workers");
    EXPECT_TRUE(dm.List_QUR->asString("CodeFullName").contains("9"));
    EXPECT_TRUE(dm.List_QUR->asString("CodeFullName").contains("Ali Rezaei"));
    dm.StaffGroup_Get();
    EXPECT_TRUE(dm.GroupList_QUR->locate("Name", "workers"));
}

TEST_F(StaffData, GroupNamesComeWithTheirCodesInTheOrderOfCodes)
{
    db.run("insert into StaffGroup(Code,Name) values(12,'a')");
    EXPECT_EQ(dm.StaffGroup_Fill(),
              (TNamedCodes{{QString::fromUtf8("کليه کارمندان"), 0}, {"workers", 1}, {"a", 12}}));
}

TEST_F(StaffData, TheFullNameIsLookedUpWithoutTheOwnRow)
{
    add(employee(1, "o'brien", QString::fromUtf8("رضا'یی")));
    dm.Staff_GetCode("o'brien", QString::fromUtf8("رضا'یی"), 1);
    EXPECT_EQ(rowsOpen(), 0);
    dm.Staff_GetCode("o'brien", QString::fromUtf8("رضا'یی"), 2);
    EXPECT_EQ(rowsOpen(), 1);
    dm.Staff_GetCode("o'brien", "other", 2);
    EXPECT_EQ(rowsOpen(), 0);
}

TEST_F(StaffData, TheNumbersAreLookedUpWithTheOwnRow)
{
    TStaff_Mapper staff = employee(1);
    staff._CardNumber = "c'1";
    staff._InsuranceNumber = "i1";
    staff._NationalID = "n1";
    add(staff);
    dm.Staff_GetCardNumber("c'1");
    EXPECT_EQ(rowsOpen(), 1);
    dm.Staff_GetInsuranceNumbber("i1");
    EXPECT_EQ(rowsOpen(), 1);
    dm.Staff_GetNationallID("n1");
    EXPECT_EQ(rowsOpen(), 1);
    dm.Staff_GetNationallID("c'1");
    EXPECT_EQ(rowsOpen(), 0);
}

TEST_F(StaffData, TheFirstStaffCodeIsOne)
{
    EXPECT_EQ(dm.Staff_GetNewCode(), 1);
    add(employee(12));
    EXPECT_EQ(dm.Staff_GetNewCode(), 13);
}

TEST_F(StaffData, ALockOnAHigherStaffCodeIsPassedWhoeverHoldsIt)
{
    add(employee(12));
    lock("40", 806, 1);
    EXPECT_EQ(dm.Staff_GetNewCode(), 41);
    lock("41", 806, 99);
    EXPECT_EQ(dm.Staff_GetNewCode(), 42);
    lock("900", 802, 1);
    EXPECT_EQ(dm.Staff_GetNewCode(), 42) << "another part's lock does not count";
    lock("9", 806, 1);
    EXPECT_EQ(dm.Staff_GetNewCode(), 42) << "locks compare as numbers, not as texts";
}

TEST_F(StaffData, ACodeLockedThroughTheHostIsNotOfferedAgainBeforeItIsGivenBack)
{
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("1", cspStaff, 1, otLock, false));
    EXPECT_EQ(dm.Staff_GetNewCode(), 2);
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("1", cspStaff, 1, otUnlock, false));
    EXPECT_EQ(dm.Staff_GetNewCode(), 1);
}

TEST_F(StaffData, EmployeesAreDeletedByAListOfCodes)
{
    for (int code : {1, 2, 3})
        add(employee(code, QString("n%1").arg(code)));
    EXPECT_TRUE(dm.Staff_Del("1,3"));
    EXPECT_EQ(db.rows("select Code from Staff"), "2");
    EXPECT_TRUE(dm.Staff_Del("77"));
}

TEST_F(StaffData, AnEmployeeWithAPersonnelOrderIsNotDeleted)
{
    add(employee(1));
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(1,1,'1404/01/01')");
    EXPECT_FALSE(dm.Staff_Del("1"));
    EXPECT_EQ(db.text("select count(*) from Staff"), "1");
}

TEST_F(StaffData, WritesAnswerFalseAfterAFaultAndReadsLetItPass)
{
    TStaff_Mapper staff = employee(1);
    db.failStatement(1, TFault::DiskFull);
    EXPECT_FALSE(dm.Staff_Insert(staff));
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::DiskFull);
    add(staff);
    TStaff_Mapper read;
    dm.Staff_GetById(2, read);
    staff._Code = 1;
    EXPECT_FALSE(dm.Staff_Insert(staff)) << "the code is taken";
    dm.Staff_GetById(1, read);
    db.failStatement(1);
    EXPECT_FALSE(dm.Staff_Update(staff));
    db.failStatement(1);
    EXPECT_FALSE(dm.Staff_Del("1"));
    db.run("delete from Staff");
    EXPECT_FALSE(dm.Staff_Update(staff)) << "deleted by another workstation";
    EXPECT_EQ(db.text("select count(*) from Staff"), "0");

    TPerinf_Mapper person;
    const std::function<void()> reads[] = {
        [&] { dm.Staff_GetById(1, read); },     [&] { dm.FillDataStaff(1); },
        [&] { dm.FillDataStaffGroup(1); },      [&] { dm.Staff_Get(); },
        [&] { dm.StaffGroup_Get(); },           [&] { dm.StaffGroup_Fill(); },
        [&] { dm.Staff_GetCode("a", "b", 1); }, [&] { dm.Staff_GetCardNumber("1"); },
        [&] { dm.Staff_GetNewCode(); },         [&] { dm.Perinf_GetNewCode(1); },
        [&] { dm.Perinf_Get(person); },         [&] { dm.CodeLock_DeleteAllRecovery(cspStaff, 1); },
    };
    for (const auto &run : reads) {
        db.failStatement(1, TFault::Locked);
        EXPECT_THROW(run(), TDatabaseError);
    }
}

TEST_F(StaffData, OnlyTheLocksOfOnePartAndWorkstationAreDropped)
{
    lock("1", 806, 1);
    lock("2", 806, 2);
    lock("3", 802, 1);
    db.clearTrace();
    dm.CodeLock_DeleteAllRecovery(cspStaff, 1);
    EXPECT_EQ(db.trace(), QStringList{"Delete From CodeLock_TBL Where (Status=806) AND (Com_Index = 1)"});
    EXPECT_EQ(db.rows("select Code from CodeLock_TBL order by Code"), "2\n3");
}

/// Persons of the accounting side, with a picker of person groups that a test sets.
class Persons : public StaffData {
protected:
    ScriptedMessages messages;
    int pickedGroup = 3;
    int picks = 0;
    TPerinf_Mapper person;

    void SetUp() override
    {
        StaffData::SetUp();
        for (int group : {1, 2, 3})
            db.run(QString("insert into PersonGroup(Code,Name) values(%1,'g%1')").arg(group));
        RegisterEntityPicker(cspPerson, [this](const QString &) {
            ++picks;
            return pickedGroup;
        });
        person._Name = "o'name";
        person._LName = QString::fromUtf8("یزدی'");
        person._Tel1 = "t1";
        person._Tel2 = "t2";
        person._Addr1 = "a1";
        person._Addr2 = "a2";
        person._Fax = "f";
        person._Email = "e";
        person._Mobile = "m";
        person._FullName = "not used";
        person._UserName = "not used";
        person._Code = 999;
        person._GrpCode = 1;
    }
    void TearDown() override { RegisterEntityPicker(cspPerson, {}); }
    void addPerson(int code, int group)
    {
        db.run(QString("insert into Perinf(Code,GrpCode,Name,LName) values(%1,%2,'n%1','l%1')")
                   .arg(code)
                   .arg(group));
    }
    QString persons() { return db.rows("select Code,GrpCode from Perinf order by Code"); }
};

TEST_F(Persons, TheFirstCodeOfAGroupIsOne)
{
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 1);
}

TEST_F(Persons, ACodeFollowsTheHighestOfItsGroup)
{
    addPerson(100, 1);
    addPerson(200, 2);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 101);
    EXPECT_EQ(dm.Perinf_GetNewCode(2), 201);
}

TEST_F(Persons, ACodeTakenByAnotherGroupFallsBackToOneMoreThanTheHighestOfAll)
{
    addPerson(100, 1);
    addPerson(101, 2);
    addPerson(500, 2);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 501);
    lock("700", 101, 9);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 701);
    lock("900", 806, 9);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 701) << "staff locks do not count";
}

TEST_F(Persons, ALockedCodeFallsBackToo)
{
    addPerson(100, 1);
    lock("101", 101, 2);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 102);
    lock("300", 101, 2);
    EXPECT_EQ(dm.Perinf_GetNewCode(1), 301);
}

TEST_F(Persons, AnEmployeeIsEnteredAsAPersonOfTheChosenGroup)
{
    addPerson(7, 3);
    messages.answer({TAnswer::Yes});
    EXPECT_TRUE(dm.PerInf_Insert(person));
    EXPECT_EQ(messages.last().number, 20106);
    EXPECT_EQ(picks, 1);
    EXPECT_EQ(
        db.rows("select Code,GrpCode,SitbgPrd,UserName,Name,LName,FullName,Tel1,Tel2,Addr1,Addr2,Fax,Email,"
                "Mobile from Perinf where Code=8"),
        QString::fromUtf8("8|3|0|8|o'name|یزدی'|o'name یزدی'|t1|t2|a1|a2|f|e|m"));
    EXPECT_GT(db.text("select DetailUniqueCode from Perinf where Code=8").toInt(), 0);
}

TEST_F(Persons, EachOneGetsAUniqueDetailCode)
{
    messages.answer({TAnswer::Yes, TAnswer::Yes});
    ASSERT_TRUE(dm.PerInf_Insert(person));
    person._Name = "second";
    ASSERT_TRUE(dm.PerInf_Insert(person));
    EXPECT_EQ(db.text("select count(distinct DetailUniqueCode) from Perinf"), "2");
}

TEST_F(Persons, OneOfThatNameIsNotAskedFor)
{
    messages.answer({TAnswer::Yes});
    ASSERT_TRUE(dm.PerInf_Insert(person));
    messages.take();
    EXPECT_TRUE(dm.PerInf_Insert(person));
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(db.text("select count(*) from Perinf"), "1");
}

TEST_F(Persons, NothingIsEnteredWhenTheUserSaysNoOrChoosesNoGroup)
{
    messages.answer({TAnswer::No});
    EXPECT_TRUE(dm.PerInf_Insert(person));
    EXPECT_EQ(picks, 0);
    messages.answer({TAnswer::Yes});
    pickedGroup = 0;
    EXPECT_TRUE(dm.PerInf_Insert(person));
    EXPECT_EQ(picks, 1);
    EXPECT_EQ(persons(), "");
}

TEST_F(Persons, AFaultInAnyStepAnswersFalseAndEntersNothing)
{
    // What the whole entry runs, counted on a name of its own.
    messages.answer({TAnswer::Yes});
    db.failStatement(0);
    ASSERT_TRUE(dm.PerInf_Insert(person));
    const int statements = db.statementCount();
    ASSERT_GE(statements, 4);
    db.run("delete from Perinf");
    for (int n = 1; n <= statements - 1; ++n) {
        dm.Perinf_QUR->close();
        messages.answer({TAnswer::Yes});
        db.failStatement(n);
        EXPECT_FALSE(dm.PerInf_Insert(person)) << "statement " << n;
        db.failStatement(0);
        EXPECT_EQ(persons(), "") << "statement " << n;
    }
}

TEST_F(Persons, TheFirstPersonIsReadIntoTheRecord)
{
    TPerinf_Mapper read;
    dm.Perinf_Get(read);
    EXPECT_EQ(read._Code, 0);
    EXPECT_EQ(read._Name, "");
    messages.answer({TAnswer::Yes});
    ASSERT_TRUE(dm.PerInf_Insert(person));
    dm.Perinf_Get(read);
    EXPECT_EQ(read._Code, 1);
    EXPECT_EQ(read._GrpCode, 3);
    EXPECT_EQ(read._SitbgPrd, "0");
    EXPECT_EQ(read._UserName, "1");
    EXPECT_EQ(read._FullName, QString(person._Name + ' ' + person._LName));
    EXPECT_EQ(read._Addr2, "a2");
    EXPECT_EQ(read._Mobile, "m");
}

} // namespace
