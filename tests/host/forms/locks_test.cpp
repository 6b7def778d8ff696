#include "host/forms/FakeScreens.h"

using namespace Qt::Literals::StringLiterals;

class CodeLocks : public Things {
protected:
    static void open(TBaseEditor &editor, const std::function<void()> &work)
    {
        Keys::runModal([&] { return editor.exec(); }, [&](QWidget *) { work(); });
    }
};

TEST_F(CodeLocks, ACodeHeldByAnotherWorkstationIsPassedOver)
{
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('1', 813, 2)");
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('2', 813, 2)");
    TThingGet_FRM editor;
    open(editor, [&] { EXPECT_EQ(editor.Code_EDT->GetText(), "3"); });
    EXPECT_EQ(locks(), "1|2\n2|2");
}

TEST_F(CodeLocks, ACodeSavedByAnotherWorkstationAfterItWasComputedIsPassedOver)
{
    TThingGet_FRM editor;
    // Another workstation saves code 1 and gives up its lock just before the lock is taken here.
    int stage = 0;
    db.connection().setStatementHook([&](const TStatement &statement) {
        if (stage == 0 && statement.boundText().contains("max(Code)")) {
            stage = 1;
        } else if (stage == 1) {
            stage = 2;
            db.run("insert into Thing(Code, Title) values(1, 'theirs')");
        }
    });
    open(editor, [&] { EXPECT_EQ(editor.Code_EDT->GetText(), "2"); });
    db.connection().setStatementHook({});
    EXPECT_EQ(stage, 2);
    EXPECT_EQ(locks(), "");
}

TEST_F(CodeLocks, AnExistingRecordHeldByAnotherWorkstationDoesNotOpen)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('7', 813, 2)");
    TThingGet_FRM editor(7);
    editor.lockedWord = u"کارمند"_s;
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(کارمند)"_s));
    EXPECT_EQ(locks(), "7|2");
    EXPECT_EQ(editor.hooks, QStringList());
}

TEST_F(CodeLocks, AnExistingRecordIsLockedWhileItIsOpen)
{
    db.run("insert into Thing(Code, Title) values(7, 'seven')");
    TThingGet_FRM editor(7);
    editor.lockedWord = u"کارمند"_s;
    open(editor, [&] { EXPECT_EQ(locks(), "7|1"); });
    EXPECT_EQ(locks(), "");
}

TEST_F(CodeLocks, TwoEditorsOfOneProgramNeverHoldOneCode)
{
    TThingGet_FRM first;
    open(first, [&] {
        TThingGet_FRM second;
        open(second, [&] {
            EXPECT_EQ(second.Code_EDT->GetText(), "2");
            EXPECT_EQ(locks(), "1|1\n2|1");
        });
        EXPECT_EQ(locks(), "1|1");
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(CodeLocks, ATypedCodeTakesTheLockAlongAndGivesUpTheOldOne)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        EXPECT_TRUE(editor.TakeCode(1)); // its own
        EXPECT_TRUE(editor.TakeCode(40));
        EXPECT_EQ(locks(), "40|1");
        EXPECT_EQ(editor.Identifier(), 40);
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(CodeLocks, ATypedCodeThatIsHeldElsewhereChangesNothing)
{
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('40', 813, 2)");
    TThingGet_FRM first;
    open(first, [&] {
        EXPECT_FALSE(first.TakeCode(40));
        TThingGet_FRM second;
        open(second, [&] {
            EXPECT_FALSE(second.TakeCode(1)); // the first one's
            EXPECT_EQ(second.Identifier(), 2);
            EXPECT_EQ(locks(), "1|1\n2|1\n40|2");
        });
        EXPECT_EQ(first.Identifier(), 1);
    });
    EXPECT_EQ(locks(), "40|2");
}

TEST_F(CodeLocks, AFaultWhileATypedCodeIsTakenLeavesTheOldLockAlone)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        for (int statement = 1; statement < 20; ++statement) {
            bool taken = false;
            bool fault = false;
            db.failStatement(statement, TFault::Locked);
            try {
                taken = editor.TakeCode(40);
            } catch (const TDatabaseError &) {
                fault = true;
            }
            db.failStatement(0);
            EXPECT_NE(taken, fault) << statement;
            EXPECT_EQ(locks(), taken ? "40|1" : "1|1") << statement;
            EXPECT_EQ(editor.Identifier(), taken ? 40 : 1) << statement;
            if (taken) {
                EXPECT_GT(statement, 2);
                return;
            }
        }
        ADD_FAILURE() << "the code was never taken";
    });
}
