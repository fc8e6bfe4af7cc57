#include "audio/live/Streamer.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/SerialQueue.h"
#include "servers/IcecastServer.h"
#include "servers/SourceFeed.h"
#include "support/Footprint.h"
#include "support/TestLoop.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>
#include <malloc.h>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

// Whatever the number of listeners: what the heap wavers by.
constexpr qint64 heapWavering = 1 << 20;

// Somebody who tunes in and leaves at a moment of his own, or comes back first.
struct Visitor
{
    std::shared_ptr<Streamer> streamer;
    RadioState moment;
    bool comesBack;

    bool isReady() const
    {
        const RadioState state = streamer->radioState();
        return state >= moment && state != RadioStateError;
    }
};

struct ChurnTest : testing::TestWithParam<const char *>
{
    IcecastServer server{128 * 1024};
    SourceFeed mp3{server, SourceFeed::Codec::Mp3};
    SourceFeed aac{server, SourceFeed::Codec::Aac};
    std::mt19937 random{1};

    void SetUp() override
    {
        keepOneHeap(); // as the programs do
        qputenv("ORVEL_AUDIO_DEVICE", GetParam());
        ASSERT_EQ(server.start(), QString());
        ASSERT_EQ(mp3.start(), QString());
        ASSERT_EQ(aac.start(), QString());
    }
    void TearDown() override { qunsetenv("ORVEL_AUDIO_DEVICE"); }
    Visitor visitor(const QString &mount)
    {
        std::discrete_distribution<int> moments{1, 1, 2, 6};
        const auto streamer = Streamer::initWithURL(*Url::fromText(server.url(mount)),
                                                    {.reachability = reachabilityForLocalStation});
        streamer->setBufferInSeconds(0);
        const auto moment = RadioState(moments(random));
        if (moment != RadioStateStopped)
            streamer->play();
        return {streamer, moment, moment == RadioStatePlaying && random() % 3 == 0};
    }
    // A few listeners at a time.
    void visit(int count)
    {
        const auto areReady = [](const std::vector<Visitor> &visitors) {
            return waitUntil([&] { return std::ranges::all_of(visitors, &Visitor::isReady); }, 60);
        };
        while (count > 0) {
            std::vector<Visitor> visitors;
            for (int i = 0; i < 10 && count > 0; ++i, --count)
                visitors.push_back(visitor((i % 2 == 0 ? mp3 : aac).mount()));
            ASSERT_TRUE(areReady(visitors));
            for (const Visitor &it : visitors) {
                if (it.comesBack) {
                    it.streamer->pause();
                    it.streamer->play();
                }
            }
            ASSERT_TRUE(areReady(visitors));
            for (const Visitor &it : visitors)
                it.streamer->shutdown();
        }
    }
    // Devices are closed by threads of their own, which may still be about it. Those of the pool come as they
    // are needed.
    static void settle(qsizetype threads)
    {
        waitUntil([&] {
            SerialQueue::joinThreads();
            return threadCount() <= threads;
        });
        ::malloc_trim(0);
    }
};

} // namespace

TEST_P(ChurnTest, HundredsOfListenersLeaveNothingBehind)
{
    const int soak = qEnvironmentVariableIntValue("ORVEL_SOAK_CYCLES");
    const qsizetype threads = threadCount();
    // What libraries keep for good is there by then.
    ASSERT_NO_FATAL_FAILURE(visit(60));
    settle(threads);
    const qsizetype descriptors = descriptorCount();
    const qint64 memory = anonymousMemory();
    ASSERT_NO_FATAL_FAILURE(visit(soak > 0 ? soak : 200));
    settle(threads);
    EXPECT_LE(threadCount(), threads);
    EXPECT_LE(descriptorCount(), descriptors);
    std::cout << "Memory grew by " << (anonymousMemory() - memory) / 1024 << " KiB\n";
    if (!isSanitized) {
        EXPECT_LE(anonymousMemory(), memory + heapWavering);
    }
    EXPECT_TRUE(waitUntil([&] { return server.listeners() == 0; }));
}

INSTANTIATE_TEST_SUITE_P(, ChurnTest, testing::Values("null", "disk"),
                         [](const auto &device) { return std::string(device.param); });
