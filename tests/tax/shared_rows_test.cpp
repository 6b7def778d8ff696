#include "tax/TaxScreens.h"

#include "host/Declaration_PKG/Process_unt.h"
#include "host/NewBaseForms_PKG/Recovery_UNT.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

/// The working rows of a tax table are everybody's.
class TaxSharedRows : public TaxScreens {
protected:
    /// Somebody else opens table 5 and leaves it again, or stays.
    void elsewhere(const QString &rows = {})
    {
        db.run("delete from TmpTax where TaxMainCode=5");
        if (!rows.isEmpty())
            db.run(QString("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(5, %1)")
                       .arg(rows));
    }
    void save(TTaxGet_FRM &editor) { Keys::press(&editor, Qt::Key_F3); }
    void expectAsked()
    {
        const QStringList said = messages.take();
        ASSERT_EQ(said.size(), 1) << said.join(' ').toStdString();
        EXPECT_TRUE(said[0].contains(u"در پنجره دیگری"_s)) << said[0].toStdString();
    }
};

TEST_F(TaxSharedRows, RowsThatAnotherEditorPutInPlaceAreNotSavedUnderThisOnesName)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, "new");
        elsewhere("0, 9, 1");
        messages.answer({No});
        save(editor);
        expectAsked();
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10");
        EXPECT_EQ(headers(), "5|t|c") << "nothing is saved";
        EXPECT_EQ(permanent(5), "0|1000|0\n1001|2000|10");
        messages.answer({Yes});
        save(editor);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(headers(), "5|new|c");
    EXPECT_EQ(permanent(5), "0|1000|0\n1001|2000|10");
    EXPECT_EQ(db.text("select count(*) from Tax where Comment='b'"), "2");
    EXPECT_EQ(working(), "");
}

TEST_F(TaxSharedRows, RowsThatSomebodyClearedArePutBackFromTheGrid)
{
    table(5, "t", "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) {
        add(editor, {"1001", "2000", "10.25", "mine"});
        messages.take();
        elsewhere();
        messages.answer({Yes});
        save(editor);
    });
    EXPECT_EQ(permanent(5), "0|1000|0\n1001|2000|10.25");
    EXPECT_EQ(db.text("select Comment from Tax where FromSalary=1001"), "mine");
}

TEST_F(TaxSharedRows, ARowIsNotAddedToAnotherEditorsRows)
{
    table(5, "t", "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) {
        for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Asterisk, Qt::Key_Minus}) {
            elsewhere("0, 9, 1");
            messages.answer({No});
            grid(editor)->setFocus();
            Keys::press(&editor, key, Qt::KeypadModifier);
            expectAsked();
            EXPECT_EQ(shown(editor), "0|1,000|0");
            EXPECT_EQ(working(), "5|0|9|1");
        }
        messages.answer({Yes});
        add(editor, {"1001", "2000", "10"});
        EXPECT_EQ(working(), "5|0|1000|0\n5|1001|2000|10");
        save(editor);
    });
    EXPECT_EQ(permanent(5), "0|1000|0\n1001|2000|10");
}

TEST_F(TaxSharedRows, ANewTablesFreedLockIsTakenAgainAfterAQuestion)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"0", "1000", "0"});
        messages.take();
        db.run("delete from CodeLock_TBL");
        messages.answer({Yes});
        save(editor);
        const QStringList said = messages.take();
        ASSERT_EQ(said.size(), 2);
        EXPECT_TRUE(said[0].contains(u"قفل این رکورد در این میان آزاد شده است"_s)) << said[0].toStdString();
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(permanent(1), "0|1000|0");
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(working(), "");
}

TEST_F(TaxSharedRows, ANewTablesCodeThatAnotherStationGotIsNotSavedAndItsRowsStay)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"0", "1000", "0"});
        messages.take();
        db.run("delete from TmpTax");
        db.run("update CodeLock_TBL set Com_Index=2");
        db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(1, 7, 8, 9)");
        save(editor);
        EXPECT_TRUE(messages.take().value(0).contains(u"ایستگاه دیگری"_s));
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(shown(editor), "0|1,000|0");
        // Another code is the way out, and takes what the grid shows along.
        Keys::retype(editor.Code_EDT, "8");
        save(editor);
        EXPECT_FALSE(editor.isVisible()) << messages.take().join(' ').toStdString();
    });
    EXPECT_EQ(headers(), "8|t|");
    EXPECT_EQ(permanent(8), "0|1000|0");
    EXPECT_EQ(working(), "1|7|8|9") << "the other station's";
    EXPECT_EQ(locks(), "1|2");
}

TEST_F(TaxSharedRows, AFreedEditorThatIsLeftDoesNotClearTheOthersRows)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        db.run("update CodeLock_TBL set Com_Index=2");
        db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(1, 7, 8, 9)");
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "1|7|8|9");
    EXPECT_EQ(locks(), "1|2");
}

TEST_F(TaxSharedRows, ASaveThatFailedIsUnsavedAlsoWhereNothingWasTyped)
{
    table(5, "t", "0|1000|0");
    edit(5, [&](TTaxGet_FRM &editor) {
        db.connection().setStatementHook([](const TStatement &statement) {
            if (statement.boundText().startsWith("update [TaxMain]", Qt::CaseInsensitive))
                throw TDatabaseError(TFault::DiskFull, "no space left");
        });
        save(editor);
        db.connection().setStatementHook({});
        EXPECT_FALSE(editor.IsSaved());
        messages.take();
        messages.answer({Cancel});
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_EQ(messages.take(), QStringList("MsgNotSaved()"));
        EXPECT_TRUE(editor.isVisible());
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}
