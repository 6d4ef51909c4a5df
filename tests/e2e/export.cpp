// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

namespace quillfen::e2e {
namespace {

const std::string download = "Download, Ready within the hour for most volumes. The link works for 48 hours.";
const std::string ship = "Ship it to me, BD-R XL discs, LTO tape, SSD or hard disk. Price shown before you confirm.";
const std::string discs = "BD-R XL 100 GB × 2, media $34.00 · packing $6.00 · work $18.00 · shipping $12.50";
const std::string tape = "LTO-8 tape, media $78.00 · packing $6.00 · work $25.00 · shipping $14.00";
const std::string tapeToEurope = "LTO-8 tape, media $78.00 · packing $6.00 · work $25.00 · shipping $22.00";

class ExportFlow : public Flow {
protected:
    Client &openBoard(const std::vector<std::string> &options = {})
    {
        Client &client = open("everyday", {}, options);
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        pressKeys("Ctrl+4");
        client.seeText("How should it reach you?");
        EXPECT_TRUE(waitFor([&] { return client.find("radio button", "Documents, 100 GB").checked(); }));
        return client;
    }
};

TEST_F(ExportFlow, MediaAreOrderedAndTheCopyIsRemoved)
{
    const Client &client = openBoard();
    client.press("radio button", "studio-projects, 256 GB");
    client.press("radio button", ship);
    client.press("radio button", tape);
    client.press("radio button", "European Union");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", tapeToEurope).checked(); }))
        << "the medium stays chosen where it is offered";
    client.fill("Postal address", "418 Alder Street, Duluth");
    client.press("push button", "Order the copy");
    client.hear("Order placed. Quillfen confirms the price by e-mail before anything ships.");
    client.seeText("LTO-8 tape to EU");
    client.press("push button", "Remove, studio-projects");
    client.hear("copy removed");
    client.seeNo("push button", "Remove, studio-projects");
    EXPECT_TRUE(client.find("push button", "Remove, Documents")) << "the others stay";
}

TEST_F(ExportFlow, TheKeyboardAloneOrdersMedia)
{
    const Client &client = openBoard();
    client.tabTo("radio button", "Documents, 100 GB");
    pressKeys("Down");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", "photos-archive, 512 GB").checked(); }));
    pressKeys("Up");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", "Documents, 100 GB").checked(); }));
    client.tabTo("radio button", download);
    pressKeys("Down");
    client.tabTo("radio button", discs);
    pressKeys("Down");
    EXPECT_TRUE(waitFor([&] { return client.find("radio button", tape).checked(); }));
    client.tabTo("text", "Postal address");
    typeText("418 Alder Street");
    client.tabTo("push button", "Order the copy");
    pressKeys("space");
    client.hear("Order placed. Quillfen confirms the price by e-mail before anything ships.");
}

TEST_F(ExportFlow, AnOrderWithoutAnAddressIsTheAgentsToRefuse)
{
    const Client &client = openBoard();
    client.press("radio button", ship);
    EXPECT_TRUE(client.see("radio button", tape));
    client.press("push button", "Order the copy");
    client.hear("Give the postal address that the copy goes to.");
}

TEST_F(ExportFlow, ARequestedDownloadIsPackedAndItsLinkAppears)
{
    const Client &client = openBoard({"--speed", "50"});
    client.press("radio button", "accounts-2025, 20 GB");
    client.press("push button", "Request copy");
    client.hear("Copy requested. The vault is packing it; the download link appears under Recent copies and you are "
                "e-mailed when it is ready.");
    EXPECT_TRUE(client.see("push button", "Remove, accounts-2025"));
    EXPECT_TRUE(waitFor([&] {
        if (client.find("push button", "Open download, accounts-2025")) {
            return true;
        }
        pressKeys("F5");
        return false;
    }));
    client.seeText("Opens only with quill-accounts-2025.key; the key is not in the download.");
}

TEST_F(ExportFlow, EveryStateOfACopyIsToldWithItsRow)
{
    const Client &client = openBoard();
    for (const char *text :
         {"ready", "shipped", "LTO-8 tape to US", "Opens only with quill-Documents.key; the key is not on the tape.",
          "tracking 1Z 84W 031 0390 2281", "failed",
          "The volume is larger than the medium chosen; pick a larger one."}) {
        client.seeText(text);
    }
    for (const char *button :
         {"Open download, photos-archive", "Remove, photos-archive", "Remove, Documents", "Remove, vm-store"}) {
        EXPECT_TRUE(client.find("push button", button)) << button;
    }
}

TEST_F(ExportFlow, AnAgentThatGoesAwayWithTheBoardOpenGivesItBack)
{
    const Client &client = openBoard();
    killAgent();
    client.seeText("Waiting for the Quillfen agent");
    startAgent("everyday");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    pressKeys("Ctrl+4");
    client.seeText("How should it reach you?");
    client.seeText("tracking 1Z 84W 031 0390 2281");
}

} // namespace
} // namespace quillfen::e2e
