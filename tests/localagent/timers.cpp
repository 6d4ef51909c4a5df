// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "manualtime.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace quillfen::localagent;
using quillfen::localagent::test::ManualTime;

TEST(Timers, TasksRunInTheOrderOfTheirMoments)
{
    ManualTime time;
    std::string order;
    time.timers.after(Timers::Seconds(2), [&] { order += "c"; });
    time.timers.after(Timers::Seconds(1), [&] { order += "a"; });
    time.timers.after(Timers::Seconds(1), [&] { order += "b"; });
    time.pass(Timers::Seconds(1.5));
    EXPECT_EQ(order, "ab");
    time.pass(Timers::Seconds(1));
    EXPECT_EQ(order, "abc");
    EXPECT_FALSE(time.timers.untilNext());
}

TEST(Timers, ATaskThatPutsItselfBackAtOnceDoesNotHoldTheRound)
{
    Timers timers; // the real clock
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        timers.after(Timers::Seconds(0), again);
    };
    timers.after(Timers::Seconds(0), again);
    timers.runDue();
    EXPECT_EQ(runs, 1);
}

TEST(Timers, NeitherDoesItWhileTheClockStandsStill)
{
    ManualTime time;
    int runs = 0;
    std::function<void()> again = [&] {
        if (++runs < 100) {
            time.timers.after(Timers::Seconds(0), again);
        }
    };
    again();
    time.timers.after(Timers::Seconds(0), [&] { runs += 1000; });
    time.timers.runDue();
    EXPECT_EQ(runs, 1002) << "whoever was there has its turn, once";
    EXPECT_EQ(time.timers.untilNext(), Timers::Seconds(0));
}

TEST(Timers, DelaysOutsideReasonNeitherOverflowNorWaitBackwards)
{
    ManualTime time;
    int runs = 0;
    time.timers.after(Timers::Seconds(-5), [&] { ++runs; });
    time.timers.after(Timers::Seconds(std::numeric_limits<double>::quiet_NaN()), [&] { ++runs; });
    time.timers.after(Timers::Seconds(1e300), [&] { ++runs; });
    time.pass(Timers::Seconds(0));
    EXPECT_EQ(runs, 2);
    EXPECT_GT(time.timers.untilNext()->count(), 1e8);
}
