// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "flow.h"

#include <csignal>
#include <fstream>
#include <regex>

namespace quillfen::e2e {
namespace {

constexpr auto busName = "io.quillfen.Quillfen";

class OneProcessFlow : public Flow {
protected:
    /// Starts the program once more beside the one that runs: its exit status and what it wrote.
    static std::pair<std::optional<int>, std::string> startAgain(const std::vector<std::string> &arguments)
    {
        std::vector<std::string> command{QUILLFEN_CLIENT};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const Desktop &desktop = Desktop::instance();
        Process second(command, desktop.environment(), desktop.folder() / "second.log");
        const auto status = second.finish();
        return {status, second.output()};
    }

    /// Calls somebody on the session bus; what was answered.
    static std::string call(const std::string &who, const std::string &path, const std::string &method,
                            const std::vector<std::string> &arguments)
    {
        std::vector<std::string> command{"gdbus", "call", "--session", "--dest", who, "--object-path", path};
        command.insert(command.end(), {"--method", method});
        command.insert(command.end(), arguments.begin(), arguments.end());
        const Desktop &desktop = Desktop::instance();
        const auto log = desktop.folder() / "call.log";
        std::filesystem::remove(log);
        Process process(command, desktop.environment(), log);
        EXPECT_EQ(process.finish(), 0) << process.output();
        return process.output();
    }

    static std::string callBus(const std::string &method, const std::vector<std::string> &arguments)
    {
        return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus." + method, arguments);
    }

    /// Calls the program as a desktop does.
    static void callProgram(const std::string &method, const std::vector<std::string> &arguments)
    {
        call(busName, "/io/quillfen/Quillfen", "org.freedesktop.Application." + method, arguments);
    }

    static void activate() { callProgram("Activate", {"@a{sv} {}"}); }

    static void closeWindow(const Client &client)
    {
        client.press("push button", "Close");
        EXPECT_TRUE(waitFor([&] { return client.windows().empty(); }));
    }
};

TEST_F(OneProcessFlow, AClosedWindowComesBackWhenTheProgramIsStartedAgain)
{
    Client &client = open("everyday");
    closeWindow(client);
    EXPECT_TRUE(client.process().running());
    const auto [status, output] = startAgain({});
    EXPECT_EQ(status, 0) << output;
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    EXPECT_TRUE(client.process().running());
}

TEST_F(OneProcessFlow, ALinkSignsInWhereTheWindowIs)
{
    Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const auto [status, output] = startAgain({"quillfen:enrol?code=quill-second-start"});
    EXPECT_EQ(status, 0) << output;
    startAgent("first-run"); // the first run takes the link when it appears
    client.seeText("Set up the engine?");
    client.press("push button", "Cancel");
    client.seeNo("push button", "Cancel");
    EXPECT_EQ(client.process().output().find("second-start"), std::string::npos) << "a code is no matter for a log";
}

TEST_F(OneProcessFlow, OtherSchemesAndCasesAreNoLinks)
{
    Client &client = open("first-run");
    EXPECT_TRUE(client.see("push button", "Sign in"));
    EXPECT_EQ(startAgain({"QUILLFEN:enrol?code=quill-upper"}).first, 2);
    EXPECT_EQ(startAgain({"https://quillfen.example/enrol?code=quill-web"}).first, 2);
    callProgram("Open", {"['https://quillfen.example/quill-web', 'QUILLFEN:quill-upper']", "@a{sv} {}"});
    EXPECT_TRUE(client.see("push button", "Sign in"));
}

TEST_F(OneProcessFlow, AnActionOfTheDesktopEntryReachesTheWindow)
{
    Client &client = open("everyday");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    EXPECT_EQ(startAgain({"--time-travel"}).first, 0);
    EXPECT_TRUE(waitFor([&] { return client.see("page tab", "Time travel").selected(); }));
    EXPECT_EQ(startAgain({"--new-volume"}).first, 0);
    EXPECT_TRUE(client.see("push button", "Create volume"));
}

TEST_F(OneProcessFlow, TheBusBringsAClosedWindowBack)
{
    Client &client = open("everyday");
    closeWindow(client);
    activate();
    EXPECT_TRUE(client.see("page tab", "Volumes"));
}

TEST_F(OneProcessFlow, TheBusStartsTheProgramWhereNoneRuns)
{
    startAgent("everyday");
    const Desktop &desktop = Desktop::instance();
    const auto services = desktop.folder() / "runtime" / "dbus-1" / "services";
    std::filesystem::create_directories(services);
    {
        std::ofstream service(services / (std::string(busName) + ".service"));
        service << "[D-BUS Service]\nName=" << busName << "\nExec=/usr/bin/env";
        for (const auto &[name, value] : desktop.environment()) {
            service << ' ' << name << '=' << value;
        }
        service << ' ' << QUILLFEN_CLIENT << " --background\n";
    }
    callBus("ReloadConfig", {});
    activate();

    const std::string answer = callBus("GetConnectionUnixProcessID", {busName});
    std::smatch found;
    ASSERT_TRUE(std::regex_search(answer, found, std::regex("uint32 (\\d+)"))) << answer;
    const pid_t program = std::stoi(found[1]);
    const auto shows = [&] {
        const Element application = desktop.application(program);
        return application && application.find("page tab", "Volumes");
    };
    EXPECT_TRUE(waitFor(shows));
    ::kill(program, SIGTERM);
}

} // namespace
} // namespace quillfen::e2e
