// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/mainqueue.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace quillfen::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

template <typename Condition>
bool eventually(Condition condition)
{
    return QTest::qWaitFor(condition, 20'000);
}

TEST(MainQueue, RunsTasksOnItsOwnThreadInTheOrderTheyCame)
{
    MainQueue queue;
    std::vector<int> order;
    std::thread poster([&] {
        for (int number = 0; number < 100'000; ++number) {
            queue.post([&order, number] { order.push_back(number); });
        }
    });
    EXPECT_TRUE(eventually([&] { return order.size() == 100'000; }));
    poster.join();
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(MainQueue, LetsAPosterWaitOnceItIsFull)
{
    MainQueue queue;
    std::atomic<std::size_t> posted = 0;
    std::thread poster([&] {
        for (std::size_t count = 0; count < 3 * MainQueue::capacity; ++count) {
            queue.post([] {});
            ++posted;
        }
    });
    while (posted < MainQueue::capacity) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(50ms); // long enough for a poster that does not wait to run on
    EXPECT_EQ(posted, MainQueue::capacity);
    EXPECT_TRUE(eventually([&] { return posted == 3 * MainQueue::capacity; }));
    poster.join();
}

TEST(MainQueue, TheOwningThreadNeverWaitsForItself)
{
    MainQueue queue;
    std::size_t ran = 0;
    for (std::size_t count = 0; count < 2 * MainQueue::capacity; ++count) {
        queue.post([&] { ++ran; });
    }
    queue.drain();
    EXPECT_EQ(ran, 2 * MainQueue::capacity);
}

TEST(MainQueue, ClosingReleasesWhoWaitsAndDropsWhatComesLater)
{
    MainQueue queue;
    std::atomic<std::size_t> posted = 0;
    std::atomic<std::size_t> ran = 0;
    std::thread poster([&] {
        for (std::size_t count = 0; count < 2 * MainQueue::capacity; ++count) {
            queue.post([&] { ++ran; });
            ++posted;
        }
    });
    while (posted < MainQueue::capacity) {
        std::this_thread::yield();
    }
    queue.close();
    poster.join();
    queue.drain();
    EXPECT_EQ(ran, MainQueue::capacity);
}

TEST(MainQueue, WhileTheLimitIsLiftedPostersPass)
{
    MainQueue queue;
    std::atomic<std::size_t> posted = 0;
    std::thread poster([&] {
        for (std::size_t count = 0; count < 2 * MainQueue::capacity; ++count) {
            queue.post([] {});
            ++posted;
        }
    });
    {
        const MainQueue::NoLimit pass(queue);
        poster.join();
    }
    EXPECT_EQ(posted, 2 * MainQueue::capacity);
}

TEST(MainQueue, AMarkIsReachedWhenTheTasksBeforeItHaveRun)
{
    MainQueue queue;
    std::atomic<bool> ran = false;
    std::atomic<bool> reached = false;
    std::atomic<bool> ranBefore = false;
    std::thread poster([&] {
        queue.waitUntilRun(queue.posted()); // nothing to wait for
        queue.post([&] { ran = true; });
        queue.waitUntilRun(queue.posted());
        ranBefore = ran.load();
        reached = true;
    });
    EXPECT_TRUE(eventually([&] { return reached.load(); }));
    poster.join();
    EXPECT_TRUE(ranBefore);
}

TEST(MainQueue, LeavesTimeToTheRestOfTheLoop)
{
    MainQueue queue;
    bool timerFired = false;
    bool firedWithin = false;
    int left = 100;
    QTimer::singleShot(0, [&] { timerFired = true; });
    for (int count = 0; count < 100; ++count) {
        queue.post([&] {
            QTest::qSleep(1);
            firedWithin = firedWithin || (timerFired && left > 20);
            --left;
        });
    }
    EXPECT_TRUE(eventually([&] { return left == 0; }));
    EXPECT_TRUE(firedWithin);
}

TEST(MainQueue, ATaskMayTurnAnEventLoopWhileTheOnesBehindItRun)
{
    MainQueue queue;
    std::vector<std::string> order;
    QEventLoop dialog;
    queue.post([&] {
        order.emplace_back("dialog opens");
        QTimer::singleShot(20s, &dialog, [&] { dialog.exit(1); });
        order.emplace_back(dialog.exec() == 0 ? "dialog closes" : "dialog was forgotten");
    });
    queue.post([&] { order.emplace_back("behind it, queued before"); });
    std::thread poster([&] {
        std::this_thread::sleep_for(20ms);
        queue.post([&] { order.emplace_back("behind it, queued meanwhile"); });
        queue.post([&] { dialog.quit(); });
    });
    EXPECT_TRUE(eventually([&] { return order.size() == 4; }));
    poster.join();
    EXPECT_THAT(
        order, ElementsAre("dialog opens", "behind it, queued before", "behind it, queued meanwhile", "dialog closes"));
}

TEST(MainQueue, ATaskMayDestroyItWithTheTasksBehindIt)
{
    auto queue = std::make_unique<MainQueue>();
    const auto token = std::make_shared<int>();
    bool destroyed = false;
    bool ranBehind = false;
    queue->post([&] {
        queue.reset();
        destroyed = true;
    });
    queue->post([&ranBehind, token] { ranBehind = true; });
    EXPECT_TRUE(eventually([&] { return destroyed; }));
    EXPECT_FALSE(ranBehind);
    EXPECT_EQ(token.use_count(), 1) << "the dropped task is gone with all it held";
}

TEST(MainQueue, ReleasesWhatATaskHoldsOnceItHasRun)
{
    MainQueue queue;
    const auto token = std::make_shared<int>();
    queue.post([token] {});
    EXPECT_EQ(token.use_count(), 2);
    queue.drain();
    EXPECT_EQ(token.use_count(), 1);
    queue.close();
    queue.post([token] {});
    EXPECT_EQ(token.use_count(), 1);
}

} // namespace

} // namespace quillfen::test
