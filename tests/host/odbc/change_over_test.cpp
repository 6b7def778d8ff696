#include "host/database/ChangeOver.h"

#include <gtest/gtest.h>

#include <QList>

namespace {

// Time that passes only while somebody sleeps or a try takes it.
class ChangeOver : public testing::Test {
protected:
    TChangeOver changeOver()
    {
        return TChangeOver({[this] { return now; }, [this](int wanted) { now += wanted; },
                            [this](const TChangeOver::TWaiting &waiting) { told.append(waiting); },
                            [this] { return stopAt >= 0 && now >= stopAt; }});
    }
    /// Fails so often, each time after so long, then succeeds.
    TFault run(int failures, TFault fault = TFault::ChangingOver, int each = 0)
    {
        try {
            changeOver().run([&] {
                ++tries;
                now += each;
                if (tries <= failures)
                    throw TDatabaseError(fault, "played");
            });
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        return TFault::Other;
    }

    qint64 now = 1000;
    qint64 stopAt = -1;
    int tries = 0;
    QList<TChangeOver::TWaiting> told;
};

TEST_F(ChangeOver, ATryThatSucceedsWaitsForNothing)
{
    EXPECT_EQ(run(0), TFault::Other);
    EXPECT_EQ(now, 1000);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(ChangeOver, WaitsGrowAndAreToldBeforehand)
{
    EXPECT_EQ(run(4), TFault::Other);
    ASSERT_EQ(told.size(), 4);
    QList<int> waits;
    for (const auto &waiting : told)
        waits.append(waiting.untilNextTry);
    EXPECT_EQ(waits, QList<int>({250, 500, 1000, 2000}));
    EXPECT_EQ(told.last().tries, 4);
    EXPECT_EQ(told.last().fault, TFault::ChangingOver);
    EXPECT_EQ(now, 1000 + 3750);
}

TEST_F(ChangeOver, ThirtySecondsInAllThenTheLastFailureIsTold)
{
    EXPECT_EQ(run(1000, TFault::NoServer), TFault::NoServer);
    EXPECT_EQ(now, 1000 + TChangeOver::wholeWait);
    EXPECT_EQ(tries, 8);
    EXPECT_EQ(told.last().untilNextTry, told.last().untilGivingUp);
}

TEST_F(ChangeOver, TriesThatTakeTheirTimeCountToo)
{
    EXPECT_EQ(run(1000, TFault::NoServer, 10000), TFault::NoServer);
    EXPECT_LE(tries, 4);
    EXPECT_LE(now, 1000 + TChangeOver::wholeWait + 10000);
}

TEST_F(ChangeOver, WhoeverWaitsStopsAtOnce)
{
    stopAt = 1000 + 250 + 500 + 300;
    EXPECT_EQ(run(1000), TFault::ChangingOver);
    EXPECT_LE(now - stopAt, 100);
    EXPECT_EQ(tries, 3);
}

TEST_F(ChangeOver, WhatDoesNotPassByItselfIsToldAtOnce)
{
    for (const TFault fault : {TFault::LoginRefused, TFault::NoRight, TFault::UnknownIssuer,
                               TFault::ServerFull, TFault::Refused, TFault::NoDriver}) {
        tries = 0;
        EXPECT_EQ(run(1, fault), fault);
        EXPECT_EQ(tries, 1);
    }
    for (const TFault fault : {TFault::ChangingOver, TFault::ConnectionLost, TFault::NoServer,
                               TFault::NoAnswer, TFault::NoSuchDatabase}) {
        tries = 0;
        EXPECT_EQ(run(1, fault), TFault::Other);
        EXPECT_EQ(tries, 2);
    }
}

} // namespace
