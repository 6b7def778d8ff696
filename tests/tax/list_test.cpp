#include "tax/TaxScreens.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QLabel>
#include <QTest>

#include <memory>
#include <utility>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class TaxList : public TaxScreens {
protected:
    int open(TTaxList_FRM &list, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return list.exec(); },
                              [&](QWidget *) {
                                  Keys::waitFor([&] { return list.isActiveWindow(); });
                                  work();
                              });
    }
    static QString rows(TTaxList_FRM &list)
    {
        const QAbstractItemModel *model = list.Grid()->model();
        QStringList lines;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells << model->index(row, column).data().toString();
            lines << cells.join(u'|');
        }
        return lines.join(u'\n');
    }
    static void goTo(TTaxList_FRM &list, int row)
    {
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            Keys::press(&list, Qt::Key_Down);
    }
};

TEST_F(TaxList, ShowsItsTextsAsGiven)
{
    table(1, u"مالیات حقوق ۱۴۰۳"_s);
    table(2, u"مالیات حقوق ۱۴۰۴"_s);
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        EXPECT_EQ(list.windowTitle(), u"جدول مالیاتی"_s);
        EXPECT_EQ(list.Grid()->objectName(), "TaxDB_List_TableView");
        QStringList captions;
        for (int column = 0; column < 3; ++column)
            captions << list.Grid()->model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_EQ(captions, (QStringList{u"کد"_s, u"عنوان"_s, u"شرح"_s}));
        EXPECT_EQ(rows(list), u"1|مالیات حقوق ۱۴۰۳|c\n2|مالیات حقوق ۱۴۰۴|c"_s);
        EXPECT_EQ(list.New_BTN->text(), u"جدید F4"_s);
        EXPECT_EQ(list.EDit_BTN->text(), u"ویرایش F5"_s);
        EXPECT_EQ(list.Del_BTN->text(), u"حذف F7"_s);
        EXPECT_EQ(list.Select_BTN->text(), u"انتخاب Enter"_s);
        EXPECT_EQ(list.EXit_BTN->text(), u"خروج Esc"_s);
        EXPECT_EQ(list.PrintList_BTN, nullptr);
        EXPECT_FALSE(list.Select_BTN->isEnabled());
        Keys::picture(&list, "tax_list");
    });
}

TEST_F(TaxList, MakesTheDataModuleWhenThereIsNone)
{
    delete Tax_DM;
    Tax_DM = nullptr;
    table(1, "t");
    {
        TTaxList_FRM list(fmBrowse, {});
        open(list, [&] { EXPECT_EQ(rows(list), "1|t|c"); });
        EXPECT_NE(Tax_DM, nullptr);
    }
    EXPECT_EQ(Tax_DM, nullptr);
}

TEST_F(TaxList, TwoListsStandOnOneDataModuleUntilTheLastIsGone)
{
    delete std::exchange(Tax_DM, nullptr);
    auto first = std::make_unique<TTaxList_FRM>(fmBrowse, QString());
    const TTax_DM *made = Tax_DM;
    {
        const auto second = std::make_unique<TTaxList_FRM>(fmSelect, QString());
        EXPECT_EQ(Tax_DM, made);
        first.reset();
        EXPECT_EQ(Tax_DM, made) << "the second list reads from it";
    }
    EXPECT_EQ(Tax_DM, nullptr);
}

TEST_F(TaxList, ADataModuleThatSomebodyElseMadeStays)
{
    const TTax_DM *theirs = Tax_DM;
    ASSERT_NE(theirs, nullptr);
    std::make_unique<TTaxList_FRM>(fmBrowse, QString()).reset();
    EXPECT_EQ(Tax_DM, theirs);
}

TEST_F(TaxList, F4AddsATableAndTheListShowsIt)
{
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        EXPECT_FALSE(list.EDit_BTN->isEnabled());
        EXPECT_FALSE(list.Del_BTN->isEnabled());
        Keys::runModal(
            [&] {
                Keys::press(&list, Qt::Key_F4);
                return 0;
            },
            [&](QWidget *screen) {
                auto *editor = qobject_cast<TTaxGet_FRM *>(screen);
                ASSERT_NE(editor, nullptr);
                Keys::waitFor([&] { return editor->isActiveWindow(); });
                Keys::type(editor->Title_EDT, "t");
                add(*editor, {"0", "1000", "0"});
                Keys::press(editor, Qt::Key_F3);
            });
        EXPECT_EQ(rows(list), "1|t|");
        EXPECT_TRUE(list.EDit_BTN->isEnabled());
    });
}

TEST_F(TaxList, TheTableThatWasJustEnteredIsTheCurrentOne)
{
    table(3, "three");
    table(7, "seven");
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        goTo(list, 0);
        Keys::runModal(
            [&] {
                Keys::press(&list, Qt::Key_F4);
                return 0;
            },
            [&](QWidget *screen) {
                auto *editor = qobject_cast<TTaxGet_FRM *>(screen);
                Keys::waitFor([&] { return editor->isActiveWindow(); });
                Keys::type(editor->Title_EDT, "new");
                Keys::retype(editor->Code_EDT, "5");
                add(*editor, {"0", "1000", "0"});
                Keys::press(editor, Qt::Key_F3, Qt::ControlModifier); // and goes on to a next one
                Keys::press(editor, Qt::Key_Escape);
            });
        EXPECT_EQ(rows(list), "3|three|c\n5|new|\n7|seven|c");
        EXPECT_EQ(list.Grid()->currentIndex().row(), 1);
    });
}

TEST_F(TaxList, ADoubleClickEditsWhileBrowsingAndSelectsInSelectMode)
{
    table(3, "three");
    table(7, "seven");
    const auto doubleClick = [](TTaxList_FRM &list, int row) {
        const QPoint at = list.Grid()->visualRect(list.Grid()->model()->index(row, 1)).center();
        QTest::mouseClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
    };
    {
        TTaxList_FRM list(fmBrowse, {});
        open(list, [&] {
            Keys::runModal(
                [&] {
                    doubleClick(list, 0);
                    return 0;
                },
                [&](QWidget *screen) {
                    EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(screen, "Title_EDT")->GetText(), "three");
                    Keys::press(screen, Qt::Key_Escape);
                });
        });
        EXPECT_FALSE(list.IsSelected);
    }
    TTaxList_FRM list(fmSelect, {});
    EXPECT_EQ(open(list,
                   [&] {
                       doubleClick(list, 0);
                       EXPECT_FALSE(list.isVisible());
                   }),
              QDialog::Accepted);
    EXPECT_TRUE(list.IsSelected);
    EXPECT_EQ(list.SelectedCode, 3);
    EXPECT_EQ(list.SelectedTitle, "three");
}

TEST_F(TaxList, EnterSelectsAndEscDoesNot)
{
    table(3, "three");
    table(7, "seven");
    {
        TTaxList_FRM list(fmSelect, {});
        EXPECT_EQ(open(list,
                       [&] {
                           Keys::picture(&list, "tax_select");
                           Keys::press(&list, Qt::Key_Return);
                       }),
                  QDialog::Accepted);
        EXPECT_EQ(list.SelectedCode, 7);
        EXPECT_EQ(list.SelectedTitle, "seven");
    }
    TTaxList_FRM list(fmSelect, {});
    EXPECT_EQ(open(list, [&] { Keys::press(&list, Qt::Key_Escape); }), QDialog::Rejected);
    EXPECT_FALSE(list.IsSelected);
    EXPECT_EQ(list.SelectedCode, 0);
}

TEST_F(TaxList, AnEmptyListLeavesEditDeleteAndSelectWithoutEffect)
{
    TTaxList_FRM list(fmSelect, {});
    open(list, [&] {
        for (const Qt::Key key : {Qt::Key_F5, Qt::Key_F7, Qt::Key_Return})
            Keys::press(&list, key);
        EXPECT_TRUE(list.isVisible());
        EXPECT_FALSE(list.IsSelected);
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(TaxList, DeletesHeaderAndBracketsTogether)
{
    table(3, "three", "0|1|2\n3|4|5");
    table(7, "seven");
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        goTo(list, 0);
        messages.answer({No, Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(headers(), "3|three|c\n7|seven|c");
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(rows(list), "7|seven|c");
    });
    EXPECT_EQ(headers(), "7|seven|c");
    EXPECT_EQ(permanent(3), "");
    EXPECT_EQ(permanent(7), "0|1000|0");
    EXPECT_EQ(db.rows("select SoftwarePart, Permission, EventText from UserEvent"), "802|3|3");
}

TEST_F(TaxList, ATableThatACalculationMethodUsesStaysWithItsBrackets)
{
    table(3, "three", "0|1|2\n3|4|5");
    db.run("insert into CalcMethod(Code, Title, TaxMainCode) values(1, 'm', 3)");
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        messages.answer({Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", u"MsgHasSubRecords(سطر)"_s}));
        EXPECT_EQ(rows(list), "3|three|c");
    });
    EXPECT_FALSE(db.connection().InTransaction());
    EXPECT_EQ(headers(), "3|three|c");
    EXPECT_EQ(permanent(3), "0|1|2\n3|4|5");
}

TEST_F(TaxList, AFaultAtAnyStatementOfADeleteLeavesTheTableWhole)
{
    table(3, "three", "0|1|2");
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        for (const char *statement : {"begin", "delete from Tax where", "Delete TaxMain", "commit"}) {
            db.connection().setStatementHook([&](const TStatement &running) {
                if (running.boundText().startsWith(QLatin1String(statement)))
                    throw TDatabaseError(TFault::ConnectionLost, "gone");
            });
            messages.answer({Yes});
            messages.take();
            Keys::press(&list, Qt::Key_F7);
            db.connection().setStatementHook({});
            EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", u"MsgHasSubRecords(سطر)"_s}))
                << statement;
            EXPECT_EQ(messages.last().text,
                      u"این سطر حذف نشد.\n"_s + TDatabaseError(TFault::ConnectionLost, {}).userText())
                << statement << ": no reference refused it";
            EXPECT_FALSE(db.connection().InTransaction()) << statement;
            EXPECT_EQ(headers(), "3|three|c") << statement;
            EXPECT_EQ(permanent(3), "0|1|2") << statement;
            EXPECT_EQ(rows(list), "3|three|c") << statement;
        }
    });
}

TEST_F(TaxList, WithoutTheRightNothingIsAskedOrDeleted)
{
    table(3, "three");
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        Keys::press(&list, Qt::Key_F7);
    });
    EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
    EXPECT_EQ(headers(), "3|three|c");
}

TEST_F(TaxList, NarrowsWhileTyping)
{
    table(3, u"حقوق یکم"_s);
    table(7, u"حقوق دوم"_s);
    TTaxList_FRM list(fmBrowse, {});
    open(list, [&] {
        Keys::type(list.General_Search->Search_EDT()->Widget(), u"يكم"_s); // Arabic yeh and kaf
        EXPECT_TRUE(Keys::waitFor([&] { return list.Grid()->model()->rowCount() == 1; }));
        EXPECT_EQ(rows(list), u"3|حقوق یکم|c"_s);
        Keys::press(&list, Qt::Key_Escape); // empties the search
        EXPECT_TRUE(Keys::waitFor([&] { return list.Grid()->model()->rowCount() == 2; }));
    });
}
