// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "agentprocess.h"
#include "client.h"
#include "desktop.h"
#include "input.h"
#include "waiting.h"

#include <gtest/gtest.h>

#include <optional>

namespace quillfen::e2e {

/// A person's way through the program: an agent with a world, a client on it, and whatever the test does with them.
class Flow : public testing::Test {
protected:
    /// Starts agent and client, in this order. `options` are the agent's: {"--speed", "50"} lets nobody wait long.
    Client &open(const std::string &world, const Environment &variables = {},
                 const std::vector<std::string> &options = {});
    AgentProcess &startAgent(const std::string &world, const std::vector<std::string> &options = {});
    /// Ends the agent as a crash does.
    void killAgent() { m_agent.reset(); }
    [[nodiscard]] AgentProcess &agent() { return m_agent.value(); }
    Client &startClient(const Environment &variables = {}, const std::vector<std::string> &arguments = {});

    /// Nobody leaves without this: the client ends when it is told to, with nothing for a sanitizer to report about
    /// either program.
    void TearDown() override;

private:
    void endClient();

    std::optional<AgentProcess> m_agent;
    std::optional<Client> m_client;
};

} // namespace quillfen::e2e
