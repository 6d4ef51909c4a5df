// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/operations.h"

#include "state/action.h"
#include "state/format.h"
#include "statetest.h"

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

namespace {

constexpr Instant someTime{std::chrono::milliseconds(1'800'000'000'000)};

TEST(Operations, AreListedInTheOrderOfTheirBeginningsUntilTheyEnd)
{
    const ClockOverride clock([] { return someTime; });
    Operations operations;
    const auto first = operations.begin("vm.prepare", u"Setting up"_s, "vm.progress");
    const auto second = operations.begin("volumes.remove", u"Deleting"_s, "");
    ASSERT_EQ(operations.running().size(), 2);
    EXPECT_EQ(operations.running().front().title, u"Setting up"_s);
    EXPECT_EQ(operations.running().front().since, someTime);
    EXPECT_EQ(operations.find("volumes.remove")->id, second);
    operations.end(first);
    EXPECT_EQ(operations.find("vm.prepare"), nullptr);
    EXPECT_EQ(operations.running().size(), 1);
}

TEST(Operations, OneMethodMayRunTwice)
{
    Operations operations;
    const auto first = operations.begin("volumes.remove", u"one"_s, "");
    const auto second = operations.begin("volumes.remove", u"two"_s, "");
    EXPECT_NE(first, second);
    operations.end(first);
    ASSERT_NE(operations.find("volumes.remove"), nullptr);
    EXPECT_EQ(operations.find("volumes.remove")->title, u"two"_s);
}

TEST(Operations, TakeTheLastMessageOfTheirOwnEvent)
{
    Operations operations;
    const auto engine = operations.begin("vm.prepare", u"Setting up"_s, "vm.progress");
    const auto other = operations.begin("volumes.remove", u"Deleting"_s, "");
    operations.progress("appliance.progress", u"not mine"_s);
    operations.progress("vm.progress", u"40%"_s);
    operations.progress("vm.progress", u"80%"_s);
    operations.progress("vm.progress", QString());
    EXPECT_EQ(operations.find("vm.prepare")->lastLine, u"80%"_s);
    EXPECT_EQ(operations.find("volumes.remove")->lastLine, QString());
    operations.end(engine);
    operations.end(other);
}

TEST(Operations, AMessageForNobodyAnnouncesNothing)
{
    Operations operations;
    const auto version = operations.running.version();
    operations.progress("vm.progress", u"40%"_s);
    EXPECT_EQ(operations.running.version(), version);
}

TEST(Elapsed, IsCountedInTheUnitThatFits)
{
    using namespace std::chrono;
    const ClockOverride clock([] { return someTime; });
    const auto text = [](milliseconds span) { return elapsed(someTime - span); };
    EXPECT_EQ(text(0ms), u"0 s"_s);
    EXPECT_EQ(text(59'999ms), u"59 s"_s);
    EXPECT_EQ(text(60s), u"1 min"_s);
    EXPECT_EQ(text(3'599s), u"59 min"_s);
    EXPECT_EQ(text(3'600s), u"1 h 0 min"_s);
    EXPECT_EQ(text(70min), u"1 h 10 min"_s);
    EXPECT_EQ(text(-5s), u"0 s"_s) << "the clock was set back";
}

TEST(TimeOfDay, IsShownInTheUsersZone)
{
    EXPECT_EQ(timeOfDay(someTime), u"08:00"_s); // the tests run in UTC
}

class RunningActionTest : public StateTest {
protected:
    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(connectAndSettle());
        agent.answer("vm.prepare", nullptr);
        agent.hold("vm.prepare");
        action.method = "vm.prepare";
        action.operation = u"Setting up"_s;
        action.progressEvent = "vm.progress";
    }

    Action action;
};

TEST_F(RunningActionTest, IsAmongTheOperationsUntilItsAnswer)
{
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    ASSERT_NE(state->operations.find("vm.prepare"), nullptr);
    agent.push("vm.progress", params("message", "40%"));
    EXPECT_TRUE(eventually([&] { return state->operations.find("vm.prepare")->lastLine == u"40%"_s; }));
    EXPECT_EQ(state->toast(), u"40%"_s);
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return state->operations.running().isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return task.isReady(); }));
}

TEST_F(RunningActionTest, EndsWithItsFailure)
{
    agent.fail("vm.prepare", {.message = "no"});
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_FALSE(state->operations.running().isEmpty());
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return state->operations.running().isEmpty(); }));
    EXPECT_EQ(state->toast(), u"no"_s);
}

TEST_F(RunningActionTest, EndsWithTheConnection)
{
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    ASSERT_TRUE(eventually([&] { return agent.count("vm.prepare") == 1; }));
    agent.stop();
    EXPECT_TRUE(eventually([&] { return state->operations.running().isEmpty(); }));
}

TEST_F(RunningActionTest, AShortOneIsNotListed)
{
    action.operation.clear();
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_TRUE(state->operations.running().isEmpty());
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return task.isReady(); }));
}

TEST_F(RunningActionTest, TheStateGoesOnMeanwhile)
{
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_FALSE(state->busy());
    await(state->refresh());
    EXPECT_GE(agent.count("auth.status"), 1U);
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return task.isReady(); }));
}

} // namespace
