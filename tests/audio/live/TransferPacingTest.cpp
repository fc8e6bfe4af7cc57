#include "audio/live/TransferPacing.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Connection : UrlConnection
{
    bool isSuspended = false;
    double rest = 0;
    void cancel() override {}
    void suspend() override { isSuspended = true; }
    void resume() override { isSuspended = false; }
    void readAtMostEvery(double seconds) override { rest = seconds; }
};

constexpr std::size_t startThreshold = 100'000;
constexpr std::size_t bound = (1 << 20) + 2 * startThreshold;

} // namespace

TEST(TransferPacingTest, SuspendsAndRestsByWhatWaits)
{
    const auto first = std::make_shared<Connection>();
    TransferPacing pacing;
    pacing.begin(first);
    pacing.packetsWaiting(bound, startThreshold);
    EXPECT_FALSE(first->isSuspended);
    pacing.packetsWaiting(bound + 1, startThreshold);
    EXPECT_TRUE(first->isSuspended);
    pacing.packetsWaiting(1 << 19, startThreshold);
    EXPECT_TRUE(first->isSuspended);
    pacing.packetsWaiting((1 << 19) - 1, startThreshold);
    EXPECT_FALSE(first->isSuspended);
    EXPECT_EQ(first->rest, 0); // before the sound has started
    pacing.soundStarted();
    pacing.packetsWaiting(8000, startThreshold);
    EXPECT_DOUBLE_EQ(first->rest, 0.1);
    pacing.packetsWaiting(bound + 1, startThreshold);
    EXPECT_DOUBLE_EQ(first->rest, 1);
    pacing.soundIsWanted();
    EXPECT_FALSE(first->isSuspended);
    EXPECT_EQ(first->rest, 0);
    pacing.packetsWaiting(8000, startThreshold);
    EXPECT_EQ(first->rest, 0);

    // Another connection has nothing of it.
    pacing.soundStarted();
    pacing.packetsWaiting(bound + 1, startThreshold);
    const auto second = std::make_shared<Connection>();
    pacing.begin(second);
    pacing.packetsWaiting(bound + 1, startThreshold);
    EXPECT_TRUE(second->isSuspended);
    EXPECT_EQ(second->rest, 0);
    EXPECT_TRUE(first->isSuspended);
}
