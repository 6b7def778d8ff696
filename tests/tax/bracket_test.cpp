#include "tax/TaxScreens.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class TaxBracket : public TaxScreens {
protected:
    /// Works in the screen of a new bracket of a table that has 1000..2000 at 10 percent.
    void inNew(const std::function<void(TTax_GetDetail_FRM &)> &work)
    {
        table(5, "t", "1000|2000|10");
        edit(5, [&](TTaxGet_FRM &editor) {
            inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, work);
            messages.answer({No});
            Keys::press(&editor, Qt::Key_Escape);
            messages.answer({});
        });
    }
    void expectRefused(TTax_GetDetail_FRM &screen, const QString &message, QWidget *focus)
    {
        messages.take();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(message));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_TRUE(focus->hasFocus()) << message.toStdString();
    }
};

TEST_F(TaxBracket, ValidatesInItsOrder)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        EXPECT_TRUE(screen.FromSalary_EDT->hasFocus());
        EXPECT_TRUE(screen.IsSaved());
        expectRefused(screen, u"MsgRequiredField(از حقوق)"_s, screen.FromSalary_EDT);
        Keys::retype(screen.FromSalary_EDT, "1000");
        expectRefused(screen, u"MsgRequiredField(تا حقوق)"_s, screen.ToSalary_EDT);
        Keys::retype(screen.ToSalary_EDT, "999");
        expectRefused(screen, "ShowSmartMessage:10233()", screen.ToSalary_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        EXPECT_EQ(messages.last().control, screen.ToSalary_EDT);
        Keys::retype(screen.ToSalary_EDT, "1000");
        expectRefused(screen, "ShowSmartMessage:10232()", screen.ToSalary_EDT);
        EXPECT_EQ(messages.last().control, screen.ToSalary_EDT);
        Keys::retype(screen.FromSalary_EDT, "1500");
        Keys::retype(screen.ToSalary_EDT, "1600");
        // The message names the rate otherwise than its caption, on purpose.
        expectRefused(screen, u"MsgRequiredField(در صد)"_s, screen.Percent_EDT);
        Keys::retype(screen.Percent_EDT, "0");
        expectRefused(screen, "ShowSmartMessage:10234()", screen.FromSalary_EDT);
        EXPECT_EQ(messages.last().control, screen.FromSalary_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        Keys::picture(&screen, "tax_bracket");
        Keys::retype(screen.FromSalary_EDT, "2001");
        Keys::retype(screen.ToSalary_EDT, "3000");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(working(), "5|1000|2000|10\n5|2001|3000|0");
    });
}

TEST_F(TaxBracket, ATouchedBoundOverlapsAndAHundredthBesideItDoesNot)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        fill(screen, {"0", "1000", "5"});
        expectRefused(screen, "ShowSmartMessage:10234()", screen.FromSalary_EDT);
        fill(screen, {"2000", "2500", "5"});
        expectRefused(screen, "ShowSmartMessage:10234()", screen.FromSalary_EDT);
        fill(screen, {"0", "999.99", "5"});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(working(), "5|0|999.99|5\n5|1000|2000|10");
    });
}

TEST_F(TaxBracket, BracketsOfOtherTablesPlayNoPart)
{
    db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(6, 3000, 9000, 9)");
    inNew([&](TTax_GetDetail_FRM &screen) {
        fill(screen, {"3000", "4000", "5"});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
}

TEST_F(TaxBracket, ABracketDoesNotOverlapItself)
{
    table(5, "t", "1000|2000|10\n2001|3000|20");
    edit(5, [&](TTaxGet_FRM &editor) {
        inBracket(editor, Qt::Key_Return, Qt::NoModifier, [&](TTax_GetDetail_FRM &screen) {
            EXPECT_EQ(screen.FromSalary_EDT->GetText(), "1000");
            EXPECT_EQ(screen.ToSalary_EDT->GetText(), "2000");
            EXPECT_EQ(screen.Percent_EDT->GetText(), "10");
            EXPECT_EQ(screen.Comment_EDT->GetText(), "b");
            EXPECT_TRUE(screen.IsSaved());
            Keys::retype(screen.ToSalary_EDT, "2001");
            expectRefused(screen, "ShowSmartMessage:10234()", screen.FromSalary_EDT);
            Keys::retype(screen.ToSalary_EDT, "2000");
            Keys::retype(screen.Percent_EDT, "12.5");
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible());
        });
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(permanent(5), "1000|2000|12.5\n2001|3000|20");
}

TEST_F(TaxBracket, TheRateDropsTheDigitThatTakesItOver100)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        const struct {
            const char *typed;
            const char *left;
        } cases[] = {{"150", "15"},     {"99.5", "99.5"}, {"100", "100"},
                     {"100.5", "10.5"}, {"0", "0"},       {"7", "7"}};
        for (const auto &row : cases) {
            Keys::retype(screen.Percent_EDT, row.typed);
            EXPECT_EQ(screen.Percent_EDT->GetText(), row.left) << row.typed;
        }
        Keys::retype(screen.Percent_EDT, "150");
        EXPECT_EQ(screen.Percent_EDT->cursorPosition(), 2);
        QApplication::clipboard()->setText(u"۱۵۰٪"_s);
        Keys::press(&screen, Qt::Key_A, Qt::ControlModifier);
        Keys::press(&screen, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(screen.Percent_EDT->GetText(), "15");
        messages.answer({No});
    });
}

TEST_F(TaxBracket, FifteenDigitsAndDecimalsAndPastedTextArriveExactly)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        QApplication::clipboard()->setText(u"۴٬۸۰۰٬۰۰۰٬۰۰۰ ریال"_s);
        screen.FromSalary_EDT->setFocus();
        Keys::press(&screen, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(screen.FromSalary_EDT->GetText(), "4800000000");
        EXPECT_EQ(screen.FromSalary_EDT->text(), "4,800,000,000");
        Keys::retype(screen.ToSalary_EDT, "9999999999999999"); // the sixteenth is not taken
        EXPECT_EQ(screen.ToSalary_EDT->GetText(), "999999999999999");
        Keys::retype(screen.Percent_EDT, u"۱۲٫۷۵"_s);
        EXPECT_EQ(screen.Percent_EDT->GetText(), "12.75");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(working(), "5|1000|2000|10\n5|4800000000|999999999999999|12.75");
    });
}

TEST_F(TaxBracket, NegativeAndMeaninglessTextIsNotTaken)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        Keys::retype(screen.FromSalary_EDT, "-5x3");
        EXPECT_EQ(screen.FromSalary_EDT->GetText(), "53");
        QApplication::clipboard()->setText("-500");
        Keys::retype(screen.ToSalary_EDT, "7");
        Keys::press(&screen, Qt::Key_A, Qt::ControlModifier);
        Keys::press(&screen, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(screen.ToSalary_EDT->GetText(), "7");
        messages.answer({No});
    });
}

TEST_F(TaxBracket, ALongCommentIsCutAtItsLimit)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        fill(screen, {"3000", "4000", "5"});
        QApplication::clipboard()->setText(QString(10000, u'ش'));
        screen.Comment_EDT->setFocus();
        Keys::press(&screen, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(screen.Comment_EDT->GetText(), QString(50, u'ش'));
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(db.text("select Comment from TmpTax where FromSalary=3000"), QString(50, u'ش'));
    });
}

TEST_F(TaxBracket, ARowDeletedByAnotherWorkstationIsToldAndNothingTypedIsLost)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        inBracket(editor, Qt::Key_Return, Qt::NoModifier, [&](TTax_GetDetail_FRM &screen) {
            Keys::retype(screen.FromSalary_EDT, "5");
            db.run("delete from TmpTax where FromSalary=0");
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s));
            EXPECT_TRUE(screen.isVisible());
            EXPECT_EQ(screen.FromSalary_EDT->GetText(), "5");
            messages.answer({No});
            Keys::press(&screen, Qt::Key_Escape);
        });
        EXPECT_EQ(shown(editor), "1,001|2,000|10"); // the list shows what is there
        EXPECT_EQ(grid(editor)->currentIndex().row(), 0);
    });
}

TEST_F(TaxBracket, ARowGoneBeforeItsScreenOpensIsToldAndStaysOnTheScreenOrIsPutBack)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        messages.take();
        db.run("delete from TmpTax where FromSalary=0");
        grid(editor)->setFocus();
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10");
        EXPECT_TRUE(editor.IsSaved());
        messages.answer({Yes});
        inBracket(editor, Qt::Key_Return, Qt::NoModifier,
                  [](TTax_GetDetail_FRM &screen) { Keys::press(&screen, Qt::Key_Escape); });
        EXPECT_EQ(working(), "5|0|1000|0\n5|1001|2000|10");
    });
}

TEST_F(TaxBracket, SeveralBracketsAreEnteredOneAfterTheOther)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
            fill(screen, {"0", "1000", "0", "x"});
            Keys::press(&screen, Qt::Key_F3, Qt::ControlModifier);
            for (TSmartEdit_ZLM *input :
                 {screen.FromSalary_EDT, screen.ToSalary_EDT, screen.Percent_EDT, screen.Comment_EDT})
                EXPECT_TRUE(input->IsEmpty()) << input->objectName().toStdString();
            EXPECT_TRUE(screen.IsSaved());
            EXPECT_TRUE(screen.FromSalary_EDT->hasFocus());
            fill(screen, {"1001", "2000", "10"});
            Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
            // Saved and still open: saving once more changes the same row.
            Keys::retype(screen.Percent_EDT, "11");
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|11");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxBracket, AFaultAtEveryStatementOfItsSaveKeepsWhatWasTyped)
{
    int fault = 0;
    table(5, "t", "1000|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
            fill(screen, {"3000", "4000", "5", "x"});
            do {
                messages.take();
                db.failStatement(++fault, TFault::Locked);
                Keys::press(&screen, Qt::Key_F3);
                db.failStatement(0);
                if (screen.isVisible()) {
                    const QStringList told = messages.take();
                    ASSERT_EQ(told.size(), 1);
                    EXPECT_TRUE(told[0] == "MsgDatabaseError()" ||
                                told[0] == u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s)
                        << told[0].toStdString();
                    EXPECT_EQ(screen.ToSalary_EDT->GetText(), "4000");
                    EXPECT_EQ(working(), "5|1000|2000|10");
                }
            } while (screen.isVisible() && fault < 20);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(working(), "5|1000|2000|10\n5|3000|4000|5");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_GT(fault, 2); // the overlap query and the insert
}

TEST_F(TaxBracket, ItsNumbersAreZeroUntilItOpens)
{
    const TTax_GetDetail_FRM screen(int(cspTax), 5);
    for (const TSmartEdit_ZLM *input : {screen.FromSalary_EDT, screen.ToSalary_EDT, screen.Percent_EDT})
        EXPECT_EQ(input->GetText(), "0") << input->objectName().toStdString();
    EXPECT_EQ(screen.Comment_EDT->GetText(), "");
}

TEST_F(TaxBracket, ShowsItsTextsAsGiven)
{
    inNew([&](TTax_GetDetail_FRM &screen) {
        const auto caption = [&](const QString &input) {
            return Keys::find<QLabel>(&screen, input + u"_Caption"_s)->text();
        };
        EXPECT_EQ(caption("FromSalary_EDT"), u"  &از حقوق :"_s);
        EXPECT_EQ(caption("ToSalary_EDT"), u"  &تا حقوق :"_s);
        EXPECT_EQ(caption("Percent_EDT"), u"  نر&خ مالیات :"_s);
        EXPECT_EQ(caption("Comment_EDT"), u"  &شرح :"_s);
        EXPECT_EQ(Keys::find<QLabel>(&screen, "Percent_EDT_Suffix")->text(), "%");
        EXPECT_EQ(screen.Save_BTN->text(), u"ذخيره و خروج F3"_s);
        for (TSmartEdit_ZLM *edit : {screen.FromSalary_EDT, screen.ToSalary_EDT, screen.Percent_EDT})
            EXPECT_EQ(edit->MaxLength(), 15);
        EXPECT_EQ(screen.Comment_EDT->MaxLength(), 50);
    });
}
