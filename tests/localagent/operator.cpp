// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/hubs.h"
#include "localagent/world/worldfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using testing::HasSubstr;

namespace {

/// Two hubs and no promotion.
constexpr std::string_view quiet = R"({
    "account": {"signed_in": true, "is_admin": true, "email": "op@x.example"},
    "service": {"hubs": [{"id": 1, "name": "hub-a", "address": "a.example:1", "life": "primary", "sold_pct": 70},
                         {"id": 2, "name": "hub-b", "address": "b.example:1", "lag": 1},
                         {"id": 3, "name": "hub-c", "address": "c.example:1", "lag": 25},
                         {"id": 4, "name": "hub-d", "address": "d.example:1", "life": "building"}]}})";

json::object site(std::int64_t id)
{
    return {{"site_id", id}};
}

json::value hubNamed(TestAgent &agent, std::string_view name)
{
    const json::value list = agent.result("admin.hubs.list");
    for (const json::value &hub : list.at("hubs").as_array()) {
        if (hub.at("name") == json::value(name)) {
            return hub;
        }
    }
    return nullptr;
}

std::string stateOf(TestAgent &agent, std::string_view name)
{
    return text(hubNamed(agent, name).at("state"));
}

std::string promotionState(TestAgent &agent)
{
    return text(agent.result("admin.hubs.promote_status").at("state"));
}

json::object machine(std::string_view name, std::string_view address)
{
    return {{"name", name}, {"address", address}};
}

} // namespace

TEST(Operator, OnlyAnOperatorsTokenMayCall)
{
    TestAgent agent("everyday");
    int tried = 0;
    for (const json::value &record : Table().records()) {
        const std::string name = text(record.at("name"));
        EXPECT_EQ(record.at("admin").as_bool(), name.starts_with("admin.")) << name;
        if (name.starts_with("admin.")) {
            EXPECT_EQ(agent.error(name).at("status"), json::value(403)) << name;
            ++tried;
        }
    }
    EXPECT_EQ(tried, 22);
}

TEST(Hubs, AreListedWithRoleAndState)
{
    TestAgent agent(quiet);
    const json::value list = agent.result("admin.hubs.list");
    EXPECT_EQ(json::serialize(list.at("hubs").at(0)),
              R"({"id":1,"name":"hub-a","role":"primary","address":"a.example:1","state":"serving","sold_pct":70})");
    EXPECT_EQ(stateOf(agent, "hub-b"), "ready");
    EXPECT_EQ(stateOf(agent, "hub-c"), "catching up");
    EXPECT_EQ(json::serialize(list.at("hubs").at(3)),
              R"({"id":4,"name":"hub-d","role":"","address":"d.example:1","state":"building"})");
}

TEST(Hubs, ReplicasCatchUpAsTimePasses)
{
    TestAgent agent(quiet);
    EXPECT_EQ(json::serialize(agent.result("admin.hubs.replication")),
              R"({"replicas":[{"id":2,"name":"hub-b","address":"b.example:1","state":"streaming","lag":"1.0 s"},)"
              R"({"id":3,"name":"hub-c","address":"c.example:1","state":"catching up","lag":"25 s"}],)"
              R"("summary":"2 of 2 replicas connected; 1 within the promotion limit."})");
    agent.pass(20);
    EXPECT_EQ(agent.result("admin.hubs.replication").at("replicas").at(1).at("lag"), json::value("15 s"));
    agent.pass(1000);
    EXPECT_EQ(agent.result("admin.hubs.replication").at("replicas").at(1).at("lag"), json::value("0.8 s"));
    EXPECT_EQ(stateOf(agent, "hub-c"), "ready");
}

TEST(Hubs, PollAndRescanAnswerWithTheHub)
{
    TestAgent agent(quiet);
    EXPECT_EQ(agent.finish("admin.hubs.poll", site(2)).at("name"), json::value("hub-b"));
    EXPECT_EQ(agent.finish("admin.hubs.rescan", site(4)).at("state"), json::value("building"));
    EXPECT_EQ(agent.refusal("admin.hubs.poll", site(9)), "There is no hub 9.");
    EXPECT_EQ(agent.refusal("admin.hubs.rescan", site(9)), "There is no hub 9.");
}

TEST(Promotion, GoesThroughItsStatesWhileTheLagFalls)
{
    TestAgent agent(quiet);
    EXPECT_EQ(promotionState(agent), "idle");
    agent.result("admin.hubs.promote", site(3));
    EXPECT_EQ(promotionState(agent), "checking");
    agent.pass(3);
    EXPECT_EQ(promotionState(agent), "catching up");
    EXPECT_EQ(agent.result("admin.hubs.promote_status").at("detail"),
              json::value("hub-c is 24 s behind hub-a; identity check passed, waiting for lag below 5 s"));
    agent.pass(20);
    EXPECT_THAT(text(agent.result("admin.hubs.promote_status").at("detail")), HasSubstr("hub-c is 14 s behind"));
    agent.pass(18);
    EXPECT_EQ(promotionState(agent), "switching");
    agent.pass(3);
    EXPECT_EQ(json::serialize(agent.result("admin.hubs.promote_status")), R"({"state":"idle","detail":""})");
    EXPECT_EQ(stateOf(agent, "hub-c"), "serving");
    EXPECT_EQ(stateOf(agent, "hub-a"), "handing over");
    EXPECT_EQ(hubNamed(agent, "hub-a").at("role"), json::value("primary"));
}

TEST(Promotion, OneAtATimeAndOnlyOfReplicas)
{
    TestAgent agent(quiet);
    EXPECT_EQ(agent.refusal("admin.hubs.promote", site(1)), "hub-a serves already.");
    EXPECT_EQ(agent.refusal("admin.hubs.promote", site(4)),
              "hub-d is building. Only a replica that is connected can be promoted.");
    agent.result("admin.hubs.promote", site(2));
    EXPECT_EQ(agent.refusal("admin.hubs.promote", site(3)), "hub-b is being promoted. Wait until that has ended.");
    EXPECT_EQ(agent.refusal("admin.hubs.retire", site(2)), "hub-b is being promoted. Wait until that has ended.");
}

TEST(Demotion, OnlyAfterAnotherHubWasPromoted)
{
    TestAgent agent(quiet);
    EXPECT_EQ(agent.refusal("admin.hubs.demote", site(1)),
              "hub-a is the only hub that serves. Promote another one first.");
    EXPECT_EQ(agent.refusal("admin.hubs.demote", site(2)), "hub-b does not serve.");
    agent.result("admin.hubs.promote", site(2));
    agent.pass(10);
    EXPECT_EQ(agent.finish("admin.hubs.demote", site(1)).at("state"), json::value("ready"));
    EXPECT_EQ(hubNamed(agent, "hub-a").at("role"), json::value("replica"));
    EXPECT_EQ(agent.refusal("admin.hubs.demote", site(2)),
              "hub-b is the only hub that serves. Promote another one first.");
}

TEST(Retiring, RefusesAServingHubAndWantsForceForAReplica)
{
    TestAgent agent(quiet);
    EXPECT_EQ(agent.refusal("admin.hubs.retire", {{"site_id", 1}, {"force", true}, {"wipe", true}}),
              "hub-a is serving. Promote another hub and demote this one first.");
    EXPECT_EQ(agent.refusal("admin.hubs.retire", site(2)), "hub-b holds a copy of the vault. Give it up with force.");
    const std::int64_t id = agent.start("admin.hubs.retire", {{"site_id", 2}, {"force", true}, {"wipe", true}});
    EXPECT_EQ(stateOf(agent, "hub-b"), "retiring");
    EXPECT_FALSE(agent.answer(id)) << "it is answered when it is done";
    agent.pass(4);
    EXPECT_EQ(json::serialize(agent.answer(id)->at("result")), R"({"site_id":2,"retired":true,"wiped":true})");
    EXPECT_TRUE(hubNamed(agent, "hub-b").is_null());
}

TEST(Retiring, AHubThatHandsOverStillServes)
{
    TestAgent agent(quiet);
    agent.result("admin.hubs.promote", site(2));
    agent.pass(10);
    EXPECT_EQ(agent.refusal("admin.hubs.retire", {{"site_id", 1}, {"force", true}}),
              "hub-a is serving. Promote another hub and demote this one first.");
    (void)agent.finish("admin.hubs.demote", site(1));
    (void)agent.finish("admin.hubs.retire", {{"site_id", 1}, {"force", true}});
    EXPECT_TRUE(hubNamed(agent, "hub-a").is_null());
}

TEST(AddingAHub, ThePreflightTellsTheSameHostKeyEachTime)
{
    TestAgent agent(quiet);
    const json::value one = agent.finish("admin.hubs.preflight", machine("hub-e", "10.0.0.5:8443"));
    const json::value again = agent.finish("admin.hubs.preflight", machine("hub-f", "10.0.0.5:8443"));
    const json::value other = agent.finish("admin.hubs.preflight", machine("hub-e", "10.0.0.6:8443"));
    EXPECT_EQ(one.at("fingerprint"), again.at("fingerprint"));
    EXPECT_NE(one.at("fingerprint"), other.at("fingerprint"));
    EXPECT_TRUE(text(one.at("fingerprint")).starts_with("SHA256:"));
    EXPECT_FALSE(text(one.at("summary")).empty());
    EXPECT_TRUE(hubNamed(agent, "hub-e").is_null()) << "nothing is registered";
}

TEST(AddingAHub, NamesAndAddressesAreChecked)
{
    TestAgent agent(quiet);
    for (const char *name : {"", "hub e", "hub/e", "ä"}) {
        EXPECT_EQ(agent.refusal("admin.hubs.preflight", machine(name, "10.0.0.5:8443")),
                  "A hub needs a name of letters, digits and hyphens, like hub-e.")
            << name;
    }
    EXPECT_EQ(agent.refusal("admin.hubs.preflight", machine("hub-a", "10.0.0.5:8443")),
              "There is a hub called hub-a already.");
    for (const char *address :
         {"", "10.0.0.5", ":8443", "a b:1", "host:", "host:0", "host:70000", "host:x", "a..b:1"}) {
        EXPECT_EQ(agent.refusal("admin.hubs.preflight", machine("hub-e", address)),
                  "A hub needs an address with a port, like 10.40.2.14:8443.")
            << address;
    }
    EXPECT_EQ(agent.refusal("admin.hubs.preflight", machine("hub-e", "b.example:1")),
              "hub-b has the address b.example:1 already.");
    EXPECT_EQ(agent.refusal("admin.hubs.preflight", machine("hub-e", "x.invalid:1")),
              "Nothing answers at x.invalid:1.");
}

TEST(AddingAHub, TheHostKeyHasToBeThatOfThePreflight)
{
    TestAgent agent(quiet);
    json::object wrong = machine("hub-e", "10.0.0.5:8443");
    wrong["fingerprint"] = "SHA256:another";
    EXPECT_EQ(agent.refusal("admin.hubs.add", wrong),
              "The machine at 10.0.0.5:8443 has another host key than the preflight saw. Run it again.");
    EXPECT_TRUE(hubNamed(agent, "hub-e").is_null());
}

TEST(AddingAHub, ARegisteredHubIsBuiltAndCatchesUp)
{
    TestAgent agent(quiet);
    json::object right = machine("hub-e", "10.0.0.5:8443");
    right["fingerprint"] = agent.finish("admin.hubs.preflight", right).at("fingerprint");
    const std::int64_t id = agent.result("admin.hubs.add", right).at("id").as_int64();
    EXPECT_EQ(stateOf(agent, "hub-e"), "registered");
    agent.result("admin.hubs.build.set", site(id));
    EXPECT_EQ(stateOf(agent, "hub-e"), "building");
    EXPECT_EQ(agent.refusal("admin.hubs.build.set", site(id)), "hub-e is building and needs no build.");
    agent.pass(31);
    EXPECT_EQ(stateOf(agent, "hub-e"), "catching up");
    agent.pass(120);
    EXPECT_EQ(stateOf(agent, "hub-e"), "ready");
}

TEST(Users, AreApprovedRejectedAndDeleted)
{
    TestAgent agent("operator");
    const auto userState = [&](std::int64_t id) {
        const json::value list = agent.result("admin.users.list");
        for (const json::value &user : list.at("users").as_array()) {
            if (user.at("id") == json::value(id)) {
                return text(user.at("state"));
            }
        }
        return std::string("gone");
    };
    const std::size_t tenants = agent.result("admin.tenants.list").at("tenants").as_array().size();
    EXPECT_EQ(userState(511), "pending");
    agent.result("admin.users.approve", {{"user_id", 511}});
    EXPECT_EQ(userState(511), "active");
    EXPECT_EQ(agent.result("admin.tenants.list").at("tenants").as_array().size(), tenants + 1) << "a new house";
    agent.result("admin.users.reject", {{"user_id", 510}});
    EXPECT_EQ(userState(510), "rejected");
    EXPECT_EQ(agent.refusal("admin.users.approve", {{"user_id", 510}}),
              "it@harrowfield-surveyors.example does not wait for approval: the state is rejected.");
    agent.result("admin.users.delete", {{"user_id", 288}});
    EXPECT_EQ(userState(288), "gone");
    EXPECT_THAT(json::serialize(agent.result("admin.tokens.list")), testing::Not(HasSubstr("anselm")));
    EXPECT_EQ(agent.refusal("admin.users.delete", {{"user_id", 402}}),
              "You are signed in as mara@northmere.example. Another operator has to do this.");
    EXPECT_EQ(agent.refusal("admin.users.delete", {{"user_id", 1}}), "There is no user 1.");
}

TEST(ServiceTokens, AreRevokedOnceAndPruned)
{
    TestAgent agent("operator");
    const json::value before = agent.result("admin.tokens.list");
    EXPECT_EQ(before.at("tokens").at(3).at("revoked"), json::value(true));
    EXPECT_TRUE(before.at("tokens").at(0).at("revoked_at").is_null());
    agent.result("admin.tokens.revoke", {{"token_id", 9001}});
    EXPECT_TRUE(agent.result("admin.tokens.list").at("tokens").at(0).at("revoked_at").is_string());
    EXPECT_EQ(agent.refusal("admin.tokens.revoke", {{"token_id", 9001}}), "The token was revoked already.");
    EXPECT_EQ(agent.refusal("admin.tokens.revoke", {{"token_id", 5}}), "There is no token 5.");
    EXPECT_EQ(agent.result("admin.tokens.prune").at("pruned"), json::value(2));
    EXPECT_EQ(agent.result("admin.tokens.list").at("tokens").as_array().size(), 2U);
    EXPECT_EQ(agent.result("admin.tokens.prune").at("pruned"), json::value(0));
}

TEST(Orders, OnlyReadyMediaAreShipped)
{
    TestAgent agent("operator");
    agent.result("admin.exports.ship", {{"job_id", 1182}, {"carrier", "Fen Freight"}, {"tracking", "FF-1"}});
    const json::value order = agent.result("admin.exports.list").at("exports").at(0);
    EXPECT_EQ(order.at("state"), json::value("shipped"));
    EXPECT_EQ(order.at("carrier"), json::value("Fen Freight"));
    EXPECT_EQ(agent.refusal("admin.exports.ship", {{"job_id", 1182}}), "Order #1182 is shipped, not ready.");
    EXPECT_EQ(agent.refusal("admin.exports.ship", {{"job_id", 1180}}),
              "Order #1180 is a download: there is nothing to ship.");
    EXPECT_EQ(agent.refusal("admin.exports.ship", {{"job_id", 1177}}), "Order #1177 is packing, not ready.");
    agent.result("admin.exports.ship", {{"job_id", 1179}, {"carrier", ""}, {"tracking", ""}});
    agent.result("admin.exports.delete", {{"job_id", 1177}});
    EXPECT_EQ(agent.refusal("admin.exports.delete", {{"job_id", 1177}}), "There is no order #1177.");
}

TEST(ServiceWorlds, TheOperatorsWorldWaitsForHubC)
{
    TestAgent agent("operator");
    EXPECT_EQ(json::serialize(agent.result("admin.hubs.promote_status")),
              R"({"state":"catching up","detail":"hub-c is 41 s behind hub-a; identity check passed, )"
              R"(waiting for lag below 5 s"})");
    agent.pass(120);
    EXPECT_EQ(stateOf(agent, "hub-c"), "serving");
}

TEST(ServiceWorlds, TheLargeOneHasTwentyThousandOfEach)
{
    TestAgent agent("operator-large");
    EXPECT_EQ(agent.result("admin.users.list").at("users").as_array().size(), 20'000U);
    EXPECT_EQ(agent.result("admin.tokens.list").at("tokens").as_array().size(), 20'000U);
    EXPECT_EQ(agent.result("admin.tokens.list"), TestAgent("operator-large").result("admin.tokens.list"))
        << "the same each time";
}

TEST(ServiceWorlds, AMistakeIsNamedWithItsPlace)
{
    const auto error = [](std::string_view world) -> std::string {
        try {
            const TestAgent agent(world);
            return "none";
        } catch (const WorldError &wrong) {
            return wrong.what();
        }
    };
    EXPECT_THAT(error(R"({"service": {"hubs": [{"life": "dreaming"}]}})"), HasSubstr("service.hubs[0].life"));
    EXPECT_THAT(error(R"({"service": {"promoting": "hub-z"}})"), HasSubstr("service.promoting"));
}
