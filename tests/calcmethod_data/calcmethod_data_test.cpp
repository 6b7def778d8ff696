#include "calcmethod/CalcMethod_DM_UNT.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

class CalcMethodData : public testing::Test {
protected:
    TestDatabase db;
    TCalcMethod_DM dm{nullptr};

    static TCalcMethod_Mapper method(int code, const QString &title = "m")
    {
        TCalcMethod_Mapper method;
        method._Code = code;
        method._Title = title;
        return method;
    }
    void add(const TCalcMethod_Mapper &method)
    {
        TCalcMethod_Mapper nothing;
        dm.CalcMethod_GetById(method._Code, nothing);
        ASSERT_TRUE(dm.CalcMethod_Insert(method));
    }
    TCalcMethod_Mapper stored(int code)
    {
        TCalcMethod_Mapper method;
        dm.CalcMethod_GetById(code, method);
        return method;
    }
    QString titles() { return db.rows("select Code, Title from CalcMethod order by Code"); }
};

TCalcMethod_Mapper whole()
{
    TCalcMethod_Mapper method;
    method._Code = 5;
    method._Title = QString::fromUtf8("روش 'ویژه' كارگاه");
    method._StaffIns = 7.123456789;
    method._EmployerIns = 20.5;
    method._OverTime = 120;
    method._TaxMainCode = 3;
    method._DailyIns = 12345678901.2345;
    method._DecTax = true;
    method._Maskok = 4;
    method._LeaveCeil = 2.5;
    method._OutPut = 7.33;
    method._Comment = "comment";
    method._Insurance = true;
    method._Tax = true;
    method._BedBes = true;
    method._Loan = true;
    method._OverDis = true;
    method._Entrance = "08:00";
    method._Exit = "16:00";
    return method;
}

void expectSame(const TCalcMethod_Mapper &seen, const TCalcMethod_Mapper &expected)
{
    EXPECT_EQ(seen._Code, expected._Code);
    EXPECT_EQ(seen._Title, expected._Title);
    EXPECT_EQ(seen._StaffIns, expected._StaffIns);
    EXPECT_EQ(seen._EmployerIns, expected._EmployerIns);
    EXPECT_EQ(seen._OverTime, expected._OverTime);
    EXPECT_EQ(seen._TaxMainCode, expected._TaxMainCode);
    EXPECT_EQ(seen._DailyIns, expected._DailyIns);
    EXPECT_EQ(seen._DecTax, expected._DecTax);
    EXPECT_EQ(seen._Maskok, expected._Maskok);
    EXPECT_EQ(seen._LeaveCeil, expected._LeaveCeil);
    EXPECT_EQ(seen._OutPut, expected._OutPut);
    EXPECT_EQ(seen._Comment, expected._Comment);
    EXPECT_EQ(seen._Insurance, expected._Insurance);
    EXPECT_EQ(seen._Tax, expected._Tax);
    EXPECT_EQ(seen._BedBes, expected._BedBes);
    EXPECT_EQ(seen._Loan, expected._Loan);
    EXPECT_EQ(seen._OverDis, expected._OverDis);
    EXPECT_EQ(seen._Entrance, expected._Entrance);
    EXPECT_EQ(seen._Exit, expected._Exit);
}

TEST_F(CalcMethodData, TheFirstCodeIsOneAndTheNextOneMoreThanTheHighest)
{
    EXPECT_EQ(dm.CalcMethod_GetNewCode(), 1);
    add(method(7));
    add(method(3));
    EXPECT_EQ(dm.CalcMethod_GetNewCode(), 8);
}

TEST_F(CalcMethodData, EveryColumnIsReadBackAsItWasSaved)
{
    db.run("insert into TaxMain(Code,Title) values(3,'t')");
    add(whole());
    expectSame(stored(5), whole());
    EXPECT_EQ(db.rows("select StaffIns,EmployerIns,OverTime,TaxMainCode,Maskok,OutPut from CalcMethod"),
              "7.123456789|20.5|120|3|4|7.33");
    EXPECT_EQ(db.rows("select DecTax,Insurance,Tax,BedBes,Loan,OverDis,Entrance,[Exit] from CalcMethod"),
              "1|1|1|1|1|1|08:00|16:00");
}

TEST_F(CalcMethodData, EveryColumnIsChangedByAnUpdateTheCodeIncluded)
{
    db.run("insert into TaxMain(Code,Title) values(3,'t')");
    add(method(1));
    stored(1);
    ASSERT_TRUE(dm.CalcMethod_Update(whole()));
    expectSame(stored(5), whole());
    EXPECT_EQ(db.text("select count(*) from CalcMethod"), "1");

    ASSERT_TRUE(dm.CalcMethod_Update(method(1)));
    expectSame(stored(1), method(1));
}

TEST_F(CalcMethodData, AnUnknownCodeGivesAnEmptyRecordAndAQueryOpenOnNoRow)
{
    TCalcMethod_Mapper seen = whole();
    dm.CalcMethod_GetById(99, seen);
    expectSame(seen, TCalcMethod_Mapper());
    EXPECT_TRUE(dm.Get_QUR->active());
    EXPECT_TRUE(dm.Get_QUR->isEmpty());
}

TEST_F(CalcMethodData, TheRowStaysOpenAfterReading)
{
    add(method(4, "four"));
    stored(4);
    EXPECT_TRUE(dm.Get_QUR->active());
    ASSERT_EQ(dm.Get_QUR->recordCount(), 1);
    EXPECT_EQ(dm.Get_QUR->asString("Title"), "four");
}

TEST_F(CalcMethodData, OnlyAStoredCodeIsFound)
{
    add(method(4));
    EXPECT_TRUE(dm.CalcMedtho_GetCode(4));
    EXPECT_TRUE(dm.CalcMedtho_GetCode("4"));
    for (const QVariant &code : {QVariant(5), QVariant(0), QVariant(-4), QVariant(), QVariant("x"),
                                 QVariant("4 or 1=1"), QVariant("999999999999999")})
        EXPECT_FALSE(dm.CalcMedtho_GetCode(code)) << code.toString().toStdString();
}

TEST_F(CalcMethodData, TheStatementsReadAsGiven)
{
    db.clearTrace();
    stored(12);
    dm.CalcMedtho_GetCode(12);
    dm.CalcMethod_GetNewCode();
    EXPECT_TRUE(dm.CalcMethod_Delete(12));
    EXPECT_EQ(db.trace(), (QStringList{"select * from CalcMethod where code=12",
                                       "select code from CalcMethod where code=12",
                                       "select isnull(max(code),0)+1 from CalcMethod",
                                       "delete from CalcMethod where Code=12"}));
    dm.CalcMethod_Get();
    EXPECT_EQ(
        dm.List_QUR->statement().asText(),
        QString::fromUtf8(
            "select *,Case DecTax when 0 then 'دارد' when 1 then 'ندارد' end as DecTaxTitle from CalcMethod_VW "));
    EXPECT_FALSE(dm.List_QUR->active());
}

TEST_F(CalcMethodData, TheListSaysThatAMethodHasTheDeductionWhenItsFlagIsNotSet)
{
    TCalcMethod_Mapper with = method(1);
    with._DecTax = false;
    TCalcMethod_Mapper without = method(2);
    without._DecTax = true;
    add(with);
    add(without);
    dm.CalcMethod_Get();
    dm.List_QUR->open();
    ASSERT_EQ(dm.List_QUR->recordCount(), 2);
    dm.List_QUR->first();
    EXPECT_EQ(dm.List_QUR->asString("DecTaxTitle"), QString::fromUtf8("دارد"));
    dm.List_QUR->next();
    EXPECT_EQ(dm.List_QUR->asString("DecTaxTitle"), QString::fromUtf8("ندارد"));
}

TEST_F(CalcMethodData, TheListHasAllColumnsAndTheTitlesThatBelongToThem)
{
    db.run("insert into TaxMain(Code,Title) values(3,'table three')");
    add(whole());
    add(method(9));
    dm.CalcMethod_Get();
    dm.List_QUR->open();
    for (const char *field : {"Code",        "Title",    "StaffIns",    "EmployerIns", "DailyIns", "OverTime",
                              "TaxMainCode", "DecTax",   "Maskok",      "LeaveCeil",   "OutPut",   "Comment",
                              "Insurance",   "Tax",      "BedBes",      "Loan",        "OverDis",  "Entrance",
                              "Exit",        "TaxTitle", "MaskokTitle", "DecTaxTitle"})
        EXPECT_GE(dm.List_QUR->fieldIndex(field), 0) << field;
    ASSERT_EQ(dm.List_QUR->recordCount(), 2);
    dm.List_QUR->first();
    EXPECT_EQ(dm.List_QUR->asString("TaxTitle"), "table three");
    EXPECT_EQ(dm.List_QUR->asString("MaskokTitle"), "4");
    EXPECT_EQ(dm.List_QUR->asFloat("DailyIns"), 12345678901.2345);
    dm.List_QUR->next();
    EXPECT_EQ(dm.List_QUR->asInteger("Code"), 9) << "a method without a tax table is listed too";
    EXPECT_EQ(dm.List_QUR->asString("TaxTitle"), "");
}

TEST_F(CalcMethodData, AmountsKeepTheirFifteenDigits)
{
    for (const double amount : {123456789012345.0, 999999.123456789, 0.000000001, 0.1}) {
        TCalcMethod_Mapper method = this->method(1);
        method._DailyIns = amount;
        method._LeaveCeil = amount;
        add(method);
        EXPECT_EQ(stored(1)._DailyIns, amount);
        EXPECT_EQ(stored(1)._LeaveCeil, amount);
        ASSERT_TRUE(dm.CalcMethod_Delete(1));
    }
}

TEST_F(CalcMethodData, TextsAreCutToTheirColumns)
{
    TCalcMethod_Mapper method = this->method(1, QString(10000, QChar(0x06CC)));
    method._Comment = QString(10000, 'x');
    method._Entrance = "08:00:00";
    add(method);
    EXPECT_EQ(stored(1)._Title, QString(50, QChar(0x06CC)));
    EXPECT_EQ(stored(1)._Comment, QString(100, 'x'));
    EXPECT_EQ(stored(1)._Entrance, "08:00");
}

TEST_F(CalcMethodData, WhatReadsLikeSqlIsStoredAsText)
{
    const QString text = QString::fromUtf8("'; delete from CalcMethod; -- \" % _ [ 😀");
    add(method(1, text));
    EXPECT_EQ(stored(1)._Title, text);
}

TEST_F(CalcMethodData, ACodeTakenMeanwhileIsRefusedWithFalse)
{
    stored(1);
    db.run("insert into CalcMethod(Code,Title) values(1,'other')");
    EXPECT_FALSE(dm.CalcMethod_Insert(method(1, "mine")));
    ASSERT_TRUE(db.connection().lastError());
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::Refused);
    EXPECT_EQ(titles(), "1|other");
    EXPECT_EQ(dm.Get_QUR->state(), TQuery::State::Browse);
}

TEST_F(CalcMethodData, AnUpdateToACodeOfAnotherMethodIsRefusedWithFalse)
{
    add(method(1, "one"));
    add(method(2, "two"));
    stored(2);
    EXPECT_FALSE(dm.CalcMethod_Update(method(1, "mine")));
    EXPECT_EQ(titles(), "1|one\n2|two");
}

TEST_F(CalcMethodData, AMethodDeletedMeanwhileAnswersFalseToItsUpdate)
{
    add(method(4));
    stored(4);
    db.run("delete from CalcMethod");
    EXPECT_FALSE(dm.CalcMethod_Update(method(4, "new")));
    EXPECT_EQ(titles(), "");
}

TEST_F(CalcMethodData, AFaultInAWriteAnswersFalseAndTheNextTryWorks)
{
    for (const TFault fault : {TFault::Refused, TFault::Locked, TFault::DiskFull, TFault::ConnectionLost}) {
        stored(1);
        db.failStatement(1, fault);
        EXPECT_FALSE(dm.CalcMethod_Insert(method(1, "first")));
        EXPECT_EQ(db.connection().lastError()->fault(), fault);
        EXPECT_EQ(titles(), "");
        EXPECT_TRUE(dm.CalcMethod_Insert(method(1, "first")));

        stored(1);
        db.failStatement(1, fault);
        EXPECT_FALSE(dm.CalcMethod_Update(method(1, "second")));
        EXPECT_EQ(titles(), "1|first");
        EXPECT_TRUE(dm.CalcMethod_Update(method(1, "second")));
        EXPECT_EQ(titles(), "1|second");

        db.failStatement(1, fault);
        EXPECT_FALSE(dm.CalcMethod_Delete(1));
        EXPECT_EQ(titles(), "1|second");
        EXPECT_TRUE(dm.CalcMethod_Delete(1));
    }
}

TEST_F(CalcMethodData, OnlyTheMethodAskedIsDeletedAndAMissingOneIsNoFailure)
{
    add(method(1));
    add(method(2));
    EXPECT_TRUE(dm.CalcMethod_Delete(1));
    EXPECT_EQ(titles(), "2|m");
    EXPECT_TRUE(dm.CalcMethod_Delete(77));
    EXPECT_EQ(titles(), "2|m");
}

TEST_F(CalcMethodData, AMethodThatAnOrderRefersToStays)
{
    add(method(1));
    db.run("insert into Recruitment(Code,CalcMethodCode) values(10,1)");
    EXPECT_FALSE(dm.CalcMethod_Delete(1));
    ASSERT_TRUE(db.connection().lastError());
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::Refused);
    EXPECT_EQ(titles(), "1|m");
}

TEST_F(CalcMethodData, ReadsLetErrorsPass)
{
    TCalcMethod_Mapper method;
    const std::function<void()> reads[] = {
        [&] { dm.CalcMethod_GetById(1, method); },
        [&] { dm.CalcMedtho_GetCode(1); },
        [&] { dm.CalcMethod_GetNewCode(); },
    };
    for (const auto &read : reads) {
        db.failStatement(1, TFault::Locked);
        EXPECT_THROW(read(), TDatabaseError);
    }
}

} // namespace
