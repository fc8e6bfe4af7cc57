#include "servers/IcecastServer.h"
#include "servers/SourceFeed.h"
#include "servers/StreamMeter.h"
#include "support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <cmath>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr int metadataInterval = 16000; // the server's own

struct Listener : RadioDelegate
{
    std::vector<RadioState> states;
    QStringList titles;
    int metadataCount = 0;
    void radioStateChanged(Radio &radio) override { states.push_back(radio.radioState()); }
    void radioTitleChanged(Radio &radio) override { titles << radio.radioTitle(); }
    void radioMetadataReady(Radio &) override { ++metadataCount; }
};

// Seconds between the first and the last sound that the device has taken: two channels, interleaved.
double secondsSounded()
{
    QFile file(qEnvironmentVariable("SDL_DISKAUDIOFILE"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    std::vector<float> samples(std::size_t(file.size()) / sizeof(float));
    file.read(reinterpret_cast<char *>(samples.data()), qint64(samples.size() * sizeof(float)));
    const auto sounds = [](float sample) { return std::abs(sample) > 1e-4F; };
    const auto first = std::find_if(samples.begin(), samples.end(), sounds);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), sounds).base();
    return first < last ? double(last - first) / 2 / SourceFeed::sampleRate : 0;
}

// Writes to the connections that this process has to `port` what their server won't read any more. A kernel
// resets a connection that ends with something unread.
int leaveUnread(quint16 port)
{
    int count = 0;
    for (const QString &name : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System | QDir::Files)) {
        sockaddr_in peer{};
        socklen_t size = sizeof peer;
        if (::getpeername(name.toInt(), reinterpret_cast<sockaddr *>(&peer), &size) == 0 &&
            peer.sin_family == AF_INET && ntohs(peer.sin_port) == port)
            count += ::send(name.toInt(), "\r\n", 2, MSG_NOSIGNAL) == 2;
    }
    return count;
}

struct IcecastTest : testing::TestWithParam<SourceFeed::Codec>
{
    IcecastServer server{128 * 1024};
    SourceFeed feed{server, GetParam()};
    StreamMeter meter;
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<Streamer> streamer;

    void SetUp() override { serve(); }
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
    void play()
    {
        streamer = Streamer::initWithURL(*Url::fromText(server.url(feed.mount())), meter.services());
        streamer->setDelegate(listener);
        streamer->setBufferInSeconds(1);
        streamer->play();
        ASSERT_TRUE(reaches(RadioStatePlaying));
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
    // Everything that had come was heard.
    void expectPlayedOut()
    {
        ASSERT_TRUE(reaches(RadioStateStopped));
        EXPECT_FALSE(std::ranges::count(listener->states, RadioStateError));
        const int packetFrames = GetParam() == SourceFeed::Codec::Mp3 ? 1152 : 1024;
        EXPECT_NEAR(secondsSounded(), double(meter.packets() * packetFrames) / SourceFeed::sampleRate, 0.2);
    }
    void resetConnection()
    {
        ASSERT_EQ(leaveUnread(server.port()), 1);
        server.kill();
    }
};

} // namespace

TEST_P(IcecastTest, IsPlayedWithItsNames)
{
    // States that follow at once are told together: the player itself is asked.
    meter.beforePackets = [&] {
        if (meter.packets() == 0) {
            EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
        }
    };
    play();
    EXPECT_EQ(listener->states.front(), RadioStateConnecting);
    EXPECT_EQ(listener->metadataCount, 1);
    EXPECT_EQ(streamer->radioName(), SourceFeed::name);
    EXPECT_EQ(streamer->radioGenre(), SourceFeed::genre);
    EXPECT_EQ(streamer->radioUrl(), SourceFeed::site);
    // More than it was given at once, so that it lives on what the source sends.
    const qint64 later = meter.bytes() + server.burstBytes();
    EXPECT_TRUE(waitUntil([&] { return meter.bytes() > later; }));
    streamer->pause();
    ASSERT_TRUE(reaches(RadioStateStopped));
    EXPECT_TRUE(waitUntil([&] { return server.listeners() == 0; }));
}

TEST_P(IcecastTest, ATitleComesWithinAnIntervalAndTheBuffer)
{
    play();
    const qint64 buffer = qint64(SourceFeed::sampleRate / 2) * qint64(streamer->bufferCount());
    for (const QString title : {"Orvel - Premier", "Zoé – L'été à “Nîmes” ☀ 夏"}) {
        qint64 titleAt = 0;
        meter.beforePackets = [&] {
            if (titleAt == 0 && streamer->radioTitle() == title)
                titleAt = meter.bytes();
        };
        ASSERT_TRUE(server.setTitle(feed.mount(), title));
        const qint64 changedAt = meter.bytes();
        ASSERT_TRUE(waitUntil([&] { return titleAt > 0; })) << " state " << int(streamer->radioState());
        EXPECT_LE(titleAt - changedAt, metadataInterval + buffer);
        EXPECT_TRUE(waitUntil([&] { return listener->titles.contains(title); }));
    }
    meter.beforePackets = [] {};
}

TEST_P(IcecastTest, WhatIsHerePlaysOutWhenTheSourceEnds)
{
    play();
    feed.end();
    expectPlayedOut();
}

TEST_P(IcecastTest, WhatIsHerePlaysOutWhenTheServerIsKilled)
{
    play();
    server.kill();
    expectPlayedOut();
}

TEST_P(IcecastTest, AResetOrARefusalIsANetworkError)
{
    play();
    resetConnection();
    ASSERT_TRUE(reaches(RadioStateError));
    EXPECT_EQ(streamer->radioError(), RadioErrorNetworkError);
    // Nobody listens on the port any more.
    streamer->play();
    EXPECT_EQ(streamer->radioState(), RadioStateConnecting);
    ASSERT_TRUE(reaches(RadioStateError));
    EXPECT_EQ(streamer->radioError(), RadioErrorNetworkError);
    ASSERT_NO_FATAL_FAILURE(serve());
    streamer->play();
    EXPECT_TRUE(reaches(RadioStatePlaying));
}

TEST_P(IcecastTest, ALostNetworkIsWaitedFor)
{
    play();
    meter.setNetwork(Reachability::Status::NotReachable);
    resetConnection();
    ASSERT_TRUE(reaches(RadioStateBuffering));
    EXPECT_TRUE(streamer->isPaused());
    ASSERT_NO_FATAL_FAILURE(serve());
    // The server is back, the network is not.
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
    EXPECT_TRUE(waitUntil([&] { return server.listeners() == 0; }));
    const qint64 heardBefore = meter.bytes();
    meter.setNetwork(Reachability::Status::Cellular);
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_GT(meter.bytes(), heardBefore);
    EXPECT_TRUE(waitUntil([] { return secondsSounded() > 1; }));
}

INSTANTIATE_TEST_SUITE_P(, IcecastTest, testing::Values(SourceFeed::Codec::Mp3, SourceFeed::Codec::Aac),
                         [](const auto &codec) {
                             return std::string(codec.param == SourceFeed::Codec::Mp3 ? "Mp3" : "Aac");
                         });
