// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/linereader.h"
#include "rpc/mainqueue.h"

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class QSocketNotifier;

namespace quillfen {

class PendingCall;

/// One open connection: its descriptor, its reading thread, the requests not yet written and the calls not yet
/// answered.
///
/// Owned by the main thread, which also writes. Writing never waits: what the agent does not take at once is kept and
/// written from the event loop when there is room. The descriptor is closed once the reading thread has ended.
class Connection final {
public:
    using Waiting = std::map<std::int64_t, PendingCall *>; ///< by id, so in the order of the calls

    /// Both run on the reading thread, outside the lock.
    struct Handlers {
        std::function<void(Connection &, LineReader::Message &message, std::size_t bytes)> received;
        std::function<void(const Waiting &left)> ended; ///< the last act of the thread
    };

    /// Connects. What one read brings is one batch for `queue`. Throws RPCError.
    Connection(const std::string &path, MainQueue &queue, Handlers handlers);
    /// Ends the connection, waits for the thread and closes the descriptor.
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Registers the call and writes its line, in one step so that no answer can come before there is somebody to take
    /// it. False, with nothing registered, when the connection has ended. Main thread.
    [[nodiscard]] bool send(std::int64_t id, PendingCall &call, std::string line);
    /// Removes and returns a waiting call: whoever gets it completes it, nobody else can. Null when it is gone. Any
    /// thread.
    [[nodiscard]] PendingCall *take(std::int64_t id);
    [[nodiscard]] bool isWaiting(std::int64_t id) const;

private:
    void start();
    void run();
    void readLoop();
    void enqueue(std::string line);
    void write();
    void writeMore();
    [[nodiscard]] bool hasUnwritten() const { return m_written < m_unwritten.size(); }

    MainQueue &m_queue;
    Handlers m_handlers;
    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_room; ///< enabled while something is unwritten; made when first needed
    pthread_t m_thread{};
    std::atomic<bool> m_stopping = false;

    mutable std::mutex m_lock; ///< guards everything below
    Waiting m_waiting;
    bool m_ended = false;
    std::string m_unwritten;
    std::size_t m_written = 0; ///< of the above
};

} // namespace quillfen
