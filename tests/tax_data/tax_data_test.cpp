#include "support/TestDatabase.h"
#include "tax/Tax_DM_UNT.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class TaxData : public testing::Test {
protected:
    TestDatabase db;
    TTax_DM dm{nullptr};

    void header(int code, const QString &title = "t")
    {
        dm.Tax_GetByID(code);
        ASSERT_TRUE(dm.Tax_Insert({code, title, "c"}));
    }
    void bracket(int code, double from, double to, double percent = 10, const QString &comment = "c")
    {
        ASSERT_TRUE(dm.TmpTax_Insert({code, from, to, percent, comment}));
    }
    int overlaps(int code, int id, double from, double to)
    {
        dm.TmpTax_GetID(code, id, from, to);
        return dm.Temp_QUR->recordCount();
    }
    QString working(int code)
    {
        return db.rows(QString("select FromSalary,ToSalary,[Percent] from TmpTax where TaxMainCode=%1 "
                               "order by FromSalary")
                           .arg(code));
    }
    QString permanent(int code)
    {
        return db.rows(
            QString("select FromSalary,ToSalary,[Percent] from Tax where TaxMainCode=%1 order by FromSalary")
                .arg(code));
    }
};

TEST_F(TaxData, TheFirstCodeIsOneAndTheNextOneMoreThanTheHighest)
{
    EXPECT_EQ(dm.Tax_GetNewCode(), 1);
    header(7);
    header(3);
    EXPECT_EQ(dm.Tax_GetNewCode(), 8);
}

TEST_F(TaxData, ANewHeaderIsReadBackByItsCode)
{
    header(4, QString::fromUtf8("جدول 'ویژه' سال"));
    dm.Tax_GetByID("4");
    ASSERT_EQ(dm.Get_QUR->recordCount(), 1);
    EXPECT_EQ(dm.Get_QUR->asInteger("Code"), 4);
    EXPECT_EQ(dm.Get_QUR->asString("Title"), QString::fromUtf8("جدول 'ویژه' سال"));
    EXPECT_EQ(dm.Get_QUR->asString("Comment"), "c");
}

TEST_F(TaxData, AnUnknownCodeOpensOnNoRow)
{
    dm.Tax_GetByID(99);
    EXPECT_TRUE(dm.Get_QUR->active());
    EXPECT_TRUE(dm.Get_QUR->isEmpty());
}

TEST_F(TaxData, AnUpdateChangesTitleAndCommentNeverTheCode)
{
    header(4);
    dm.Tax_GetByID(4);
    EXPECT_TRUE(dm.Tax_Update({12, "new", "other"}));
    EXPECT_EQ(db.rows("select Code,Title,Comment from TaxMain"), "4|new|other");
}

TEST_F(TaxData, TextsAreCutToTheirColumns)
{
    dm.Tax_GetByID(1);
    ASSERT_TRUE(dm.Tax_Insert({1, QString(100, QChar(0x06CC)), QString(10000, 'x')}));
    EXPECT_EQ(db.text("select Title from TaxMain"), QString(50, QChar(0x06CC)));
    EXPECT_EQ(db.text("select Comment from TaxMain"), QString(100, 'x'));
    ASSERT_TRUE(dm.TmpTax_Insert({1, 0, 1, 0, QString(10000, 'x')}));
    EXPECT_EQ(db.text("select Comment from TmpTax"), QString(50, 'x'));
}

TEST_F(TaxData, ACodeTakenMeanwhileIsRefusedWithFalse)
{
    dm.Tax_GetByID(1);
    db.run("insert into TaxMain(Code,Title,Comment) values(1,'other','')");
    EXPECT_FALSE(dm.Tax_Insert({1, "mine", ""}));
    ASSERT_TRUE(db.connection().lastError());
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::Refused);
    EXPECT_EQ(db.rows("select Code,Title from TaxMain"), "1|other");
    EXPECT_EQ(dm.Get_QUR->state(), TQuery::State::Browse);
}

TEST_F(TaxData, AHeaderDeletedMeanwhileAnswersFalseToItsUpdate)
{
    header(4);
    dm.Tax_GetByID(4);
    db.run("delete from TaxMain");
    EXPECT_FALSE(dm.Tax_Update({4, "new", ""}));
    EXPECT_EQ(db.rows("select Code from TaxMain"), "");
}

TEST_F(TaxData, AFaultInInsertOrUpdateAnswersFalse)
{
    dm.Tax_GetByID(1);
    db.failStatement(1);
    EXPECT_FALSE(dm.Tax_Insert({1, "t", ""}));
    EXPECT_TRUE(dm.Tax_Insert({1, "t", ""}));
    dm.Tax_GetByID(1);
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_FALSE(dm.Tax_Update({1, "u", ""}));
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::ConnectionLost);
    EXPECT_EQ(db.text("select Title from TaxMain"), "t");
}

TEST_F(TaxData, TheListHasOneStatementBeforeAndAnotherAfterTaxGet)
{
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from taxMain");
    dm.Tax_Get();
    EXPECT_EQ(dm.List_QUR->statement().asText(), "select * from TaxMain ");
    EXPECT_FALSE(dm.List_QUR->active());
    header(2, "b");
    header(1, "a");
    dm.List_QUR->open();
    ASSERT_EQ(dm.List_QUR->recordCount(), 2);
    EXPECT_EQ(dm.List_QUR->keyAt(1), 2);
}

TEST_F(TaxData, SeveralHeadersAreDeletedByTheirCodes)
{
    for (int code : {1, 2, 3, 4})
        header(code);
    db.clearTrace();
    dm.Tax_Del("1,3");
    EXPECT_EQ(db.trace(), QStringList{"Delete TaxMain where Code in (1,3)"});
    EXPECT_EQ(db.rows("select Code from TaxMain order by Code"), "2\n4");
    EXPECT_NO_THROW(dm.Tax_Del("77"));
}

TEST_F(TaxData, ATaxTableInUseStaysWithItsBrackets)
{
    header(5);
    bracket(5, 0, 1000);
    ASSERT_TRUE(dm.TaxDetail_Insert(5));
    db.run("insert into CalcMethod(Code,Title,TaxMainCode) values(1,'m',5)");
    db.connection().BeginTrans();
    dm.ClearDataDetail(5);
    EXPECT_THROW(dm.Tax_Del("5"), TDatabaseError);
    db.connection().RollbackTrans();
    EXPECT_EQ(db.text("select count(*) from TaxMain"), "1");
    EXPECT_EQ(permanent(5), "0|1000|10");
}

TEST_F(TaxData, DeletingATaxTableInOneTransactionTakesItsBracketsAndLeavesWorkingRows)
{
    header(5);
    bracket(5, 0, 1000);
    ASSERT_TRUE(dm.TaxDetail_Insert(5));
    db.connection().BeginTrans();
    dm.ClearDataDetail(5);
    dm.Tax_Del("5");
    db.connection().CommitTrans();
    EXPECT_EQ(db.text("select count(*) from TaxMain"), "0");
    EXPECT_EQ(permanent(5), "");
    EXPECT_EQ(working(5), "0|1000|10");
}

TEST_F(TaxData, WorkingRowsAreCopiesOfThePermanentOnesInTheOrderOfTheirLowerBounds)
{
    db.run("insert into TaxMain(Code,Title) values(1,'t')");
    db.run("insert into TaxMain(Code,Title) values(2,'t')");
    db.run("insert into Tax(TaxMainCode,FromSalary,ToSalary,Comment,[Percent]) values(1,2001,3000,'c',20)");
    db.run("insert into Tax(TaxMainCode,FromSalary,ToSalary,Comment,[Percent]) values(1,0,1000,'a',0)");
    db.run("insert into Tax(TaxMainCode,FromSalary,ToSalary,Comment,[Percent]) values(2,5,6,'z',1)");
    db.run("insert into Tax(TaxMainCode,FromSalary,ToSalary,Comment,[Percent]) values(1,1001,2000,'b',10)");
    dm.TmpTax_GetByTaxMainCode(QString("1"));
    ASSERT_EQ(dm.DetailList_QUR->recordCount(), 3);
    QStringList seen;
    for (dm.DetailList_QUR->first(); !dm.DetailList_QUR->eof(); dm.DetailList_QUR->next())
        seen << dm.DetailList_QUR->asString("Comment");
    EXPECT_EQ(seen, (QStringList{"a", "b", "c"}));
    EXPECT_EQ(dm.DetailList_QUR->asInteger("TaxMainCode"), 1);
    EXPECT_EQ(db.text("select count(distinct ID) from TmpTax"), "3");
    EXPECT_EQ(db.text("select count(*) from Tax"), "4");

    dm.ClearDataTempDetail(1);
    dm.FillDataDetail(1);
    EXPECT_EQ(dm.DetailList_QUR->recordCount(), 3);
    EXPECT_EQ(dm.DetailList_QUR->statement().asText(),
              "select * from Tmptax where TaxMainCode=:TaxMainCode order by fromSalary");
}

TEST_F(TaxData, AListReadAgainShowsANewBracketAtItsPlace)
{
    dm.TmpTax_GetByTaxMainCode(1);
    EXPECT_TRUE(dm.DetailList_QUR->isEmpty());
    bracket(1, 1001, 2000);
    bracket(1, 0, 1000);
    dm.DetailList_QUR->close();
    dm.DetailList_QUR->open();
    ASSERT_EQ(dm.DetailList_QUR->recordCount(), 2);
    EXPECT_EQ(dm.DetailList_QUR->asFloat("FromSalary"), 0);
}

TEST_F(TaxData, ABracketIsAddedWithoutOneBeingLoaded)
{
    EXPECT_FALSE(dm.TmpGet_QUR->active());
    bracket(3, 1, 2, 99.5, "it's");
    EXPECT_EQ(db.rows("select TaxMainCode,FromSalary,ToSalary,[Percent],Comment from TmpTax"),
              "3|1|2|99.5|it's");
    bracket(3, 3, 4);
    EXPECT_EQ(db.text("select count(*) from TmpTax"), "2");
}

TEST_F(TaxData, AChangedBracketStaysWithItsTaxTable)
{
    bracket(3, 1, 2);
    dm.TmpTax_GetById(db.text("select ID from TmpTax"));
    EXPECT_TRUE(dm.TmpTax_Update({8, 10, 20, 5, "x"}));
    EXPECT_EQ(db.rows("select TaxMainCode,FromSalary,ToSalary,[Percent],Comment from TmpTax"), "3|10|20|5|x");
}

TEST_F(TaxData, ABracketDeletedMeanwhileAnswersFalseToItsChange)
{
    bracket(3, 1, 2);
    dm.TmpTax_GetById(db.text("select ID from TmpTax"));
    db.run("delete from TmpTax");
    EXPECT_FALSE(dm.TmpTax_Update({3, 10, 20, 5, "x"}));
    EXPECT_EQ(db.rows("select ID from TmpTax"), "");
}

TEST_F(TaxData, FaultsInBracketWritesAnswerFalse)
{
    db.failStatement(1);
    EXPECT_FALSE(dm.TmpTax_Insert({1, 0, 1, 0, ""}));
    bracket(1, 0, 1);
    dm.TmpTax_GetById(db.text("select ID from TmpTax"));
    db.failStatement(1);
    EXPECT_FALSE(dm.TmpTax_Update({1, 5, 6, 0, ""}));
    EXPECT_EQ(working(1), "0|1|10");
}

TEST_F(TaxData, BothBoundsOfABracketBelongToIt)
{
    bracket(1, 0, 1000);
    EXPECT_EQ(overlaps(1, 0, 1000, 2000), 1);
    EXPECT_EQ(overlaps(1, 0, 1000.01, 2000), 0);
    EXPECT_EQ(overlaps(1, 0, 1001, 2000), 0);
    EXPECT_EQ(overlaps(1, 0, 100, 200), 1);
    EXPECT_EQ(overlaps(1, 0, -5, 0), 1);
    EXPECT_EQ(overlaps(1, 0, -5, -1), 0);
    EXPECT_EQ(overlaps(1, 0, -5, 5000), 1);
}

TEST_F(TaxData, ABracketFrom1000DoesNotTouchOneTo999Point99)
{
    bracket(1, 0, 999.99);
    EXPECT_EQ(overlaps(1, 0, 1000, 2000), 0);
}

TEST_F(TaxData, ABracketDoesNotOverlapItselfNorBracketsOfOtherTables)
{
    bracket(1, 0, 1000);
    bracket(2, 500, 600);
    const int id = db.text("select ID from TmpTax where TaxMainCode=1").toInt();
    EXPECT_EQ(overlaps(1, id, 0, 1000), 0);
    EXPECT_EQ(overlaps(2, 0, 0, 499), 0);
    EXPECT_EQ(overlaps(2, 0, 0, 500), 1);
}

TEST_F(TaxData, TheOverlapQueryReadsAsGiven)
{
    db.clearTrace();
    dm.TmpTax_GetID(3, 12, 1000.5, 123456789012345);
    EXPECT_EQ(db.trace(), QStringList{"select ID from Tmptax where TaxMainCode=3 and ID<>12 and "
                                      "fromsalary<=123456789012345 and tosalary>=1000.5"});
}

TEST_F(TaxData, SavingReplacesTheWholeSetAndSavingTwiceWritesItOnce)
{
    header(1);
    bracket(1, 1001, 2000);
    bracket(1, 0, 1000, 0);
    ASSERT_TRUE(dm.TaxDetail_Insert(1));
    ASSERT_TRUE(dm.TaxDetail_Insert("1"));
    EXPECT_EQ(permanent(1), "0|1000|0\n1001|2000|10");
    dm.TaxDetail_Del(db.text("select ID from TmpTax where FromSalary=0"));
    ASSERT_TRUE(dm.TaxDetail_Insert(1));
    EXPECT_EQ(permanent(1), "1001|2000|10");
}

TEST_F(TaxData, AReplacementThatFailsAnywhereLeavesTheOldBrackets)
{
    header(1);
    bracket(1, 0, 1000);
    ASSERT_TRUE(dm.TaxDetail_Insert(1));
    for (int statement = 1; statement <= 4; ++statement) { // begin, clear, copy, commit
        db.failStatement(statement);
        EXPECT_FALSE(dm.TaxDetail_Insert(1)) << statement;
        EXPECT_EQ(permanent(1), "0|1000|10") << statement;
        EXPECT_EQ(working(1), "0|1000|10") << statement;
        EXPECT_FALSE(db.connection().InTransaction()) << statement;
    }
    db.failStatement(0);
    EXPECT_TRUE(dm.TaxDetail_Insert(1));
    EXPECT_EQ(permanent(1), "0|1000|10");
}

TEST_F(TaxData, ClearingTouchesOnlyTheTableAsked)
{
    for (int code : {1, 2}) {
        header(code);
        bracket(code, 0, 1);
        ASSERT_TRUE(dm.TaxDetail_Insert(code));
    }
    dm.ClearDataTempDetail(1);
    EXPECT_EQ(working(1), "");
    EXPECT_EQ(working(2), "0|1|10");
    EXPECT_EQ(permanent(1), "0|1|10");
    dm.ClearDataDetail(2);
    EXPECT_EQ(permanent(2), "");
    EXPECT_EQ(permanent(1), "0|1|10");
    EXPECT_NO_THROW(dm.ClearDataDetail(55));
    EXPECT_NO_THROW(dm.ClearDataTempDetail(55));
}

TEST_F(TaxData, WorkingBracketsAreDeletedByAListOfIds)
{
    for (int i = 0; i < 4; ++i)
        bracket(1, i * 10, i * 10 + 5);
    const QStringList ids = db.rows("select ID from TmpTax order by FromSalary").split('\n');
    dm.TaxDetail_Del(ids[0] + ',' + ids[2]);
    EXPECT_EQ(working(1), "10|15|10\n30|35|10");
}

TEST_F(TaxData, AmountsKeepEveryDigitThroughSavingAndReading)
{
    header(1);
    const double amounts[] = {123456789012345, 999999999.123456, 0.1, 0.000000001, 99999999999999};
    for (double amount : amounts)
        bracket(1, amount, amount, amount > 100 ? 12.345678901 : amount);
    ASSERT_TRUE(dm.TaxDetail_Insert(1));
    dm.ClearDataTempDetail(1);
    dm.TmpTax_GetByTaxMainCode(1);
    QList<double> seen;
    for (dm.DetailList_QUR->first(); !dm.DetailList_QUR->eof(); dm.DetailList_QUR->next()) {
        seen << dm.DetailList_QUR->asFloat("FromSalary");
        EXPECT_EQ(dm.DetailList_QUR->asFloat("FromSalary"), dm.DetailList_QUR->asFloat("ToSalary"));
    }
    EXPECT_EQ(seen, (QList<double>{0.000000001, 0.1, 999999999.123456, 99999999999999, 123456789012345}));
}

TEST_F(TaxData, WorkingRowsAreCountedByTheirTable)
{
    EXPECT_EQ(dm.TmpTax_Count(1), 0);
    bracket(1, 0, 1000);
    bracket(1, 1001, 2000);
    bracket(2, 0, 1000);
    EXPECT_EQ(dm.TmpTax_Count("1"), 2);
}

TEST_F(TaxData, TheListsNumberTheirRows)
{
    for (int code : {4, 9})
        header(code);
    dm.Tax_Get();
    dm.List_QUR->open();
    dm.List_QUR->last();
    EXPECT_EQ(dm.List_QUR->asInteger("Row"), 2);
    bracket(9, 1001, 2000);
    bracket(9, 0, 1000);
    dm.TmpTax_OpenList(9);
    EXPECT_EQ(dm.DetailList_QUR->asInteger("Row"), 1);
    dm.DetailList_QUR->next();
    EXPECT_EQ(dm.DetailList_QUR->asInteger("Row"), 2);
}

TEST_F(TaxData, WorkingRowsMoveToAnotherCodeAsAWhole)
{
    bracket(1, 0, 1000);
    bracket(1, 1001, 2000);
    bracket(9, 7, 8); // left behind under the new code
    for (int statement = 1; statement <= 3; ++statement) {
        db.failStatement(statement, TFault::Locked);
        EXPECT_THROW(dm.TmpTax_MoveToCode(1, 9), TDatabaseError);
        db.failStatement(0);
        EXPECT_FALSE(db.connection().InTransaction());
        EXPECT_EQ(working(1), "0|1000|10\n1001|2000|10") << statement;
        EXPECT_EQ(working(9), "7|8|10") << statement;
    }
    dm.TmpTax_MoveToCode(1, 9);
    EXPECT_FALSE(db.connection().InTransaction());
    EXPECT_EQ(working(1), "");
    EXPECT_EQ(working(9), "0|1000|10\n1001|2000|10");
    EXPECT_EQ(dm.DetailList_QUR->recordCount(), 2);
    EXPECT_EQ(dm.DetailList_QUR->asInteger("TaxMainCode"), 9);
}

TEST_F(TaxData, AHeaderIsAddedWithoutOneBeingLoaded)
{
    EXPECT_FALSE(dm.Get_QUR->active());
    EXPECT_TRUE(dm.Tax_Insert({4, "t", "c"}));
    EXPECT_EQ(db.rows("select Code, Title, Comment from TaxMain"), "4|t|c");
}

TEST_F(TaxData, ReadsLetErrorsPass)
{
    const std::function<void()> reads[] = {
        [&] { dm.Tax_GetByID(1); },         [&] { dm.Tax_GetNewCode(); },
        [&] { dm.FillDataDetail(1); },      [&] { dm.TmpTax_GetByTaxMainCode(1); },
        [&] { dm.TmpTax_GetById(1); },      [&] { dm.TmpTax_GetID(1, 0, 0, 1); },
        [&] { dm.TaxDetail_Del("1"); },     [&] { dm.ClearDataDetail(1); },
        [&] { dm.ClearDataTempDetail(1); }, [&] { dm.Tax_Del("1"); },
        [&] { dm.TmpTax_Count(1); },
    };
    for (const auto &read : reads) {
        db.failStatement(1, TFault::Locked);
        EXPECT_THROW(read(), TDatabaseError);
    }
}

} // namespace
