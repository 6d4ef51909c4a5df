// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/server.h"

#include "localagent/wire/stopsignal.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <limits>

namespace quillfen::localagent {

namespace {

constexpr std::size_t chunkSize = 65536;
// Out of descriptors, a waiting connection would wake the loop without end; it is left waiting for this long.
constexpr Timers::Seconds acceptPause{0.2};

} // namespace

Server::Server(Listener &listener, Timers &timers) : m_listener(listener), m_timers(timers), m_chunk(chunkSize) {}

Server::~Server() = default;

void Server::send(ClientId id, std::string line)
{
    const auto found = m_clients.find(id);
    if (found == m_clients.end() || found->second.dropped) {
        return;
    }
    Client &client = found->second;
    line += '\n';
    const bool waiting = !client.out.empty();
    client.out.push(std::move(line));
    // Most answers fit into the socket at once and need no further turn of the loop.
    if (!waiting && client.out.flush(client.socket.get()) == OutQueue::Flushed::Failed) {
        drop(id);
    } else if (client.out.bytes() > unreadBeforeDrop) {
        drop(id);
    }
}

void Server::drop(ClientId id)
{
    // The loop may be busy with this very client, so it goes at the end of the turn.
    if (const auto found = m_clients.find(id); found != m_clients.end()) {
        m_anyDropped = found->second.dropped = true;
    }
}

void Server::stopReading(ClientId id)
{
    if (const auto found = m_clients.find(id); found != m_clients.end()) {
        found->second.reading = false;
    }
}

void Server::run()
{
    const StopSignal signal;
    m_running = true;
    while (m_running) {
        m_timers.runDue();
        reap();
        if (!m_running) {
            break;
        }
        std::vector<pollfd> sources = watched();
        sources.push_back({signal.descriptor(), POLLIN, 0});
        if (::poll(sources.data(), static_cast<nfds_t>(sources.size()), pollTimeout()) < 0) {
            continue; // interrupted; whatever is ready stays ready
        }
        if (sources.back().revents != 0) {
            break;
        }
        auto source = sources.begin() + 1;
        for (auto &[id, client] : m_clients) {
            serve(id, client, (source++)->revents);
        }
        if (sources.front().revents != 0) {
            acceptAll();
        }
        reap();
    }
    m_running = false;
}

int Server::pollTimeout() const
{
    const auto next = m_timers.untilNext();
    if (!next) {
        return -1;
    }
    // Rounded up: a poll that ends just before the task is due would spin.
    const double milliseconds = std::ceil(next->count() * 1000.0);
    return static_cast<int>(std::min(milliseconds, static_cast<double>(std::numeric_limits<int>::max())));
}

std::vector<pollfd> Server::watched() const
{
    std::vector<pollfd> sources;
    sources.reserve(m_clients.size() + 2);
    sources.push_back({m_accepting ? m_listener.descriptor() : -1, POLLIN, 0});
    for (const auto &[id, client] : m_clients) {
        int events = client.out.empty() ? 0 : POLLOUT;
        if (client.reading && !client.ended && client.out.bytes() < unreadBeforePause) {
            events |= POLLIN;
        }
        sources.push_back({client.socket.get(), static_cast<short>(events), 0});
    }
    return sources;
}

void Server::acceptAll()
{
    for (;;) {
        Descriptor socket = m_listener.accept();
        if (!socket.valid()) {
            if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
                m_accepting = false;
                m_timers.after(acceptPause, [this] { m_accepting = true; });
            }
            return;
        }
        const ClientId id = ++m_lastId;
        m_clients[id].socket = std::move(socket);
        if (onOpen) {
            onOpen(id);
        }
    }
}

void Server::serve(ClientId id, Client &client, short events)
{
    if (events == 0 || client.dropped) {
        return;
    }
    if ((events & POLLOUT) != 0) {
        if (client.out.flush(client.socket.get()) == OutQueue::Flushed::Failed) {
            drop(id);
        }
        takeLines(id, client); // requests that were left while the client had too much to read
    }
    // A client whose requests are not read is still noticed when it hangs up.
    if ((events & POLLIN) != 0 ? !receive(id, client) : (events & (POLLHUP | POLLERR)) != 0) {
        drop(id);
    }
}

bool Server::receive(ClientId id, Client &client)
{
    const ssize_t count = ::recv(client.socket.get(), m_chunk.data(), m_chunk.size(), 0);
    if (count < 0) {
        return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    }
    if (count == 0) {
        client.ended = true;
        return true;
    }
    client.in.append({m_chunk.data(), static_cast<std::size_t>(count)});
    takeLines(id, client);
    return true;
}

void Server::takeLines(ClientId id, Client &client)
{
    while (!client.dropped && client.reading && client.out.bytes() < unreadBeforePause) {
        const LineBuffer::Next next = client.in.next();
        if (const auto *line = std::get_if<std::string_view>(&next); line && onLine) {
            onLine(id, *line);
        } else if (std::holds_alternative<LineBuffer::TooLong>(next) && onTooLong) {
            onTooLong(id);
        } else if (std::holds_alternative<LineBuffer::NeedMore>(next)) {
            return;
        }
    }
}

void Server::dropFinished()
{
    for (const auto &[id, client] : m_clients) {
        if (client.ended && client.out.empty() && !(isOwed && isOwed(id))) {
            drop(id);
        }
    }
}

void Server::reap()
{
    dropFinished();
    if (!std::exchange(m_anyDropped, false)) {
        return;
    }
    for (auto each = m_clients.begin(); each != m_clients.end();) {
        if (!each->second.dropped) {
            ++each;
            continue;
        }
        const ClientId id = each->first;
        each = m_clients.erase(each);
        if (onClose) {
            onClose(id);
        }
    }
}

} // namespace quillfen::localagent
