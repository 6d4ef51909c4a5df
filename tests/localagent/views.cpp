// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/mounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr VolumeId documents = 3121;  // mounted
constexpr VolumeId initiators = 3133; // iSCSI
constexpr VolumeId stopped = 3134;    // not mounted

json::object second(VolumeId volume, std::string_view timestamp)
{
    return {{"volume_id", volume}, {"timestamp", timestamp}};
}

json::object named(VolumeId volume, std::string_view name)
{
    return {{"volume_id", volume}, {"name", name}};
}

json::object ofView(VolumeId volume, std::string_view view)
{
    return {{"volume_id", volume}, {"view", view}};
}

std::vector<std::string> viewNames(TestAgent &agent, VolumeId volume)
{
    std::vector<std::string> names;
    const json::value answer = agent.result("volumes.views", {{"volume_id", volume}});
    for (const json::value &view : answer.at("views").as_array()) {
        names.push_back(text(view.at("name")));
    }
    return names;
}

bool isOpen(TestAgent &agent, VolumeId volume, std::string_view name)
{
    const json::value answer = agent.result("volumes.views", {{"volume_id", volume}});
    for (const json::value &view : answer.at("views").as_array()) {
        if (text(view.at("name")) == name) {
            return view.at("open").as_bool();
        }
    }
    return false;
}

std::string folderOf(const TestAgent &agent, std::string_view mount)
{
    return agent.world.home.mountFolder(mount);
}

} // namespace

TEST(Views, AreMountedBesideAMountedVolumeAsAFolderNobodyWritesInto)
{
    TestAgent agent;
    const json::value answer = agent.finish("views.open", second(documents, "2026-11-20T09:30:15Z"));
    const std::string folder = folderOf(agent, "Documents-view-20261120-0930");
    EXPECT_EQ(answer.at("mounted"), json::value(true));
    EXPECT_EQ(answer.at("mountpoint"), json::value(folder));
    struct stat info = {};
    ASSERT_EQ(::stat(folder.c_str(), &info), 0);
    EXPECT_TRUE(S_ISDIR(info.st_mode));
    EXPECT_EQ(info.st_mode & 0222U, 0U);
    EXPECT_EQ(agent.eventNames(), "mount.changed");
    EXPECT_EQ(agent.lastEvent("mount.changed").as_array().back().at("name"),
              json::value("Documents-view-20261120-0930"));
}

TEST(Views, KeepTheSecondThatWasAskedFor)
{
    TestAgent agent;
    agent.finish("views.open", second(documents, "2026-11-20T10:30:15+01:00"));
    const json::value views = agent.result("volumes.views", {{"volume_id", documents}}).at("views");
    EXPECT_EQ(views.as_array().back().at("point_in_time"), json::value("2026-11-20T09:30:15.000Z"));
}

TEST(Views, OfAVolumeThatIsNotMountedAreMountedOnRequest)
{
    TestAgent agent;
    const json::value answer = agent.finish("views.open", second(stopped, "2026-11-20T09:30:15Z"));
    EXPECT_EQ(answer.at("mounted"), json::value(false));
    EXPECT_EQ(answer.at("note"),
              json::value("The view 20261120-0930 is open. Mount it to look at it on this computer."));
    const json::value mount = agent.result("mount.attach", ofView(stopped, "20261120-0930"));
    EXPECT_TRUE(std::filesystem::is_directory(text(mount.at("mountpoint"))));
    EXPECT_EQ(agent.result("mount.attach", ofView(stopped, "20261120-0930")), mount) << "twice is once";
}

TEST(Views, OfAnIscsiVolumeAreForItsInitiators)
{
    TestAgent agent;
    const json::value answer = agent.finish("views.open", second(initiators, "2026-11-20T09:30:15Z"));
    EXPECT_EQ(answer.at("mounted"), json::value(false));
    EXPECT_EQ(answer.at("note"), json::value("The view 20261120-0930 is open for the initiators of vm-store."));
    EXPECT_THAT(agent.refusal("mount.attach", ofView(initiators, "20261120-0930")), HasSubstr("is an iSCSI volume"));
}

TEST(Views, GetNamesOfTheirOwn)
{
    TestAgent agent;
    for (const char *timestamp : {"2026-11-20T09:30:15Z", "2026-11-20T09:30:16Z", "2026-11-20T09:30:16.500Z"}) {
        agent.finish("views.open", second(stopped, timestamp));
    }
    agent.finish("views.open", second(stopped, "2026-11-20T09:30:16Z"));
    EXPECT_THAT(viewNames(agent, stopped), ElementsAre("20261120-0930", "20261120-093016", "20261120-093016500"))
        << "the same second again is the same view";
}

TEST(Views, ANameStandsForOneSecond)
{
    TestAgent agent;
    json::object request = second(documents, "2026-11-20T09:30:15Z");
    request["name"] = "BEFORE-merge";
    EXPECT_EQ(agent.refusal("views.open", request),
              "Documents has a view named before-merge of another second. Release it first, or choose another name.");
    request["name"] = "a/b";
    EXPECT_EQ(agent.refusal("views.open", request), "The name cannot hold \"/\": it is the name of a folder too.");
    request["name"] = "";
    EXPECT_EQ(agent.refusal("views.open", request), "Give the view a name.");
}

TEST(Views, OpenOnlyWithinTheHistory)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("views.open", second(documents, "2020-01-01T00:00:00Z")),
              "The history of Documents begins at 2026-08-25T12:00:00.000Z. Choose a later moment.");
    EXPECT_EQ(agent.refusal("views.open", second(documents, "2026-11-20T12:00:01Z")),
              "The history of Documents ends at 2026-11-20T12:00:00.000Z. Choose a moment in the past.");
    EXPECT_EQ(agent.refusal("views.open", second(documents, "yesterday")),
              "\"yesterday\" is not a moment. Write it like 2026-11-20T09:30:00Z.");
    const json::value made = agent.result("volumes.create", {{"name", "new"}, {"size_bytes", gigabyte}});
    EXPECT_EQ(agent.refusal("views.open", second(made.at("id").as_int64(), "2026-11-20T12:00:00Z")),
              "new has no history yet. It begins with the first change after the volume is mounted.");
}

TEST(Views, NeedARunningEngine)
{
    TestAgent agent("engine-stopped");
    EXPECT_EQ(agent.refusal("views.open", second(documents, "2026-11-20T09:30:15Z")),
              "The engine is not running. Start it under Account & engine.");
}

TEST(Views, OfTheEverydayWorldAreInEveryState)
{
    TestAgent agent;
    EXPECT_THAT(viewNames(agent, documents), ElementsAre("before-merge", "board-meeting", "audit-october"));
    EXPECT_TRUE(std::filesystem::is_directory(folderOf(agent, "Documents-view-before-merge")));
    EXPECT_TRUE(isOpen(agent, documents, "board-meeting"));
    EXPECT_FALSE(isOpen(agent, documents, "audit-october"));
}

TEST(Views, AClosedOneIsOpenedAgainUnderItsName)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("mount.attach", ofView(documents, "audit-october")),
              "The view audit-october is not open any more. Open it again first.");
    const json::value views = agent.result("volumes.views", {{"volume_id", documents}}).at("views");
    json::object request = second(documents, text(views.at(2).at("point_in_time")));
    request["name"] = "audit-october";
    EXPECT_EQ(agent.finish("views.open", request).at("mounted"), json::value(true));
    EXPECT_TRUE(isOpen(agent, documents, "audit-october"));
    EXPECT_EQ(viewNames(agent, documents).size(), 3U);
}

TEST(Views, ReleasingTakesFolderMountAndViewAway)
{
    TestAgent agent;
    agent.finish("views.close", named(documents, "before-merge"));
    EXPECT_FALSE(std::filesystem::exists(folderOf(agent, "Documents-view-before-merge")));
    EXPECT_THAT(viewNames(agent, documents), ElementsAre("board-meeting", "audit-october"));
    EXPECT_EQ(agent.eventNames(), "mount.changed");
    EXPECT_EQ(agent.refusal("views.close", named(documents, "before-merge")),
              "Documents has no open view before-merge. Open it first.");
}

TEST(Views, UnmountingLeavesTheViewOpen)
{
    TestAgent agent;
    agent.result("mount.detach", named(documents, "Documents-view-before-merge"));
    EXPECT_FALSE(std::filesystem::exists(folderOf(agent, "Documents-view-before-merge")));
    EXPECT_TRUE(std::filesystem::exists(folderOf(agent, "Documents")));
    EXPECT_TRUE(isOpen(agent, documents, "before-merge"));
    EXPECT_EQ(agent.refusal("mount.detach", named(documents, "nothing")), "nothing is not mounted.");
}

TEST(Views, FilesInTheWayAreLeftAlone)
{
    TestAgent agent;
    const std::string folder = folderOf(agent, "accounts-2025-view-20261120-0930");
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/mine") << "text";
    agent.finish("views.open", second(stopped, "2026-11-20T09:30:15Z"));
    EXPECT_EQ(agent.refusal("mount.attach", ofView(stopped, "20261120-0930")),
              folder + " is in the way: move it somewhere else first.");
    EXPECT_TRUE(std::filesystem::exists(folder + "/mine"));
}

TEST(Views, CloseWhenEverythingIsUnmounted)
{
    TestAgent agent;
    detachAll(agent.world);
    EXPECT_FALSE(isOpen(agent, documents, "board-meeting"));
    EXPECT_FALSE(std::filesystem::exists(folderOf(agent, "Documents-view-before-merge")));
}

TEST(Views, GoWithTheirVolume)
{
    TestAgent agent;
    const std::int64_t opening = agent.start("views.open", second(documents, "2026-11-20T09:30:15Z"));
    agent.finish("volumes.remove", {{"volume_id", documents}});
    EXPECT_FALSE(std::filesystem::exists(folderOf(agent, "Documents-view-before-merge")));
    EXPECT_TRUE(agent.world.state.views.all.empty());
    ASSERT_TRUE(agent.answer(opening));
}

TEST(Views, ReleasedWhileTheyOpenAreNotOpened)
{
    TestAgent agent;
    json::object request = second(documents, "2026-11-20T09:30:15Z");
    request["name"] = "again";
    agent.finish("views.open", request);
    const std::int64_t opening = agent.start("views.open", request);
    agent.finish("views.close", named(documents, "again"));
    agent.pass(5);
    EXPECT_EQ(agent.answer(opening)->at("error").at("message"),
              json::value("The view was released while it was being opened."));
}
