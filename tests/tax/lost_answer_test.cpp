#include "support/LostAnswer.h"
#include "tax/TaxScreens.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

const QString completed = u"MSGCompeletedSuccessfully(ذخيره سازي )"_s;
const QString failed = u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s;

class TaxLostAnswer : public TaxEditor {
protected:
    void leave(TBaseEditor &screen)
    {
        messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    }
};

} // namespace

TEST_F(TaxLostAnswer, ANewTableThatIsStoredIsFinishedByTheNextSaveWithWhatWasTypedSince)
{
    // The header, the old brackets (none), the new ones.
    int code = 0;
    for (const char *beginning : {"insert into [TaxMain]", "delete from Tax ", "INSERT into Tax("}) {
        SCOPED_TRACE(beginning);
        const int result = edit(0, [&](TTaxGet_FRM &editor) {
            Keys::type(editor.Title_EDT, QString(60, u't'));
            Keys::type(editor.Comment_EDT, "c");
            add(editor, {"0", "1000", "0"});
            messages.take();
            {
                const LostAnswer lost(db, beginning);
                messages.answer({Yes}); // the title will be cut, and is known again all the same
                Keys::press(&editor, Qt::Key_F3);
            }
            EXPECT_EQ(messages.take(), (QStringList{u"MsgTextsCut(عنوان)"_s, failed}));
            ASSERT_TRUE(editor.isVisible());
            EXPECT_EQ(shown(editor), "0|1,000|0");
            add(editor, {"1001", "2000", "10"});
            Keys::retype(editor.Title_EDT, "since");
            messages.take();
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(completed));
            EXPECT_FALSE(editor.isVisible());
        });
        EXPECT_EQ(result, QDialog::Accepted);
        EXPECT_EQ(db.rows(u"select Title, Comment from TaxMain where Code=%1"_s.arg(++code)), "since|c");
        EXPECT_EQ(permanent(code), "0|1000|0\n1001|2000|10");
    }
}

TEST_F(TaxLostAnswer, ACodeTypedAfterwardsGivesWayToTheStoredOne)
{
    for (const bool leavesTheCode : {false, true}) {
        db.run("delete from Tax");
        db.run("delete from TaxMain");
        edit(0, [&](TTaxGet_FRM &editor) {
            Keys::type(editor.Title_EDT, "t");
            add(editor, {"0", "1000", "0"});
            {
                const LostAnswer lost(db, "insert into [TaxMain]");
                Keys::press(&editor, Qt::Key_F3);
            }
            messages.take();
            Keys::retype(editor.Code_EDT, "9");
            if (leavesTheCode)
                editor.Comment_EDT->setFocus();
            else
                Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(u"NotSaveable(کد|جدول مالیاتی)"_s));
            EXPECT_EQ(editor.Code_EDT->GetText(), "1");
            EXPECT_EQ(working(), "1|0|1000|0");
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(completed));
            EXPECT_FALSE(editor.isVisible());
        });
        EXPECT_EQ(db.rows("select Code, Title from TaxMain"), "1|t") << "one table, not a second one";
        EXPECT_EQ(permanent(1), "0|1000|0");
        EXPECT_EQ(working(), "");
        EXPECT_EQ(locks(), "");
    }
}

TEST_F(TaxLostAnswer, ATableThatSomebodyElseStoredMeanwhileIsNotWrittenOver)
{
    // By the title, by the comment, and by the brackets alone.
    const struct {
        const char *title;
        const char *comment;
    } theirs[] = {{"theirs", "c"}, {"mine", "theirs"}, {"mine", "c"}};
    int code = 1;
    for (const auto &header : theirs) {
        edit(0, [&](TTaxGet_FRM &editor) {
            Keys::type(editor.Title_EDT, "mine");
            Keys::type(editor.Comment_EDT, "c");
            add(editor, {"0", "1000", "5"});
            breakBefore(db, "insert into [TaxMain]", [&] { Keys::press(&editor, Qt::Key_F3); });
            table(code, header.title, "0|77|7");
            db.run(u"update TaxMain set Comment='%1' where Code=%2"_s.arg(header.comment).arg(code));
            messages.take();
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(failed));
            ASSERT_TRUE(editor.isVisible());
            EXPECT_EQ(db.rows(u"select Title, Comment from TaxMain where Code=%1"_s.arg(code)),
                      QString(header.title) + u'|' + header.comment);
            EXPECT_EQ(permanent(code), "0|77|7");
            // Under another code it is stored.
            Keys::retype(editor.Code_EDT, QString::number(++code));
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(completed));
        });
        EXPECT_EQ(permanent(code), "0|1000|5");
        ++code;
    }
}

TEST_F(TaxLostAnswer, ATableThatIsStoredBelongsToTheListAlsoWhenItsEditorIsLeft)
{
    const int result = edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "stored");
        add(editor, {"0", "1000", "5"});
        {
            const LostAnswer lost(db, "insert into [TaxMain]");
            Keys::press(&editor, Qt::Key_F3);
        }
        leave(editor);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(edit(0,
                   [&](TTaxGet_FRM &editor) {
                       Keys::type(editor.Title_EDT, "not stored");
                       add(editor, {"0", "1000", "5"});
                       breakBefore(db, "insert into [TaxMain]", [&] { Keys::press(&editor, Qt::Key_F3); });
                       leave(editor);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(headers(), "1|stored|");
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(working(), "");
}

TEST_F(TaxLostAnswer, ANewBracketThatIsThereIsNotRefusedAsItsOwnNeighbour)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        add(editor, {"0", "10", "5"});
        inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
            fill(screen, {"1000", "2000", "5", "x"});
            messages.take();
            {
                const LostAnswer lost(db, "insert into [TmpTax]");
                Keys::press(&screen, Qt::Key_F3);
            }
            EXPECT_EQ(messages.take(), QStringList(failed));
            ASSERT_TRUE(screen.isVisible());
            Keys::retype(screen.ToSalary_EDT, "3000");
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList());
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(shown(editor), "0|10|5\n1,000|3,000|5");
        leave(editor);
    });
}

TEST_F(TaxLostAnswer, ABracketThatSomebodyElseEnteredMeanwhileIsAnOverlap)
{
    // Other bounds, another rate, another comment.
    for (const char *theirs : {"1000,2001,5,'x'", "999,2000,5,'x'", "1000,2000,6,'x'", "1000,2000,5,'y'"}) {
        SCOPED_TRACE(theirs);
        edit(0, [&](TTaxGet_FRM &editor) {
            inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
                fill(screen, {"1000", "2000", "5", "x"});
                breakBefore(db, "insert into [TmpTax]", [&] { Keys::press(&screen, Qt::Key_F3); });
                db.run(u"insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent], Comment) "
                       "values(1,%1)"_s.arg(theirs));
                messages.take();
                Keys::press(&screen, Qt::Key_F3);
                EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10234()"));
                leave(screen);
            });
            EXPECT_EQ(db.rows("select FromSalary, ToSalary, [Percent], Comment from TmpTax"),
                      QString(theirs).remove(u'\'').replace(u',', u'|'));
            Keys::press(&editor, Qt::Key_Escape);
        });
    }
}

TEST_F(TaxLostAnswer, ANewBracketThatIsThereIsListedAlsoWhenItsScreenIsLeft)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
            fill(screen, {"1000", "2000", "5"});
            const LostAnswer lost(db, "insert into [TmpTax]");
            Keys::press(&screen, Qt::Key_F3);
            leave(screen);
        });
        EXPECT_EQ(shown(editor), "1,000|2,000|5");
        EXPECT_FALSE(editor.IsSaved());
        leave(editor);
    });
}

TEST_F(TaxLostAnswer, ADeletedBracketLeavesTheGridAndOneThatWasNotDeletedStays)
{
    table(3, "t", "0|10|1\n11|20|2");
    edit(3, [&](TTaxGet_FRM &editor) {
        grid(editor)->setFocus();
        messages.answer({Yes, Yes});
        breakBefore(db, "Delete tmptax", [&] { Keys::press(&editor, Qt::Key_Delete); });
        EXPECT_EQ(messages.take(), QStringList({"MsgDeleteRow()", "MsgDatabaseError()"}));
        EXPECT_EQ(shown(editor), "0|10|1\n11|20|2");
        EXPECT_TRUE(editor.IsSaved());
        {
            const LostAnswer lost(db, "Delete tmptax");
            Keys::press(&editor, Qt::Key_Delete);
        }
        EXPECT_EQ(messages.take(), QStringList({"MsgDeleteRow()", "MsgDatabaseError()"}));
        EXPECT_EQ(shown(editor), "11|20|2");
        EXPECT_FALSE(editor.IsSaved());
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(permanent(3), "11|20|2");
}

TEST_F(TaxLostAnswer, BracketsThatMovedToTheTypedCodeAreNotLostThere)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "moved");
        add(editor, {"0", "10", "5"});
        messages.take();
        {
            const LostAnswer lost(db, "update TmpTax", LostAnswer::ItsTransaction);
            Keys::retype(editor.Code_EDT, "7");
            Keys::press(&editor, Qt::Key_Tab);
        }
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_EQ(editor.Code_EDT->GetText(), "7");
        EXPECT_EQ(shown(editor), "0|10|5");
        EXPECT_EQ(locks(), "7|1");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(completed));
    });
    EXPECT_EQ(headers(), "7|moved|");
    EXPECT_EQ(permanent(7), "0|10|5");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}
