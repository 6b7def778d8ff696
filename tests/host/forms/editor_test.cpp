#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

using namespace Qt::Literals::StringLiterals;

class BaseEditor : public Things {};
using enum TAnswer;

TEST_F(BaseEditor, ANewRecordGetsItsCodeBeforeItIsCleared)
{
    db.run("insert into Thing(Code, Title) values(7, 'x')");
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        EXPECT_EQ(editor.hooks, (QStringList{"NewCode", "ClearRecord"}));
        EXPECT_EQ(editor.Code_EDT->GetText(), "8");
        EXPECT_EQ(locks(), "8|1");
        EXPECT_TRUE(editor.IsSaved());
        EXPECT_EQ(editor.objectName(), "TThingGet_FRM");
        EXPECT_EQ(editor.layoutDirection(), Qt::RightToLeft);
        EXPECT_TRUE(editor.Code_EDT->hasFocus());
        Keys::picture(&editor, "base_editor");
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(editor.hooks.last(), "BeforeClose");
}

TEST_F(BaseEditor, AnExistingRecordIsLoadedThenShown)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    TThingGet_FRM editor(7);
    open(editor, [&] {
        EXPECT_EQ(editor.hooks, (QStringList{"LoadRecord", "ShowRecord"}));
        EXPECT_EQ(editor.Title_EDT->GetText(), "seven");
        EXPECT_TRUE(editor.IsSaved());
        Keys::press(&editor, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(BaseEditor, ARecordThatIsGoneIsToldAndDoesNotOpen)
{
    TThingGet_FRM editor(7);
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList("MsgRecordGone()"));
    EXPECT_EQ(editor.hooks, QStringList());
}

TEST_F(BaseEditor, ADatabaseErrorWhileOpeningIsToldAndDoesNotOpen)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    for (int statement = 1; statement <= 2; ++statement) {
        TThingGet_FRM editor(7);
        db.failStatement(statement, TFault::Locked);
        EXPECT_EQ(editor.exec(), QDialog::Rejected);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    }
    TThingGet_FRM editor;
    db.failStatement(1, TFault::Locked);
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    db.failStatement(0);
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    EXPECT_EQ(locks(), "");
}

TEST_F(BaseEditor, ARefusedRightMarksTheEditorNotShowable)
{
    UserInfo.IsAdmin = false;
    SeatUser(UserInfo);
    TThingGet_FRM editor;
    EXPECT_TRUE(editor.NotShowable);
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(editor.hooks, QStringList());
    EXPECT_EQ(locks(), "");
}

TEST_F(BaseEditor, NewEditAndSettingsAskTheirOwnRights)
{
    SeatUser({5, "second", {}, false, true});
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 801, 6)");
    EXPECT_TRUE(TThingGet_FRM().NotShowable);
    EXPECT_FALSE(TThingGet_FRM(7).NotShowable);
    EXPECT_FALSE(TThingGet_FRM(0, cspPayrollInfo).NotShowable);
    EXPECT_TRUE(TThingGet_FRM(0, cspStaff).NotShowable);
}

TEST_F(BaseEditor, EnterMovesThroughTheInputsAsTabDoes)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        Keys::press(&editor, Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_TRUE(editor.Kind_CMB->hasFocus());
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.Used_CHK->hasFocus());
        EXPECT_FALSE(editor.Used_CHK->isChecked());
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.Save_BTN->hasFocus());
        Keys::press(&editor, Qt::Key_Return); // presses the button: the empty title is refused
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(عنوان)"_s));
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(BaseEditor, ControlAndDigitTurnToThePageAndItsFirstInput)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        editor.Kind_CMB->setFocus();
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier, "2");
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        EXPECT_EQ(editor.Kind_CMB->currentIndex(), 0);
        EXPECT_TRUE(editor.Comment_EDT->hasFocus());
        Keys::press(&editor, Qt::Key_3, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        Keys::press(&editor, Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        EXPECT_TRUE(editor.Kind_CMB->hasFocus()) << "where the page was left";
        editor.Thing_PC->setTabVisible(1, false);
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
    });
}

TEST_F(BaseEditor, AGuardedPageGivesThePageBeforeItBack)
{
    TThingGet_FRM editor;
    editor.GuardPage(1, cspStaff, cpStaffFamilyPage);
    open(editor, [&] {
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        Keys::press(&editor, Qt::Key_1, Qt::ControlModifier);
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        EXPECT_TRUE(editor.Code_EDT->hasFocus());
        EXPECT_EQ(messages.take().size(), 1);
        UserInfo.IsAdmin = true;
        SeatUser(UserInfo);
    });
}

TEST_F(BaseEditor, FocusInputTurnsToTheInputsPage)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        editor.FocusInput(editor.Comment_EDT);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        EXPECT_TRUE(editor.Comment_EDT->hasFocus());
    });
}

TEST_F(BaseEditor, TheUnsavedQuestionSavesDropsOrStays)
{
    {
        TThingGet_FRM editor;
        const int result = open(editor, [&] {
            Keys::type(editor.Title_EDT, "kept");
            messages.answer({Cancel});
            Keys::press(&editor, Qt::Key_Escape);
            EXPECT_TRUE(editor.isVisible());
            EXPECT_EQ(editor.Title_EDT->GetText(), "kept");
            messages.answer({Yes});
            Keys::press(&editor, Qt::Key_Escape);
            EXPECT_FALSE(editor.isVisible());
        });
        EXPECT_EQ(result, QDialog::Accepted);
    }
    {
        TThingGet_FRM editor;
        const int result = open(editor, [&] {
            Keys::type(editor.Title_EDT, "dropped");
            messages.answer({No});
            editor.close();
            EXPECT_FALSE(editor.isVisible());
        });
        EXPECT_EQ(result, QDialog::Rejected);
        EXPECT_EQ(editor.hooks.count("BeforeClose"), 1);
    }
    EXPECT_EQ(titles(), "1|kept");
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

TEST_F(BaseEditor, YesWithAnInputThatIsRefusedStaysOpen)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Comment_EDT, "note");
        messages.answer({Yes});
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(BaseEditor, AnEditorWithAQuestionOpenCannotBeClosedAgain)
{
    // Closing from within the question, as a second click on the close box does.
    struct Impatient : TMessageService {
        TThingGet_FRM *editor = nullptr;
        int questions = 0;
        TAnswer show(const TMessage &message) override
        {
            if (message.shape != TMessageShape::Question)
                return Ok;
            ++questions;
            editor->close();
            EXPECT_FALSE(editor->Save(svSaveClose));
            EXPECT_TRUE(editor->isVisible());
            return No;
        }
    } impatient;
    TThingGet_FRM editor;
    impatient.editor = &editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "x");
        SetMessageService(&impatient);
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
        SetMessageService(&messages);
    });
    EXPECT_EQ(impatient.questions, 1);
    EXPECT_EQ(editor.hooks.count("BeforeClose"), 1);
    EXPECT_EQ(titles(), "");
}

TEST_F(BaseEditor, TheParametersArePartedBySemicolons)
{
    TThingGet_FRM editor("4;five");
    EXPECT_EQ(editor.Parameter(0).toInt(), 4);
    EXPECT_EQ(editor.Parameter(1).toString(), "five");
    EXPECT_TRUE(editor.Parameter(2).isNull());
}

TEST_F(BaseEditor, ADetailScreenSavesItsRowForItsMaster)
{
    TThing_GetDetail_FRM detail(12);
    EXPECT_EQ(open(detail,
                   [&] {
                       EXPECT_EQ(detail.Mode(), fmNew);
                       Keys::type(detail.Name_EDT, "row");
                       Keys::press(&detail, Qt::Key_F3);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(db.rows("select * from TmpThing"), "12|row");
    TThing_GetDetail_FRM again(12, 1);
    EXPECT_EQ(open(again, [&] { EXPECT_EQ(again.Name_EDT->GetText(), "row"); }), QDialog::Rejected);
    db.run("delete from TmpThing");
    TThing_GetDetail_FRM gone(12, 1);
    EXPECT_EQ(gone.exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take().last(), "MsgRecordGone()");
}

TEST_F(BaseEditor, PlaceAndSizeAreRemembered)
{
    {
        TThingGet_FRM editor;
        open(editor, [&] {
            editor.resize(640, 480);
            Keys::press(&editor, Qt::Key_Escape);
        });
    }
    TThingGet_FRM editor;
    open(editor, [&] { EXPECT_EQ(editor.size(), QSize(640, 480)); });
}

TEST_F(BaseEditor, AFunctionKeyPressesItsButtonWhateverInputHasTheFocus)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        editor.Kind_CMB->setFocus();
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(titles(), "1|first");
}
