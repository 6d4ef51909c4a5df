// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "program.h"

#include "desktop.h"

#include <csignal>
#include <fstream>
#include <regex>
#include <stdexcept>

namespace quillfen::e2e::program {
namespace {

constexpr auto busName = "io.quillfen.Quillfen";

/// The answer; throws when there is none.
std::string callOnBus(const std::string &who, const std::string &path, const std::string &method,
                      const std::vector<std::string> &arguments)
{
    std::vector<std::string> command{"gdbus", "call", "--session", "--dest", who, "--object-path", path};
    command.insert(command.end(), {"--method", method});
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto [status, output] = run(command);
    if (status != 0) {
        throw std::runtime_error(method + ": " + output);
    }
    return output;
}

std::string callBus(const std::string &method, const std::vector<std::string> &arguments)
{
    return callOnBus("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus." + method, arguments);
}

} // namespace

std::pair<std::optional<int>, std::string> run(const std::vector<std::string> &command, const Environment &variables)
{
    const Desktop &desktop = Desktop::instance();
    auto environment = desktop.environment();
    for (const auto &[name, value] : variables) {
        environment.insert_or_assign(name, value);
    }
    const auto log = desktop.folder() / "run.log";
    std::filesystem::remove(log);
    Process process(command, environment, log);
    const auto status = process.finish();
    return {status, process.output()};
}

std::pair<std::optional<int>, std::string> startAgain(const std::vector<std::string> &arguments,
                                                      const Environment &variables)
{
    std::vector<std::string> command{QUILLFEN_CLIENT};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command, variables);
}

void call(const std::string &method, const std::vector<std::string> &arguments)
{
    callOnBus(busName, "/io/quillfen/Quillfen", "org.freedesktop.Application." + method, arguments);
}

void activate(const std::string &platformData)
{
    call("Activate", {platformData});
}

std::optional<pid_t> onBus()
{
    const auto [status, answer] =
        run({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
             "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID", busName});
    std::smatch found;
    const bool isThere = status == 0 && std::regex_search(answer, found, std::regex("uint32 (\\d+)"));
    return isThere ? std::optional(std::stoi(found[1])) : std::nullopt;
}

Activatable::Activatable(const std::filesystem::path &service, const Environment &variables)
    : m_file(Desktop::instance().folder() / "runtime" / "dbus-1" / "services" / (std::string(busName) + ".service"))
{
    std::filesystem::create_directories(m_file.parent_path());
    std::filesystem::copy_file(service, m_file, std::filesystem::copy_options::overwrite_existing);
    auto all = Desktop::instance().environment();
    for (const auto &[name, value] : variables) {
        all.insert_or_assign(name, value);
    }
    std::string list;
    for (const auto &[name, value] : all) {
        list += (list.empty() ? "{'" : ", '") + name + "': '" + value + "'";
    }
    callBus("UpdateActivationEnvironment", {list + "}"});
    callBus("ReloadConfig", {});
}

Activatable::~Activatable()
{
    if (const auto program = onBus()) {
        ::kill(*program, SIGTERM);
        static_cast<void>(waitFor([] { return !onBus(); }));
    }
    std::filesystem::remove(m_file);
    callBus("ReloadConfig", {});
}

std::filesystem::path serviceFile()
{
    auto path = Desktop::instance().folder() / "tested.service";
    std::ofstream(path) << "[D-BUS Service]\nName=" << busName << "\nExec=" << QUILLFEN_CLIENT << " --background\n";
    return path;
}

} // namespace quillfen::e2e::program
