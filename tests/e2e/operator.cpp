// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

#include <fstream>

namespace quillfen::e2e {
namespace {

using namespace std::chrono_literals;

/// A service with two hubs at rest.
constexpr auto quietWorld = R"({
    "account": {"signed_in": true, "is_admin": true, "email": "mara@northmere.example", "tenant": "northmere",
                "plan": "pro", "capacity_gb": 2048},
    "engine": {"exists": true, "status": "Running"},
    "service": {"hubs": [{"id": 1, "name": "hub-a", "address": "hub-a.ops.example:8443", "life": "primary", "sold_pct": 71},
                         {"id": 2, "name": "hub-b", "address": "hub-b.ops.example:8443", "lag": 0.8}]}})";

class OperatorFlow : public Flow {
protected:
    Client &openConsole(const std::string &world, const std::vector<std::string> &options = {})
    {
        Client &client = open(world, {{"QUILLFEN_START_SECTION", "operator"}}, options);
        client.seeText("Hubs");
        EXPECT_TRUE(client.see("push button", "Preflight"));
        return client;
    }

    Client &openQuiet(const std::string &speed = "5")
    {
        const auto path = Desktop::instance().folder() / "quiet.json";
        std::ofstream(path) << quietWorld;
        Client &client = openConsole(path.string(), {"--speed", speed});
        (void)client.see("push button", "Demote, hub-a");
        return client;
    }

    /// A promotion's progress is seen by asking again.
    static void reloadUntil(const Client &client, const std::string &role, const std::string &name)
    {
        for (int round = 0; round < 100; ++round) {
            pressKeys("F5");
            if (waitFor([&] { return static_cast<bool>(client.find(role, name)); }, 300ms)) {
                return;
            }
        }
        (void)client.see(role, name);
    }

    static void openTab(const Client &client, const std::string &name)
    {
        client.press("radio button", name);
        EXPECT_TRUE(waitFor([&] { return client.find("radio button", name).checked(); }));
    }
};

TEST_F(OperatorFlow, AddAHub)
{
    const Client &client = openQuiet("20"); // a new hub takes two minutes to catch up
    client.fill("name, e.g. hub-e", "hub-e");
    client.fill("address", "10.40.2.15:8443");
    client.press("push button", "Preflight");
    client.seeText("Register hub-e?");
    client.press("push button", "Cancel");
    client.seeNo("push button", "Register and build");
    EXPECT_FALSE(client.find("push button", "Promote, hub-e"));

    client.press("push button", "Preflight");
    client.press("push button", "Register and build");
    client.hear("hub-e registered; the build is running");
    client.seeText("building");
    client.seeText("10.40.2.15:8443");
    reloadUntil(client, "label", "catching up");
    reloadUntil(client, "label", "2 of 2 replicas connected; 2 within the promotion limit.");
}

TEST_F(OperatorFlow, PromoteDemoteRetire)
{
    const Client &client = openQuiet();
    client.click("push button", "Demote, hub-a");
    client.press("push button", "Demote");
    client.hear("hub-a is the only hub that serves. Promote another one first.");

    client.click("push button", "Promote, hub-b");
    client.seeText("Promote hub-b?");
    client.press("push button", "Promote");
    client.hear("promotion started");
    client.seeText("Promotion: checking");
    reloadUntil(client, "push button", "Demote, hub-b");
    client.seeText("handing over");

    client.click("push button", "Demote, hub-a");
    client.seeText("Demote hub-a?");
    client.press("push button", "Demote");
    client.hear("demoted");
    (void)client.see("push button", "Retire, hub-a");

    client.click("push button", "Retire, hub-a");
    client.seeText("Retire hub-a?");
    client.fill("Type RETIRE to continue.", "RETIRE");
    client.press("push button", "Retire");
    client.hear("retired");
    client.seeNo("push button", "Retire, hub-a");
    EXPECT_FALSE(client.shows("hub-a"));
    EXPECT_TRUE(client.shows("hub-b"));
}

TEST_F(OperatorFlow, ApproveAUser)
{
    const Client &client = openConsole("operator");
    openTab(client, "Users");
    client.press("push button", "Approve, jonas.weir@tidewater.example");
    client.hear("approved");
    client.seeNo("push button", "Approve, jonas.weir@tidewater.example");
    EXPECT_TRUE(client.see("push button", "Delete, jonas.weir@tidewater.example"));
    client.press("push button", "Reject, it@harrowfield-surveyors.example");
    client.hear("rejected");
    client.click("push button", "Delete, it@harrowfield-surveyors.example");
    client.fill("Type DELETE to continue.", "DELETE");
    client.press("push button", "Delete");
    client.hear("deleted");
    client.seeNo("push button", "Delete, it@harrowfield-surveyors.example");
}

TEST_F(OperatorFlow, PruneTokens)
{
    const Client &client = openConsole("operator");
    openTab(client, "Tokens");
    client.click("push button", "Revoke, backup script on nas");
    client.seeText("backup script on nas of mara@northmere.example stops working now.");
    client.press("push button", "Revoke");
    client.hear("revoked");
    client.seeNo("push button", "Revoke, backup script on nas");
    EXPECT_FALSE(client.shows("backup script on nas"));
    client.press("check box", "Show revoked");
    client.seeText("backup script on nas");
    client.seeText("cli:copperline-desk");
    client.press("push button", "Prune revoked");
    client.hear("pruned");
    EXPECT_TRUE(waitFor([&] { return !client.shows("cli:copperline-desk"); }));
    EXPECT_TRUE(client.shows("desktop:mara-workstation"));
}

TEST_F(OperatorFlow, ShipAnOrder)
{
    const Client &client = openConsole("operator");
    openTab(client, "Exports");
    client.click("push button", "Mark shipped, #1182");
    client.seeText("Mark order #1182 shipped");
    client.fill("carrier", "Fen Freight");
    client.fill("tracking number", "FF-2026-1");
    client.press("push button", "Mark shipped");
    client.hear("marked shipped");
    client.seeNo("push button", "Mark shipped, #1182");
    client.seeText("shipped");
    client.click("push button", "Delete, #1177");
    client.seeText("The packed copy is removed from the hub.");
    client.press("push button", "Delete");
    client.hear("deleted");
    client.seeNo("push button", "Delete, #1177");
}

TEST_F(OperatorFlow, ADayByKeyboardAlone)
{
    const Client &client = open("operator", {}, {"--speed", "10"});
    client.seeText("Volumes");
    pressKeys("Ctrl+6");
    (void)client.see("push button", "Preflight");

    client.tabTo("text", "name, e.g. hub-e");
    typeText("hub-e");
    client.tabTo("text", "address");
    typeText("10.40.2.15:8443");
    client.enter("push button", "Preflight");
    client.seeText("Register hub-e?");
    pressKeys("Return");
    client.hear("hub-e registered; the build is running");

    client.tabTo("radio button", "Hubs");
    pressKeys("Right");
    for (const char *user :
         {"jonas.weir@tidewater.example", "it@harrowfield-surveyors.example", "post@fenwick-maps.example"}) {
        const std::string button = std::string("Approve, ") + user;
        client.enter("push button", button);
        client.seeNo("push button", button);
    }
    client.hear("approved");

    client.tabTo("radio button", "Users");
    pressKeys("Right");
    pressKeys("Right");
    for (const char *order : {"#1182", "#1179"}) {
        const std::string button = std::string("Mark shipped, ") + order;
        client.enter("push button", button);
        client.seeText(std::string("Mark order ") + order + " shipped");
        typeText("Fen Freight");
        pressKeys("Tab");
        typeText("FF-1");
        pressKeys("Return");
        client.seeNo("push button", button);
    }
    client.hear("marked shipped");

    client.tabTo("radio button", "Exports");
    pressKeys("Left");
    pressKeys("Left");
    pressKeys("Left");
    reloadUntil(client, "push button", "Demote, hub-c");
    client.enter("push button", "Promote, hub-b");
    client.seeText("Promote hub-b?");
    pressKeys("Return");
    client.hear("promotion started");
    reloadUntil(client, "push button", "Demote, hub-b");
}

TEST_F(OperatorFlow, TheAgentPulledAwayUnderAnActionComesBack)
{
    const Client &client = openQuiet();
    client.press("push button", "Poll, hub-b");
    killAgent();
    client.seeText("Waiting for the Quillfen agent");
    startAgent("operator");
    EXPECT_TRUE(waitFor([&] { return !client.shows("Waiting for the Quillfen agent"); }));
    pressKeys("Ctrl+6");
    (void)client.see("push button", "Poll, hub-b");
}

TEST_F(OperatorFlow, TwentyThousandTokensAreFilteredAndWalked)
{
    const Client &client = openConsole("operator-large");
    openTab(client, "Tokens");
    EXPECT_TRUE(waitFor([&] {
        return client.all([](const Element &element) { return element.name().starts_with("Revoke, "); }).size() > 3;
    }));
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Filter tokens"; }));
    typeText("zzz");
    client.seeText("Nothing here matches.");
}

} // namespace
} // namespace quillfen::e2e
