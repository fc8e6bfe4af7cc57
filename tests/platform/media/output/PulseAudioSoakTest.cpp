#include "platform/media/output/RecordedPieces.h"
#include "platform/media/output/ToneFeeder.h"
#include "support/PulseServer.h"

#include <gtest/gtest.h>
#include <memory>

using namespace orvel;
using namespace orvel::test;

// Lasts as many seconds as ORVEL_SOAK_SECONDS says.
TEST(PulseAudioSoakTest, LosesNothingWhateverHappensMeanwhile)
{
    const int seconds = qEnvironmentVariableIntValue("ORVEL_SOAK_SECONDS");
    if (seconds == 0 || !PulseServer::isThere())
        GTEST_SKIP() << "Runs with ORVEL_SOAK_SECONDS=60 where PulseAudio is installed";
    joinOutputQueues();
    PulseServer server;
    ASSERT_TRUE(server.start());
    server.answerPlayers();
    const EncodedTone tone = encodeTone({.seconds = double(seconds)});
    const Frames sound = withoutPauses(decoded(tone));
    Frames heard;
    auto recorder = std::make_unique<SinkRecorder>(server);
    const auto keep = [&](const std::vector<float> &samples) {
        const Frames frames = withoutPauses(samples);
        heard.insert(heard.end(), frames.begin(), frames.end());
    };
    int gaps = 0;
    {
        // The time stands in the gaps, so that all is heard.
        ToneFeeder feeder(tone, {.standingSeconds = 10});
        feeder.play();
        const auto time = [&] { return feeder.queue->currentTime().value_or(0) / tone.format.sampleRate; };
        const auto playUntil = [&](double end) { return waitUntil([&] { return time() >= end; }, 20); };
        for (double begin = 0; begin + 6 < seconds; begin += 6) {
            ASSERT_TRUE(playUntil(begin + 1));
            feeder.queue->pause();
            waitUntil([] { return false; }, 0.3);
            feeder.queue->start();
            ASSERT_TRUE(playUntil(begin + 2));
            feeder.queue->setVolume(0.5f);
            ASSERT_TRUE(playUntil(begin + 3));
            feeder.queue->setVolume(1);
            ASSERT_TRUE(playUntil(begin + 4));
            if (gaps++ % 2 == 0) {
                server.kill();
                waitUntil([] { return false; }, 0.5);
                keep(recorder->samples());
                ASSERT_TRUE(server.start());
                recorder = std::make_unique<SinkRecorder>(server);
                server.answerPlayers();
            } else {
                server.removeSink();
                waitUntil([] { return false; }, 0.5);
                keep(recorder->samples());
                server.addSink();
                recorder = std::make_unique<SinkRecorder>(server);
            }
        }
        ASSERT_TRUE(waitUntil([&] { return !feeder.queue->currentTime(); }, 30));
        keep(recorder->soundUntilSilence());
    }
    const auto [pieces, strays] = piecesOf(sound, heard);
    std::size_t missing = 0;
    std::size_t twice = 0;
    std::size_t end = 0;
    for (const Piece &piece : pieces) {
        missing += piece.begin > end ? piece.begin - end : 0;
        twice += piece.begin < end ? end - piece.begin : 0;
        end = piece.end;
    }
    RecordProperty("pieces", int(pieces.size()));
    std::printf("%zu frames, %zu pieces, %d gaps, missing %zu, twice %zu, in ramps %zu\n", sound.size(),
                pieces.size(), gaps, missing, twice, strays);
    EXPECT_EQ(end, sound.size());
    // A gap may take a tenth of a second; a ramp alters 20 ms, twice between two gaps.
    EXPECT_LT(missing, std::size_t(gaps) * (4410 + 2 * 2000));
    EXPECT_LT(twice, std::size_t(gaps) * 4410);
    EXPECT_LT(strays, std::size_t(gaps) * 2 * 2000);
}
