#include "host/search/Search.h"

#include "host/ZelmoSearch/FoldExpression.h"

TEST_F(Search, WithoutConditionsTheScriptRunsAsItIs)
{
    add(1, "a");
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(list.statement().boundText(), "select * from Word");
    EXPECT_FALSE(manager.IsFiltered());
    EXPECT_EQ(codes(), "1");
}

TEST_F(Search, ConditionsStandAroundTheScriptWithTheirValuesBound)
{
    manager.SetOwnFilter([] { return TStatement::format("(Code = %d)", {2}); });
    manager.SetCondition("general", TZelmoSearchManager::ConditionFor(title, "x'; drop table Word --"));
    EXPECT_TRUE(manager.IsFiltered());
    manager.ExecuteFilter_DataSet();
    const QString text = list.statement().boundText();
    EXPECT_TRUE(text.startsWith("select * from (select * from Word) as SearchT where (Code = ?)"))
        << text.toStdString();
    EXPECT_FALSE(text.contains("drop"));
    EXPECT_EQ(db.text("select count(*) from Word"), "0");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Search, BothFormsOfYehAndKafAreOneLetter)
{
    add(1, u"کليه کارمندان"_s); // Arabic yeh
    add(2, u"کلیه کارمندان"_s); // Persian yeh
    add(3, u"كليه كارمندان"_s); // Arabic kaf
    for (const QString &typed : {u"کلیه کارمند"_s, u"كليه كارمند"_s, u"کليه کارمند"_s})
        EXPECT_EQ(found(title, typed), "1,2,3") << typed.toStdString();
}

TEST_F(Search, DigitsOfAllScriptsAreOne)
{
    add(1, "ward 12");
    add(2, u"ward ۱۲"_s);
    add(3, u"ward ١٢"_s);
    add(4, "ward 21");
    for (const QString &typed : {u"12"_s, u"۱۲"_s, u"١٢"_s})
        EXPECT_EQ(found(title, typed), "1,2,3") << typed.toStdString();
}

TEST_F(Search, HalfSpaceCaseAndRunsOfBlanksMakeNoDifference)
{
    add(1, u"می\u200Cشود"_s);
    add(2, u"میشود"_s);
    add(3, "Head  Office");
    EXPECT_EQ(found(title, u"میشود"_s), "1,2");
    EXPECT_EQ(found(title, u"می\u200Cشود"_s), "1,2");
    EXPECT_EQ(found(title, "hEAD oFFICE"), "3");
    EXPECT_EQ(found(title, "  head "), "3");
}

TEST_F(Search, PatternCharactersAndQuotesArePlain)
{
    add(1, "100%");
    add(2, "100 percent");
    add(3, "a_b");
    add(4, "axb");
    add(5, "[c]");
    add(6, "O'Neil");
    add(7, "back\\slash");
    EXPECT_EQ(found(title, "0%"), "1");
    EXPECT_EQ(found(title, "a_b"), "3");
    EXPECT_EQ(found(title, "[c"), "5");
    EXPECT_EQ(found(title, "'"), "6");
    EXPECT_EQ(found(title, "\\"), "7");
    EXPECT_EQ(found(title, "%"), "1");
    EXPECT_EQ(found(title, "_"), "3");
}

TEST_F(Search, OnlyWhatIsLookedForInEveryRowIsAWalk)
{
    for (const TSearchItem &item : {code, title, cost})
        EXPECT_TRUE(TZelmoSearchManager::ConditionFor(item, "12").isWalking()) << item.field.toStdString();
    EXPECT_FALSE(TZelmoSearchManager::ConditionFor(cost, "12.5").isWalking()) << "a range";
    EXPECT_FALSE(TZelmoSearchManager::RangeCondition(day, "1404/01/01", "1404/02/01").isWalking());
    found(title, "a");
    EXPECT_TRUE(list.statement().isWalking());
    found(title, "");
    EXPECT_FALSE(list.statement().isWalking());
}

TEST_F(Search, ATextOfBlanksFindsEverything)
{
    add(1, "a");
    EXPECT_TRUE(TZelmoSearchManager::ConditionFor(title, "   ").isEmpty());
    EXPECT_EQ(found(title, ""), "1");
    EXPECT_FALSE(manager.IsFiltered());
}

TEST_F(Search, CodesAreFoundByTheirBeginning)
{
    for (const int one : {1, 12, 21, 123})
        add(one, "x");
    EXPECT_EQ(found(code, "12"), "12,123");
    EXPECT_EQ(found(code, u"۱۲"_s), "12,123");
    EXPECT_EQ(found(code, "x"), "");
}

TEST_F(Search, AmountsAreFoundByTheirDigits)
{
    add(1, "", 1500);
    add(2, "", 15);
    add(3, "", 250.25);
    add(4, "", -1500);
    add(5, "", 123456789012);
    EXPECT_EQ(found(cost, "15"), "1,2");
    EXPECT_EQ(found(cost, "1,500"), "1");
    EXPECT_EQ(found(cost, u"۱۵۰۰"_s), "1");
    EXPECT_EQ(found(cost, "-15"), "4");
    EXPECT_EQ(found(cost, "250.2"), "3");
    EXPECT_EQ(found(cost, "250.3"), "");
    EXPECT_EQ(found(cost, "1234567890"), "5");
    EXPECT_EQ(found(cost, "abc"), "");
}

TEST_F(Search, DatesAreFoundAsTypedOrByTheirParts)
{
    add(1, "", 0, "1404/01/05");
    add(2, "", 0, "1404/11/15");
    add(3, "", 0, "");
    EXPECT_EQ(found(day, "1404/1/5"), "1");
    EXPECT_EQ(found(day, u"۱۴۰۴/۰۱"_s), "1");
    EXPECT_EQ(found(day, "1404/1"), "2") << "as it stands, until the day is typed";
}

TEST_F(Search, ARangeOfDatesTakesEitherEnd)
{
    add(1, "", 0, "1404/01/05");
    add(2, "", 0, "1404/11/15");
    add(3, "", 0, "");
    const auto range = [&](const QString &from, const QString &to) {
        manager.SetCondition("dates", TZelmoSearchManager::RangeCondition(day, from, to));
        manager.ExecuteFilter_DataSet();
        return codes();
    };
    EXPECT_EQ(range("1404/01/05", "1404/01/05"), "1");
    EXPECT_EQ(range("1404/01/06", ""), "2");
    EXPECT_EQ(range("", "1404/12/01"), "1,2");
    EXPECT_EQ(range("", ""), "1,2,3");
}

TEST_F(Search, TheCurrentRowIsKeptByItsKeyElseTheLastRow)
{
    for (int one = 1; one <= 5; ++one)
        add(one, one % 2 ? "odd" : "even");
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(list.position(), 4) << "opened at the last row";
    list.moveTo(2);
    EXPECT_EQ(found(title, "odd"), "1,3,5");
    EXPECT_EQ(list.asInteger("Code"), 3);
    EXPECT_EQ(found(title, "even"), "2,4");
    EXPECT_EQ(list.asInteger("Code"), 4);
    list.close(); // a reset of the list forgets nothing
    EXPECT_EQ(found(title, ""), "1,2,3,4,5");
    EXPECT_EQ(list.asInteger("Code"), 4);
}

TEST_F(Search, AScreensFilterCanStandInPlaceOfItsOwn)
{
    add(1, "a");
    add(2, "b");
    manager.SetOwnFilter([] { return TStatement("(Code = 1)"); });
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(codes(), "1");
    manager.ExecuteFilter(TStatement("(Code = 2)"));
    EXPECT_EQ(codes(), "2");
    manager.SetCondition("general", TZelmoSearchManager::ConditionFor(title, "zz"));
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(codes(), "");
    EXPECT_EQ(list.position(), -1);
}

TEST_F(Search, ADatabaseErrorIsToldAndLeavesTheListClosed)
{
    add(1, "a");
    int runs = 0;
    QObject::connect(&manager, &TZelmoSearchManager::executed, &manager, [&] { ++runs; });
    db.failStatement(1, TFault::ConnectionLost);
    manager.ExecuteFilter_DataSet();
    db.failStatement(0);
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    EXPECT_FALSE(list.active());
    EXPECT_EQ(runs, 1);
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(codes(), "1");
}

TEST(FoldExpression, AServerFoldsByCodePointsWithoutPersianLettersInTheText)
{
    const QString server = FoldExpression("Title");
    EXPECT_TRUE(server.contains("lower(cast(Title as nvarchar(4000)) collate Latin1_General_BIN2)"));
    for (const QChar letter : server)
        EXPECT_LT(letter.unicode(), 128);
    EXPECT_TRUE(server.contains("nchar(1610), nchar(1740)"));
    EXPECT_TRUE(server.contains("nchar(1603), nchar(1705)"));
    EXPECT_EQ(server.count('('), server.count(')'));
}
