#include "platform/foundation/RunLoop.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct RunLoopTest : testing::Test
{
    test::TakenClock clock;
    RunLoop &loop = RunLoop::main();
    QStringList ran;
    auto note(const char *name)
    {
        return [this, name] { ran << name; };
    }
};

} // namespace

TEST_F(RunLoopTest, TurningTheClockRunsEntriesInTheOrderTheyAreDue)
{
    const double start = loop.secondsSince1970();
    loop.after(2, note("b"));
    loop.after(1, [this] {
        ran << "a";
        loop.after(0.5, note("nested"));
    });
    loop.after(2, note("c"));
    loop.cancel(loop.after(1.2, note("cancelled")));
    clock.turn(1.9);
    EXPECT_EQ(ran, QStringList({"a", "nested"}));
    clock.turn(0.1);
    EXPECT_EQ(ran, QStringList({"a", "nested", "b", "c"}));
    EXPECT_DOUBLE_EQ(loop.secondsSince1970() - start, 2);
}

TEST_F(RunLoopTest, ARepetitionMayCancelItself)
{
    RunLoop::Token token = 0;
    token = loop.every(1, [&] {
        ran << "beat";
        if (ran.size() == 3)
            loop.cancel(token);
    });
    clock.turn(10);
    EXPECT_EQ(ran.size(), 3);
}

TEST_F(RunLoopTest, ARepetitionSkipsWhatItMissedAndKeepsItsRhythm)
{
    loop.every(1, note("beat"), RunLoop::Lane::Screen);
    loop.holdScreens();
    clock.turn(3.5);
    loop.releaseScreens();
    clock.turn(0.25);
    EXPECT_EQ(ran.size(), 1);
    clock.turn(0.25);
    EXPECT_EQ(ran.size(), 2);
}

TEST_F(RunLoopTest, AHoldKeepsScreensWaitingButNotServices)
{
    loop.after(1, note("screen"), RunLoop::Lane::Screen);
    loop.after(2, note("service"), RunLoop::Lane::Service);
    loop.holdScreens();
    loop.holdScreens();
    loop.releaseScreens();
    clock.turn(3);
    EXPECT_EQ(ran, QStringList({"service"}));
    loop.releaseScreens();
    clock.turn(0);
    EXPECT_EQ(ran, QStringList({"service", "screen"}));
}

TEST_F(RunLoopTest, KnowsAScreensEntryAgainAfterOneInsideIt)
{
    loop.after(0, [this] {
        loop.after(
            0, [this] { ran << (loop.isInScreenEntry() ? "screen" : "service"); }, RunLoop::Lane::Service);
        clock.turn(0);
        ran << (loop.isInScreenEntry() ? "screen" : "service");
    });
    clock.turn(0);
    EXPECT_EQ(ran, QStringList({"service", "screen"}));
}

TEST_F(RunLoopTest, WhatACancelledEntryHeldMayCancelMore)
{
    const RunLoop::Token other = loop.after(2, note("other"));
    std::shared_ptr<int> held(new int, [&](int *p) {
        loop.cancel(other);
        delete p;
    });
    loop.cancel(loop.after(1, [copy = std::move(held)] {}));
    clock.turn(3);
    EXPECT_TRUE(ran.isEmpty());
}
