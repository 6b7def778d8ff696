#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

QString fold(const char *text)
{
    return PersianText::fold(QString::fromUtf8(text));
}

QString number(const char *text)
{
    return PersianText::plainNumber(QString::fromUtf8(text));
}

bool identity(const char *text)
{
    return NationalCode_Validation(QString::fromUtf8(text));
}

} // namespace

TEST(Folding, BothFormsOfYehAndKafAreOneLetter)
{
    EXPECT_EQ(fold("علي كريمي"), fold("علی کریمی"));
    EXPECT_EQ(fold("موسى"), fold("موسی"));
    EXPECT_EQ(fold("علي"), QString::fromUtf8("علی")) << "the Persian form is kept";
}

TEST(Folding, DigitsOfAllThreeScriptsAreOne)
{
    EXPECT_EQ(fold("۱۲۳۴۵۶۷۸۹۰"), "1234567890");
    EXPECT_EQ(fold("١٢٣٤٥٦٧٨٩٠"), "1234567890");
}

TEST(Folding, HalfSpacesDiacriticsAndStretchingMakeNoDifference)
{
    EXPECT_EQ(fold("می\u200cروم"), fold("میروم"));
    EXPECT_EQ(fold("مُحَمَّد"), fold("محمد"));
    EXPECT_EQ(fold("محـــمد"), fold("محمد"));
    EXPECT_EQ(fold("\u200fمحمد\u200e"), fold("محمد"));
}

TEST(Folding, CaseAndRunsOfBlanksMakeNoDifference)
{
    EXPECT_EQ(fold("ABC äÖ"), fold("abc ÄÖ"));
    EXPECT_EQ(fold("a   b\u00a0 c"), "a b c");
    EXPECT_EQ(fold(" a "), " a ") << "blanks at the ends are the caller's";
}

TEST(Folding, WhatIsPlainStaysPlain)
{
    EXPECT_EQ(fold("100%_[x]'--"), "100%_[x]'--");
    EXPECT_EQ(fold("😀"), QString::fromUtf8("😀"));
    EXPECT_EQ(fold(""), "");
    EXPECT_NE(fold("ئ"), fold("ی")) << "letters that differ in meaning stay apart";
}

TEST(Folding, FoldingTwiceChangesNothingMore)
{
    for (const char *text : {"علي كريمي", "۱۲  ABC", "می\u200cروم", "ÄÖ"})
        EXPECT_EQ(PersianText::fold(fold(text)), fold(text)) << text;
}

TEST(Digits, OnlyDigitsAreTurned)
{
    EXPECT_EQ(PersianText::latinDigits(QString::fromUtf8("کد ۱۲٣ي")), QString::fromUtf8("کد 123ي"));
}

TEST(PlainNumber, NumbersAsPeopleTypeThem)
{
    EXPECT_EQ(number("1234.5"), "1234.5");
    EXPECT_EQ(number("1,234,567.5"), "1234567.5");
    EXPECT_EQ(number("۱٬۲۳۴٫۵"), "1234.5");
    EXPECT_EQ(number("١٢٣"), "123");
    EXPECT_EQ(number("۱۲/۵"), "12.5");
    EXPECT_EQ(number("1\u200c234"), "1234") << "a half-space between the digits";
    EXPECT_EQ(number(" 1 234 "), "1234");
    EXPECT_EQ(number("۱،۲۳۴"), "1234");
    EXPECT_EQ(number("-5"), "-5");
    EXPECT_EQ(number("\u200e\u2212۵"), "-5");
    EXPECT_EQ(number("+5"), "5");
    EXPECT_EQ(number("007"), "007");
}

TEST(PlainNumber, WhatIsNoNumberIsNull)
{
    for (const char *text :
         {"abc", "1.2.3", "1403/01/05", "1-2", "--1", "-", ".", "+", "1e5", "12ریال", "0x10"}) {
        EXPECT_TRUE(number(text).isNull()) << text;
    }
}

TEST(PlainNumber, EmptyStaysEmpty)
{
    EXPECT_TRUE(number("").isEmpty());
    EXPECT_FALSE(number("").isNull());
    EXPECT_FALSE(number("  ").isNull());
}

TEST(Grouping, ThreeDigitsEach)
{
    EXPECT_EQ(PersianText::grouped("1234567.5"), "1,234,567.5");
    EXPECT_EQ(PersianText::grouped("123"), "123");
    EXPECT_EQ(PersianText::grouped("1000"), "1,000");
    EXPECT_EQ(PersianText::grouped("-123"), "-123");
    EXPECT_EQ(PersianText::grouped("-123456"), "-123,456");
    EXPECT_EQ(PersianText::grouped("0.1234567"), "0.1234567");
    EXPECT_EQ(PersianText::grouped(""), "");
    EXPECT_EQ(PersianText::grouped("12x4567"), "12x4567");
    EXPECT_EQ(PersianText::grouped("1,234567"), "1,234567");
}

TEST(Comparing, ThePersianAlphabetHasItsOrder)
{
    QStringList letters;
    for (const char *letter : {"ا", "ب", "پ", "ت", "ج", "چ", "ح", "ر", "ز", "ژ", "س",
                               "ف", "ق", "ک", "گ", "ل", "م", "ن", "و", "ه", "ی"})
        letters << QString::fromUtf8(letter);
    QStringList sorted = letters;
    std::reverse(sorted.begin(), sorted.end());
    std::sort(sorted.begin(), sorted.end(),
              [](const QString &a, const QString &b) { return PersianText::compare(a, b) < 0; });
    EXPECT_EQ(sorted, letters);
    EXPECT_EQ(PersianText::compare(QString::fromUtf8("علي"), QString::fromUtf8("علی")), 0);
    EXPECT_EQ(PersianText::compare("a", "A"), 0);
}

TEST(IdentityNumbers, TheCheckDigitDecides)
{
    EXPECT_TRUE(identity("0499370899"));
    EXPECT_TRUE(identity("0790419904"));
    EXPECT_TRUE(identity("0084575948"));
    EXPECT_TRUE(identity("۰۰۸۴۵۷۵۹۴۸")) << "Persian digits";
    EXPECT_TRUE(identity("٠٠٨٤٥٧٥٩٤٨")) << "Arabic digits";
    EXPECT_FALSE(identity("0084575947"));
    EXPECT_FALSE(identity("0684175948"));
}

TEST(IdentityNumbers, ExactlyOneCheckDigitFitsNineDigits)
{
    for (const char *beginning : {"008457594", "123456789", "100000000", "000000001", "999999998"}) {
        int fits = 0;
        for (char digit = '0'; digit <= '9'; ++digit)
            fits += identity((std::string(beginning) + digit).c_str());
        EXPECT_EQ(fits, 1) << beginning;
    }
}

TEST(IdentityNumbers, TenEqualDigitsAreRefusedThoughTheirCheckDigitFits)
{
    for (char digit = '0'; digit <= '9'; ++digit)
        EXPECT_FALSE(identity(std::string(10, digit).c_str())) << digit;
}

TEST(IdentityNumbers, OnlyTenDigitsAreANumber)
{
    for (const char *text :
         {"", "084575948", "00084575948", "008457594x", " 0084575948", "00-84575948", "٫٫٫٫٫٫٫٫٫٫"})
        EXPECT_FALSE(identity(text)) << text;
}

TEST(PersianTextCut, KeepsWhatAColumnKeepsAndNeverHalfALetter)
{
    const QString smiley = QString::fromUtf8("\U0001F600");
    EXPECT_EQ(PersianText::cut("abcdef", 4), "abcd");
    EXPECT_EQ(PersianText::cut("abcd", 4), "abcd");
    EXPECT_EQ(PersianText::cut("abcd", 0), "abcd") << "no limit";
    EXPECT_EQ(PersianText::cut("abc" + smiley, 4), "abc");
    EXPECT_EQ(PersianText::cut("ab" + smiley + "c", 4), "ab" + smiley);
    EXPECT_EQ(PersianText::cut(smiley, 1), "");
}
