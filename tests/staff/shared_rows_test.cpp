#include "staff/FamilyScreens.h"

#include "host/Declaration_PKG/Process_unt.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

/// The working family rows are everybody's, and the lock on an employee can be freed.
class StaffSharedRows : public StaffFamily {
protected:
    /// An administrator frees the lock, and somebody else opens the employee and leaves it again.
    void freedAndVisited()
    {
        db.run("delete from CodeLock_TBL");
        db.run("delete from tmpStaffFamily where StaffCode=5");
    }
    void five()
    {
        add(5, "five", "five", "IsMarried=1");
        addMember(1, 5, "a");
        addMember(2, 5, "b");
    }
    /// Refuses the statements of a save that begin so.
    void refuse(const QString &beginning)
    {
        db.connection().setStatementHook([beginning](const TStatement &statement) {
            if (statement.boundText().startsWith(beginning, Qt::CaseInsensitive))
                throw TDatabaseError(TFault::Refused, "played by a test");
        });
    }
    const QString familySaved = "1|5|a\n2|5|b";
};

TEST_F(StaffSharedRows, AFamilyThatVanishedUnderAFreedLockIsPutBackAndSaved)
{
    five();
    const auto editor = editorOf(5);
    open(*editor, [&] {
        freedAndVisited();
        messages.answer({No});
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(saved(), familySaved);
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
        messages.answer({Yes});
        press(*editor, Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(saved(), familySaved);
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffSharedRows, AMembersNumberThatIsTakenMeanwhileIsChanged)
{
    five();
    add(6, "six", "six", "IsMarried=1");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        db.run("delete from tmpStaffFamily");
        db.run("delete from StaffFamily");
        addMember(2, 6, "c");
        messages.answer({Yes});
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(saved(), "1|5|a\n2|6|c\n3|5|b");
}

TEST_F(StaffSharedRows, WhatAnotherStationHasOpenMeanwhileIsNotSavedOver)
{
    five();
    const auto editor = editorOf(5);
    open(*editor, [&] {
        type(*editor, editor->Name_EDT, "typed");
        db.run("update CodeLock_TBL set Com_Index=2");
        press(*editor, Qt::Key_F3);
        EXPECT_TRUE(messages.take().value(0).contains(u"ایستگاه دیگری"_s));
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(editor->Name_EDT->GetText(), "typed");
        messages.answer({No});
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(value("Name", 5), "five");
    EXPECT_EQ(locks(), "5|806|2");
    EXPECT_EQ(working(), familySaved) << "the other station's rows";
}

TEST_F(StaffSharedRows, AMemberIsNotAddedToRowsThatAreNotTheEditors)
{
    five();
    const auto editor = editorOf(5);
    open(*editor, [&] {
        toFamily(*editor);
        freedAndVisited();
        messages.answer({No});
        press(*editor, Qt::Key_Plus, Qt::KeypadModifier);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(working(), "");
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
    });
}

// A workstation died with a new employee's members, and its lock was taken away.
TEST_F(StaffSharedRows, ANewEmployeeGetsNoStrangersFamily)
{
    add(5, "five", "five");
    addMember(1, 6, "stranger", "tmpStaffFamily");
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->Code_EDT->GetText(), "7");
        EXPECT_TRUE(Staff_DM->Family_QUR->isEmpty());
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(working(), "1|6|stranger");
    ASSERT_EQ(recovery.asked.size(), 1) << "but they are offered";
    EXPECT_EQ(recovery.asked[0].left[0].code, "6");
    EXPECT_EQ(locks(), "6|806|1") << "and stay so";
}

TEST_F(StaffSharedRows, ATypedCodeWithStrangersRowsIsNotTaken)
{
    addMember(1, 9, "stranger", "tmpStaffFamily");
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        type(*editor, editor->Code_EDT, "9");
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(کارمند)"_s));
        EXPECT_EQ(editor->Code_EDT->GetText(), "1");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "1|9|stranger");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffSharedRows, ASaveThatBrokeAfterTheFamilyWasClearedSaysSoAndKeepsItForRecovery)
{
    five();
    {
        const auto editor = editorOf(5);
        open(*editor, [&] {
            refuse("update [staff] set [Code]");
            press(*editor, Qt::Key_F3);
            db.connection().setStatementHook({});
            const QStringList said = messages.take();
            ASSERT_EQ(said.size(), 2);
            EXPECT_EQ(said[0], notSavedMessage);
            EXPECT_TRUE(said[1].contains(u"2 سطر خانواده ثبت شده داشت"_s)) << said[1].toStdString();
            EXPECT_FALSE(editor->IsSaved());
            EXPECT_EQ(saved(), "");
            messages.answer({No, Cancel});
            press(*editor, Qt::Key_Escape);
            EXPECT_TRUE(editor->isVisible());
            messages.answer({No, Yes});
            press(*editor, Qt::Key_Escape);
            EXPECT_FALSE(editor->isVisible());
        });
    }
    EXPECT_EQ(working(), familySaved);
    EXPECT_EQ(locks(), "5|806|1");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
    const auto again = editorOf(5);
    open(*again, [&] { press(*again, Qt::Key_F3); });
    EXPECT_EQ(recovery.asked.size(), 1);
    EXPECT_EQ(saved(), familySaved);
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffSharedRows, ASaveThatBrokeBeforeTheFamilyWasClearedAsksNothingMore)
{
    five();
    const auto editor = editorOf(5);
    open(*editor, [&] {
        refuse("delete from stafffamily");
        press(*editor, Qt::Key_F3);
        db.connection().setStatementHook({});
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        messages.answer({No});
        press(*editor, Qt::Key_Escape);
        EXPECT_EQ(messages.take(), QStringList("MsgNotSaved()"));
    });
    EXPECT_EQ(saved(), familySaved);
    EXPECT_EQ(working(), "");
}

TEST_F(StaffSharedRows, RecoveryTellsTheRowsOfEachEmployee)
{
    for (const int code : {12, 15}) {
        db.run(
            u"insert into CodeLock_TBL(Code,Status,Com_Index,ProcessID,Process) values('%1',806,1,77,'%2')"_s
                .arg(code)
                .arg(ThisProcess() + "1"));
        addMember(code, code, "x", "tmpStaffFamily");
    }
    addMember(20, 12, "y", "tmpStaffFamily");
    addMember(21, 12, "z", "tmpStaffFamily");
    const auto editor = newEditor();
    open(*editor, [] {});
    ASSERT_EQ(recovery.asked.size(), 1);
    ASSERT_EQ(recovery.asked[0].left.size(), 2);
    EXPECT_EQ(recovery.asked[0].left[0].code, "12");
    EXPECT_EQ(recovery.asked[0].left[0].rows, 3);
    EXPECT_EQ(recovery.asked[0].left[1].code, "15");
    EXPECT_EQ(recovery.asked[0].left[1].rows, 1);
}

// A page that is turned to by its key begins with its first input, not where the employee before ended.
TEST_F(StaffSharedRows, TheNextNewEmployeesPagesBeginWithTheirFirstInputs)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        type(*editor, editor->InsuranceNumber_EDT, "77");
        type(*editor, editor->Major_EDT, "m");
        press(*editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
        press(*editor, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor->focusWidget(), editor->CoDate_EDT);
        Keys::type(editor->focusWidget(), "14030101");
        EXPECT_EQ(editor->InsuranceNumber_EDT->GetText(), "0");
        press(*editor, Qt::Key_3, Qt::ControlModifier);
        EXPECT_EQ(editor->focusWidget(), editor->Tel1_EDT);
        messages.answer({No});
        press(*editor, Qt::Key_Escape);
    });
}
