#include "EncodedTone.h"
#include "platform/media/OutputQueue.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using namespace orvel;
using namespace orvel::test;

namespace {

// One queue after another until `end`, each started, disturbed and ended in one of many ways.
void churn(const EncodedTone &tone, quint32 seed, std::chrono::steady_clock::time_point end,
           std::atomic<int> &cycles)
{
    std::minstd_rand random(seed);
    for (; std::chrono::steady_clock::now() < end; ++cycles) {
        const auto deed = std::make_shared<std::atomic<quint32>>(quint32(random() % 6));
        const auto held = std::make_shared<std::shared_ptr<OutputQueue>>();
        const auto release = std::make_shared<std::atomic<bool>>(false);
        const auto handOver = [held, release] {
            if (!release->exchange(true))
                held->reset();
        };
        auto queue =
            newOutputQueue(tone.format, [&tone, deed, handOver](OutputQueue &caller, OutputBuffer &buffer) {
                switch (deed->exchange(0)) {
                case 1:
                    caller.dispose();
                    break;
                case 2:
                    caller.stop(true);
                    caller.start();
                    break;
                case 3:
                    caller.pause();
                    caller.start();
                    break;
                case 4:
                    handOver();
                    break;
                default:
                    caller.flush();
                }
                caller.enqueueBuffer(buffer, tone.packets);
            });
        ASSERT_TRUE(queue);
        for (int i = 0; i < 3; ++i) {
            OutputBuffer *buffer = queue->allocateBuffer(quint32(tone.bytes.size()));
            buffer->data = tone.bytes;
            buffer->byteSize = buffer->capacity();
            queue->enqueueBuffer(*buffer, tone.packets);
        }
        queue->start();
        if (random() % 4 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 20));
        queue->setVolume(float(random() % 3));
        if (random() % 2 == 0)
            queue->stop(random() % 2 == 0);
        if (random() % 2 == 0)
            queue->start();
        *held = std::move(queue);
        handOver();
    }
}

} // namespace

TEST(OutputQueueStressTest, SurvivesBeingStartedStoppedAndDroppedByAnyThread)
{
    const EncodedTone tone = encodeTone({.seconds = 0.1});
    for (const char *device : {"null", ""}) { // without and with SDL's own thread
        qputenv("ORVEL_AUDIO_DEVICE", device);
        qputenv("SDL_DISKAUDIODELAY", "0");
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        std::atomic<int> cycles = 0;
        std::thread other([&] { churn(tone, 1, end, cycles); });
        churn(tone, 2, end, cycles);
        other.join();
        joinOutputQueues();
        RecordProperty(*device ? "null" : "sdl", cycles.load());
        EXPECT_GT(cycles, 10);
    }
    qunsetenv("ORVEL_AUDIO_DEVICE");
    qunsetenv("SDL_DISKAUDIODELAY");
}
