#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class EventChain : public testing::Test {
protected:
    EventChain()
    {
        UserInfo = {5, u"مریم"_s, {}, false, true};
        for (int i = 1; i <= 5; ++i)
            SetUserEvent(cspTax, cpEdit, u"جدول %1"_s.arg(i), false, false);
    }
    ~EventChain() override { UserInfo = {}; }
    static QList<qlonglong> breaks(const TEventCheck &check)
    {
        QList<qlonglong> ids;
        for (const TEventBreak &one : check.breaks)
            ids << one.id;
        return ids;
    }
    TestDatabase db;
};

TEST_F(EventChain, LinesThatNobodyTouchedHold)
{
    const TEventCheck check = CheckEventLog();
    EXPECT_TRUE(check.isWhole());
    EXPECT_EQ(check.lines, 5);
    EXPECT_EQ(check.older, 0);
    EXPECT_EQ(check.head.lines, 5);
    EXPECT_EQ(check.head.link.size(), 64);
}

TEST_F(EventChain, AnEmptyLogIsWhole)
{
    db.run("delete from UserEvent");
    db.run("update UserEventHead set Link='', LineCount=0");
    EXPECT_TRUE(CheckEventLog().isWhole());
}

TEST_F(EventChain, EveryCellOfALineIsKept)
{
    const QStringList changes{
        u"UserCode=6"_s,   u"UserName='x'"_s,  u"Com_Index=99"_s,           u"SoftwarePart=806"_s,
        u"Permission=3"_s, u"EventText='x'"_s, u"EventDate='1400/01/01'"_s, u"EventTime='00:00:00'"_s,
        u"OfSystem=1"_s};
    for (const QString &change : changes) {
        TestDatabase other;
        SetUserEvent(cspTax, cpEdit, u"یک"_s, false, false);
        SetUserEvent(cspTax, cpEdit, u"دو"_s, false, false);
        other.run(u"update UserEvent set %1 where ID=1"_s.arg(change));
        EXPECT_EQ(breaks(CheckEventLog()), QList<qlonglong>{1}) << change.toStdString();
    }
}

TEST_F(EventChain, ALineThatWasTakenOutIsSeenAtTheOneBehindIt)
{
    db.run("delete from UserEvent where ID=3");
    EXPECT_EQ(breaks(CheckEventLog()), QList<qlonglong>{4});
}

TEST_F(EventChain, TheFirstLineThatWasTakenOutIsSeen)
{
    db.run("delete from UserEvent where ID=1");
    EXPECT_EQ(breaks(CheckEventLog()), QList<qlonglong>{2});
}

TEST_F(EventChain, TheLastLineThatWasTakenOutIsSeen)
{
    db.run("delete from UserEvent where ID=5");
    EXPECT_EQ(breaks(CheckEventLog()), QList<qlonglong>{0});
}

TEST_F(EventChain, AllLinesTakenOutAreSeen)
{
    db.run("delete from UserEvent");
    EXPECT_EQ(breaks(CheckEventLog()), QList<qlonglong>{0});
}

TEST_F(EventChain, LinesThatChangedPlacesAreSeen)
{
    db.run("update UserEvent set EventText='z' where ID=2");
    db.run("update UserEvent set EventText='جدول 2' where ID=4");
    EXPECT_EQ(breaks(CheckEventLog()), (QList<qlonglong>{2, 4}));
}

TEST_F(EventChain, ALineWithoutALinkAmidTheChainIsSeen)
{
    db.run("insert into UserEvent(UserCode, EventText) values(5, 'put in')");
    SetUserEvent(cspTax, cpEdit, u"بعد"_s, false, false);
    EXPECT_EQ(breaks(CheckEventLog()), (QList<qlonglong>{6, 7}));
}

TEST_F(EventChain, LinesThatWereMadeToLookOldAreSeen)
{
    db.run("update UserEvent set Link=null, EventText='x' where ID<=2");
    const TEventCheck check = CheckEventLog();
    EXPECT_EQ(check.older, 2);
    EXPECT_EQ(breaks(check), QList<qlonglong>{3});
}

TEST_F(EventChain, LinesFromBeforeTheChainAreCountedApart)
{
    TestDatabase old;
    old.run("insert into UserEvent(UserCode, EventText) values(5, 'old')");
    SetUserEvent(cspTax, cpEdit, u"نو"_s, false, false);
    const TEventCheck check = CheckEventLog();
    EXPECT_TRUE(check.isWhole());
    EXPECT_EQ(check.older, 1);
    EXPECT_EQ(check.lines, 1);
}

// Whoever can write the database can make a chain that holds; but not one that has the head which somebody kept.
TEST_F(EventChain, AChainThatWasMadeAnewLacksTheHeadThatSomebodyKept)
{
    const TEventHead kept = CheckEventLog().head;
    SetUserEvent(cspTax, cpEdit, u"شش"_s, false, false);
    EXPECT_TRUE(CheckEventLog(kept).isWhole()) << "the log goes on";
    db.run("delete from UserEvent");
    db.run("update UserEventHead set Link='', LineCount=0");
    for (int i = 1; i <= 6; ++i)
        SetUserEvent(cspTax, cpEdit, u"جدول دیگر"_s, false, false);
    EXPECT_TRUE(CheckEventLog().isWhole());
    EXPECT_FALSE(CheckEventLog(kept).isWhole());
}

TEST_F(EventChain, ALongLogIsReadInPartsAndCanBeBrokenOff)
{
    db.connection().BeginTrans();
    for (int i = 0; i < 4500; ++i)
        SetUserEvent(cspTax, cpEdit, u"x"_s, false, false);
    db.connection().CommitTrans();
    int calls = 0;
    const TEventCheck whole = CheckEventLog({}, [&](qlonglong read, qlonglong all) {
        ++calls;
        EXPECT_EQ(read, calls * 2000);
        EXPECT_EQ(all, 4505);
        return true;
    });
    EXPECT_TRUE(whole.isWhole());
    EXPECT_EQ(whole.lines, 4505);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CheckEventLog({}, [](qlonglong, qlonglong) { return false; }).lines, 2000);
}

TEST_F(EventChain, ALineOfATransactionThatIsRolledBackLeavesNoTrace)
{
    db.connection().BeginTrans();
    SetUserEvent(cspTax, cpEdit, u"x"_s, false, false);
    db.connection().RollbackTrans();
    SetUserEvent(cspTax, cpEdit, u"y"_s, false, false);
    const TEventCheck check = CheckEventLog();
    EXPECT_TRUE(check.isWhole());
    EXPECT_EQ(check.lines, 6);
}

TEST_F(EventChain, ALineThatCannotBeWrittenLeavesTheHeadAsItWas)
{
    db.run("create trigger No_TRG before insert on UserEvent begin select raise(abort, 'no'); end");
    EXPECT_THROW(SetUserEvent(cspTax, cpEdit, u"x"_s, false, false), TDatabaseError);
    db.run("drop trigger No_TRG");
    EXPECT_TRUE(CheckEventLog().isWhole());
}

TEST(EventText, WhatAUserTypedForgesNoLineAndTurnsNone)
{
    EXPECT_EQ(EventText(u"یک\nدو\u2028سه\u202Exyz\u2066\x1F"_s, 400), u"یک دو سه xyz  "_s);
    EXPECT_EQ(EventText(u"می\u200Cشود"_s, 400), u"می\u200Cشود"_s) << "half-spaces stay";
    EXPECT_EQ(EventText(u"12345"_s, 3), u"123"_s);
}

} // namespace
