// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelmodel.h"

#include "../volumes/boardtest.h"

#include "state/userlocale.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto second = "2026-03-04T05:06:07Z";
const PastVolume photos{1, u"photos"_s};
const PastVolume music{2, u"music"_s};

json::object points(std::initializer_list<const char *> times)
{
    json::array list;
    for (const char *time : times) {
        list.push_back(params("timestamp", time));
    }
    return params("recovery_points", list);
}

json::object viewNamed(const char *name)
{
    return params("name", name, "open", true, "point_in_time", second);
}

class TimeTravelModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        agent.answer("volumes.views", params("views", json::array()));
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
        model = std::make_shared<TimeTravelModel>(state);
    }

    /// Three calls, in this order, make a load.
    [[nodiscard]] static std::vector<std::string> load()
    {
        return {"restore_points.list", "volumes.views", "recoveries.list_for_volume"};
    }

    /// The methods called since the last look.
    [[nodiscard]] std::vector<std::string> called()
    {
        std::vector<std::string> log = agent.log();
        agent.clearLog();
        return log;
    }

    /// Whether `log` is `method`, then with `refreshed` the whole state, then a load.
    void expectSequence(const std::string &method, bool refreshed)
    {
        const std::vector<std::string> log = called();
        ASSERT_GE(log.size(), 4U);
        EXPECT_EQ(log.front(), method);
        EXPECT_EQ(std::vector<std::string>(log.end() - 3, log.end()), load());
        EXPECT_EQ(std::ranges::count(log, "volumes.list"), refreshed ? 1 : 0);
    }

    std::shared_ptr<TimeTravelModel> model;
};

TEST_F(TimeTravelModelTest, BeginsAnHourAgo)
{
    const Instant moment = now();
    const ClockOverride clock([moment] { return moment; });
    EXPECT_EQ(TimeTravelModel(state).at(), moment - 1h);
}

TEST_F(TimeTravelModelTest, WorksOnTheFirstVolumeUntilOneIsChosen)
{
    EXPECT_EQ(model->volume(), photos);
    model->volumeId = 2;
    EXPECT_EQ(model->volume(), music);
    model->volumeId = 99;
    EXPECT_EQ(model->volume(), photos) << "a volume that is gone";
}

TEST_F(TimeTravelModelTest, WithoutVolumesNothingIsAsked)
{
    give({});
    EXPECT_EQ(model->volume(), std::nullopt);
    await(model->load());
    EXPECT_THAT(called(), IsEmpty());
    EXPECT_FALSE(model->loading());
}

TEST_F(TimeTravelModelTest, LoadsThreeListsOneAfterTheOther)
{
    agent.answer("restore_points.list", points({"2026-03-04T05:06:07Z", "2026-03-01T05:06:07Z"}));
    agent.answer("volumes.views", params("views", json::array({viewNamed("v1")})));
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({params("id", 7)})));
    model->volumeId = 2;
    const QCoro::Task<> task = model->load();
    EXPECT_TRUE(model->loading());
    await(task);
    EXPECT_EQ(called(), load());
    EXPECT_FALSE(model->loading());
    EXPECT_EQ(model->points().size(), 2U);
    EXPECT_EQ(model->points().timestamp(0), u"2026-03-01T05:06:07Z"_s);
    EXPECT_EQ(model->views().size(), 1);
    EXPECT_EQ(model->recoveries().size(), 1);
    EXPECT_EQ(model->loadedVolume(), music);
}

TEST_F(TimeTravelModelTest, AsksForTheVolumeThatIsShown)
{
    model->volumeId = 2;
    await(model->load());
    for (const std::string &method : load()) {
        EXPECT_EQ(sent(method), params("volume_id", 2)) << method;
    }
}

TEST_F(TimeTravelModelTest, ViewsMayComeAsABareList)
{
    agent.answer("volumes.views", json::array({viewNamed("v1"), viewNamed("v2")}));
    await(model->load());
    EXPECT_EQ(model->views().size(), 2);
}

TEST_F(TimeTravelModelTest, AListThatCannotBeReadIsEmptyAndNobodyIsTold)
{
    agent.answer("restore_points.list", points({second}));
    agent.answer("volumes.views", json::array({viewNamed("v1")}));
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({params("id", 7)})));
    await(model->load());
    for (const std::string &method : load()) {
        agent.fail(method, {.message = "vault away"});
    }
    await(model->load());
    EXPECT_EQ(toast(), QString());
    EXPECT_TRUE(model->points().isEmpty());
    EXPECT_THAT(model->views(), IsEmpty());
    EXPECT_THAT(model->recoveries(), IsEmpty());
    EXPECT_EQ(agent.count("recoveries.list_for_volume"), 2U) << "one failure does not stop the next list";
}

TEST_F(TimeTravelModelTest, OneListsFailureLeavesTheOthersAlone)
{
    agent.answer("restore_points.list", points({second}));
    agent.fail("volumes.views", {.message = "vault away"});
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({params("id", 7)})));
    await(model->load());
    EXPECT_EQ(model->points().size(), 1U);
    EXPECT_THAT(model->views(), IsEmpty());
    EXPECT_EQ(model->recoveries().size(), 1);
}

TEST_F(TimeTravelModelTest, OddAnswersAreEmptyLists)
{
    for (const json::value &odd : {json::value(nullptr), json::value(5), json::value("text"),
                                   json::value(json::object{{"views", 5}, {"recoveries", "x"}, {"points", 1}})}) {
        for (const std::string &method : load()) {
            agent.answer(method, odd);
        }
        await(model->load());
        EXPECT_TRUE(model->points().isEmpty());
        EXPECT_THAT(model->views(), IsEmpty());
        EXPECT_THAT(model->recoveries(), IsEmpty());
    }
}

TEST_F(TimeTravelModelTest, LateAnswersForAnotherVolumeAreDropped)
{
    agent.on("restore_points.list", [](const json::object &asked) -> FakeAgent::Answer {
        return asked == params("volume_id", 1) ? points({second, second, second}) : points({second});
    });
    agent.hold("restore_points.list");
    const QCoro::Task<> first = model->load();
    model->volumeId = 2;
    const QCoro::Task<> other = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("restore_points.list") == 2; }));
    agent.release("restore_points.list");
    await(first);
    await(other);
    EXPECT_EQ(model->points().size(), 1U);
    EXPECT_EQ(agent.count("volumes.views"), 1U) << "a load that is over asks for nothing more";
    EXPECT_FALSE(model->loading());
}

TEST_F(TimeTravelModelTest, TheListsOfOneVolumeNeverStandAtAnother)
{
    agent.answer("restore_points.list", points({second}));
    agent.answer("volumes.views", json::array({viewNamed("v1")}));
    await(model->load());
    agent.hold("restore_points.list");
    model->volumeId = 2;
    const QCoro::Task<> task = model->load();
    EXPECT_TRUE(model->points().isEmpty());
    EXPECT_THAT(model->views(), IsEmpty());
    agent.release("restore_points.list");
    await(task);
}

TEST_F(TimeTravelModelTest, TheSameVolumesListsStayWhileTheyAreReadAgain)
{
    agent.answer("restore_points.list", points({second}));
    await(model->load());
    agent.hold("restore_points.list");
    const QCoro::Task<> task = model->load();
    EXPECT_EQ(model->points().size(), 1U);
    agent.release("restore_points.list");
    await(task);
}

TEST_F(TimeTravelModelTest, OpensASecondReadOnly)
{
    agent.answer("views.open", params("mounted", true, "mountpoint", "/mnt/v1"));
    agent.hold("views.open");
    const QCoro::Task<> task = model->openView(photos, QString::fromLatin1(second), std::nullopt);
    EXPECT_EQ(toast(), u"Opening photos as it was at Wed, Mar 4 · 05:06:07"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("views.open") == 1; }));
    agent.release("views.open");
    await(task);
    EXPECT_EQ(sent("views.open"), params("volume_id", 1, "timestamp", second));
    EXPECT_EQ(toast(), u"The view is mounted at /mnt/v1 (read-only)."_s);
    expectSequence("views.open", true);
}

TEST_F(TimeTravelModelTest, OpensAgainUnderTheOldName)
{
    agent.answer("views.open", json::object());
    await(model->openView(photos, QString::fromLatin1(second), u"v1"_s));
    EXPECT_EQ(sent("views.open"), params("volume_id", 1, "timestamp", second, "name", "v1"));
    EXPECT_EQ(toast(), u"The view is open."_s);
}

TEST_F(TimeTravelModelTest, ASecondThatIsThereTwiceIsNamedInTheNotice)
{
    const LocaleOverride berlin("en_US", "Europe/Berlin");
    agent.answer("views.open", json::object());
    agent.hold("views.open");
    const QCoro::Task<> task = model->openView(photos, u"2026-10-25T00:30:00Z"_s, std::nullopt);
    EXPECT_TRUE(toast().startsWith(u"Opening photos as it was at Sun, Oct 25 · 02:30:00 "_s)) << toast().toStdString();
    agent.release("views.open");
    await(task);
}

TEST_F(TimeTravelModelTest, AViewThatCannotBeOpenedIsToldAndTheBoardReadAgain)
{
    agent.fail("views.open", {.message = "no such second"});
    await(model->openView(photos, QString::fromLatin1(second), std::nullopt));
    EXPECT_EQ(toast(), u"no such second"_s);
    expectSequence("views.open", false);
}

TEST_F(TimeTravelModelTest, ReleasesAView)
{
    agent.answer("views.close", nullptr);
    await(model->releaseView(photos, u"v1"_s));
    EXPECT_EQ(sent("views.close"), params("volume_id", 1, "name", "v1"));
    EXPECT_EQ(toast(), u"released v1"_s);
    expectSequence("views.close", true);
}

TEST_F(TimeTravelModelTest, MountsAView)
{
    agent.answer("mount.attach", nullptr);
    await(model->mountView(photos, u"v1"_s));
    EXPECT_EQ(sent("mount.attach"), params("volume_id", 1, "view", "v1"));
    EXPECT_EQ(toast(), u"view v1 mounted"_s);
    expectSequence("mount.attach", true);
}

TEST_F(TimeTravelModelTest, WhatHappensToAViewIsReadAfreshAlsoAfterAFailure)
{
    agent.fail("views.close", {.message = "still in use"});
    await(model->releaseView(photos, u"v1"_s));
    EXPECT_EQ(toast(), u"still in use"_s);
    expectSequence("views.close", true);
    agent.fail("mount.attach", {.message = "no room"});
    await(model->mountView(photos, u"v1"_s));
    EXPECT_EQ(toast(), u"no room"_s);
    expectSequence("mount.attach", true);
}

TEST_F(TimeTravelModelTest, PreparesANewVolume)
{
    agent.answer("restore.start", nullptr);
    await(model->newVolume(photos, QString::fromLatin1(second), u"photos-old"_s));
    EXPECT_EQ(sent("restore.start"), params("volume_id", 1, "timestamp", second, "recovery_name", "photos-old"));
    EXPECT_EQ(toast(),
              u"Preparing photos-old. Watch it under New volumes in the making on this board; when it is fully "
              "copied, Make it a volume (also offered on the Volumes board)."_s);
    expectSequence("restore.start", false);
    agent.fail("restore.start", {.message = "That name is taken."});
    await(model->newVolume(photos, QString::fromLatin1(second), QString()));
    EXPECT_EQ(sent("restore.start"), params("volume_id", 1, "timestamp", second, "recovery_name", ""));
    EXPECT_EQ(toast(), u"That name is taken."_s);
    expectSequence("restore.start", false);
}

TEST_F(TimeTravelModelTest, MakesARecoveryAVolume)
{
    agent.answer("recovery.promote", nullptr);
    await(model->promote(7, u"fresh"_s));
    EXPECT_EQ(sent("recovery.promote"), params("recovery_id", 7, "new_name", "fresh"));
    EXPECT_EQ(toast(), u"fresh is a volume now; click Mount on it under Volumes to start it on this Mac."_s);
    expectSequence("recovery.promote", true);
    agent.fail("recovery.promote", {.message = "That name is taken."});
    await(model->promote(7, u"fresh"_s));
    EXPECT_EQ(toast(), u"That name is taken."_s);
    expectSequence("recovery.promote", false);
}

TEST_F(TimeTravelModelTest, DiscardsARecovery)
{
    agent.answer("recovery.delete", nullptr);
    await(model->discard(7));
    EXPECT_EQ(sent("recovery.delete"), params("recovery_id", 7));
    EXPECT_EQ(toast(), u"discarded"_s);
    expectSequence("recovery.delete", false);
    agent.fail("recovery.delete", {.message = "gone already"});
    await(model->discard(7));
    EXPECT_EQ(toast(), u"gone already"_s);
    expectSequence("recovery.delete", false);
}

TEST_F(TimeTravelModelTest, CopiesAreWatchedWhileTheyFillUp)
{
    const auto copyOf = [](const json::value &percent) {
        const json::object copy =
            params("id", 7, "state", percent.is_null() ? "ready" : "hydrating", "hydration_pct", percent);
        return params("recoveries", json::array({copy}));
    };
    await(model->watchCopies());
    EXPECT_THAT(called(), IsEmpty()) << "nothing was loaded yet";
    agent.answer("recoveries.list_for_volume", copyOf(10));
    await(model->load());
    agent.clearLog();
    agent.answer("recoveries.list_for_volume", copyOf(90));
    await(model->watchCopies());
    EXPECT_THAT(called(), ElementsAre("recoveries.list_for_volume"));
    EXPECT_EQ(num(model->recoveries().constFirst(), "hydration_pct"), 90);
    agent.fail("recoveries.list_for_volume", {.message = "vault away"});
    await(model->watchCopies());
    EXPECT_EQ(model->recoveries().size(), 1) << "nobody asked: what is shown stays";
    agent.answer("recoveries.list_for_volume", copyOf(nullptr));
    await(model->watchCopies());
    agent.clearLog();
    await(model->watchCopies());
    EXPECT_THAT(called(), IsEmpty()) << "it is whole";
    agent.answer("recoveries.list_for_volume",
                 params("recoveries", json::array({params("id", 7, "state", "ready", "hydration_pct", 100)})));
    await(model->load());
    agent.clearLog();
    await(model->watchCopies());
    EXPECT_THAT(called(), IsEmpty()) << "whole, with its percentage";
}

struct Operation {
    const char *method;
    std::function<QCoro::Task<>(TimeTravelModel &)> begin;
};

void PrintTo(const Operation &operation, std::ostream *out)
{
    *out << operation.method;
}

class TimeTravelLosses : public TimeTravelModelTest, public testing::WithParamInterface<Operation> {};

TEST_P(TimeTravelLosses, TheAgentGoesAwayMeanwhile)
{
    const auto &[method, begin] = GetParam();
    agent.silent(method);
    const QCoro::Task<> task = begin(*model);
    ASSERT_TRUE(eventually([&, &name = method] { return agent.count(name) == 1; }));
    agent.stop();
    await(task);
    EXPECT_EQ(toast(), u"the agent connection closed"_s);
    EXPECT_FALSE(model->loading());
    agent.restart();
    agent.answer(method, json::object());
    state->connect();
    await(begin(*model));
    EXPECT_NE(toast(), u"the agent connection closed"_s) << "it works again";
}

INSTANTIATE_TEST_SUITE_P(
    Actions, TimeTravelLosses,
    testing::Values(
        Operation{"views.open", [](TimeTravelModel &m) { return m.openView(photos, u"2026-03-04T05:06:07Z"_s, {}); }},
        Operation{"views.close", [](TimeTravelModel &m) { return m.releaseView(photos, u"v1"_s); }},
        Operation{"mount.attach", [](TimeTravelModel &m) { return m.mountView(photos, u"v1"_s); }},
        Operation{"restore.start",
                  [](TimeTravelModel &m) { return m.newVolume(photos, u"2026-03-04T05:06:07Z"_s, u"x"_s); }},
        Operation{"recovery.promote", [](TimeTravelModel &m) { return m.promote(7, u"x"_s); }},
        Operation{"recovery.delete", [](TimeTravelModel &m) { return m.discard(7); }}),
    [](const auto &each) {
        std::string name = each.param.method;
        std::ranges::replace(name, '.', '_');
        return name;
    });

} // namespace
