// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentprocess.h"

#include "desktop.h"

#include <csignal>
#include <stdexcept>

namespace quillfen::e2e {
namespace {

std::vector<std::string> command(const std::string &world, const std::vector<std::string> &options)
{
    const auto &desktop = Desktop::instance();
    std::vector<std::string> result{QUILLFEN_LOCALAGENT,   "--world", world,         "--socket",
                                    desktop.agentSocket(), "--home",  desktop.home()};
    result.insert(result.end(), options.begin(), options.end());
    return result;
}

} // namespace

AgentProcess::AgentProcess(const std::string &world, const std::vector<std::string> &options)
    : m_process(command(world, options), Desktop::instance().environment(), Desktop::instance().folder() / "agent.log")
{
    const auto socket = Desktop::instance().agentSocket();
    const bool ended = !waitFor([&] { return !m_process.running() || listensAt(socket); }) || !m_process.running();
    if (ended) {
        throw std::runtime_error("the agent does not listen: " + m_process.output());
    }
}

AgentProcess::~AgentProcess()
{
    m_process.signal(SIGKILL);
}

} // namespace quillfen::e2e
