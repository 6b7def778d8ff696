#include "staff/Staff_DM_UNT.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

class FamilyData : public testing::Test {
protected:
    TestDatabase db;
    TStaff_DM dm{nullptr};

    void SetUp() override
    {
        for (int code : {12, 15, 20})
            db.run(QString("insert into Staff(Code,Name,LastName,StaffGroup) values(%1,'n%1','l%1',0)")
                       .arg(code));
    }
    void row(const char *table, int id, int staffCode)
    {
        db.run(
            QString(
                "insert into %1(ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment) "
                "values(%2,%3,1,'n%2',0,'i','1390/01/01',0,'','')")
                .arg(table)
                .arg(id)
                .arg(staffCode));
    }
    void saved(int id, int staffCode) { row("StaffFamily", id, staffCode); }
    void working(int id, int staffCode) { row("tmpStaffFamily", id, staffCode); }
    QString savedRows() { return db.rows("select ID,StaffCode from StaffFamily order by ID"); }
    QString workingRows() { return db.rows("select ID,StaffCode from tmpStaffFamily order by ID"); }
    void lock(const QString &code, int status = 806, int comIndex = 1)
    {
        db.run(QString("insert into CodeLock_TBL(Code,Status,Com_Index) values('%1',%2,%3)")
                   .arg(code)
                   .arg(status)
                   .arg(comIndex));
    }
    static TFamilly_Mapper member(int id, int staffCode)
    {
        return {id,   staffCode,    2,  QString::fromUtf8("زهرا 'احمدی'"), true, "0012", "1370/12/30",
                true, "1402/01/01", "c"};
    }
};

TEST_F(FamilyData, TheFirstRowIsNumberedOne)
{
    EXPECT_EQ(dm.Family_GetNewCode(), 1);
}

TEST_F(FamilyData, RowsAreNumberedOverBothTables)
{
    saved(7, 12);
    working(9, 12);
    EXPECT_EQ(dm.Family_GetNewCode(), 10);
    saved(30, 15);
    EXPECT_EQ(dm.Family_GetNewCode(), 31);
}

TEST_F(FamilyData, OpeningAnEmployeeCopiesTheSavedRowsWithTheirIds)
{
    saved(1, 12);
    saved(2, 12);
    saved(3, 15);
    dm.Family_GetByStaffCode("12");
    EXPECT_EQ(workingRows(), "1|12\n2|12");
    EXPECT_EQ(savedRows(), "1|12\n2|12\n3|15");
    EXPECT_EQ(dm.Family_QUR->recordCount(), 2);
}

TEST_F(FamilyData, AnEmployeeWithoutFamilyShowsNothingAndSavesNothing)
{
    saved(3, 15);
    dm.Family_GetByStaffCode(12);
    EXPECT_TRUE(dm.Family_QUR->isEmpty());
    dm.Family_Insert(12);
    EXPECT_EQ(savedRows(), "3|15");
}

TEST_F(FamilyData, ANewEmployeeShowsTheWorkingRowsKeptUnderTheCode)
{
    working(4, 20);
    dm.Family_GetByStaffCode(20);
    EXPECT_EQ(dm.Family_QUR->recordCount(), 1);
}

TEST_F(FamilyData, TheGridTellsSexKinshipAndDeath)
{
    working(1, 12);
    ASSERT_TRUE(dm.TmpFamily_Insert(member(2, 12)));
    dm.Family_GetByStaffCode(12);
    for (int round = 0; round < 2; ++round) {
        QStringList seen;
        TQuery &list = *dm.Family_QUR;
        for (list.first(); !list.eof(); list.next())
            seen << list.asString("SexTitle") + '|' + list.asString("TypeTitle") + '|' +
                        list.asString("Deathtitle");
        EXPECT_EQ(seen, (QStringList{QString::fromUtf8("مرد|فرزند|خير"), QString::fromUtf8("زن|همسر |بلي")}));
        dm.FillDataFamilyList(12);
    }
    EXPECT_TRUE(dm.Family_QUR->statement().asText().endsWith("\nFROM         tmpStaffFamily AS a\nwhere "
                                                             "StaffCode=:StaffCode"));
}

TEST_F(FamilyData, OpeningByTheParameterCopiesAndShowsToo)
{
    saved(1, 12);
    dm.FillDataFamily(12);
    EXPECT_EQ(workingRows(), "1|12");
    EXPECT_EQ(dm.Family_QUR->recordCount(), 1);
    dm.FillDataFamilyList(12);
    EXPECT_EQ(workingRows(), "1|12") << "reading again copies nothing";
    dm.FillDataFamilyGet(1);
    EXPECT_EQ(dm.FamilyGet_QUR->asString("Name"), "n1");
}

TEST_F(FamilyData, ANewRowIsStoredInTheWorkingTableWithoutOneBeingLoaded)
{
    EXPECT_FALSE(dm.FamilyGet_QUR->active());
    ASSERT_TRUE(dm.TmpFamily_Insert(member(4, 12)));
    EXPECT_EQ(
        db.rows("select ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment from "
                "tmpStaffFamily"),
        QString::fromUtf8("4|12|2|زهرا 'احمدی'|1|0012|1370/12/30|1|1402/01/01|c"));
    EXPECT_EQ(savedRows(), "");
}

TEST_F(FamilyData, AMemberAliveHasAnEmptyDateOfDeath)
{
    TFamilly_Mapper alive = member(4, 12);
    alive._Death = false;
    alive._DeathDate = QString();
    ASSERT_TRUE(dm.TmpFamily_Insert(alive));
    EXPECT_EQ(db.text("select count(*) from tmpStaffFamily where Death=0 and DeathDate=''"), "1");
}

TEST_F(FamilyData, ALongCommentIsCutToTenCharacters)
{
    TFamilly_Mapper longOne = member(4, 12);
    longOne._Comment = QString(50, QChar(0x06A9));
    ASSERT_TRUE(dm.TmpFamily_Insert(longOne));
    EXPECT_EQ(db.text("select Comment from tmpStaffFamily"), QString(10, QChar(0x06A9)));
}

TEST_F(FamilyData, AChangedRowIsTheOneThatWasLoaded)
{
    working(1, 12);
    working(2, 12);
    dm.Family_GetByID("2");
    ASSERT_TRUE(dm.TmpFamily_Update(member(2, 12)));
    EXPECT_EQ(db.rows("select ID,Type,Sex from tmpStaffFamily order by ID"), "1|1|0\n2|2|1");
}

TEST_F(FamilyData, ARowDeletedMeanwhileAnswersFalseToItsChange)
{
    working(1, 12);
    dm.Family_GetByID(1);
    db.run("delete from tmpStaffFamily");
    EXPECT_FALSE(dm.TmpFamily_Update(member(1, 12)));
    EXPECT_EQ(workingRows(), "");
}

TEST_F(FamilyData, DeletingAWorkingRowLeavesTheSavedOne)
{
    saved(1, 12);
    saved(2, 12);
    saved(3, 12);
    dm.Family_GetByStaffCode(12);
    EXPECT_TRUE(dm.Family_Del("1,3"));
    EXPECT_EQ(workingRows(), "2|12");
    dm.ClearDataTMPFamily(12);
    EXPECT_EQ(workingRows(), "");
    EXPECT_EQ(savedRows(), "1|12\n2|12\n3|12");
}

TEST_F(FamilyData, ASaveReplacesTheWholeSetOfOneEmployee)
{
    saved(1, 12);
    saved(2, 15);
    dm.Family_GetByStaffCode(12);
    ASSERT_TRUE(dm.TmpFamily_Insert(member(5, 12)));
    dm.ClearDataFamily(12);
    EXPECT_EQ(savedRows(), "2|15");
    dm.Family_Insert("12");
    EXPECT_EQ(savedRows(), "1|12\n2|15\n5|12");
    EXPECT_EQ(workingRows(), "1|12\n5|12");
}

TEST_F(FamilyData, WritesOfOneRowAnswerFalseAfterAFaultAndAllElseLetsItPass)
{
    db.failStatement(1);
    EXPECT_FALSE(dm.TmpFamily_Insert(member(1, 12)));
    ASSERT_TRUE(dm.TmpFamily_Insert(member(1, 12)));
    dm.Family_GetByID(1);
    db.failStatement(1);
    EXPECT_FALSE(dm.TmpFamily_Update(member(1, 12)));
    db.failStatement(1);
    EXPECT_FALSE(dm.Family_Del("1"));
    EXPECT_EQ(workingRows(), "1|12");

    const std::function<void()> others[] = {
        [&] { dm.Family_GetByStaffCode(12); },
        [&] { dm.FillDataFamily(12); },
        [&] { dm.FillDataFamilyList(12); },
        [&] { dm.FillDataFamilyGet(1); },
        [&] { dm.Family_GetByID(1); },
        [&] { dm.Family_GetNewCode(); },
        [&] { dm.Family_Insert(12); },
        [&] { dm.ClearDataFamily(12); },
        [&] { dm.ClearDataTMPFamily(12); },
        [&] { dm.StaffFamily_DelTmp(12); },
        [&] { dm.StaffFamily_UpdateTmp(12, 15); },
        [&] { dm.StaffFamily_GetRecoverysCode(cspStaff, 1); },
        [&] { dm.StaffFamily_IsRecordHasRecovery(12, cspStaff, 1); },
        [&] { dm.StaffFamily_DeleteAllRecovery(cspStaff, 1); },
    };
    for (const auto &run : others) {
        db.failStatement(1, TFault::Locked);
        EXPECT_THROW(run(), TDatabaseError);
    }
}

TEST_F(FamilyData, TheRecoveryListHoldsTheFirstCodeAsOftenAsRowsAreFound)
{
    working(1, 12);
    working(2, 12);
    working(3, 15);
    lock("12");
    lock("15");
    EXPECT_EQ(dm.StaffFamily_GetRecoverysCode(cspStaff, 1), (QStringList{"12", "12", "12"}));
}

TEST_F(FamilyData, OnlyRowsOfCodesThatThisWorkstationHoldsAreToBeRecovered)
{
    working(1, 12);
    working(2, 15);
    working(3, 20);
    lock("15", 806, 2);
    lock("20", 802, 1);
    EXPECT_EQ(dm.StaffFamily_GetRecoverysCode(cspStaff, 1), QStringList());
    EXPECT_FALSE(dm.StaffFamily_IsRecordHasRecovery("15", cspStaff, 1));
    EXPECT_TRUE(dm.StaffFamily_IsRecordHasRecovery("15", cspStaff, 2));
    EXPECT_FALSE(dm.StaffFamily_IsRecordHasRecovery("12", cspStaff, 1));
    lock("12");
    EXPECT_TRUE(dm.StaffFamily_IsRecordHasRecovery(12, cspStaff, 1));
}

TEST_F(FamilyData, RecoveryMovesToANewCode)
{
    working(1, 12);
    working(2, 15);
    db.clearTrace();
    dm.StaffFamily_UpdateTmp("12", "20");
    EXPECT_EQ(db.trace(), QStringList{"Update tmpstafffamily Set StaffCode = 20 Where (StaffCode = 12)"});
    EXPECT_EQ(workingRows(), "1|20\n2|15");
}

TEST_F(FamilyData, OneCodesRecoveryIsThrownAway)
{
    working(1, 12);
    working(2, 15);
    dm.StaffFamily_DelTmp("12");
    EXPECT_EQ(workingRows(), "2|15");
}

TEST_F(FamilyData, ThrowingAllAwayTakesOnlyRowsLockedByThisWorkstation)
{
    working(1, 12);
    working(2, 15);
    working(3, 20);
    lock("12");
    lock("15", 806, 2);
    dm.StaffFamily_DeleteAllRecovery(cspStaff, 1);
    dm.CodeLock_DeleteAllRecovery(cspStaff, 1);
    EXPECT_EQ(workingRows(), "2|15\n3|20");
    EXPECT_EQ(db.rows("select Code,Com_Index from CodeLock_TBL"), "15|2");
}

} // namespace
