#include "host/database/OdbcConnectionString.h"

#include <gtest/gtest.h>

namespace {

using TString = TOdbcConnectionString;

TEST(ConnectionString, ReadsPartsInBraces)
{
    const TString text("Driver={Free;TDS}; Server=s,1433 ;UID=u;PWD={a;b}}c};Database=d");
    EXPECT_EQ(text.value("driver"), "Free;TDS");
    EXPECT_EQ(text.value("SERVER"), "s,1433");
    EXPECT_EQ(text.value("pwd"), "a;b}c");
    EXPECT_EQ(text.value("Database"), "d");
    EXPECT_TRUE(text.value("Port").isNull());
    EXPECT_FALSE(text.has("Port"));
    EXPECT_EQ(text.text(), "Driver={Free;TDS};Server=s,1433;UID=u;PWD={a;b}}c};Database=d");
}

TEST(ConnectionString, AWordWithoutAValueTakesNothingFromTheNextOne)
{
    const TString text("Trusted;Server=s;PWD=; ;=x;Port=1433;Encrypt");
    EXPECT_TRUE(text.has("trusted"));
    EXPECT_EQ(text.value("Server"), "s");
    EXPECT_TRUE(text.hasPassword());
    EXPECT_EQ(text.value("PWD"), "");
    EXPECT_EQ(text.value("Port"), "1433");
    EXPECT_EQ(text.text(), "Trusted=;Server=s;PWD=;Port=1433;Encrypt=");
}

TEST(ConnectionString, FindsAndRemovesAPasswordHoweverItIsWritten)
{
    for (const char *text : {"PWD=x", "Server=s; pwd = x", "password={x;y};UID=u", "A={;PWD=no};PWD=x"})
        EXPECT_TRUE(TString(text).hasPassword()) << text;
    EXPECT_FALSE(TString("A={;PWD=no};UID=u").hasPassword());
    EXPECT_EQ(TString("Server=s;PWD={a;b};Database=d").withoutPassword().text(), "Server=s;Database=d");
    EXPECT_EQ(TString("Server=s;Password=a").withoutPassword().text(), "Server=s");
}

TEST(ConnectionString, AsksForAPasswordOnlyWhereAUserIsNamed)
{
    EXPECT_TRUE(TString("Server=s;UID=u").needsPassword());
    EXPECT_FALSE(TString("Server=s;UID=u;PWD=").needsPassword());
    EXPECT_FALSE(TString("Server=s;Trusted_Connection=yes").needsPassword());
}

TEST(ConnectionString, AnyPasswordComesBackAsItWasTypedAndIsNeverTold)
{
    for (const char *password : {"simple", "a;b", "a}b", "{", "}", "گذر واژه", " x ", "a=b", "'\"--"}) {
        const QString text = TString("Server=s;PWD=old").with("PWD", password).text();
        EXPECT_EQ(TString(text).value("PWD"), QString(password)) << password;
        EXPECT_EQ(TString(text).value("Server"), "s");
        EXPECT_EQ(text.count("PWD"), 1);
        EXPECT_FALSE(TString(text).withoutSecrets("login of " + text + " refused").contains(password))
            << password;
    }
}

TEST(ConnectionString, TheDriverGetsItsWordsAsTheyStandAndNoneOfOurs)
{
    EXPECT_EQ(TString("DRIVER={FreeTDS};SERVER=s;PWD={a;b};LoginTimeout=3;locktimeout=4").forDriver(),
              "DRIVER={FreeTDS};SERVER=s;PWD={a;b};TDS_Version=7.4;ClientCharset=UTF-8;");
    const TString text("SERVER=s;Database=d;LoginTimeout=3;LockTimeout=x");
    EXPECT_EQ(text.loginSeconds(), 3);
    EXPECT_EQ(text.lockSeconds(), 5);
    EXPECT_EQ(text.displayName(), "s/d");
}

} // namespace
