// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentprocess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>

using namespace quillfen::localagent::test;
using testing::HasSubstr;

namespace {

mode_t modeOf(const std::string &path)
{
    struct stat info = {};
    EXPECT_EQ(::lstat(path.c_str(), &info), 0) << path;
    return info.st_mode & 0777U;
}

std::string parentOf(const std::string &path)
{
    return std::filesystem::path(path).parent_path();
}

std::string textOf(const json::object &answer)
{
    return answer.empty() ? "no answer" : json::serialize(answer);
}

// Leaves a socket file behind that nobody listens on.
void leaveSocketFile(const std::string &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    ::close(socket);
}

} // namespace

TEST(Program, HelpNamesEverySwitchAndWorld)
{
    const Outcome help = runAgent({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char *word :
         {"--socket",     "--home",         "--world",   "--speed", "--seed",         "--restore-points-form",
          "--help",       "--version",      "--delay",   "--fail",  "--drop",         "--silent",
          "--drop-after", "--stop-reading", "--garbage", "empty",   "engine-stopped", "everyday",
          "first-run",    "large",          "lists",     "operator"}) {
        EXPECT_THAT(help.output, HasSubstr(word));
    }
}

TEST(Program, VersionIsTheOneItTellsItsClients)
{
    const Outcome version = runAgent({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    AgentProcess agent;
    Peer peer(agent.socket());
    const std::string told(peer.call("agent.version").at("result").at("version").as_string());
    EXPECT_EQ(version.output, "quillfen-localagent " + told + "\n");
}

TEST(Program, AWrongCommandLineIsExplained)
{
    const std::vector<std::vector<std::string>> wrong = {
        {"--fly"},
        {"--world"},
        {"--speed", "fast"},
        {"--speed=0"},
        {"--seed", "-1"},
        {"--delay", "x"},
        {"--fail", "x=y"},
        {"--drop-after", "soon"},
        {"everyday"},
        {"--stop-reading="},
        {"--restore-points-form", "list"},
    };
    for (const auto &arguments : wrong) {
        const Outcome outcome = runAgent(arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments.front();
        EXPECT_THAT(outcome.output, HasSubstr("quillfen-localagent: "));
        EXPECT_THAT(outcome.output, HasSubstr("Try quillfen-localagent --help."));
    }
}

TEST(Program, AWorldThatIsNotThereStopsItBeforeItListens)
{
    const Folder folder;
    const Outcome outcome =
        runAgent({"--socket", folder.path("a.sock"), "--home", folder.path(), "--world", "nowhere"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("there is no world \"nowhere\" and no such file"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("a.sock")));
}

TEST(Program, TakesAWorldFromAFile)
{
    const Folder folder;
    std::ofstream(folder.path("mine.json")) << R"({"account": {"signed_in": true, "email": "me@example.org"}})";
    AgentProcess agent({"--world", folder.path("mine.json")});
    Peer peer(agent.socket());
    EXPECT_THAT(textOf(peer.call("auth.status")), HasSubstr("me@example.org"));
}

TEST(Program, TheFolderOfTheSocketIsPrivate)
{
    AgentProcess agent;
    ASSERT_TRUE(agent.running());
    EXPECT_EQ(modeOf(parentOf(agent.socket())), 0700U);
    EXPECT_EQ(modeOf(agent.socket()), 0600U);
}

TEST(Program, AFolderThatIsOpenToOthersIsRefusedAndLeftAsItIs)
{
    const Folder folder;
    std::filesystem::create_directory(folder.path("open"));
    ASSERT_EQ(::chmod(folder.path("open").c_str(), 0755), 0);
    const Outcome outcome = runAgent({"--socket", folder.path("open/a.sock"), "--home", folder.path()});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("is open to other users; make it private (chmod 700)"));
    EXPECT_EQ(modeOf(folder.path("open")), 0755U);
}

TEST(Program, AFolderAboveTheSocketsThatOthersCanWriteToIsRefused)
{
    const Folder folder;
    const std::string above = folder.path("above");
    std::filesystem::create_directory(above);
    for (const mode_t mode : {0777U, 0770U}) {
        ASSERT_EQ(::chmod(above.c_str(), mode), 0);
        const Outcome outcome = runAgent({"--socket", above + "/own/a.sock", "--home", folder.path()});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.output, HasSubstr("other users can write into the folder " + above));
        EXPECT_FALSE(std::filesystem::exists(above + "/own")) << "nothing is made in it";
    }
}

TEST(Program, AStickyFolderAboveTheSocketsIsGoodEnough)
{
    const Folder folder;
    const std::string above = folder.path("above");
    std::filesystem::create_directory(above);
    ASSERT_EQ(::chmod(above.c_str(), 01777), 0);
    AgentProcess agent({}, above + "/own/deep/a.sock");
    EXPECT_TRUE(agent.running());
    EXPECT_EQ(modeOf(above + "/own"), 0700U);
    EXPECT_EQ(modeOf(above + "/own/deep"), 0700U);
}

TEST(Program, ALinkDoesNotHideAnUnsafeFolderAbove)
{
    const Folder folder;
    const std::string above = folder.path("above");
    std::filesystem::create_directories(above + "/own");
    ASSERT_EQ(::chmod((above + "/own").c_str(), 0700), 0);
    ASSERT_EQ(::chmod(above.c_str(), 0777), 0);
    std::filesystem::create_directory_symlink(above + "/own", folder.path("link"));
    const Outcome outcome = runAgent({"--socket", folder.path("link/a.sock"), "--home", folder.path()});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("other users can write into the folder"));
}

TEST(Program, AFolderAboveTheSocketsOfAnotherUserIsRefused)
{
    const Folder folder;
    const std::string above = folder.path("above");
    std::filesystem::create_directory(above);
    if (::chown(above.c_str(), 12345, static_cast<gid_t>(-1)) != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    const Outcome outcome = runAgent({"--socket", above + "/own/a.sock", "--home", folder.path()});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("the folder " + above + " on the way to the socket belongs to another user"));
}

TEST(Program, KeysAreForTheUserAlone)
{
    AgentProcess agent;
    Peer peer(agent.socket());
    ASSERT_FALSE(peer.call("agent.version").empty());
    EXPECT_EQ(modeOf(agent.home() + "/.quill/quill-Documents.key"), 0600U);
    EXPECT_TRUE(std::filesystem::is_directory(agent.home() + "/Quillfen/Documents"));
}

TEST(Program, EndsCleanlyOnBothSignals)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        AgentProcess agent;
        Peer peer(agent.socket());
        ASSERT_FALSE(peer.call("agent.version").empty());
        EXPECT_EQ(agent.end(signal), 0);
        EXPECT_TRUE(peer.ends());
        EXPECT_FALSE(std::filesystem::exists(agent.socket()));
        EXPECT_FALSE(std::filesystem::exists(agent.home() + "/Quillfen/Documents"));
    }
}

TEST(Program, ALeftoverSocketFileIsReplaced)
{
    const Folder folder;
    leaveSocketFile(folder.path("a.sock"));
    AgentProcess agent({}, folder.path("a.sock"));
    Peer peer(agent.socket());
    EXPECT_FALSE(peer.call("agent.version").empty());
}

TEST(Program, AnAgentThatAnswersKeepsItsSocket)
{
    AgentProcess first;
    ASSERT_TRUE(first.running());
    const Outcome second = runAgent({"--socket", first.socket(), "--home", first.home()});
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.output, HasSubstr("an agent answers already on " + first.socket()));
    Peer peer(first.socket());
    EXPECT_FALSE(peer.call("agent.version").empty());
}

TEST(Program, AFileInTheWayIsLeftAlone)
{
    const Folder folder;
    std::ofstream(folder.path("a.sock")) << "precious";
    const Outcome outcome = runAgent({"--socket", folder.path("a.sock"), "--home", folder.path()});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("exists and is not a socket"));
    EXPECT_EQ(std::filesystem::file_size(folder.path("a.sock")), 8U);
}

TEST(Program, APathTheClientCouldNotUseIsRefused)
{
    const Folder folder;
    const std::string path = folder.path(std::string(104, 'x'));
    EXPECT_THAT(runAgent({"--socket", path}).output, HasSubstr("longer than 103 bytes"));
    EXPECT_THAT(runAgent({"--socket", ""}).output, HasSubstr("the socket path is empty"));
}

TEST(Program, SpeedMakesTheWorldRunFaster)
{
    AgentProcess agent({"--speed", "1000", "--world", "first-run"});
    Peer peer(agent.socket());
    peer.call("auth.enroll", {{"code", "quill-AAAA-1111"}});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(textOf(peer.call("vm.prepare")), HasSubstr("Running"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5)); // thirteen in its own time
}
