// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/timelimits.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

TEST(TimeLimits, OfARefresh)
{
    EXPECT_EQ(timeLimit("agent.version"), 5s);
    EXPECT_EQ(timeLimit("auth.status"), 10s);
    EXPECT_EQ(timeLimit("vm.status"), 30s);
    EXPECT_EQ(timeLimit("mount.state"), 10s);
    EXPECT_EQ(timeLimit("volumes.list"), 30s);
    EXPECT_EQ(timeLimit("account"), 30s);
    EXPECT_EQ(timeLimit("volumes.status"), 30s);
    EXPECT_EQ(timeLimit("recoveries.list_for_volume"), 60s);
    EXPECT_EQ(timeLimit("appliance.orphans"), 30s);
    EXPECT_EQ(timeLimit("appliance.list"), 30s);
}

TEST(TimeLimits, OfTheOtherCalls)
{
    EXPECT_EQ(timeLimit("events.subscribe"), 60s);
    EXPECT_EQ(timeLimit("appliance.deploy"), 1'800s);
    EXPECT_EQ(timeLimit("mount.attach"), 300s);
    EXPECT_EQ(timeLimit("restore_points.list"), 120s);
    EXPECT_EQ(timeLimit("unheard.of"), 60s);
}

TEST(TimeLimits, HaveNoMethodTwice)
{
    std::set<std::string_view> methods;
    for (const TimeLimit &entry : timeLimits) {
        EXPECT_TRUE(methods.insert(entry.method).second) << entry.method;
    }
}

} // namespace
