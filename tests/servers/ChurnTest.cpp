#include "audio/live/Streamer.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/SerialQueue.h"
#include "servers/Footprint.h"
#include "servers/IcecastServer.h"
#include "servers/SourceFeed.h"
#include "support/TestLoop.h"

#include <QElapsedTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>
#include <list>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true; // what was freed is kept for a while
#else
constexpr bool isSanitized = false;
#endif

// Whatever the number of listeners: what the heap wavers by.
constexpr qint64 heapWavering = 1 << 20;

enum class Leaves { AtOnce, Connecting, Buffering, Playing, PlayingTwice };

// Somebody who tunes in and leaves at a moment of his own.
class Visitor
{
public:
    Visitor(const QString &url, Leaves moment)
        : m_streamer(
              Streamer::initWithURL(*Url::fromText(url), {.reachability = reachabilityForLocalStation}))
        , m_moment(moment)
    {
        m_streamer->setBufferInSeconds(0);
        if (m_moment != Leaves::AtOnce)
            m_streamer->play();
    }
    ~Visitor() { m_streamer->shutdown(); }

    bool isReady() const
    {
        switch (m_moment) {
        case Leaves::AtOnce:
        case Leaves::Connecting:
            return true;
        case Leaves::Buffering: // or already past it
            return m_streamer->radioState() >= RadioStateBuffering;
        case Leaves::Playing:
        case Leaves::PlayingTwice:
            break;
        }
        return m_streamer->radioState() == RadioStatePlaying;
    }
    void playAgain()
    {
        if (m_moment == Leaves::PlayingTwice) {
            m_streamer->pause();
            m_streamer->play();
        }
    }

private:
    const std::shared_ptr<Streamer> m_streamer;
    const Leaves m_moment;
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
    // A few listeners at a time.
    bool visit(int count)
    {
        std::discrete_distribution<int> moments{1, 1, 2, 4, 2};
        const auto areReady = [](const std::list<Visitor> &visitors) {
            return waitUntil([&] { return std::ranges::all_of(visitors, &Visitor::isReady); }, 60);
        };
        while (count > 0) {
            std::list<Visitor> visitors;
            for (int i = 0; i < 10 && count > 0; ++i, --count)
                visitors.emplace_back(server.url((i % 2 == 0 ? mp3 : aac).mount()), Leaves(moments(random)));
            if (!areReady(visitors))
                return false;
            std::ranges::for_each(visitors, &Visitor::playAgain);
            if (!areReady(visitors))
                return false;
        }
        return true;
    }
    // Devices are closed by threads of their own, which may still be about it. Those of the pool come as they
    // are needed.
    static Footprint settled(const Footprint &wanted)
    {
        waitUntil([&] {
            SerialQueue::joinThreads();
            return Footprint::now().threads <= wanted.threads;
        });
        return Footprint::now();
    }
};

} // namespace

TEST_P(ChurnTest, HundredsOfListenersLeaveNothingBehind)
{
    const int soak = qEnvironmentVariableIntValue("ORVEL_SOAK_CYCLES");
    const int count = soak > 0 ? soak : 200;
    const Footprint atFirst = Footprint::now();
    // What libraries keep for good is there by then.
    ASSERT_TRUE(visit(60));
    const Footprint before = settled(atFirst);
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(visit(count));
    const double seconds = double(timer.elapsed()) / 1000;
    const Footprint after = settled(before);
    std::cout << count << " listeners, " << double(count) / seconds << " a second; threads " << before.threads
              << " -> " << after.threads << ", descriptors " << before.descriptors << " -> "
              << after.descriptors << ", anonymous memory " << before.anonymousBytes / 1024 << " -> "
              << after.anonymousBytes / 1024 << " KiB\n";
    EXPECT_LE(after.threads, atFirst.threads);
    EXPECT_LE(after.descriptors, before.descriptors);
    if (!isSanitized) {
        EXPECT_LE(after.anonymousBytes, before.anonymousBytes + heapWavering);
    }
    EXPECT_TRUE(waitUntil([&] { return server.listeners() == 0; }));
}

INSTANTIATE_TEST_SUITE_P(, ChurnTest, testing::Values("null", "disk"),
                         [](const testing::TestParamInfo<const char *> &device) {
                             return std::string(device.param);
                         });
