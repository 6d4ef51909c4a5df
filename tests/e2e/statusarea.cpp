// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "filemanager.h"
#include "flow.h"
#include "statushost.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr auto panelName = "Quillfen, running in background";
constexpr auto isProtected = "Protected · all data uploaded";

std::vector<std::string> labels(const std::vector<StatusEntry> &entries)
{
    std::vector<std::string> result;
    for (const StatusEntry &entry : entries) {
        if (!entry.label.empty()) {
            result.push_back(entry.label);
        }
    }
    return result;
}

/// Seconds of the processor that a program has used so far.
double secondsUsedBy(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    std::istringstream fields(text.substr(text.rfind(')') + 1)); // its name may hold anything
    std::string skipped;
    for (int field = 3; field < 14; ++field) {
        fields >> skipped;
    }
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

class StatusAreaFlow : public Flow {
protected:
    /// The panel of a program whose icon is there.
    static Element panelOf(const Client &client)
    {
        for (const Element &window : client.windows()) {
            if (window.name() == panelName) {
                return window;
            }
        }
        return {};
    }

    static void openPanel(const Client &client, const StatusHost &host)
    {
        // A window that is still coming would take the keyboard from the panel, which closes then.
        EXPECT_TRUE(waitFor([&] { return client.windows().empty() || client.windows().front().active(); }));
        host.click(1500, 10);
        EXPECT_TRUE(waitFor([&] { return panelOf(client).active(); })) << client.dump();
    }

    static bool isClosed(const Client &client)
    {
        return waitFor([&] { return !panelOf(client); });
    }

    static void closeWindow(const Client &client)
    {
        client.press("push button", "Close");
        EXPECT_TRUE(waitFor([&] { return client.windows().empty(); }));
    }
};

TEST_F(StatusAreaFlow, AnAreaThatComesLateIsTaken)
{
    Client &client = open("empty");
    client.seeText("No volumes yet");
    StatusHost host;
    host.seeIcon();
    EXPECT_EQ(host.registrations(), 1);
    EXPECT_EQ(host.text("Title"), "Quillfen");
    EXPECT_EQ(host.text("Status"), "Active");
}

TEST_F(StatusAreaFlow, AnIconWaitsUntilSomebodyShowsIcons)
{
    StatusHost host(StatusHost::Shown::Later);
    open("empty");
    ASSERT_TRUE(waitFor([&] { return host.asked() > 0; }));
    host.show();
    host.seeIcon();
    EXPECT_EQ(host.registrations(), 1);
}

TEST_F(StatusAreaFlow, AnAreaThatGoesAndComesBackHasOneIconAndAMenuThatWorks)
{
    auto first = std::make_unique<StatusHost>();
    Client &client = open("empty");
    first->seeIcon();
    closeWindow(client);
    first.reset();
    const StatusHost second;
    second.seeIcon();
    EXPECT_EQ(second.registrations(), 1);
    second.choose("Open Quillfen");
    client.seeText("No volumes yet");
}

TEST_F(StatusAreaFlow, AnAreaThatFollowsAnotherWithoutAGapIsTaken)
{
    auto first = std::make_unique<StatusHost>();
    const StatusHost second; // its turn comes in the moment when the first goes
    open("empty");
    first->seeIcon();
    first.reset();
    second.seeIcon();
    EXPECT_EQ(second.registrations(), 1);
}

TEST_F(StatusAreaFlow, WithoutAnAreaTheProgramStaysWithinReach)
{
    auto host = std::make_unique<StatusHost>();
    Client &client = open("empty");
    host->seeIcon();
    closeWindow(client);
    host.reset();
    Process again({QUILLFEN_CLIENT}, Desktop::instance().environment(), Desktop::instance().folder() / "second.log");
    EXPECT_EQ(again.finish(), 0) << again.output();
    client.seeText("No volumes yet");
}

TEST_F(StatusAreaFlow, TheIconTellsHowEverythingIs)
{
    const StatusHost host;
    open("empty");
    host.seeIcon();
    const auto tells = [&](const std::string &words) {
        return waitFor([&] { return host.toolTip() == "Quillfen · " + words; });
    };
    std::vector<StatusPicture> pictures;
    EXPECT_TRUE(tells(isProtected)) << host.toolTip();
    pictures.push_back(host.picture(16));
    startAgent("everyday");
    EXPECT_TRUE(tells("Uploading…")) << host.toolTip();
    pictures.push_back(host.picture(16));
    startAgent("engine-stopped");
    EXPECT_TRUE(tells("Engine stopped")) << host.toolTip();
    pictures.push_back(host.picture(16));
    EXPECT_EQ(host.registrations(), 1) << "the icon changes and is not replaced";

    // At sixteen pixels each differs from the others by more than a few edges: about the area of the dot.
    for (std::size_t one = 0; one < pictures.size(); ++one) {
        ASSERT_EQ(pictures[one].width, 16);
        for (std::size_t other = 0; other < one; ++other) {
            int different = 0;
            for (int pixel = 0; pixel < 16 * 16; ++pixel) {
                const int a = pictures[one].opacity(pixel % 16, pixel / 16);
                const int b = pictures[other].opacity(pixel % 16, pixel / 16);
                different += std::abs(a - b) > 128 ? 1 : 0;
            }
            EXPECT_GE(different, 12) << one << " and " << other;
        }
    }
}

TEST_F(StatusAreaFlow, TheIconIsDrawnForTheSizesOfPanels)
{
    const StatusHost host;
    open("empty");
    host.seeIcon();
    for (const int size : {16, 22, 24, 32, 48}) {
        EXPECT_EQ(host.picture(size).height, size);
    }
}

TEST_F(StatusAreaFlow, ThePlainMenuOffersWhatThePanelDoes)
{
    const StatusHost host;
    Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    host.seeIcon();
    const auto entries = host.menu();
    EXPECT_THAT(labels(entries), ElementsAre("Uploading…", "Volumes", "Time travel", "+ New volume", "Open Quillfen",
                                             "Activity", "About Quillfen", "Quit"));
    const auto volumes = std::find_if(entries.begin(), entries.end(), [](auto &one) { return one.label == "Volumes"; });
    ASSERT_NE(volumes, entries.end());
    EXPECT_THAT(labels(volumes->below), Contains("Documents · Synced"));
    EXPECT_EQ(volumes->below.size(), everydayVolumes().size());
}

TEST_F(StatusAreaFlow, EveryEntryOfThePlainMenuDoesItsDeed)
{
    const FileManager files;
    const StatusHost host;
    Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    host.seeIcon();

    host.choose("Documents · Synced");
    EXPECT_TRUE(waitFor([&] { return files.folders().size() == 1; }));
    EXPECT_THAT(files.folders(), ElementsAre(HasSubstr("/Documents")));

    closeWindow(client);
    host.choose("Open Quillfen");
    EXPECT_TRUE(client.see("page tab", "Volumes").selected());
    closeWindow(client);
    host.choose("Activity");
    EXPECT_TRUE(client.see("push button", "Copy all")) << "beside a window that is closed";
    pressKeys("Escape");
    client.seeNo("push button", "Copy all");
    host.choose("Time travel");
    EXPECT_TRUE(waitFor([&] { return client.see("page tab", "Time travel").selected(); }));
    closeWindow(client);
    host.choose("+ New volume");
    EXPECT_TRUE(client.see("push button", "Create volume"));
    host.choose("About Quillfen");
    client.seeText("https://quillfen.example");
    host.choose("Quit");
    EXPECT_EQ(client.process().finish(), 0) << client.process().output();
    EXPECT_TRUE(waitFor([&] { return host.icons().empty(); }));
}

TEST_F(StatusAreaFlow, NamesStandInThePlainMenuAsTheyAre)
{
    const auto world = Desktop::instance().folder() / "names.json";
    std::ofstream(world) << R"({"account": {"signed_in": true, "email": "m@example.com", "tenant": "n", "plan": "pro",
        "capacity_gb": 2048}, "engine": {"exists": true, "status": "Running", "memory": "4 GB"},
        "volumes": [{"name": "my_own_notes", "size_gb": 10}]})";
    const StatusHost host;
    const Client &client = open(world);
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == std::vector<std::string>{"my_own_notes"}; }));
    host.seeIcon();
    const auto entries = host.menu();
    ASSERT_GE(entries.size(), 3U);
    // A menu on the bus marks keys by "_" and writes the letter itself as two.
    EXPECT_THAT(labels(entries[2].below), ElementsAre(StartsWith("my__own__notes · ")));
}

TEST_F(StatusAreaFlow, AClickTogglesThePanel)
{
    const StatusHost host;
    const Client &client = open("everyday");
    host.seeIcon();
    openPanel(client, host);
    const Element panel = panelOf(client);
    for (const char *text : {"Running in background", "Uploading…", "Pro plan", "1.3 TB of 2.0 TB", "4 GB RAM"}) {
        EXPECT_TRUE(waitFor([&] { return bool(panel.find([&](auto &one) { return one.name() == text; })); })) << text;
    }
    host.click(1500, 10);
    EXPECT_TRUE(isClosed(client));
}

TEST_F(StatusAreaFlow, ThePanelClosesOnEscAndOnAClickElsewhere)
{
    const StatusHost host;
    const Client &client = open("everyday");
    host.seeIcon();
    openPanel(client, host);
    pressKeys("Escape");
    EXPECT_TRUE(isClosed(client));
    openPanel(client, host);
    const Rect window = windowOnScreen();
    clickAt(window.x + window.width / 2, window.y + window.height - 40);
    EXPECT_TRUE(isClosed(client));
    EXPECT_TRUE(waitFor([&] { return client.windows().size() == 1 && client.windows().front().active(); }));
}

TEST_F(StatusAreaFlow, ThePanelIsUsedByKeysAlone)
{
    const FileManager files;
    const StatusHost host;
    Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    host.seeIcon();
    closeWindow(client);
    openPanel(client, host);
    client.enter("push button", "Documents");
    EXPECT_TRUE(waitFor([&] { return files.folders().size() == 1; }));
    client.enter("push button", "Time travel");
    EXPECT_TRUE(waitFor([&] { return client.see("page tab", "Time travel").selected(); }));
    EXPECT_TRUE(isClosed(client));
    closeWindow(client);
    openPanel(client, host);
    client.enter("push button", "Quit");
    EXPECT_EQ(client.process().finish(), 0) << client.process().output();
}

TEST_F(StatusAreaFlow, ThePanelIsUsedThroughAScreenReader)
{
    const StatusHost host;
    Client &client = open("everyday");
    host.seeIcon();
    closeWindow(client);
    openPanel(client, host);
    const auto named = client.all([](const Element &element) { return element.name() == "Quillfen"; });
    EXPECT_EQ(named.size(), 1U) << "the brand is said once\n" << client.dump();
    client.press("push button", "+ New volume");
    EXPECT_TRUE(client.see("push button", "Create volume"));
    EXPECT_TRUE(isClosed(client));
}

TEST_F(StatusAreaFlow, AnIconAtRestLeavesTheProcessorAlone)
{
    auto host = std::make_unique<StatusHost>();
    Client &client = open("empty");
    host->seeIcon();
    closeWindow(client);
    for (int restart = 0; restart < 5; ++restart) {
        host = std::make_unique<StatusHost>();
        host->seeIcon();
        EXPECT_EQ(host->registrations(), 1);
    }
    const double before = secondsUsedBy(client.process().id());
    const auto end = Clock::now() + std::chrono::seconds(2);
    EXPECT_FALSE(waitFor([&] { return Clock::now() > end && host->icons().size() != 1; }, std::chrono::seconds(2)));
    EXPECT_LT(secondsUsedBy(client.process().id()) - before, 0.2 * slowness);
}

} // namespace
} // namespace quillfen::e2e
