#include "host/services/Services.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/database/Query.h"
#include "support/TestServer.h"

class DataUtilities : public Services {};

TEST_F(DataUtilities, TheTitleOfACodeIsLookedUp)
{
    db.run("insert into TaxMain(Code, Title) values(5, N'جدول پنج')");
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", 5), QString::fromUtf8("جدول پنج"));
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", "5"), QString::fromUtf8("جدول پنج"));
    EXPECT_EQ(ScalerQuery("TaxMain", "Code", "Title", QString::fromUtf8("جدول پنج")), "5");
}

TEST_F(DataUtilities, ACodeThatIsNotThereHasAnEmptyTitle)
{
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", 5), "");
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", QVariant()), "");
    db.run("insert into TaxMain(Code) values(6)");
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", 6), "") << "no title stored";
}

TEST_F(DataUtilities, AValueIsNeverPartOfTheStatement)
{
    db.run("insert into TaxMain(Code, Title) values(5, 'five')");
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Title", "x' or '1'='1"), "");
    try {
        EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", "5 or 1=1"), "");
    } catch (const TDatabaseError &) {
        EXPECT_TRUE(TestServer::available()) << "a server refuses to make a number of such a text";
    }
}

TEST_F(DataUtilities, ANameThatIsNoneIsRefused)
{
    for (const char *name : {"TaxMain; drop table TaxMain", "", "Tax Main", "TaxMain--"}) {
        EXPECT_THROW(ScalerQuery(name, "Title", "Code", 5), TDatabaseError) << name;
        EXPECT_THROW(ScalerQuery("TaxMain", name, "Code", 5), TDatabaseError) << name;
        EXPECT_THROW(ScalerQuery("TaxMain", "Title", name, 5), TDatabaseError) << name;
    }
    EXPECT_EQ(db.statementCount(), 0);
}

TEST_F(DataUtilities, AListThatWasResetReadsAnew)
{
    TQuery query(&db.connection(), "List_QUR");
    query.setKeyField("Code");
    query.setStatement(TStatement("select * from TaxMain"));
    query.open();
    EXPECT_EQ(query.recordCount(), 0);
    db.run("insert into TaxMain(Code, Title) values(5, 'five')");
    EXPECT_EQ(query.recordCount(), 0) << "a snapshot";
    ResetDataset(&query);
    EXPECT_FALSE(query.active());
    query.open();
    EXPECT_EQ(query.recordCount(), 1);
}
