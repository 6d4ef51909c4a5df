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
