// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "surroundings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;

// How the test programs' waiting passes its time; a hundredth of what is measured.
void quillfen::e2e::deliverEvents(std::chrono::milliseconds)
{
    std::this_thread::sleep_for(300us);
}

namespace quillfen::bench {

using e2e::displayIn;
using e2e::listensAt;
using e2e::Process;
using e2e::waitFor;

namespace {

std::string privateFolder()
{
    std::string pattern = std::filesystem::temp_directory_path() / "quillfen-bench.XXXXXX";
    require(mkdtemp(pattern.data()) != nullptr, "no folder for the run");
    std::filesystem::permissions(pattern, std::filesystem::perms::owner_all);
    return pattern;
}

} // namespace

void require(bool holds, const char *problem)
{
    if (!holds) {
        throw std::runtime_error(problem);
    }
}

double privateMemory(pid_t process)
{
    std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
    double kilobytes = 0;
    for (std::string line; std::getline(rollup, line);) {
        std::istringstream words(line);
        std::string name;
        double amount = 0;
        if (words >> name >> amount && (name == "Private_Clean:" || name == "Private_Dirty:")) {
            kilobytes += amount;
        }
    }
    require(kilobytes > 0, "a program ended before its memory was read");
    return kilobytes * 1024;
}

Surroundings::Surroundings(const std::string &world)
    : m_folder(privateFolder()), m_environment{{"PATH", std::getenv("PATH")},
                                               {"LANG", "C.UTF-8"},
                                               {"HOME", m_folder},
                                               {"XDG_RUNTIME_DIR", m_folder},
                                               {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_folder + "/bus"},
                                               {"QUILL_AGENT_SOCKET", m_folder + "/agent.sock"},
                                               {"QT_QPA_PLATFORM", "xcb"}}
{
    const Process &display =
        start({"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"}, "display");
    require(waitFor([&] { return !displayIn(display.output()).empty(); }), "there is no display");
    m_environment["DISPLAY"] = ":" + displayIn(display.output());
    const std::string bus = m_folder + "/bus";
    const std::string socket = m_environment.at("QUILL_AGENT_SOCKET");
    start({"dbus-daemon", "--session", "--nofork", "--address=unix:path=" + bus}, "bus");
    start({QUILLFEN_LOCALAGENT, "--world", world, "--socket", socket, "--home", m_folder}, "agent");
    require(waitFor([&] { return listensAt(bus) && listensAt(socket); }), "the agent does not listen");
    m_screen = std::make_unique<Screen>(m_environment.at("DISPLAY"));
}

Surroundings::~Surroundings()
{
    m_screen.reset();
    while (!m_processes.empty()) {
        m_processes.pop_back();
    }
    std::filesystem::remove_all(m_folder);
}

Process &Surroundings::start(const std::vector<std::string> &command, const std::string &name)
{
    m_processes.push_back(std::make_unique<Process>(command, m_environment, m_folder + "/" + name + ".log"));
    return *m_processes.back();
}

std::unique_ptr<Process> Surroundings::run(const std::vector<std::string> &command) const
{
    return std::make_unique<Process>(command, m_environment, m_folder + "/program.log");
}

} // namespace quillfen::bench
