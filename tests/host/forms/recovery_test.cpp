#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/NewBaseForms_PKG/RecoveryDialog_UNT.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProcess>
#include <QTableWidget>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class Recovery : public Things {
protected:
    /// Rows that a killed editor of a workstation left under a code, with its lock.
    void leave(int code, int rows, int workstation = 1, qint64 process = 0)
    {
        db.run(u"insert into CodeLock_TBL(Code, Status, Com_Index, ProcessID) values('%1', 813, %2, %3)"_s
                   .arg(code)
                   .arg(workstation)
                   .arg(process));
        for (int row = 0; row < rows; ++row)
            db.run(u"insert into TmpThing(Code, Name) values(%1, 'left')"_s.arg(code));
    }
    QString working() { return db.rows("select Code, count(*) from TmpThing group by Code order by Code"); }
    void open(TThingGet_FRM &editor, const std::function<void()> &work = {})
    {
        editor.recovery = true;
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *screen) {
                           Keys::waitFor([&] { return screen->isActiveWindow(); });
                           if (work)
                               work();
                       });
    }
    ScriptedRecovery script;
};

TEST_F(Recovery, NothingLeftBehindAsksNothing)
{
    TThingGet_FRM editor;
    open(editor, [&] { EXPECT_FALSE(editor.RecoveryTaken()); });
    EXPECT_EQ(script.asked.size(), 0);
}

TEST_F(Recovery, ANewRecordTakesTheRowsUpUnderItsCodeBeforeItIsCleared)
{
    leave(12, 2);
    script.answers = {{TRecoveryChoice::TakeUp, {"12"}}};
    TThingGet_FRM editor;
    messages.answer({TAnswer::No});
    open(editor, [&] {
        EXPECT_EQ(working(), "1|2");
        EXPECT_EQ(locks(), "1|1"); // the old code's lock went with its rows
        EXPECT_TRUE(editor.RecoveryTaken());
        EXPECT_FALSE(editor.IsSaved()) << "closing asks before the rows are cleared";
    });
    ASSERT_EQ(script.asked.size(), 1);
    EXPECT_TRUE(script.asked[0].newRecord);
    EXPECT_EQ(script.asked[0].newCode, "1");
    ASSERT_EQ(script.asked[0].left.size(), 1);
    EXPECT_EQ(script.asked[0].left[0].code, "12");
    EXPECT_EQ(script.asked[0].left[0].rows, 2);
    EXPECT_TRUE(script.asked[0].allOffered);
}

TEST_F(Recovery, OneCodesRowsAreThrownAwayAndTheNextCodeIsAsked)
{
    leave(12, 2);
    leave(15, 1);
    script.answers = {{TRecoveryChoice::Discard, {"12"}}, {TRecoveryChoice::Later, {}}};
    TThingGet_FRM editor;
    open(editor);
    ASSERT_EQ(script.asked.size(), 2);
    EXPECT_EQ(script.asked[0].left.size(), 2);
    EXPECT_EQ(script.asked[1].left.size(), 1);
    EXPECT_EQ(working(), "15|1");
    EXPECT_EQ(locks(), "15|1");
}

TEST_F(Recovery, AfterTakingSomeRowsUpAllIsNotOffered)
{
    leave(12, 2);
    leave(15, 1);
    script.answers = {{TRecoveryChoice::TakeUp, {"12"}}, {TRecoveryChoice::Later, {}}};
    TThingGet_FRM editor;
    messages.answer({TAnswer::No});
    open(editor, [&] { EXPECT_EQ(working(), "1|2\n15|1"); });
    ASSERT_EQ(script.asked.size(), 2);
    EXPECT_FALSE(script.asked[1].allOffered);
}

TEST_F(Recovery, ThrowingAllAwayKeepsTheNewCodesLock)
{
    leave(12, 2);
    leave(15, 1);
    leave(30, 3, 2);
    script.answers = {{TRecoveryChoice::DiscardAll, {}}};
    TThingGet_FRM editor;
    open(editor, [&] {
        EXPECT_EQ(working(), "30|3"); // another workstation's are not ours
        EXPECT_EQ(locks(), "1|1\n30|2");
        EXPECT_EQ(editor.Identifier().toInt(), 1);
    });
    EXPECT_EQ(script.asked.size(), 1);
}

TEST_F(Recovery, LaterLeavesRowsAndLocksForTheNextOpening)
{
    leave(12, 2);
    TThingGet_FRM editor;
    open(editor);
    EXPECT_EQ(working(), "12|2");
    EXPECT_EQ(locks(), "12|1");
    TThingGet_FRM again;
    open(again);
    EXPECT_EQ(script.asked.size(), 2);
}

TEST_F(Recovery, AnotherWorkstationsRowsAreNotOffered)
{
    leave(12, 2, 2);
    TThingGet_FRM editor;
    open(editor);
    EXPECT_EQ(script.asked.size(), 0);
    EXPECT_EQ(working(), "12|2");
}

TEST_F(Recovery, RowsOfAnEditorThatIsStillOpenAreNotOffered)
{
    TThingGet_FRM first;
    open(first, [&] {
        db.run("insert into TmpThing(Code, Name) values(1, 'at work')");
        TThingGet_FRM second;
        open(second);
        EXPECT_EQ(script.asked.size(), 0);
        EXPECT_EQ(working(), "1|1");
    });
}

TEST_F(Recovery, RowsOfAnotherRunningProgramOfThisWorkstationAreNotOffered)
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=StaysUp.*", "--gtest_also_run_disabled_tests"});
    ASSERT_TRUE(other.waitForStarted());
    leave(12, 2, 1, other.processId());
    TThingGet_FRM editor;
    open(editor);
    EXPECT_EQ(script.asked.size(), 0);
    other.kill();
    ASSERT_TRUE(other.waitForFinished());
    TThingGet_FRM again;
    open(again);
    EXPECT_EQ(script.asked.size(), 1);
    EXPECT_EQ(working(), "12|2");
}

// The other program of the test above: it runs until it is killed.
TEST(StaysUp, DISABLED_UntilItIsKilled)
{
    Keys::waitFor([] { return false; }, 30000);
}

TEST_F(Recovery, AnExistingRecordTakesItsRowsUp)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    script.answers = {{TRecoveryChoice::TakeUp, {"7"}}};
    TThingGet_FRM editor(7);
    messages.answer({TAnswer::No});
    open(editor, [&] {
        EXPECT_TRUE(editor.RecoveryTaken());
        EXPECT_FALSE(editor.IsSaved());
        EXPECT_EQ(working(), "7|2");
        EXPECT_EQ(locks(), "7|1");
    });
    ASSERT_EQ(script.asked.size(), 1);
    EXPECT_FALSE(script.asked[0].newRecord);
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(Recovery, AnExistingRecordThrowsItsRowsAway)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    script.answers = {{TRecoveryChoice::Discard, {"7"}}};
    TThingGet_FRM editor(7);
    open(editor, [&] {
        EXPECT_FALSE(editor.RecoveryTaken());
        EXPECT_EQ(working(), "");
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(Recovery, AnExistingRecordThatIsPutOffDoesNotOpenAndKeepsItsRows)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    TThingGet_FRM editor(7);
    editor.recovery = true;
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(editor.hooks, QStringList());
    EXPECT_EQ(working(), "7|2");
    EXPECT_EQ(locks(), "7|1");
    TThingGet_FRM again(7);
    again.recovery = true;
    again.exec();
    EXPECT_EQ(script.asked.size(), 2);
}

TEST_F(Recovery, RowsTakenUpByAnExistingRecordThatFailsToLoadAreKept)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    script.answers = {{TRecoveryChoice::TakeUp, {"7"}}};
    TThingGet_FRM editor(7);
    editor.recovery = true;
    db.connection().setStatementHook([](const TStatement &statement) {
        if (statement.boundText().startsWith("select * from Thing"))
            throw TDatabaseError(TFault::Locked, "played");
    });
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    db.connection().setStatementHook({});
    EXPECT_EQ(working(), "7|2");
    EXPECT_EQ(locks(), "7|1");
}

// A stored record's rows would be the new record's beside the stored ones that they are copies of.
TEST_F(Recovery, RowsOfAStoredRecordAreNotOfferedToANewOne)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    TThingGet_FRM editor;
    open(editor, [&] { EXPECT_FALSE(editor.RecoveryTaken()); });
    EXPECT_EQ(script.asked.size(), 0);
    EXPECT_EQ(working(), "7|2");
    EXPECT_EQ(locks(), "7|1");
    TThingGet_FRM own(7);
    own.recovery = true;
    own.exec(); // put off: it does not open
    ASSERT_EQ(script.asked.size(), 1);
    EXPECT_EQ(script.asked[0].left[0].code, "7");
}

TEST_F(Recovery, ThrowingAllAwayIsNotOfferedWhileAStoredRecordsRowsWait)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    leave(12, 1);
    TThingGet_FRM editor;
    open(editor);
    ASSERT_EQ(script.asked.size(), 1);
    ASSERT_EQ(script.asked[0].left.size(), 1);
    EXPECT_EQ(script.asked[0].left[0].code, "12");
    EXPECT_FALSE(script.asked[0].allOffered);
}

// The dialog shows a dash for rows that nobody counted.
TEST_F(Recovery, AnEditorThatNamesOneCodeOnlyOffersTheOthersWhenThatOneIsNotOffered)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    leave(7, 2);
    leave(12, 1);
    leave(15, 1);
    TThingGet_FRM editor;
    editor.namesOneCode = true;
    open(editor);
    ASSERT_EQ(script.asked.size(), 1);
    QStringList offered;
    for (const TLeftRows &left : script.asked[0].left)
        offered << u"%1|%2"_s.arg(left.code).arg(left.rows);
    EXPECT_EQ(offered, QStringList({"12|0", "15|0"}));
}

TEST_F(Recovery, ASaveThatStaysEndsTheRecovery)
{
    leave(12, 2);
    script.answers = {{TRecoveryChoice::TakeUp, {"12"}}};
    TThingGet_FRM editor;
    open(editor, [&] {
        EXPECT_TRUE(editor.RecoveryTaken());
        Keys::type(editor.Title_EDT, "twelve");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_FALSE(editor.RecoveryTaken()) << "from here on the stored rows are the working ones";
    });
    EXPECT_EQ(titles(), "1|twelve");
}

TEST_F(Recovery, GoingOnToANewRecordDoesNotAskAgain)
{
    leave(12, 2);
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
    });
    EXPECT_EQ(script.asked.size(), 1);
}

namespace {

TRecoveryChoice ask(const TRecoveryRequest &request, const std::function<void(TRecovery_FRM *)> &work)
{
    TRecoveryChoice choice;
    Keys::runModal(
        [&] {
            choice = RecoveryChooser().choose(request, nullptr);
            return 0;
        },
        [&](QWidget *screen) { work(qobject_cast<TRecovery_FRM *>(screen)); });
    return choice;
}

} // namespace

TEST_F(Recovery, TheDialogTellsCodesAndRowsAndTakesThemUp)
{
    SetRecoveryChooser(nullptr);
    const TRecoveryRequest request{u" اطلاعات کارمندان"_s, true, "41", {{"12", 2}, {"15", 1}}, true};
    const TRecoveryChoice choice = ask(request, [&](TRecovery_FRM *dialog) {
        auto *codes = Keys::find<QTableWidget>(dialog, "Codes_GRD");
        EXPECT_EQ(codes->item(0, 0)->text(), "12");
        EXPECT_EQ(codes->item(0, 1)->text(), "2");
        EXPECT_TRUE(Keys::find<QLabel>(dialog, "Text_LBL")->text().contains("41"));
        Keys::picture(dialog, "recovery");
        codes->item(1, 0)->setCheckState(Qt::Unchecked);
        Keys::press(dialog, Qt::Key_F3);
    });
    EXPECT_EQ(choice.action, TRecoveryChoice::TakeUp);
    EXPECT_EQ(choice.codes, QStringList("12"));
}

TEST_F(Recovery, TheDialogAsksOnceMoreBeforeItThrowsAway)
{
    SetRecoveryChooser(nullptr);
    const TRecoveryRequest request{"x", true, "41", {{"12", 2}}, true};
    const TRecoveryChoice choice = ask(request, [&](TRecovery_FRM *dialog) {
        messages.answer({No});
        Keys::press(dialog, Qt::Key_F8);
        EXPECT_TRUE(dialog->isVisible());
        messages.answer({Yes});
        Keys::press(dialog, Qt::Key_F7);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(choice.action, TRecoveryChoice::Discard);
    EXPECT_EQ(choice.codes, QStringList("12"));
}

TEST_F(Recovery, EscInTheDialogDecidesNothing)
{
    SetRecoveryChooser(nullptr);
    const TRecoveryRequest request{"x", false, {}, {{"12", 0}}, false};
    const TRecoveryChoice choice = ask(request, [&](TRecovery_FRM *dialog) {
        EXPECT_FALSE(dialog->findChild<QWidget *>("DiscardAll_BTN"));
        Keys::press(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(choice.action, TRecoveryChoice::Later);
}
