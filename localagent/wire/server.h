// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/wire/clients.h"
#include "localagent/wire/descriptor.h"
#include "localagent/wire/linebuffer.h"
#include "localagent/wire/listener.h"
#include "localagent/wire/outqueue.h"
#include "localagent/wire/timers.h"

#include <poll.h>

#include <functional>
#include <map>
#include <string_view>
#include <vector>

namespace quillfen::localagent {

/// The loop of the agent: one thread that waits for the listener, every client, the timers and the signal to end.
/// Bad at: slow work in a callback, which makes everybody wait. Long work belongs into the timers.
class Server final : public Clients {
public:
    /// Longer requests are skipped and reported.
    static constexpr std::size_t longestLine = 16U << 20U;
    /// A client that leaves this much unread is not asked for more requests until it has caught up …
    static constexpr std::size_t unreadBeforePause = 4U << 20U;
    /// … and one that leaves this much unread is dropped.
    static constexpr std::size_t unreadBeforeDrop = 256U << 20U;

    Server(Listener &listener, Timers &timers);
    ~Server() override;

    std::function<void(ClientId)> onOpen;
    std::function<void(ClientId, std::string_view line)> onLine;
    std::function<void(ClientId)> onTooLong;
    std::function<void(ClientId)> onClose;
    /// Whether an answer to this client is still being worked on; one that writes no more is kept until it has it.
    std::function<bool(ClientId)> isOwed;

    void send(ClientId client, std::string line) override;
    void drop(ClientId client) override;
    void stopReading(ClientId client) override;

    /// Works until SIGTERM or SIGINT comes or `stop` is called. One server runs per process.
    void run();
    void stop() { m_running = false; }

private:
    struct Client {
        Descriptor socket;
        LineBuffer in{longestLine};
        OutQueue out;
        bool reading = true;
        bool ended = false; ///< it writes no more, but may still read
        bool dropped = false;
    };

    [[nodiscard]] int pollTimeout() const;
    std::vector<pollfd> watched() const;
    void acceptAll();
    void serve(ClientId id, Client &client, short events);
    bool receive(ClientId id, Client &client);
    void takeLines(ClientId id, Client &client);
    void dropFinished();
    void reap();

    Listener &m_listener;
    Timers &m_timers;
    std::map<ClientId, Client> m_clients;
    ClientId m_lastId = 0;
    bool m_running = false;
    bool m_accepting = true;
    bool m_anyDropped = false;
    std::vector<char> m_chunk;
};

} // namespace quillfen::localagent
