// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/clock.h"

#include "manualtime.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using quillfen::localagent::test::ManualTime;

namespace {

using namespace std::chrono_literals;

const Time noon{std::chrono::sys_days{std::chrono::year(2026) / 2 / 3} + 12h};

} // namespace

TEST(Clock, TimesAreIsoTextsOfOneLength)
{
    EXPECT_EQ(isoTime(noon), "2026-02-03T12:00:00.000Z");
    EXPECT_EQ(isoTime(noon + 1h + 2min + 3s + 4ms), "2026-02-03T13:02:03.004Z");
    EXPECT_EQ(isoTime(Time{-1ms}), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(minuteDigits(noon), "202602031200");
}

TEST(Clock, SpeedMakesTheWorldsTimeRunAndItsTasksComeSooner)
{
    ManualTime time;
    Clock clock(time.timers, 60, noon);
    bool rung = false;
    clock.after(Seconds(3600), [&] { rung = true; });
    time.pass(Seconds(59));
    EXPECT_EQ(clock.now(), noon + 59min);
    EXPECT_FALSE(rung);
    time.pass(Seconds(1));
    EXPECT_TRUE(rung);
}

TEST(Clock, SpansReadLikeTheEnginesOwn)
{
    EXPECT_EQ(spanText(Seconds(0.4)), "0 seconds");
    EXPECT_EQ(spanText(Seconds(1)), "1 second");
    EXPECT_EQ(spanText(Seconds(119)), "1 minute");
    EXPECT_EQ(spanText(Seconds(6 * 3600)), "6 hours");
    EXPECT_EQ(spanText(Seconds(6 * 86400)), "6 days");
    EXPECT_EQ(spanText(Seconds(-5)), "0 seconds");
}

TEST(Clock, MomentsOfAWorldAreRelative)
{
    EXPECT_EQ(parseMoment("now", noon), noon);
    EXPECT_EQ(parseMoment("-3h", noon), noon - 3h);
    EXPECT_EQ(parseMoment("+20m", noon), noon + 20min);
    EXPECT_EQ(parseMoment("-1.5d", noon), noon - 36h);
    for (const char *wrong : {"", "3", "h", "-3w", "-3hh", "yesterday"}) {
        EXPECT_THROW(static_cast<void>(parseMoment(wrong, noon)), std::invalid_argument) << wrong;
    }
}

TEST(Clock, MomentsAreReadAsIsoTimes)
{
    const Time moment = *parseIsoTime("2026-11-20T09:30:15Z");
    EXPECT_EQ(isoTime(moment), "2026-11-20T09:30:15.000Z");
    EXPECT_EQ(parseIsoTime(isoTime(moment)), moment);
    EXPECT_EQ(parseIsoTime("2026-11-20T10:30:15+01:00"), moment);
    EXPECT_EQ(parseIsoTime("2026-11-20T06:00:15-0330"), moment);
    EXPECT_EQ(parseIsoTime("2026-11-20T09:30:15.123456789Z"), moment + 123ms);
    EXPECT_EQ(parseIsoTime("2026-11-20T09:30:15.5Z"), moment + 500ms);
    for (const char *wrong : {"", "2026-11-20", "2026-11-20T09:30:15", "2026-13-20T09:30:15Z", "2026-02-30T09:30:15Z",
                              "2026-11-20T24:30:15Z", "2026-11-20T09:30:15.Z", "2026-11-20T09:30:15+1:00",
                              "2026-11-20T09:30:15Z ", "+026-11-20T09:30:15Z", "2026-11-20T09:30:1-Z"}) {
        EXPECT_EQ(parseIsoTime(wrong), std::nullopt) << wrong;
    }
}
