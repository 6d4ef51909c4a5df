// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

class VolumesFlow : public Flow {
protected:
    /// The board of the everyday world, filled.
    Client &openFilled()
    {
        Client &client = open("everyday");
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        return client;
    }
};

TEST_F(VolumesFlow, TheAgentsVolumesFillTheTable)
{
    const Client &client = openFilled();
    EXPECT_THAT(columnNames(client),
                ElementsAre("Name", "Size", "Used", "Share", "Appliance", "Encryption", "Offsite"));
    const Names row{"Documents",    "100 GB",        "61.4 GB",      "SMB · mounted",
                    "running here", "On · key here", "100% · synced"};
    EXPECT_TRUE(waitFor([&] { return volumeRow(client, "Documents") == row; }))
        << testing::PrintToString(volumeRow(client, "Documents"));
}

TEST_F(VolumesFlow, TheHeaderCountsTheVolumes)
{
    const Client &client = openFilled();
    client.seeText("5 volumes · uploading");
}

TEST_F(VolumesFlow, TheFooterShowsPlanAccountAndEngine)
{
    const Client &client = openFilled();
    for (const char *text : {"Pro plan", "1.3 TB of 2.0 TB", "mara@northmere.example", "Engine running"}) {
        client.seeText(text);
    }
}

TEST_F(VolumesFlow, SearchFiltersAsOneTypes)
{
    const Client &client = openFilled();
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Search volumes"; }));
    typeText("DOC");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == Names{"Documents"}; }));
    typeText("x");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client).empty(); }));
    pressKeys("BackSpace");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == Names{"Documents"}; }));
}

TEST_F(VolumesFlow, EscClearsTheSearch)
{
    const Client &client = openFilled();
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Search volumes"; }));
    typeText("photos");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == Names{"photos-archive"}; }));
    pressKeys("Escape");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    EXPECT_EQ(client.find("text", "Search volumes").text(), "");
}

TEST_F(VolumesFlow, AClickOnARowSelectsItAndASecondOneKeepsIt)
{
    const Client &client = openFilled();
    const Rect cell = client.see("table cell", "studio-projects").place();
    clickAt(cell.x + cell.width / 2, cell.y + cell.height / 2);
    EXPECT_TRUE(waitFor([&] { return selectedVolume(client) == "studio-projects"; }));
    clickAt(cell.x + cell.width / 2, cell.y + cell.height / 2);
    pressKeys("Ctrl+f"); // input arrives in order: once the field has the keyboard, the click has acted
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Search volumes"; }));
    EXPECT_EQ(selectedVolume(client), "studio-projects");
}

TEST_F(VolumesFlow, AnAccountWithoutVolumesIsToldWhatAVolumeIs)
{
    const Client &client = open("empty");
    client.seeText("A volume is a drive on this Mac whose every second is kept offsite.");
    client.seeText("No volumes yet");
    EXPECT_FALSE(client.find("table", "Volumes"));
    EXPECT_EQ(client.all([](const Element &element) { return element.name() == "+ New volume"; }).size(), 2U)
        << "one in the header, one in the empty board";
}

} // namespace
} // namespace quillfen::e2e
