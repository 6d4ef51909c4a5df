// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "localagent/methods/agent.h"
#include "localagent/wire/server.h"
#include "localagent/world/mounts.h"
#include "localagent/world/worldfile.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

using namespace quillfen::localagent;

namespace {

Time systemNow()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

void serve(const Options &options)
{
    Timers timers;
    World world{.state = {},
                .clock = Clock(timers, options.speed, systemNow()),
                .home = Home(options.home),
                .random = std::mt19937_64(options.seed)};
    world.state.agentVersion = QUILLFEN_LOCALAGENT_VERSION;
    world.state.pointsForm = options.pointsForm;
    const std::string text = readWorld(options.world);
    std::filesystem::create_directories(options.home);

    Listener listener(options.socket);
    // Only the one agent that holds the socket touches the home folder.
    loadWorld(world, text);
    Server server(listener, timers);
    Agent agent(world, server, timers, options.faults);
    server.onOpen = [&agent](ClientId client) { agent.opened(client); };
    server.onLine = [&agent](ClientId client, std::string_view line) { agent.line(client, line); };
    server.onTooLong = [&agent](ClientId client) { agent.tooLong(client); };
    server.onClose = [&agent](ClientId client) { agent.closed(client); };
    server.isOwed = [&agent](ClientId client) { return agent.owes(client); };
    std::printf("quillfen-localagent %s: world %s on %s\n", QUILLFEN_LOCALAGENT_VERSION, options.world.c_str(),
                listener.path().c_str());
    std::fflush(stdout);
    server.run();
    detachAll(world);
}

int complain(const char *what, int status)
{
    std::fprintf(stderr, "quillfen-localagent: %s\n", what);
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        const Options options = parseOptions({argv + 1, argv + argc});
        if (options.action == Options::Action::Help) {
            std::fputs(helpText().c_str(), stdout);
        } else if (options.action == Options::Action::Version) {
            std::puts("quillfen-localagent " QUILLFEN_LOCALAGENT_VERSION);
        } else {
            serve(options);
        }
        return 0;
    } catch (const UsageError &error) {
        complain(error.what(), 2);
    } catch (const FaultError &error) {
        complain(error.what(), 2);
    } catch (const std::exception &error) {
        return complain(error.what(), 1);
    }
    std::fputs("Try quillfen-localagent --help.\n", stderr);
    return 2;
}
