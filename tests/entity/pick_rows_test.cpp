#include "entity/ItemPick.h"
#include "support/LostAnswer.h"

using namespace Qt::Literals::StringLiterals;

// Which rows are picked, and which of several reasons against a row is told.

TEST_F(ItemPick, OfHighlightedRowsWithoutTicksOnlyTheCurrentOneIsTaken)
{
    EXPECT_EQ(pick(u"1;2;12"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 7);
                       Keys::press(&screen, Qt::Key_Down, Qt::ShiftModifier);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(deductionsOf(12), "8|300");
    EXPECT_EQ(pick(u"0;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 3);
                       Keys::press(&screen, Qt::Key_A, Qt::ControlModifier);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(outputs(), "21|3|0|0");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, TheCurrentOneOfHighlightedRowsIsRefusedLikeASingleRow)
{
    bind(1, 1);
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,2,1)");
    db.run("insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(21,4,0,3)");
    const auto told = [&](const QString &value, int item) {
        QStringList list;
        pick(value, [&](TFiscalDeducation_List_FRM &screen) {
            goTo(screen, item + 1);
            Keys::press(&screen, Qt::Key_Up, Qt::ShiftModifier);
            enter(screen);
            EXPECT_TRUE(screen.isVisible());
            list = messages.take();
            Keys::press(&screen, Qt::Key_Escape);
        });
        return list;
    };
    EXPECT_EQ(told(u"0;2;10"_s, 1), QStringList{"ShowSmartMessage:10251()"});
    EXPECT_EQ(told(u"0;2;10"_s, 2), QStringList{u"SelectBefore(سطر)"_s});
    EXPECT_EQ(told(u"0;3;21"_s, 2), QStringList{"ShowSmartMessage:10121()"});
    EXPECT_EQ(told(u"0;3;21"_s, 3), QStringList{u"SelectBefore(سطر)"_s});
    EXPECT_EQ(earningsOf(10), "2|1");
    EXPECT_EQ(outputs(), "21|3|0|4");
}

TEST_F(ItemPick, SpaceTicksAllHighlightedRowsAndThenTheyAreTakenTogether)
{
    EXPECT_EQ(pick(u"1;2;12"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 7);
                       Keys::press(&screen, Qt::Key_Down, Qt::ShiftModifier);
                       Keys::press(&screen, Qt::Key_Space);
                       goTo(screen, 9);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(deductionsOf(12), "7|10\n8|300");
}

TEST_F(ItemPick, WhatFollowsAnotherSemicolonIsNoPartOfTheTarget)
{
    EXPECT_EQ(pick(u"0;2;10;11"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       EXPECT_EQ(screen.Parameter(2), QVariant("10"));
                       EXPECT_EQ(screen.Parameter(3), QVariant("11"));
                       goTo(screen, 3);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "3|500.25");
    EXPECT_EQ(earningsOf(11), "");
    EXPECT_EQ(pick(u"1;3;21;"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 8);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(outputs(), "21|8|1|0");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, OfTwoReasonsAgainstARowTheOrderTellsTheFirst)
{
    bind(1, 1);
    bind(6, 4); // 4 costs nothing
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,1,7)");
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,3,7)");
    db.run("update Fiscal set Cost=0 where Code=3");
    const auto told = [&](std::initializer_list<int> ticked, int current) {
        return toldBy(u"0;2;10"_s, ticked, current);
    };
    // Reserved before repeated, reserved before worth nothing, repeated before worth nothing.
    EXPECT_EQ(told({1, 3, 4}, 1), (QStringList{"ShowSmartMessage:10249(1)", "ShowSmartMessage:10250(3)",
                                               "ShowSmartMessage:10249(4)"}));
    EXPECT_EQ(told({}, 1), QStringList{"ShowSmartMessage:10251()"});
    EXPECT_EQ(told({}, 3), QStringList{u"SelectBefore(سطر)"_s});
    EXPECT_EQ(told({}, 4), QStringList{"ShowSmartMessage:10251()"});
    EXPECT_EQ(earningsOf(10), "1|7\n3|7");
}

TEST_F(ItemPick, ADeductionOfTheMethodThatCostsNothingIsSkippedAndTheNextRowIsVisited)
{
    db.run(
        "update Deduction set Cost=0 where Code in (6,7)"); // insurance and tax, which the order's method computes
    EXPECT_EQ(pick(u"1;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {6, 7, 8});
                       enter(screen);
                       EXPECT_FALSE(screen.isVisible());
                   }),
              QDialog::Accepted);
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:10122()", "ShowSmartMessage:10122()"}));
    EXPECT_EQ(deductionsOf(10), "8|300");
    pick(u"1;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 6);
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList{"ShowSmartMessage:10122()"});
}

TEST_F(ItemPick, ADeductionOfTheMethodThatIsOnTheOrderAlreadyIsSkippedToo)
{
    db.run("insert into tmpRecDeduction(Recruitmentcode,ItemCode,Cost) values(10,6,1)");
    EXPECT_EQ(pick(u"1;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {6, 8});
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList{"ShowSmartMessage:10250(6)"});
    EXPECT_EQ(deductionsOf(10), "6|1\n8|300");
}

TEST_F(ItemPick, AnOutputTellsThatARowIsNotForItBeforeThatItIsRepeated)
{
    bind(6, 5);
    for (const int item : {2, 5})
        db.run(QString("insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(21,4,0,%1)")
                   .arg(item));
    const auto told = [&](std::initializer_list<int> ticked, int current) {
        return toldBy(u"0;3;21"_s, ticked, current);
    };
    EXPECT_EQ(told({2, 5}, 2), (QStringList{"ShowSmartMessage:10120(2)", "ShowSmartMessage:10120(5)"}));
    EXPECT_EQ(told({}, 2), QStringList{"ShowSmartMessage:10121()"});
    EXPECT_EQ(told({}, 5), QStringList{"ShowSmartMessage:10121()"});
    EXPECT_EQ(outputs(), "21|2|0|4\n21|5|0|4");
}

TEST_F(ItemPick, AnItemWhoseInsertGotNoAnswerIsTakenWhenItIsPickedAgain)
{
    const struct {
        const char *value;
        const char *insert;
    } calls[] = {{"0;2;10", "insert into tmpRecFiscal"}, {"0;3;10", "insert into tmpstaffOutPutDetail"}};
    for (const auto &call : calls) {
        SCOPED_TRACE(call.value);
        EXPECT_EQ(pick(call.value,
                       [&](TFiscalDeducation_List_FRM &screen) {
                           goTo(screen, 3);
                           {
                               const LostAnswer lost(db, call.insert);
                               enter(screen);
                           }
                           EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
                           EXPECT_TRUE(screen.isVisible());
                           enter(screen);
                           EXPECT_EQ(messages.take(), QStringList());
                       }),
                  QDialog::Accepted);
    }
    EXPECT_EQ(earningsOf(10), "3|500.25");
    EXPECT_EQ(outputs(), "10|3|0|0");
}

TEST_F(ItemPick, AnItemThatSomebodyElseAddedStaysRefusedAfterAFaultOfAnotherKind)
{
    EXPECT_EQ(pick("0;2;10",
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 3);
                       db.failStatement(3, TFault::Locked); // after the looks for a repeat and for the method
                       enter(screen);
                       db.failStatement(0);
                       db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,3,1)");
                       messages.take();
                       enter(screen);
                       EXPECT_EQ(messages.take(), QStringList{u"SelectBefore(سطر)"_s});
                   }),
              QDialog::Rejected);
}
