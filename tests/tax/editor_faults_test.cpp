#include "tax/TaxScreens.h"

#include <QTimer>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(TaxEditor, AFaultAtEveryStatementOfANewTablesSaveLosesNothingThatWasTyped)
{
    for (int statement = 1; statement < 30; ++statement) {
        bool faulty = false;
        edit(0, [&](TTaxGet_FRM &editor) {
            Keys::type(editor.Title_EDT, "t");
            add(editor, {"0", "1000", "0"});
            messages.take();
            db.failStatement(statement, TFault::Refused);
            Keys::press(&editor, Qt::Key_F3);
            faulty = editor.isVisible();
            db.failStatement(0);
            if (!faulty)
                return;
            // The first two only ask whether lock and rows are still there.
            const QStringList said = messages.take();
            EXPECT_EQ(said.value(0),
                      statement <= 2 ? u"MsgDatabaseError()"_s : u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s)
                << statement;
            // Once the header is stored, the user is told what is not.
            EXPECT_EQ(said.size(), headers().isEmpty() ? 1 : 2) << statement;
            EXPECT_EQ(editor.Title_EDT->GetText(), "t");
            EXPECT_EQ(shown(editor), "0|1,000|0");
            EXPECT_FALSE(editor.IsSaved());
            // The same save again, now that the fault is gone.
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible()) << statement << messages.take().join(' ').toStdString();
        });
        EXPECT_EQ(headers(), "1|t|") << statement;
        EXPECT_EQ(permanent(1), "0|1000|0") << statement;
        db.run("delete from TmpTax");
        db.run("delete from CodeLock_TBL");
        if (!faulty) {
            EXPECT_GT(statement, 4); // asking, header, clearing, copying
            return;
        }
        db.run("delete from Tax");
        db.run("delete from TaxMain");
    }
    FAIL() << "the save never succeeded";
}

TEST_F(TaxEditor, AFaultBetweenHeaderAndBracketsLeavesTheHeaderWritten)
{
    table(5, "old", "0|1000|0");
    const int result = edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, "new");
        add(editor, {"1001", "2000", "10"});
        messages.take();
        db.connection().setStatementHook([](const TStatement &statement) {
            if (statement.boundText().startsWith("INSERT into Tax("))
                throw TDatabaseError(TFault::DiskFull, "no space left");
        });
        Keys::press(&editor, Qt::Key_F3);
        db.connection().setStatementHook({});
        const QStringList said = messages.take();
        ASSERT_EQ(said.size(), 2);
        EXPECT_EQ(said[0], u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s);
        EXPECT_TRUE(said[1].contains(u"سطرهای ثبت شده همان سطرهای پیشین است"_s));
        EXPECT_EQ(headers(), "5|new|c");
        EXPECT_EQ(permanent(5), "0|1000|0") << "the old brackets stay until the new ones are there";
        EXPECT_FALSE(editor.IsSaved());
        EXPECT_EQ(working(), "5|0|1000|0\n5|1001|2000|10");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Accepted); // the list shows the new title
}

TEST_F(TaxEditor, AFaultAtEveryStatementOfOpeningIsToldAndLeavesNothingBehind)
{
    table(5, "t");
    for (const int code : {5, 0}) {
        for (int statement = 1; statement < 30; ++statement) {
            bool opened = false;
            const std::unique_ptr<TTaxGet_FRM> editor(code == 0
                                                          ? new TTaxGet_FRM(cspTax, false, QString())
                                                          : new TTaxGet_FRM(cspTax, code, fmEdit, false));
            QTimer::singleShot(0, editor.get(), [&] {
                opened = true;
                db.failStatement(0);
                Keys::press(editor.get(), Qt::Key_Escape);
            });
            db.failStatement(statement, TFault::Locked);
            EXPECT_EQ(editor->exec(), QDialog::Rejected);
            db.failStatement(0);
            if (opened)
                break;
            EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()")) << code << statement;
            EXPECT_EQ(locks(), "") << code << statement;
            EXPECT_EQ(working(), "") << code << statement;
            ASSERT_LT(statement, 29);
        }
    }
}

TEST_F(TaxEditor, ATableDeletedMeanwhileIsToldWhenItIsSaved)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, "new");
        db.run("delete from Tax");
        db.run("delete from TaxMain");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s));
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Title_EDT->GetText(), "new");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(permanent(5), "");
}
