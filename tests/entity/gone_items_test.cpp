#include "entity/ItemPick.h"

using namespace Qt::Literals::StringLiterals;

// Items that another workstation deleted while the list was open.

TEST_F(ItemPick, AnItemThatIsGoneIsNotPickedForTheCaller)
{
    pick(u"0;1;"_s, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 2);
        db.run("delete from Fiscal where Code=2");
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
        EXPECT_EQ(screen.ListQuery()->asInteger("Code"), 3);
        EXPECT_EQ(screen.ListQuery()->rowOfKey(2), -1);
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(code, 0);
}

TEST_F(ItemPick, OfTickedItemsTheOnesThatAreGoneAreNamedAndTheOthersTaken)
{
    EXPECT_EQ(pick(u"1;2;12"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {8, 9});
                       db.run("delete from Deduction where Code=9");
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList{u"MsgRecordGone(کد: 9)"_s});
    EXPECT_EQ(deductionsOf(12), "8|300");
}

TEST_F(ItemPick, AnOutputGetsNoRowOfAnItemThatIsGone)
{
    pick(u"0;3;21"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {3});
        db.run("delete from Fiscal where Code=3");
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take(), QStringList{u"MsgRecordGone(کد: 3)"_s});
        EXPECT_EQ(screen.Grid()->Model()->unlistedChecks(), QList<qlonglong>()) << "nothing stays ticked";
        EXPECT_EQ(screen.ListQuery()->rowOfKey(3), -1);
        // A row of the list that was never painted would answer code 0.
        goTo(screen, 4);
        db.run("delete from Fiscal where Code=4");
        enter(screen);
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(outputs(), "");
}
