#include "tax/TaxScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QTest>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(TaxEditor, TheCodeIsZeroUntilOneIsAllotted)
{
    const TTaxGet_FRM editor(cspTax, false, QString());
    EXPECT_EQ(editor.Code_EDT->GetText(), "0");
}

TEST_F(TaxEditor, EnterAndTabGoFromTheTitleOverTheCodeAndTheCommentToTheGrid)
{
    table(5, "t");
    for (const auto key : {Qt::Key_Return, Qt::Key_Tab}) {
        edit(5, [&](TTaxGet_FRM &editor) {
            for (QWidget *input : QList<QWidget *>{editor.Title_EDT, editor.Code_EDT, editor.Comment_EDT}) {
                expectFocus(input);
                Keys::press(&editor, key);
            }
            expectFocus(grid(editor));
            EXPECT_TRUE(editor.IsSaved());
        });
    }
}

TEST_F(TaxEditor, TypingInTheTitleOrTheCommentMarksTheTableUnsaved)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        for (TSmartEdit_ZLM *input : {editor.Title_EDT, editor.Comment_EDT}) {
            editor.SetIsSaved(true);
            Keys::type(input, "x");
            EXPECT_FALSE(editor.IsSaved()) << input->objectName().toStdString();
        }
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

namespace {

/// Clicks one of the buttons beside the grid; `work` gets the bracket screen that comes up.
void clickAndWork(TTaxGet_FRM &editor, const QString &button,
                  const std::function<void(TTax_GetDetail_FRM &)> &work)
{
    Keys::runModal(
        [&] {
            QTest::mouseClick(Keys::find<QToolButton>(&editor, button), Qt::LeftButton);
            return 0;
        },
        [&](QWidget *screen) {
            auto *bracket = qobject_cast<TTax_GetDetail_FRM *>(screen);
            ASSERT_NE(bracket, nullptr);
            work(*bracket);
        });
}

} // namespace

TEST_F(TaxEditor, AClickOnNewRowOpensAnEmptyBracket)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        clickAndWork(editor, "AddRow_BTN", [&](TTax_GetDetail_FRM &bracket) {
            EXPECT_EQ(bracket.Mode(), fmNew);
            EXPECT_TRUE(bracket.FromSalary_EDT->IsEmpty());
            fill(bracket, {"1001", "2000", "10"});
            Keys::press(&bracket, Qt::Key_F3);
        });
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10");
        EXPECT_FALSE(editor.IsSaved());
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxEditor, AClickOnEditRowOpensTheCurrentBracket)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        Tax_DM->DetailList_QUR->moveTo(1);
        clickAndWork(editor, "EditRow_BTN", [&](TTax_GetDetail_FRM &bracket) {
            EXPECT_EQ(bracket.FromSalary_EDT->GetText(), "1001");
            Keys::retype(bracket.Percent_EDT, "11");
            Keys::press(&bracket, Qt::Key_F3);
        });
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|11");
        EXPECT_FALSE(editor.IsSaved());
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxEditor, AClickOnDeleteRowAsksAndDeletesTheCurrentBracket)
{
    table(5, "t", "0|1000|0\n1001|2000|10");
    edit(5, [&](TTaxGet_FRM &editor) {
        Tax_DM->DetailList_QUR->moveTo(1);
        auto *button = Keys::find<QToolButton>(&editor, "DelRow_BTN");
        messages.answer({No, Yes});
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        EXPECT_EQ(grid(editor)->model()->rowCount(), 2);
        EXPECT_TRUE(editor.IsSaved());
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(shown(editor), "0|1,000|0");
        EXPECT_FALSE(editor.IsSaved());
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxEditor, DeletingABracketNeedsTheRightToDeleteAndNoOther)
{
    table(5, "t");
    const struct {
        QList<int> rights;
        bool deletes;
    } cases[] = {{{cpDelete}, true}, {{cpNew, cpEdit, cpOpen}, false}};
    for (const auto &row : cases) {
        edit(5, [&](TTaxGet_FRM &editor) {
            UserInfo.IsAdmin = false;
            SeatUser(UserInfo);
            db.run("delete from UserRight");
            for (const int right : row.rights)
                db.run(u"insert into UserRight(UserCode, SoftwarePart, Permission) values(1, 802, %1)"_s.arg(
                    right));
            messages.take();
            if (row.deletes)
                messages.answer({Yes, No}); // the row's question, and that of closing
            grid(editor)->setFocus();
            Keys::press(&editor, Qt::Key_Delete);
            EXPECT_EQ(messages.take(), QStringList(row.deletes ? "MsgDeleteRow()" : "MsgNoPermission()"));
            EXPECT_EQ(shown(editor), row.deletes ? "" : "0|1,000|0");
            EXPECT_EQ(editor.IsSaved(), !row.deletes);
            Keys::press(&editor, Qt::Key_Escape);
        });
        UserInfo.IsAdmin = true;
        SeatUser(UserInfo);
    }
}

TEST_F(TaxEditor, AHeaderThatCannotBeWrittenLeavesTheStoredBracketsAlone)
{
    table(5, "t");
    edit(5, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, "new");
        add(editor, {"1001", "2000", "10"});
        messages.take();
        bool refused = false;
        db.connection().setStatementHook([&](const TStatement &statement) {
            if (!statement.boundText().startsWith("update [TaxMain]"))
                return;
            refused = true;
            throw TDatabaseError(TFault::Locked, "played");
        });
        Keys::press(&editor, Qt::Key_F3);
        db.connection().setStatementHook({});
        EXPECT_TRUE(refused);
        EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي)"_s));
        EXPECT_TRUE(editor.isVisible());
        EXPECT_FALSE(editor.IsSaved());
        EXPECT_EQ(headers(), "5|t|c");
        EXPECT_EQ(permanent(5), "0|1000|0");
        EXPECT_EQ(shown(editor), "0|1,000|0\n1,001|2,000|10");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(permanent(5), "0|1000|0");
}
