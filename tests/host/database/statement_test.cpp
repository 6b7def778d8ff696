#include "host/database/Statement.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Statement, AnIntegerIsBoundAndWrittenInDecimal)
{
    const TStatement statement = TStatement("select * from CalcMethod where code=").integer(12);
    EXPECT_EQ(statement.boundText(), "select * from CalcMethod where code=?");
    EXPECT_EQ(statement.values(), QVariantList{12LL});
    EXPECT_EQ(statement.asText(), "select * from CalcMethod where code=12");
}

TEST(Statement, ATextOfDigitsIsAnIntegerAndAnyOtherTextIsNull)
{
    EXPECT_EQ(TStatement("x=").integer(u" 007 "_s).asText(), "x=7");
    EXPECT_EQ(TStatement("x=").integer(u"7;drop table T"_s).asText(), "x=null");
    EXPECT_EQ(TStatement("x=").integer(QVariant()).asText(), "x=null");
}

TEST(Statement, AQuoteInATextIsDoubledInTheLogAndNeverInTheBoundText)
{
    const TStatement statement = TStatement("Title=").text(u"o'clock"_s);
    EXPECT_EQ(statement.boundText(), "Title=?");
    EXPECT_EQ(statement.values(), QVariantList{u"o'clock"_s});
    EXPECT_EQ(statement.asText(), "Title='o''clock'");
}

TEST(Statement, ANullTextIsBoundAsAnEmptyOne)
{
    const TStatement statement = TStatement("Title=").text(QString());
    EXPECT_FALSE(statement.values().first().isNull());
    EXPECT_EQ(statement.asText(), "Title=''");
}

TEST(Statement, AQuestionMarkInALiteralIsNoPlace)
{
    const TStatement statement = TStatement("select '?' where a=").integer(1).sql(" and b='?'");
    EXPECT_EQ(statement.asText(), "select '?' where a=1 and b='?'");
}

TEST(Statement, AnAmountKeepsFifteenDigits)
{
    EXPECT_EQ(TStatement("x=").amount(123456789012.345).asText(), "x=123456789012.345");
    EXPECT_EQ(TStatement("x=").amount(1e15).asText(), "x=1000000000000000");
}

TEST(Statement, AFormatFillsItsPlacesInOrder)
{
    const TStatement statement =
        TStatement::format("Delete From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)", {813, 2});
    EXPECT_EQ(statement.asText(), "Delete From CodeLock_TBL Where (Status=813) AND (Com_Index = 2)");
    EXPECT_EQ(statement.values(), (QVariantList{813LL, 2LL}));
}

TEST(Statement, AQuotedPlaceOfAFormatLosesItsQuotesAndBindsText)
{
    const TStatement statement = TStatement::format("where Code='%s' and Name='%s'", {5, "x'y"});
    EXPECT_EQ(statement.boundText(), "where Code=? and Name=?");
    EXPECT_EQ(statement.asText(), "where Code='5' and Name='x''y'");
}

TEST(Statement, APercentSignThatIsNoPlaceStays)
{
    EXPECT_EQ(TStatement::format("select [Percent]%10, 5%", {}).asText(), "select [Percent]%10, 5%");
}

TEST(Statement, AListOfIntegersBindsEachAndLeavesOutWhatIsNone)
{
    const TStatement statement = TStatement("where ID in (").integers(u"1, 3,x,,7) or (1=1"_s).sql(")");
    EXPECT_EQ(statement.asText(), "where ID in (1,3)");
    EXPECT_EQ(statement.values().size(), 2);
}

TEST(Statement, AnEmptyListOfIntegersMatchesNoRow)
{
    EXPECT_EQ(TStatement("where ID in (").integers(QString()).sql(")").asText(), "where ID in (null)");
}

TEST(Statement, AnAppendedStatementBringsItsValues)
{
    TStatement inner = TStatement("a=").integer(1).sql(" and b=").text(u"x"_s);
    const TStatement outer = TStatement("where c=").integer(9).sql(" and ").append(inner);
    EXPECT_EQ(outer.asText(), "where c=9 and a=1 and b='x'");
}

TEST(Statement, ThatTakesInAConditionOfEveryRowIsOneItself)
{
    const TStatement plain = TStatement("a=").integer(1);
    const TStatement search = TStatement("f(a)").walking();
    EXPECT_FALSE(TStatement("where ").append(plain).isWalking());
    EXPECT_TRUE(TStatement("where ").append(search).append(plain).isWalking());
}
