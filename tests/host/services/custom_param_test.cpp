#include "host/Declaration_PKG/Utilityclasses_unt.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CustomParam, AnUnknownSettingIsEmptyZeroAndFalse)
{
    TestDatabase db;
    const TParamValue value = TCustomParam::GetData(7);
    EXPECT_TRUE(value.AsString().isEmpty());
    EXPECT_EQ(value.AsInteger(), 0);
    EXPECT_FALSE(value.AsBoolean());
}

TEST(CustomParam, ASettingIsStoredOnceAndReadInEachWay)
{
    TestDatabase db;
    TCustomParam::SetData(7, u"3"_s);
    TCustomParam::SetData(7, u"1"_s);
    TCustomParam::SetData(8, u"True"_s);
    EXPECT_EQ(db.text("select count(*) from CustomParam"), "2");
    EXPECT_EQ(TCustomParam::GetData(7).AsInteger(), 1);
    EXPECT_TRUE(TCustomParam::GetData(7).AsBoolean());
    EXPECT_TRUE(TCustomParam::GetData(8).AsBoolean());
    EXPECT_EQ(TCustomParam::GetData(8).AsInteger(), 0);
}

TEST(CustomParam, AValueIsCutToTwoHundredCharacters)
{
    TestDatabase db;
    TCustomParam::SetData(9, QString(300, 'x'));
    EXPECT_EQ(TCustomParam::GetData(9).AsString().size(), 200);
}
