#include "platform/media/device/NullAudioDevice.h"
#include "platform/media/device/RecentSound.h"
#include "platform/media/device/VolumeCurve.h"
#include "platform/media/device/VolumeRamp.h"
#include "support/TestLoop.h"

#include <chrono>
#include <gtest/gtest.h>
#include <span>
#include <thread>
#include <vector>

using namespace orvel;
using namespace orvel::test;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int rate = 48000;

qint64 framesIn(Clock::duration time) { return qint64(std::chrono::duration<double>(time).count() * rate); }

// Lets some time pass after `begin`, and compares what was consumed by then with the time that it took.
void expectInTime(NullAudioDevice &device, const std::function<void()> &begin)
{
    const qint64 consumed = device.consumed();
    const Clock::time_point early = Clock::now();
    begin();
    const Clock::time_point late = Clock::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const qint64 least = std::min(framesIn(Clock::now() - late), device.written() - consumed);
    const qint64 found = device.consumed() - consumed;
    EXPECT_GE(found, least - 1);
    EXPECT_LE(found, framesIn(Clock::now() - early));
}

} // namespace

TEST(NullAudioDeviceTest, ConsumesInTimeWhatWasWrittenWhileItPlays)
{
    NullAudioDevice device({.sampleRate = rate, .channels = 2});
    EXPECT_EQ(device.write(nullptr, 100'000), 2 * rate);
    EXPECT_EQ(device.write(nullptr, 1), 0);
    for (int round = 0; round < 2; ++round) {
        expectInTime(device, [&] { device.setPlaying(true); });
        device.setPlaying(false);
        const qint64 paused = device.consumed();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(device.consumed(), paused);
    }
    EXPECT_GT(device.write(nullptr, 100'000), 0); // as much as was consumed
    EXPECT_EQ(device.written(), device.consumed() + 2 * rate);
}

TEST(NullAudioDeviceTest, DoesNotCatchUpAfterAGap)
{
    NullAudioDevice device({.sampleRate = rate, .channels = 1});
    device.setPlaying(true);
    EXPECT_EQ(device.write(nullptr, 480), 480);
    ASSERT_TRUE(waitUntil([&] { return device.consumed() == 480; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(device.consumed(), 480);
    expectInTime(device, [&] { device.write(nullptr, rate); });
}

TEST(VolumeRampTest, SpreadsAChangeOverABlock)
{
    VolumeRamp ramp(1);
    const auto after = [&](float volume, std::size_t size) {
        std::vector<float> samples(size, 1);
        ramp.apply(samples, volume);
        return samples;
    };
    EXPECT_EQ(after(1, 2), (std::vector{1.F, 1.F}));
    EXPECT_EQ(after(0, 4), (std::vector{0.75F, 0.5F, 0.25F, 0.F}));
    EXPECT_EQ(after(0, 2), (std::vector{0.F, 0.F}));
    EXPECT_EQ(after(0.5, 0), std::vector<float>());
    EXPECT_EQ(after(0.5, 2), (std::vector{0.5F, 0.5F})); // no sound, no step
    EXPECT_EQ(after(1, 2), (std::vector{0.75F, 1.F}));
}

TEST(VolumeCurveTest, GoesOnFromWhereAnEarlierChangeWas)
{
    VolumeCurve curve(1);
    curve.change(0, 2, 4);
    curve.change(1, 4, 2); // half way down
    std::vector<float> samples(8, 1);
    curve.apply(samples.data(), 3, 4, 2);
    EXPECT_EQ(samples, (std::vector{0.5F, 0.5F, 0.5F, 0.5F, 0.75F, 0.75F, 1.F, 1.F}));
    EXPECT_EQ(curve.volume(), 1);
}

TEST(RecentSoundTest, KeepsTheLastFrames)
{
    RecentSound sound(4, 1);
    const float samples[] = {1, 2, 3, 4, 5, 6};
    sound.append(samples, 3);
    sound.append(samples + 3, 3);
    float kept[4] = {};
    sound.copy(2, 4, kept);
    EXPECT_TRUE(std::ranges::equal(kept, std::span(samples).subspan(2)));
    EXPECT_EQ(sound.written(), 6);
}
