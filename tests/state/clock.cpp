// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/clock.h"

#include <gmock/gmock.h>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

TEST(Clock, IsTheSystems)
{
    const auto before = std::chrono::system_clock::now();
    const Instant between = now();
    const auto after = std::chrono::system_clock::now();
    EXPECT_GE(between, before - 1ms) << "whole milliseconds, rounded down";
    EXPECT_LE(between, after);
}

TEST(Clock, MovesWithItsReplacement)
{
    Instant moment{1'000ms};
    const ClockOverride clock([&moment] { return moment; });
    EXPECT_EQ(now(), Instant(1'000ms));
    moment += 5s;
    EXPECT_EQ(now(), Instant(6'000ms));
}

TEST(Clock, OverridesNest)
{
    const ClockOverride outer([] { return Instant(1ms); });
    {
        const ClockOverride inner([] { return Instant(2ms); });
        EXPECT_EQ(now(), Instant(2ms));
    }
    EXPECT_EQ(now(), Instant(1ms));
}

} // namespace
