// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "filemanager.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using Names = std::vector<std::string>;

/// What may be done with one second of a volume's past, in a world that runs fast.
class TimeTravelFlow : public Flow {
protected:
    Client &arrive()
    {
        Client &client = open("everyday", {}, {"--speed", "30"});
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        return client;
    }

    static fs::path folder(const std::string &mount) { return Desktop::instance().home() / "Quillfen" / mount; }

    /// The name of the first element of this role that begins with `beginning`, once it shows.
    static std::string nameOf(const Client &client, const std::string &role, const std::string &beginning)
    {
        std::string name;
        const auto isThere = [&] {
            const Element found = client.find([&](const Element &element) {
                return element.role() == role && element.name().rfind(beginning, 0) == 0;
            });
            name = found.name();
            return !name.empty();
        };
        EXPECT_TRUE(waitFor(isThere)) << role << ' ' << beginning << '\n' << client.dump();
        return name;
    }

    /// What follows `beginning` in that name.
    static std::string restOf(const Client &client, const std::string &role, const std::string &beginning)
    {
        const std::string name = nameOf(client, role, beginning);
        return name.substr(std::min(beginning.size(), name.size()));
    }

    static void dragIntoThePast(const Client &client)
    {
        const Element strip = client.see("slider", "Timeline");
        const double before = strip.value();
        const Rect place = strip.place();
        {
            Drag drag(place.x + place.width / 2, place.y + place.height / 2);
            drag.moveBy(-place.width / 8, 0);
            EXPECT_TRUE(waitFor([&] { return strip.value() < before; })) << "while the button is still down";
        }
    }

    /// Reads the board again until the copy is whole.
    static void waitUntilCopied(const Client &client, const std::string &name)
    {
        const auto isWhole = [&] { return bool(client.find("push button", "Make it a volume, " + name)); };
        for (int look = 0; look < 60 && !isWhole(); ++look) {
            pressKeys("F5");
            static_cast<void>(waitFor(isWhole, std::chrono::milliseconds(500)));
        }
        EXPECT_TRUE(isWhole()) << client.dump();
    }
};

TEST_F(TimeTravelFlow, ASecondIsDraggedToOpenedMountedShownAndReleased)
{
    const FileManager viewer;
    const Client &client = arrive();
    client.click("page tab", "Time travel");
    client.seeText("Viewing the past · read-only");
    client.choose("Volume", "accounts-2025");
    client.seeText("None. Each view is read-only; release it when done.");

    dragIntoThePast(client);
    client.click("push button", "Open this second read-only");
    const std::string view = restOf(client, "push button", "Mount, ");
    const std::string second = restOf(client, "label", "as of ");
    client.hear("Opening accounts-2025 as it was at " + second);
    client.hear("The view " + view + " is open. Mount it to look at it on this computer.");

    client.click("push button", "Mount, " + view);
    client.hear("view " + view + " mounted");
    const fs::path mount = folder("accounts-2025-view-" + view);
    ASSERT_TRUE(fs::is_directory(mount));
    EXPECT_EQ(fs::status(mount).permissions() & fs::perms::owner_write, fs::perms::none);

    client.click("push button", "Show in Finder, " + view);
    EXPECT_TRUE(waitFor([&] { return !viewer.folders().empty(); }));
    EXPECT_THAT(viewer.folders(), ElementsAre(mount));

    client.click("push button", "Release, " + view);
    client.hear("released " + view);
    client.seeText("None. Each view is read-only; release it when done.");
    EXPECT_FALSE(fs::exists(mount));
}

TEST_F(TimeTravelFlow, ASecondBecomesAVolume)
{
    const Client &client = arrive();
    client.click("table cell", "accounts-2025");
    client.click("push button", "Time travel");
    EXPECT_TRUE(waitFor([&] { return client.picker("Volume").name() == "accounts-2025"; }))
        << "the board shows the volume it was opened for";
    client.seeText("None. Each view is read-only; release it when done.");

    client.click("push button", "New volume from this second");
    const std::string second = restOf(client, "text", "New volume from ");
    const std::string name = client.see("text", "New volume from " + second).text();
    EXPECT_EQ(name.rfind("accounts-2025-2", 0), 0U) << name;
    client.click("push button", "Prepare");
    client.hear("Preparing " + name +
                ". Watch it under New volumes in the making on this board; when it is fully copied, Make it a volume "
                "(also offered on the Volumes board).");
    client.seeText("New volumes in the making");
    static_cast<void>(client.see("push button", "Discard, " + name));
    nameOf(client, "label", "from " + second);

    waitUntilCopied(client, name);
    client.click("push button", "Make it a volume, " + name);
    client.seeText("It becomes an ordinary volume with its own history from now on.");
    client.fill("Make " + name + " a volume?", "accounts-before");
    client.click("push button", "Create volume");
    client.hear("accounts-before is a volume now; click Mount on it under Volumes to start it on this Mac.");
    client.seeNo("push button", "Discard, " + name);

    client.click("page tab", "Volumes");
    EXPECT_TRUE(waitFor([&] { return !volumeRow(client, "accounts-before").empty(); }));
}

TEST_F(TimeTravelFlow, TheKeyboardAloneGoesTheSameWay)
{
    const FileManager viewer;
    const Client &client = arrive();
    pressKeys("Ctrl+2");
    static_cast<void>(client.see("push button", "Mount, board-meeting"));

    client.tabTo("slider", "Timeline");
    const double before = client.see("slider", "Timeline").value();
    pressKeys("Page_Up");
    pressKeys("Left");
    EXPECT_TRUE(waitFor([&] { return client.find("slider", "Timeline").value() != before; }));
    client.enter("push button", "Open this second read-only");
    const auto newView = [&] {
        return client.find([](const Element &element) {
            return element.role() == "push button" && element.name().rfind("Show in Finder, 20", 0) == 0;
        });
    };
    ASSERT_TRUE(waitFor([&] { return bool(newView()); })) << client.dump();
    const std::string view = newView().name().substr(std::string("Show in Finder, ").size());
    const fs::path mount = folder("Documents-view-" + view);
    client.hear("The view is mounted at " + mount.string() + " (read-only).");
    client.enter("push button", "Show in Finder, " + view);
    EXPECT_TRUE(waitFor([&] { return viewer.folders() == Names{mount}; }));
    client.enter("push button", "Release, " + view);
    client.hear("released " + view);
    EXPECT_FALSE(fs::exists(mount));

    client.enter("push button", "New volume from this second");
    const std::string second = restOf(client, "text", "New volume from ");
    const std::string name = client.see("text", "New volume from " + second).text();
    pressKeys("Return");
    static_cast<void>(client.see("push button", "Discard, " + name));
    client.enter("push button", "Discard, " + name);
    client.seeText("The copy is deleted. The original volume and its history are untouched.");
    pressKeys("Return");
    client.hear("discarded");
    client.seeNo("push button", "Discard, " + name);
}

TEST_F(TimeTravelFlow, AnAgentThatGoesAwayDuringADragComesBackToABoardThatWorks)
{
    const Client &client = arrive();
    client.click("page tab", "Time travel");
    static_cast<void>(client.see("push button", "Mount, board-meeting"));
    {
        const Rect place = client.see("slider", "Timeline").place();
        Drag drag(place.x + place.width / 2, place.y + place.height / 2);
        drag.moveBy(-20, 0);
        killAgent();
        EXPECT_TRUE(waitFor([&] { return !client.find("slider", "Timeline"); }));
        drag.moveBy(-20, 0);
    }
    startAgent("everyday");
    client.click("page tab", "Time travel");
    client.seeText("Viewing the past · read-only");
    static_cast<void>(client.see("push button", "Mount, board-meeting"));
    dragIntoThePast(client);
}

} // namespace
} // namespace quillfen::e2e
