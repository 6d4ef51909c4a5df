// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/deadlines.h"

#include <gmock/gmock.h>

namespace quillfen::test {

namespace {

using namespace std::chrono_literals;

const Deadlines::Clock::time_point start{};

TEST(Deadlines, GivesTheEarliestFirstWhateverTheOrderTheyCameIn)
{
    Deadlines deadlines;
    deadlines.add(start + 30s, 1);
    deadlines.add(start + 10s, 2);
    deadlines.add(start + 20s, 3);
    EXPECT_EQ(deadlines.earliest(), start + 10s);
    EXPECT_EQ(deadlines.takeExpired(start + 60s), 2);
    EXPECT_EQ(deadlines.takeExpired(start + 60s), 3);
    EXPECT_EQ(deadlines.takeExpired(start + 60s), 1);
    EXPECT_TRUE(deadlines.empty());
}

TEST(Deadlines, GivesNothingBeforeItsTime)
{
    Deadlines deadlines;
    EXPECT_EQ(deadlines.takeExpired(start), std::nullopt);
    deadlines.add(start + 10s, 1);
    EXPECT_EQ(deadlines.takeExpired(start + 10s - 1ns), std::nullopt);
    EXPECT_EQ(deadlines.takeExpired(start + 10s), 1);
}

TEST(Deadlines, SkipsThoseInFrontThatNobodyWaitsFor)
{
    Deadlines deadlines;
    for (int id = 1; id <= 4; ++id) {
        deadlines.add(start + id * 1s, id);
    }
    deadlines.skipStale([](std::int64_t id) { return id == 3; });
    EXPECT_EQ(deadlines.earliest(), start + 3s);
    EXPECT_EQ(deadlines.size(), 2U);
}

TEST(Deadlines, CompactingKeepsThoseThatSomebodyWaitsForInOrder)
{
    Deadlines deadlines;
    for (int id = 1; id <= 1'000; ++id) {
        deadlines.add(start + (1'000 - id) * 1s, id);
    }
    deadlines.compact([](std::int64_t id) { return id % 400 == 0; });
    EXPECT_EQ(deadlines.size(), 2U);
    EXPECT_EQ(deadlines.takeExpired(start + 1h), 800);
    EXPECT_EQ(deadlines.takeExpired(start + 1h), 400);
}

} // namespace

} // namespace quillfen::test
