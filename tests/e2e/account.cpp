// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// An hour of uploading is over in a few seconds.
const std::vector<std::string> quickly{"--speed", "1000"};

class AccountFlow : public Flow {
protected:
    Client &openBoard(const std::string &world = "everyday")
    {
        Client &client = open(world, {}, quickly);
        client.press("page tab", "Account & engine");
        [[maybe_unused]] const Element loaded = client.see("push button", "Revoke, backup script on nas");
        return client;
    }

    /// The same without anything but keys.
    Client &openBoardByKeys()
    {
        Client &client = open("everyday", {}, quickly);
        EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Volumes"; }));
        pressKeys("Ctrl+5");
        [[maybe_unused]] const Element loaded = client.see("push button", "Revoke, backup script on nas");
        return client;
    }

    static bool tellsAnywhere(const Client &client, const std::string &secret)
    {
        const auto tells = [&](const Element &element) {
            return (element.name() + element.description() + element.text()).find(secret) != std::string::npos;
        };
        return !client.all(tells).empty();
    }
};

TEST_F(AccountFlow, ShowsPlanAccountEngineAndTokens)
{
    const Client &client = openBoard();
    for (const char *text : {"Plan",
                             "Pro plan",
                             "1.3 TB allocated to volumes, including locked history",
                             "Account",
                             "mara@northmere.example",
                             "Engine",
                             "Running",
                             "Memory",
                             "4 GB",
                             "Cache disk",
                             "80 GB",
                             "Docker",
                             "27.3.1",
                             "limactl 1.0.2",
                             "quill-vol-3121-documents",
                             "API tokens & command line",
                             "Label",
                             "Created",
                             "Expires",
                             "This Mac (app)",
                             "This Mac (quill command)",
                             "backup script on nas",
                             "Never",
                             "Stop safely finishes uploading before the engine shuts down."}) {
        client.seeText(text);
    }
}

TEST_F(AccountFlow, ATokensRowIsReadWithItsColumns)
{
    const Client &client = openBoard();
    const Element row = client.see("list item", "backup script on nas");
    EXPECT_THAT(row.description(), StartsWith("Created "));
    EXPECT_THAT(row.description(), HasSubstr(", Expires "));
    EXPECT_THAT(client.see("list item", "This Mac (app)").description(), HasSubstr(", Expires Never"));
    EXPECT_TRUE(client.find("push button", "Revoke, This Mac (quill command)"));
}

TEST_F(AccountFlow, ATokenIsCreatedShownOnceAndRevoked)
{
    const Client &client = openBoard();
    client.press("push button", "Create token");
    client.fill("New token", "laptop");
    client.press("push button", "Create");
    const std::string secret = client.see("text", "token laptop").text();
    EXPECT_THAT(secret, StartsWith("quill_token_"));
    client.press("push button", "I have saved it");
    [[maybe_unused]] const Element row = client.see("list item", "laptop");
    EXPECT_FALSE(tellsAnywhere(client, secret));
    client.press("push button", "Revoke, laptop");
    client.seeText("Revoke laptop?");
    client.press("push button", "Revoke");
    client.hear("revoked");
    client.seeNo("push button", "Revoke, laptop");
}

TEST_F(AccountFlow, ATokenIsCreatedShownOnceAndRevokedByKeys)
{
    const Client &client = openBoardByKeys();
    client.enter("push button", "Create token");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "New token"; }));
    typeText("laptop");
    pressKeys("Return");
    const std::string secret = client.see("text", "token laptop").text();
    EXPECT_THAT(secret, StartsWith("quill_token_"));
    pressKeys("Escape"); // it would be lost
    client.enter("push button", "I have saved it");
    client.seeNo("push button", "I have saved it");
    EXPECT_FALSE(tellsAnywhere(client, secret));
    client.enter("push button", "Revoke, laptop");
    client.seeText("Revoke laptop?");
    pressKeys("Return");
    client.hear("revoked");
    client.seeNo("push button", "Revoke, laptop");
}

TEST_F(AccountFlow, TheAppsOwnTokenIsTheAgentsToDecide)
{
    const Client &client = openBoard();
    client.press("push button", "Revoke, This Mac (app)");
    client.press("push button", "Revoke");
    client.hear("This app itself uses that token. Sign out this computer instead.");
    EXPECT_TRUE(client.find("push button", "Revoke, This Mac (app)"));
}

TEST_F(AccountFlow, AnotherComputerIsEnrolledWithACode)
{
    const Client &client = openBoard();
    client.press("push button", "Enrol another computer");
    const std::string code = client.see("text", "enrolment code (one use, 24 h)").text();
    EXPECT_THAT(code, StartsWith("quill-"));
    client.press("push button", "I have saved it");
    client.seeNo("push button", "I have saved it");
    EXPECT_FALSE(tellsAnywhere(client, code));
}

TEST_F(AccountFlow, AnAccountIsClosedAndRecovered)
{
    const Client &client = openBoard();
    client.press("push button", "Close account…");
    client.fill("Type CLOSE to continue.", "CLOSE");
    client.press("push button", "Close account");
    client.hear("account closing");
    client.press("push button", "Recover");
    client.hear("account recovered");
    [[maybe_unused]] const Element open = client.see("push button", "Close account…");
    EXPECT_FALSE(client.find("push button", "Recover"));
}

TEST_F(AccountFlow, AnAccountIsClosedAndRecoveredByKeys)
{
    const Client &client = openBoardByKeys();
    client.enter("push button", "Close account…");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Type CLOSE to continue."; }));
    typeText("close");
    pressKeys("Return");
    client.seeNo("text", "Type CLOSE to continue.");
    client.enter("push button", "Close account…");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Type CLOSE to continue."; }));
    typeText("CLOSE");
    pressKeys("Return");
    client.hear("account closing");
    client.enter("push button", "Recover");
    client.hear("account recovered");
    [[maybe_unused]] const Element open = client.see("push button", "Close account…");
}

TEST_F(AccountFlow, TheEngineIsStoppedSafelyAndStarted)
{
    const Client &client = openBoard();
    client.press("push button", "Stop safely");
    client.seeText("Stop safely?");
    client.press("push button", "Stop safely");
    client.hearOneOf({"stopping safely…", "Every change reached the vault; the engine is stopped."});
    client.press("page tab", "Volumes");
    client.press("page tab", "Account & engine");
    client.hear("Every change reached the vault; the engine is stopped.");
    client.seeText("Stopped");
    client.press("push button", "Start engine");
    client.hear("engine started");
    client.seeText("Running");
    [[maybe_unused]] const Element stop = client.see("push button", "Stop safely");
    client.seeText("quill-vol-3121-documents");
}

TEST_F(AccountFlow, TheEngineIsStoppedSafelyAndStartedByKeys)
{
    const Client &client = openBoardByKeys();
    client.enter("push button", "Stop safely");
    client.seeText("Stop safely?");
    pressKeys("Return");
    client.hear("Every change reached the vault; the engine is stopped.");
    client.enter("push button", "Start engine");
    client.hear("engine started");
    [[maybe_unused]] const Element stop = client.see("push button", "Stop safely");
}

TEST_F(AccountFlow, SigningOutLeadsToTheFirstRun)
{
    const Client &client = openBoard();
    client.press("push button", "Sign out this Mac");
    client.seeText("Sign out this Mac?");
    client.press("push button", "Sign out");
    client.seeText("Welcome to Quillfen");
}

TEST_F(AccountFlow, SigningOutLeadsToTheFirstRunByKeys)
{
    const Client &client = openBoardByKeys();
    client.enter("push button", "Sign out this Mac");
    client.seeText("Sign out this Mac?");
    pressKeys("Return");
    client.seeText("Welcome to Quillfen");
}

TEST_F(AccountFlow, AnAgentThatGoesDuringAStopLeavesABoardThatWorks)
{
    startAgent("everyday");
    const Client &client = startClient();
    client.press("page tab", "Account & engine");
    client.press("push button", "Stop safely");
    client.seeText("Stop safely?");
    client.press("push button", "Stop safely");
    client.seeText("Stopping safely");
    killAgent();
    client.seeText("Waiting for the Quillfen agent");
    startAgent("everyday");
    client.press("page tab", "Account & engine");
    [[maybe_unused]] const Element loaded = client.see("push button", "Revoke, backup script on nas");
    EXPECT_TRUE(client.see("push button", "Stop safely").enabled());
    EXPECT_FALSE(client.shows("Stopping safely"));
}

} // namespace
} // namespace quillfen::e2e
