// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

namespace quillfen::e2e {
namespace {

const std::string light = "Light, An hour of per-second history. For data that is reproducible.";
const std::string standard = "Standard, recommended, Half a day of per-second history, a day of per-minute, a week of "
                             "per-hour. Right for most volumes.";

class PolicyFlow : public Flow {
protected:
    /// The board of the everyday world, with the policy of its first volume.
    Client &openBoard()
    {
        Client &client = open("everyday");
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        show(client);
        return client;
    }

    static void show(const Client &client)
    {
        pressKeys("Ctrl+3");
        client.seeText("How long each second is kept.");
        EXPECT_TRUE(waitFor([&] { return client.find("radio button", standard).checked(); }));
    }

    static void leave(const Client &client)
    {
        pressKeys("Ctrl+1");
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    }

    static bool canSave(const Client &client) { return client.find("push button", "Save policy").enabled(); }
};

TEST_F(PolicyFlow, AChangedPolicyIsSavedAndThereWhenTheBoardIsOpenedAgain)
{
    const Client &client = openBoard();
    EXPECT_FALSE(canSave(client));
    client.press("radio button", light);
    ASSERT_TRUE(waitFor([&] { return canSave(client); }));
    client.choose("every month", "2 years");
    client.seeText("Custom");
    client.press("push button", "Save policy");
    client.hear("policy saved");
    EXPECT_TRUE(waitFor([&] { return !canSave(client); }));

    leave(client);
    pressKeys("Ctrl+3");
    EXPECT_TRUE(waitFor([&] { return client.picker("every month").name() == "2 years"; }));
    EXPECT_EQ(client.picker("every second").name(), "1 hour");
    client.seeText("Custom");
    EXPECT_FALSE(canSave(client));
}

TEST_F(PolicyFlow, TheKeyboardAloneChangesSavesAndPins)
{
    const Client &client = openBoard();
    client.tabTo("radio button", standard);
    pressKeys("Down");
    client.seeText("Extended");
    EXPECT_TRUE(waitFor([&] { return client.picker("every second").name() == "48 hours"; }));
    client.tabTo("push button", "Save policy");
    pressKeys("space");
    client.hear("policy saved");
    client.tabTo("push button", "Pin this moment");
    pressKeys("space");
    client.hear("pinned");
}

TEST_F(PolicyFlow, EachVolumeHasItsOwnPolicy)
{
    const Client &client = openBoard();
    client.choose("Volume", "photos-archive");
    client.seeText("Extended");
    client.choose("Volume", "accounts-2025");
    EXPECT_TRUE(waitFor([&] { return client.picker("every second").name() == "90 minutes"; }));
    client.seeText("Custom");
    client.choose("Volume", "Documents");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", standard).checked(); }));
}

TEST_F(PolicyFlow, PickersAndBandsHaveTheNamesOfTheirTiers)
{
    const Client &client = openBoard();
    for (const char *tier : {"every second", "every minute", "every hour", "every day", "every week", "every month"}) {
        EXPECT_TRUE(client.picker(tier)) << tier;
        EXPECT_TRUE(client.find("progress bar", tier)) << tier;
    }
    const Element picture = client.find([](const Element &element) {
        return element.description() == "every second for 12 hours, every minute for 24 hours, every hour for 7 days, "
                                        "every day for 4 weeks, every week for 6 months, every month for 1 year";
    });
    EXPECT_EQ(picture.name(), "Standard");
}

TEST_F(PolicyFlow, AnAgentThatGoesAwayWithTheBoardOpenGivesItBack)
{
    const Client &client = openBoard();
    killAgent();
    client.seeText("Waiting for the Quillfen agent");
    startAgent("everyday");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    show(client);
}

} // namespace
} // namespace quillfen::e2e
