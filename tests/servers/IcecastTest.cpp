#include "audio/live/Streamer.h"
#include "servers/IcecastServer.h"
#include "servers/SourceFeed.h"
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

struct IcecastTest : testing::TestWithParam<SourceFeed::Codec>
{
    IcecastServer server{128 * 1024};
    SourceFeed feed{server, GetParam()};
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<Streamer> streamer;

    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(serve());
        streamer = Streamer::initWithURL(*Url::fromText(server.url(feed.mount())),
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
    void serve()
    {
        ASSERT_EQ(server.start(), QString());
        ASSERT_EQ(feed.start(), QString());
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
    EXPECT_EQ(streamer->radioName(), SourceFeed::name);
    EXPECT_EQ(streamer->radioGenre(), SourceFeed::genre);
    EXPECT_EQ(streamer->radioUrl(), SourceFeed::site);
    for (const QString title : {"Orvel - Premier", "Zoé – L'été à “Nîmes” ☀ 夏"}) {
        ASSERT_TRUE(server.setTitle(feed.mount(), title));
        EXPECT_TRUE(waitUntil([&] { return listener->titles.contains(title); })) << title.toStdString();
    }
    // Those came with what was sent behind the burst.
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    streamer->pause();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_TRUE(waitUntil([&] { return server.listeners() == 0; }));
}

TEST_P(IcecastTest, StopsWithTheSource)
{
    feed.end();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_FALSE(std::ranges::count(listener->states, RadioStateError));
}

TEST_P(IcecastTest, FailsWithoutTheServerAndPlaysWhenItIsBack)
{
    server.kill();
    ASSERT_TRUE(reaches(RadioStateStopped));
    streamer->play();
    EXPECT_EQ(streamer->radioState(), RadioStateConnecting);
    ASSERT_TRUE(reaches(RadioStateError));
    EXPECT_EQ(streamer->radioError(), RadioErrorNetworkError);
    ASSERT_NO_FATAL_FAILURE(serve());
    streamer->play();
    EXPECT_TRUE(reaches(RadioStatePlaying));
}

INSTANTIATE_TEST_SUITE_P(, IcecastTest, testing::Values(SourceFeed::Codec::Mp3, SourceFeed::Codec::Aac),
                         [](const auto &codec) {
                             return std::string(codec.param == SourceFeed::Codec::Mp3 ? "Mp3" : "Aac");
                         });
