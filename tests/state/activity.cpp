// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/activity.h"

#include "state/action.h"
#include "state/format.h"
#include "statetest.h"

#include <gmock/gmock.h>

#include <limits>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

namespace {

constexpr Instant someTime{std::chrono::milliseconds(1'800'000'000'000)};

std::uint64_t begin(Activity &activity, const std::string &method, const QString &title, const std::string &event = {})
{
    RunningCall call;
    call.method = method;
    call.title = title;
    call.progressEvent = event;
    return activity.begin(std::move(call));
}

/// What the past says, the newest first.
QStringList words(const AppState &state)
{
    QStringList all;
    for (const ActivityEntry &entry : state.activity.past()) {
        all.prepend(entry.words);
    }
    return all;
}

TEST(Activity, CallsAreListedInTheOrderOfTheirBeginningsUntilTheyEnd)
{
    const ClockOverride clock([] { return someTime; });
    Activity activity;
    const auto first = begin(activity, "vm.prepare", u"Setting up"_s, "vm.progress");
    const auto second = begin(activity, "volumes.remove", u"Deleting"_s);
    ASSERT_EQ(activity.running().size(), 2);
    EXPECT_EQ(activity.running().front().title, u"Setting up"_s);
    EXPECT_EQ(activity.running().front().since, someTime);
    EXPECT_EQ(activity.find("volumes.remove")->id, second);
    activity.end(first, {});
    EXPECT_EQ(activity.find("vm.prepare"), nullptr);
    EXPECT_EQ(activity.running().size(), 1);
}

TEST(Activity, OneMethodMayRunTwice)
{
    Activity activity;
    const auto first = begin(activity, "volumes.remove", u"one"_s);
    const auto second = begin(activity, "volumes.remove", u"two"_s);
    EXPECT_NE(first, second);
    activity.end(first, {});
    ASSERT_NE(activity.find("volumes.remove"), nullptr);
    EXPECT_EQ(activity.find("volumes.remove")->title, u"two"_s);
}

TEST(Activity, ACallWithoutATitleIsNoLongOperation)
{
    Activity activity;
    const auto id = begin(activity, "volumes.rename", {});
    EXPECT_EQ(activity.find("volumes.rename"), nullptr);
    EXPECT_EQ(activity.running().size(), 1);
    activity.end(id, {});
}

TEST(Activity, ACallTakesTheLastMessageOfItsOwnEventWithItsTime)
{
    Instant time = someTime;
    const ClockOverride clock([&time] { return time; });
    Activity activity;
    const auto engine = begin(activity, "vm.prepare", u"Setting up"_s, "vm.progress");
    const auto other = begin(activity, "volumes.remove", u"Deleting"_s);
    activity.progress("appliance.progress", u"not mine"_s);
    activity.progress("vm.progress", u"40%"_s);
    time += std::chrono::seconds(5);
    activity.progress("vm.progress", u"80%"_s);
    activity.progress("vm.progress", QString());
    activity.progress("", u"nobody's"_s);
    EXPECT_EQ(activity.find("vm.prepare")->lastLine, u"80%"_s);
    EXPECT_EQ(activity.find("vm.prepare")->saidAt, time);
    EXPECT_EQ(activity.find("volumes.remove")->lastLine, QString());
    EXPECT_EQ(activity.find("volumes.remove")->saidAt, std::nullopt);
    activity.end(engine, {});
    activity.end(other, {});
}

TEST(Activity, AMessageForNobodyAnnouncesNothing)
{
    Activity activity;
    const auto version = activity.running.version();
    activity.progress("vm.progress", u"40%"_s);
    EXPECT_EQ(activity.running.version(), version);
}

TEST(Activity, KeepsWhatWasSaidAndHowCallsWent)
{
    const ClockOverride clock([] { return someTime; });
    Activity activity;
    activity.noticed(u"Uploading"_s);
    activity.noticed(QString());
    RunningCall call;
    call.method = "volumes.resize";
    call.line = "{}";
    const auto id = activity.begin(std::move(call));
    activity.end(id, {u"no room"_s, true, -5});
    activity.end(id, {u"twice"_s});
    ASSERT_EQ(activity.past().size(), 2U);
    const ActivityEntry &notice = activity.past().front();
    EXPECT_EQ(notice.kind, ActivityEntry::Kind::Notice);
    EXPECT_EQ(notice.words, u"Uploading"_s);
    EXPECT_EQ(notice.at, someTime);
    const ActivityEntry &failure = activity.past().back();
    EXPECT_EQ(failure.kind, ActivityEntry::Kind::Failed);
    EXPECT_EQ(failure.words, u"no room"_s);
    EXPECT_EQ(failure.method, "volumes.resize");
    EXPECT_EQ(failure.line, "{}");
    EXPECT_EQ(failure.code, -5);
    EXPECT_GT(failure.number, notice.number);
}

TEST(Activity, TheOldestGivesWayAndNumbersGoOn)
{
    Activity activity;
    for (std::size_t i = 0; i < Activity::mostEntries + 5; ++i) {
        activity.noticed(QString::number(i));
    }
    EXPECT_EQ(activity.past().size(), Activity::mostEntries);
    EXPECT_EQ(activity.past().front().words, u"5"_s);
    EXPECT_EQ(activity.past().back().number, Activity::mostEntries + 5);
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
    ASSERT_NE(state->activity.find("vm.prepare"), nullptr);
    agent.push("vm.progress", params("message", "40%"));
    EXPECT_TRUE(eventually([&] { return state->activity.find("vm.prepare")->lastLine == u"40%"_s; }));
    EXPECT_EQ(state->toast(), u"40%"_s);
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return state->activity.running().isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return task.isReady(); }));
}

TEST_F(RunningActionTest, EndsWithItsFailure)
{
    agent.fail("vm.prepare", {.message = "no"});
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_FALSE(state->activity.running().isEmpty());
    agent.release("vm.prepare");
    EXPECT_TRUE(eventually([&] { return state->activity.running().isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return state->toast() == u"no"_s; }));
    ASSERT_FALSE(state->activity.past().empty());
    EXPECT_EQ(state->activity.past().back().code, -1);
}

TEST_F(RunningActionTest, EndsWithTheConnection)
{
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    ASSERT_TRUE(eventually([&] { return agent.count("vm.prepare") == 1; }));
    agent.stop();
    EXPECT_TRUE(eventually([&] { return state->activity.running().isEmpty(); }));
}

TEST_F(RunningActionTest, AShortOneIsNoOperation)
{
    action.operation.clear();
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_EQ(state->activity.running().size(), 1);
    EXPECT_EQ(state->activity.find("vm.prepare"), nullptr);
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

TEST_F(RunningActionTest, ItsRequestIsKeptAsItWentOverTheWireWithoutItsSecret)
{
    agent.answer("auth.enroll", json::object());
    action = calling("auth.enroll", params("code", "QF-7777-1234", "api", "vault.example"));
    action.refresh = false;
    await(perform(state, action));
    const std::string &line = state->activity.past().back().line;
    EXPECT_THAT(line, testing::StartsWith(R"({"jsonrpc":"2.0","id":)"));
    EXPECT_THAT(line, testing::EndsWith(R"("method":"auth.enroll","params":{"code":"••••••","api":"vault.example"}})"));
}

TEST_F(RunningActionTest, ASecretIsKeptOutOfTheReasonToo)
{
    agent.fail("auth.enroll", {.message = "no such code: QF-7777-1234"});
    action = calling("auth.enroll", params("code", "QF-7777-1234"));
    await(perform(state, action));
    EXPECT_EQ(state->activity.past().back().words, u"no such code: ••••••"_s);
    EXPECT_EQ(state->toast(), u"no such code: QF-7777-1234"_s) << "who typed it may read it";
}

TEST_F(RunningActionTest, AnOutcomeIsToldOnceWithItsCall)
{
    agent.answer("volumes.rename", nullptr);
    action = calling("volumes.rename", params("volume_id", 1));
    action.before = u"Renaming"_s;
    action.done = saying(u"renamed"_s);
    await(perform(state, action));
    EXPECT_EQ(words(*state), (QStringList{u"renamed"_s, u"Renaming"_s}));
    EXPECT_EQ(state->activity.past().back().kind, ActivityEntry::Kind::Done);
    EXPECT_EQ(state->activity.past().back().method, "volumes.rename");
}

TEST_F(RunningActionTest, WhatCannotBeWrittenDownIsKeptToo)
{
    action = calling("volumes.rename", params("size", std::numeric_limits<double>::infinity()));
    await(perform(state, action));
    EXPECT_EQ(words(*state), QStringList{u"bad params"_s});
    EXPECT_EQ(state->activity.past().back().code, RPCError::badParams);
    EXPECT_TRUE(state->activity.running().isEmpty());
}

TEST_F(RunningActionTest, WhatTheAgentSaysByItselfIsKept)
{
    agent.push("appliance.progress", params("message", "fetching"));
    EXPECT_TRUE(eventually([&] { return words(*state).contains(u"fetching"_s); }));
}

} // namespace
