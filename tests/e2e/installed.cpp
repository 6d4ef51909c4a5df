// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "flow.h"
#include "program.h"
#include "statushost.h"

#include <fstream>
#include <memory>

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr auto id = "io.quillfen.Quillfen";

/// Both programs where they are installed, and nothing of them from where they are built.
class InstalledFlow : public Flow {
protected:
    static void SetUpTestSuite()
    {
        const auto [status, output] = program::run({QUILLFEN_CMAKE, "--install", QUILLFEN_BUILD, "--prefix", prefix()});
        ASSERT_EQ(status, 0) << output;
    }

    static std::filesystem::path prefix() { return Desktop::instance().folder() / "installed"; }
    static std::filesystem::path applications() { return prefix() / "share" / "applications"; }

    /// What a session has whose programs come from there.
    static Environment session()
    {
        return {{"PATH", (prefix() / "bin").string() + ":" + std::getenv("PATH")},
                {"XDG_DATA_DIRS", (prefix() / "share").string() + ":/usr/share"}};
    }

    static std::filesystem::path serviceFile()
    {
        return prefix() / "share" / "dbus-1" / "services" / (std::string(id) + ".service");
    }

    /// Takes the place of `startAgent`.
    static std::unique_ptr<Process> installedAgent(const std::string &world)
    {
        const Desktop &desktop = Desktop::instance();
        const std::vector<std::string> command{prefix() / "bin" / "quillfen-localagent",
                                               "--world",
                                               world,
                                               "--socket",
                                               desktop.agentSocket(),
                                               "--home",
                                               desktop.home()};
        auto agent =
            std::make_unique<Process>(command, desktop.environment(), desktop.folder() / "installed-agent.log");
        EXPECT_TRUE(waitFor([&] { return listensAt(desktop.agentSocket()); })) << agent->output();
        return agent;
    }

    /// A launcher of the session. What it starts ends with it.
    static std::unique_ptr<Process> launched(const std::vector<std::string> &command)
    {
        auto variables = Desktop::instance().environment();
        for (const auto &[name, value] : session()) {
            variables.insert_or_assign(name, value);
        }
        return std::make_unique<Process>(command, variables, Desktop::instance().folder() / "launcher.log");
    }

    /// The program of the session, as it is known on the bus.
    static Element running()
    {
        const auto process = program::onBus();
        return process ? Desktop::instance().application(*process) : Element();
    }

    static bool shows(const std::string &role, const std::string &name)
    {
        return waitFor([&] {
            const Element application = running();
            return application && application.find(role, name);
        });
    }
};

TEST_F(InstalledFlow, BothProgramsTellTheirVersion)
{
    const auto client = program::run({prefix() / "bin" / "quillfen", "--version"});
    EXPECT_EQ(client.first, 0);
    EXPECT_EQ(client.second, std::string("quillfen ") + QUILLFEN_VERSION + "\n");
    const auto agent = program::run({prefix() / "bin" / "quillfen-localagent", "--version"});
    EXPECT_EQ(agent.first, 0);
    EXPECT_THAT(agent.second, StartsWith("quillfen-localagent "));
}

TEST_F(InstalledFlow, TheMenuEntryOpensTheWindowOnTheAgent)
{
    const auto agent = installedAgent("everyday");
    const program::Activatable bus(serviceFile(), session());
    const auto launcher = launched({"gio", "launch", applications() / (std::string(id) + ".desktop")});
    EXPECT_TRUE(shows("page tab", "Volumes"));
    EXPECT_TRUE(shows("table cell", "Documents"));
}

TEST_F(InstalledFlow, ALinkIsOpenedByTheProgram)
{
    const auto agent = installedAgent("first-run");
    const program::Activatable bus(serviceFile(), session());
    // The package's triggers do this on a system.
    ASSERT_EQ(program::run({"update-desktop-database", applications()}).first, 0);
    const auto [found, handler] = program::run({"gio", "mime", "x-scheme-handler/quillfen"}, session());
    EXPECT_EQ(found, 0);
    EXPECT_THAT(handler, HasSubstr(std::string(id) + ".desktop"));
    program::call("Open",
                  {"['quillfen:enrol?code=quill-from-the-web']", "@a{sv} {}"}); // as a desktop calls the handler
    EXPECT_TRUE(shows("label", "Set up the engine?")) << running().dump();
}

TEST_F(InstalledFlow, TheSessionStartsItInTheBackground)
{
    const auto entry = prefix() / "etc" / "xdg" / "autostart" / (std::string(id) + ".desktop");
    std::ifstream file(entry);
    std::string line;
    std::string command;
    while (std::getline(file, line)) {
        command = line.starts_with("Exec=") ? line.substr(5) : command;
    }
    ASSERT_EQ(command, "quillfen --background");

    const auto agent = installedAgent("everyday");
    const StatusHost host;
    const auto client = launched({"sh", "-c", "exec " + command});
    host.seeIcon(); // it has begun
    EXPECT_EQ(windowOnScreen().width, 0);
    EXPECT_TRUE(running().children().empty()) << running().dump();
    host.choose("Open Quillfen");
    EXPECT_TRUE(shows("table cell", "Documents"));
}

} // namespace
} // namespace quillfen::e2e
