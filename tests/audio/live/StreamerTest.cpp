#include "audio/live/FakeMedia.h"
#include "platform/foundation/BackgroundTask.h"
#include "platform/media/output/AudioSession.h"
#include "support/PlayerUnderTest.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>
#include <thread>

using namespace orvel;
using namespace orvel::test;

namespace {

const Send mp3Head{httpHead("Content-Type: audio/mpeg\r\nicy-name: Nord\r\n")};
const Send sound{QByteArray(4096, 's')};
const Script playing{mp3Head, sound, WaitForRelease{}};

struct StreamerTest : testing::Test
{
    TakenClock clock;
    FakeMedia media;
    std::unique_ptr<ScriptedServer> server;
    std::optional<PlayerUnderTest> player;
    std::shared_ptr<Streamer> streamer;  // the player's
    NetworkUnderTest *network = nullptr; // the player's

    // 1000 frames a second make buffers of 500 bytes, and more than 3000 bytes start the sound.
    void start(std::vector<Script> scripts, const QString &path = "/live")
    {
        server = std::make_unique<ScriptedServer>(std::move(scripts));
        make(server->url(path));
        streamer->play();
    }
    void make(const QString &url)
    {
        streamer.reset();
        player.emplace(url, media.services());
        streamer = player->streamer;
        network = &player->network;
    }
    void startPlaying(std::vector<Script> scripts = {playing})
    {
        start(std::move(scripts));
        ASSERT_TRUE(reaches(RadioStatePlaying));
    }
    // The player waits for it.
    void loseTheNetwork()
    {
        network->status = Reachability::Status::NotReachable;
        playOut();
        clock.turn(10.1);
    }
    // The delegate has been told of it, too.
    bool reaches(RadioState state)
    {
        const bool isReached = player->reaches(state);
        letEventsRun();
        return isReached;
    }
    // Hands back all buffers until the player has nothing more to fill them with.
    void playOut()
    {
        while (!media.queue->enqueued.empty())
            media.queue->playOne();
        letEventsRun();
    }
};

} // namespace

TEST_F(StreamerTest, TakesOnlyLowerCaseWebSchemes)
{
    for (const char *url : {"HTTP://a.example/", "ftp://a.example/", "file:///x.mp3"})
        EXPECT_FALSE(Streamer::initWithURL(*Url::fromText(url), media.services())) << url;
    EXPECT_TRUE(Streamer::initWithURL(*Url::fromText("https://a.example/"), media.services()));
}

TEST_F(StreamerTest, StartsOnlyWhenMoreThanTheThresholdIsQueued)
{
    media.packetSize = 125;
    start({{mp3Head, sound, WaitForRelease{}, Send{QByteArray(2000, 's')}, WaitForRelease{}},
           {mp3Head, sound, WaitForRelease{}}});
    streamer->setBufferInSeconds(4); // 8 buffers of 500; the first 4096 bytes hold 32 packets, 4000 bytes
    ASSERT_TRUE(waitUntil([&] { return media.queue != nullptr; }));
    letEventsRun();
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
    EXPECT_TRUE(streamer->isPlaying());
    server->release();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_EQ(media.queue->enqueued.size(), 3u);
    EXPECT_FLOAT_EQ(media.queue->volume, 0.5F);
    const QByteArray request = server->requests().front().toLower();
    EXPECT_TRUE(request.contains("icy-metadata: 1\r\n"));
    EXPECT_TRUE(request.contains("cache-control: no-cache\r\n"));
    EXPECT_EQ(media.hints, std::vector({AudioFileType::kAudioFileMP3Type}));
    EXPECT_EQ(player->names, QStringList({"Nord"}));
    streamer->setVolume(0.25F);
    EXPECT_FLOAT_EQ(media.queue->volume, 0.25F);
    // The next play counts from the beginning, and feeds its parser as the first did.
    streamer->pause();
    streamer->play();
    ASSERT_TRUE(waitUntil([&] { return media.firstPieces.size() == 2; }));
    EXPECT_EQ(media.firstPieces, std::vector<qsizetype>({4096, 4096}));
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
}

TEST_F(StreamerTest, ReadsABareAnswerAndOpensASecondParserForIt)
{
    const Script bare = {Send{"ICY 2"},
                         Send{"00 OK\r\nicy-name:Nue\r\ncontent-type:audio/aac\r\nicy-metaint:6000\r\n\r\n"},
                         sound, Stall{}};
    startPlaying({bare});
    EXPECT_EQ(media.hints, std::vector({AudioFileType::none, AudioFileType::kAudioFileAAC_ADTSType}));
    EXPECT_EQ(player->names, QStringList({"Nue"}));
    // A second one that does not open drops the sound, without an error.
    media.opens = 1;
    start({bare});
    ASSERT_TRUE(waitUntil([&] { return media.hints.size() == 4 && server->isAtRest(); }));
    letEventsRun();
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
}

TEST_F(StreamerTest, ReportsEachFailureOfThePlatformByItsCode)
{
    const std::tuple<std::function<void()>, RadioError> cases[] = {
        {[&] { media.opens = 0; }, RadioErrorFileStreamOpen},
        {[&] { media.hasFormat = false; }, RadioErrorFileStreamGetProperty},
        {[&] { media.format.sampleRate = 0; }, RadioErrorFileStreamGetProperty},
        {[&] { media.format.sampleRate = std::numeric_limits<double>::quiet_NaN(); },
         RadioErrorFileStreamGetProperty},
        {[&] { media.makesQueues = false; }, RadioErrorAudioQueueCreate},
        {[&] { media.allocates = false; }, RadioErrorAudioQueueBufferAllocation},
        {[&] { media.enqueues = false; }, RadioErrorAudioQueueEnqueue},
        {[&] { media.starts = false; }, RadioErrorAudioQueueStart}};
    for (const auto &[breakIt, error] : cases) {
        FakeMedia whole;
        std::swap(media, whole);
        breakIt();
        start({{mp3Head, SendForever{QByteArray(4096, 's')}}});
        ASSERT_TRUE(reaches(RadioStateError));
        letEventsRun();
        EXPECT_EQ(streamer->radioError(), error);
        EXPECT_EQ(player->states.back(), RadioStateError);
        EXPECT_TRUE(!media.queue || media.queue->isDisposed);
        EXPECT_FALSE(media.isParserClosedInside);
        EXPECT_FALSE(streamer->isPlaying() || streamer->isPaused() || streamer->isBuffering());
        EXPECT_EQ(network->started, 0);
        EXPECT_TRUE(waitUntil([&] { return server->openConnections() == 0; }));
        media = FakeMedia();
        streamer->play();
        ASSERT_TRUE(reaches(RadioStatePlaying));
        EXPECT_TRUE(clock.turnUntil([&] {
            if (!media.queue->enqueued.empty())
                media.queue->playOne();
            return media.queue->played.size() > 5000; // more than what started it
        }));
    }
}

TEST_F(StreamerTest, DoesNotTryWithoutANetwork)
{
    make("http://127.0.0.1:1/");
    network->status = Reachability::Status::NotReachable;
    streamer->play();
    EXPECT_EQ(streamer->radioState(), RadioStateError);
    EXPECT_EQ(streamer->radioError(), RadioErrorHostNotReachable);
    EXPECT_FALSE(streamer->isPlaying());
    EXPECT_EQ(network->started, 0);
}

TEST_F(StreamerTest, PlaysWhatAPlaylistNames)
{
    const ScriptedServer stream(playing);
    start({{Send{httpHead() + "#EXTM3U\r\n" + stream.url("/live").toUtf8() + "\r\n"}, Close{}}},
          "/Liste.M3U?x=1");
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_FALSE(server->requests().front().toLower().contains("icy-metadata"));
    EXPECT_TRUE(stream.requests().front().contains("Icy-Metadata: 1"));
    // From then on the stream is asked for directly.
    streamer->pause();
    streamer->play();
    EXPECT_TRUE(waitUntil([&] { return stream.requestCount() == 2; }));
    EXPECT_EQ(server->requestCount(), 1u);
}

TEST_F(StreamerTest, ReadsAPlaylistAnewAfterAHalfOne)
{
    const ScriptedServer stream(playing);
    start({{Send{httpHead() + "http://127.0.0.1:1/wrong\r\n"}, WaitForRelease{}, Reset{}},
           answer(stream.url("/live").toUtf8())},
          "/list.m3u");
    ASSERT_TRUE(waitUntil([&] { return server->isAtRest(); }));
    letEventsRun();
    server->release();
    ASSERT_TRUE(reaches(RadioStateError));
    EXPECT_EQ(streamer->radioError(), RadioErrorHostNotReachable);
    streamer->play();
    EXPECT_TRUE(reaches(RadioStatePlaying));
    start({answer("#EXTM3U")}, "/list.m3u");
    ASSERT_TRUE(reaches(RadioStateError));
    EXPECT_EQ(streamer->radioError(), RadioErrorPlaylistParsing);
    EXPECT_EQ(network->started, 0);
}

TEST_F(StreamerTest, FillsIdleBuffersAsPacketsArrive)
{
    startPlaying({{mp3Head, sound, WaitForRelease{}, Send{QByteArray(1500, 's')}, WaitForRelease{}}});
    while (media.queue->enqueued.size() > 1)
        media.queue->playOne();
    server->release();
    EXPECT_TRUE(clock.turnUntil([&] { return media.queue->enqueued.size() == 3; }));
}

TEST_F(StreamerTest, BuffersAfterAnUnderrunAndRecovers)
{
    startPlaying({{mp3Head, sound, WaitForRelease{}, Send{QByteArray(1500, 's')}, WaitForRelease{},
                   SendForever{QByteArray(100, 's'), 0.02}}});
    playOut();
    ASSERT_TRUE(reaches(RadioStateBuffering));
    EXPECT_FALSE(media.queue->isStarted);
    EXPECT_TRUE(streamer->isBuffering());
    EXPECT_EQ(backgroundTaskCount(), 0); // in front
    clock.turn(9);
    server->release(); // enough for the idle buffers, not for a start
    ASSERT_TRUE(waitUntil([&] { return server->bytesSent() > 5500; }));
    letEventsRun();
    EXPECT_TRUE(media.queue->enqueued.empty());
    server->release();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_TRUE(media.queue->isStarted);
    EXPECT_FALSE(streamer->isBuffering());
    clock.turn(9); // the stall timer has been stopped
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
}

TEST_F(StreamerTest, AnUnderrunEndsWithWhateverComesNext)
{
    for (const Step &end : {Step(Close{}), Step(Reset{})}) {
        startPlaying({{mp3Head, sound, WaitForRelease{}, end}});
        playOut();
        EXPECT_EQ(player->states.back(), RadioStateBuffering);
        server->release();
        const bool stops = std::holds_alternative<Close>(end);
        const RadioState state = stops ? RadioStateStopped : RadioStateError;
        ASSERT_TRUE(reaches(state));
        EXPECT_EQ(streamer->radioError(), stops ? RadioErrorNone : RadioErrorNetworkError);
        EXPECT_FALSE(streamer->isBuffering());
        EXPECT_EQ(network->started, 0);
        clock.turn(11); // it is not a stall any more
        EXPECT_EQ(streamer->radioState(), state);
    }
}

TEST_F(StreamerTest, APauseDropsWhatWaits)
{
    startPlaying({{mp3Head, Send{QByteArray(4200, 's')}, Stall{}},
                  {mp3Head, Send{QByteArray(4096, 't')}, WaitForRelease{}}});
    EXPECT_TRUE(AudioSession::sharedInstance().isActive());
    EXPECT_EQ(media.queue->mediaName, "Nord");
    streamer->pause();
    EXPECT_TRUE(streamer->isPaused());
    EXPECT_FALSE(AudioSession::sharedInstance().isActive());
    EXPECT_TRUE(media.queue->isDisposed);
    EXPECT_EQ(network->started, 0);
    EXPECT_TRUE(waitUntil([&] { return server->openConnections() == 0; }));
    streamer->play();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_TRUE(AudioSession::sharedInstance().isActive());
    EXPECT_FALSE(media.queue->played.contains('s'));
    EXPECT_EQ(network->started, 1);
    EXPECT_FALSE(streamer->isPaused());
}

TEST_F(StreamerTest, PausesForAnInterruptionAndGoesOnUnlessTouched)
{
    enum class Touch { None, Pause, PlayAndPause };
    const auto interrupt = [&](InterruptionState state) {
        AudioSession::interrupt(state);
        letEventsRun();
    };
    for (const Touch touch : {Touch::None, Touch::Pause, Touch::PlayAndPause}) {
        startPlaying({{mp3Head, sound, Stall{}}, {mp3Head, sound, Stall{}}, {mp3Head, sound, Stall{}}});
        interrupt(InterruptionState::Begin);
        EXPECT_EQ(player->states.back(), RadioStateStopped);
        EXPECT_TRUE(streamer->isPaused());
        if (touch == Touch::PlayAndPause)
            streamer->play();
        if (touch != Touch::None)
            streamer->pause();
        interrupt(InterruptionState::End);
        EXPECT_EQ(streamer->isPlaying(), touch == Touch::None);
    }
    // Who was silent stays so.
    interrupt(InterruptionState::Begin);
    interrupt(InterruptionState::End);
    EXPECT_FALSE(streamer->isPlaying());
}

TEST_F(StreamerTest, EachLossHasAWaitOfItsOwn)
{
    start({playing});
    streamer->httpTimeout = 0;
    for (const bool byPlaying : {false, false, true}) {
        ASSERT_TRUE(reaches(RadioStatePlaying));
        loseTheNetwork();
        clock.turn(50);
        EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
        if (byPlaying) {
            network->status = Reachability::Status::WiFi;
            streamer->play();
        } else {
            network->set(Reachability::Status::WiFi);
        }
    }
    ASSERT_TRUE(reaches(RadioStatePlaying));
    clock.turn(120);
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    EXPECT_EQ(server->requestCount(), 4u);
}

TEST_F(StreamerTest, ASecondPlayKnowsNothingOfTheFirst)
{
    const Script ending{mp3Head, sound, Close{}};
    startPlaying({ending, ending, playing});
    clock.turnUntil([&] { return server->openConnections() == 0; });
    letEventsRun();
    while (!media.queue->enqueued.empty())
        media.queue->playOne(); // tells the end, too late
    streamer->pause();
    streamer->play();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    clock.turnUntil([&] { return server->openConnections() == 0; });
    playOut();
    ASSERT_TRUE(reaches(RadioStateStopped));
    const std::shared_ptr<FakeOutputQueue> first = media.queue;
    streamer->play();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    // A late buffer of an earlier output queue is not heard.
    const auto enqueued = media.queue->enqueued.size();
    first->callback(*first, first->buffers.front());
    EXPECT_EQ(media.queue->enqueued.size(), enqueued);
    // The first stream had ended; the second runs dry.
    playOut();
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
}

TEST_F(StreamerTest, AUsersPauseEndsTheWait)
{
    startPlaying();
    loseTheNetwork();
    letEventsRun();
    EXPECT_EQ(player->states.size(), 4u); // the wait is no other state than the stall
    streamer->pause();
    clock.turn(100);
    network->set(Reachability::Status::WiFi);
    letEventsRun();
    EXPECT_EQ(streamer->radioState(), RadioStateStopped);
}

TEST_F(StreamerTest, ASecondParsersFormatEndsTheFirstOnesSound)
{
    const QByteArray icy = "ICY 200 OK\r\nicy-metaint:100000\r\n\r\n";
    startPlaying({{mp3Head, sound, WaitForRelease{}, Send{icy + QByteArray(8192, 't')}, WaitForRelease{}}});
    const std::shared_ptr<FakeOutputQueue> first = media.queue;
    server->release();
    ASSERT_TRUE(clock.turnUntil([&] { return media.queue != first && media.queue->isStarted; }));
    EXPECT_TRUE(first->isDisposed);
    playOut();
    EXPECT_FALSE(media.queue->played.contains('s'));
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
}

TEST_F(StreamerTest, PacketsThatFitNoBufferStall)
{
    media.packetSize = 600; // buffers hold 500
    start({{mp3Head, SendForever{QByteArray(4096, 's'), 0.01}}});
    ASSERT_TRUE(waitUntil([&] { return streamer->isBuffering(); }));
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
    EXPECT_FALSE(media.queue->isStarted);
    for (int second = 0; second < 11; ++second) {
        const qint64 sent = server->bytesSent();
        ASSERT_TRUE(waitUntil([&] { return server->bytesSent() > sent + 16384; }));
        clock.turn(1);
    }
    EXPECT_EQ(server->requestCount(), 2u); // connects anew
}

TEST_F(StreamerTest, MovesFromWiFiToCellularByConnectingAnew)
{
    startPlaying();
    network->set(Reachability::Status::WiFi); // another one
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    network->set(Reachability::Status::Cellular);
    ASSERT_TRUE(waitUntil([&] { return server->requestCount() == 2; }));
    EXPECT_TRUE(reaches(RadioStatePlaying));
    // What began over a cellular network stays there, and so does what is stopped.
    network->set(Reachability::Status::WiFi);
    network->set(Reachability::Status::Cellular);
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    EXPECT_EQ(server->requestCount(), 2u);
}

TEST_F(StreamerTest, RestsBetweenReadsOnceItPlays)
{
    startPlaying({{mp3Head, SendForever{QByteArray(1000, 's'), 0.002}}});
    const qint64 sent = server->bytesSent();
    ASSERT_TRUE(waitUntil([&] { return server->bytesSent() > sent + 400'000; }));
    playOut(); // the clock stands, and a rest does not end; a timer of the transfer's may read once
    EXPECT_LT(media.queue->played.size(), sent + 300'000);
}

TEST_F(StreamerTest, AFastServerWaitsForThePlayer)
{
    server = std::make_unique<ScriptedServer>(Script{mp3Head, SendForever{QByteArray(65536, 's')}});
    make(server->url("/live"));
    streamer->httpTimeout = 0; // the clock goes faster than the server
    streamer->play();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    // Longer than any rest between reads.
    const auto hasSentMoreThan = [&](qint64 bytes) {
        clock.turn(1.1);
        return server->bytesSent() > bytes;
    };
    EXPECT_FALSE(waitUntil([&] { return hasSentMoreThan(24 << 20); }, 0.5)); // but what sockets hold
    EXPECT_EQ(streamer->radioState(), RadioStatePlaying);
    const qint64 sent = server->bytesSent();
    EXPECT_TRUE(waitUntil([&] {
        for (int i = 0; i < 1000 && !media.queue->enqueued.empty(); ++i)
            media.queue->playOne();
        return hasSentMoreThan(sent);
    }));
}

TEST_F(StreamerTest, ARequestFailsAfterItsTimeWithoutAByte)
{
    const std::tuple<QString, QByteArray, RadioState, RadioError> cases[] = {
        {"/live", "HTTP/1.1 200 OK\r\nContent-Ty", RadioStateConnecting, RadioErrorNetworkError},
        {"/live", mp3Head.bytes, RadioStateBuffering, RadioErrorNetworkError},
        {"/list.m3u", httpHead() + "#EXTM3U\r\n", RadioStateConnecting, RadioErrorHostNotReachable}};
    for (const auto &[path, bytes, state, error] : cases) {
        start({{Send{bytes}, Stall{}}}, path);
        ASSERT_TRUE(waitUntil([&] { return server->isAtRest(); }));
        letEventsRun();
        clock.turn(29.5);
        EXPECT_EQ(streamer->radioState(), state);
        clock.turn(0.6);
        EXPECT_EQ(streamer->radioState(), RadioStateError);
        EXPECT_EQ(streamer->radioError(), error);
    }
}

TEST_F(StreamerTest, WaitsForTheNetworkThatBrokeTheConnection)
{
    startPlaying({{mp3Head, sound, WaitForRelease{}, Reset{}}});
    network->set(Reachability::Status::NotReachable);
    server->release();
    ASSERT_TRUE(clock.turnUntil([&] { return streamer->radioState() == RadioStateBuffering; }));
    clock.turn(59.5);
    EXPECT_EQ(streamer->radioState(), RadioStateBuffering);
    EXPECT_TRUE(streamer->isPaused());
    clock.turn(0.6);
    EXPECT_EQ(streamer->radioState(), RadioStateError);
    EXPECT_EQ(streamer->radioError(), RadioErrorHostNotReachable);
    EXPECT_FALSE(streamer->isPaused());
}

TEST_F(StreamerTest, TheOutputThreadMayCallBackWhileTheMainThreadStopsEverything)
{
    for (int round = 0; round < 20; ++round) {
        startPlaying();
        const std::shared_ptr<FakeOutputQueue> queue = media.queue;
        std::thread output([&] {
            while (!queue->enqueued.empty())
                queue->playOne();
        });
        if (round % 2)
            streamer->pause();
        else
            streamer->shutdown();
        output.join();
        letEventsRun();
        EXPECT_EQ(streamer->radioState(), RadioStateStopped);
        EXPECT_TRUE(queue->isDisposed);
        streamer->shutdown();
    }
}

TEST_F(StreamerTest, SaysNothingAfterShutdown)
{
    startPlaying();
    letEventsRun();
    const auto told = player->states;
    streamer->shutdown();
    streamer->play();
    streamer->pause();
    network->set(Reachability::Status::Cellular);
    clock.turn(200);
    letEventsRun();
    EXPECT_EQ(player->states, told);
    EXPECT_EQ(server->requestCount(), 1u);
    streamer.reset();
    EXPECT_TRUE(player->letGo());
}

TEST_F(StreamerTest, HoldsABackgroundTaskWhileItConnectsOutOfSight)
{
    start({{mp3Head, WaitForRelease{}, sound, WaitForRelease{}}});
    EXPECT_TRUE(player->states.empty()); // nothing is told before play() has returned
    const auto enterBackground = [] {
        setApplicationState(ApplicationState::Background);
        NotificationCentre::defaultCentre().postNotification(applicationDidEnterBackground);
    };
    enterBackground();
    EXPECT_EQ(backgroundTaskCount(), 1);
    enterBackground();
    EXPECT_EQ(backgroundTaskCount(), 1);
    ASSERT_TRUE(reaches(RadioStateBuffering));
    server->release();
    ASSERT_TRUE(reaches(RadioStatePlaying));
    EXPECT_EQ(backgroundTaskCount(), 0);
    enterBackground(); // a player that plays needs none
    EXPECT_EQ(backgroundTaskCount(), 0);
    playOut(); // the stall holds one again
    EXPECT_EQ(backgroundTaskCount(), 1);
    streamer->pause(); // keeps it
    EXPECT_EQ(backgroundTaskCount(), 1);
    NotificationCentre::defaultCentre().postNotification(applicationWillEnterForeground);
    EXPECT_EQ(backgroundTaskCount(), 0);
    setApplicationState(ApplicationState::Active);

    // A lost network, the wait for it, and its end in an error.
    startPlaying();
    setApplicationState(ApplicationState::Background);
    network->set(Reachability::Status::NotReachable);
    EXPECT_EQ(backgroundTaskCount(), 1);
    NotificationCentre::defaultCentre().postNotification(applicationWillEnterForeground);
    playOut();
    NotificationCentre::defaultCentre().postNotification(applicationWillEnterForeground);
    clock.turn(10.1);
    EXPECT_EQ(backgroundTaskCount(), 1);
    clock.turn(60);
    EXPECT_EQ(streamer->radioState(), RadioStateError);
    EXPECT_EQ(backgroundTaskCount(), 0);
    network->set(Reachability::Status::WiFi);
    streamer->play();
    enterBackground();
    EXPECT_EQ(backgroundTaskCount(), 1);
    streamer->shutdown();
    EXPECT_EQ(backgroundTaskCount(), 0);
    setApplicationState(ApplicationState::Active);
}

TEST_F(StreamerTest, SizesItsBuffersByTheFormat)
{
    const struct
    {
        AudioStreamBasicDescription format;
        std::optional<quint32> upperBound;
        quint32 capacity;
        std::vector<AudioStreamBasicDescription> better = {};
    } cases[] = {
        {{.sampleRate = 44100, .framesPerPacket = 1152}, std::nullopt, 22050},
        {{.sampleRate = 11025, .framesPerPacket = 576}, std::nullopt, 5512},
        {{.sampleRate = 100, .framesPerPacket = 10}, 30, 1500},
        {{.sampleRate = 44100, .framesPerPacket = 1152}, 1441, 65536},
        {{.sampleRate = 1000, .bytesPerPacket = 40, .framesPerPacket = 30}, 9, 640},
        {{.sampleRate = 1000, .framesPerPacket = 10}, std::nullopt, 1000, {{.sampleRate = 2000}}},
    };
    for (const auto &it : cases) {
        media.format = it.format;
        media.formatList = it.better;
        media.upperBound = it.upperBound;
        start({playing});
        ASSERT_TRUE(waitUntil([&] { return media.queue && media.queue->buffers.size() == 3; }));
        EXPECT_EQ(media.queue->buffers.front().capacity(), it.capacity);
        media.queue.reset();
    }
    // A better format is one parser's own.
    media.formatList.clear();
    streamer->pause();
    streamer->play();
    ASSERT_TRUE(waitUntil([&] { return media.queue && media.queue->buffers.size() == 3; }));
    EXPECT_EQ(media.queue->buffers.front().capacity(), 500u);
}

TEST_F(StreamerTest, ClampsVolumeAndBuffer)
{
    make("http://a.example/");
    streamer->setVolume(1.7F);
    EXPECT_FLOAT_EQ(streamer->volume(), 1);
    streamer->setVolume(-1);
    EXPECT_FLOAT_EQ(streamer->volume(), 0);
    const std::pair<unsigned, quint64> cases[] = {{45, 60}, {30, 60}, {1, 2}, {0, 2}};
    for (const auto &[seconds, buffers] : cases) {
        streamer->setBufferInSeconds(seconds);
        EXPECT_EQ(streamer->bufferCount(), buffers);
    }
}
