#include "platform/media/output/ToneFeeder.h"
#include "support/EnvironmentValue.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <utility>

using namespace orvel;
using namespace orvel::test;

namespace {

// A place for a queue's last reference, which two threads race to let go.
struct LastReference
{
    std::mutex mutex;
    std::shared_ptr<OutputQueue> queue;

    // What it held ends behind the lock.
    std::shared_ptr<OutputQueue> exchange(std::shared_ptr<OutputQueue> other)
    {
        const std::lock_guard lock(mutex);
        return std::exchange(queue, std::move(other));
    }
};

// What a queue's own callback does to it once.
using Deed = void (*)(OutputQueue &, LastReference &);
constexpr Deed deeds[] = {
    [](OutputQueue &queue, LastReference &) { queue.flush(); },
    [](OutputQueue &queue, LastReference &) { queue.dispose(); },
    [](OutputQueue &queue, LastReference &) { queue.stop(true), queue.start(); },
    [](OutputQueue &queue, LastReference &) { queue.pause(), queue.start(); },
    [](OutputQueue &, LastReference &last) { last.exchange(nullptr); },
};

// One queue after another, each started, disturbed and ended in one of many ways.
void churn(const EncodedTone &tone, quint32 seed)
{
    std::minstd_rand random(seed);
    for (int cycle = 0; cycle < 300; ++cycle) {
        const auto deed = std::make_shared<std::atomic<Deed>>(deeds[random() % std::size(deeds)]);
        const auto last = std::make_shared<LastReference>();
        auto queue =
            newOutputQueue(tone.format, [&tone, deed, last](OutputQueue &caller, OutputBuffer &buffer) {
                deed->exchange(deeds[0])(caller, *last);
                caller.enqueueBuffer(buffer, tone.packets);
            });
        ASSERT_TRUE(queue);
        for (int i = 0; i < 3; ++i)
            queue->enqueueBuffer(*filledBuffer(*queue, tone), tone.packets);
        queue->start();
        if (random() % 4 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 20));
        queue->setVolume(float(random() % 3));
        if (random() % 2 == 0)
            queue->stop(random() % 2 == 0);
        if (random() % 2 == 0)
            queue->start();
        last->exchange(std::move(queue));
        last->exchange(nullptr);
    }
}

} // namespace

TEST(OutputQueueStressTest, SurvivesBeingStartedStoppedAndDroppedByAnyThread)
{
    const EncodedTone tone = encodeTone({.seconds = 0.1});
    for (const char *device : {"null", ""}) { // without and with SDL's own thread
        const EnvironmentValue chosen("ORVEL_AUDIO_DEVICE", device);
        const EnvironmentValue atOnce("SDL_DISKAUDIODELAY", "0");
        std::thread other([&] { churn(tone, 1); });
        churn(tone, 2);
        other.join();
        joinOutputQueues();
    }
}
