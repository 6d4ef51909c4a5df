// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/points.h"
#include "localagent/world/thinning.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

constexpr VolumeId documents = 3121; // in use
constexpr VolumeId stopped = 3134;   // not in use

Volume &volume(TestAgent &agent, VolumeId id)
{
    return agent.world.state.volumes.at(id);
}

const std::vector<Time> &points(TestAgent &agent, VolumeId id)
{
    return restorePoints(agent.world, volume(agent, id));
}

Time at(std::string_view text)
{
    return *parseIsoTime(text);
}

/// What is left of one point a second over `span` before `now`, by `policy`.
std::vector<Time> leftOf(std::array<std::int64_t, 6> policy, std::chrono::seconds span, Time now)
{
    Volume each;
    each.policy = policy;
    for (Time point = now - span; point <= now; point += 1s) {
        each.history.points.push_back(point);
    }
    thin(each, now);
    return each.history.points;
}

} // namespace

TEST(Thinning, KeepsEverySecondForAsLongAsTheFirstTierSays)
{
    const Time now = at("2026-11-20T12:00:00Z");
    EXPECT_EQ(leftOf({2, 0, 0, 0, 0, 0}, 1h, now).size(), 121U);
    EXPECT_TRUE(leftOf({0, 0, 0, 0, 0, 0}, 1h, now).empty());
}

TEST(Thinning, KeepsTheFirstPointOfEachMinuteHourAndDay)
{
    const Time now = at("2026-11-20T12:00:30Z");
    const std::vector<Time> minutes = leftOf({0, 1, 0, 0, 0, 0}, 3min, now);
    EXPECT_THAT(minutes, ElementsAre(at("2026-11-20T11:57:30Z"), at("2026-11-20T11:58:00Z"), at("2026-11-20T11:59:00Z"),
                                     at("2026-11-20T12:00:00Z")));
    const std::vector<Time> hours = leftOf({0, 0, 1, 0, 0, 0}, 3h, now);
    EXPECT_THAT(hours, ElementsAre(at("2026-11-20T09:00:30Z"), at("2026-11-20T10:00:00Z"), at("2026-11-20T11:00:00Z"),
                                   at("2026-11-20T12:00:00Z")));
    const std::vector<Time> days = leftOf({0, 0, 0, 1, 0, 0}, 48h, now);
    EXPECT_THAT(days, ElementsAre(at("2026-11-18T12:00:30Z"), at("2026-11-19T00:00:00Z"), at("2026-11-20T00:00:00Z")));
}

TEST(Thinning, WeeksBeginOnMondayAndMonthsOnTheirFirst)
{
    Volume each;
    each.policy = {0, 0, 0, 0, 3, 0};
    for (Time day = at("2026-11-01T00:00:00Z"); day <= at("2026-11-20T00:00:00Z"); day += 24h) {
        each.history.points.push_back(day);
    }
    Volume monthly = each;
    thin(each, at("2026-11-20T12:00:00Z"));
    EXPECT_THAT(each.history.points, ElementsAre(at("2026-11-01T00:00:00Z"), at("2026-11-02T00:00:00Z"),
                                                 at("2026-11-09T00:00:00Z"), at("2026-11-16T00:00:00Z")));
    monthly.policy = {0, 0, 0, 0, 0, 1};
    monthly.history.points.insert(monthly.history.points.begin(), at("2026-10-31T00:00:00Z"));
    thin(monthly, at("2026-11-20T12:00:00Z"));
    EXPECT_THAT(monthly.history.points, ElementsAre(at("2026-10-31T00:00:00Z"), at("2026-11-01T00:00:00Z")));
}

TEST(Thinning, AsTimePassesAHistoryBecomesSparser)
{
    TestAgent agent;
    const std::size_t before = points(agent, stopped).size();
    EXPECT_EQ(before, 212U);
    agent.pass(48 * 3600);
    const std::size_t after = points(agent, stopped).size();
    EXPECT_LT(after, before);
    EXPECT_GT(after, 0U);
}

TEST(Thinning, WhatIsPinnedStays)
{
    TestAgent agent;
    Volume &each = volume(agent, stopped);
    each.policy = {60, 0, 0, 0, 0, 0};
    agent.pass(10);
    pinPoint(agent.world, each, "before the audit");
    agent.pass(7 * 24 * 3600);
    EXPECT_THAT(points(agent, stopped), ElementsAre(at("2026-11-20T12:00:10Z")));
    const json::value answer = agent.result("restore_points.list", {{"volume_id", stopped}});
    EXPECT_EQ(json::serialize(answer),
              R"({"points":[{"timestamp":"2026-11-20T12:00:10.000Z","label":"before the audit"}]})");
}

TEST(Thinning, AMillionPointsAreWrittenWhenSomebodyAsksAndStay)
{
    TestAgent agent("million");
    EXPECT_FALSE(volume(agent, documents).history.written);
    const std::vector<Time> &all = points(agent, documents);
    EXPECT_EQ(all.size(), 1'000'000U);
    EXPECT_EQ(std::ranges::adjacent_find(all, std::greater_equal<>()), all.end()) << "each later than the one before";
    EXPECT_EQ(all.front(), at("2026-08-22T12:00:00Z"));
    thin(volume(agent, documents), agent.world.clock.now());
    EXPECT_EQ(all.size(), 1'000'000U) << "the plan stands where the policy leaves it";
}

TEST(Growth, AVolumeInUseGetsPointsAsItChanges)
{
    TestAgent agent;
    const std::vector<Time> before = points(agent, documents);
    agent.pass(600);
    const std::vector<Time> after = points(agent, documents);
    const auto isNew = [&](Time point) { return point > before.back(); };
    EXPECT_EQ(std::ranges::count_if(after, isNew), 30);
    EXPECT_LE(after.back(), agent.world.clock.now());
    EXPECT_TRUE(std::ranges::is_sorted(after));
}

TEST(Growth, DoesNotDependOnHowOftenOneAsks)
{
    TestAgent seldom;
    TestAgent often;
    static_cast<void>(points(seldom, documents));
    static_cast<void>(points(often, documents));
    for (int time = 0; time < 100; ++time) {
        often.pass(7);
        static_cast<void>(points(often, documents));
    }
    seldom.pass(700);
    EXPECT_EQ(points(seldom, documents), points(often, documents));
}

TEST(Growth, StopsWhileTheVolumeIsNotInUse)
{
    TestAgent agent;
    static_cast<void>(points(agent, documents));
    agent.pass(60);
    agent.result("mount.detach", {{"volume_id", documents}});
    const std::vector<Time> before = points(agent, documents);
    agent.pass(600);
    EXPECT_EQ(points(agent, documents).back(), before.back());
    agent.result("mount.attach", {{"volume_id", documents}});
    agent.pass(60);
    EXPECT_GT(points(agent, documents).back(), before.back());
}
