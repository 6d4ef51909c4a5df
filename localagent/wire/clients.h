// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace quillfen::localagent {

/// Names a connection; never used twice in the life of an agent.
using ClientId = std::uint64_t;

/// What the upper floors may do to the clients. A client that is gone is no error anywhere: work outlives its asker.
class Clients {
public:
    virtual ~Clients() = default;

    /// Sends `line` (without line feed).
    virtual void send(ClientId client, std::string line) = 0;
    /// Ends the connection. What is still queued is not sent.
    virtual void drop(ClientId client) = 0;
    /// Reads nothing more from the client; the connection stays open.
    virtual void stopReading(ClientId client) = 0;
};

} // namespace quillfen::localagent
