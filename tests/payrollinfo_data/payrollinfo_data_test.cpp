#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

/// Twenty-five values that tell their places: field n (1-based) holds "v<n>".
TPayrollInfo_Mapper numbered()
{
    return {"v1",  "v2",  "v3",  "v4",  "v5",  "v6",  "v7",  "v8",  "v9",  "v10", "v11", "v12", "v13",
            "v14", "v15", "v16", "v17", "v18", "v19", "v20", "v21", "v22", "v23", "v24", "v25"};
}

class PayrollInfoData : public testing::Test {
protected:
    TestDatabase db;
    TPayrollInfo_DM dm{nullptr};

    TPayrollInfo_Mapper read()
    {
        TPayrollInfo_Mapper info;
        dm.PayrollInfo_Get(info);
        return info;
    }
    QString value(int code)
    {
        return db.text(QString("select Value from PayrollInfo where Code=%1").arg(code));
    }
};

TEST_F(PayrollInfoData, WhatIsSavedIsReadBackWithTheRowsOfANewDatabase)
{
    EXPECT_EQ(db.rows("select min(Code),max(Code),count(*) from PayrollInfo"), "6|30|25");
    EXPECT_EQ(read(), TPayrollInfo_Mapper());
    dm.PayrollInfo_Insert(numbered());
    EXPECT_EQ(read(), numbered());
    for (int code = 6; code <= 30; ++code)
        EXPECT_EQ(value(code), QString("v%1").arg(code - 5));
}

TEST_F(PayrollInfoData, TheFieldsStandInTheOrderOfTheirCodes)
{
    dm.PayrollInfo_Insert(numbered());
    const TPayrollInfo_Mapper info = read();
    EXPECT_EQ(info._FactoryID, value(6));
    EXPECT_EQ(info._LeisureIns, value(11));
    EXPECT_EQ(info._CaseNo, value(15));
    EXPECT_EQ(info._NationalNo, value(18));
    EXPECT_EQ(info._BranchName, value(20));
    EXPECT_EQ(info._SignaturIdNationalFirst, value(25));
    EXPECT_EQ(info._SignaturPositionSecond, value(30));
}

TEST_F(PayrollInfoData, RowsBelowSixShiftEveryValueOnReadingOnly)
{
    for (int code = 1; code <= 5; ++code)
        db.run(QString("insert into PayrollInfo(Code,Value) values(%1,'x%1')").arg(code));
    dm.PayrollInfo_Insert(numbered());
    EXPECT_EQ(value(6), "v1");
    EXPECT_EQ(value(1), "x1");
    const TPayrollInfo_Mapper info = read();
    EXPECT_EQ(info._FactoryID, "x1");
    EXPECT_EQ(info._Ejtemae, "x5");
    EXPECT_EQ(info._LeisureIns, "v1");
    EXPECT_EQ(info._SignaturPositionSecond, "v20");
}

TEST_F(PayrollInfoData, AMissingRowStaysMissingSilentlyAndShiftsTheReading)
{
    db.run("delete from PayrollInfo where Code=7");
    EXPECT_NO_THROW(dm.PayrollInfo_Insert(numbered()));
    EXPECT_EQ(db.text("select count(*) from PayrollInfo"), "24");
    const TPayrollInfo_Mapper info = read();
    EXPECT_EQ(info._FactoryID, "v1");
    EXPECT_EQ(info._FactoryName, "v3");
    EXPECT_EQ(info._SignaturPositionSecond, "");
}

TEST_F(PayrollInfoData, QuotesAndPersianTextsAreStoredIntact)
{
    TPayrollInfo_Mapper info = numbered();
    info._FactoryName = QString::fromUtf8("کارگاه 'ي و ی' ؟ ? :name --");
    info._FactoryAdrr = "''; delete from PayrollInfo";
    info._EmployerName = QString();
    dm.PayrollInfo_Insert(info);
    info._EmployerName = "";
    EXPECT_EQ(read(), info);
}

TEST_F(PayrollInfoData, AllValuesGoInOneBatchOfTwentyFiveStatements)
{
    db.clearTrace();
    db.failStatement(0);
    dm.PayrollInfo_Insert(numbered());
    EXPECT_EQ(db.statementCount(), 1);
    const QString batch = db.trace().value(0);
    EXPECT_TRUE(batch.startsWith("update PayrollInfo set Value='v1' where code=6 update PayrollInfo set "
                                 "Value='v2' where code=7 update PayrollInfo"))
        << batch.toStdString();
    EXPECT_TRUE(batch.endsWith(" update PayrollInfo set Value='v25' where code=30"));
    EXPECT_EQ(batch.count("update PayrollInfo set Value="), 25);
}

TEST_F(PayrollInfoData, ErrorsOfTheSettingsReachTheCaller)
{
    db.failStatement(1, TFault::Locked);
    EXPECT_THROW(dm.PayrollInfo_Insert(numbered()), TDatabaseError);
    EXPECT_EQ(read(), TPayrollInfo_Mapper());
    db.failStatement(1);
    EXPECT_THROW(read(), TDatabaseError);
    db.failStatement(1);
    EXPECT_THROW(dm.PayRollInfoDetill_GetByID(1), TDatabaseError);
}

TEST_F(PayrollInfoData, TheItemsAreListedWithTheTitlesOfWhatTheyAreLinkedTo)
{
    db.run("delete from PayrollInfoDetail");
    db.run("insert into Fiscal(Code,Title,GrpCode,CalcType) values(3,'earning',0,0)");
    db.run("insert into Deduction(Code,Title,GrpCode,CalcType) values(4,'deduction',0,0)");
    db.run("insert into PayrollInfoDetail(Type,Code,Title,UserCode) values(0,1,'a',3)");
    db.run("insert into PayrollInfoDetail(Type,Code,Title,UserCode) values(1,2,'b',4)");
    db.run("insert into PayrollInfoDetail(Type,Code,Title,UserCode) values(1,3,'c',3)");
    const QString before = dm.PayrollDetailList_QUR->statement().asText();
    EXPECT_TRUE(before.startsWith("select *,\ncase Type\n"));
    for (int round = 0; round < 2; ++round) {
        dm.PayrollDetailList_QUR->open();
        QStringList seen;
        TQuery &list = *dm.PayrollDetailList_QUR;
        for (list.first(); !list.eof(); list.next())
            seen << list.asString("Title") + '|' + list.asString("UserTitle");
        // A deduction item that names an earning's code shows nothing.
        EXPECT_EQ(seen, (QStringList{"a|earning", "b|deduction", "c|"}));
        dm.PayRollInfoDetill_Get();
        EXPECT_FALSE(list.active());
        EXPECT_TRUE(list.statement().asText().endsWith("from PayrollInfoDetail as p "));
    }
}

TEST_F(PayrollInfoData, AnItemIsLinkedAndNothingElseOfItChanges)
{
    const QString id = db.text("select min(ID) from PayrollInfoDetail");
    const QString select = "select Type,Code,Title from PayrollInfoDetail where ID=" + id;
    const QString before = db.rows(select);
    const QString rows = db.text("select count(*) from PayrollInfoDetail");
    db.run("insert into Fiscal(Code,Title,GrpCode,CalcType) values(12,'earning',0,0)");
    dm.PayRollInfoDetill_GetByID(id);
    ASSERT_EQ(dm.PayrollDetailGet_QUR->recordCount(), 1);
    EXPECT_TRUE(dm.PayrollInfoDetails_Insert({12}));
    EXPECT_EQ(db.text("select UserCode from PayrollInfoDetail where ID=" + id), "12");
    EXPECT_EQ(db.rows(select), before);
    EXPECT_EQ(db.text("select count(*) from PayrollInfoDetail"), rows);
}

TEST_F(PayrollInfoData, AFaultOrAMissingItemAnswersFalse)
{
    const QString id = db.text("select min(ID) from PayrollInfoDetail");
    dm.PayRollInfoDetill_GetByID(id);
    db.failStatement(1);
    EXPECT_FALSE(dm.PayrollInfoDetails_Insert({12}));
    EXPECT_TRUE(db.connection().lastError());
    dm.PayRollInfoDetill_GetByID(999999);
    EXPECT_FALSE(dm.PayrollInfoDetails_Insert({12}));
}

TEST_F(PayrollInfoData, TheFixedItemsOfInsuranceAndTaxDeductionAreDeductions)
{
    EXPECT_EQ(db.rows("select ID,Type from PayrollInfoDetail where ID in (16,17) order by ID"), "16|1\n17|1");
}

} // namespace
