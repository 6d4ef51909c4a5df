// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/worker.h"

#include "support/await.h"

#include <QCoroTask>
#include <QThread>

#include <gmock/gmock.h>

#include <atomic>
#include <string>

using namespace quillfen;
using namespace quillfen::test;
using testing::ElementsAre;

namespace {

QCoro::Task<> work(Worker &worker, std::function<void()> body, std::vector<std::string> &log, std::string name)
{
    const Worker::Awaiter done = worker.run(body);
    co_await done;
    log.push_back(name + (QThread::currentThread() == QCoreApplication::instance()->thread() ? " on main" : " astray"));
}

TEST(Worker, WorksElsewhereAndComesBackToTheMainThread)
{
    MainQueue queue;
    Worker worker(queue);
    std::vector<std::string> log;
    const QThread *where = QThread::currentThread();
    const QCoro::Task<> task = work(
        worker, [&] { where = QThread::currentThread(); }, log, "a");
    EXPECT_FALSE(task.isReady());
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_NE(where, QThread::currentThread());
    EXPECT_THAT(log, ElementsAre("a on main"));
}

TEST(Worker, DoesOneThingAfterAnother)
{
    MainQueue queue;
    Worker worker(queue);
    std::vector<std::string> log;
    std::atomic<int> at = 0;
    std::atomic<int> together = 0;
    const auto body = [&] {
        together = std::max<int>(together, ++at);
        QThread::msleep(5);
        --at;
    };
    const QCoro::Task<> first = work(worker, body, log, "a");
    const QCoro::Task<> second = work(worker, body, log, "b");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(together, 1);
    EXPECT_THAT(log, ElementsAre("a on main", "b on main"));
}

TEST(Worker, AtTheEndNobodyIsLeftWaiting)
{
    MainQueue queue;
    Worker worker(queue);
    std::vector<std::string> log;
    const QCoro::Task<> running = work(
        worker, [] { QThread::msleep(20); }, log, "running");
    const QCoro::Task<> waiting = work(
        worker, [] {}, log, "waiting");
    worker.end();
    queue.drain();
    EXPECT_TRUE(running.isReady() && waiting.isReady()) << "without a turn of the loop";
    const QCoro::Task<> late = work(
        worker, [&] { log.emplace_back("done at once"); }, log, "late");
    EXPECT_TRUE(late.isReady());
    EXPECT_THAT(log, ElementsAre("running on main", "waiting on main", "done at once", "late on main"));
}

} // namespace
