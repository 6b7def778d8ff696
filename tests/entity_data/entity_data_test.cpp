#include "entity/Entity_DM_UNT.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

class EntityData : public testing::Test {
protected:
    TestDatabase db;
    TEntity_DM dm{nullptr};

    void SetUp() override
    {
        db.run("insert into FiscalGrp(Code,Name) values(1,'fg')");
        db.run("insert into DeductionGrp(Code,Name) values(2,'dg')");
    }
    static TFiscalDeducation_Mapper item(int code, const QString &title = "t", int calcType = 0)
    {
        return {code, 1, calcType, title, "10", "20", "30", "1500.5", true, false, "c"};
    }
    bool insert(const TFiscalDeducation_Mapper &record, TSoftwarePart part)
    {
        TFiscalDeducation_Mapper nothing;
        dm.FiscalDeducation_GetByID(record._code, part, nothing);
        return dm.FiscalDeducation_Insert(record, part);
    }
    void earning(int code, const QString &title = "t", int calcType = 0)
    {
        ASSERT_TRUE(insert(item(code, title, calcType), cspFiscal));
    }
    void deduction(int code, const QString &title = "t", int calcType = 0)
    {
        TFiscalDeducation_Mapper record = item(code, title, calcType);
        record._Grpcode = 2;
        ASSERT_TRUE(insert(record, cspDeduction));
    }
    int rowsOpen() { return dm.Temp_QUR->recordCount(); }
};

TEST_F(EntityData, BothTablesEmptyGiveTheCodeOne)
{
    EXPECT_EQ(dm.FiscalDeducation_GetNewCode(), 1);
}

TEST_F(EntityData, EarningsAndDeductionsDrawFromOneSequence)
{
    earning(40);
    deduction(12);
    EXPECT_EQ(dm.FiscalDeducation_GetNewCode(), 41);
    deduction(60);
    EXPECT_EQ(dm.FiscalDeducation_GetNewCode(), 61);
}

TEST_F(EntityData, ACodeIsFoundInEitherTableByEitherCheck)
{
    earning(40);
    deduction(12);
    dm.Fiscal_GetCode(12);
    EXPECT_EQ(rowsOpen(), 1);
    dm.Deducation_GetCode("40");
    EXPECT_EQ(rowsOpen(), 1);
    dm.Fiscal_GetCode(13);
    EXPECT_EQ(rowsOpen(), 0);
}

TEST_F(EntityData, TitlesAreLookedUpInTheirOwnKindOnlyAndMayHoldApostrophes)
{
    earning(1, "it's");
    deduction(2, "other");
    dm.FiscalGet_ByTitle("it's");
    EXPECT_EQ(rowsOpen(), 1);
    dm.FiscalGet_ByTitle("other");
    EXPECT_EQ(rowsOpen(), 0);
    dm.DeducationGet_ByTitle("other");
    EXPECT_EQ(rowsOpen(), 1);
    dm.DeducationGet_ByTitle("it's");
    EXPECT_EQ(rowsOpen(), 0);
    EXPECT_NO_THROW(dm.DeducationGet_ByTitle("'; delete from Fiscal --"));
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "1");
}

TEST_F(EntityData, AnEarningIsStoredThroughItsViewAndReadBack)
{
    TFiscalDeducation_Mapper record = item(5, QString::fromUtf8("حق 'مسکن'"), 2);
    record._Tafzili = "2000000000";
    record._cost = "123456789.123456";
    ASSERT_TRUE(insert(record, cspFiscal));
    EXPECT_EQ(db.rows("select Code,GrpCode,CalcType,Kol,Moin,Tafzili,Insurance,Tax,Comment from Fiscal"),
              "5|1|2|10|20|2000000000|1|0|c");
    TFiscalDeducation_Mapper read;
    dm.FiscalDeducation_GetByID("5", cspFiscal, read);
    EXPECT_EQ(read._code, 5);
    EXPECT_EQ(read._Grpcode, 1);
    EXPECT_EQ(read._CalcType, 2);
    EXPECT_EQ(read._title, record._title);
    EXPECT_EQ(read._Kol, "10");
    EXPECT_EQ(read._Moin, "20");
    EXPECT_EQ(read._Tafzili, "2000000000");
    EXPECT_EQ(read._cost, "123456789.123456");
    EXPECT_TRUE(read._Insurance);
    EXPECT_FALSE(read._Tax);
    EXPECT_EQ(read._comment, "c");
}

TEST_F(EntityData, ADeductionIsStoredThroughItsViewWithoutTheTwoFlags)
{
    deduction(6, "d", 2);
    EXPECT_EQ(db.rows("select Code,GrpCode,CalcType,Kol,Moin,Tafzili from Deduction"), "6|2|2|10|20|30");
    TFiscalDeducation_Mapper read;
    read._Insurance = read._Tax = true;
    dm.FiscalDeducation_GetByID(6, cspDeduction, read);
    EXPECT_EQ(read._title, "d");
    EXPECT_EQ(read._cost, "1500.5");
    EXPECT_FALSE(read._Insurance);
    EXPECT_FALSE(read._Tax);
}

TEST_F(EntityData, TheDetailAccountOfADeductionIsNarrowerThanAnEarningsOne)
{
    TFiscalDeducation_Mapper record = item(5);
    record._Tafzili = "32768";
    EXPECT_FALSE(insert(record, cspDeduction));
    EXPECT_EQ(db.text("select count(*) from Deduction"), "0");
    EXPECT_TRUE(insert(record, cspFiscal));
    record._code = 6;
    record._Tafzili = "32767";
    record._Grpcode = 2;
    EXPECT_TRUE(insert(record, cspDeduction));
    record._code = 7;
    record._Tafzili = "2147483648";
    EXPECT_FALSE(insert(record, cspFiscal));
    record._Tafzili = "1";
    record._Kol = "40000";
    EXPECT_FALSE(insert(record, cspFiscal));
    record._Kol = "1";
    record._Moin = "1x";
    EXPECT_FALSE(insert(record, cspFiscal));
}

TEST_F(EntityData, AnEmptyAccountOrCostClearsItsColumnAndReadsBackEmpty)
{
    TFiscalDeducation_Mapper record = item(5);
    record._Kol = record._Moin = record._Tafzili = record._cost = "";
    ASSERT_TRUE(insert(record, cspFiscal));
    TFiscalDeducation_Mapper read;
    dm.FiscalDeducation_GetByID(5, cspFiscal, read);
    EXPECT_EQ(read._Kol, "");
    EXPECT_EQ(read._Tafzili, "");
    EXPECT_EQ(read._cost, "");
}

TEST_F(EntityData, ACostOfFifteenDigitsReadsBackWithoutAnExponent)
{
    for (const char *cost : {"12345678901234", "0.000000001", "1000000", "-5", "0"}) {
        TFiscalDeducation_Mapper record = item(dm.FiscalDeducation_GetNewCode(), cost);
        record._cost = cost;
        ASSERT_TRUE(insert(record, cspFiscal)) << cost;
        TFiscalDeducation_Mapper read;
        dm.FiscalDeducation_GetByID(record._code, cspFiscal, read);
        EXPECT_EQ(read._cost, cost);
    }
    TFiscalDeducation_Mapper record = item(90);
    record._cost = "1,000";
    EXPECT_FALSE(insert(record, cspFiscal)) << "a grouped number is no decimal number";
}

TEST_F(EntityData, AnUnknownCodeGivesAnEmptyRecord)
{
    earning(1);
    TFiscalDeducation_Mapper read = item(1);
    dm.FiscalDeducation_GetByID(99, cspFiscal, read);
    EXPECT_TRUE(dm.Get_QUR->isEmpty());
    EXPECT_EQ(read._code, 0);
    EXPECT_EQ(read._title, "");
    EXPECT_EQ(read._cost, "");
    EXPECT_FALSE(read._Insurance);
}

TEST_F(EntityData, AnUpdateWritesAllColumnsTheCodeToo)
{
    earning(5);
    TFiscalDeducation_Mapper record;
    dm.FiscalDeducation_GetByID(5, cspFiscal, record);
    record._code = 8;
    record._title = "new";
    record._Insurance = false;
    record._Tax = true;
    record._cost = "7";
    EXPECT_TRUE(dm.FiscalDeducation_Update(record, cspFiscal));
    EXPECT_EQ(db.rows("select Code,Title,Insurance,Tax,Cost from Fiscal"), "8|new|0|1|7");
}

TEST_F(EntityData, WritesAnswerFalseAfterAFault)
{
    TFiscalDeducation_Mapper record = item(5);
    dm.FiscalDeducation_GetByID(5, cspFiscal, record);
    record = item(5);
    db.failStatement(1);
    EXPECT_FALSE(dm.FiscalDeducation_Insert(record, cspFiscal));
    EXPECT_TRUE(dm.FiscalDeducation_Insert(record, cspFiscal));
    EXPECT_FALSE(insert(record, cspFiscal)) << "the code is taken";
    dm.FiscalDeducation_GetByID(5, cspFiscal, record);
    db.failStatement(1, TFault::Deadlock);
    EXPECT_FALSE(dm.FiscalDeducation_Update(record, cspFiscal));
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::Deadlock);
    db.failStatement(1);
    EXPECT_FALSE(dm.FiscalDeducation_Delete(5, false));
    db.run("delete from Fiscal");
    EXPECT_FALSE(dm.FiscalDeducation_Update(record, cspFiscal)) << "deleted by another workstation";
}

TEST_F(EntityData, AnInsertWithoutAnOpenItemAnswersFalse)
{
    EXPECT_FALSE(dm.FiscalDeducation_Insert(item(5), cspFiscal));
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "0");
}

TEST_F(EntityData, ADeleteTakesTheItemOfItsKindOnly)
{
    earning(5);
    deduction(6);
    EXPECT_TRUE(dm.FiscalDeducation_Delete(5, true));
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "1");
    EXPECT_TRUE(dm.FiscalDeducation_Delete("5", false));
    EXPECT_TRUE(dm.FiscalDeducation_Delete(6, true));
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "0");
    EXPECT_EQ(db.text("select count(*) from Deduction"), "0");
}

TEST_F(EntityData, AnItemThatTheSettingsNameIsNotDeletedAndNoErrorEscapes)
{
    deduction(6);
    db.run("update PayrollInfoDetail set UserCode=6 where ID=16");
    EXPECT_FALSE(dm.FiscalDeducation_Delete(6, true));
    EXPECT_EQ(db.text("select count(*) from Deduction"), "1");
}

TEST_F(EntityData, TheListTakesTheStatementOfItsKindAndOtherKindsLeaveIt)
{
    earning(5);
    deduction(6, "d");
    dm.FiscalDeducationList_get(edDeduction);
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from Deduction_VW");
    EXPECT_FALSE(dm.List_QUR->active());
    dm.FiscalDeducationList_get(edFiscalGrp);
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from Deduction_VW");
    dm.List_QUR->open();
    EXPECT_EQ(dm.List_QUR->asString("Title"), "d");
    dm.FiscalDeducationList_get(edFiscal);
    dm.List_QUR->open();
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from Fiscal_VW");
    EXPECT_EQ(dm.List_QUR->keyAt(0), 5);
}

TEST_F(EntityData, TheGroupListOpensTheGroupsOfItsKindAndOtherKindsOpenItAgain)
{
    dm.FiscalDeducationGroup_Get(edFiscalGrp);
    EXPECT_TRUE(dm.GroupList_QUR->locate("Name", "fg"));
    EXPECT_TRUE(dm.GroupList_QUR->locate("Code", 0));
    EXPECT_EQ(dm.GroupList_QUR->asString("Name"), QString::fromUtf8("کليه گروه ها"));
    dm.FiscalDeducationGroup_Get(edDeductionGrp);
    EXPECT_TRUE(dm.GroupList_QUR->locate("Name", "dg"));
    db.run("insert into DeductionGrp(Code,Name) values(3,'later')");
    dm.FiscalDeducationGroup_Get(edFiscal);
    EXPECT_TRUE(dm.GroupList_QUR->locate("Name", "later"));
}

TEST_F(EntityData, OneGroupIsReadByItsCode)
{
    dm.FillDataGrp(1, edFiscalGrp);
    EXPECT_EQ(dm.GetGrp_QUR->asString("Name"), "fg");
    dm.FillDataGrp(2, edDeductionGrp);
    EXPECT_EQ(dm.GetGrp_QUR->asString("Name"), "dg");
    dm.FillDataGrp(1, edDeductionGrp);
    EXPECT_TRUE(dm.GetGrp_QUR->isEmpty());
}

TEST_F(EntityData, GroupNamesComeWithTheirCodesInTheOrderOfCodes)
{
    db.run("insert into FiscalGrp(Code,Name) values(-1,'first')");
    const QString all = QString::fromUtf8("کليه گروه ها");
    EXPECT_EQ(dm.FiscalGroup_Fill(), (TNamedCodes{{"first", -1}, {all, 0}, {"fg", 1}}));
    EXPECT_EQ(dm.DeducationGroup_Fill(), (TNamedCodes{{all, 0}, {"dg", 2}}));
}

TEST_F(EntityData, AssignmentsAreCountedByKindAndBillLinesForBoth)
{
    db.run("insert into tmpstaffFiscal(ItemCode) values(5)");
    db.run("insert into tmpstaffFiscal(ItemCode) values(5)");
    db.run("insert into tmpstaffdeduction(ItemCode) values(5)");
    db.run("insert into tmpsalarybilldetail(itemcode) values(5)");
    dm.TmpStaff_Count(5, false);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 0).toInt(), 2);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 1).toInt(), 1);
    dm.TmpStaff_Count("5", true);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 0).toInt(), 1);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 1).toInt(), 1);
    dm.TmpStaff_Count(6, false);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 0).toInt(), 0);
    EXPECT_EQ(dm.Temp_QUR->valueAt(0, 1).toInt(), 0);
}

TEST_F(EntityData, AnItemIsAddedToAPersonnelOrderOfItsKind)
{
    db.clearTrace();
    dm.tmpRec_Insert(5, 100, false, 1234567890.5);
    dm.tmpRec_Insert("6", "100", true, 0);
    EXPECT_EQ(
        db.trace(),
        (QStringList{"insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(100,5,1234567890.5)",
                     "insert into tmpRecDeduction(Recruitmentcode,ItemCode,Cost) values(100,6,0)"}));
    EXPECT_EQ(db.rows("select RecruitmentCode,ItemCode,Cost from tmpRecFiscal"), "100|5|1234567890.5");
    dm.tmpRec_GetID(5, 100, false);
    EXPECT_EQ(rowsOpen(), 1);
    dm.tmpRec_GetID(5, 100, true);
    EXPECT_EQ(rowsOpen(), 0);
    dm.tmpRec_GetID(6, 100, true);
    EXPECT_EQ(rowsOpen(), 1);
    dm.tmpRec_GetID(5, 101, false);
    EXPECT_EQ(rowsOpen(), 0);
}

TEST_F(EntityData, AnItemIsAddedToAStaffOutputWithTheAmountZero)
{
    db.clearTrace();
    dm.tmpstaffOutPutDetail_Insert(5, 7, 1);
    EXPECT_EQ(
        db.trace(),
        QStringList{"insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(7,0,1,5)"});
    EXPECT_EQ(db.rows("select OutPutCode,Amount,Type,ItemCode from tmpstaffOutPutDetail"), "7|0|1|5");
    dm.tmpstaffOutPutDetail_Get(5, 7);
    EXPECT_EQ(rowsOpen(), 1);
    dm.tmpstaffOutPutDetail_Get(5, "8");
    EXPECT_EQ(rowsOpen(), 0);
}

TEST_F(EntityData, ATargetCodeThatIsNoNumberFindsNothing)
{
    dm.tmpRec_Insert(5, 100, false, 1);
    dm.tmpRec_GetID(5, "100 or 1=1", false);
    EXPECT_EQ(rowsOpen(), 0);
    EXPECT_EQ(dm.RepeatInfo("x;y", "5"), 0);
}

class RepeatedItem : public EntityData {
protected:
    // Deduction 16 is what the settings name for insurance, 17 for tax.
    void SetUp() override
    {
        EntityData::SetUp();
        deduction(16);
        deduction(17);
        deduction(18);
        db.run("update PayrollInfoDetail set UserCode=16 where ID=16");
        db.run("update PayrollInfoDetail set UserCode=17 where ID=17");
        db.run("insert into Staff(Code,Name,LastName) values(1,'n','l')");
        int code = 0;
        for (int insurance : {0, 1})
            for (int tax : {0, 1}) {
                db.run(QString("insert into CalcMethod(Code,Title,Insurance,Tax) values(%1,'m%1',%2,%3)")
                           .arg(++code)
                           .arg(insurance)
                           .arg(tax));
                db.run(QString("insert into Recruitment(Code,StaffCode,DoDate,CalcMethodCode) "
                               "values(%1,1,'1404/01/01',%1)")
                           .arg(code));
            }
    }
};

TEST_F(RepeatedItem, IsToldByTheMethodOfTheOrder)
{
    // order: 1 neither, 2 tax, 3 insurance, 4 both
    const int expected[4][3] = {{0, 0, 0}, {0, 2, 0}, {1, 0, 0}, {1, 2, 0}};
    for (int order = 1; order <= 4; ++order)
        for (int deductionCode = 16; deductionCode <= 18; ++deductionCode)
            EXPECT_EQ(dm.RepeatInfo(QString::number(order), QString::number(deductionCode)),
                      expected[order - 1][deductionCode - 16])
                << "order " << order << ", item " << deductionCode;
}

TEST_F(RepeatedItem, IsInsuranceFirstWhenTheSettingsNameOneItemForBoth)
{
    db.run("update PayrollInfoDetail set UserCode=16 where ID=17");
    EXPECT_EQ(dm.RepeatInfo("4", "16"), 1);
    EXPECT_EQ(dm.RepeatInfo("2", "16"), 2);
}

TEST_F(RepeatedItem, IsNoneForAnOrderWithoutAMethodOrNoOrder)
{
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(9,1,'1404/01/01')");
    EXPECT_EQ(dm.RepeatInfo("9", "16"), 0);
    EXPECT_EQ(dm.RepeatInfo("77", "16"), 0);
    EXPECT_EQ(dm.RepeatInfo("", ""), 0);
}

TEST_F(EntityData, ReadsLetErrorsPass)
{
    TFiscalDeducation_Mapper record;
    const std::function<void()> reads[] = {
        [&] { dm.FiscalDeducationGroup_Get(edFiscalGrp); },
        [&] { dm.FillDataGrp(1, edFiscalGrp); },
        [&] { dm.FiscalGroup_Fill(); },
        [&] { dm.DeducationGroup_Fill(); },
        [&] { dm.FiscalDeducation_GetNewCode(); },
        [&] { dm.Fiscal_GetCode(1); },
        [&] { dm.DeducationGet_ByTitle("t"); },
        [&] { dm.FiscalDeducation_GetByID(1, cspFiscal, record); },
        [&] { dm.TmpStaff_Count(1, true); },
        [&] { dm.tmpRec_GetID(1, 1, true); },
        [&] { dm.tmpRec_Insert(1, 1, true, 1); },
        [&] { dm.tmpstaffOutPutDetail_Get(1, 1); },
        [&] { dm.tmpstaffOutPutDetail_Insert(1, 1, 0); },
        [&] { dm.RepeatInfo("1", "1"); },
    };
    for (const auto &read : reads) {
        db.failStatement(1, TFault::Locked);
        EXPECT_THROW(read(), TDatabaseError);
    }
}

TEST_F(EntityData, TheViewsTellWhatTheListShows)
{
    for (int type = 0; type <= 3; ++type)
        earning(type + 1, QString("e%1").arg(type), type);
    for (int type = 0; type <= 2; ++type)
        deduction(type + 11, QString("d%1").arg(type), type);
    db.run("update PayrollInfoDetail set UserCode=12 where ID=16");
    EXPECT_EQ(db.rows("select CalcTitle from Fiscal_vw order by Code"),
              QString::fromUtf8("مبلغ\nدرصد\nماهيانه\nثابت"));
    EXPECT_EQ(db.rows("select CalcTitle from Deduction_vw order by Code"),
              QString::fromUtf8("مبلغ\nدرصد\nثابت"));
    EXPECT_EQ(db.text("select PayrollCode from Deduction_vw where Code=11"), "0");
    EXPECT_NE(db.text("select PayrollCode from Deduction_vw where Code=12"), "0");
    const QString codeName = db.text("select CodeName from Fiscal_vw where Code=3");
    EXPECT_TRUE(codeName.contains("3") && codeName.contains("e2")) << codeName.toStdString();
    const QString yes = db.text("select InsuranceTitle from Fiscal_vw where Code=3");
    const QString no = db.text("select TaxTitle from Fiscal_vw where Code=3");
    EXPECT_NE(yes, no);
    EXPECT_TRUE(!yes.isEmpty() && yes.size() <= 3 && !no.isEmpty() && no.size() <= 3);
}

} // namespace
