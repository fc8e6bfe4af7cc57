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

using namespace orvel;
using namespace orvel::test;

namespace {

// Whatever the number of listeners: what the heap wavers by.
constexpr qint64 heapWavering = 1 << 20;

using Visitors = std::vector<std::shared_ptr<Streamer>>;

// When a visitor leaves: at once, or when he has connected, buffered or, most of them, heard something.
RadioState momentOf(std::size_t visitor)
{
    return RadioState(std::min(int(visitor), int(RadioStatePlaying)));
}

bool areReady(const Visitors &visitors)
{
    return waitUntil(
        [&] {
            for (std::size_t i = 0; i < visitors.size(); ++i) {
                const RadioState state = visitors[i]->radioState();
                if (state < momentOf(i) || state == RadioStateError)
                    return false;
            }
            return true;
        },
        60);
}

struct ChurnTest : testing::TestWithParam<const char *>
{
    IcecastServer server{128 * 1024};
    SourceFeed mp3{server, SourceFeed::Codec::Mp3};
    SourceFeed aac{server, SourceFeed::Codec::Aac};

    void SetUp() override
    {
        keepOneHeap(); // as the programs do
        qputenv("ORVEL_AUDIO_DEVICE", GetParam());
        ASSERT_EQ(server.start(), QString());
        ASSERT_EQ(mp3.start(), QString());
        ASSERT_EQ(aac.start(), QString());
    }
    void TearDown() override { qunsetenv("ORVEL_AUDIO_DEVICE"); }
    // Ten listeners at a time. Some come back once.
    void visit(int count)
    {
        for (; count > 0; count -= 10) {
            Visitors visitors;
            for (std::size_t i = 0; i < 10; ++i) {
                visitors.push_back(
                    Streamer::initWithURL(*Url::fromText(server.url((i % 2 ? mp3 : aac).mount())),
                                          {.reachability = reachabilityForLocalStation}));
                visitors[i]->setBufferInSeconds(0);
                if (momentOf(i) != RadioStateStopped)
                    visitors[i]->play();
            }
            ASSERT_TRUE(areReady(visitors));
            for (const std::size_t i : {4, 5}) {
                visitors[i]->pause();
                visitors[i]->play();
            }
            ASSERT_TRUE(areReady(visitors));
            for (const auto &visitor : visitors)
                visitor->shutdown();
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
    ASSERT_NO_FATAL_FAILURE(visit(100));
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
