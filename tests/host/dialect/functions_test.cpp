#include "RawDatabase.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QDateTime>

#include <random>

namespace {

class SqliteFunctions : public testing::Test {
protected:
    RawDatabase db{false};
    QString value(const char *expression)
    {
        return db.rows(QString("select %1").arg(QString::fromUtf8(expression)));
    }
};

TEST_F(SqliteFunctions, TextsCompareWithoutRegardToCaseAndTrailingBlanks)
{
    ASSERT_EQ(db.tsql("create table T (a nvarchar(20))"), "");
    ASSERT_EQ(db.tsql(QString::fromUtf8("insert into T values('Ali') insert into T values('علی') "
                                        "insert into T values('Élan') insert into T values('')")),
              "");
    EXPECT_EQ(db.rows("select a from T where a='ALI  '"), "Ali");
    EXPECT_EQ(db.rows(QString::fromUtf8("select a from T where a='éLAN'")), QString::fromUtf8("Élan"));
    EXPECT_EQ(db.rows(QString::fromUtf8("select a from T where a='علی '")), QString::fromUtf8("علی"));
    EXPECT_EQ(db.rows(QString::fromUtf8("select count(*) from T where a='علي'")), "0")
        << "the two forms of yeh are one letter in a search only";
    EXPECT_EQ(db.rows("select count(*) from T where a=' Ali'"), "0");
    EXPECT_EQ(db.rows("select count(*) from T where a='  '"), "1");
    EXPECT_EQ(db.rows("select count(*) from T where a='Al'"), "0");
}

TEST_F(SqliteFunctions, AUniqueNameIsOneInEveryCase)
{
    ASSERT_EQ(db.tsql("create table T (a nvarchar(20) unique)"), "");
    ASSERT_EQ(db.tsql("insert into T values('Admin')"), "");
    EXPECT_NE(db.tsql("insert into T values('aDMIN ')"), "");
}

TEST_F(SqliteFunctions, DatesAsTextKeepTheirOrder)
{
    ASSERT_EQ(db.tsql("create table T (a nvarchar(10))"), "");
    ASSERT_EQ(db.tsql("insert into T values('1404/02/01') insert into T values('1404/01/31') "
                      "insert into T values('') insert into T values('1403/12/30')"),
              "");
    EXPECT_EQ(db.rows("select a from T where a>='1404/01/01' order by a"), "1404/01/31\n1404/02/01");
    EXPECT_EQ(db.rows("select min(a) from T where a<>''"), "1403/12/30");
}

TEST_F(SqliteFunctions, BrokenTextComparesWithoutHarm)
{
    ASSERT_EQ(db.tsql("create table T (a nvarchar(20))"), "");
    ASSERT_EQ(
        db.run(
            "insert into T values(cast(x'C3' as text)),(cast(x'F09F98' as text)),(cast(x'80C3A9' as text))"),
        "");
    EXPECT_EQ(db.rows("select count(*) from (select distinct a from T) where a=a"), "3");
}

TEST_F(SqliteFunctions, CharindexFindsTheFirstPlaceInAnyCase)
{
    EXPECT_EQ(value("charindex('c','abcabc')"), "3");
    EXPECT_EQ(value("charindex('C','abcABC')"), "3");
    EXPECT_EQ(value("charindex('B','xxb')"), "3");
    EXPECT_EQ(value("charindex('x','abc')"), "0");
    EXPECT_EQ(value("charindex('','abc')"), "0");
    EXPECT_EQ(value("charindex('a','')"), "0");
    EXPECT_EQ(value("charindex('c','abcabc',4)"), "6");
    EXPECT_EQ(value("charindex('a','abc',-5)"), "1");
    EXPECT_EQ(value("charindex('a',null)"), "null");
    EXPECT_EQ(value("charindex('%','50%')"), "3");
    EXPECT_EQ(value("charindex('É','xé')"), "2");
    EXPECT_EQ(value("charindex('B','é علی b')"), "7");
    EXPECT_EQ(value("charindex('','é')"), "0");
    EXPECT_EQ(value("charindex('a','bcd',9)"), "0");
}

TEST_F(SqliteFunctions, CharindexCountsLettersNotBytes)
{
    EXPECT_EQ(value("charindex('ضا','محمد رضا')"), "7");
    EXPECT_EQ(value("charindex('لی','😀علی')"), "4") << "as the server counts, in units of 16 bits";
    EXPECT_EQ(value("charindex('1','۱۲1')"), "3");
}

TEST_F(SqliteFunctions, LenLeavesTrailingBlanksOut)
{
    EXPECT_EQ(value("len('علی  ')"), "3");
    EXPECT_EQ(value("len('  a')"), "3");
    EXPECT_EQ(value("len('')"), "0");
    EXPECT_EQ(value("len(null)"), "null");
}

TEST_F(SqliteFunctions, SubstringLeftAndRightCutLikeTheServer)
{
    EXPECT_EQ(value("substring('abcdef',2,3)"), "bcd");
    EXPECT_EQ(value("substring('abc',0,2)"), "a");
    EXPECT_EQ(value("substring('abc',3,9999999999)"), "c");
    EXPECT_EQ(value("substring('abc',9,2)"), "");
    EXPECT_EQ(value("left('abc',2)+'|'+right('abc',2)"), "ab|bc");
    EXPECT_EQ(value("left('abc',9)"), "abc");
    EXPECT_EQ(value("right('abc',-1)"), "");
}

TEST_F(SqliteFunctions, GetdateTellsTheTimeOfNow)
{
    const QDateTime time = QDateTime::fromString(value("getdate()"), "yyyy-MM-dd HH:mm:ss.zzz");
    ASSERT_TRUE(time.isValid());
    EXPECT_LT(qAbs(time.secsTo(QDateTime::currentDateTime())), 10);
}

TEST_F(SqliteFunctions, FindsTakesALettersFormsAsOne)
{
    EXPECT_EQ(value("zelmo_finds('علی ک', 'x علي كبير')"), "1");
    EXPECT_EQ(value("zelmo_finds('123abc', '۱۲٣ABC')"), "1");
    EXPECT_EQ(value("zelmo_finds('é b', 'ÉÉ  B')"), "1");
    EXPECT_EQ(value("zelmo_finds('علیک', 'علي ك')"), "0");
    EXPECT_EQ(value("zelmo_finds('', 'a')"), "0");
    EXPECT_EQ(value("zelmo_finds('a', '')"), "0");
    EXPECT_EQ(value("zelmo_finds('5', 152)"), "1");
    EXPECT_EQ(value("zelmo_finds('a', null)"), "null");
}

// The search folds what was typed with PersianText, and the columns with this function.
TEST_F(SqliteFunctions, FindsFoldsEveryTextAsPersianTextDoes)
{
    sqlite3_stmt *statement = db.prepare("select zelmo_finds(?, ?)");
    ASSERT_TRUE(statement);
    const auto same = [&](const QString &text) {
        // Between two marks nothing but the whole folded text is found.
        const QByteArray whole = "<" + text.toUtf8() + ">";
        const QByteArray folded = PersianText::fold(QString::fromUtf8(whole)).toUtf8();
        sqlite3_bind_text(statement, 1, folded.constData(), int(folded.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(statement, 2, whole.constData(), int(whole.size()), SQLITE_TRANSIENT);
        const bool found = sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_int(statement, 0) == 1;
        sqlite3_reset(statement);
        return found;
    };
    for (char16_t letter = 1; letter < 0xD800; ++letter)
        ASSERT_TRUE(same(QString(QChar(letter)) + u'a')) << int(letter);
    std::mt19937 random(1);
    const QString letters = QString::fromUtf8("aZ  يیكکۀًـ۱٣é😀ا") + QChar(0x200C) + QChar(0x00A0);
    for (int i = 0; i < 20000; ++i) {
        QString text;
        for (unsigned size = random() % 12; size > 0; --size)
            text += letters[qsizetype(random() % unsigned(letters.size()))];
        ASSERT_TRUE(same(text)) << text.toStdString();
    }
    sqlite3_finalize(statement);
}

TEST_F(SqliteFunctions, UniqueCodesFollowTheHighestOne)
{
    RawDatabase whole;
    EXPECT_EQ(whole.rows("SELECT dbo.GetUinqueCode_FNC(2)"), "1");
    ASSERT_EQ(whole.tsql(
                  "insert into Perinf(code,DetailUniqueCode) values(1,7) insert into Perinf(code) values(2)"),
              "");
    EXPECT_EQ(whole.rows("SELECT dbo.GetUinqueCode_FNC(2)"), "8");
    EXPECT_NE(db.rows("SELECT dbo.GetUinqueCode_FNC(2)"), "1") << "no table, no code";
}

} // namespace
