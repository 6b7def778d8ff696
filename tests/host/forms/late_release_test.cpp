#include "host/forms/FakeScreens.h"

#include "host/NewBaseForms_PKG/OpenCodes.h"

using namespace Qt::Literals::StringLiterals;

/// What a closing editor cannot give up at once.
class LateRelease : public Things {
protected:
    LateRelease()
    {
        db.run("insert into WorkingTable(Status, TableName, StoredName, CodeColumn) "
               "values(813, 'TmpThing', 'Thing', 'Code')");
        db.run("insert into Thing(Code, Title) values(7, 'seven')");
    }
    ~LateRelease() override
    {
        db.connection().setStatementHook({});
        OpenCodes::giveUpNow();
    }
    /// The database is held by another program whenever it is to let go of rows or locks.
    void hold()
    {
        db.connection().setStatementHook([](const TStatement &statement) {
            if (statement.boundText().startsWith("delete", Qt::CaseInsensitive))
                throw TDatabaseError(TFault::Locked, "database is locked");
        });
    }
    void openAndLeave(int code)
    {
        TThingGet_FRM editor(code);
        editor.recovery = true;
        editor.lockedWord = u"کارمند"_s;
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *) {
                           db.run(QString("insert into TmpThing(Code, Name) values(%1, 'n')").arg(code));
                           hold();
                           Keys::press(&editor, Qt::Key_Escape);
                       });
        EXPECT_FALSE(messages.take().isEmpty()) << "the user is told";
    }
    QString working() { return db.rows("select Code from TmpThing"); }
};

TEST_F(LateRelease, LockAndRowsGoWhenTheDatabaseIsFreeAgain)
{
    openAndLeave(7);
    EXPECT_EQ(locks(), "7|1");
    EXPECT_EQ(working(), "7");
    EXPECT_FALSE(OpenCodes::giveUpNow()) << "it is still held";
    db.connection().setStatementHook({});
    EXPECT_TRUE(OpenCodes::giveUpNow());
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(working(), "");
    EXPECT_FALSE(OpenCodes::contains(cspCalcMethod, "7"));
}

TEST_F(LateRelease, TheClockTriesByItself)
{
    openAndLeave(7);
    db.connection().setStatementHook({});
    EXPECT_TRUE(Keys::waitFor([&] { return locks().isEmpty(); }, 10000));
    EXPECT_EQ(working(), "");
}

TEST_F(LateRelease, TheNextOpeningIsNotOfferedTheRowsOfAnEditorThatWasClosed)
{
    ScriptedRecovery script;
    openAndLeave(7);
    db.connection().setStatementHook({});
    TThingGet_FRM editor(7);
    editor.recovery = true;
    editor.lockedWord = u"کارمند"_s;
    Keys::runModal([&] { return editor.exec(); }, [&](QWidget *) { EXPECT_EQ(locks(), "7|1"); });
    EXPECT_EQ(script.asked.size(), 0);
    EXPECT_EQ(locks(), "");
}

TEST_F(LateRelease, WhatAnotherStationGotMeanwhileIsLeftAlone)
{
    openAndLeave(7);
    db.connection().setStatementHook({});
    db.run("update CodeLock_TBL set Com_Index=2");
    EXPECT_TRUE(OpenCodes::giveUpNow());
    EXPECT_EQ(locks(), "7|2");
    EXPECT_EQ(working(), "7");
}
