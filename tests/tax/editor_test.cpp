#include "tax/TaxScreens.h"

#include "host/Component_ZLM/DetailStrip_ZLM.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <utility>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(TaxEditor, TheYearOf1403IsEnteredByKeysAndStored)
{
    const int result = edit(0, [&](TTaxGet_FRM &editor) {
        EXPECT_EQ(editor.Code_EDT->GetText(), "1");
        EXPECT_EQ(locks(), "1|1");
        expectFocus(editor.Title_EDT);
        Keys::type(editor.Title_EDT, u"مالیات حقوق ۱۴۰۳"_s);
        add(editor, {"0", "1440000000", "0", u"معاف"_s});
        EXPECT_FALSE(editor.IsSaved());
        add(editor, {"1440000001", "1980000000", "10"});
        add(editor, {"1980000001", "3240000000", "15"});
        add(editor, {"3240000001", "4800000000", "20"});
        add(editor, {"4800000001", "99999999999999", "30"});
        EXPECT_EQ(shown(editor), "0|1,440,000,000|0\n"
                                 "1,440,000,001|1,980,000,000|10\n"
                                 "1,980,000,001|3,240,000,000|15\n"
                                 "3,240,000,001|4,800,000,000|20\n"
                                 "4,800,000,001|99,999,999,999,999|30");
        Keys::picture(&editor, "tax_editor");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي )"_s));
    EXPECT_EQ(headers(), u"1|مالیات حقوق ۱۴۰۳|"_s);
    EXPECT_EQ(permanent(1), "0|1440000000|0\n1440000001|1980000000|10\n1980000001|3240000000|15\n"
                            "3240000001|4800000000|20\n4800000001|99999999999999|30");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxEditor, ShowsItsTextsAsGiven)
{
    table(5, u"جدول ۱۴۰۴"_s, "0|2880000000|0\n2880000001|3600000000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        EXPECT_EQ(editor.windowTitle(), u"جدول مالیاتی"_s);
        EXPECT_EQ(editor.Title_EDT->GetText(), u"جدول ۱۴۰۴"_s);
        EXPECT_EQ(editor.Code_EDT->GetText(), "5");
        EXPECT_EQ(editor.Comment_EDT->GetText(), "c");
        EXPECT_EQ(editor.Title_EDT->MaxLength(), 100);
        EXPECT_EQ(editor.Comment_EDT->MaxLength(), 50);
        EXPECT_EQ(editor.Code_EDT->MaxLength(), 15);
        auto *notice = Keys::find<QLabel>(&editor, "Notice_LBL");
        EXPECT_EQ(notice->text(),
                  u"توجه : جهت محاسبه صحیح مالیات لطفا بازه های مالیاتی را به ترتیب  و با دقت وارد نمایید. "
                  u"همچنین بازه معاف از مالیات که ار صفر شروع میشود را نیز وارد نمایید."_s);
        EXPECT_TRUE(notice->font().bold());
        EXPECT_EQ(Keys::find<QToolButton>(&editor, "AddRow_BTN")->text(), u"سطر جدید"_s);
        EXPECT_EQ(Keys::find<QToolButton>(&editor, "EditRow_BTN")->text(), u"ویرایش سطر"_s);
        EXPECT_EQ(Keys::find<QToolButton>(&editor, "DelRow_BTN")->text(), u"حذف سطر"_s);
        EXPECT_EQ(editor.Save_BTN->text(), u"ذخيره F3"_s);
        EXPECT_EQ(editor.EXit_BTN->text(), u"خروج Esc"_s);
        const auto caption = [&](const QString &input) {
            return Keys::find<QLabel>(&editor, input + u"_Caption"_s)->text();
        };
        EXPECT_EQ(caption("Title_EDT"), u"  &عنوان :"_s);
        EXPECT_EQ(caption("Code_EDT"), u"  &کد :"_s);
        EXPECT_EQ(caption("Comment_EDT"), u"  &شرح :"_s);
        auto *strip = Keys::child(&editor, "TaxDetail_View");
        EXPECT_EQ(qobject_cast<QGroupBox *>(strip->parentWidget())->title(), u"لیست"_s);
        QStringList fields;
        for (const QLabel *label : strip->findChildren<QLabel *>())
            if (label->objectName().isEmpty())
                fields << label->text();
        EXPECT_EQ(fields, (QStringList{u"شرح :"_s, u"از حقوق :"_s, u"تا حقوق :"_s, u"نرخ مالیات :"_s}));
        const QAbstractItemModel *model = grid(editor)->model();
        QStringList captions;
        for (int column = 0; column < model->columnCount(); ++column)
            captions << model->headerData(column, Qt::Horizontal).toString();
        EXPECT_EQ(captions, (QStringList{u"از حقوق"_s, u"تا حقوق"_s, u"نرخ مالیات"_s}));
        Keys::picture(&editor, "tax_editor_1404");
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxEditor, TheStripShowsTheCurrentBracket)
{
    table(5, "t", "0|1000|0\n1001|2500|12.5");
    edit(5, [&](TTaxGet_FRM &editor) {
        auto *strip = Keys::find<TDetailStrip_ZLM>(&editor, "TaxDetail_View");
        EXPECT_EQ(strip->ShownText("ToSalary"), "1,000");
        grid(editor)->setFocus();
        Keys::press(&editor, Qt::Key_Down);
        EXPECT_EQ(strip->ShownText("FromSalary"), "1,001");
        EXPECT_EQ(strip->ShownText("ToSalary"), "2,500");
        EXPECT_EQ(strip->ShownText("Percent"), "12.5");
        EXPECT_EQ(strip->ShownText("Comment"), "b");
    });
}

TEST_F(TaxEditor, RunsItsStatementsInTheirOrder)
{
    // What the statements of opening, saving and closing are about, in the order in which they run.
    const auto steps = [&] {
        const struct {
            const char *begins;
            const char *step;
        } known[] = {{"select * from TaxMain where Code=", "header"},
                     {"delete from tmpTax where TaxMainCode=", "clear working"},
                     {"INSERT INTO TmpTax(TaxMainCode,FromSalary,Tosalary,Comment,[Percent])   SELECT "
                      "TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM Tax where TaxMainCode=",
                      "copy in"},
                     {"select * from Tmptax where TaxMainCode = 5 order by fromSalary", "working list"},
                     {"update [TaxMain]", "write header"},
                     {"update UserEventHead ", "event"},
                     {"delete from Tax where TaxMainCode=", "clear saved"},
                     {"INSERT into Tax(TaxMainCode, FromSalary, Tosalary, Comment, [Percent]) SELECT "
                      "TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM TmpTax where TaxMainCode=",
                      "copy back"}};
        QStringList found;
        for (const QString &statement : db.trace()) {
            if (statement.contains("CodeLock_TBL") || statement.contains("WorkingRows") ||
                statement.contains("UserAccount"))
                continue; // whose rows they are, and what the user may do
            QString step = statement;
            for (const auto &row : known)
                if (statement.startsWith(QLatin1String(row.begins), Qt::CaseSensitive))
                    step = QLatin1String(row.step);
            if (found.isEmpty() || found.last() != step)
                found << step;
        }
        return found;
    };
    table(5, "t");
    db.clearTrace();
    edit(5, [&](TTaxGet_FRM &editor) {
        EXPECT_EQ(steps(), (QStringList{"header", "clear working", "copy in", "working list"}));
        Keys::retype(editor.Title_EDT, "new");
        db.clearTrace();
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(steps(), (QStringList{"select * from TmpTax where TaxMainCode=5", "write header",
                                        "begin transaction", "clear saved", "copy back", "commit transaction",
                                        "event", "clear working"}));
    });
}

TEST_F(TaxEditor, ValidatesInItsOrder)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Code_EDT, "");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(کد)"_s));
        expectFocus(editor.Code_EDT);
        Keys::retype(editor.Code_EDT, "0");
        Keys::press(&editor, Qt::Key_Tab);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"NotZeroValue(کد)"_s));
        expectFocus(editor.Code_EDT);
        Keys::retype(editor.Code_EDT, "1");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(عنوان)"_s));
        expectFocus(editor.Title_EDT);
        Keys::type(editor.Title_EDT, "t");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgNotEntered(سطري)"_s));
        expectFocus(grid(editor));
        EXPECT_EQ(headers(), "");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList("MsgNotSaved()"));
}

TEST_F(TaxEditor, ANewRowNeedsACode)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Code_EDT, "");
        Keys::find<QToolButton>(&editor, "AddRow_BTN")->click();
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(کد)"_s));
        expectFocus(editor.Code_EDT);
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
}

TEST_F(TaxEditor, BracketsAreListedByTheirLowerBoundInWhateverOrderTheyCome)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"2001", "3000", "20"});
        add(editor, {"0", "1000", "0"});
        add(editor, {"1001", "2000", "10"});
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10\n2,001|3,000|20");
        EXPECT_EQ(grid(editor)->currentIndex().row(), 2); // the last bracket, whichever was added
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(permanent(1), "0|1000|0\n1001|2000|10\n2001|3000|20");
}

TEST_F(TaxEditor, AChangedBracketStaysCurrentAndTheViewStill)
{
    QStringList brackets;
    for (int i = 0; i < 200; ++i)
        brackets << u"%1|%2|10"_s.arg(i * 10).arg(i * 10 + 5);
    table(5, "t", brackets.join(u'\n'));
    edit(5, [&](TTaxGet_FRM &editor) {
        Tax_DM->DetailList_QUR->moveTo(120);
        const int scrolled = grid(editor)->verticalScrollBar()->value();
        EXPECT_GT(scrolled, 0);
        inBracket(editor, Qt::Key_Return, Qt::NoModifier, [&](TTax_GetDetail_FRM &screen) {
            Keys::retype(screen.Percent_EDT, "33");
            Keys::press(&screen, Qt::Key_F3);
        });
        EXPECT_EQ(grid(editor)->currentIndex().row(), 120);
        EXPECT_EQ(Tax_DM->DetailList_QUR->asFloat("Percent"), 33);
        EXPECT_EQ(grid(editor)->verticalScrollBar()->value(), scrolled);
        EXPECT_FALSE(editor.IsSaved());
        // Moved to another place by its new bounds, it is still the current one.
        inBracket(editor, Qt::Key_Asterisk, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
            Keys::retype(screen.FromSalary_EDT, "5000");
            Keys::retype(screen.ToSalary_EDT, "5001");
            Keys::press(&screen, Qt::Key_F3);
        });
        EXPECT_EQ(grid(editor)->currentIndex().row(), 199);
        EXPECT_EQ(Tax_DM->DetailList_QUR->asFloat("Percent"), 33);
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxEditor, ADoubleClickOpensTheBracket)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        TSmartGrid_ZLM *rows = grid(editor);
        const QPoint at = rows->visualRect(rows->model()->index(1, 0)).center();
        Keys::runModal(
            [&] {
                QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, at);
                QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {}, at);
                return 0;
            },
            [&](QWidget *screen) {
                EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(screen, "FromSalary_EDT")->GetText(), "1001");
                Keys::press(screen, Qt::Key_Escape);
            });
        EXPECT_TRUE(editor.IsSaved());
    });
}

TEST_F(TaxEditor, DeleteAndMinusAskAndDelete)
{
    table(5, "t", "0|1000|0\n1001|2000|10\n2001|3000|20");
    edit(5, [&](TTaxGet_FRM &editor) {
        grid(editor)->setFocus();
        messages.answer({No, Yes, Yes});
        Keys::press(&editor, Qt::Key_Delete);
        EXPECT_EQ(grid(editor)->model()->rowCount(), 3);
        EXPECT_TRUE(editor.IsSaved());
        Keys::press(&editor, Qt::Key_Down);
        Keys::press(&editor, Qt::Key_Delete);
        EXPECT_EQ(shown(editor), "0|1,000|0\n2,001|3,000|20");
        EXPECT_EQ(grid(editor)->currentIndex().row(), 1);
        EXPECT_FALSE(editor.IsSaved());
        Keys::press(&editor, Qt::Key_Minus, Qt::KeypadModifier);
        EXPECT_EQ(shown(editor), "0|1,000|0");
        EXPECT_EQ(grid(editor)->currentIndex().row(), 0);
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(permanent(5), "0|1000|0");
}

TEST_F(TaxEditor, WithoutTheRightNothingIsAskedOrDeleted)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        grid(editor)->setFocus();
        Keys::press(&editor, Qt::Key_Delete);
        EXPECT_EQ(grid(editor)->model()->rowCount(), 1);
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
    });
}

TEST_F(TaxEditor, AnEmptyGridLeavesEditAndDeleteWithoutEffect)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        grid(editor)->setFocus();
        EXPECT_FALSE(Keys::find<QToolButton>(&editor, "EditRow_BTN")->isEnabled());
        EXPECT_FALSE(Keys::find<QToolButton>(&editor, "DelRow_BTN")->isEnabled());
        Keys::press(&editor, Qt::Key_Delete);
        Keys::press(&editor, Qt::Key_Minus, Qt::KeypadModifier);
        Keys::press(&editor, Qt::Key_Asterisk, Qt::KeypadModifier);
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.isVisible());
        Keys::picture(&editor, "tax_editor_empty");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(TaxEditor, ClosingWithoutSavingDropsAllBracketChanges)
{
    table(5, "t", "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) {
        add(editor, {"1001", "2000", "10"});
        EXPECT_EQ(working(), "5|0|1000|0\n5|1001|2000|10");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
    EXPECT_EQ(permanent(5), "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) { EXPECT_EQ(shown(editor), "0|1,000|0"); });
}

TEST_F(TaxEditor, RowsLeftBehindAreDroppedByTheNextOpening)
{
    table(5, "t", "0|1000|0");
    db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(5, 7, 8, 9)");
    db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(6, 7, 8, 9)");
    edit(5, [&](TTaxGet_FRM &editor) { EXPECT_EQ(shown(editor), "0|1,000|0"); });
    EXPECT_EQ(working(), "6|7|8|9");
    edit(0, [&](TTaxGet_FRM &editor) {
        EXPECT_EQ(editor.Code_EDT->GetText(), "6");
        EXPECT_EQ(shown(editor), "");
    });
    EXPECT_EQ(working(), "");
}

TEST_F(TaxEditor, WorkingRowsClearedElsewhereDoNotTakeTheSavedBracketsAway)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, "new");
        db.run("delete from TmpTax"); // the same table was opened and closed on another workstation
        messages.answer({No});
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(messages.take().value(0).startsWith("ShowSmartMessage("));
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10");
        EXPECT_EQ(editor.Title_EDT->GetText(), "new");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(headers(), "5|t|c");
    EXPECT_EQ(permanent(5), "0|1000|0\n1001|2000|10");
}

TEST_F(TaxEditor, WhoOpensTheSameTableSecondClearsTheFirstOnesWorkingRows)
{
    table(5, "t", "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) {
        add(editor, {"1001", "2000", "10"});
        EXPECT_EQ(working(), "5|0|1000|0\n5|1001|2000|10");
        {
            TTax_DM *mine = std::exchange(Tax_DM, new TTax_DM(nullptr));
            edit(5, [&](TTaxGet_FRM &second) {
                EXPECT_EQ(shown(second), "0|1,000|0");
                EXPECT_EQ(working(), "5|0|1000|0");
            });
            delete std::exchange(Tax_DM, mine);
        }
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(permanent(5), "0|1000|0");
}

TEST_F(TaxEditor, AmountsOfFifteenDigitsFitTheirColumnsAndTheStrip)
{
    table(5, u"جدول ۱۴۰۴"_s, "0|1234567890123.5|0\n1234567890124|999999999999999|99.123456789");
    edit(5, [&](TTaxGet_FRM &editor) {
        TSmartGrid_ZLM *rows = grid(editor);
        rows->setFocus();
        Keys::press(&editor, Qt::Key_End);
        EXPECT_EQ(rows->model()->index(1, 1).data().toString(), "999,999,999,999,999");
        for (int column = 0; column < 2; ++column)
            EXPECT_LE(rows->fontMetrics().horizontalAdvance("999,999,999,999,999") + 8,
                      rows->columnWidth(column));
        auto *to = Keys::find<QLabel>(Keys::child(&editor, "TaxDetail_View"), "ToSalary_LBL");
        EXPECT_EQ(to->text(), "999,999,999,999,999");
        EXPECT_LE(to->sizeHint().width(), to->width());
        Keys::picture(&editor, "tax_editor_15_digits");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(permanent(5), "0|1234567890123.5|0\n1234567890124|999999999999999|99.123456789");
}

TEST_F(TaxEditor, SavingAndStayingReadsTheStoredTableAndSavesAgain)
{
    const int result = edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"0", "1000", "0"});
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_TRUE(editor.IsSaved());
        EXPECT_EQ(editor.Mode(), fmEdit);
        EXPECT_EQ(shown(editor), "0|1,000|0");
        EXPECT_EQ(working(), "1|0|1000|0");
        add(editor, {"1001", "2000", "10"});
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(permanent(1), "0|1000|0\n1001|2000|10");
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(working(), "");
    EXPECT_EQ(permanent(1), "0|1000|0\n1001|2000|10");
}

TEST_F(TaxEditor, SavingAndStartingANewOneTakesAFreshCodeAndLock)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "first");
        Keys::type(editor.Comment_EDT, "c");
        add(editor, {"0", "1000", "0"});
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(editor.Code_EDT->GetText(), "2");
        EXPECT_EQ(editor.Title_EDT->GetText(), "");
        EXPECT_EQ(editor.Comment_EDT->GetText(), "");
        EXPECT_EQ(shown(editor), "");
        EXPECT_EQ(working(), "");
        EXPECT_EQ(locks(), "2|1");
        EXPECT_EQ(editor.Mode(), fmNew);
        EXPECT_TRUE(editor.IsSaved());
        expectFocus(editor.Title_EDT);
    });
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(headers(), "1|first|c");
}

TEST_F(TaxEditor, TitlesKeepTheirOwnLimitsAndAreCutToTheirColumns)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        QApplication::clipboard()->setText(QString(10000, u'ع'));
        editor.Title_EDT->setFocus();
        Keys::press(&editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor.Title_EDT->GetText().size(), 100);
        editor.Comment_EDT->setFocus();
        Keys::press(&editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor.Comment_EDT->GetText().size(), 50);
        add(editor, {"0", "1000", "0"});
        messages.answer({Yes});
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.text("select Title from TaxMain").size(), 50);
    EXPECT_EQ(db.text("select Comment from TaxMain").size(), 50);
}

// A code typed by hand.
