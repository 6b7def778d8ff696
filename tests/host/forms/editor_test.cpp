#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QAction>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

class BaseEditor : public Things {};
using enum TAnswer;

namespace {

int open(TBaseEditor &editor, const std::function<void()> &work)
{
    return Keys::runModal([&] { return editor.exec(); },
                          [&](QWidget *screen) {
                              Keys::waitFor([&] { return screen->isActiveWindow(); });
                              work();
                          });
}

} // namespace

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
    TThingGet_FRM editor;
    EXPECT_TRUE(editor.NotShowable);
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(editor.hooks, QStringList());
    EXPECT_EQ(locks(), "");
}

TEST_F(BaseEditor, NewEditAndSettingsAskTheirOwnRights)
{
    UserInfo.IsAdmin = false;
    UserInfo.Code = 5;
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
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        EXPECT_TRUE(editor.Code_EDT->hasFocus());
        EXPECT_EQ(messages.take().size(), 1);
        UserInfo.IsAdmin = true;
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

TEST_F(BaseEditor, F3SavesAndClosesWithOk)
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

TEST_F(BaseEditor, ShiftF3SavesAndStaysOnTheRecordInMode3)
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

TEST_F(BaseEditor, EverySaveHasItsLineInTheEventLogNewOnesAndChanges)
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

TEST_F(BaseEditor, ARefusedSaveHasNoLineInTheEventLog)
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

TEST_F(BaseEditor, ASavedRecordStaysSavedWhenItsEventCannotBeWritten)
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

TEST_F(BaseEditor, AfterASaveThatStaysTheRecordIsReadBackAndItsWorkingRowsWithIt)
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

TEST_F(BaseEditor, AnEditorThatCannotReadBackItsSavedRecordClosesWithOk)
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

TEST_F(BaseEditor, ControlF3SavesAndStartsANewRecord)
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

TEST_F(BaseEditor, TheSaveButtonsMenuOffersTheSameThreeWays)
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

TEST_F(BaseEditor, OnlyAUserWhoMayAddRecordsGoesOnToANewOne)
{
    db.run("insert into Thing(Code, Title) values(1, 'one')");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)");
    UserInfo.IsAdmin = false;
    UserInfo.Code = 5;
    TThingGet_FRM editor(1);
    const int result = open(editor, [&] {
        Keys::retype(editor.Title_EDT, "uno");
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|uno");
}

TEST_F(BaseEditor, ARefusedValidationKeepsTheScreenAndItsInputs)
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

TEST_F(BaseEditor, ADatabaseErrorWhileSavingKeepsTheScreenAndItsInputs)
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

TEST_F(BaseEditor, ATransactionLeftOpenByARefusedSaveIsRolledBack)
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

TEST_F(BaseEditor, ATransactionLeftOpenIsRolledBackOnClosing)
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
