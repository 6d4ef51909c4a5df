// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "clipboard.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::HasSubstr;

constexpr auto secret = "k7QmR2xWb9TfLdVz"; // of the everyday world's vm-store, from its appliance's log
constexpr auto hidden = "••••••••••••";
constexpr auto chapOff =
    "Off: an open target, no login. Anyone who can reach the portal can read and write this volume.";

class IscsiFlow : public Flow {
protected:
    Client &openBoard()
    {
        Client &client = open("everyday", {}, {"--speed", "5"});
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        return client;
    }

    static Element chap(const Client &client) { return client.see("check box", "Require CHAP"); }

    static bool speaksOfSecret(const Client &client)
    {
        return static_cast<bool>(client.find([](const Element &element) {
            return element.name().find(secret) != std::string::npos ||
                   element.text().find(secret) != std::string::npos ||
                   element.description().find(secret) != std::string::npos;
        }));
    }
};

TEST_F(IscsiFlow, ChapIsTurnedOffOnlyWhenThatIsMeantAndTheSecretIsCopied)
{
    Client &client = openBoard();
    client.click("table cell", "vm-store");
    client.seeText("iqn.2026-02.quillfen:vm-store");
    client.seeText("from the appliance's log");
    client.seeText(hidden);
    ASSERT_TRUE(waitFor([&] { return chap(client).checked(); }));
    EXPECT_FALSE(speaksOfSecret(client));

    client.click("check box", "Require CHAP");
    client.seeText("Turn CHAP off?");
    client.click("push button", "Cancel");
    client.seeNo("push button", "Turn off");
    EXPECT_TRUE(chap(client).checked());

    client.click("check box", "Require CHAP");
    client.click("push button", "Turn off");
    client.hear("CHAP is off: the target is open.");
    client.seeText(chapOff);
    EXPECT_FALSE(chap(client).checked());
    EXPECT_FALSE(client.shows(hidden));

    client.click("check box", "Require CHAP");
    client.hear("CHAP is on again.");
    client.seeText(hidden);
    client.click("push button", "Copy, CHAP secret");
    client.hear("Copied.");
    EXPECT_EQ(clipboardText(), secret);
    EXPECT_EQ(clipboardData("x-kde-passwordManagerHint"), "secret");
    EXPECT_FALSE(speaksOfSecret(client));

    client.click("push button", "Show");
    client.seeText(secret);
    client.click("push button", "Hide");
    client.seeText(hidden);
    EXPECT_FALSE(speaksOfSecret(client));

    client.click("push button", "Copy all");
    EXPECT_TRUE(waitFor([] { return clipboardText().find("--login") != std::string::npos; }));
    EXPECT_THAT(clipboardText(), HasSubstr(std::string("node.session.auth.password -v ") + secret + "\n"));
    EXPECT_EQ(client.process().output().find(secret), std::string::npos);
}

TEST_F(IscsiFlow, ThePortalIsSavedAndCleared)
{
    const Client &client = openBoard();
    client.click("table cell", "vm-store");
    client.seeText("192.168.1.20:3260");
    client.fill("Portal for other machines", "10.0.0.7");
    client.click("push button", "Save");
    client.hear("Portal saved. Other machines log in to 10.0.0.7.");
    client.seeText("10.0.0.7:3260");
    client.fill("Portal for other machines", "  ");
    client.click("push button", "Save");
    client.hear("Portal cleared: the target is reached from this Mac only.");
    client.seeText("127.0.0.1:3260 (this Mac only)");
    client.fill("Portal for other machines", "not an address!");
    client.click("push button", "Save");
    client.hear("The portal is an address or a host name without a port, like 192.168.1.20.");
    EXPECT_EQ(client.find("text", "Portal for other machines").text(), "not an address!");
}

TEST_F(IscsiFlow, TheKeyboardAloneMakesAnIscsiVolumeAndCopiesItsSecret)
{
    const Client &client = openBoard();
    client.enter("push button", "+ New volume");
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Name").focused(); })) << client.dump();
    typeText("lab");
    client.tabTo("radio button", "SMB, Finder, recommended");
    pressKeys("Right");
    pressKeys("Right");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", "iSCSI, Served to your network").checked(); }));
    client.seeNo("check box", "Mount on this Mac (~/Quillfen/lab)");
    pressKeys("Return");
    client.hear("Created lab");
    ASSERT_TRUE(waitFor([&] { return !volumeRow(client, "lab").empty(); }));

    client.tabTo("table", "Volumes");
    pressKeys("End");
    ASSERT_TRUE(waitFor([&] { return selectedVolume(client) == "lab"; }));
    client.enter("push button", "Start");
    client.hearOneOf({"Starting the appliance for lab…", "Getting the appliance for lab…"});
    client.hear("appliance for lab started");
    EXPECT_TRUE(waitFor([&] { return volumeRow(client, "lab").at(4) == "running here"; }));

    client.tabTo("check box", "Require CHAP");
    pressKeys("space");
    client.seeText("Turn CHAP off?");
    pressKeys("Escape");
    client.seeNo("push button", "Turn off");
    EXPECT_TRUE(chap(client).checked());
    client.enter("push button", "Show");
    ASSERT_TRUE(waitFor([&] { return client.find("push button", "Hide").focused(); })) << client.dump();
    pressKeys("Return");
    client.enter("push button", "Copy, CHAP secret");
    client.hear("Copied.");
    const std::string copied = clipboardText();
    EXPECT_EQ(copied.size(), 16U);

    client.tabTo("check box", "Require CHAP");
    pressKeys("space");
    client.seeText("Turn CHAP off?");
    pressKeys("Return");
    client.hear("CHAP is off: the target is open.");
    client.seeText(chapOff);
    EXPECT_EQ(clipboardText(), copied);
}

} // namespace
} // namespace quillfen::e2e
