// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "statetest.h"

#include "state/userlocale.h"
#include "ui/theme.h"

#include <limits>
#include <random>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using Kind = OffsiteState::Kind;

namespace {

constexpr std::int64_t gib = 1'073'741'824;

class Derived : public testing::Test {
protected:
    void setVolumes(std::string_view list) { state->volumes = takeRecords(parsed(list)); }
    void setStatus(std::int64_t id, std::string_view status)
    {
        state->statuses.update([&](auto &all) { all[id] = parsed(status).as_object(); });
    }

    OffsiteState offsiteFor(std::string_view status)
    {
        setStatus(7, status);
        return state->offsiteState(params("id", 7));
    }

    LocaleOverride m_locale{"en_US"};
    std::shared_ptr<AppState> state = AppState::create();
};

TEST_F(Derived, PlanNameIsThePlanCapitalised)
{
    state->account = params("plan", "pro");
    EXPECT_EQ(state->planName(), u"Pro plan"_s);
    state->account = params("plan", "FAMILY plus");
    EXPECT_EQ(state->planName(), u"Family Plus plan"_s);
}

TEST_F(Derived, PlanNameFallsBackToATenantThatIsNoAddress)
{
    EXPECT_EQ(state->planName(), u"Your plan"_s);
    state->auth = params("tenant", "acme Labs");
    EXPECT_EQ(state->planName(), u"acme Labs"_s);
    state->auth = params("tenant", "me@example.org");
    EXPECT_EQ(state->planName(), u"Your plan"_s);
}

TEST_F(Derived, CapacityIsWhatWasPurchased)
{
    EXPECT_EQ(state->capacityBytes(), 0);
    state->auth = params("purchased_capacity_bytes", "5");
    EXPECT_EQ(state->capacityBytes(), 5);
    state->account = params("capacity_gb", 1.5);
    EXPECT_EQ(state->capacityBytes(), 1'610'612'736);
    state->account = params("capacity_gb", 2, "purchased_capacity_bytes", 0);
    EXPECT_EQ(state->capacityBytes(), 2 * gib);
    state->account = params("capacity_gb", 0);
    EXPECT_EQ(state->capacityBytes(), 0) << "zero is a number too";
    state->account = params("capacity_gb", "2");
    EXPECT_EQ(state->capacityBytes(), 5) << "a text is not";
    state->account = params("capacity_gb", 2, "purchased_capacity_bytes", 7);
    EXPECT_EQ(state->capacityBytes(), 7);
    state->account = params("capacity_gb", 1e300);
    EXPECT_EQ(state->capacityBytes(), std::numeric_limits<std::int64_t>::max());
}

TEST_F(Derived, AllocatedIsTheSumOfTheSizes)
{
    EXPECT_EQ(state->allocatedBytes(), 0);
    setVolumes(R"([{"size_bytes":5},{"size_bytes":"7"},{},{"size_bytes":0.9}])");
    EXPECT_EQ(state->allocatedBytes(), 12);
    setVolumes(R"([{"size_bytes":9223372036854775807},{"size_bytes":1}])");
    EXPECT_EQ(state->allocatedBytes(), std::numeric_limits<std::int64_t>::max());
    state->volumes = Records();
    EXPECT_EQ(state->allocatedBytes(), 0);
}

TEST_F(Derived, OffsiteIsUnknownWithoutAStatus)
{
    for (const OffsiteState &offsite : {state->offsiteState(params("id", 1)), offsiteFor("{}")}) {
        EXPECT_EQ(offsite.label, u"…"_s);
        EXPECT_EQ(offsite.kind, Kind::Unknown);
        EXPECT_EQ(offsite.colour, Theme::muted);
        EXPECT_FALSE(offsite.complete);
    }
}

TEST_F(Derived, OffsiteIsSyncedWhenNothingIsPending)
{
    for (const char *const status :
         {R"({"appliance":{"online":true,"pending_bytes":0},"offsite":{"percent":40}})",
          R"({"appliance":{"online":true}})", R"({"appliance":{"online":true,"pending_bytes":"0"}})"}) {
        const OffsiteState offsite = offsiteFor(status);
        EXPECT_EQ(offsite.label, u"100% · synced"_s);
        EXPECT_EQ(offsite.kind, Kind::Synced);
        EXPECT_EQ(offsite.colour, Theme::ok);
        EXPECT_TRUE(offsite.complete);
    }
}

TEST_F(Derived, OffsiteShowsThePercentWhileUploading)
{
    const OffsiteState offsite =
        offsiteFor(R"({"appliance":{"online":true,"pending_bytes":5},"offsite":{"percent":87.9}})");
    EXPECT_EQ(offsite.label, u"87% · uploading"_s);
    EXPECT_EQ(offsite.kind, Kind::Uploading);
    EXPECT_EQ(offsite.colour, Theme::warn);
    EXPECT_FALSE(offsite.complete);
    EXPECT_EQ(offsiteFor(R"({"appliance":{"online":true,"pending_bytes":5}})").label, u"0% · uploading"_s);
    const OffsiteState last =
        offsiteFor(R"({"appliance":{"online":true,"pending_bytes":5},"offsite":{"percent":100}})");
    EXPECT_EQ(last.label, u"100% · uploading"_s);
    EXPECT_TRUE(last.complete);
    EXPECT_FALSE(offsiteFor(R"({"appliance":{"online":true,"pending_bytes":5},"offsite":{"percent":1000}})").complete);
}

TEST_F(Derived, OffsiteConnectsOrHasNotStarted)
{
    const OffsiteState connecting = offsiteFor(R"({"appliance":{"connected":true}})");
    EXPECT_EQ(connecting.label, u"connecting"_s);
    EXPECT_EQ(connecting.kind, Kind::Connecting);
    EXPECT_EQ(connecting.colour, Theme::muted);
    for (const char *const status :
         {R"({"appliance":{"connected":"true","online":1}})", R"({"appliance":[]})", R"({"other":1})"}) {
        const OffsiteState offsite = offsiteFor(status);
        EXPECT_EQ(offsite.label, u"not started · Mount to start"_s);
        EXPECT_EQ(offsite.kind, Kind::NotStarted);
        EXPECT_EQ(offsite.colour, Theme::muted);
    }
}

TEST_F(Derived, AllIsSyncedUnlessAVolumeIsUploadingOrConnecting)
{
    EXPECT_TRUE(state->allSynced());
    setVolumes(R"([{"id":1},{"id":2}])");
    EXPECT_TRUE(state->allSynced()) << "unknown is no worry";
    setStatus(1, R"({"appliance":{"online":true}})");
    setStatus(2, R"({"appliance":{}})");
    EXPECT_TRUE(state->allSynced());
    setStatus(2, R"({"appliance":{"connected":true}})");
    EXPECT_FALSE(state->allSynced());
    setStatus(2, R"({"appliance":{"online":true,"pending_bytes":5},"offsite":{"percent":99}})");
    EXPECT_FALSE(state->allSynced());
    setStatus(2, R"({"appliance":{"online":true,"pending_bytes":5},"offsite":{"percent":100}})");
    EXPECT_TRUE(state->allSynced());
    setStatus(3, R"({"appliance":{"connected":true}})");
    EXPECT_TRUE(state->allSynced()) << "no volume of the list";
}

TEST_F(Derived, ApplianceSaysWhereItRuns)
{
    struct Case {
        const char *container;
        const char *status;
        const char *label;
        QColor colour;
        bool startable;
    };
    state->localAppliances = {{u"up"_s, u"Up 3 hours"_s}, {u"down"_s, u"Exited (0)"_s}, {u"lower"_s, u"up 3 hours"_s}};
    const char *const online = R"({"appliance":{"online":true}})";
    const char *const offline = R"({"appliance":{"online":"true"}})";
    const std::vector<Case> cases{
        {"up", online, "running here", Theme::ok, false},
        {"up", offline, "running here · connecting", Theme::warn, false},
        {"down", online, "stopped here", Theme::warn, true},
        {"down", offline, "stopped here", Theme::warn, true},
        {"lower", online, "stopped here", Theme::warn, true},
        {"elsewhere", online, "running on another computer", Theme::text, false},
        {"elsewhere", offline, "engine stopped", Theme::muted, false},
    };
    for (const Case &each : cases) {
        setStatus(7, each.status);
        const Record appliance = params("container", each.container);
        const ApplianceState shown = state->applianceState(params("id", 7, "appliance", appliance));
        EXPECT_EQ(shown.label.toStdString(), each.label) << each.container << each.status;
        EXPECT_EQ(shown.colour, each.colour);
        EXPECT_EQ(shown.startable, each.startable);
    }
    state->vm = params("status", "Running");
    EXPECT_EQ(state->applianceState(params("id", 8)).label, u"not running"_s);
}

TEST_F(Derived, AMountIsFoundByTheFirstEntryOfItsName)
{
    EXPECT_FALSE(state->mountOf(u"photos"_s));
    state->mounts = takeRecords(parsed(R"([{"name":"music"},{"name":"photos","mountpoint":"/first"},
                                           {"name":"photos","mountpoint":"/second"},{"name":5,"mountpoint":"/five"},{}])"));
    EXPECT_EQ(state->mountOf(u"photos"_s), u"/first"_s);
    EXPECT_EQ(state->mountOf(u"music"_s), QString());
    EXPECT_EQ(state->mountOf(u"5"_s), u"/five"_s);
    EXPECT_EQ(state->mountOf(QString()), QString());
    EXPECT_FALSE(state->mountOf(u"Photos"_s));
    state->mounts = Records();
    EXPECT_FALSE(state->mountOf(u"photos"_s));
}

/// What the totals are by definition, from the labels of all volumes.
bool recountedAllSynced(const AppState &state)
{
    return std::all_of(state.volumes().begin(), state.volumes().end(), [&](const Record &volume) {
        const QString label = state.offsiteState(volume).label;
        return label.startsWith(u"100%"_s) || label == u"…"_s || label.startsWith(u"not started"_s);
    });
}

class Totals : public StateTest {};

TEST_F(Totals, StayRightThroughAnswersEventsAndDuplicates)
{
    std::mt19937 random(1);
    const auto pick = [&random](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const std::vector<std::string> statuses{R"({})",
                                            R"({"appliance":{"online":true}})",
                                            R"({"appliance":{"connected":true}})",
                                            R"({"appliance":{"online":true,"pending_bytes":1}})",
                                            R"({"appliance":{}})",
                                            R"({"appliance":{"online":true}})"};
    int kind = 0;
    agent.on("volumes.status", [&](const json::object &) -> FakeAgent::Answer {
        return parsed(statuses[static_cast<std::size_t>(kind)]);
    });
    connectAndSettle();
    int unsettledSeen = 0;
    for (int round = 0; round < 150; ++round) {
        Records list;
        for (int count = pick(4); count > 0; --count) {
            list.append(params("id", pick(3), "size_bytes", 1)); // the same id several times is likely
        }
        if (pick(3) == 0) {
            state->volumes = list;
        }
        if (pick(5) == 0) {
            state->statuses.update([&](auto &all) { all.erase(pick(3)); });
        }
        EXPECT_EQ(state->allSynced(), recountedAllSynced(*state));
        kind = pick(static_cast<int>(statuses.size()));
        await(state->refreshStatuses());
        EXPECT_EQ(state->allSynced(), recountedAllSynced(*state)) << round;
        EXPECT_EQ(state->allocatedBytes(), num(params("n", state->volumes().size()), "n")) << round;
        unsettledSeen += state->allSynced() ? 0 : 1;
    }
    EXPECT_GT(unsettledSeen, 10) << "both outcomes were met";
    EXPECT_LT(unsettledSeen, 140);
}

} // namespace
