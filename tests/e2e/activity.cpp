// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "clipboard.h"
#include "flow.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace quillfen::e2e {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ActivityFlow : public Flow {
protected:
    Client &openFilled(const std::vector<std::string> &options)
    {
        Client &client = open("everyday", {}, options);
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        return client;
    }

    static void resizeDocuments(const Client &client, const std::string &size)
    {
        client.click("table cell", "Documents");
        client.press("push button", "Resize");
        client.fill("Resize Documents", size);
        client.press("push button", "Resize");
    }

    /// The first row of the list whose words hold all of these.
    static Element row(const Client &client, const std::vector<std::string> &parts)
    {
        return client.find([&](const Element &element) {
            const std::string name = element.role() == "list item" ? element.name() : std::string();
            return !name.empty() && std::all_of(parts.begin(), parts.end(), [&](const std::string &part) {
                return name.find(part) != std::string::npos;
            });
        });
    }

    static void openActivity(const Client &client)
    {
        pressKeys("Ctrl+Shift+a");
        [[maybe_unused]] const Element list = client.see("list", "Activity");
        ASSERT_TRUE(waitFor([&] {
            return client.focused().role() == "list item" || client.focused().role() == "list";
        })) << client.dump();
    }
};

TEST_F(ActivityFlow, AFailureIsFoundAgainByKeysAndCopiedWithItsRequest)
{
    const Client &client = openFilled({"--speed", "1000"});
    resizeDocuments(client, "1");
    openActivity(client);
    ASSERT_TRUE(waitFor([&] {
        return row(client, {"Failed, volumes.resize", "cannot shrink", "code "});
    })) << client.dump();
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Search activity"; }));
    typeText("volumes.resize");
    client.tabTo("list", "Activity");
    pressKeys("Down");
    EXPECT_TRUE(waitFor([&] {
        return client.find("text", "What was said").text().find("cannot shrink") != std::string::npos;
    })) << client.dump();
    pressKeys("Ctrl+c");
    EXPECT_TRUE(waitFor([] { return clipboardText().find("cannot shrink") != std::string::npos; }));
    EXPECT_THAT(clipboardText(), HasSubstr("Failed · volumes.resize · "));
    EXPECT_THAT(clipboardText(), HasSubstr(" · code "));
    EXPECT_THAT(clipboardText(), HasSubstr(R"("method":"volumes.resize","params":{"volume_id":3121,)"));
    client.hear("Copied.");
    pressKeys("Escape"); // the search is not where the keyboard is
    client.seeNo("list", "Activity");
    EXPECT_TRUE(waitFor([&] { return client.find("push button", "Resize"); }));
}

TEST_F(ActivityFlow, WhatRunsIsOnTopUntilItIsDone)
{
    const Client &client = openFilled({"--speed", "1"});
    resizeDocuments(client, "101");
    openActivity(client);
    ASSERT_TRUE(waitFor([&] { return row(client, {"Resizing Documents, Running"}); })) << client.dump();
    const std::vector<Element> rows = client.all([](const Element &element) { return element.role() == "list item"; });
    ASSERT_FALSE(rows.empty());
    ASSERT_TRUE(waitFor([&] {
        return row(client, {"Done, volumes.resize", "Documents is now 101 GB"});
    })) << client.dump();
    EXPECT_FALSE(row(client, {"Running"}));
    client.press("push button", "Copy all");
    EXPECT_TRUE(waitFor([] { return clipboardText().find("Growing Documents to 101 GB") != std::string::npos; }));
    EXPECT_LT(clipboardText().find("Documents is now 101 GB"), clipboardText().find("Growing Documents to 101 GB"))
        << "the newest first";
}

TEST_F(ActivityFlow, ASecretIsMasked)
{
    const Client &client = startClient();
    pressKeys("Ctrl+Shift+a");
    [[maybe_unused]] const Element empty = client.see("push button", "Copy all");
    client.seeText("Nothing has been said or done yet.");
    pressKeys("Escape");
    client.seeNo("push button", "Copy all");
    startAgent("first-run");
    client.fill("Enrolment code or link", "QF-0000-9999");
    client.press("push button", "Sign in");
    openActivity(client);
    ASSERT_TRUE(waitFor([&] { return row(client, {"auth.enroll"}); })) << client.dump();
    client.press("push button", "Copy all");
    EXPECT_TRUE(waitFor([] { return clipboardText().find("auth.enroll") != std::string::npos; }));
    EXPECT_EQ(clipboardText().find("QF-0000-9999"), std::string::npos);
    EXPECT_THAT(clipboardText(), HasSubstr("••••••"));
}

} // namespace
} // namespace quillfen::e2e
