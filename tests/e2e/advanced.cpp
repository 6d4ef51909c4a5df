// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// The console by keyboard and accessibility actions alone; the pointer is never moved.
class AdvancedFlow : public Flow {
protected:
    static void goTo(const Client &client, const std::string &keys, const std::string &section)
    {
        ASSERT_TRUE(waitFor([&] {
            pressKeys(keys);
            return chosenSection(client) == section;
        })) << section;
    }

    static void enterConsole(const Client &client)
    {
        goTo(client, "Ctrl+7", "Advanced");
        ASSERT_TRUE(waitFor([&] {
            return static_cast<bool>(client.find([](const Element &element) { return element.role() == "list item"; }));
        })) << "the list is read";
    }

    static void pick(const Client &client, const std::string &method)
    {
        pressKeys("Ctrl+f");
        ASSERT_TRUE(waitFor([&] { return client.find("text", "Filter operations").focused(); }));
        typeText(method);
        pressKeys("Return");
        ASSERT_TRUE(waitFor([&] { return static_cast<bool>(client.find("heading", method)); })) << method;
    }

    static void typeInto(const Client &client, const std::string &field, const std::string &text)
    {
        client.tabTo("text", field);
        typeText(text);
        ASSERT_TRUE(waitFor([&] { return client.find("text", field).text() == text; })) << field;
    }

    static std::string output(const Client &client) { return client.find("text", "Output").text(); }

    static bool says(const Client &client, const std::string &words)
    {
        return static_cast<bool>(
            client.find([&](const Element &element) { return element.name().find(words) != std::string::npos; }));
    }
};

TEST_F(AdvancedFlow, AListingIsRun)
{
    const Client &client = open("operator");
    enterConsole(client);
    pick(client, "volumes.list");
    client.enter("push button", "Run");
    ASSERT_TRUE(waitFor([&] { return output(client).find("\"name\": \"Documents\"") != std::string::npos; }))
        << output(client);
    EXPECT_TRUE(waitFor([&] { return says(client, "volumes.list · "); })) << "how long it took";

    client.tabTo("text", "Output");
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Search the output").focused(); }));
    typeText("vm-store");
    EXPECT_TRUE(waitFor([&] { return says(client, "1 of "); }));
}

TEST_F(AdvancedFlow, ADestructiveOperationIsDeclinedAndThenAccepted)
{
    const Client &client = open("operator", {}, {"--speed", "100"});
    enterConsole(client);
    pick(client, "volumes.remove");
    typeInto(client, "volume_id", "3134");
    client.enter("push button", "Run");
    client.seeText("Run volumes.remove?");
    client.seeText("This operation removes or destroys something. The API's own safeguards still apply.");
    client.press("push button", "Cancel");
    client.seeNo("push button", "Cancel");
    goTo(client, "Ctrl+1", "Volumes");
    EXPECT_TRUE(waitFor([&] { return testing::Value(volumeNames(client), Contains("accounts-2025")); }));

    enterConsole(client);
    ASSERT_TRUE(waitFor([&] { return client.find("text", "volume_id").text() == "3134"; })) << "what was typed is kept";
    EXPECT_EQ(output(client), "");
    client.enter("push button", "Run");
    client.seeText("Run volumes.remove?");
    pressKeys("Return"); // the dialog's verb is its default
    ASSERT_TRUE(waitFor([&] { return !output(client).empty(); }));
    EXPECT_THAT(output(client), Not(HasSubstr("error")));
    goTo(client, "Ctrl+1", "Volumes");
    EXPECT_TRUE(waitFor([&] { return testing::Value(volumeNames(client), Not(Contains("accounts-2025"))); }));
}

TEST_F(AdvancedFlow, AnAgentThatGoesDuringARunLeavesTheInputs)
{
    const Client &client = open("operator", {}, {"--delay", "admin.tokens.list=600"});
    enterConsole(client);
    pick(client, "restore_points.list");
    typeInto(client, "volume_id", "3121");
    typeInto(client, "Other parameters as JSON (query for GET/DELETE, body for POST):", "{\"limit\": 3}");
    pick(client, "admin.tokens.list");
    client.enter("push button", "Run");
    ASSERT_TRUE(waitFor([&] { return says(client, "Running admin.tokens.list"); }));
    killAgent();
    client.seeText("Waiting for the Quillfen agent");
    startAgent("operator");
    ASSERT_TRUE(waitFor([&] { return !sections(client).empty(); }));

    enterConsole(client);
    ASSERT_TRUE(waitFor([&] { return output(client) == "error: the agent connection closed"; })) << output(client);
    pick(client, "restore_points.list");
    EXPECT_EQ(client.see("text", "volume_id").text(), "3121");
    EXPECT_EQ(client.see("text", "Other parameters as JSON (query for GET/DELETE, body for POST):").text(),
              "{\"limit\": 3}");
}

} // namespace
} // namespace quillfen::e2e
