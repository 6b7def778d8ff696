#include "host/services/Services.h"

#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/LowMemory_unt.h"

#include <new>
#include <stdexcept>
#include <utility>

class Faults : public Services {};

TEST_F(Faults, WorkThatGoesWellTellsNothing)
{
    EXPECT_TRUE(Guarded([] {}));
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_FALSE(db.connection().lastError());
}

TEST_F(Faults, ADatabaseErrorIsToldByItsOwnSentenceAndKeptForTheMessageOfASave)
{
    EXPECT_FALSE(Guarded([] { throw TDatabaseError(TFault::DiskFull, "no space left"); }));
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    EXPECT_TRUE(messages.last().text.contains(TDatabaseError(TFault::DiskFull, {}).userText()));
    ASSERT_TRUE(db.connection().lastError());
    EXPECT_EQ(db.connection().lastError()->fault(), TFault::DiskFull);
}

TEST_F(Faults, MemoryThatRanOutIsToldAsWhatItIs)
{
    KeepMemoryReserve();
    EXPECT_FALSE(Guarded([] { throw std::bad_alloc(); }));
    const QStringList said = messages.take();
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said.first().startsWith("ShowSmartMessage(")) << said.first().toStdString();
    EXPECT_FALSE(db.connection().lastError());
}

TEST_F(Faults, WhateverElseIsThrownIsToldAsAFaultOfTheProgram)
{
    EXPECT_FALSE(Guarded([] { throw std::runtime_error("unexpected"); }));
    EXPECT_FALSE(Guarded([] { throw 5; }));
    EXPECT_EQ(messages.take(), (QStringList{"MsgDatabaseError()", "MsgDatabaseError()"}));
}

TEST_F(Faults, AFaultWithoutAConnectionIsToldToo)
{
    TConnection *const connection = std::exchange(DM.ADOConnection1, nullptr);
    EXPECT_FALSE(Guarded([] { throw TDatabaseError(TFault::ConnectionLost, "none"); }));
    DM.ADOConnection1 = connection;
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
}
