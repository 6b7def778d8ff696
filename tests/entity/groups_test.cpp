#include "entity/ItemList.h"

#include <QAction>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(ItemList, TheGroupPaneHasItsNamesItsNumbersAndItsMenu)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        const TGroup_Pane *groups = screen.Groups;
        const QList<TGridColumn> &columns = groups->Grid->Model()->columns();
        ASSERT_EQ(columns.size(), 2);
        EXPECT_EQ(columns[0].format, TGridColumn::RowNumber);
        EXPECT_EQ(columns[1].caption, u"نام گردوه"_s);
        EXPECT_EQ(groups->Grid->selectionMode(), QAbstractItemView::SingleSelection);
        EXPECT_EQ(groups->Grid->objectName(), "GroupListDBList_GRD");
        QStringList menu;
        for (const QAction *action : groups->GroupList_PUM->actions())
            menu << action->objectName() + "=" + action->text();
        EXPECT_EQ(menu, (QStringList{u"GNew_PMI=جدید"_s, u"GEdit_PMI=ویرایش"_s, u"GDelete_PMI=حذف"_s}));
        EXPECT_GT(groups->mapTo(&screen, QPoint(0, 0)).x(), screen.Grid()->mapTo(&screen, QPoint(0, 0)).x());
    });
}

TEST_F(ItemList, TheGroupSearchMindsCaseAndBeginningsAndStaysWhereNothingFits)
{
    db.run("insert into FiscalGrp(Code,Name) values(3,'Shift')");
    db.run("insert into FiscalGrp(Code,Name) values(4,'shift two')");
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        TSmartEdit_ZLM *search = screen.Groups->SearchGroup_EDT;
        EXPECT_EQ(search->text(), u"جستجو ... (Ctrl + F11)"_s);
        EXPECT_EQ(search->palette().color(QPalette::Text), QColor(Qt::gray));
        Keys::press(&screen, Qt::Key_F11, Qt::ControlModifier);
        EXPECT_NE(search->palette().color(QPalette::Text), QColor(Qt::gray));
        Keys::type(search, "s");
        EXPECT_EQ(screen.Groups->CurrentCode(), 4);
        Keys::retype(search, "S");
        EXPECT_EQ(screen.Groups->CurrentCode(), 3);
        Keys::retype(search, "two");
        EXPECT_EQ(screen.Groups->CurrentCode(), 3);
        Keys::retype(search, {});
        screen.Grid()->setFocus();
        EXPECT_EQ(search->text(), u"جستجو ... (Ctrl + F11)"_s);
        EXPECT_EQ(search->palette().color(QPalette::Text), QColor(Qt::gray));
        EXPECT_EQ(screen.Groups->CurrentCode(), 3);
    });
}

TEST_F(ItemList, TheGroupIsAConditionOnTheListAndTheAllGroupsRowIsNone)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(screen.ListQuery()->statement().asText(), "select * from Deduction_VW");
        goToGroup(screen, 6);
        EXPECT_TRUE(screen.ListQuery()->statement().asText().contains("(GrpCode = 6)"))
            << screen.ListQuery()->statement().asText().toStdString();
    });
}

TEST_F(ItemList, F11WithAnotherKeyOpensNothing)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        Keys::press(&screen, Qt::Key_F11, Qt::ShiftModifier);
        Keys::press(&screen, Qt::Key_F11, Qt::AltModifier);
        EXPECT_TRUE(screen.isActiveWindow());
        EXPECT_FALSE(screen.Groups->SearchGroup_EDT->hasFocus());
    });
}

TEST_F(ItemList, AnotherGroupShowsOnlyItsItems)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 2);
        EXPECT_EQ(codes(screen), (QStringList{"3", "4", "5"}));
        goToGroup(screen, 1);
        EXPECT_EQ(codes(screen), (QStringList{"1", "2"}));
        goToGroup(screen, 0);
        EXPECT_EQ(codes(screen).size(), 5);
    });
}

TEST_F(ItemList, GroupAndSearchNarrowTogether)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 2);
        Keys::type(screen.General_Search->Search_EDT(), u"كاري"_s); // the other kaf and yeh
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(codes(screen), (QStringList{"3", "5"}));
        goToGroup(screen, 1);
        EXPECT_EQ(codes(screen), QStringList());
        EXPECT_FALSE(screen.EDit_BTN->isEnabled());
        EXPECT_FALSE(screen.Del_BTN->isEnabled());
    });
}

TEST_F(ItemList, TheGroupSearchMovesToTheFirstNameThatBeginsWithTheText)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        EXPECT_EQ(screen.Groups->SearchGroup_EDT->text(), u"جستجو ... (Ctrl + F11)"_s);
        Keys::press(&screen, Qt::Key_F11, Qt::ControlModifier);
        EXPECT_TRUE(screen.Groups->SearchGroup_EDT->hasFocus());
        EXPECT_EQ(screen.Groups->SearchGroup_EDT->text(), QString());
        Keys::type(screen.Groups->SearchGroup_EDT, u"اضا"_s);
        EXPECT_EQ(screen.Groups->CurrentCode(), 2);
        EXPECT_EQ(codes(screen), (QStringList{"3", "4", "5"}));
        screen.Grid()->setFocus();
        EXPECT_EQ(screen.Groups->SearchGroup_EDT->text(), u"اضا"_s);
    });
}

TEST_F(ItemList, F11PicksAGroupOfTheKind)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        through(&screen, Qt::Key_F11, [&](QWidget *picker) {
            EXPECT_EQ(picker->objectName(), "TGroupList_FRM");
            Keys::press(picker, Qt::Key_End);
            Keys::press(picker, Qt::Key_Return);
        });
        EXPECT_EQ(screen.Groups->CurrentCode(), 6);
        EXPECT_EQ(codes(screen), (QStringList{"8", "9"}));
    });
}

TEST_F(ItemList, LeavingTheGroupPickerWithoutAChoiceShowsAllGroups)
{
    // The picker answers 0, which is the code of the all-groups row.
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 6);
        through(&screen, Qt::Key_F11, [&](QWidget *picker) { Keys::press(picker, Qt::Key_Escape); });
        EXPECT_EQ(screen.Groups->CurrentCode(), 0);
        EXPECT_EQ(codes(screen).size(), 4);
    });
}

TEST_F(ItemList, TheGroupMenuKeepsTheGroupsOfTheKind)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        TGroup_Pane *groups = screen.Groups;
        const auto triggered = [&](QAction *action, const QString &name) {
            Keys::runModal(
                [&] {
                    action->trigger();
                    return 0;
                },
                [&](QWidget *editor) {
                    Keys::retype(Keys::find<TSmartEdit_ZLM>(editor, "Name_EDT"), name);
                    Keys::press(editor, Qt::Key_F3);
                });
            messages.take();
        };
        triggered(groups->GNew_PMI, "third");
        EXPECT_EQ(groups->CurrentCode(), 3); // the last row
        EXPECT_EQ(codes(screen), QStringList());
        triggered(groups->GEdit_PMI, "renamed");
        EXPECT_EQ(groups->CurrentCode(), 3);
        EXPECT_EQ(Entity_DM->GroupList_QUR->asString("Name"), "renamed");
        messages.answer({Yes});
        groups->GDelete_PMI->trigger();
        EXPECT_EQ(Entity_DM->GroupList_QUR->recordCount(), 3);
    });
    EXPECT_EQ(db.text("select count(*) from FiscalGrp where Name='renamed'"), "0");
    EXPECT_EQ(events(), "816|3|renamed");
}

TEST_F(ItemList, ANewGroupThatIsLeftWithEscapeNeitherReadsNorMovesTheGroups)
{
    for (const int kind : {0, 1})
        list(kind, [&](TFiscalDeducation_List_FRM &screen) {
            const int first = kind == 0 ? 1 : 5;
            goToGroup(screen, first);
            db.run(QString("insert into %1(Code,Name) values(9,'of another workstation')")
                       .arg(kind == 0 ? "FiscalGrp" : "DeductionGrp"));
            Keys::runModal(
                [&] {
                    screen.Groups->GNew_PMI->trigger();
                    return 0;
                },
                [](QWidget *editor) { Keys::press(editor, Qt::Key_Escape); });
            EXPECT_EQ(Entity_DM->GroupList_QUR->recordCount(), 3);
            EXPECT_EQ(screen.Groups->CurrentCode(), first);
            EXPECT_EQ(codes(screen).size(), 2);
        });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemList, AGroupOfDeductionsIsDeletedUnderThePartOfTheDeductions)
{
    db.run("insert into DeductionGrp(Code,Name) values(7,'empty')");
    Clerk clerk(db);
    clerk.grant(817, 3);
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 7);
        screen.Groups->GDelete_PMI->trigger();
        EXPECT_EQ(messages.take(), QStringList{"MsgNoPermission()"});
        clerk.grant(805, 3);
        messages.answer({Yes});
        screen.Groups->GDelete_PMI->trigger();
        EXPECT_EQ(Entity_DM->GroupList_QUR->recordCount(), 3);
    });
    EXPECT_EQ(events(), "805|3|empty");
    EXPECT_EQ(db.text("select count(*) from DeductionGrp where Code=7"), "0");
}

TEST_F(ItemList, AGroupInUseAndTheAllGroupsRowAreNotDeleted)
{
    list(1, [&](TFiscalDeducation_List_FRM &screen) {
        goToGroup(screen, 6);
        messages.answer({Yes});
        screen.Groups->GDelete_PMI->trigger();
        EXPECT_EQ(messages.take().last().section('(', 0, 0), "MsgHasSubRecords");
        goToGroup(screen, 0);
        screen.Groups->GDelete_PMI->trigger();
        EXPECT_EQ(messages.take().size(), 1);
    });
    EXPECT_EQ(db.text("select count(*) from DeductionGrp"), "3");
}

TEST_F(ItemList, AGroupThatAnotherWorkstationDeletedIsNotLostOnTheUser)
{
    list(0, [&](TFiscalDeducation_List_FRM &screen) {
        db.run("insert into FiscalGrp(Code,Name) values(9,'short-lived')");
        Keys::runModal(
            [&] {
                screen.Groups->GNew_PMI->trigger();
                return 0;
            },
            [](QWidget *editor) { Keys::press(editor, Qt::Key_Escape); });
        messages.take();
        screen.Groups->Reread(true);
        EXPECT_EQ(screen.Groups->CurrentCode(), 9);
        db.run("delete from FiscalGrp where Code=9");
        screen.Groups->GEdit_PMI->trigger();
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
        EXPECT_NE(screen.Groups->CurrentCode(), 9);
        EXPECT_EQ(Entity_DM->GroupList_QUR->recordCount(), 3);
    });
}
