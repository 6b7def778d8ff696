#include "host/services/Services.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Utilityclasses_unt.h"
#include "host/database/Query.h"

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
    EXPECT_EQ(ScalerQuery("TaxMain", "Title", "Code", "5 or 1=1"), "");
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

class Parameters : public Services {};

TEST_F(Parameters, AStoredSettingIsReadAsWhatItIs)
{
    TCustomParam::SetData(12, "7");
    TCustomParam::SetData(13, QString::fromUtf8("متن"));
    TCustomParam::SetData(14, "True");
    EXPECT_EQ(TCustomParam::GetData(12).AsInteger(), 7);
    EXPECT_TRUE(TCustomParam::GetData(12).AsBoolean());
    EXPECT_EQ(TCustomParam::GetData(12).AsString(), "7");
    EXPECT_EQ(TCustomParam::GetData(13).AsString(), QString::fromUtf8("متن"));
    EXPECT_EQ(TCustomParam::GetData(13).AsInteger(), 0);
    EXPECT_FALSE(TCustomParam::GetData(13).AsBoolean());
    EXPECT_TRUE(TCustomParam::GetData(14).AsBoolean());
    TCustomParam::SetData(12, "0");
    EXPECT_FALSE(TCustomParam::GetData(12).AsBoolean());
    EXPECT_EQ(db.text("select count(*) from CustomParam"), "3");
}

TEST_F(Parameters, ASettingThatWasNeverStoredIsEmpty)
{
    EXPECT_EQ(TCustomParam::GetData(99).AsString(), "");
    EXPECT_EQ(TCustomParam::GetData(99).AsInteger(), 0);
    EXPECT_FALSE(TCustomParam::GetData(99).AsBoolean());
}
