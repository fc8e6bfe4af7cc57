#include "platform/foundation/MainQueue.h"
#include "platform/foundation/SerialQueue.h"
#include "support/TestLoop.h"

#include <QEventLoop>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace orvel;
using orvel::test::waitUntil;

TEST(MainQueueTest, RunsBlocksOfAllThreadsInTheirOrderOnTheMainThread)
{
    std::vector<int> seen[2];
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 500; ++i)
                MainQueue::async([&, t, i] {
                    EXPECT_TRUE(MainQueue::isMainThread());
                    seen[t].push_back(i);
                });
        });
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_TRUE(waitUntil([&] { return seen[0].size() + seen[1].size() == 1000; }));
    for (const std::vector<int> &numbers : seen)
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
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
        queue.sync([&] { order.push_back(200); });
    });
    ASSERT_EQ(order.size(), 201u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
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
