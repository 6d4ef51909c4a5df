// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "clipboard.h"
#include "filemanager.h"
#include "flow.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace quillfen::e2e {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using Names = std::vector<std::string>;

/// From the enrolment code to a volume that has come and gone, in a world that runs fast.
class NewcomerFlow : public Flow {
protected:
    Client &arrive()
    {
        Client &client = open("first-run", {}, {"--speed", "5"});
        client.seeText("Welcome to Quillfen");
        return client;
    }

    static fs::path folder() { return Desktop::instance().home() / "Quillfen" / "Letters"; }
    static fs::path keyFile() { return Desktop::instance().home() / ".quill" / "quill-Letters.key"; }

    static std::string keyInFile()
    {
        std::ifstream file(keyFile());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static void seeEngineQuestion(const Client &client)
    {
        client.hear("Signed in as mara@northmere.example");
        client.seeText("Set up the engine?");
        const Element text = client.find([](const Element &element) {
            return element.name().find(
                       "small virtual machine on this Mac. Setting it up downloads about 500 MB from") !=
                   std::string::npos;
        });
        EXPECT_TRUE(text) << client.dump();
        EXPECT_EQ(chosenSection(client), "Volumes") << "the window has moved on beneath the question";
    }

    static void seeEngineReady(const Client &client)
    {
        client.hearOneOf({"Setting up the engine…", "Downloading the engine · 0% of 500 MB",
                          "Downloading the engine · 40% of 500 MB", "Downloading the engine · 80% of 500 MB"});
        client.hear("The engine is ready.");
        client.seeText("Engine running");
    }

    static void seeCreatedAndMounted(const Client &client, const std::string &size)
    {
        client.hearOneOf({"Starting the appliance for Letters…", "Getting the appliance for Letters…",
                          "Starting the container of Letters…"});
        client.hear("Letters is mounted in ~/Quillfen/Letters");
        EXPECT_FALSE(client.find("dialog", "New volume")) << client.dump();
        const auto row = [&] { return volumeRow(client, "Letters"); };
        const auto isThere = [&] {
            const Names cells = row();
            return cells.size() == 7 && cells[1] == size && cells[3] == "SMB · mounted" && cells[4] == "running here" &&
                   cells[5] == "On · key here" && cells[6] == "100% · synced";
        };
        EXPECT_TRUE(waitFor(isThere)) << testing::PrintToString(row());
        client.seeText("1 volume · all protected");
        EXPECT_TRUE(fs::is_directory(folder()));
        EXPECT_EQ(fs::status(keyFile()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }

    static void seeGone(const Client &client)
    {
        client.hear("Deleting Letters: unmounting, then stopping its appliance once its last writes reach the vault…");
        client.hear("deleted Letters; its appliance is removed from this Mac");
        client.seeText("No volumes yet");
        client.seeNo("push button", "Delete volume…");
        EXPECT_FALSE(fs::exists(folder()));
        EXPECT_TRUE(fs::exists(keyFile())) << "the key is the user's";
    }
};

TEST_F(NewcomerFlow, SignsInSetsTheEngineUpAndLivesWithAVolume)
{
    const FileManager viewer;
    const Client &client = arrive();
    client.seeText("Network access");
    client.seeText("Allow outgoing connections on port 443, then open Quillfen again.");

    client.click("push button", "Sign in");
    client.hear("Paste the code or the link first.");
    client.fill("Enrolment code or link", "quill_5b1e77");
    client.click("push button", "Sign in");
    client.hear(
        "That is an API token. The app signs in with an enrolment code (quill-…) or link: on the Download page, "
        "Create enrolment code.");
    client.fill("Enrolment code or link", "quill-7FQ2-M8DX-41KP");
    client.click("push button", "Sign in");
    client.hear("The code was already used. Create a new one on the Download page.");
    client.fill("Enrolment code or link", "quill-AA11-BB22-CC33");
    client.click("push button", "Sign in");
    seeEngineQuestion(client);
    client.click("push button", "Set up");
    seeEngineReady(client);

    client.click("push button", "+ New volume");
    client.seeText("It appears in Finder as soon as it's created.");
    client.fill("Name", "Letters");
    client.fill("Size in GB", "25");
    client.click("check box", "Encrypt with a key only I hold");
    client.seeText("The key file is created on this Mac at ~/.quill/quill-Letters.key when the volume first starts. "
                   "Quillfen never sees it. If it's lost, the data can't be read.");
    EXPECT_TRUE(client.see("check box", "Mount on this Mac (~/Quillfen/Letters)").checked());
    client.click("push button", "Create volume");
    seeCreatedAndMounted(client, "25 GB");

    client.click("table cell", "Letters");
    client.seeText("Protected");
    client.seeText("appliance running here");
    client.click("push button", "Show in Finder");
    EXPECT_TRUE(waitFor([&] { return !viewer.folders().empty(); }));
    EXPECT_THAT(viewer.folders(), ElementsAre(folder()));
    client.click("push button", "Reveal");
    EXPECT_TRUE(waitFor([&] { return !viewer.items().empty(); }));
    EXPECT_THAT(viewer.items(), ElementsAre(keyFile()));
    client.click("push button", "Copy key");
    client.hear("Key copied.");
    EXPECT_EQ(clipboardText(), keyInFile());
    EXPECT_EQ(clipboardData("x-kde-passwordManagerHint"), "secret");

    client.click("push button", "Resize");
    client.seeText("Now 25 GB. Whole GB only; the filesystem follows.");
    client.fill("Resize Letters", "30");
    client.click("push button", "Resize");
    // The first notice may be replaced in the frame in which it comes.
    client.hearOneOf({"Growing Letters to 30 GB… the mount comes back by itself when the appliance is done.",
                      "Letters is now 30 GB and mounted again."});
    client.hear("Letters is now 30 GB and mounted again.");
    EXPECT_TRUE(waitFor([&] { return volumeRow(client, "Letters").at(1) == "30 GB"; }));
    EXPECT_TRUE(fs::is_directory(folder()));

    client.click("push button", "Delete volume…");
    client.seeText("Delete Letters?");
    client.click("push button", "Delete");
    seeGone(client);
}

TEST_F(NewcomerFlow, TheKeyboardAloneGoesTheSameWay)
{
    const FileManager viewer;
    const Client &client = arrive();

    client.tabTo("text", "Enrolment code or link");
    typeText("quill-KEYS-ONLY-0001");
    pressKeys("Return");
    seeEngineQuestion(client);
    pressKeys("Return");
    seeEngineReady(client);

    client.enter("push button", "+ New volume");
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Name").focused(); })) << client.dump();
    typeText("Letters");
    client.tabTo("slider", "Size");
    pressKeys("Home");
    for (int step = 0; step < 2; ++step) {
        pressKeys("Page_Up");
    }
    pressKeys("Right");
    EXPECT_TRUE(waitFor([&] { return client.find("slider", "Size").value() == 22; }));
    client.tabTo("check box", "Encrypt with a key only I hold");
    pressKeys("space");
    EXPECT_TRUE(waitFor([&] { return client.find("check box", "Encrypt with a key only I hold").checked(); }));
    pressKeys("Return");
    seeCreatedAndMounted(client, "22 GB");

    client.tabTo("table", "Volumes");
    pressKeys("Down");
    EXPECT_TRUE(waitFor([&] { return selectedVolume(client) == "Letters"; }));
    client.enter("push button", "Show in Finder");
    EXPECT_TRUE(waitFor([&] { return viewer.folders() == Names{folder()}; }));
    client.enter("push button", "Copy key");
    client.hear("Key copied.");
    EXPECT_EQ(clipboardText(), keyInFile());

    client.enter("push button", "Resize");
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Resize Letters").focused(); })) << client.dump();
    EXPECT_EQ(client.find("text", "Resize Letters").text(), "22");
    typeText("20"); // over the size, which is selected
    pressKeys("Return");
    client.hear("Shrinking Letters to 20 GB… the mount comes back by itself when the appliance is done.");
    client.hear("Letters is now 20 GB and mounted again.");

    client.enter("push button", "Delete volume…");
    client.seeText("Delete Letters?");
    pressKeys("Return");
    seeGone(client);
}

} // namespace
} // namespace quillfen::e2e
