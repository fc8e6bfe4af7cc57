#include "servers/IcecastStation.h"
#include "support/PlayerUnderTest.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

using namespace orvel;
using namespace orvel::test;

namespace {

struct IcecastTest : testing::TestWithParam<IcecastStation::Codec>
{
    IcecastStation station{GetParam()};
    std::optional<PlayerUnderTest> player;

    void SetUp() override
    {
        ASSERT_EQ(station.start(), QString());
        player.emplace(station.url());
        player->streamer->setBufferInSeconds(1);
        player->streamer->play();
        ASSERT_TRUE(reaches(RadioStatePlaying));
    }
    // Also heard by the delegate.
    bool reaches(RadioState state)
    {
        return player->reaches(state, 40) &&
               waitUntil([&] { return !player->states.empty() && player->states.back() == state; });
    }
};

} // namespace

TEST_P(IcecastTest, IsPlayedWithItsNamesAndTitles)
{
    EXPECT_EQ(player->states.front(), RadioStateConnecting);
    EXPECT_EQ(player->names.size(), 1);
    EXPECT_EQ(player->streamer->radioName(), IcecastStation::name);
    EXPECT_EQ(player->streamer->radioGenre(), IcecastStation::genre);
    EXPECT_EQ(player->streamer->radioUrl(), IcecastStation::site);
    for (const QString title : {"Orvel - Premier", "Zoé – L'été à “Nîmes” ☀ 夏"}) {
        ASSERT_TRUE(station.setTitle(title));
        EXPECT_TRUE(waitUntil([&] { return player->titles.contains(title); })) << title.toStdString();
    }
    // Those came with what was sent behind the burst.
    EXPECT_EQ(player->streamer->radioState(), RadioStatePlaying);
    player->streamer->pause();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_TRUE(waitUntil([&] { return !station.hasListeners(); }));
}

TEST_P(IcecastTest, StopsWithTheSource)
{
    station.endSource();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_FALSE(std::ranges::count(player->states, RadioStateError));
}

INSTANTIATE_TEST_SUITE_P(, IcecastTest,
                         testing::Values(IcecastStation::Codec::Mp3, IcecastStation::Codec::Aac),
                         [](const auto &codec) {
                             return std::string(codec.param == IcecastStation::Codec::Mp3 ? "Mp3" : "Aac");
                         });
