#include "tax/TaxScreens.h"

#include <QApplication>
#include <QClipboard>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(TaxEditor, AFreeCodeTypedByHandTakesTheLockAndTheWorkingRowsAlong)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"0", "1000", "0"});
        Keys::retype(editor.Code_EDT, u"۷۷"_s);
        Keys::press(&editor, Qt::Key_Tab);
        EXPECT_EQ(locks(), "77|1");
        EXPECT_EQ(working(), "77|0|1000|0");
        EXPECT_EQ(shown(editor), "0|1,000|0");
        add(editor, {"1001", "2000", "10"});
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(headers(), "77|t|");
    EXPECT_EQ(permanent(77), "0|1000|0\n1001|2000|10");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxEditor, ACodeTypedJustBeforeF3IsTakenByTheSave)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::type(editor.Title_EDT, "t");
        add(editor, {"0", "1000", "0"});
        Keys::retype(editor.Code_EDT, "77");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(headers(), "77|t|");
    EXPECT_EQ(permanent(77), "0|1000|0");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxEditor, AStoredOrLockedCodeTypedByHandIsRefusedAndTheOldOneComesBack)
{
    table(5, "theirs", "0|10|1");
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 802, 2)");
    edit(0, [&](TTaxGet_FRM &editor) {
        add(editor, {"0", "1000", "0"});
        for (const char *code : {"5", "9"}) {
            Keys::retype(editor.Code_EDT, code);
            Keys::press(&editor, Qt::Key_Tab);
            EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|جدول مالیاتی)"_s)) << code;
            EXPECT_EQ(editor.Code_EDT->GetText(), "6");
            expectFocus(editor.Code_EDT);
        }
        EXPECT_EQ(working(), "6|0|1000|0");
        Keys::type(editor.Title_EDT, "t");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(headers(), "5|theirs|c\n6|t|");
    EXPECT_EQ(permanent(5), "0|10|1");
    EXPECT_EQ(locks(), "9|2");
}

TEST_F(TaxEditor, ACodeBeyondTheSpinRangeIsNotTaken)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Code_EDT, "9999999");
        EXPECT_EQ(editor.Code_EDT->GetText(), "999999");
        QApplication::clipboard()->setText("123456789012345");
        Keys::press(&editor, Qt::Key_A, Qt::ControlModifier);
        Keys::press(&editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor.Code_EDT->GetText(), "999999");
        Keys::press(&editor, Qt::Key_Up); // the spin buttons' keys end there
        EXPECT_EQ(editor.Code_EDT->GetText(), "999999");
        Keys::retype(editor.Code_EDT, "2");
        Keys::press(&editor, Qt::Key_Down);
        Keys::press(&editor, Qt::Key_Down);
        EXPECT_EQ(editor.Code_EDT->GetText(), "1");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(working(), "");
}

TEST_F(TaxEditor, TheCodeOfAStoredTableCannotBeChanged)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Code_EDT, "6");
        Keys::press(&editor, Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"NotSaveable(کد|جدول مالیاتی)"_s));
        EXPECT_EQ(editor.Code_EDT->GetText(), "5");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(headers(), "5|t|c");
    EXPECT_EQ(permanent(5), "0|1000|0");
}

TEST_F(TaxEditor, ACodeTypedAndLeftByEscTouchesNoOtherTable)
{
    db.run("insert into TmpTax(TaxMainCode, FromSalary, ToSalary, [Percent]) values(8, 7, 8, 9)");
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Code_EDT, "8");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "8|7|8|9"); // rows of an editor on another workstation
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxEditor, AFaultWhileTheCodeMovesLeavesTheOldCodeWithItsRows)
{
    for (int statement = 1; statement < 30; ++statement) {
        bool faulty = false;
        edit(0, [&](TTaxGet_FRM &editor) {
            Keys::type(editor.Title_EDT, "t");
            add(editor, {"0", "1000", "0"});
            Keys::retype(editor.Code_EDT, "50");
            messages.take();
            db.failStatement(statement, TFault::Locked);
            Keys::press(&editor, Qt::Key_Tab);
            faulty = db.statementCount() >= statement;
            db.failStatement(0);
            if (faulty) {
                EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()")) << statement;
                EXPECT_EQ(editor.Code_EDT->GetText(), "1") << statement;
                EXPECT_EQ(locks(), "1|1") << statement;
            }
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible()) << statement << messages.take().join(' ').toStdString();
        });
        EXPECT_EQ(headers(), faulty ? "1|t|" : "50|t|") << statement;
        EXPECT_EQ(permanent(faulty ? 1 : 50), "0|1000|0") << statement;
        EXPECT_EQ(working(), "") << statement;
        EXPECT_EQ(locks(), "") << statement;
        if (!faulty)
            return;
        db.run("delete from Tax");
        db.run("delete from TaxMain");
    }
    FAIL() << "the code never moved";
}

// Faults of a save.
