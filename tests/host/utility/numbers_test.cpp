#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Method_declare_unt.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(StrToFloat, DigitsOfAllThreeScriptsWithSeparators)
{
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM("1,234.5"), 1234.5);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM(QString::fromUtf8("۱٬۲۳۴٫۵")), 1234.5);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM(QString::fromUtf8("۱۲/۵")), 12.5);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM(QString::fromUtf8("١\u200c٢٣")), 123);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM(".5"), 0.5);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM("5."), 5);
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM("123456789012345"), 123456789012345.0);
}

TEST(StrToFloat, WhatIsNoNumberIsZero)
{
    for (const QString &text :
         {QString(), QString("abc"), QString("1.2.3"), QString("-"), QString(400, u'9')})
        EXPECT_EQ(StrToFloat_ZLM(text), 0) << text.toStdString();
}

TEST(FloatToStr, TheShortestTextWithoutAnExponent)
{
    EXPECT_EQ(FloatToStr_ZLM(0), "0");
    EXPECT_EQ(FloatToStr_ZLM(-0.0), "0");
    EXPECT_EQ(FloatToStr_ZLM(1), "1");
    EXPECT_EQ(FloatToStr_ZLM(100), "100");
    EXPECT_EQ(FloatToStr_ZLM(0.1), "0.1");
    EXPECT_EQ(FloatToStr_ZLM(0.1 + 0.2), "0.3");
    EXPECT_EQ(FloatToStr_ZLM(-2.5), "-2.5");
    EXPECT_EQ(FloatToStr_ZLM(1234567.5), "1234567.5");
    EXPECT_EQ(FloatToStr_ZLM(1e15), "1000000000000000");
    EXPECT_EQ(FloatToStr_ZLM(1e20), "100000000000000000000");
    EXPECT_EQ(FloatToStr_ZLM(1e-7), "0.0000001");
    EXPECT_EQ(FloatToStr_ZLM(123456789012345), "123456789012345");
    EXPECT_EQ(FloatToStr_ZLM(0.123456789012345), "0.123456789012345");
}

TEST(FloatToStr, NumbersOfFifteenDigitsComeBackAsTheyWere)
{
    for (const char *text :
         {"123456789012.345", "99999999999999.9", "1.00000000000001", "1234567890123.45"}) {
        EXPECT_EQ(FloatToStr_ZLM(QString(text).toDouble()), text);
        EXPECT_EQ(FloatToStr_ZLM(-QString(text).toDouble()), QString("-") + text);
    }
}

TEST(FloatToStr, WhatIsNoNumberIsZero)
{
    EXPECT_EQ(FloatToStr_ZLM(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(FloatToStr_ZLM(std::nan("")), "0");
}

TEST(FloatToStr, TheLocaleMakesNoDifference)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Persian));
    EXPECT_EQ(FloatToStr_ZLM(1234.5), "1234.5");
    EXPECT_EQ(RoundedText_ZLM(1234.567, 2), "1234.57");
    EXPECT_DOUBLE_EQ(StrToFloat_ZLM("1,234.5"), 1234.5);
    QLocale::setDefault(before);
}

TEST(Rounding, AmountsAreShownWithAllTheDecimalPlacesThatTheTablesKeep)
{
    EXPECT_EQ(NumericPrecisionCount_ZLM(), 9);
    EXPECT_EQ(RoundedText_ZLM(7.123456789), "7.123456789");
    EXPECT_EQ(RoundedText_ZLM(0.1 + 0.2), "0.3");
    EXPECT_EQ(RoundedText_ZLM(123456789012.345), "123456789012.345");
}

struct TRounding {
    double number;
    const char *text;
};

class RoundingTable : public testing::TestWithParam<TRounding> {};

TEST_P(RoundingTable, HalvesGoAwayFromZeroByTheirDecimalDigits)
{
    EXPECT_EQ(RoundedText_ZLM(GetParam().number, 2), GetParam().text);
    if (GetParam().number != 0 && QString(GetParam().text) != "0") {
        EXPECT_EQ(RoundedText_ZLM(-GetParam().number, 2), QString("-") + GetParam().text);
    }
}

INSTANTIATE_TEST_SUITE_P(Amounts, RoundingTable,
                         testing::Values(TRounding{0, "0"}, TRounding{1, "1"}, TRounding{1.5, "1.5"},
                                         TRounding{1.005, "1.01"}, // in binary below its half
                                         TRounding{2.675, "2.68"}, TRounding{1.004999, "1"},
                                         TRounding{1.115, "1.12"}, TRounding{0.005, "0.01"},
                                         TRounding{0.0049, "0"}, TRounding{0.995, "1"},
                                         TRounding{9.995, "10"}, TRounding{99.999, "100"},
                                         TRounding{1234567.125, "1234567.13"}, TRounding{0.0005, "0"},
                                         TRounding{0.1, "0.1"}, TRounding{1e15, "1000000000000000"},
                                         TRounding{12345678901234.5, "12345678901234.5"},
                                         TRounding{7.999, "8"}, TRounding{1e-300, "0"}));

TEST(Rounding, WhatRoundsToZeroHasNoSign)
{
    EXPECT_EQ(RoundedText_ZLM(-0.0000000001), "0");
    EXPECT_EQ(RoundedText_ZLM(std::nan("")), "0");
}

TEST(Filters, ConditionsAreJoinedByAnd)
{
    TStatement filter;
    AddFilter(filter, TStatement("(Code = ").integer(5).sql(")"));
    EXPECT_EQ(filter.asText(), "(Code = 5)");
    AddFilter(filter, TStatement("(Title = ").text("a'b").sql(")"));
    EXPECT_EQ(filter.asText(), "(Code = 5) AND (Title = 'a''b')");
    EXPECT_EQ(filter.values(), (QVariantList{5, "a'b"}));
}

TEST(Filters, AnEmptyConditionLeavesTheFilterAsItIs)
{
    TStatement filter;
    AddFilter(filter, {});
    EXPECT_TRUE(filter.isEmpty());
    AddFilter(filter, TStatement("(1 = 1)"));
    AddFilter(filter, {});
    EXPECT_EQ(filter.asText(), "(1 = 1)");
}

TEST(Values, NullIsNull)
{
    EXPECT_TRUE(VarIsNull_ZLM({}));
    EXPECT_TRUE(VarIsNull_ZLM(QVariant::fromValue(nullptr)));
    EXPECT_TRUE(VarIsNull_ZLM(QString()));
    EXPECT_FALSE(VarIsNull_ZLM(QString("")));
    EXPECT_FALSE(VarIsNull_ZLM(0));
    EXPECT_FALSE(VarIsNull_ZLM(false));
}
