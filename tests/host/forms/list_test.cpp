#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"
#include "support/TestUser.h"

#include <QLabel>
#include <QMenu>
#include <QPrinter>
#include <QSplitter>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class BaseDock : public Things {
protected:
    BaseDock() : list(&db.connection(), "List_QUR") { list.setKeyField("Code"); }
    void fill(int rows)
    {
        db.connection().BeginTrans();
        for (int code = 1; code <= rows; ++code)
            db.connection().execute(TStatement::format(
                "insert into Thing(Code, Title, Cost, Day) values(%d, %s, %d, '1404/01/05')",
                {code, u"thing %1"_s.arg(code), code * 1000}));
        db.connection().CommitTrans();
    }
    int open(TThingList_FRM &screen, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return screen.exec(); },
                              [&](QWidget *) {
                                  Keys::waitFor([&] { return screen.isActiveWindow(); });
                                  work();
                              });
    }
    TQuery list;
};

TEST_F(BaseDock, OpensAtTheLastRowWithTheFocusInTheGrid)
{
    fill(3);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        EXPECT_EQ(list.recordCount(), 3);
        EXPECT_EQ(list.position(), 2);
        EXPECT_TRUE(screen.Grid()->hasFocus());
        EXPECT_EQ(screen.objectName(), "TThingList_FRM");
        EXPECT_EQ(screen.windowTitle(), u" ليست مزايا "_s);
        Keys::picture(&screen, "base_list");
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    });
}

TEST_F(BaseDock, ButtonsNeedARowAndSelectNeedsSelectMode)
{
    {
        TThingList_FRM screen(fmSelect, &list);
        open(screen, [&] {
            EXPECT_TRUE(screen.New_BTN->isEnabled());
            for (auto *button : {screen.EDit_BTN, screen.Del_BTN, screen.Select_BTN, screen.PrintList_BTN})
                EXPECT_FALSE(button->isEnabled()) << button->objectName().toStdString();
            for (const auto key : {Qt::Key_F5, Qt::Key_F7, Qt::Key_Return, Qt::Key_F9})
                Keys::press(&screen, key);
            EXPECT_TRUE(screen.isVisible());
            EXPECT_EQ(messages.take(), QStringList());
        });
    }
    fill(1);
    TThingList_FRM browse(fmBrowse, &list);
    open(browse, [&] {
        EXPECT_TRUE(browse.EDit_BTN->isEnabled());
        EXPECT_FALSE(browse.Select_BTN->isEnabled());
    });
    TThingList_FRM select(fmSelect, &list);
    open(select, [&] { EXPECT_TRUE(select.Select_BTN->isEnabled()); });
}

TEST_F(BaseDock, EnterDoesNothingInBrowseModeAndSelectsInSelectMode)
{
    fill(2);
    TThingList_FRM browse(fmBrowse, &list);
    open(browse, [&] {
        Keys::press(&browse, Qt::Key_Return);
        EXPECT_TRUE(browse.isVisible());
        EXPECT_TRUE(browse.Grid()->hasFocus());
    });
    TThingList_FRM select(fmSelect, &list);
    const int result = open(select, [&] {
        Keys::press(&select, Qt::Key_Up);
        Keys::press(&select, Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_FALSE(select.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(select.SelectedCode, 1);
}

TEST_F(BaseDock, ARefusedSelectionKeepsTheScreen)
{
    fill(2);
    TThingList_FRM screen(fmSelect, &list);
    screen.refuseSelection = true;
    const int result = open(screen, [&] {
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_TRUE(screen.isVisible());
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
}

TEST_F(BaseDock, ADoubleClickSelectsInSelectModeAndEditsOtherwise)
{
    fill(2);
    const auto doubleClick = [](TThingList_FRM &screen) {
        const QRect row = screen.Grid()->visualRect(screen.Grid()->model()->index(0, 1));
        QTest::mouseClick(screen.Grid()->viewport(), Qt::LeftButton, {}, row.center());
        QTest::mouseDClick(screen.Grid()->viewport(), Qt::LeftButton, {}, row.center());
    };
    TThingList_FRM select(fmSelect, &list);
    open(select, [&] { doubleClick(select); });
    EXPECT_EQ(select.SelectedCode, 1);
    TThingList_FRM browse(fmBrowse, &list);
    open(browse, [&] {
        Keys::runModal(
            [&] {
                doubleClick(browse);
                return 0;
            },
            [&](QWidget *editor) {
                EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(editor, "Title_EDT")->GetText(), "thing 1");
                Keys::press(editor, Qt::Key_Escape);
            });
        EXPECT_TRUE(browse.isVisible());
    });
}

TEST_F(BaseDock, F4OpensTheEditorAndOkRefreshesTheList)
{
    fill(3);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        Keys::press(&screen, Qt::Key_Up);
        screen.General_Search->Field_CMB()->setFocus(); // where F4 would open the drop-down list
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F4);
                return 0;
            },
            [&](QWidget *editor) {
                ASSERT_EQ(editor->objectName(), "TThingGet_FRM");
                Keys::type(Keys::child(editor, "Title_EDT"), "new");
                Keys::press(editor, Qt::Key_F3);
            });
        EXPECT_EQ(list.recordCount(), 4);
        EXPECT_EQ(list.asInteger("Code"), 4) << "what was just entered is current";
    });
}

TEST_F(BaseDock, AnEditorThatIsCancelledDoesNotReadTheListAgain)
{
    fill(3);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        db.run("insert into Thing(Code, Title) values(50, 'elsewhere')");
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F5);
                return 0;
            },
            [&](QWidget *editor) { Keys::press(editor, Qt::Key_Escape); });
        EXPECT_EQ(list.recordCount(), 3);
    });
}

TEST_F(BaseDock, DeletesBeginWithRightQuestionAndEventLine)
{
    fill(3);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        messages.answer({No});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(list.recordCount(), 3);
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(list.recordCount(), 2);
        EXPECT_EQ(list.position(), 1);
        EXPECT_EQ(db.rows("select SoftwarePart, Permission, EventText from UserEvent"), "813|3|3");
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", "MsgDeleteRow()"}));
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(list.recordCount(), 2);
    });
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

TEST_F(BaseDock, ADeleteThatCannotBeRecordedDoesNotHappen)
{
    fill(3);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        db.failStatement(3, TFault::Locked); // the event's line, behind the right and the look at the row
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", "MsgDatabaseError()"}));
        EXPECT_EQ(list.recordCount(), 3);
    });
}

TEST_F(BaseDock, ADatabaseErrorInAnActionIsToldAndKeepsTheScreen)
{
    fill(1);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        messages.answer({Yes});
        db.failStatement(2, TFault::Locked);
        Keys::press(&screen, Qt::Key_F7);
        db.failStatement(0);
        EXPECT_EQ(messages.take().last(), "MsgDatabaseError()");
        EXPECT_TRUE(screen.isVisible());
    });
    EXPECT_EQ(titles(), "1|thing 1");
}

TEST_F(BaseDock, AListThatCannotBeReadShowsEmptyAndItsButtonsRest)
{
    fill(3);
    TThingList_FRM screen(fmSelect, &list);
    db.failStatement(1, TFault::ConnectionLost);
    open(screen, [&] {
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_FALSE(list.active());
        EXPECT_FALSE(screen.EDit_BTN->isEnabled());
    });
}

TEST_F(BaseDock, TypingNarrowsTheListAndDownGoesToIt)
{
    fill(30);
    TThingList_FRM screen(fmSelect, &list);
    const int result = open(screen, [&] {
        auto *search = screen.General_Search->Search_EDT();
        EXPECT_EQ(screen.General_Search->Field_CMB()->currentText(), u"عنوان"_s);
        Keys::type(search, "THING ۱۲");
        ASSERT_TRUE(Keys::waitFor([&] { return list.recordCount() == 1; }));
        EXPECT_EQ(list.asInteger("Code"), 12);
        Keys::press(&screen, Qt::Key_Down);
        EXPECT_TRUE(screen.Grid()->hasFocus());
        search->setFocus();
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(search->text(), "");
        EXPECT_EQ(list.recordCount(), 30);
        EXPECT_EQ(list.asInteger("Code"), 12) << "the row that was found stays current";
        Keys::type(search, "5");
        Keys::press(&screen,
                    Qt::Key_Return); // at once, without waiting; the list takes the focus, nothing is chosen
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(list.recordCount(), 3);
        EXPECT_TRUE(screen.Grid()->hasFocus());
        Keys::press(&screen, Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
}

TEST_F(BaseDock, AnotherSearchColumnSearchesAtOnce)
{
    fill(30);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        Keys::type(screen.General_Search->Search_EDT(), "2");
        ASSERT_TRUE(Keys::waitFor([&] { return list.recordCount() == 12; })) << list.recordCount();
        screen.General_Search->Field_CMB()->setCurrentIndex(0);
        EXPECT_EQ(list.recordCount(), 11); // 2 and 20 to 29 begin with it
        Keys::press(&screen, Qt::Key_Escape);
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    });
}

TEST_F(BaseDock, TheContextMenuOffersTheButtonsThatAreEnabled)
{
    fill(1);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        QTimer::singleShot(0, &screen, [&] {
            ASSERT_TRUE(Keys::waitFor([] { return QApplication::activePopupWidget() != nullptr; }));
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            QStringList enabled;
            for (QAction *action : menu->actions())
                if (action->isEnabled() && !action->isSeparator())
                    enabled << action->text();
            EXPECT_EQ(enabled.mid(0, 4),
                      (QStringList{u"جدید F4"_s, u"ویرایش F5"_s, u"حذف F7"_s, u"پیش نمایش ليست F9"_s}));
            menu->close();
        });
        Q_EMIT screen.Grid()->customContextMenuRequested({5, 5});
    });
}

TEST_F(BaseDock, EachSemicolonPartsTheValue)
{
    EXPECT_EQ(TThingList_FRM::ValuePart("0;1;a;b", 2).toString(), "a");
    EXPECT_EQ(TThingList_FRM::ValuePart("0;1;a;b", 3).toString(), "b");
    EXPECT_TRUE(TThingList_FRM::ValuePart("0;1;a;b", 4).isNull());
    EXPECT_EQ(TThingList_FRM::ValuePart("0;;a", 1).toString(), "");
    EXPECT_EQ(TThingList_FRM::ValuePart(1, 0).toInt(), 1);
    EXPECT_TRUE(TThingList_FRM::ValuePart(1, 1).isNull());
}

// --- the print preview

TEST_F(BaseDock, F9ShowsThePreviewWithAllPages)
{
    fill(120);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F9);
                return 0;
            },
            [&](QWidget *widget) {
                auto *preview = qobject_cast<TListPreview_FRM *>(widget);
                ASSERT_TRUE(preview);
                ASSERT_GT(preview->PageCount(), 1);
                auto *label = Keys::find<QLabel>(preview, "Page_LBL");
                EXPECT_EQ(label->text(), u"صفحه 1 از %1"_s.arg(preview->PageCount()));
                EXPECT_GT(Keys::child(preview, "Paper")->width(), preview->width() * 3 / 4)
                    << "fits the width";
                Keys::picture(preview, "preview");
                Keys::press(preview, Qt::Key_PageDown);
                EXPECT_EQ(preview->CurrentPage(), 2);
                Keys::press(preview, Qt::Key_End, Qt::ControlModifier);
                EXPECT_EQ(preview->CurrentPage(), preview->PageCount());
                Keys::press(preview, Qt::Key_PageDown);
                EXPECT_EQ(preview->CurrentPage(), preview->PageCount());
                const int upright = preview->PageCount();
                Keys::press(preview, Qt::Key_L, Qt::ControlModifier);
                EXPECT_GT(preview->PageCount(), upright);
                Keys::press(preview, Qt::Key_Plus, Qt::ControlModifier);
                Keys::picture(preview, "preview_lying");
                QTemporaryDir folder;
                const QString file = folder.filePath(u"لیست.pdf"_s);
                EXPECT_TRUE(preview->ExportPdf(file));
                QFile pdf(file);
                ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
                EXPECT_TRUE(pdf.read(5) == "%PDF-");
                EXPECT_FALSE(preview->ExportPdf(folder.filePath("none/such/file.pdf")));
                EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(u"لیست.pdf"_s));
                EXPECT_TRUE(messages.take().last().startsWith("ShowSmartMessage("));
                Keys::press(preview, Qt::Key_Escape);
                EXPECT_FALSE(preview->isVisible());
            });
        EXPECT_TRUE(screen.isVisible());
    });
}

TEST_F(BaseDock, ThePrintedPagesHoldTheVisibleColumnsOfAllRows)
{
    fill(1000);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        TListPrinter printer(screen.Grid(), "x");
        QPrinter paper(QPrinter::ScreenResolution);
        paper.setOutputFormat(QPrinter::PdfFormat);
        QTemporaryDir folder;
        paper.setOutputFileName(folder.filePath("x.pdf"));
        printer.SetUpPage(paper);
        EXPECT_EQ(paper.pageLayout().orientation(), QPageLayout::Portrait);
        const int pages = printer.PageCount(paper);
        EXPECT_GT(pages, 10);
        EXPECT_LT(pages, 60);
        QList<int> told;
        EXPECT_TRUE(printer.Print(paper, 1, 0, [&](int page) {
            told << page;
            return true;
        }));
        EXPECT_EQ(told.size(), pages);
        EXPECT_FALSE(printer.Print(paper, 1, 0, [](int page) { return page < 2; }));
    });
}

// --- the pane of groups

class GroupPane : public BaseDock {
protected:
    class TGroupedList : public TThingList_FRM {
    public:
        TGroupedList(TQuery *list, TQuery *groups) : TThingList_FRM(fmBrowse, list)
        {
            BuildGroups(groups, "Group_GRD", u"نام گروه"_s, u"گروه کارمندان F11"_s);
            connect(Groups, &TGroup_Pane::groupMoved, this, [this] { ++moves; });
            connect(Groups->Group_BTN, &QAbstractButton::clicked, this, [this] { ++presses; });
        }
        int moves = 0;
        int presses = 0;

    protected:
        void PrepareSearch() override
        {
            TThingList_FRM::PrepareSearch();
            Groups->Grid->Query()->open();
        }
    };
    GroupPane() : groups(&db.connection(), "GroupList_QUR")
    {
        db.run("create table Grp(Code integer not null primary key, Name nvarchar(50))");
        db.run(u"insert into Grp values(0, 'کليه کارمندان')"_s);
        db.run(u"insert into Grp values(1, 'اداری')"_s);
        db.run(u"insert into Grp values(2, 'فنی')"_s);
        groups.setStatement(TStatement("select Code, Name from Grp order by Code"));
    }
    TQuery groups;
};

TEST_F(GroupPane, TheSearchBoxShowsItsHintInGreyWhileItIsEmptyAndElsewhere)
{
    TGroupedList screen(&list, &groups);
    open(screen, [&] {
        auto *box = screen.Groups->SearchGroup_EDT;
        EXPECT_EQ(box->text(), u"جستجو ... (Ctrl + F11)"_s);
        EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::gray));
        Keys::picture(&screen, "group_pane");
        Keys::press(&screen, Qt::Key_F11, Qt::ControlModifier);
        EXPECT_TRUE(box->hasFocus());
        EXPECT_NE(box->palette().color(QPalette::Text), QColor(Qt::gray));
        EXPECT_EQ(box->text(), "");
        screen.Grid()->setFocus();
        EXPECT_EQ(box->text(), TGroup_Pane::Hint());
    });
}

TEST_F(GroupPane, TypingMovesToTheFirstGroupThatBeginsWithIt)
{
    TGroupedList screen(&list, &groups);
    open(screen, [&] {
        Keys::press(&screen, Qt::Key_F11, Qt::ControlModifier);
        Keys::type(screen.Groups->SearchGroup_EDT, u"فن"_s);
        EXPECT_EQ(screen.Groups->CurrentCode(), 2);
        EXPECT_GT(screen.moves, 0);
        Keys::type(screen.Groups->SearchGroup_EDT, "zz");
        EXPECT_EQ(screen.Groups->CurrentCode(), 2);
        Keys::press(&screen, Qt::Key_F11);
        EXPECT_EQ(screen.presses, 1);
    });
}

TEST_F(GroupPane, RereadingStaysOnTheGroupOrGoesToTheLast)
{
    TGroupedList screen(&list, &groups);
    open(screen, [&] {
        groups.moveTo(1);
        db.run("insert into Grp values(9, 'new')");
        const int moves = screen.moves;
        screen.Groups->Reread(false);
        EXPECT_EQ(screen.Groups->CurrentCode(), 1);
        EXPECT_EQ(screen.moves, moves);
        screen.Groups->Reread(true);
        EXPECT_EQ(screen.Groups->CurrentCode(), 9);
        EXPECT_EQ(screen.moves, moves + 1);
    });
}
