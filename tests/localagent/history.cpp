// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

TEST(History, PointsAreAsManyAndAsOldAsTheWorldSays)
{
    TestAgent agent;
    const json::value answer = agent.result("restore_points.list", {{"volume_id", 3121}});
    const json::array &points = answer.at("points").as_array();
    ASSERT_EQ(points.size(), 1284U);
    EXPECT_EQ(points.front().at("timestamp"), json::value("2026-08-25T12:00:00.000Z"));
    EXPECT_TRUE(std::is_sorted(points.begin(), points.end(), [](const json::value &one, const json::value &other) {
        return text(one.at("timestamp")) < text(other.at("timestamp"));
    }));
    EXPECT_GT(text(points.back().at("timestamp")), "2026-11-20T11:59:00");
}

TEST(History, TheThreeFormsOfTheAnswerHoldTheSamePoints)
{
    TestAgent agent;
    const json::object id{{"volume_id", 3121}};
    const json::value plain = agent.result("restore_points.list", id).at("points");
    agent.world.state.pointsForm = PointsForm::RecoveryPoints;
    EXPECT_EQ(agent.result("restore_points.list", id).at("recovery_points"), plain);
    agent.world.state.pointsForm = PointsForm::Raw;
    const json::value raw = agent.result("restore_points.list", id);
    EXPECT_EQ(raw.as_object().size(), 1U);
    EXPECT_EQ(json::parse(raw.at("raw").as_string()).at("recovery_points"), plain);
}

TEST(History, AReadyCopyBecomesAVolumeWithTheKeyOfItsSource)
{
    TestAgent agent("lists");
    const json::value made = agent.result("recovery.promote", {{"recovery_id", 41}, {"new_name", "Documents-old"}});
    EXPECT_EQ(made.at("key_volume"), json::value("Documents"));
    EXPECT_EQ(made.at("encryption"), json::value("customer"));
    EXPECT_EQ(agent.eventNames(), "volumes.changed");
    EXPECT_EQ(agent.result("volumes.list").as_array().back(), made);
    EXPECT_EQ(agent.refusal("recovery.promote", {{"recovery_id", 41}, {"new_name", "again"}}),
              "There is no copy 41 any more.");
    agent.finish("appliance.deploy", {{"volume_id", made.at("id")}});
    agent.pass(5);
    EXPECT_EQ(agent.result("mount.attach", {{"volume_id", made.at("id")}}).at("mounted"), json::value(true));
}

TEST(History, ACopyIsPromotedOnlyWholeAndUnderAGoodName)
{
    TestAgent agent("lists");
    EXPECT_EQ(agent.refusal("recovery.promote", {{"recovery_id", 42}, {"new_name", "x"}}),
              "photos-archive-202611201000 is not fully copied yet.");
    EXPECT_EQ(agent.refusal("recovery.promote", {{"recovery_id", 41}, {"new_name", "documents"}}),
              "A volume named Documents exists already.");
    EXPECT_EQ(agent.refusal("recovery.promote", {{"recovery_id", 41}, {"new_name", " "}}), "Give the volume a name.");
}

TEST(History, ADiscardedCopyIsGone)
{
    TestAgent agent("lists");
    agent.result("recovery.delete", {{"recovery_id", 41}});
    EXPECT_TRUE(agent.result("recoveries.list_for_volume", {{"volume_id", 3121}}).at("recoveries").as_array().empty());
    EXPECT_EQ(agent.refusal("recovery.delete", {{"recovery_id", 41}}), "There is no copy 41 any more.");
}

TEST(Copies, FillUpWithTimeAndAreReadyThen)
{
    TestAgent agent;
    const json::value made = agent.finish(
        "restore.start",
        {{"volume_id", 3134}, {"timestamp", "2026-11-20T09:30:15Z"}, {"recovery_name", "accounts-2025-202611200930"}});
    const auto copy = [&] {
        return agent.result("recoveries.list_for_volume", {{"volume_id", 3134}}).at("recoveries").at(0);
    };
    EXPECT_EQ(copy().at("id"), made.at("recovery_id"));
    EXPECT_EQ(copy().at("rewind_to"), json::value("2026-11-20T09:30:15.000Z"));
    EXPECT_EQ(copy().at("state"), json::value("hydrating"));
    EXPECT_LT(copy().at("hydration_pct").as_int64(), 10);
    EXPECT_EQ(agent.refusal("recovery.promote", {{"recovery_id", made.at("recovery_id")}, {"new_name", "x"}}),
              "accounts-2025-202611200930 is not fully copied yet.");
    agent.pass(40);
    EXPECT_GT(copy().at("hydration_pct").as_int64(), 40);
    EXPECT_LT(copy().at("hydration_pct").as_int64(), 60);
    agent.pass(60);
    EXPECT_EQ(copy().at("state"), json::value("ready"));
    EXPECT_TRUE(copy().at("hydration_pct").is_null());
    const json::value volume =
        agent.result("recovery.promote", {{"recovery_id", made.at("recovery_id")}, {"new_name", "accounts-old"}});
    EXPECT_EQ(agent.result("volumes.list").as_array().back(), volume);
}

TEST(Copies, GoOnFromWhereTheWorldHasThem)
{
    TestAgent agent;
    const auto copy = [&] {
        return agent.result("recoveries.list_for_volume", {{"volume_id", 3121}}).at("recoveries").at(0);
    };
    EXPECT_EQ(copy().at("name"), json::value("Documents-202611051200"));
    EXPECT_EQ(copy().at("hydration_pct"), json::value(64));
    agent.pass(120);
    EXPECT_GT(copy().at("hydration_pct").as_int64(), 70);
    agent.pass(600);
    EXPECT_EQ(copy().at("state"), json::value("ready"));
}

TEST(Copies, NeedAMomentOfTheHistoryAndANameOfTheirOwn)
{
    TestAgent agent;
    json::object request{{"volume_id", 3121}, {"timestamp", "2026-11-20T09:30:15Z"}, {"recovery_name", ""}};
    EXPECT_EQ(agent.refusal("restore.start", request), "Give the copy a name.");
    request["recovery_name"] = "documents-202611051200";
    EXPECT_EQ(agent.refusal("restore.start", request),
              "A copy named Documents-202611051200 exists already. Choose another name, or discard it first.");
    request["recovery_name"] = "photos-archive";
    EXPECT_EQ(agent.refusal("restore.start", request),
              "A volume named photos-archive exists already. Choose another name for the copy.");
    request["recovery_name"] = "fine";
    request["timestamp"] = "2031-01-01T00:00:00Z";
    EXPECT_EQ(agent.refusal("restore.start", request),
              "The history of Documents ends at 2026-11-20T12:00:00.000Z. Choose a moment in the past.");
}

TEST(Copies, DiscardedOnTheWayAreGone)
{
    TestAgent agent;
    agent.result("recovery.delete", {{"recovery_id", 3151}});
    agent.pass(3600);
    EXPECT_TRUE(agent.result("recoveries.list_for_volume", {{"volume_id", 3121}}).at("recoveries").as_array().empty());
}

TEST(History, PinnedPointsCarryTheirLabels)
{
    TestAgent agent;
    const json::value answer = agent.result("restore_points.list", {{"volume_id", 3121}});
    std::vector<std::string> labels;
    for (const json::value &point : answer.at("points").as_array()) {
        if (point.as_object().contains("label")) {
            labels.push_back(text(point.at("label")));
        }
    }
    EXPECT_EQ(labels, (std::vector<std::string>{"before the move", "before the quarterly clean-up"}));
}
