#include "faults/Fault.h"
#include "faults/NetworkNamespace.h"
#include "faults/PlayerUnderTest.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

// The server and the player in a network whose link the test takes down and up.
struct LostNetworkTest : testing::Test
{
    std::optional<TakenClock> clock;
    NetworkNamespace network;
    std::unique_ptr<ScriptedServer> server;
    std::unique_ptr<PlayerUnderTest> player;

    void SetUp() override
    {
        if (!network.isEntered())
            GTEST_SKIP() << "this machine allows no network namespace of our own (it takes CAP_SYS_ADMIN)";
        server = std::make_unique<ScriptedServer>(
            Script{Send{soundHead()}, SendForever{sound(), 1.5}}); // a little faster than it sounds;
        player = std::make_unique<PlayerUnderTest>(server->url("/live"));
        (*player)->play();
        ASSERT_TRUE(player->reaches(RadioStatePlaying));
    }
    void setLink(bool up)
    {
        ASSERT_TRUE(network.setLink(up));
        player->setNetwork(network.linkIsUp() ? Reachability::Status::WiFi
                                              : Reachability::Status::NotReachable);
    }
    void loseItUntilThePlayerStalls()
    {
        setLink(false);
        const auto stays = [&] {
            return !waitUntil([&] { return (*player)->radioState() != RadioStateBuffering; }, 0.3);
        };
        ASSERT_TRUE(waitUntil([&] { return (*player)->radioState() == RadioStateBuffering && stays(); }));
        clock.emplace();
    }
    void loseItUntilThePlayerWaits()
    {
        loseItUntilThePlayerStalls();
        EXPECT_TRUE((*player)->isPlaying());
        clock->turn(9);
        EXPECT_TRUE((*player)->isPlaying());
        clock->turn(1);
        EXPECT_FALSE((*player)->isPlaying());
        EXPECT_EQ((*player)->radioState(), RadioStateBuffering);
    }
};

} // namespace

TEST_F(LostNetworkTest, PlaysAgainWhenTheNetworkIsBack)
{
    loseItUntilThePlayerWaits();
    clock->turn(40);
    EXPECT_EQ((*player)->radioState(), RadioStateBuffering);
    setLink(true);
    EXPECT_TRUE(player->reaches(RadioStatePlaying));
    EXPECT_EQ(server->requestCount(), 2u);
    clock->turn(25); // beyond the end of the wait
    EXPECT_EQ((*player)->radioState(), RadioStatePlaying);
}

TEST_F(LostNetworkTest, FailsAfterAMinute)
{
    loseItUntilThePlayerWaits();
    clock->turn(59);
    EXPECT_EQ((*player)->radioState(), RadioStateBuffering);
    clock->turn(1);
    EXPECT_EQ((*player)->radioState(), RadioStateError);
    EXPECT_EQ((*player)->radioError(), RadioErrorHostNotReachable);
    EXPECT_EQ(server->requestCount(), 1u);
}

TEST_F(LostNetworkTest, GoesOnWithTheSameConnectionAfterAShortLoss)
{
    loseItUntilThePlayerStalls();
    clock->turn(9);
    setLink(true);
    EXPECT_TRUE(player->reaches(RadioStatePlaying));
    EXPECT_EQ(server->requestCount(), 1u);
}

TEST_F(LostNetworkTest, APlayWithoutNetworkFailsAtOnce)
{
    (*player)->pause();
    setLink(false);
    (*player)->play();
    EXPECT_EQ((*player)->radioState(), RadioStateError);
    EXPECT_EQ((*player)->radioError(), RadioErrorHostNotReachable);
    setLink(true);
    (*player)->play();
    EXPECT_TRUE(player->reaches(RadioStatePlaying));
}
