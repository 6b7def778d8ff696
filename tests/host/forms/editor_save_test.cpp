#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QAction>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

class EditorSave : public Things {};
using enum TAnswer;

TEST_F(EditorSave, F3SavesAndClosesWithOk)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        EXPECT_FALSE(editor.IsSaved());
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|first");
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي )"_s));
    EXPECT_EQ(editor.hooks.count("BeforeClose"), 1);
}

TEST_F(EditorSave, ShiftF3SavesAndStaysOnTheRecordInMode3)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Mode(), fmEdit);
        EXPECT_EQ(editor.Identifier().toInt(), 1);
        EXPECT_EQ(locks(), "1|1");
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        EXPECT_TRUE(editor.IsSaved());
        Keys::retype(editor.Title_EDT, "second");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|second");
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

TEST_F(EditorSave, EverySaveHasItsLineInTheEventLogNewOnesAndChanges)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        editor.Title_EDT->SetText("one");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(db.rows("select SoftwarePart, Permission, EventText from UserEvent"), "813|1|1");
        editor.Title_EDT->SetText("uno");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.rows("select SoftwarePart, Permission, EventText from UserEvent order by ID"),
              "813|1|1\n813|2|1");
}

TEST_F(EditorSave, ARefusedSaveHasNoLineInTheEventLog)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::press(&editor, Qt::Key_F3); // the title is empty
        editor.Title_EDT->SetText("one");
        editor.refuseSave = true;
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
        editor.SetIsSaved(true);
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(EditorSave, ASavedRecordStaysSavedWhenItsEventCannotBeWritten)
{
    TThingGet_FRM editor;
    EXPECT_EQ(open(editor,
                   [&] {
                       editor.Title_EDT->SetText("one");
                       messages.take();
                       db.failStatement(3, TFault::Locked); // behind the look at the lock and the record
                       Keys::press(&editor, Qt::Key_F3);
                       db.failStatement(0);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(titles(), "1|one");
    EXPECT_EQ(messages.take().last(), "MsgDatabaseError()");
}

TEST_F(EditorSave, AfterASaveThatStaysTheRecordIsReadBackAndItsWorkingRowsWithIt)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        editor.hooks.clear();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(editor.hooks,
                  (QStringList{"Validate", "SaveRecord", "BeforeClose", "LoadRecord", "ShowRecord"}));
    });
}

TEST_F(EditorSave, AnEditorThatCannotReadBackItsSavedRecordClosesWithOk)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        db.failStatement(4, TFault::ConnectionLost); // lock, insert and event pass, the reading does not
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        db.failStatement(0);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|first");
}

TEST_F(EditorSave, ControlF3SavesAndStartsANewRecord)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        editor.hooks.clear();
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(editor.hooks,
                  (QStringList{"Validate", "SaveRecord", "BeforeClose", "NewCode", "ClearRecord"}));
        EXPECT_EQ(editor.Mode(), fmNew);
        EXPECT_EQ(editor.Code_EDT->GetText(), "2");
        EXPECT_TRUE(editor.Title_EDT->IsEmpty());
        EXPECT_TRUE(editor.IsSaved());
        EXPECT_TRUE(editor.Code_EDT->hasFocus());
        EXPECT_EQ(locks(), "2|1");
        Keys::type(editor.Title_EDT, "second");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|first\n2|second");
    EXPECT_EQ(locks(), "");
}

TEST_F(EditorSave, TheSaveButtonsMenuOffersTheSameThreeWays)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        ASSERT_TRUE(editor.Save_BTN->menu());
        const QList<QAction *> ways = editor.Save_BTN->menu()->actions();
        ASSERT_EQ(ways.size(), 3);
        Keys::type(editor.Title_EDT, "first");
        ways.at(2)->trigger();
        EXPECT_EQ(editor.Mode(), fmNew);
        Keys::type(editor.Title_EDT, "second");
        ways.at(0)->trigger();
        EXPECT_EQ(editor.Mode(), fmEdit);
        ways.at(1)->trigger();
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(titles(), "1|first\n2|second");
}

TEST_F(EditorSave, OnlyAUserWhoMayAddRecordsGoesOnToANewOne)
{
    db.run("insert into Thing(Code, Title) values(1, 'one')");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)");
    SeatUser({5, "second", {}, false, true});
    TThingGet_FRM editor(1);
    const int result = open(editor, [&] {
        Keys::retype(editor.Title_EDT, "uno");
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|uno");
}

TEST_F(EditorSave, ARefusedValidationKeepsTheScreenAndItsInputs)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Comment_EDT, "note");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Comment_EDT->GetText(), "note");
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Rejected);
}

TEST_F(EditorSave, ADatabaseErrorWhileSavingKeepsTheScreenAndItsInputs)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        db.failStatement(1, TFault::DiskFull);
        Keys::press(&editor, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Title_EDT->GetText(), "first");
        EXPECT_FALSE(editor.IsSaved());
        EXPECT_EQ(editor.Mode(), fmNew);
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(titles(), "1|first");
}

TEST_F(EditorSave, ATransactionLeftOpenByARefusedSaveIsRolledBack)
{
    TThingGet_FRM editor;
    editor.leaveTransactionOpen = editor.refuseSave = true;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_FALSE(editor.IsSaved());
        EXPECT_FALSE(db.connection().InTransaction());
        // Detail rows entered now are not part of it, and stay.
        db.run("insert into TmpThing(Code, Name) values(9, 'row')");
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(db.text("select Name from TmpThing"), "row");
}

TEST_F(EditorSave, ATransactionLeftOpenIsRolledBackOnClosing)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        db.connection().BeginTrans();
        db.run("insert into Thing(Code, Title) values(9, 'nine')");
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_FALSE(db.connection().InTransaction());
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(locks(), "");
}
