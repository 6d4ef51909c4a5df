// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "process.h"

#include <string>
#include <vector>

namespace quillfen::e2e {

/// The real local agent on the desktop's socket. It is gone, as after a crash, when this object is.
class AgentProcess final {
public:
    /// Returns once the agent accepts connections. `options` are its own: "--speed", "10".
    explicit AgentProcess(const std::string &world, const std::vector<std::string> &options = {});
    ~AgentProcess();
    AgentProcess(const AgentProcess &) = delete;
    AgentProcess &operator=(const AgentProcess &) = delete;

    [[nodiscard]] Process &process() noexcept { return m_process; }

private:
    Process m_process;
};

} // namespace quillfen::e2e
