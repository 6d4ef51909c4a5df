// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "operatortest.h"

#include "boards/operator/opexportsmodel.h"
#include "boards/operator/ophubsmodel.h"
#include "boards/operator/optokensmodel.h"
#include "boards/operator/opusersmodel.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

template <typename Model>
class OperatorModelTest : public OperatorTest {
protected:
    std::shared_ptr<Model> model = std::make_shared<Model>(state);
};

using HubsModelTest = OperatorModelTest<OpHubsModel>;
using UsersModelTest = OperatorModelTest<OpUsersModel>;
using TokensModelTest = OperatorModelTest<OpTokensModel>;
using ExportsModelTest = OperatorModelTest<OpExportsModel>;

TEST_F(HubsModelTest, LoadsHubsReplicationAndPromotionInThisOrder)
{
    await(model->load());
    EXPECT_EQ(model->hubs().size(), 2);
    EXPECT_EQ(str(model->replication(), "summary"), u"1 of 1 replicas connected."_s);
    EXPECT_EQ(str(model->promotion(), "state"), u"idle"_s);
    EXPECT_TRUE(model->known());
    EXPECT_THAT(agent.log(), ElementsAre("admin.hubs.list", "admin.hubs.replication", "admin.hubs.promote_status"));
}

TEST_F(HubsModelTest, AFailedListKeepsTheHubsAndTellsWhy)
{
    await(model->load());
    agent.fail("admin.hubs.list", {.message = "vault away"});
    agent.fail("admin.hubs.replication", {.message = "vault away"});
    agent.fail("admin.hubs.promote_status", {.message = "vault away"});
    await(model->load());
    EXPECT_EQ(model->error(), u"vault away"_s);
    EXPECT_EQ(model->hubs().size(), 2);
    EXPECT_TRUE(model->replication().empty());
    EXPECT_TRUE(model->promotion().empty());
    EXPECT_EQ(toast(), QString()) << "a list that cannot be had is no notice";
    giveHubs({});
    await(model->load());
    EXPECT_EQ(model->error(), QString());
    EXPECT_THAT(model->hubs(), IsEmpty());
}

TEST_F(HubsModelTest, AnswersOfAnEarlierLoadAreDropped)
{
    agent.hold("admin.hubs.list");
    const QCoro::Task<> first = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.list") == 1; }));
    const QCoro::Task<> second = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.list") == 2; }));
    agent.release("admin.hubs.list");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(agent.count("admin.hubs.replication"), 1U);
    EXPECT_EQ(model->hubs().size(), 2);
}

struct HubAction {
    const char *method;
    const char *words;
    QCoro::Task<> (*run)(OpHubsModel &);
    json::object params;
};

class HubActions : public HubsModelTest, public testing::WithParamInterface<int> {
protected:
    static HubAction action()
    {
        switch (GetParam()) {
        case 0:
            return {"admin.hubs.poll", "polled", [](OpHubsModel &hubs) { return hubs.poll(2); }, params("site_id", 2)};
        case 1:
            return {"admin.hubs.rescan", "rescanned", [](OpHubsModel &hubs) { return hubs.rescan(2); },
                    params("site_id", 2)};
        case 2:
            return {"admin.hubs.promote", "promotion started",
                    [](OpHubsModel &hubs) { return hubs.promote(2, QStringLiteral("hub-b")); }, params("site_id", 2)};
        case 3:
            return {"admin.hubs.demote", "demoted",
                    [](OpHubsModel &hubs) { return hubs.demote(1, QStringLiteral("hub-a")); }, params("site_id", 1)};
        default:
            return {"admin.hubs.retire", "retired",
                    [](OpHubsModel &hubs) { return hubs.retire(2, QStringLiteral("hub-b")); },
                    params("force", true, "wipe", true, "site_id", 2)};
        }
    }
};

TEST_P(HubActions, CallsTellsAndLoads)
{
    const HubAction each = action();
    agent.answer(each.method, nullptr);
    await(each.run(*model));
    EXPECT_EQ(sent(each.method), each.params);
    EXPECT_EQ(toast(), QString::fromLatin1(each.words));
    EXPECT_EQ(agent.count("admin.hubs.list"), 1U);
    EXPECT_THAT(model->running(), IsEmpty());
}

TEST_P(HubActions, AFailureIsToldAndTheListsComeAnywayAnew)
{
    const HubAction each = action();
    agent.fail(each.method, {.message = "hub-b is being built"});
    await(each.run(*model));
    EXPECT_EQ(toast(), u"hub-b is being built"_s);
    EXPECT_EQ(agent.count("admin.hubs.list"), 1U);
    EXPECT_THAT(model->running(), IsEmpty());
}

TEST_P(HubActions, TheAgentGoingAwayLeavesOneMessage)
{
    const HubAction each = action();
    agent.silent(each.method);
    const std::uint64_t before = state->toast.version();
    const QCoro::Task<> task = each.run(*model);
    ASSERT_TRUE(eventually([&] { return agent.count(each.method) == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_EQ(state->toast.version() - before, 1U);
    EXPECT_NE(toast(), QString::fromLatin1(each.words));
    EXPECT_THAT(model->running(), IsEmpty());
}

TEST_P(HubActions, ASecondPressWhileItRunsSendsNothing)
{
    const HubAction each = action();
    agent.answer(each.method, nullptr);
    agent.hold(each.method);
    const QCoro::Task<> first = each.run(*model);
    EXPECT_EQ(model->running().size(), 1);
    await(each.run(*model));
    agent.release(each.method);
    ASSERT_TRUE(eventually([&] { return first.isReady(); }));
    EXPECT_EQ(agent.count(each.method), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, HubActions, testing::Range(0, 5));

TEST_F(HubsModelTest, LongActionsAreListedAsRunning)
{
    agent.answer("admin.hubs.promote", nullptr);
    agent.hold("admin.hubs.promote");
    const QCoro::Task<> task = model->promote(2, u"hub-b"_s);
    ASSERT_EQ(state->activity.running().size(), 1);
    EXPECT_EQ(state->activity.running().constFirst().title, u"Promoting hub-b"_s);
    agent.release("admin.hubs.promote");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_THAT(state->activity.running(), IsEmpty());
}

TEST_F(HubsModelTest, APreflightMakesAnOfferAndRegistersNothing)
{
    agent.answer("admin.hubs.preflight", params("fingerprint", "SHA256:abc", "summary", "16 cores"));
    await(model->preflight(u"hub-e"_s, u"10.0.0.5:8443"_s));
    EXPECT_EQ(sent("admin.hubs.preflight"), params("name", "hub-e", "address", "10.0.0.5:8443"));
    ASSERT_TRUE(model->offer().has_value());
    EXPECT_EQ(model->offer()->fingerprint, u"SHA256:abc"_s);
    EXPECT_EQ(toast(), QString());
    EXPECT_FALSE(model->checking());
    EXPECT_THAT(agent.log(), ElementsAre("admin.hubs.preflight"));
    EXPECT_TRUE(model->takeOffer().has_value());
    EXPECT_FALSE(model->takeOffer().has_value()) << "it is put to the user once";
}

TEST_F(HubsModelTest, AFailedPreflightIsToldAndOffersNothing)
{
    agent.fail("admin.hubs.preflight", {.message = "nothing answers"});
    await(model->preflight(u"hub-e"_s, u"nowhere"_s));
    EXPECT_EQ(toast(), u"nothing answers"_s);
    EXPECT_FALSE(model->offer().has_value());
    EXPECT_FALSE(model->checking());
}

HubOffer machine()
{
    return {QStringLiteral("hub-e"), QStringLiteral("10.0.0.5:8443"), QStringLiteral("SHA256:abc"), QString()};
}

TEST_F(HubsModelTest, RegisteringAddsAndBuildsWhatTheAgentNamed)
{
    agent.answer("admin.hubs.add", params("id", 77));
    agent.answer("admin.hubs.build.set", nullptr);
    await(model->registerHub(machine()));
    EXPECT_EQ(sent("admin.hubs.add"), params("name", "hub-e", "address", "10.0.0.5:8443", "fingerprint", "SHA256:abc"));
    EXPECT_EQ(sent("admin.hubs.build.set"), params("site_id", 77));
    EXPECT_EQ(toast(), u"hub-e registered; the build is running"_s);
    EXPECT_EQ(agent.count("admin.hubs.list"), 1U);
}

TEST_F(HubsModelTest, AFailedRegistrationStopsThere)
{
    agent.fail("admin.hubs.add", {.message = "the host key is another"});
    await(model->registerHub(machine()));
    EXPECT_EQ(toast(), u"the host key is another"_s);
    EXPECT_THAT(agent.log(), ElementsAre("admin.hubs.add"));
}

TEST_F(HubsModelTest, AFailedBuildIsToldAndTheListsLoad)
{
    agent.answer("admin.hubs.add", params("id", 77));
    agent.fail("admin.hubs.build.set", {.message = "no image"});
    await(model->registerHub(machine()));
    EXPECT_EQ(toast(), u"no image"_s);
    EXPECT_EQ(agent.count("admin.hubs.list"), 1U);
}

TEST_F(HubsModelTest, TheAgentGoingAwayWhileRegisteringIsToldOnce)
{
    agent.silent("admin.hubs.add");
    const QCoro::Task<> task = model->registerHub(machine());
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.add") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_EQ(agent.count("admin.hubs.build.set"), 0U);
}

TEST_F(HubsModelTest, TheAgentGoingAwayUnderThePreflightIsToldOnceAndOffersNothing)
{
    agent.silent("admin.hubs.preflight");
    const std::uint64_t before = state->toast.version();
    const QCoro::Task<> task = model->preflight(u"hub-e"_s, u"10.0.0.5:8443"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.preflight") == 1; }));
    EXPECT_TRUE(model->checking());
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(state->toast.version() - before, 1U);
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_FALSE(model->offer().has_value());
    EXPECT_FALSE(model->checking()) << "it can be tried again";
}

TEST_F(HubsModelTest, TheAgentGoingAwayUnderTheBuildSaysSoAfterTheRegistration)
{
    agent.answer("admin.hubs.add", params("id", 77));
    agent.silent("admin.hubs.build.set");
    const QCoro::Task<> task = model->registerHub(machine());
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.build.set") == 1; }));
    EXPECT_EQ(toast(), u"hub-e registered; the build is running"_s);
    const std::uint64_t before = state->toast.version();
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(state->toast.version() - before, 1U);
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_NE(toast(), u"hub-e registered; the build is running"_s);
    EXPECT_EQ(agent.count("admin.hubs.add"), 1U);
}

TEST_F(UsersModelTest, LoadsUsersThenTenants)
{
    await(model->load());
    EXPECT_EQ(model->users().size(), 2);
    EXPECT_EQ(model->tenants().size(), 1);
    EXPECT_THAT(agent.log(), ElementsAre("admin.users.list", "admin.tenants.list"));
}

TEST_F(UsersModelTest, OnlyTheUsersListHasAnErrorToShow)
{
    await(model->load());
    agent.fail("admin.tenants.list", {.message = "no tenants today"});
    await(model->load());
    EXPECT_EQ(model->error(), QString());
    EXPECT_EQ(model->tenants().size(), 1);
    agent.fail("admin.users.list", {.message = "no users today"});
    await(model->load());
    EXPECT_EQ(model->error(), u"no users today"_s);
    EXPECT_EQ(model->users().size(), 2);
}

TEST_F(UsersModelTest, ActionsNameTheUserAndTheOutcome)
{
    for (const char *method : {"admin.users.approve", "admin.users.reject", "admin.users.delete"}) {
        agent.answer(method, nullptr);
    }
    await(model->approve(11));
    EXPECT_EQ(toast(), u"approved"_s);
    await(model->reject(12));
    EXPECT_EQ(toast(), u"rejected"_s);
    await(model->remove(13));
    EXPECT_EQ(toast(), u"deleted"_s);
    EXPECT_EQ(sent("admin.users.approve"), params("user_id", 11));
    EXPECT_EQ(sent("admin.users.reject"), params("user_id", 12));
    EXPECT_EQ(sent("admin.users.delete"), params("user_id", 13));
    EXPECT_EQ(agent.count("admin.users.list"), 3U);
}

TEST_F(UsersModelTest, AFailedActionIsToldAndTheListsComeAnew)
{
    agent.fail("admin.users.approve", {.message = "somebody was quicker"});
    await(model->approve(11));
    EXPECT_EQ(toast(), u"somebody was quicker"_s);
    EXPECT_EQ(agent.count("admin.users.list"), 1U);
}

TEST_F(UsersModelTest, AnAnswerOfAnotherShapeIsAnEmptyList)
{
    await(model->load());
    agent.answer("admin.users.list", json::array({1, 2}));
    await(model->load());
    EXPECT_THAT(model->users(), IsEmpty());
    EXPECT_EQ(model->error(), QString());
}

TEST_F(TokensModelTest, RevokesAndPrunes)
{
    agent.answer("admin.tokens.revoke", nullptr);
    agent.answer("admin.tokens.prune", nullptr);
    await(model->revoke(21));
    EXPECT_EQ(toast(), u"revoked"_s);
    EXPECT_EQ(sent("admin.tokens.revoke"), params("token_id", 21));
    await(model->prune());
    EXPECT_EQ(toast(), u"pruned"_s);
    EXPECT_EQ(sent("admin.tokens.prune"), json::object());
    EXPECT_EQ(agent.count("admin.tokens.list"), 2U);
    EXPECT_EQ(model->tokens().size(), 2);
}

TEST_F(TokensModelTest, AFailedListKeepsWhatIsThere)
{
    await(model->load());
    agent.fail("admin.tokens.list", {.message = "away"});
    await(model->load());
    EXPECT_EQ(model->error(), u"away"_s);
    EXPECT_EQ(model->tokens().size(), 2);
}

TEST_F(ExportsModelTest, ReadsJobsWhereThereAreNoExports)
{
    await(model->load());
    EXPECT_EQ(model->jobs().size(), 3);
    agent.answer("admin.exports.list", params("jobs", listOf({job(5, "v", "media", "ready")})));
    await(model->load());
    EXPECT_EQ(model->jobs().size(), 1);
    agent.answer("admin.exports.list",
                 params("exports", json::array(), "jobs", listOf({job(5, "v", "media", "ready")})));
    await(model->load());
    EXPECT_THAT(model->jobs(), IsEmpty()) << "an empty list is there";
}

TEST_F(ExportsModelTest, ShippingSendsBothTextsEvenEmpty)
{
    agent.answer("admin.exports.ship", nullptr);
    await(model->ship(1182, QString(), QString()));
    EXPECT_EQ(sent("admin.exports.ship"), params("carrier", "", "tracking", "", "job_id", 1182));
    EXPECT_EQ(toast(), u"marked shipped"_s);
    await(model->ship(1182, u"Fen Freight"_s, u"FF-1"_s));
    EXPECT_EQ(sent("admin.exports.ship"), params("carrier", "Fen Freight", "tracking", "FF-1", "job_id", 1182));
}

TEST_F(ExportsModelTest, DeletesAndTellsFailures)
{
    agent.fail("admin.exports.delete", {.message = "still packing"});
    await(model->remove(1177));
    EXPECT_EQ(toast(), u"still packing"_s);
    agent.answer("admin.exports.delete", nullptr);
    await(model->remove(1177));
    EXPECT_EQ(sent("admin.exports.delete"), params("job_id", 1177));
    EXPECT_EQ(toast(), u"deleted"_s);
    EXPECT_EQ(agent.count("admin.exports.list"), 2U);
}

/// The actions of the three lists, each with the agent pulled away under it.
class ListActions : public OperatorTest, public testing::WithParamInterface<const char *> {};

TEST_P(ListActions, TheAgentGoingAwayLeavesOneMessage)
{
    const std::string method = GetParam();
    agent.silent(method);
    const auto users = std::make_shared<OpUsersModel>(state);
    const auto tokens = std::make_shared<OpTokensModel>(state);
    const auto exports = std::make_shared<OpExportsModel>(state);
    const std::uint64_t before = state->toast.version();
    const QCoro::Task<> task = method == "admin.users.approve"    ? users->approve(1)
                               : method == "admin.users.reject"   ? users->reject(1)
                               : method == "admin.users.delete"   ? users->remove(1)
                               : method == "admin.tokens.revoke"  ? tokens->revoke(1)
                               : method == "admin.tokens.prune"   ? tokens->prune()
                               : method == "admin.exports.delete" ? exports->remove(1)
                                                                  : exports->ship(1, {}, {});
    ASSERT_TRUE(eventually([&] { return agent.count(method) == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_EQ(state->toast.version() - before, 1U);
}

INSTANTIATE_TEST_SUITE_P(All, ListActions,
                         testing::Values("admin.users.approve", "admin.users.reject", "admin.users.delete",
                                         "admin.tokens.revoke", "admin.tokens.prune", "admin.exports.ship",
                                         "admin.exports.delete"));

/// The lists, each with the agent pulled away under its load.
class Lists : public OperatorTest, public testing::WithParamInterface<const char *> {};

TEST_P(Lists, TheAgentGoingAwayUnderALoadIsNoNotice)
{
    const std::string method = GetParam();
    agent.silent(method);
    const auto hubs = std::make_shared<OpHubsModel>(state);
    const auto users = std::make_shared<OpUsersModel>(state);
    const auto tokens = std::make_shared<OpTokensModel>(state);
    const auto exports = std::make_shared<OpExportsModel>(state);
    const std::shared_ptr<OpModel> model = method.starts_with("admin.hubs")      ? std::shared_ptr<OpModel>(hubs)
                                           : method.starts_with("admin.tokens")  ? std::shared_ptr<OpModel>(tokens)
                                           : method.starts_with("admin.exports") ? std::shared_ptr<OpModel>(exports)
                                                                                 : std::shared_ptr<OpModel>(users);
    const QCoro::Task<> task = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count(method) == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(toast(), QString());
    EXPECT_TRUE(model->known());
    const bool isFirst =
        method != "admin.hubs.replication" && method != "admin.hubs.promote_status" && method != "admin.tenants.list";
    EXPECT_EQ(model->error().isEmpty(), !isFirst);
}

INSTANTIATE_TEST_SUITE_P(All, Lists,
                         testing::Values("admin.hubs.list", "admin.hubs.replication", "admin.hubs.promote_status",
                                         "admin.users.list", "admin.tenants.list", "admin.tokens.list",
                                         "admin.exports.list"));

} // namespace
