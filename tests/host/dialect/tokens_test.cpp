#include "host/database/Tokens.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

QString texts(const char *sql)
{
    QStringList list;
    for (const TToken &token : Tokenize(QString::fromUtf8(sql)))
        list << token.text;
    return list.join(' ');
}

QList<TToken::Kind> kinds(const char *sql)
{
    QList<TToken::Kind> list;
    for (const TToken &token : Tokenize(QString::fromUtf8(sql)))
        list << token.kind;
    return list;
}

TEST(Tokens, KeepTextsWholeWithTheirDoubledQuotes)
{
    EXPECT_EQ(texts("a='it''s; -- no [comment] ?'"), "a = 'it''s; -- no [comment] ?'");
    EXPECT_EQ(texts("N'کد'+n'b'"), QString::fromUtf8("'کد' + 'b'"));
    EXPECT_EQ(kinds("'?' ?"), (QList<TToken::Kind>{TToken::Text, TToken::Place}));
}

TEST(Tokens, TakeNamesInBracketsAndQuotesAsNames)
{
    const TTokens tokens = Tokenize("[Per]]cent] \"day\" Title");
    ASSERT_EQ(tokens.size(), 3);
    for (const TToken &token : tokens)
        EXPECT_TRUE(token.isName());
    EXPECT_EQ(tokens[1].name(), "day");
    EXPECT_EQ(tokens[2].name(), "Title");
    EXPECT_FALSE(Tokenize("[select]")[0].is("select"));
    EXPECT_TRUE(Tokenize("SELECT")[0].is("select"));
}

TEST(Tokens, LeaveCommentsOut)
{
    EXPECT_EQ(texts("a -- b\nc /* d /* nested */ e */f"), "a c f");
    EXPECT_EQ(JoinTokens(Tokenize("a--b\nc")), "a c") << "a comment parts two words";
}

TEST(Tokens, TellPlacesNamedPlacesAndVariables)
{
    EXPECT_EQ(kinds("? :Code @x @@rowcount"),
              (QList<TToken::Kind>{TToken::Place, TToken::Named, TToken::Variable, TToken::Variable}));
    EXPECT_EQ(texts("ID=:ID)"), "ID = :ID )");
}

TEST(Tokens, ReadNumbersWhole)
{
    EXPECT_EQ(texts("1.5 .5 2e-3 1+2 0x1F 7.A"), "1.5 .5 2e-3 1 + 2 0x1F 7. A");
}

TEST(Tokens, ReadOperatorsOfTwoCharactersWhole)
{
    EXPECT_EQ(texts("a<>b<=c>=d!=e||f"), "a <> b <= c >= d != e || f");
}

TEST(Tokens, GiveBackTheTextWithOneBlankWhereBlanksStood)
{
    EXPECT_EQ(JoinTokens(Tokenize("  select  *\r\n\tfrom T  where a=1  ")), "select * from T where a=1");
}

TEST(Tokens, EndWithTheTextWhenAQuoteIsOpen)
{
    EXPECT_EQ(texts("a = 'open"), "a = 'open");
    EXPECT_EQ(texts("[open"), "[open");
    EXPECT_EQ(texts("a /* open"), "a");
    EXPECT_EQ(texts(""), "");
}

} // namespace
