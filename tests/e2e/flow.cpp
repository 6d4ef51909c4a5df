// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "flow.h"

#include <csignal>

namespace quillfen::e2e {
namespace {

void expectNoReport(const std::string &program, const std::string &output)
{
    for (const char *mark :
         {"ERROR: AddressSanitizer", "ERROR: LeakSanitizer", "WARNING: ThreadSanitizer", "runtime error:"}) {
        EXPECT_EQ(output.find(mark), std::string::npos) << program << ":\n" << output;
    }
}

} // namespace

Client &Flow::open(const std::string &world, const Environment &variables, const std::vector<std::string> &options)
{
    startAgent(world, options);
    return startClient(variables);
}

AgentProcess &Flow::startAgent(const std::string &world, const std::vector<std::string> &options)
{
    m_agent.reset();
    return m_agent.emplace(world, options);
}

Client &Flow::startClient(const Environment &variables, const std::vector<std::string> &arguments)
{
    m_client.reset();
    return m_client.emplace(variables, arguments);
}

void Flow::TearDown()
{
    if (m_client && HasFailure()) {
        ADD_FAILURE() << "the window at the end:\n" << m_client->dump() << m_client->process().output();
    }
    if (m_client) {
        endClient();
    }
    if (m_agent) {
        expectNoReport("the agent", m_agent->process().output());
    }
    m_client.reset();
    m_agent.reset();
}

void Flow::endClient()
{
    Process &process = m_client->process();
    const auto windows = m_client->windows();
    if (process.running() && windows.size() == 1 && windows.front().active()) {
        pressKeys("Ctrl+q");
        EXPECT_EQ(process.finish(), 0) << process.output();
    }
    expectNoReport("the client", process.output());
}

} // namespace quillfen::e2e
