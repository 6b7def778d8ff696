#include "entity/ItemList.h"

#include "support/PaintedText.h"

#include "host/Component_ZLM/DetailStrip_ZLM.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScopeGuard>
#include <QTest>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(ItemList, OfEarningsOpensOnAllGroupsAtTheLastRowWithTheFocusInTheSearch)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(screen.objectName(), "TFiscalDeducation_List_FRM");
        EXPECT_EQ(screen.windowTitle(), u" ليست مزايا "_s);
        EXPECT_EQ(screen.Groups->Group_BTN->text(), u"گروه مزايا"_s);
        EXPECT_EQ(codes(screen), (QStringList{"1", "2", "3", "4", "5"}));
        EXPECT_EQ(screen.ListQuery()->position(), 4);
        EXPECT_EQ(screen.Groups->CurrentCode(), 0);
        EXPECT_TRUE(screen.General_Search->Search_EDT()->hasFocus());
        EXPECT_EQ(screen.General_Search->Field_CMB()->currentText(), u"کد و عنوان"_s);
        EXPECT_TRUE(columnShown(screen, "InsuranceTitle"));
        EXPECT_TRUE(columnShown(screen, "TaxTitle"));
        EXPECT_FALSE(screen.Select_BTN->isEnabled());
        EXPECT_GE(screen.minimumWidth(), 750);
        EXPECT_GE(screen.minimumHeight(), 550);
        Keys::picture(&screen, "earnings_list");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemList, OfDeductionsHidesInsuranceAndTax)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(screen.windowTitle(), u" ليست کسورات"_s);
        EXPECT_EQ(screen.Groups->Group_BTN->text(), u"گروه کسورات"_s);
        EXPECT_EQ(codes(screen), (QStringList{"6", "7", "8", "9"}));
        EXPECT_FALSE(columnShown(screen, "InsuranceTitle"));
        EXPECT_FALSE(columnShown(screen, "TaxTitle"));
        QMenu menu;
        screen.Grid()->FillColumnMenu(&menu);
        EXPECT_EQ(menu.actions().size(), 4);
        Keys::picture(&screen, "deductions_list");
    });
}

TEST_F(ItemList, ShowsAmountsAsMoneyAndTheStripShowsTheCurrentItem)
{
    db.run("update Fiscal set Cost=103909680.5 where Code=1");
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 1);
        EXPECT_EQ(screen.Grid()->Model()->index(0, 3).data().toString(), "103,909,680.5");
        EXPECT_EQ(screen.Grid()->Model()->index(0, 2).data().toString(), u"ماهيانه"_s);
        auto *strip = screen.findChild<TDetailStrip_ZLM *>();
        ASSERT_TRUE(strip);
        EXPECT_EQ(strip->ShownText("Code"), "1");
        EXPECT_EQ(strip->ShownText("Title"), u"حقوق"_s);
        EXPECT_EQ(strip->ShownText("CalcTitle"), u"ماهيانه"_s);
        EXPECT_EQ(strip->ShownText("Cost"), "103,909,680.5");
    });
}

TEST_F(ItemList, ShowsItsColumnsSearchItemsFieldsAndButtonsInTheirOrder)
{
    const QList<std::pair<QString, QString>> columns = {
        {"code", u"کد"_s},         {"title", u"عنوان"_s},         {"CalcTitle", u"مبنای محاسباتی"_s},
        {"Cost", u"مبلغ / نرخ"_s}, {"InsuranceTitle", u"بیمه"_s}, {"TaxTitle", u"مالیات"_s},
    };
    const int widths[] = {65, 186, 131, 129, 73, 68};
    const QList<std::pair<QString, QString>> items = {
        {"Code", u"کد"_s},         {"CodeName", u"کد و عنوان"_s},
        {"Title", u"عنوان"_s},     {"CalcTitle", u"مبنای محاسباتی"_s},
        {"Cost", u"مبلغ / نرخ"_s}, {"Comment", u"شرح"_s},
    };
    const QList<std::pair<QString, QString>> fields = {
        {"Code", u"کد"_s},         {"Title", u"عنوان"_s}, {"CalcTitle", u"مبنای محاسباتی"_s},
        {"Cost", u"مبلغ / نرخ"_s}, {"Comment", u"شرح"_s},
    };
    const std::pair<const char *, QString> buttons[] = {
        {"New_BTN", u"جدید F4"_s},         {"EDit_BTN", u"ویرایش F5"_s}, {"Del_BTN", u"حذف F7"_s},
        {"Select_BTN", u"انتخاب Enter"_s}, {"EXit_BTN", u"خروج Esc"_s},
    };
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        QList<std::pair<QString, QString>> shown;
        for (const TGridColumn &column : screen.Grid()->Model()->columns()) {
            EXPECT_EQ(column.width, widths[shown.size()]);
            shown.append({column.field, column.caption});
        }
        EXPECT_EQ(shown, columns);
        EXPECT_TRUE(screen.Grid()->Model()->isCheckable());
        EXPECT_EQ(screen.Grid()->selectionMode(), QAbstractItemView::ExtendedSelection);

        shown.clear();
        for (const TSearchItem &item : screen.ZelmoSearchManager1->Items())
            shown.append({item.field, item.caption});
        EXPECT_EQ(shown, items);
        EXPECT_EQ(screen.ZelmoSearchManager1->Items()[0].kind, TSearchItem::Digits);
        EXPECT_EQ(screen.ZelmoSearchManager1->Items()[4].kind, TSearchItem::Money);

        const auto *strip = screen.findChild<TDetailStrip_ZLM *>();
        for (const auto &[field, caption] : fields) {
            const auto *value = strip->findChild<QLabel *>(field + "_LBL");
            ASSERT_TRUE(value) << field.toStdString();
            const auto labels = strip->findChildren<QLabel *>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
                return label->text() == caption + " :" && label->y() == value->y() && label->x() > value->x();
            })) << caption.toStdString();
        }
        for (const auto &[name, caption] : buttons)
            EXPECT_EQ(Keys::find<TSmartButton_ZLM>(&screen, name)->text(), caption) << name;
    });
}

TEST_F(ItemList, KeepsItsSizeItsStripAndItsGroupColumnsForTheNextOpening)
{
    const auto forget = qScopeGuard([] {
        for (const char *part : {"geometry", "panes", "GroupListDBList_GRD", "FiscalDeducation_View"})
            LayoutStore::setValue(QString("TFiscalDeducation_List_FRM/%1").arg(part), {});
    });
    QSize size;
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        auto *strip = screen.findChild<TDetailStrip_ZLM *>();
        EXPECT_TRUE(strip->IsExpanded());
        QTest::mouseClick(strip->findChild<QToolButton *>(), Qt::LeftButton);
        screen.resize(1010, 660);
        screen.Groups->Grid->horizontalHeader()->resizeSection(0, 61);
        screen.Groups->Grid->horizontalHeader()->moveSection(0, 1);
        QCoreApplication::processEvents();
        size = screen.size();
    });
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(screen.size(), size);
        EXPECT_FALSE(screen.findChild<TDetailStrip_ZLM *>()->IsExpanded());
        EXPECT_EQ(screen.Groups->Grid->columnWidth(0), 61);
        EXPECT_EQ(screen.Groups->Grid->horizontalHeader()->logicalIndex(0), 1);
    });
}

TEST_F(ItemList, OfEarningsShowsInsuranceAndTaxEachTimeItOpens)
{
    const QString key = "TFiscalDeducation_List_FRM/FiscalDeducation_List_GRD";
    const auto forget = qScopeGuard([&] { LayoutStore::setValue(key, {}); });
    const auto choose = [](TFiscalDeducation_List_FRM &screen, const QString &caption) {
        QMenu menu;
        screen.Grid()->FillColumnMenu(&menu);
        for (QAction *action : menu.actions())
            if (action->text() == caption)
                action->trigger();
    };
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        for (const QString &caption : {u"بیمه"_s, u"مالیات"_s, u"مبنای محاسباتی"_s})
            choose(screen, caption);
        EXPECT_FALSE(columnShown(screen, "InsuranceTitle"));
        EXPECT_FALSE(columnShown(screen, "TaxTitle"));
    });
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_TRUE(columnShown(screen, "InsuranceTitle"));
        EXPECT_TRUE(columnShown(screen, "TaxTitle"));
        EXPECT_FALSE(columnShown(screen, "CalcTitle")) << "the user's own choice is kept";
        QMenu menu;
        screen.Grid()->FillColumnMenu(&menu);
        EXPECT_EQ(menu.actions().size(), 6);
        EXPECT_TRUE(menu.actions()[4]->isChecked());
        EXPECT_TRUE(menu.actions()[5]->isChecked());
        choose(screen, u"مبنای محاسباتی"_s);
    });
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_FALSE(columnShown(screen, "InsuranceTitle"));
        EXPECT_FALSE(columnShown(screen, "TaxTitle"));
        EXPECT_TRUE(columnShown(screen, "CalcTitle"));
    });
}

TEST_F(ItemList, MakesItsDataModuleAndFreesIt)
{
    EXPECT_EQ(Entity_DM, nullptr);
    {
        TFiscalDeducation_List_FRM screen(fmBrowse, 0, {});
        EXPECT_NE(Entity_DM, nullptr);
        {
            TFiscalDeducation_List_FRM inner(fmSelect, u"0;1;0"_s, {});
        }
        EXPECT_NE(Entity_DM, nullptr); // the outer list stands on its rows
    }
    EXPECT_EQ(Entity_DM, nullptr);
}

TEST_F(ItemList, F4OpensANewItemInTheCurrentGroupAndMovesToItAfterOk)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 2);
        through(&screen, Qt::Key_F4, [&](QWidget *opened) {
            auto *editor = qobject_cast<TFiscalDeducation_Get_FRM *>(opened);
            ASSERT_TRUE(editor);
            EXPECT_EQ(editor->Group_CMB->Code(), 2);
            fill(*editor, "new");
            Keys::press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(codes(screen), (QStringList{"3", "4", "5", "10"}));
        EXPECT_EQ(screen.ListQuery()->asInteger("Code"), 10);
    });
}

TEST_F(ItemList, WithoutAGroupANewItemAsksForOneFirst)
{
    db.run("update PayrollInfoDetail set UserCode=null");
    db.run("delete from Deduction");
    db.run("delete from DeductionGrp where Code<>0");
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        Keys::press(&screen, Qt::Key_F4);
        EXPECT_EQ(messages.take(), QStringList{"MakeGroup()"});
        db.run("insert into DeductionGrp(Code,Name) values(4,'made meanwhile')");
        through(&screen, Qt::Key_F4, [&](QWidget *opened) {
            EXPECT_EQ(messages.take(), QStringList{"MakeGroup()"});
            EXPECT_TRUE(qobject_cast<TFiscalDeducation_Get_FRM *>(opened));
        });
    });
}

TEST_F(ItemList, AnEmptyGroupTableOpensAndAsksForAGroup)
{
    db.run("delete from Fiscal");
    db.run("delete from FiscalGrp");
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(codes(screen), QStringList());
        for (const TSmartGrid_ZLM *grid : {screen.Grid(), screen.Groups->Grid})
            EXPECT_EQ(paintedText(grid->viewport()), u"<داده ای برای نمایش وجود ندارد>"_s);
        Keys::press(&screen, Qt::Key_F4);
        EXPECT_EQ(messages.take(), QStringList{"MakeGroup()"});
    });
}

TEST_F(ItemList, F5AndADoubleClickEditTheCurrentItem)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 8);
        through(&screen, Qt::Key_F5, [&](QWidget *opened) {
            auto *editor = qobject_cast<TFiscalDeducation_Get_FRM *>(opened);
            ASSERT_TRUE(editor);
            EXPECT_EQ(editor->Part(), cspDeduction);
            EXPECT_EQ(editor->Code_EDT->GetText(), "8");
            Keys::retype(editor->Title_EDT, "renamed");
            Keys::press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(screen.ListQuery()->asString("Title"), "renamed");
        Keys::runModal(
            [&] {
                const QPoint at = screen.Grid()->visualRect(screen.Grid()->model()->index(0, 1)).center();
                QTest::mouseClick(screen.Grid()->viewport(), Qt::LeftButton, {}, at);
                QTest::mouseDClick(screen.Grid()->viewport(), Qt::LeftButton, {}, at);
                return 0;
            },
            [&](QWidget *opened) {
                auto *editor = qobject_cast<TFiscalDeducation_Get_FRM *>(opened);
                ASSERT_TRUE(editor);
                EXPECT_EQ(editor->Code_EDT->GetText(), "6");
                Keys::press(editor, Qt::Key_Escape);
            });
    });
}

TEST_F(ItemList, F7DeletesAfterTheQuestionAndLogsIt)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 4);
        messages.answer({No, Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(codes(screen).size(), 5);
        EXPECT_EQ(events(), "");
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(codes(screen), (QStringList{"1", "2", "3", "5"}));
        EXPECT_EQ(events(), "804|3|4");
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", "MsgDeleteRow()"}));
    });
}

TEST_F(ItemList, ADeletedDeductionIsLoggedUnderThePartOfTheEarnings)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 8);
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(codes(screen), (QStringList{"6", "7", "9"}));
    });
    EXPECT_EQ(events(), "804|3|8");
}

TEST_F(ItemList, AnItemInUseIsNotDeleted)
{
    bind(3, 2);
    db.run("insert into tmpstaffFiscal(ItemCode) values(3)");
    db.run("insert into tmpsalarybilldetail(itemcode) values(4)");
    db.run("insert into tmpstaffdeduction(ItemCode) values(8)");
    db.run("insert into tmpsalarybilldetail(itemcode) values(9)");
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        for (const int code : {2, 3, 4}) {
            goTo(screen, code);
            screen.General_Search->setFocus();
            Keys::press(&screen, Qt::Key_F7);
            EXPECT_EQ(messages.take(), QStringList{u"MsgHasSubRecords(مزايا)"_s}) << code;
            EXPECT_TRUE(screen.Grid()->hasFocus());
        }
    });
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        for (const int code : {6, 8, 9}) { // 6 is the settings' insurance deduction
            goTo(screen, code);
            Keys::press(&screen, Qt::Key_F7);
            EXPECT_EQ(messages.take(), QStringList{u"MsgHasSubRecords(کسورات)"_s}) << code;
        }
    });
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "5");
    EXPECT_EQ(db.text("select count(*) from Deduction"), "4");
    EXPECT_EQ(events(), "");
}

TEST_F(ItemList, AnItemBoundMeanwhileIsNotDeletedEither)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 5);
        bind(9, 5); // the list does not know yet
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", u"MsgHasSubRecords(مزايا)"_s}));
        EXPECT_EQ(codes(screen).size(), 5);
        EXPECT_EQ(screen.ListQuery()->asInteger("PayrollCode"), 9); // read anew
    });
}

TEST_F(ItemList, AFaultAtAnyStatementOfADeleteIsToldAndTheScreenStays)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        for (int n = 1; n < 30; ++n) {
            goTo(screen, 8);
            messages.answer({Yes});
            messages.take();
            db.failStatement(n, TFault::ConnectionLost);
            Keys::press(&screen, Qt::Key_F7);
            const bool done = db.statementCount() < n;
            db.failStatement(0);
            if (done) {
                EXPECT_GE(n, 4);
                EXPECT_EQ(db.text("select count(*) from Deduction where Code=8"), "0");
                return;
            }
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            EXPECT_TRUE(screen.isVisible());
            if (db.text("select count(*) from Deduction where Code=8") == "0")
                db.run("insert into Deduction(Code,GrpCode,CalcType,Title,Cost) values(8,6,0,'again',300)");
            Keys::press(&screen, Qt::Key_F11, Qt::ControlModifier);
            goToGroup(screen, 6);
            goToGroup(screen, 0); // reads the list anew
        }
        ADD_FAILURE() << "the delete never ran through";
    });
}

TEST_F(ItemList, ADeleteNeedsTheRightOfItsKind)
{
    Clerk clerk(db);
    clerk.grant(804, 3);
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList{"MsgNoPermission()"});
        EXPECT_EQ(codes(screen).size(), 4);
    });
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goTo(screen, 4);
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList{"MsgDeleteRow()"});
        EXPECT_EQ(codes(screen).size(), 4);
    });
}

TEST_F(ItemList, AFaultWhileOpeningIsTold)
{
    for (int n = 1; n <= 3; ++n) {
        TFiscalDeducation_List_FRM screen(fmBrowse, 0, {});
        db.failStatement(n, TFault::ConnectionLost);
        work(screen, [&] {
            db.failStatement(0);
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            Keys::press(&screen, Qt::Key_Escape);
        });
    }
}
