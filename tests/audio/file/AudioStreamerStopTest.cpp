#include "audio/file/FakeFile.h"
#include "platform/media/output/SoundOutput.h"
#include "support/EncodedTone.h"
#include "support/EnvironmentValue.h"

#include <chrono>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

// Seconds of a call.
double timeOf(const std::function<void()> &call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

constexpr double maxStop = 0.5; // seconds; 0.2 where nothing else runs

} // namespace

// The main thread never turns its event loop meanwhile, so nothing may wait for it.
TEST(AudioStreamerStopTest, EndsEachStateAtOnce)
{
    const QByteArray file = numbered(100'000);
    const ScriptedServer server(Script{Send{httpHead("Content-Length: 100001\r\n") + file}, Stall{}});
    const ScriptedServer silent(Script{WaitForRelease{}});
    for (const AudioStreamerState state : {AudioStreamerStateInitialized, AudioStreamerStateWaitingForData,
                                           AudioStreamerStateWaitingForQueueStart, AudioStreamerStatePlaying,
                                           AudioStreamerStateBuffering, AudioStreamerStatePaused}) {
        for (const bool tells : {true, false}) {
            SCOPED_TRACE(int(state));
            const bool hasNoData = state == AudioStreamerStateWaitingForData;
            StreamerUnderTest player(hasNoData ? silent.url() : server.url());
            player.prepareQueue = [tells](FakeFileQueue &queue) {
                queue.automatic = false;
                queue.tellsStops = tells;
            };
            if (state != AudioStreamerStateInitialized)
                player->start();
            if (state == AudioStreamerStatePlaying || state == AudioStreamerStateBuffering ||
                state == AudioStreamerStatePaused) {
                ASSERT_TRUE(player.reaches(AudioStreamerStateWaitingForQueueStart));
                player.queue().tellRunning(true);
                ASSERT_TRUE(player.reaches(AudioStreamerStatePlaying));
            }
            if (state == AudioStreamerStatePaused)
                player->pause();
            if (state == AudioStreamerStateBuffering)
                player.runsDry();
            ASSERT_TRUE(player.reaches(state));
            EXPECT_LT(timeOf([&] { player->stop(); }), maxStop);
            EXPECT_TRUE(player->isIdle());
            EXPECT_FALSE(player->isWaiting());
            EXPECT_EQ(player->errorCode(), 0);
            player->stop();
            player->seekToTime(1);
            EXPECT_EQ(player->progress(), 0);
        }
    }
}

TEST(AudioStreamerStopTest, PlaysAgainAfterIt)
{
    const ScriptedServer server(answer(numbered(50'000)));
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    player->stop();
    player.prepareQueue = [](FakeFileQueue &) {};
    player->start();
    ASSERT_TRUE(player.reaches(AudioStreamerStateInitialized));
    EXPECT_EQ(player.queue().played(), numbered(50'000));
}

TEST(AudioStreamerStopTest, QuittingEndsWhatPlaysOrIsPaused)
{
    const ScriptedServer server(answer(numbered(100'000)));
    for (const bool isPaused : {false, true}) {
        StreamerUnderTest player(server.url());
        ASSERT_TRUE(player.plays());
        if (isPaused)
            player->pause();
        EXPECT_LT(timeOf([] { joinOutputQueues(); }), 0.5);
        EXPECT_TRUE(player->isIdle());
    }
}

// Real sound on the silent device, and pauses, seeks and a stop at any moment of them. ORVEL_STOPS says how
// many; a sanitizer judges the rest.
TEST(AudioStreamerStopTest, ComesAtAnyMoment)
{
    const SilentDevice silence;
    const EncodedTone tone = encodeTone({.bitrate = 320000, .seconds = 4});
    std::optional<ScriptedServer> server; // it keeps the threads of its connections
    const int stops =
        qEnvironmentVariableIsSet("ORVEL_STOPS") ? qEnvironmentVariableIntValue("ORVEL_STOPS") : 150;
    std::mt19937 random(7);
    const auto upTo = [&](int max) { return std::uniform_int_distribution(0, max)(random); };
    double longest = 0;
    int late = 0;
    for (int i = 0; i < stops; ++i) {
        if (i % 200 == 0)
            server.emplace(answer(tone.bytes));
        const auto streamer = AudioStreamer::initWithURL(*Url::fromText(server->url()));
        streamer->start();
        const auto sleep = [&](int max) {
            std::this_thread::sleep_for(std::chrono::microseconds(upTo(max)));
        };
        sleep(i % 2 == 0 ? 3000 : 12'000);
        for (int steps = upTo(3); steps > 0; --steps) {
            switch (upTo(2)) {
            case 0:
                streamer->pause();
                break;
            case 1:
                streamer->seekToTime(upTo(4));
                break;
            case 2:
                letEventsRun();
                break;
            }
            sleep(4000);
        }
        const double seconds = timeOf([&] { streamer->stop(); });
        longest = std::max(longest, seconds);
        late += seconds > 0.2;
        ASSERT_TRUE(streamer->isIdle());
        ASSERT_EQ(streamer->errorCode(), 0);
    }
    joinOutputQueues();
    letEventsRun();
    EXPECT_LT(longest, maxStop);
    RecordProperty("longest", std::to_string(longest));
    RecordProperty("late", late);
}
