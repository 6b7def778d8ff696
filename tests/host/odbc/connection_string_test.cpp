#include "host/database/DatabaseError.h"
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

QString forDriver(const char *text, const QString &section = {})
{
    const TString string{QString(text)};
    return string.forDriver(string.servers().first(), section);
}

TEST(ConnectionString, AShortPasswordIsNotBlankedInsideOtherWords)
{
    const TString text("Server=s;UID=u;PWD=in");
    EXPECT_EQ(text.withoutSecrets("Login failed in PWD=in; 'in'"), "Login failed *** PWD=***; '***'");
    EXPECT_EQ(TString("PWD=aA1!").withoutSecrets("aA1!x aaA1!"), "***x aaA1!");
    EXPECT_EQ(TString("PWD=long-enough").withoutSecrets("xlong-enoughx"), "x***x");
    EXPECT_EQ(TString("PWD=x").withoutSecrets("x"), "***");
}

TEST(ConnectionString, TheDriverGetsItsWordsAsTheyStandAndNoneOfOurs)
{
    EXPECT_EQ(forDriver("DRIVER={FreeTDS};SERVER=s;PWD={a;b};LoginTimeout=3;locktimeout=4"),
              "DRIVER=FreeTDS;PWD={a;b};SERVER=s;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;");
    const TString text("SERVER=s;Database=d;LoginTimeout=3;LockTimeout=x");
    EXPECT_EQ(text.loginSeconds(), 3);
    EXPECT_EQ(text.lockSeconds(), 5);
    EXPECT_EQ(text.displayName(), "s/d");
}

TEST(ConnectionString, IsEncryptedAndCheckedUnlessItSaysOtherwiseInAsManyWords)
{
    const auto privacy = [](const char *words) { return TString(QString("Server=s;") + words).privacy(); };
    for (const char *words : {"", "Encrypt=yes", "Encrypt=strict", "Encrypt=", "Encrypt=nonsense",
                              "TrustServerCertificate=no", "Encryption=off", "CAFile=/x.pem"})
        EXPECT_EQ(privacy(words), TLinePrivacy::Checked) << words;
    for (const char *words : {"TrustServerCertificate=yes", "trustservercertificate=True;CAFile=/x.pem"})
        EXPECT_EQ(privacy(words), TLinePrivacy::Unchecked) << words;
    for (const char *words : {"Encrypt=no", "ENCRYPT= No ", "Encrypt=optional;TrustServerCertificate=yes"})
        EXPECT_EQ(privacy(words), TLinePrivacy::Readable) << words;
}

TEST(ConnectionString, TellsFreeTdsToEncryptAndWhichSectionChecks)
{
    EXPECT_EQ(forDriver("Driver=FreeTDS;Server=s;Port=1433;Encryption=off;CAFile=/x", "own-1"),
              "Driver=FreeTDS;SERVERNAME=own-1;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;");
    EXPECT_EQ(forDriver("Driver=FreeTDS;Server=s;TrustServerCertificate=yes;Encryption=off"),
              "Driver=FreeTDS;SERVER=s;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;");
    EXPECT_EQ(forDriver("Driver=FreeTDS;Server=s;Encrypt=no"),
              "Driver=FreeTDS;SERVER=s;TDS_Version=7.4;ClientCharset=UTF-8;");
    EXPECT_EQ(forDriver("Driver=FreeTDS;Server=s;Encrypt=no;Encryption=off;ApplicationIntent=ReadOnly"),
              "Driver=FreeTDS;ApplicationIntent=ReadOnly;SERVER=s;Encryption=off;TDS_Version=7.4;"
              "ClientCharset=UTF-8;");
}

TEST(ConnectionString, TellsTheVendorsDriverTheSameInItsOwnWords)
{
    EXPECT_EQ(
        forDriver(
            "Driver={ODBC Driver 18 for SQL Server};Server=s;Port=1433;UID=u;PWD={a}}b};AnswerTimeout=9"),
        "Driver={ODBC Driver 18 for SQL Server};UID=u;PWD={a}}b};SERVER=s,1433;Encrypt=yes;"
        "TrustServerCertificate=no;");
    EXPECT_EQ(forDriver("Driver={ODBC Driver 17 for SQL Server};Server=s\\one;TrustServerCertificate=yes"),
              "Driver={ODBC Driver 17 for SQL Server};SERVER=s\\one;Encrypt=yes;TrustServerCertificate=yes;");
    EXPECT_EQ(forDriver("Driver={ODBC Driver 18 for SQL Server};Server=s;Encrypt=no"),
              "Driver={ODBC Driver 18 for SQL Server};SERVER=s;Encrypt=no;TrustServerCertificate=yes;");
}

TEST(ConnectionString, ADriverThatCannotDoWhatIsAskedIsRefusedBeforeItConnects)
{
    const auto fault = [](const char *text) {
        try {
            TString{QString(text)}.check();
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        return TFault::Other;
    };
    EXPECT_EQ(fault("Server=s"), TFault::NoDriver);
    EXPECT_EQ(fault("DSN=payroll"), TFault::UnknownPrivacy);
    EXPECT_EQ(fault("DSN=payroll;Encrypt=no"), TFault::Other);
    EXPECT_EQ(fault("Driver=Something;Server=s;TrustServerCertificate=yes"), TFault::UnknownPrivacy);
    EXPECT_EQ(fault("Driver=FreeTDS;Servername=section"), TFault::UnknownPrivacy);
    EXPECT_EQ(fault("Driver=FreeTDS;Servername=section;TrustServerCertificate=yes"), TFault::Other);
    EXPECT_EQ(fault("Driver={ODBC Driver 18 for SQL Server};Server=s;CAFile=/x"), TFault::UnknownPrivacy);
    EXPECT_EQ(fault("Driver=FreeTDS;Server=s;PWD={a}};b}"), TFault::UnfitPassword);
    EXPECT_EQ(fault("Driver=FreeTDS;Server=s;PWD={a;}}b}"), TFault::Other);
}

TEST(ConnectionString, NamesSeveralServers)
{
    const auto servers =
        TString("Server=tcp:one.example,1444;Port=5;Failover_Partner={two.example;three\\inst}").servers();
    ASSERT_EQ(servers.size(), 3);
    EXPECT_EQ(servers[0].host, "one.example");
    EXPECT_EQ(servers[0].port, 1444);
    EXPECT_EQ(servers[1].host, "two.example");
    EXPECT_EQ(servers[1].port, 5);
    EXPECT_EQ(servers[2].host, "three");
    EXPECT_EQ(servers[2].instance, "inst");
    EXPECT_EQ(servers[2].port, 0);
    EXPECT_EQ(TString("DSN=x").servers().size(), 1);
}

} // namespace
