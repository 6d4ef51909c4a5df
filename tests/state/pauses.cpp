// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/pauses.h"

#include "support/await.h"

#include <QCoroTask>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <string>

using namespace quillfen;
using namespace quillfen::test;
using namespace std::chrono_literals;

namespace {

QCoro::Task<> note(Pauses &pauses, std::chrono::milliseconds length, std::string &log, char name)
{
    const Pauses::Awaiter pause = pauses.of(length);
    co_await pause;
    log += name;
}

TEST(Pauses, LastAsLongAsTheyAreToAndNotLess)
{
    Pauses pauses;
    std::string log;
    QElapsedTimer passed;
    passed.start();
    const QCoro::Task<> longer = note(pauses, 120ms, log, 'b');
    const QCoro::Task<> shorter = note(pauses, 60ms, log, 'a');
    ASSERT_TRUE(eventually([&] { return shorter.isReady(); }));
    EXPECT_GE(passed.elapsed(), 59);
    EXPECT_FALSE(longer.isReady());
    ASSERT_TRUE(eventually([&] { return longer.isReady(); }));
    EXPECT_GE(passed.elapsed(), 119) << "a coarse timer comes up to 6 ms early";
    EXPECT_EQ(log, "ab");
}

TEST(Pauses, EndAtOnceInTheirOrderWithoutATurnOfTheLoop)
{
    Pauses pauses;
    std::string log;
    const QCoro::Task<> first = note(pauses, 1h, log, 'a');
    const QCoro::Task<> second = note(pauses, 1ms, log, 'b');
    EXPECT_EQ(log, "");
    pauses.end();
    EXPECT_EQ(log, "ab");
    const QCoro::Task<> third = note(pauses, 1h, log, 'c');
    EXPECT_EQ(log, "abc") << "nobody pauses any more";
    eventually([] { return false; }, 20ms); // the timer of the second finds nobody
    EXPECT_EQ(log, "abc");
}

} // namespace
