// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "statetest.h"

#include <QDir>
#include <QElapsedTimer>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

TEST(TheIntervals, AreThoseOfTheProduct)
{
    const Timing timing;
    EXPECT_EQ(timing.retryDelay, 2s);
    EXPECT_EQ(timing.refreshInterval, 15s);
    EXPECT_EQ(timing.toastDuration, 8s);
    EXPECT_EQ(timing.mountRetryDelay, 5s);
}

class Connecting : public StateTest {
protected:
    /// How often a failed connection was told since `before`: each attempt assigns the text once.
    [[nodiscard]] std::uint64_t attemptsSince(std::uint64_t before) const
    {
        return state->agentError.version() - before;
    }
};

TEST_F(Connecting, ANewStateIsEmptyAndDoesNotConnect)
{
    QTest::qWait(20);
    EXPECT_EQ(agent.clients(), 0U);
    EXPECT_FALSE(state->connected());
    EXPECT_FALSE(state->agentError());
    EXPECT_FALSE(state->authKnown());
    EXPECT_FALSE(state->signedIn());
    EXPECT_FALSE(state->engineRunning());
    EXPECT_FALSE(state->selectedVolume());
    EXPECT_FALSE(state->toast());
    EXPECT_TRUE(state->agentVersion().isEmpty());
    EXPECT_TRUE(state->volumes().isEmpty());
}

TEST_F(Connecting, RefreshesThenSubscribes)
{
    state->connect();
    EXPECT_TRUE(state->connected());
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
    EXPECT_THAT(agent.log(),
                ElementsAre("agent.version", "auth.status", "vm.status", "mount.state", "volumes.list", "account",
                            "volumes.status", "volumes.status", "recoveries.list_for_volume",
                            "recoveries.list_for_volume", "appliance.orphans", "appliance.list", "events.subscribe"));
    EXPECT_EQ(agent.requests("events.subscribe").front().line.find("params"), std::string::npos);
}

TEST_F(Connecting, ASubscriptionThatFailsIsSwallowed)
{
    agent.fail("events.subscribe", {.code = 7, .message = "no events today"});
    connectAndSettle();
    EXPECT_TRUE(state->connected());
    EXPECT_FALSE(state->agentError());
    EXPECT_FALSE(state->toast());
}

TEST_F(Connecting, AMissingAgentIsTriedAgainAtEachDelay)
{
    agent.stop();
    const std::uint64_t before = state->agentError.version();
    QElapsedTimer passed;
    passed.start();
    state->connect();
    EXPECT_FALSE(state->connected());
    EXPECT_EQ(state->agentError(),
              u"the Quillfen agent is not running (%1)"_s.arg(QString::fromStdString(agent.path())));
    EXPECT_EQ(attemptsSince(before), 1U);
    ASSERT_TRUE(eventually([&] { return attemptsSince(before) == 4; }));
    EXPECT_GE(passed.elapsed(), 3 * 95) << "four attempts, three pauses";
}

TEST_F(Connecting, OneAttemptIsPendingHoweverOftenItFails)
{
    agent.stop();
    state->connect();
    state->connect();
    state->connect();
    const std::uint64_t before = state->agentError.version();
    QElapsedTimer passed;
    passed.start();
    ASSERT_TRUE(eventually([&] { return attemptsSince(before) == 3; }));
    EXPECT_GE(passed.elapsed(), 3 * 95);
}

TEST_F(Connecting, FindsAnAgentThatComesLater)
{
    agent.stop();
    state->connect();
    agent.restart();
    ASSERT_TRUE(eventually([&] { return state->connected(); }));
    EXPECT_FALSE(state->agentError());
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
}

TEST_F(Connecting, TwiceMakesOneConnection)
{
    connectAndSettle();
    state->connect();
    settle();
    EXPECT_TRUE(state->connected());
    EXPECT_EQ(agent.clients(), 1U);
    EXPECT_THAT(agent.log(), ElementsAre("test.settle"));
}

TEST_F(Connecting, ALostAgentFailsWhoWaitsThenShowsAndIsFoundAgain)
{
    connectAndSettle();
    agent.silent("slow");
    std::vector<std::string> log;
    const auto slow = [&]() -> QCoro::Task<> {
        const json::object none;
        try {
            co_await state->rpc().call("slow", none, 60s);
        } catch (const RPCError &error) {
            log.push_back("call: " + error.message.toStdString());
        }
    };
    const Observer observer(
        {&state->connected, &state->agentError},
        [&] {
            const QString error = state->agentError().value_or(u"none"_s);
            log.push_back((state->connected() ? "connected: " : "down: ") + error.toStdString());
        },
        0ms);
    const QCoro::Task<> task = slow();
    ASSERT_TRUE(eventually([&] { return agent.count("slow") == 1; }));
    QElapsedTimer passed;
    passed.start();
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_GE(passed.elapsed(), 95);
    EXPECT_THAT(
        log, ElementsAre("call: the agent connection closed", "down: the agent connection closed", "connected: none"));
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
    EXPECT_EQ(agent.count("agent.version"), 0U) << "known already";
}

TEST_F(Connecting, ShutDownFailsWhoWaitsAndIsFinal)
{
    connectAndSettle();
    agent.silent("slow");
    std::string outcome;
    const auto slow = [&]() -> QCoro::Task<> {
        const json::object none;
        try {
            co_await state->rpc().call("slow", none, 60s);
        } catch (const RPCError &error) {
            outcome = error.message.toStdString();
        }
    };
    const QCoro::Task<> task = slow();
    ASSERT_TRUE(eventually([&] { return agent.count("slow") == 1; }));
    state->shutDown();
    EXPECT_EQ(outcome, "the agent connection closed");
    QTest::qWait(300);
    state->connect();
    EXPECT_FALSE(state->connected());
    EXPECT_EQ(agent.clients(), 0U);
}

TEST_F(Connecting, ShutDownDuringARefreshReleasesTheState)
{
    agent.silent("account");
    state->connect();
    ASSERT_TRUE(eventually([&] { return agent.count("account") == 1; }));
    const std::weak_ptr<AppState> weak = state;
    state->shutDown();
    state.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(Connecting, AReleasedStateLivesUntilItsCallIsAnswered)
{
    connectAndSettle();
    agent.hold("auth.status");
    agent.answer("auth.status", parsed(R"({"signed_in":false})"));
    const QCoro::Task<> task = state->refresh();
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    const std::weak_ptr<AppState> weak = state;
    state.reset();
    QTest::qWait(20);
    EXPECT_FALSE(weak.expired());
    agent.release("auth.status");
    EXPECT_TRUE(eventually([&] { return weak.expired(); }));
}

TEST_F(Connecting, NothingRevivesAReleasedState)
{
    connectAndSettle();
    state->show(u"soon gone"_s);
    agent.push("auth.changed", parsed("{}"));
    agent.push("volumes.changed", parsed("[{}]"));
    const std::weak_ptr<AppState> weak = state;
    state.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_TRUE(eventually([&] { return agent.clients() == 0; }));
    QTest::qWait(200);
}

TEST_F(Connecting, ANoticeDoesNotKeepAStateThatIsShutDown)
{
    connectAndSettle();
    state->show(u"goodbye"_s);
    const std::weak_ptr<AppState> weak = state;
    state->shutDown();
    state.reset();
    EXPECT_TRUE(weak.expired());
    QTest::qWait(200); // the notice's timer finds nobody
}

TEST(AppVersion, IsDevWhenTheProgramWasBuiltWithoutOne)
{
    EXPECT_EQ(AppState::versionOrDev(u"1.2.3"_s), u"1.2.3"_s);
    EXPECT_EQ(AppState::versionOrDev(u""_s), u"dev"_s);
    EXPECT_EQ(AppState::versionOrDev(QString()), u"dev"_s);
    EXPECT_FALSE(AppState::appVersion().isEmpty());
}

class Ticking : public StateTest {
protected:
    static Timing ticking()
    {
        Timing timing = quickTiming();
        timing.refreshInterval = 30ms;
        return timing;
    }
    Ticking() : StateTest(ticking()) {}

    /// Nothing is asked in the time of several ticks.
    bool holdsStill()
    {
        settle();
        agent.clearLog();
        QTest::qWait(150);
        return agent.log().empty();
    }

    bool refreshesAgainAndAgain()
    {
        agent.clearLog();
        return eventually([&] { return agent.count("auth.status") >= 3; });
    }
};

TEST_F(Ticking, RefreshesAgainAndAgain)
{
    connectAndSettle();
    EXPECT_TRUE(refreshesAgainAndAgain());
    EXPECT_EQ(agent.count("events.subscribe"), 0U) << "once a connection";
}

TEST_F(Ticking, HoldsStillWhileBusy)
{
    state->busy = true;
    connectAndSettle();
    EXPECT_TRUE(holdsStill());
    state->busy = false;
    EXPECT_TRUE(refreshesAgainAndAgain());
}

TEST_F(Ticking, HoldsStillWhileSignedOut)
{
    agent.answer("auth.status", parsed(R"({"signed_in":false})"));
    connectAndSettle();
    EXPECT_TRUE(holdsStill());
    agent.answer("auth.status", parsed(R"({"signed_in":true})"));
    agent.push("auth.changed", parsed(R"({"signed_in":true})"));
    EXPECT_TRUE(refreshesAgainAndAgain());
}

TEST_F(Ticking, HoldsStillWithoutAConnection)
{
    Timing timing = ticking();
    timing.retryDelay = 1h;
    state->shutDown();
    state = AppState::create(timing);
    connectAndSettle();
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    const std::uint64_t before = state->auth.version();
    agent.clearLog();
    QTest::qWait(150);
    EXPECT_TRUE(agent.log().empty());
    EXPECT_EQ(state->auth.version(), before);
}

class Events : public StateTest {};

TEST_F(Events, ReplaceTheFieldTheyName)
{
    state->event("auth.changed", parsed(R"({"signed_in":true,"tenant":"t"})"));
    EXPECT_TRUE(state->signedIn());
    state->event("vm.changed", parsed(R"({"status":"Running"})"));
    EXPECT_TRUE(state->engineRunning());
    state->event("mount.changed", parsed(R"([{"name":"a","mountpoint":"/a"},5])"));
    ASSERT_EQ(state->mounts().size(), 2);
    EXPECT_TRUE(state->mounts()[1].empty());
    state->event("volumes.changed", parsed(R"([{"id":1},"x",{"id":3}])"));
    ASSERT_EQ(state->volumes().size(), 3);
    EXPECT_EQ(num(state->volumes()[2], "id"), 3);
}

TEST_F(Events, OfAnotherKindEmptyTheField)
{
    state->event("auth.changed", parsed(R"({"signed_in":true})"));
    state->event("auth.changed", json::value());
    EXPECT_FALSE(state->signedIn());
    EXPECT_TRUE(state->auth().empty());
    state->event("vm.changed", parsed(R"({"status":"Running"})"));
    state->event("vm.changed", std::nullopt);
    EXPECT_TRUE(state->vm().empty());
    state->event("volumes.changed", parsed("[{}]"));
    state->event("volumes.changed", parsed(R"({"id":1})"));
    EXPECT_TRUE(state->volumes().isEmpty());
    state->event("mount.changed", parsed("[{}]"));
    state->event("mount.changed", std::nullopt);
    EXPECT_TRUE(state->mounts().isEmpty());
}

TEST_F(Events, OfProgressShowTheirMessage)
{
    state->event("vm.progress", parsed(R"({"message":"downloading · 3 of 7"})"));
    EXPECT_EQ(state->toast(), u"downloading · 3 of 7"_s);
    state->event("appliance.progress", parsed(R"({"message":42})"));
    EXPECT_EQ(state->toast(), u"42"_s);
    state->event("appliance.progress", parsed(R"(["message"])"));
    EXPECT_EQ(state->toast(), QString());
    state->event("vm.progress", std::nullopt);
    EXPECT_EQ(state->toast(), QString());
}

TEST_F(Events, OfOtherNamesAreIgnored)
{
    for (const char *const name : {"auth.changed ", "Auth.changed", "", "volumes.removed"}) {
        state->event(name, parsed(R"({"signed_in":true,"message":"x"})"));
    }
    EXPECT_TRUE(state->auth().empty());
    EXPECT_FALSE(state->toast());
}

TEST_F(Events, ReachTheStateOverTheWireInOrderAndAskForNothing)
{
    connectAndSettle();
    agent.push("vm.changed", parsed(R"({"status":"Stopped"})"));
    agent.push("vm.changed", parsed(R"({"status":"running"})"));
    agent.push("volumes.changed", parsed(R"([{"id":9}])"));
    settle();
    EXPECT_EQ(str(state->vm(), "status"), u"running"_s);
    EXPECT_FALSE(state->engineRunning()) << "case matters";
    ASSERT_EQ(state->volumes().size(), 1);
    EXPECT_THAT(agent.log(), ElementsAre("test.settle"));
}

class Toast : public StateTest {
protected:
    static Timing slow()
    {
        Timing timing = quickTiming();
        timing.toastDuration = 500ms;
        return timing;
    }
    Toast() : StateTest(slow()) {}

    /// What the toast says this much later. (Timers that are due together run in the order of their times, so that a
    /// machine under load reads the same.)
    void noteIn(std::chrono::milliseconds delay)
    {
        QTimer::singleShot(delay, Qt::PreciseTimer, &m_context,
                           [this] { m_notes.push_back(state->toast().value_or(u"none"_s).toStdString()); });
    }

    QObject m_context;
    std::vector<std::string> m_notes;
};

TEST_F(Toast, GoesAfterItsTime)
{
    noteIn(490ms);
    state->show(u"done"_s);
    noteIn(510ms);
    EXPECT_EQ(state->toast(), u"done"_s);
    ASSERT_TRUE(eventually([&] { return m_notes.size() == 2; }));
    EXPECT_THAT(m_notes, ElementsAre("done", "none"));
}

TEST_F(Toast, ANewerOneLivesItsOwnFullTime)
{
    state->show(u"first"_s);
    noteIn(510ms);
    QTest::qWait(50);
    noteIn(490ms);
    state->show(u"second"_s);
    noteIn(510ms);
    ASSERT_TRUE(eventually([&] { return m_notes.size() == 3; }));
    EXPECT_THAT(m_notes, ElementsAre("second", "second", "none")) << "the first one's end leaves it alone";
}

TEST_F(Toast, TheSameTextGoesWithItsFirstShowing)
{
    state->show(u"same"_s);
    noteIn(510ms);
    QTest::qWait(50);
    state->show(u"same"_s);
    ASSERT_TRUE(eventually([&] { return m_notes.size() == 1; }));
    EXPECT_THAT(m_notes, ElementsAre("none"));
}

class Identity : public StateTest {};

TEST_F(Identity, SignInAndOperatorCountOnlyAsBooleans)
{
    state->auth = params("signed_in", "true", "is_admin", 1);
    EXPECT_FALSE(state->signedIn());
    EXPECT_FALSE(state->isAdmin());
    state->auth = params("signed_in", true, "is_admin", true);
    EXPECT_TRUE(state->signedIn());
    EXPECT_TRUE(state->isAdmin());
}

TEST_F(Identity, TheKeyFileCarriesTheKeysNameOrTheVolumes)
{
    const QString folder = QDir::homePath() + u"/.quill/"_s;
    EXPECT_EQ(AppState::keyPath(params("name", "photos")), folder + u"quill-photos.key"_s);
    EXPECT_EQ(AppState::keyPath(params("name", "photos", "key_volume", "")), folder + u"quill-photos.key"_s);
    EXPECT_EQ(AppState::keyPath(params("name", "photos", "key_volume", "albums")), folder + u"quill-albums.key"_s);
    EXPECT_EQ(AppState::keyPath(params("key_volume", 12)), folder + u"quill-12.key"_s);
}

TEST_F(Identity, TheVersionIsTheBuilds)
{
    EXPECT_THAT(AppState::appVersion().toStdString(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+|dev"));
}

} // namespace
