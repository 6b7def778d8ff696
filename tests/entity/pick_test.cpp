#include "entity/ItemPick.h"

#include <QLabel>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(ItemPick, CallTypes1And4And5GiveTheCurrentItem)
{
    for (const int callType : {1, 4, 5}) {
        const int result = pick(u"0;%1;0"_s.arg(callType), [&](TFiscalDeducation_List_FRM &screen) {
            EXPECT_TRUE(screen.Select_BTN->isEnabled());
            goTo(screen, 2);
            enter(screen);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(result, QDialog::Accepted) << callType;
        EXPECT_EQ(code, 2);
        EXPECT_EQ(title, u"مسکن"_s);
    }
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, TicksDoNotMatterWhenOneItemIsPicked)
{
    const int result = pick(u"1;1;0"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {6, 7});
        goTo(screen, 9);
        enter(screen);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(code, 9);
}

TEST_F(ItemPick, OtherCallTypesDoNothing)
{
    for (const QString &value : {u"0;0;10"_s, u"0;6;10"_s, u"0;;10"_s, u"0"_s, u"0;x;10"_s}) {
        const int result = pick(value, [&](TFiscalDeducation_List_FRM &screen) {
            tick(screen, {3});
            enter(screen);
            EXPECT_TRUE(screen.isVisible());
            Keys::press(&screen, Qt::Key_Escape);
        });
        EXPECT_EQ(result, QDialog::Rejected) << value.toStdString();
        EXPECT_EQ(code, 0);
    }
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(db.text("select count(*) from tmpRecFiscal"), "0");
}

TEST_F(ItemPick, EscapeGivesNothing)
{
    EXPECT_EQ(
        pick(u"0;1;0"_s, [](TFiscalDeducation_List_FRM &screen) { Keys::press(&screen, Qt::Key_Escape); }),
        QDialog::Rejected);
    EXPECT_EQ(code, 0);
}

TEST_F(ItemPick, ADoubleClickSelects)
{
    const int result = pick(u"0;1;0"_s, [&](TFiscalDeducation_List_FRM &screen) {
        const QPoint at = screen.Grid()->visualRect(screen.Grid()->model()->index(2, 1)).center();
        QTest::mouseClick(screen.Grid()->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(screen.Grid()->viewport(), Qt::LeftButton, {}, at);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(code, 3);
}

TEST_F(ItemPick, TickedEarningsGoIntoTheOrderWithTheirCost)
{
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {5, 3});
        Keys::picture(&screen, "earnings_pick");
        enter(screen);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "3|500.25\n5|35"); // in the order of the list
    EXPECT_EQ(deductionsOf(10), "");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, TheSecondOfThreeTickedRowsIsOnTheOrderAlready)
{
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,3,1)");
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(11,2,1)"); // another order's
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {2, 3, 5});
        enter(screen);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "3|1\n2|9000\n5|35");
    EXPECT_EQ(messages.all().last().shape, TMessageShape::Dialog);
    EXPECT_EQ(messages.take(), QStringList{"ShowSmartMessage:10250(3)"});
}

TEST_F(ItemPick, RowsThatTheOrderRefusesAreSkipped)
{
    bind(1, 1);
    bind(6, 2);
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {1, 2, 4, 5});
        enter(screen);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "5|35");
    ASSERT_EQ(messages.all().size(), 3);
    EXPECT_EQ(messages.all()[2].displayTime, 3000);
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:10249(1)", "ShowSmartMessage:10249(2)",
                                            "ShowSmartMessage:10122()"}));
}

TEST_F(ItemPick, OnlyTheBindings1And6And7And8AreReserved)
{
    for (int fixedItem = 1; fixedItem <= 15; ++fixedItem) {
        const bool ofDeduction =
            db.text(QString("select Type from PayrollInfoDetail where ID=%1").arg(fixedItem)) == "1";
        const int item = ofDeduction ? 8 : 3;
        db.run("update PayrollInfoDetail set UserCode=null where ID<16");
        bind(fixedItem, item);
        const bool reserved = fixedItem == 1 || (fixedItem >= 6 && fixedItem <= 8);
        const int result = pick(u"%1;2;%2"_s.arg(int(ofDeduction)).arg(100 + fixedItem),
                                [&](TFiscalDeducation_List_FRM &screen) {
                                    tick(screen, {item});
                                    enter(screen);
                                    EXPECT_EQ(screen.isVisible(), reserved) << fixedItem;
                                });
        EXPECT_EQ(result == QDialog::Rejected, reserved) << fixedItem;
    }
}

TEST_F(ItemPick, WhenAllTickedRowsAreRefusedTheScreenStays)
{
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {4});
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Grid()->Model()->checkedKeys(), QList<qlonglong>{4});
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(earningsOf(10), "");
}

TEST_F(ItemPick, ARepeatedInsuranceStopsAtItsRow)
{
    db.run("insert into Deduction(Code,GrpCode,CalcType,Title,Cost) values(4000,5,0,'last',5)");
    bind(16, 8);
    const int result = pick(u"1;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {6, 8, 9, 4000});
        enter(screen);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted); // the row before the stop was added
    EXPECT_EQ(deductionsOf(10), "6|7");
    EXPECT_EQ(messages.last().icon, miWarning);
    EXPECT_EQ(
        messages.take(),
        QStringList{u"ShowSmartMessage( کد بیمه در روش محاسباتی و کسورات حکم کارگزینی تکراری می باشد)"_s});
}

TEST_F(ItemPick, ARepeatedTaxStopsBeforeAnythingWasAdded)
{
    const int result = pick(u"1;2;11"_s, [&](TFiscalDeducation_List_FRM &screen) {
        tick(screen, {7, 8});
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(deductionsOf(11), "");
    EXPECT_EQ(
        messages.take(),
        QStringList{u"ShowSmartMessage( کد مالیات در روش محاسباتی و کسورات حکم کارگزینی تکراری می باشد)"_s});
}

TEST_F(ItemPick, AMethodThatComputesOnlyTaxTakesTheInsuranceDeduction)
{
    EXPECT_EQ(pick(u"1;2;11"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {6});
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(deductionsOf(11), "6|7");
    EXPECT_EQ(pick(u"1;2;12"_s, // an order without a method takes both
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {6, 7});
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(deductionsOf(12), "6|7\n7|10");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, WithoutTicksTheCurrentItemGoesIntoTheOrder)
{
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 3);
        enter(screen);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "3|500.25");
    EXPECT_EQ(code, 0);
}

TEST_F(ItemPick, WithoutTicksARefusalIsTimedAndFocusesTheGrid)
{
    bind(1, 1);
    db.run("insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(10,2,1)");
    const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        const auto refused = [&](int item, const QString &message, TMessageShape shape) {
            goTo(screen, item);
            screen.General_Search->setFocus();
            screen.Select_BTN->click();
            EXPECT_EQ(messages.last().shape, shape);
            EXPECT_EQ(messages.last().displayTime, shape == TMessageShape::Balloon ? 3000 : 0);
            EXPECT_EQ(messages.take(), QStringList{message});
            EXPECT_TRUE(screen.Grid()->hasFocus());
            EXPECT_TRUE(screen.isVisible());
        };
        refused(1, "ShowSmartMessage:10251()", TMessageShape::Balloon);
        refused(2, u"SelectBefore(سطر)"_s, TMessageShape::Dialog);
        refused(4, "ShowSmartMessage:10122()", TMessageShape::Balloon);
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(earningsOf(10), "2|1");
}

TEST_F(ItemPick, WithoutTicksARepeatedInsuranceIsTold)
{
    const int result = pick(u"1;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 6);
        enter(screen);
        EXPECT_TRUE(screen.isVisible());
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(
        messages.take(),
        QStringList{u"ShowSmartMessage( کد بیمه در روش محاسباتی و کسورات حکم کارگزینی تکراری می باشد)"_s});
}

TEST_F(ItemPick, ANullCostCountsAsZeroAndIsTaken)
{
    db.run("update Fiscal set Cost=null where Code=4");
    EXPECT_EQ(pick(u"0;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 4);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "4|0");
}

TEST_F(ItemPick, ItemsStayTickedWhileAnotherGroupIsShownAndALineTellsHowMany)
{
    EXPECT_EQ(pick(u"0;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       auto *ticks = Keys::find<QLabel>(&screen, "Ticks_LBL");
                       EXPECT_FALSE(ticks->isVisible());
                       tick(screen, {2});
                       EXPECT_EQ(ticks->text(), u"1 سطر تیک خورده است"_s);
                       EXPECT_TRUE(ticks->isVisible());
                       screen.Groups->Grid->setFocus();
                       Keys::press(&screen, Qt::Key_End); // the group of 3, 4 and 5
                       EXPECT_TRUE(ticks->text().startsWith(u"1 سطر تیک خورده است ،"_s));
                       tick(screen, {3});
                       EXPECT_TRUE(ticks->text().startsWith(u"2 سطر تیک خورده است ،"_s));
                       Keys::picture(&screen, "earnings_pick_two_groups");
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(earningsOf(10), "3|500.25\n2|9000");
}

TEST_F(ItemPick, ATickedItemThatIsNotShownIsRefusedForTheSameReasons)
{
    bind(1, 1);
    EXPECT_EQ(pick(u"0;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {1, 2, 4});
                       screen.Groups->Grid->setFocus();
                       Keys::press(&screen, Qt::Key_End);
                       db.run("delete from Fiscal where Code=2");
                       enter(screen);
                       EXPECT_TRUE(screen.isVisible());
                       Keys::press(&screen, Qt::Key_Escape);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:10122()", "ShowSmartMessage:10249(1)",
                                            u"MsgRecordGone(کد: 2)"_s}));
    EXPECT_EQ(earningsOf(10), "");
}

TEST_F(ItemPick, ItemsGoIntoAStaffOutputWithTheirKindAndNoAmount)
{
    EXPECT_EQ(pick(u"0;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {3, 4, 5}); // an amount of zero does not matter here
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(outputs(), "21|3|0|0\n21|4|0|0\n21|5|0|0");
    EXPECT_EQ(pick(u"1;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 8);
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(outputs(), "21|3|0|0\n21|4|0|0\n21|5|0|0\n21|8|1|0");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemPick, AnOutputRefusesMonthlyAndFixedEarningsAndFixedDeductions)
{
    db.run("insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(21,4,0,3)");
    bind(6, 5);
    EXPECT_EQ(pick(u"0;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {1, 2, 3, 4, 5});
                       enter(screen);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:10120(1)", "ShowSmartMessage:10120(2)",
                                            "ShowSmartMessage:10250(3)", "ShowSmartMessage:10120(5)"}));
    EXPECT_EQ(outputs(), "21|3|0|4\n21|4|0|0");
    EXPECT_EQ(pick(u"1;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       tick(screen, {9}); // its basis 2 is fixed
                       enter(screen);
                       Keys::press(&screen, Qt::Key_Escape);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList{"ShowSmartMessage:10120(9)"});
}

TEST_F(ItemPick, WithoutTicksAnOutputsRefusalIsTimedAndFocusesTheGrid)
{
    db.run("insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(21,4,0,3)");
    EXPECT_EQ(pick(u"0;3;21"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       goTo(screen, 2);
                       enter(screen);
                       EXPECT_EQ(messages.last().displayTime, 3000);
                       EXPECT_EQ(messages.take(), QStringList{"ShowSmartMessage:10121()"});
                       EXPECT_TRUE(screen.Grid()->hasFocus());
                       goTo(screen, 3);
                       enter(screen);
                       EXPECT_EQ(messages.last().control, screen.Select_BTN);
                       EXPECT_EQ(messages.take(), QStringList{u"SelectBefore(سطر)"_s});
                       Keys::press(&screen, Qt::Key_Escape);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(outputs(), "21|3|0|4");
}

TEST_F(ItemPick, ATargetThatIsNoCodeIsToldAndNothingIsAdded)
{
    for (const QString &target : {u""_s, u"x"_s, u"10 or 1=1"_s, u"99999999999"_s})
        for (const int callType : {2, 3}) {
            const int result =
                pick(u"0;%1;%2"_s.arg(callType).arg(target), [&](TFiscalDeducation_List_FRM &screen) {
                    goTo(screen, 3);
                    enter(screen);
                    EXPECT_EQ(messages.take().size(), 1) << target.toStdString();
                    EXPECT_TRUE(screen.isVisible());
                    Keys::press(&screen, Qt::Key_Escape);
                });
            EXPECT_EQ(result, QDialog::Rejected);
        }
    EXPECT_EQ(db.text("select count(*) from tmpRecFiscal"), "0");
    EXPECT_EQ(outputs(), "");
}

TEST_F(ItemPick, AFaultAtAnyStatementIsToldAndTheResultIsOkWhenARowWasAdded)
{
    for (int n = 1; n < 40; ++n) {
        db.run("delete from tmpRecFiscal");
        bool done = false;
        const int result = pick(u"0;2;10"_s, [&](TFiscalDeducation_List_FRM &screen) {
            tick(screen, {2, 3, 5});
            messages.take();
            db.failStatement(n, TFault::Locked);
            enter(screen);
            done = db.statementCount() < n;
            db.failStatement(0);
            EXPECT_EQ(messages.take(), done ? QStringList() : QStringList{"MsgDatabaseError()"}) << n;
            if (screen.isVisible())
                Keys::press(&screen, Qt::Key_Escape);
        });
        const int added = db.text("select count(*) from tmpRecFiscal").toInt();
        EXPECT_EQ(result == QDialog::Accepted, added > 0) << n;
        if (done) {
            EXPECT_EQ(added, 3);
            EXPECT_GE(n, 9); // three statements for each row
            return;
        }
        EXPECT_LT(added, 3) << n;
    }
    ADD_FAILURE() << "the pick never ran through";
}

TEST_F(ItemPick, AnEmptyListSelectsNothing)
{
    db.run("delete from Fiscal");
    EXPECT_EQ(pick(u"0;2;10"_s,
                   [&](TFiscalDeducation_List_FRM &screen) {
                       EXPECT_FALSE(screen.Select_BTN->isEnabled());
                       enter(screen);
                       Keys::press(&screen, Qt::Key_Escape);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList());
}
