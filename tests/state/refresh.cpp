// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "statetest.h"

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

class Refresh : public StateTest {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(connectAndSettle()); }

    void refresh()
    {
        agent.clearLog();
        await(state->refresh());
    }

    /// "method id" for every request about one volume since the log was cleared.
    std::vector<std::string> askedAbout(std::string_view method) const
    {
        std::vector<std::string> ids;
        for (const FakeAgent::Request &request : agent.requests(method)) {
            ids.push_back(json::serialize(request.params));
        }
        return ids;
    }
};

TEST_F(Refresh, FillsEveryField)
{
    EXPECT_EQ(state->agentVersion(), u"2.1"_s);
    EXPECT_TRUE(state->authKnown());
    EXPECT_TRUE(state->signedIn());
    EXPECT_TRUE(state->engineRunning());
    EXPECT_EQ(state->mountOf(u"photos"_s), u"/home/u/Quillfen/photos"_s);
    EXPECT_EQ(state->volumes().size(), 2);
    EXPECT_EQ(str(state->account(), "plan"), u"pro"_s);
    EXPECT_EQ(state->statuses().size(), 2U);
    EXPECT_EQ(str(state->orphans().value(0), "container"), u"lost"_s);
    EXPECT_EQ(state->localAppliances().value(u"q-photos"_s), u"Up 3 hours"_s);
}

TEST_F(Refresh, AsksInOrderAndForTheVersionOnce)
{
    refresh();
    EXPECT_THAT(agent.log(), ElementsAre("auth.status", "vm.status", "mount.state", "volumes.list", "account",
                                         "volumes.status", "volumes.status", "recoveries.list_for_volume",
                                         "recoveries.list_for_volume", "appliance.orphans", "appliance.list"));
    EXPECT_THAT(askedAbout("volumes.status"), ElementsAre(R"({"volume_id":1})", R"({"volume_id":2})"));
    EXPECT_THAT(askedAbout("recoveries.list_for_volume"), ElementsAre(R"({"volume_id":1})", R"({"volume_id":2})"));
}

TEST_F(Refresh, TakesListsAsTheyCameWithoutACopy)
{
    refresh();
    // What was parsed lies in the memory of its own answer; a copy would lie in that of another, or in none.
    const auto memoryOf = [](const Record &record) { return record.storage().get(); };
    ASSERT_EQ(state->volumes().size(), 2);
    ASSERT_EQ(state->mounts().size(), 1);
    EXPECT_NE(memoryOf(state->volumes()[0]), json::storage_ptr().get());
    EXPECT_EQ(memoryOf(state->volumes()[0]), memoryOf(state->volumes()[1]));
    EXPECT_NE(memoryOf(state->volumes()[0]), memoryOf(state->mounts()[0]));
}

TEST_F(Refresh, AwaitsEachAnswerBeforeTheNextQuestion)
{
    agent.clearLog();
    agent.hold("vm.status");
    const QCoro::Task<> task = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("vm.status") == 1; }));
    QTest::qWait(30);
    EXPECT_THAT(agent.log(), ElementsAre("auth.status", "vm.status"));
    agent.release("vm.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
}

TEST_F(Refresh, AsksForTheVersionUntilThereIsOne)
{
    state->agentVersion = QString();
    agent.answer("agent.version", parsed(R"({"version":""})"));
    refresh();
    refresh();
    EXPECT_EQ(agent.count("agent.version"), 1U);
    agent.answer("agent.version", parsed(R"({"version":3})"));
    refresh();
    EXPECT_EQ(state->agentVersion(), u"3"_s);
    refresh();
    EXPECT_EQ(agent.count("agent.version"), 0U);
}

TEST_F(Refresh, StopsAfterTheMountsWhenSignedOut)
{
    agent.answer("auth.status", parsed(R"({"signed_in":"yes"})"));
    agent.answer("mount.state", parsed("[]"));
    refresh();
    EXPECT_THAT(agent.log(), ElementsAre("auth.status", "vm.status", "mount.state"));
    EXPECT_TRUE(state->mounts().isEmpty());
    EXPECT_EQ(state->volumes().size(), 2) << "what is not asked for keeps its last value";
    EXPECT_EQ(state->statuses().size(), 2U);
}

TEST_F(Refresh, StopsWhenSignedOutEvenIfTheMountsFail)
{
    agent.answer("auth.status", parsed("{}"));
    agent.fail("mount.state", {.message = "busy"});
    refresh();
    EXPECT_THAT(agent.log(), ElementsAre("auth.status", "vm.status", "mount.state"));
    EXPECT_EQ(state->mounts().size(), 1);
}

TEST_F(Refresh, AFailedCallLeavesItsFieldAndGoesOn)
{
    const std::vector<std::string> methods{"auth.status",    "vm.status",         "mount.state",
                                           "volumes.list",   "account",           "volumes.status",
                                           "appliance.list", "appliance.orphans", "recoveries.list_for_volume"};
    for (const std::string &method : methods) {
        agent.fail(method, {.code = -32603, .message = "internal"});
    }
    const std::uint64_t copies = state->readyCopies.version();
    refresh();
    EXPECT_EQ(agent.log().size(), 11U) << "every step was tried";
    EXPECT_TRUE(state->signedIn());
    EXPECT_TRUE(state->engineRunning());
    EXPECT_EQ(state->mounts().size(), 1);
    EXPECT_EQ(state->volumes().size(), 2);
    EXPECT_EQ(str(state->account(), "plan"), u"pro"_s);
    EXPECT_EQ(state->statuses().size(), 2U);
    EXPECT_EQ(state->orphans().size(), 1);
    EXPECT_EQ(state->localAppliances().size(), 1);
    EXPECT_EQ(state->readyCopies.version(), copies + 1);
    EXPECT_FALSE(state->toast());
    EXPECT_FALSE(state->agentError());
}

TEST_F(Refresh, WhoIsSignedInIsUnknownUntilAnAnswer)
{
    agent.fail("auth.status", {.message = "starting"});
    state->shutDown();
    state = AppState::create(quickTiming());
    connectAndSettle();
    EXPECT_FALSE(state->authKnown());
    agent.answer("auth.status", parsed("[]"));
    refresh();
    EXPECT_TRUE(state->authKnown());
    EXPECT_FALSE(state->signedIn());
}

TEST_F(Refresh, AnswersOfAnotherKindEmptyTheField)
{
    agent.answer("vm.status", parsed("[1]"));
    agent.answer("mount.state", parsed("{}"));
    agent.answer("volumes.list", parsed(R"([{"id":1},"odd"])"));
    agent.answer("account", parsed("7"));
    agent.answer("volumes.status", nullptr);
    refresh();
    EXPECT_TRUE(state->vm().empty());
    EXPECT_TRUE(state->mounts().isEmpty());
    ASSERT_EQ(state->volumes().size(), 2);
    EXPECT_TRUE(state->volumes()[1].empty());
    EXPECT_TRUE(state->account().empty());
    EXPECT_TRUE(state->statuses().at(1).empty());
    EXPECT_TRUE(state->statuses().contains(0)) << "a volume without an id counts as number 0";
}

TEST_F(Refresh, StatusesAreThoseOfTheListAtItsBeginning)
{
    agent.hold("volumes.status");
    agent.clearLog();
    const QCoro::Task<> task = state->refreshStatuses();
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.status") == 1; }));
    state->volumes = takeRecords(parsed(R"([{"id":8},{"id":9}])"));
    agent.release("volumes.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_THAT(askedAbout("volumes.status"), ElementsAre(R"({"volume_id":1})", R"({"volume_id":2})"));
}

TEST_F(Refresh, StatusesOfVolumesThatAreGoneStay)
{
    agent.answer("volumes.list", parsed(R"([{"id":2}])"));
    refresh();
    EXPECT_TRUE(state->statuses().contains(1));
}

TEST_F(Refresh, OneFailedStatusLeavesItsEntryOnly)
{
    agent.on("volumes.status", [](const json::object &request) -> FakeAgent::Answer {
        if (request.at("volume_id") == 1) {
            return FakeAgent::Error{.message = "appliance away"};
        }
        return parsed(R"({"appliance":{"online":false}})");
    });
    refresh();
    EXPECT_TRUE(isTrue(object(state->statuses().at(1), "appliance"), "online"));
    EXPECT_FALSE(isTrue(object(state->statuses().at(2), "appliance"), "online"));
}

TEST_F(Refresh, IdsSentAsTextAreAskedForAsNumbers)
{
    agent.answer("volumes.list", parsed(R"([{"id":"17"}])"));
    refresh();
    EXPECT_THAT(askedAbout("volumes.status"), ElementsAre(R"({"volume_id":17})"));
    EXPECT_TRUE(state->statuses().contains(17));
}

TEST_F(Refresh, CopiesAreListedWhenReadyAndWholeInVolumeOrder)
{
    agent.on("recoveries.list_for_volume", [](const json::object &request) -> FakeAgent::Answer {
        if (request.at("volume_id") == 1) {
            return parsed(R"({"recoveries":[{"name":"z","state":"ready"},
                                            {"name":"filling","state":"ready","hydration_pct":40},
                                            {"name":"full","state":"ready","hydration_pct":100},
                                            {"name":"b","state":"ready","hydration_pct":null,"source_name":"old"},
                                            {"name":"early","state":"Ready"},"odd",{}]})");
        }
        return parsed(R"({"recoveries":[{"name":"a","state":"ready"}]})");
    });
    const std::uint64_t before = state->readyCopies.version();
    refresh();
    std::vector<std::string> shown;
    for (const Record &copy : state->readyCopies()) {
        shown.push_back((str(copy, "name") + u" of "_s + str(copy, "source_name")).toStdString());
    }
    EXPECT_THAT(shown, ElementsAre("z of photos", "b of photos", "a of music"));
    EXPECT_EQ(state->readyCopies.version(), before + 1) << "assigned in one step";
}

TEST_F(Refresh, ACopyTakesItsSourcesNameAsItStands)
{
    agent.answer("volumes.list", parsed(R"([{"id":1,"name":5},{"id":2}])"));
    agent.answer("recoveries.list_for_volume",
                 parsed(R"({"recoveries":[{"state":"ready","source_name":"the agent's own"}]})"));
    refresh();
    ASSERT_EQ(state->readyCopies().size(), 2);
    EXPECT_EQ(state->readyCopies()[0].at("source_name"), 5);
    EXPECT_FALSE(state->readyCopies()[1].contains("source_name"));
}

TEST_F(Refresh, AVolumeWhoseCopiesFailIsLeftOut)
{
    agent.on("recoveries.list_for_volume", [](const json::object &request) -> FakeAgent::Answer {
        if (request.at("volume_id") == 1) {
            return FakeAgent::Error{.message = "no"};
        }
        return parsed(R"({"recoveries":[{"name":"a","state":"ready"}]})");
    });
    refresh();
    EXPECT_EQ(state->readyCopies().size(), 1);
    agent.answer("recoveries.list_for_volume", parsed("[]"));
    refresh();
    EXPECT_TRUE(state->readyCopies().isEmpty());
}

TEST_F(Refresh, WithoutVolumesThereAreNoCopiesAndNobodyIsAsked)
{
    state->readyCopies = takeRecords(parsed("[{}]"));
    agent.answer("volumes.list", parsed("[]"));
    refresh();
    EXPECT_TRUE(state->readyCopies().isEmpty());
    EXPECT_EQ(agent.count("recoveries.list_for_volume"), 0U);
}

TEST_F(Refresh, AStoppedEngineHasNoAppliancesAndKeepsItsOrphans)
{
    agent.answer("vm.status", parsed(R"({"status":"Stopped"})"));
    refresh();
    EXPECT_EQ(agent.count("appliance.orphans"), 0U);
    EXPECT_EQ(agent.count("appliance.list"), 0U);
    EXPECT_TRUE(state->localAppliances().isEmpty());
    EXPECT_EQ(state->orphans().size(), 1);
}

TEST_F(Refresh, AnEngineThatStopsBetweenTheLastTwoStepsEmptiesTheAppliances)
{
    agent.answer("appliance.orphans", parsed("[{},{}]"));
    agent.hold("appliance.orphans");
    agent.clearLog();
    const QCoro::Task<> task = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("appliance.orphans") == 1; }));
    state->event("vm.changed", parsed(R"({"status":"Stopping"})"));
    agent.release("appliance.orphans");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(agent.count("appliance.list"), 0U);
    EXPECT_EQ(state->orphans().size(), 2);
    EXPECT_TRUE(state->localAppliances().isEmpty());
}

TEST_F(Refresh, OfAppliancesOfOneNameTheLastCounts)
{
    agent.answer("appliance.list", parsed(R"([{"container":"a","status":"Exited"},{"container":"a","status":"Up"},
                                              {"status":"nameless"}])"));
    refresh();
    EXPECT_EQ(state->localAppliances().value(u"a"_s), u"Up"_s);
    EXPECT_EQ(state->localAppliances().value(QString()), u"nameless"_s);
    EXPECT_EQ(state->localAppliances().size(), 2);
}

TEST_F(Refresh, MayOverlapAndTheLastAnswerCounts)
{
    agent.hold("account");
    const QCoro::Task<> first = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("account") == 1; }));
    const QCoro::Task<> second = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("account") == 2; }));
    agent.answer("account", parsed(R"({"plan":"late"})"));
    agent.release("account");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(agent.count("appliance.list"), 2U);
}

TEST_F(Refresh, EndsWithTheConnectionAndTheNextOneBringsItsOwn)
{
    state->readyCopies = takeRecords(parsed(R"([{"name":"kept"}])"));
    agent.silent("recoveries.list_for_volume");
    agent.clearLog();
    const QCoro::Task<> task = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("recoveries.list_for_volume") == 1; }));
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(state->readyCopies().size(), 1) << "half a list is no answer";
    EXPECT_EQ(state->localAppliances().size(), 1);
    agent.answer("recoveries.list_for_volume", parsed("{}"));
    agent.clearLog();
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
    EXPECT_THAT(agent.log(),
                ElementsAre("auth.status", "vm.status", "mount.state", "volumes.list", "account", "volumes.status",
                            "volumes.status", "recoveries.list_for_volume", "recoveries.list_for_volume",
                            "appliance.orphans", "appliance.list", "events.subscribe"));
}

TEST_F(Refresh, AnAgentsOwnInternalErrorIsNoLoss)
{
    agent.on("recoveries.list_for_volume", [](const json::object &request) -> FakeAgent::Answer {
        if (request.at("volume_id") == 1) {
            return FakeAgent::Error{.code = RPCError::connectionClosed, .message = "the agent connection closed"};
        }
        return parsed(R"({"recoveries":[{"name":"a","state":"ready"}]})");
    });
    refresh();
    EXPECT_EQ(state->readyCopies().size(), 1) << "not even when it chooses the same words";
    EXPECT_EQ(agent.count("appliance.list"), 1U);
}

TEST_F(Refresh, WithoutAConnectionChangesNothingAndDoesNotDisturbTheNextOne)
{
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    const QCoro::Task<> task = state->refresh();
    agent.restart();
    agent.clearLog();
    state->connect(); // while the call that cannot succeed is still to be told so
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(state->readyCopies().size(), 0);
    EXPECT_EQ(state->volumes().size(), 2);
    EXPECT_EQ(state->localAppliances().size(), 1);
}

TEST_F(Refresh, ALostConnectionInTheFirstStepAsksForNothingMore)
{
    agent.silent("auth.status");
    agent.clearLog();
    const QCoro::Task<> task = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady() && !state->connected(); }));
    EXPECT_THAT(agent.log(), ElementsAre("auth.status"));
    EXPECT_TRUE(state->signedIn()) << "the last known values stay";
}

} // namespace
