#include "platform/media/output/AudioSession.h"
#include "platform/media/output/ToneFeeder.h"
#include "support/PulseServer.h"
#include "support/SoundComparison.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>
#include <tuple>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr double rate = 44100;
using Frames = std::vector<std::pair<float, float>>;

// Pauses are silence in the midst of a sound.
Frames withoutPauses(const std::vector<float> &samples)
{
    Frames frames;
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2)
        if (samples[i] != 0 || samples[i + 1] != 0)
            frames.emplace_back(samples[i], samples[i + 1]);
    return frames;
}

// A recorded piece of a sound: where it begins and ends in the sound, in seconds.
struct Piece
{
    double begin;
    double end;
};

// The recorded pieces in their order. Nothing else may have been recorded.
std::vector<Piece> piecesOf(const Frames &sound, const std::vector<float> &recorded)
{
    constexpr std::ptrdiff_t sample = 8; // frames that stand once in the sound
    const Frames frames = withoutPauses(recorded);
    std::vector<Piece> pieces;
    for (auto at = frames.begin(); frames.end() - at >= sample;) {
        const auto found = std::search(sound.begin(), sound.end(), at, at + sample);
        if (found == sound.end()) {
            ADD_FAILURE() << "Something else was recorded";
            break;
        }
        const auto [there, here] = std::mismatch(found, sound.end(), at, frames.end());
        at = here;
        pieces.push_back({double(found - sound.begin()) / rate, double(there - sound.begin()) / rate});
    }
    return pieces;
}

void rest(double seconds)
{
    waitUntil([] { return false; }, seconds);
}

// Plays a tone, and records what the server's sink plays.
class Playing
{
public:
    explicit Playing(const PulseServer &server, const OutputQueueOptions &options = {}, double seconds = 3,
                     int latency = 20)
        : tone(encodeTone({.seconds = seconds}))
        , sound(withoutPauses(decoded(tone)))
        , recorder(std::make_unique<SinkRecorder>(server, latency))
        , feeder(tone, options)
    {
    }

    double seconds() const { return double(sound.size()) / rate; }
    // What this recorder has at the end.
    std::vector<float> recorded()
    {
        EXPECT_TRUE(feeder.waitForTheEnd());
        return recorder->soundUntilSilence();
    }
    // That at most `allowed` seconds are missing.
    void expectWhole(double allowed)
    {
        double missing = 0;
        double end = 0;
        for (const Piece &piece : piecesOf(sound, recorded())) {
            EXPECT_GE(piece.begin, end);
            missing += piece.begin - end;
            end = piece.end;
        }
        EXPECT_LE(missing, allowed);
        EXPECT_EQ(end, seconds());
    }

    const EncodedTone tone;
    const Frames sound;
    std::unique_ptr<SinkRecorder> recorder;
    ToneFeeder feeder;
};

class SoundServerTest : public testing::TestWithParam<PulseServer::Kind>
{
protected:
    explicit SoundServerTest(PulseServer::Kind ofServer = GetParam()) : kind(ofServer), server(kind) {}
    ~SoundServerTest() override { joinOutputQueues(); }
    void SetUp() override
    {
        if (!PulseServer::isThere(kind))
            GTEST_SKIP() << "The sound server is not installed";
        joinOutputQueues();
        ASSERT_TRUE(server.start());
        server.answerPlayers();
    }

    const PulseServer::Kind kind;
    // PipeWire's recordings have gaps when other work of the machine keeps it from its clock.
    const double allowed = kind == PulseServer::Kind::PipeWire ? 0.2 : 0;
    PulseServer server;
};
INSTANTIATE_TEST_SUITE_P(, SoundServerTest,
                         testing::Values(PulseServer::Kind::PulseAudio, PulseServer::Kind::PipeWire));

// Plays at one volume after another. Returns the greatest step between two frames, and the volumes when each
// change was asked for and a tenth of a second later.
std::pair<double, std::vector<double>> playedVolumes(const PulseServer &server,
                                                     const std::vector<float> &volumes)
{
    Playing playing(server, {}, 3, 5);
    playing.feeder.play();
    std::vector<double> looks; // frames
    for (const float volume : volumes) {
        rest(0.4);
        looks.push_back(playing.feeder.queue->currentTime().value_or(0));
        looks.push_back(looks.back() + 0.1 * rate);
        playing.feeder.queue->setVolume(volume);
    }
    const Frames heard = withoutPauses(playing.recorded());
    if (heard.size() != playing.sound.size())
        return {1, {}};

    double before = 1;
    double step = 0;
    std::vector<double> found;
    for (std::size_t i = 0; i < heard.size(); ++i) {
        if (std::abs(playing.sound[i].first) < 0.05)
            continue;
        const double volume = double(heard[i].first) / double(playing.sound[i].first);
        step = std::max(step, std::abs(volume - before));
        before = volume;
        if (found.size() < looks.size() && double(i) >= looks[found.size()])
            found.push_back(std::round(volume * 1000) / 1000);
    }
    return {step, found};
}

} // namespace

TEST_P(SoundServerTest, LosesNoFrameInPausesAndResumes)
{
    Playing playing(server, {}, 3, 200);
    OutputQueue &queue = *playing.feeder.queue;
    playing.feeder.play();
    for (const double pause : {0.3, 0.01, 0.1, 0.05, 0.4, 0.2}) {
        rest(0.25 + pause / 7);
        queue.pause();
        const std::optional<double> time = queue.currentTime();
        rest(pause);
        EXPECT_EQ(queue.currentTime(), time);
        queue.start();
    }
    playing.expectWhole(allowed);
}

TEST_P(SoundServerTest, GoesOnAfterAnUnderrunWithWhatFollows)
{
    Playing playing(server, {.ringSeconds = 0.4});
    int returned = 0;
    playing.feeder.onCallback = [&](OutputBuffer &) {
        if (++returned == 2)
            std::this_thread::sleep_for(std::chrono::seconds(1));
    };
    playing.feeder.play();
    playing.expectWhole(allowed);
}

TEST_P(SoundServerTest, HearsAnotherVolumeSoonAndWithoutAClick)
{
    // Other work of the machine may delay one change beyond the sound that was to be exchanged.
    double step = 1;
    std::vector<double> volumes;
    for (int tries = 0; tries < 3 && step > 0.02; ++tries)
        std::tie(step, volumes) = playedVolumes(server, {0.5f, 0.1f, 0.8f});
    EXPECT_LT(step, 0.02); // a ramp of 20 ms has far smaller steps
    EXPECT_EQ(volumes, (std::vector{1., 0.5, 0.5, 0.1, 0.1, 0.8}));
}

// What PipeWire has no tools for.
class PulseAudioTest : public SoundServerTest
{
protected:
    PulseAudioTest() : SoundServerTest(PulseServer::Kind::PulseAudio) {}
};

TEST_F(PulseAudioTest, RunsOnInSilenceUntilTheServerIsThereAgain)
{
    for (const double standing : {0., 10.}) {
        SCOPED_TRACE(standing);
        Playing playing(server, {.standingSeconds = standing}, 4);
        const auto begin = std::chrono::steady_clock::now();
        playing.feeder.play();
        rest(1);
        server.kill();
        rest(0.3);
        const std::vector<Piece> before = piecesOf(playing.sound, playing.recorder->samples());
        ASSERT_TRUE(server.start());
        playing.recorder = std::make_unique<SinkRecorder>(server);
        server.answerPlayers();
        EXPECT_TRUE(waitUntil([&] { return !withoutPauses(playing.recorder->samples()).empty(); }, 2));
        ASSERT_TRUE(playing.feeder.waitForTheEnd());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        const std::vector<Piece> after = piecesOf(playing.sound, playing.recorded());

        ASSERT_EQ(before.size(), 1u);
        ASSERT_EQ(after.size(), 1u);
        EXPECT_EQ(before[0].begin, 0);
        EXPECT_EQ(after[0].end, playing.seconds());
        const double missing = after[0].begin - before[0].end;
        if (standing == 0) {
            EXPECT_NEAR(taken.count(), playing.seconds(), 0.5);
            EXPECT_GT(missing, 0.3);
        } else {
            EXPECT_NEAR(missing, 0, 0.1);
        }
    }
}

TEST_F(PulseAudioTest, FollowsItsSinkAwayAndBack)
{
    Playing playing(server, {}, 4);
    playing.feeder.play();
    rest(1);
    server.removeSink();
    rest(0.3);
    server.addSink();
    playing.recorder = std::make_unique<SinkRecorder>(server);
    const std::vector<Piece> after = piecesOf(playing.sound, playing.recorded());
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(after[0].end, playing.seconds());
    EXPECT_LT(after[0].begin, 2.2);
}

TEST_F(PulseAudioTest, IsSilentForACallAndLosesNothing)
{
    server.pactl("load-module module-role-cork");
    std::vector<InterruptionState> told;
    AudioSession::sharedInstance().setInterruptionListener(
        &told, [&](InterruptionState state) { told.push_back(state); });
    // Who stops for the call learns of its end, too.
    for (const bool stops : {false, true}) {
        told.clear();
        Playing playing(server);
        OutputQueue &queue = *playing.feeder.queue;
        playing.feeder.play();
        rest(0.5);
        QProcess call;
        server.play(call, "phone");
        ASSERT_TRUE(waitUntil([&] { return told == std::vector{InterruptionState::Begin}; }));
        const double time = queue.currentTime().value_or(0);
        if (stops)
            queue.stop(true);
        rest(0.5);
        EXPECT_NEAR(queue.currentTime().value_or(stops ? time : 0), time, 0.02 * rate);
        EXPECT_EQ(told.size(), 1u);
        call.kill();
        call.waitForFinished();
        ASSERT_TRUE(waitUntil([&] { return told.size() == 2; }));
        EXPECT_EQ(told.back(), InterruptionState::End);
        if (!stops)
            playing.expectWhole(0.1); // the server mutes the stream itself before it is corked
    }
    AudioSession::sharedInstance().removeInterruptionListener(&told);
}
