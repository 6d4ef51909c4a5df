// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "statetest.h"

#include <QElapsedTimer>

#include <algorithm>
#include <thread>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeployAndMount : public StateTest {
protected:
    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(connectAndSettle());
        agent.answer("appliance.deploy", nullptr);
        agent.answer("mount.attach", nullptr);
    }
};

TEST_F(DeployAndMount, DeploysMountsTellsAndRefreshes)
{
    agent.hold("appliance.deploy");
    agent.hold("mount.attach");
    const QCoro::Task<> task = state->deployAndMount(7, u"photos"_s);
    EXPECT_EQ(state->toast(), u"Starting the appliance for photos…"_s);
    EXPECT_TRUE(state->busy());
    ASSERT_TRUE(eventually([&] { return agent.count("appliance.deploy") == 1; }));
    agent.release("appliance.deploy");
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
    EXPECT_FALSE(state->busy()) << "only the deployment keeps the ticker still";
    agent.hold("auth.status");
    agent.release("mount.attach");
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    EXPECT_EQ(state->toast(), u"photos is mounted in ~/Quillfen/photos"_s);
    EXPECT_FALSE(task.isReady()) << "the refresh is part of it";
    agent.release("auth.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(agent.requests("appliance.deploy").front().params, params("volume_id", 7));
    EXPECT_EQ(agent.requests("mount.attach").front().params, params("volume_id", 7));
}

TEST_F(DeployAndMount, IsOneOperationFromItsBeginningToItsEnd)
{
    agent.fail("mount.attach", {.message = "not up yet"});
    const QCoro::Task<> task = state->deployAndMount(7, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") >= 2; }));
    ASSERT_FALSE(state->activity.running().isEmpty()) << "also in the pauses";
    EXPECT_EQ(state->activity.running().front().title, u"Starting and mounting photos"_s);
    agent.answer("mount.attach", nullptr);
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_TRUE(state->activity.running().isEmpty());
    const auto &past = state->activity.past();
    const auto whole = std::ranges::find(past, u"Starting and mounting photos"_s, &ActivityEntry::title);
    ASSERT_NE(whole, past.end());
    EXPECT_EQ(whole->kind, ActivityEntry::Kind::Done);
    EXPECT_EQ(whole->words, u"photos is mounted in ~/Quillfen/photos"_s);
    const auto deployed = std::ranges::find(past, std::string("appliance.deploy"), &ActivityEntry::method);
    ASSERT_NE(deployed, past.end());
    EXPECT_GE(whole->took, deployed->took);
}

TEST_F(DeployAndMount, AFailedDeploymentShowsItsTextAndStops)
{
    agent.fail("appliance.deploy", {.message = "no room in the engine"});
    await(state->deployAndMount(7, u"photos"_s));
    EXPECT_EQ(state->toast(), u"no room in the engine"_s);
    EXPECT_FALSE(state->busy());
    EXPECT_TRUE(state->activity.running().isEmpty());
    EXPECT_EQ(state->activity.past().back().kind, ActivityEntry::Kind::Failed);
    EXPECT_THAT(agent.log(), ElementsAre("appliance.deploy"));
}

TEST_F(DeployAndMount, TriesUntilTheMountSucceeds)
{
    int attempts = 0;
    agent.on("mount.attach", [&](const json::object &) -> FakeAgent::Answer {
        return ++attempts < 3 ? FakeAgent::Answer(FakeAgent::Error{.message = "not up yet"}) : json::value();
    });
    QElapsedTimer passed;
    passed.start();
    await(state->deployAndMount(7, u"photos"_s));
    EXPECT_GE(passed.elapsed(), 2 * 19);
    EXPECT_EQ(agent.count("mount.attach"), 3U);
    EXPECT_EQ(state->toast(), u"photos is mounted in ~/Quillfen/photos"_s);
    EXPECT_EQ(agent.count("auth.status"), 1U);
}

TEST_F(DeployAndMount, GivesUpAfterTwelveAttemptsAndAPauseAfterEach)
{
    int attempts = 0;
    agent.on("mount.attach", [&](const json::object &) -> FakeAgent::Answer {
        return FakeAgent::Error{.message = "attempt " + std::to_string(++attempts)};
    });
    QElapsedTimer passed;
    passed.start();
    await(state->deployAndMount(7, u"photos"_s));
    EXPECT_GE(passed.elapsed(), 12 * 19);
    EXPECT_EQ(agent.count("mount.attach"), 12U);
    EXPECT_EQ(state->toast(), u"attempt 12"_s);
    EXPECT_EQ(agent.count("auth.status"), 1U);
}

TEST_F(DeployAndMount, TakesANameForWhatItIs)
{
    agent.fail("mount.attach", {.message = "x"});
    agent.on("mount.attach", [](const json::object &) -> FakeAgent::Answer { return json::value(); });
    await(state->deployAndMount(7, u"100 %1 %2"_s));
    EXPECT_EQ(state->toast(), u"100 %1 %2 is mounted in ~/Quillfen/100 %1 %2"_s);
}

/// With pauses and notices that outlast every test.
class MountRetry : public StateTest {
protected:
    static Timing slow()
    {
        Timing timing = quickTiming();
        timing.mountRetryDelay = 1h;
        timing.toastDuration = 1h;
        return timing;
    }

    MountRetry() : StateTest(slow()) {}
};

TEST_F(MountRetry, TheEndOfTheProgramDoesNotWaitForThePause)
{
    ASSERT_NO_FATAL_FAILURE(connectAndSettle());
    agent.answer("appliance.deploy", nullptr);
    agent.fail("mount.attach", {.message = "not up yet"});
    const QCoro::Task<> task = state->deployAndMount(7, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
    settle();
    EXPECT_FALSE(task.isReady());
    const std::weak_ptr<AppState> weak = state;
    state->shutDown();
    EXPECT_TRUE(task.isReady()) << "without a turn of the loop";
    EXPECT_EQ(state->toast(), u"Starting the appliance for photos…"_s) << "nobody is told that the mount failed";
    EXPECT_EQ(agent.count("mount.attach"), 1U);
    state.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(MountRetry, TheEndOfTheProgramEndsAnAttempt)
{
    ASSERT_NO_FATAL_FAILURE(connectAndSettle());
    agent.answer("appliance.deploy", nullptr);
    agent.silent("mount.attach");
    const QCoro::Task<> task = state->deployAndMount(7, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
    state->shutDown();
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(agent.count("mount.attach"), 1U);
}

class RestorePointsCall : public StateTest {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(connectAndSettle()); }

    std::vector<std::string> times(std::string_view answer)
    {
        agent.answer("restore_points.list", parsed(answer));
        std::vector<std::string> all;
        const RestorePoints points = await(state->restorePoints(7));
        for (std::size_t place = 0; place < points.size(); ++place) {
            all.push_back(points.timestamp(place).toStdString());
        }
        return all;
    }
};

TEST_F(RestorePointsCall, AreSortedByTheirTimesAsText)
{
    EXPECT_THAT(
        times(R"({"recovery_points":[{"timestamp":"b"},{"timestamp":"a"},7,{"timestamp":12},{"timestamp":"c"}]})"),
        ElementsAre("12", "a", "b", "c"));
    EXPECT_EQ(agent.requests("restore_points.list").front().params, params("volume_id", 7));
}

TEST_F(RestorePointsCall, ComeFromTheFirstPlaceThatHasAny)
{
    EXPECT_THAT(times(R"({"points":[{"timestamp":"p"}],"recovery_points":[{"timestamp":"r"}]})"), ElementsAre("r"));
    EXPECT_THAT(times(R"({"points":[{"timestamp":"p"}],"recovery_points":[]})"), ElementsAre("p"));
    EXPECT_THAT(times(R"({"points":[{"timestamp":"p"}],"recovery_points":[1,2]})"), ElementsAre("p"));
    EXPECT_THAT(times(R"({"points":[{"timestamp":"p"}],"raw":"{\"recovery_points\":[{\"timestamp\":\"w\"}]}"})"),
                ElementsAre("w"));
}

TEST_F(RestorePointsCall, ARawTextMayBeAsDeepAsAnAnswer)
{
    const std::string deep = std::string(500, '[') + std::string(500, ']');
    const std::string raw = R"({\"recovery_points\":[{\"timestamp\":\"w\",\"deep\":)" + deep + "}]}";
    EXPECT_THAT(times(R"({"points":[{"timestamp":"p"}],"raw":")" + raw + R"("})"), ElementsAre("w"));
}

TEST_F(RestorePointsCall, ARawTextThatHoldsNoneMovesOn)
{
    for (const char *const raw : {R"("not json")", R"("[]")", R"("{\"recovery_points\":[]}")", "7", "null", R"("")"}) {
        const std::string answer = std::string(R"({"points":[{"timestamp":"p"}],"raw":)") + raw + "}";
        EXPECT_THAT(times(answer), ElementsAre("p")) << raw;
    }
}

TEST_F(RestorePointsCall, OfAnyOtherAnswerThereAreNone)
{
    for (const char *const answer : {"null", "[]", "7", "{}", R"({"points":{}})", R"({"raw":"{}"})"}) {
        EXPECT_THAT(times(answer), IsEmpty()) << answer;
    }
}

TEST_F(RestorePointsCall, TheEndOfTheProgramWaitsForNobodyWhoReadsThem)
{
    agent.answer("restore_points.list", parsed(R"({"points":[{"timestamp":"p"}]})"));
    agent.hold("restore_points.list");
    std::string outcome;
    const auto ask = [&]() -> QCoro::Task<> {
        try {
            const RestorePoints points = co_await state->restorePoints(7);
            outcome = points.timestamp(0).toStdString();
        } catch (const RPCError &) {
            outcome = "too late";
        }
    };
    const QCoro::Task<> task = ask();
    ASSERT_TRUE(agent.waitFor("restore_points.list"));
    agent.release("restore_points.list");
    std::this_thread::sleep_for(50ms); // for the answer to come in, while nobody turns the loop
    state->shutDown();
    EXPECT_TRUE(task.isReady());
    EXPECT_THAT(outcome, testing::AnyOf("p", "too late"));
}

TEST_F(RestorePointsCall, AFailureIsTheCallers)
{
    agent.fail("restore_points.list", {.code = 5, .message = "vault away"});
    std::string message;
    const auto ask = [&]() -> QCoro::Task<> {
        try {
            co_await state->restorePoints(7);
        } catch (const RPCError &error) {
            message = error.message.toStdString();
        }
    };
    await(ask());
    EXPECT_EQ(message, "vault away");
}

} // namespace
