#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioDeviceChoice.h"
#include "platform/media/output/AudioSession.h"
#include "platform/media/output/ToneFeeder.h"
#include "support/CapturedSound.h"
#include "support/EncodedTone.h"
#include "support/EnvironmentValue.h"
#include "support/SoundComparison.h"
#include "support/TestLoop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <utility>

using namespace orvel;
using namespace orvel::test;

namespace {

AudioStreamBasicDescription pcm(SampleType type, quint32 bits)
{
    return {.sampleRate = 32000,
            .format = AudioFormat::linearPcm,
            .bytesPerPacket = 2 * bits / 8,
            .framesPerPacket = 1,
            .channelsPerFrame = 2,
            .bitsPerChannel = bits,
            .sampleType = type};
}

// What is heard of a tone.
std::vector<float> played(const EncodedTone &tone)
{
    const CapturedSound sound;
    ToneFeeder feeder(tone);
    feeder.play();
    EXPECT_TRUE(feeder.waitForTheEnd());
    EXPECT_EQ(feeder.packetsLeft(), 0u);
    return sound.samples();
}

const ToneRequest radio{.bitrate = 128000, .seconds = 20};

// A queue, and what it told.
struct WatchedQueue
{
    explicit WatchedQueue(EncodedTone ofTone, const OutputQueueOptions &options = {})
        : tone(std::move(ofTone))
        , queue(newOutputQueue(
              tone.format,
              [this](OutputQueue &caller, OutputBuffer &buffer) {
                  times.push_back(caller.currentTime().value_or(0) / tone.format.sampleRate);
                  returned.push_back(&buffer);
                  ++returns;
              },
              options))
    {
        queue->addIsRunningListener([this](OutputQueue &, bool isRunning) {
            running.push_back(isRunning);
            ++changes;
        });
        for (OutputBuffer *&buffer : buffers)
            buffer = filledBuffer(*queue, tone);
    }
    ~WatchedQueue() { end(); }
    void end()
    {
        queue->dispose();
        joinOutputQueues();
    }
    void enqueue(int count)
    {
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(queue->enqueueBuffer(*buffers[i], tone.packets));
    }
    bool hasChanged(int count)
    {
        return waitUntil([&] { return changes == count; });
    }

    const EncodedTone tone;
    std::vector<double> times; // of the buffers' returns, in seconds
    std::vector<OutputBuffer *> returned;
    std::vector<bool> running;
    std::atomic<int> returns = 0;
    std::atomic<int> changes = 0;
    const std::shared_ptr<OutputQueue> queue;
    OutputBuffer *buffers[3];
};

} // namespace

// The other formats are played by the whole players, and read from files, elsewhere.
TEST(OutputQueueTest, PlaysWhatTheDecoderGivesWithoutGapOrLoss)
{
    const EncodedTone slow = encodeTone({AudioFormat::mpegLayer3, 8000, 1, 16000, 3});
    expectSameSound(played(slow), decoded(slow));
    EncodedTone plain{.format = pcm(SampleType::FloatingPoint, 32)};
    std::vector<float> samples; // never silent
    for (qint64 i = 0; i < 40000; ++i) {
        samples.insert(samples.end(), {float(i % 255 - 127) / 128.F, float(1 + i % 100) / 128.F});
        plain.packets.push_back({.startOffset = 8 * i, .dataByteSize = 8});
    }
    plain.bytes = QByteArray(reinterpret_cast<const char *>(samples.data()), 8 * 40000);
    expectSameSound(played(plain), samples);
}

TEST(OutputQueueTest, PauseKeepsWhatIsQueuedAndVolumeScalesIt)
{
    const EncodedTone tone = encodeTone(radio);
    const CapturedSound sound;
    ToneFeeder feeder(tone);
    std::vector<OutputBuffer *> order;
    std::atomic<int> pauses = 0;
    std::atomic<bool> isPausing = true;
    feeder.onCallback = [&](OutputBuffer &buffer) {
        order.push_back(&buffer);
        if (isPausing && order.size() % 5 == 0) {
            ++pauses;
            feeder.queue->pause();
        }
        feeder.queue->flush();
    };
    feeder.queue->setVolume(0.25f);
    feeder.play();
    int resumed = 0;
    ASSERT_TRUE(waitUntil([&] {
        for (; resumed < pauses; ++resumed)
            feeder.queue->start();
        return feeder.packetsLeft() == 0;
    }));
    isPausing = false;
    feeder.queue->start();
    feeder.queue->stop(false);
    ASSERT_TRUE(feeder.waitForTheEnd());
    std::vector<float> expected = decoded(tone);
    for (float &sample : expected)
        sample *= 0.25f;
    expectSameSound(sound.samples(), expected);
    EXPECT_GT(resumed, 5);
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(order[i], feeder.buffers[i % 3]);
}

TEST(OutputQueueTest, PassesOverBrokenPackets)
{
    EncodedTone tone = encodeTone({.seconds = 3});
    std::minstd_rand random(3);
    for (std::size_t i = 10; i < tone.packets.size(); i += 7)
        for (quint32 byte = 0; byte < tone.packets[i].dataByteSize; ++byte)
            tone.bytes[tone.packets[i].startOffset + byte] = char(random() >> 8);
    expectSameSound(played(tone), decoded(tone));
}

TEST(OutputQueueTest, GoesOnAtTheDevicesRateWhenTheStreamsChanges)
{
    EncodedTone tone = encodeTone({.seconds = 1});
    const EncodedTone other = encodeTone({.sampleRate = 32000, .channels = 1, .seconds = 1});
    const std::size_t expected = decoded(tone).size() + 2 * decoded(other).size() * 441 / 320;
    for (AudioStreamPacketDescription packet : other.packets) {
        packet.startOffset += tone.bytes.size();
        tone.packets.push_back(packet);
    }
    tone.bytes += other.bytes;
    const std::vector<float> captured = played(tone);
    const auto heard = std::count_if(captured.begin(), captured.end(), [](float s) { return s != 0; });
    EXPECT_NEAR(double(heard), double(expected), 4000); // the encoders' lead-in is silent
}

TEST(OutputQueueTest, StopsAtOnceAndStartsAnew)
{
    const SilentDevice device;
    WatchedQueue watched(encodeTone({.seconds = 30}));
    OutputQueue &queue = *watched.queue;
    double before = INFINITY;
    for (int round = 1; round <= 2; ++round) {
        watched.enqueue(2);
        EXPECT_TRUE(queue.start());
        EXPECT_LT(queue.currentTime().value_or(INFINITY), before); // it counts anew
        ASSERT_TRUE(watched.hasChanged(2 * round - 1));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        before = queue.currentTime().value_or(0);
        EXPECT_GT(before, 0);
        queue.pause(); // notes the time
        queue.stop(true);
        EXPECT_EQ(queue.currentTime(), std::nullopt);
        ASSERT_TRUE(watched.hasChanged(2 * round));
    }
    watched.end();
    EXPECT_FALSE(queue.start());
    EXPECT_FALSE(queue.enqueueBuffer(*watched.buffers[0], watched.tone.packets));
    EXPECT_EQ(watched.running, (std::vector{true, false, true, false}));
    ASSERT_EQ(watched.returned.size(), 4u);
    EXPECT_EQ(watched.returned[0], watched.returned[2]);
    EXPECT_EQ(watched.returned[1], watched.returned[3]);
}

TEST(OutputQueueTest, SaysThatItHasStoppedAfterEachStop)
{
    const SilentDevice device;
    WatchedQueue watched(encodeTone({.seconds = 1}));
    int stops = 0;
    for (const bool immediate : {true, false}) { // of a queue that never ran
        watched.enqueue(1);
        watched.queue->stop(immediate);
        EXPECT_TRUE(watched.hasChanged(++stops));
        EXPECT_EQ(watched.returns, stops);
    }
    watched.queue->start(); // with nothing to play
    watched.queue->stop(false);
    EXPECT_TRUE(watched.hasChanged(3));
    watched.end();
    EXPECT_EQ(watched.running, std::vector(3, false));
}

TEST(OutputQueueTest, APausedQueueThatIsToStopWhenPlayedOutPlaysTheRestAfterIt)
{
    const CapturedSound sound;
    WatchedQueue watched(encodeTone({.seconds = 3}));
    watched.enqueue(1);
    watched.queue->start();
    watched.queue->pause();
    watched.queue->stop(false);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_LT(watched.changes, 2);
    watched.queue->start();
    EXPECT_TRUE(waitUntil([&] { return !watched.queue->currentTime(); }));
    expectSameSound(sound.samples(), decoded(watched.tone));
}

TEST(OutputQueueTest, ReturnsBuffersThatTheDeviceHasTakenButForTheLast)
{
    const SilentDevice device;
    WatchedQueue watched(encodeTone({.seconds = 0.2}),
                         {.bufferReturn = BufferReturn::WhenTaken, .ringSeconds = 1.5});
    watched.enqueue(3);
    watched.queue->start();
    ASSERT_TRUE(waitUntil([&] { return watched.returns == 3; }));
    EXPECT_TRUE(std::ranges::equal(watched.returned, watched.buffers));
    EXPECT_LT(watched.times[1], 0.15); // it lasts until 0.4
    EXPECT_GT(watched.times[2], 0.55);
}

TEST(OutputQueueTest, LeavesOutWhatTheEncoderAdded)
{
    const EncodedTone tone = encodeTone({.seconds = 2});
    const std::vector<float> all = decoded(tone);
    for (const std::optional<qint64> valid : {std::optional<qint64>(50'000), std::optional<qint64>()}) {
        const CapturedSound sound;
        ToneFeeder feeder(tone);
        feeder.queue->setTrim(AudioTrim{.primingFrames = 2257, .validFrames = valid});
        feeder.play();
        ASSERT_TRUE(feeder.waitForTheEnd());
        const auto begin = all.begin() + std::ptrdiff_t(2 * 2257);
        expectSameSound(sound.samples(), {begin, valid ? begin + 2 * *valid : all.end()});
    }
}

TEST(AudioSessionTest, TellsTheFirstBeginAndTheLastEnd)
{
    std::vector<InterruptionState> told;
    AudioSession::sharedInstance().setInterruptionListener(
        &told, [&](InterruptionState state) { told.push_back(state); });
    using enum InterruptionState;
    for (const InterruptionState state : {Begin, Begin, End, End, Begin, End})
        AudioSession::interrupt(state);
    letEventsRun();
    EXPECT_EQ(told, (std::vector{Begin, End, Begin, End}));
    AudioSession::sharedInstance().removeInterruptionListener(&told);
}

TEST(OutputQueueTest, APauseIsHeardAtOnce)
{
    const SilentDevice device;
    WatchedQueue watched(encodeTone({.seconds = 30}));
    watched.enqueue(1);
    watched.queue->start();
    ASSERT_TRUE(watched.hasChanged(1));
    watched.queue->pause();
    const double paused = watched.queue->currentTime().value_or(0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    watched.queue->start();
    // The device would have gone on meanwhile.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_LT(watched.queue->currentTime().value_or(INFINITY), paused + watched.tone.format.sampleRate);
}

TEST(OutputQueueTest, WithoutADeviceKeepsTheTimeAndSaysSoOnce)
{
    joinOutputQueues();
    const EnvironmentValue driver("SDL_AUDIODRIVER", "there is no such driver");
    static int told = 0;
    NotificationCentre::defaultCentre().addObserver(&told, noSoundDeviceNotification,
                                                    [&](const Notification &) { ++told; });
    const std::atomic<float> volume = 1;
    {
        const SilentDevice wanted;
        openAudioDevice({.sampleRate = 8000, .channels = 1, .volume = &volume, .wantsData = {}});
    }
    letEventsRun();
    EXPECT_EQ(told, 0); // who asks for silence misses no device
    const EncodedTone tone = encodeTone({.seconds = 1});
    for (int round = 0; round < 2; ++round) {
        ToneFeeder feeder(tone);
        std::vector<double> times; // of the buffers' returns
        feeder.onCallback = [&](OutputBuffer &) {
            times.push_back(feeder.queue->currentTime().value_or(INFINITY));
        };
        const auto before = std::chrono::steady_clock::now();
        EXPECT_EQ(feeder.queue->currentTime(), std::nullopt);
        feeder.play();
        ASSERT_TRUE(feeder.waitForTheEnd());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
        const double played = double(tone.packets.size()) * tone.format.framesPerPacket;
        EXPECT_GE(taken.count(), played / tone.format.sampleRate);
        EXPECT_NEAR(times.back(), played, 1000);
        EXPECT_EQ(feeder.queue->currentTime(), std::nullopt);
        EXPECT_GT(times.front(), played / 3); // one holds half of it
    }
    letEventsRun();
    EXPECT_EQ(told, 1);
    NotificationCentre::defaultCentre().removeObserver(&told);
}

TEST(OutputQueueTest, RefusesWhatMakesNoSense)
{
    const auto ignore = [](OutputQueue &, OutputBuffer &) {};
    using enum AudioFormat;
    const AudioStreamBasicDescription nonsense[] = {
        {},
        {.sampleRate = 0, .format = mpegLayer3, .channelsPerFrame = 2},
        {.sampleRate = std::nan(""), .format = mpegLayer3, .channelsPerFrame = 2},
        {.sampleRate = INFINITY, .format = mpeg4Aac, .channelsPerFrame = 2},
        {.sampleRate = 44100, .format = mpeg4Aac, .channelsPerFrame = 0},
        {.sampleRate = 44100, .format = mpeg4Aac, .channelsPerFrame = 4000},
        pcm(SampleType::SignedInteger, 12),
        pcm(SampleType::UnsignedInteger, 16),
    };
    for (const AudioStreamBasicDescription &format : nonsense)
        EXPECT_EQ(newOutputQueue(format, ignore), nullptr);

    const auto queue =
        newOutputQueue({.sampleRate = 44100, .format = mpegLayer3, .channelsPerFrame = 2}, ignore);
    OutputBuffer &buffer = *queue->allocateBuffer(1000);
    buffer.byteSize = 900;
    const AudioStreamPacketDescription wrong[] = {
        {-1, 0, 10}, {901, 0, 0}, {800, 0, 101}, {0, 0, 0xFFFFFFFF}};
    for (const AudioStreamPacketDescription &packet : wrong)
        EXPECT_FALSE(queue->enqueueBuffer(buffer, {&packet, 1}));
    EXPECT_FALSE(queue->enqueueBuffer(buffer, {}));
    buffer.byteSize = 1001;
    const AudioStreamPacketDescription whole{0, 0, 1001};
    EXPECT_FALSE(queue->enqueueBuffer(buffer, {&whole, 1}));
    queue->dispose();
    joinOutputQueues();
}
