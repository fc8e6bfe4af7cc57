#include "platform/media/output/AudioSession.h"
#include "platform/media/output/RecordedPieces.h"
#include "platform/media/output/ToneFeeder.h"
#include "support/PulseServer.h"
#include "support/SoundComparison.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>
#include <tuple>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr double rate = 44100;

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
                         testing::Values(PulseServer::Kind::PulseAudio, PulseServer::Kind::PipeWire),
                         [](const auto &kind) {
                             return kind.param == PulseServer::Kind::PulseAudio ? "PulseAudio" : "PipeWire";
                         });

void rest(double seconds)
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < until) {
        letEventsRun();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// Nothing else may have been recorded.
std::vector<Piece> wholePiecesOf(const Frames &sound, const std::vector<float> &recorded)
{
    const auto [pieces, strays] = piecesOf(sound, withoutPauses(recorded));
    EXPECT_EQ(strays, 0u);
    return pieces;
}

// `allowed` is in seconds that may be missing.
void expectWhole(const std::vector<Piece> &pieces, const Frames &sound, double allowed = 0)
{
    std::size_t missing = 0;
    std::size_t end = 0;
    for (const Piece &piece : pieces) {
        EXPECT_GE(piece.begin, end);
        missing += piece.begin - end;
        end = piece.end;
    }
    EXPECT_LE(double(missing), allowed * rate);
    EXPECT_EQ(end, sound.size());
}

// Plays at one volume after another. Returns the greatest step between two frames, and the volumes when each
// change was asked for and a tenth of a second later.
std::pair<double, std::vector<double>> playedVolumes(const PulseServer &server,
                                                     const std::vector<float> &volumes)
{
    const EncodedTone tone = encodeTone({.seconds = 3});
    const Frames sound = withoutPauses(decoded(tone));
    const SinkRecorder recorder(server, 5);
    ToneFeeder feeder(tone);
    feeder.play();
    std::vector<double> looks; // frames
    for (const float volume : volumes) {
        rest(0.4);
        looks.push_back(feeder.queue->currentTime().value_or(0));
        looks.push_back(looks.back() + 0.1 * rate);
        feeder.queue->setVolume(volume);
    }
    EXPECT_TRUE(feeder.waitForTheEnd());
    const Frames heard = withoutPauses(recorder.soundUntilSilence());
    if (heard.size() != sound.size())
        return {1, {}};

    double before = 1;
    double step = 0;
    std::vector<double> found;
    for (std::size_t i = 0; i < std::min(sound.size(), heard.size()); ++i) {
        if (std::abs(sound[i].first) < 0.05)
            continue;
        const double volume = double(heard[i].first) / double(sound[i].first);
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
    const EncodedTone tone = encodeTone({.seconds = 3});
    const Frames sound = withoutPauses(decoded(tone));
    const SinkRecorder recorder(server, 200);
    ToneFeeder feeder(tone);
    feeder.play();
    for (const double pause : {0.3, 0.01, 0.1, 0.05, 0.4, 0.2}) {
        rest(0.25 + pause / 7);
        feeder.queue->pause();
        const std::optional<double> time = feeder.queue->currentTime();
        rest(pause);
        EXPECT_EQ(feeder.queue->currentTime(), time);
        feeder.queue->start();
    }
    ASSERT_TRUE(feeder.waitForTheEnd());
    expectWhole(wholePiecesOf(sound, recorder.soundUntilSilence()), sound, allowed);
}

TEST_P(SoundServerTest, GoesOnAfterAnUnderrunWithWhatFollows)
{
    const EncodedTone tone = encodeTone({.seconds = 3});
    const Frames sound = withoutPauses(decoded(tone));
    const SinkRecorder recorder(server);
    ToneFeeder feeder(tone, {.ringSeconds = 0.4});
    int returned = 0;
    feeder.onCallback = [&](OutputBuffer &) {
        if (++returned == 2)
            std::this_thread::sleep_for(std::chrono::seconds(1));
    };
    feeder.play();
    ASSERT_TRUE(feeder.waitForTheEnd());
    expectWhole(wholePiecesOf(sound, recorder.soundUntilSilence()), sound, allowed);
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
    const EncodedTone tone = encodeTone({.seconds = 4});
    const Frames sound = withoutPauses(decoded(tone));
    for (const double standing : {0., 10.}) {
        SCOPED_TRACE(standing);
        ToneFeeder feeder(tone, {.standingSeconds = standing});
        const SinkRecorder first(server);
        const auto begin = std::chrono::steady_clock::now();
        feeder.play();
        rest(1);
        server.kill();
        rest(0.3);
        ASSERT_TRUE(server.start());
        const SinkRecorder second(server);
        server.answerPlayers();
        const auto answered = std::chrono::steady_clock::now();
        ASSERT_TRUE(waitUntil([&] { return !withoutPauses(second.samples()).empty(); }));
        const std::chrono::duration<double> wait = std::chrono::steady_clock::now() - answered;
        EXPECT_LT(wait.count(), 2);
        ASSERT_TRUE(feeder.waitForTheEnd());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;

        const std::vector<Piece> before = wholePiecesOf(sound, first.samples());
        const std::vector<Piece> after = wholePiecesOf(sound, second.soundUntilSilence());
        ASSERT_EQ(before.size(), 1u);
        ASSERT_EQ(after.size(), 1u);
        EXPECT_EQ(before[0].begin, 0u);
        EXPECT_EQ(after[0].end, sound.size());
        const double missing = (double(after[0].begin) - double(before[0].end)) / rate;
        if (standing == 0) {
            EXPECT_NEAR(taken.count(), double(sound.size()) / rate, 0.5);
            EXPECT_GT(missing, 0.3);
        } else {
            EXPECT_NEAR(missing, 0, 0.1);
        }
    }
}

TEST_F(PulseAudioTest, FollowsItsSinkAwayAndBack)
{
    const EncodedTone tone = encodeTone({.seconds = 4});
    const Frames sound = withoutPauses(decoded(tone));
    ToneFeeder feeder(tone);
    const auto begin = std::chrono::steady_clock::now();
    feeder.play();
    rest(1);
    server.removeSink();
    rest(0.3);
    server.addSink();
    const SinkRecorder recorder(server);
    ASSERT_TRUE(feeder.waitForTheEnd());
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_NEAR(taken.count(), double(sound.size()) / rate, 0.5);
    const std::vector<Piece> after = wholePiecesOf(sound, recorder.soundUntilSilence());
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(after[0].end, sound.size());
    EXPECT_LT(double(after[0].begin), 2.2 * rate);
}

TEST_F(PulseAudioTest, IsSilentForACallAndLosesNothing)
{
    server.pactl("load-module module-role-cork");
    std::vector<InterruptionState> told;
    AudioSession::sharedInstance().setInterruptionListener(
        &told, [&](InterruptionState state) { told.push_back(state); });
    const EncodedTone tone = encodeTone({.seconds = 3});
    const Frames sound = withoutPauses(decoded(tone));
    const SinkRecorder recorder(server);
    {
        ToneFeeder feeder(tone);
        feeder.play();
        rest(0.5);
        QProcess call;
        server.play(call, "phone");
        ASSERT_TRUE(waitUntil([&] { return told == std::vector{InterruptionState::Begin}; }));
        const std::optional<double> time = feeder.queue->currentTime();
        rest(0.5);
        EXPECT_NEAR(feeder.queue->currentTime().value_or(0), time.value_or(0), 0.02 * rate);
        call.kill();
        call.waitForFinished();
        ASSERT_TRUE(waitUntil([&] { return told.size() == 2; }));
        EXPECT_EQ(told.back(), InterruptionState::End);
        ASSERT_TRUE(feeder.waitForTheEnd());
        // The server mutes the stream itself before it is corked.
        expectWhole(wholePiecesOf(sound, recorder.soundUntilSilence()), sound, 0.1);
    }
    // Who stops for the call learns of its end, too.
    ToneFeeder feeder(tone);
    feeder.play();
    rest(0.3);
    QProcess call;
    server.play(call, "phone");
    ASSERT_TRUE(waitUntil([&] { return told.size() == 3; }));
    feeder.queue->stop(true);
    ASSERT_TRUE(feeder.waitForTheEnd());
    rest(0.2);
    EXPECT_EQ(told.size(), 3u);
    call.kill();
    call.waitForFinished();
    EXPECT_TRUE(waitUntil([&] { return told.size() == 4; }));
    AudioSession::sharedInstance().removeInterruptionListener(&told);
}
