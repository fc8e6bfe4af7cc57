#include "platform/foundation/MainQueue.h"
#include "platform/foundation/SerialQueue.h"
#include "support/TestLoop.h"

#include <QEventLoop>
#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace orvel;
using orvel::test::waitUntil;

TEST(MainQueueTest, RunsBlocksOfAllThreadsInTheirOrderOnTheMainThread)
{
    std::vector<int> seen[2];
    const auto post = [&](std::vector<int> &numbers) {
        for (int i = 0; i < 500; ++i)
            MainQueue::async([&numbers, i] {
                EXPECT_TRUE(MainQueue::isMainThread());
                numbers.push_back(i);
            });
    };
    std::thread other([&] { post(seen[0]); });
    std::thread([&] { post(seen[1]); }).join();
    other.join();
    ASSERT_TRUE(waitUntil([&] { return seen[0].size() + seen[1].size() == 1000; }));
    EXPECT_TRUE(std::ranges::is_sorted(seen[0]) && std::ranges::is_sorted(seen[1]));
}

TEST(MainQueueTest, GoesOnWhileABlockWaitsInANestedLoop)
{
    QStringList order;
    MainQueue::async([&] {
        QEventLoop nested;
        MainQueue::async([&] {
            order << "inner";
            nested.quit();
        });
        nested.exec();
        order << "outer";
    });
    ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, QStringList({"inner", "outer"}));
}

TEST(SerialQueueTest, SyncRunsOnTheCallersThreadAfterWhatWasQueued)
{
    SerialQueue queue("test");
    std::vector<int> order;
    for (int i = 0; i < 200; ++i)
        queue.async([&order, i] { order.push_back(i); });
    const auto caller = std::this_thread::get_id();
    queue.sync([&] {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        queue.async([&] { order.push_back(201); });
        queue.sync([&] { order.push_back(200); });
    });
    SerialQueue::joinThreads();
    ASSERT_EQ(order.size(), 202u);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(SerialQueueTest, MayBeDroppedByItsOwnLastBlock)
{
    std::atomic<bool> ran = false;
    auto queue = std::make_shared<SerialQueue>("test");
    queue->async([queue, &ran] { ran = true; });
    queue.reset();
    SerialQueue::joinThreads();
    EXPECT_TRUE(ran);
}
