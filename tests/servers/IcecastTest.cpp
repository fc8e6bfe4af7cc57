#include "audio/live/Streamer.h"
#include "servers/IcecastStation.h"
#include "support/TestLoop.h"

#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct Listener : RadioDelegate
{
    std::vector<RadioState> states;
    QStringList titles;
    int metadataCount = 0;
    void radioStateChanged(Radio &radio) override { states.push_back(radio.radioState()); }
    void radioTitleChanged(Radio &radio) override { titles << radio.radioTitle(); }
    void radioMetadataReady(Radio &) override { ++metadataCount; }
};

struct IcecastTest : testing::TestWithParam<IcecastStation::Codec>
{
    IcecastStation station{GetParam()};
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<Streamer> streamer;

    void SetUp() override
    {
        ASSERT_EQ(station.start(), QString());
        streamer = Streamer::initWithURL(*Url::fromText(station.url()),
                                         {.reachability = reachabilityForLocalStation});
        streamer->setDelegate(listener);
        streamer->setBufferInSeconds(1);
        streamer->play();
        ASSERT_TRUE(reaches(RadioStatePlaying));
    }
    void TearDown() override
    {
        if (streamer)
            streamer->shutdown();
        letEventsRun();
    }
    // Also heard by the delegate.
    bool reaches(RadioState state)
    {
        return waitUntil(
            [&] {
                return streamer->radioState() == state && !listener->states.empty() &&
                       listener->states.back() == state;
            },
            40);
    }
};

} // namespace

TEST_P(IcecastTest, IsPlayedWithItsNamesAndTitles)
{
    EXPECT_EQ(listener->states.front(), RadioStateConnecting);
    EXPECT_EQ(listener->metadataCount, 1);
    EXPECT_EQ(streamer->radioName(), IcecastStation::name);
    EXPECT_EQ(streamer->radioGenre(), IcecastStation::genre);
    EXPECT_EQ(streamer->radioUrl(), IcecastStation::site);
    for (const QString title : {"Orvel - Premier", "Zoé – L'été à “Nîmes” ☀ 夏"}) {
        ASSERT_TRUE(station.setTitle(title));
        EXPECT_TRUE(waitUntil([&] { return listener->titles.contains(title); })) << title.toStdString();
    }
    // Those came with what was sent behind the burst.
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    streamer->pause();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_TRUE(waitUntil([&] { return station.listeners() == 0; }));
}

TEST_P(IcecastTest, StopsWithTheSource)
{
    station.endSource();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_FALSE(std::ranges::count(listener->states, RadioStateError));
}

INSTANTIATE_TEST_SUITE_P(, IcecastTest,
                         testing::Values(IcecastStation::Codec::Mp3, IcecastStation::Codec::Aac),
                         [](const auto &codec) {
                             return std::string(codec.param == IcecastStation::Codec::Mp3 ? "Mp3" : "Aac");
                         });
