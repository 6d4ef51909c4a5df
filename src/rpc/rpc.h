// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"
#include "rpc/mainqueue.h"
#include "rpc/rpcerror.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillfen {

/// The client's one door to the agent: newline-delimited JSON-RPC 2.0 over a Unix-domain stream socket (unix(7)).
///
/// A reading thread per connection splits lines, parses them and hands answers over; the thread that constructs the
/// object (the main thread) owns it, and every suspended caller resumes there. Bad at: large requests. A line is
/// queued whole.
class RPC final {
    Q_DECLARE_TR_FUNCTIONS(RPC)

public:
    using Seconds = std::chrono::duration<double>;

    RPC();
    /// Ends the connection; whoever still waits gets "the agent connection closed".
    ~RPC();
    RPC(const RPC &) = delete;
    RPC &operator=(const RPC &) = delete;

    /// Where the agent listens, from QUILL_AGENT_SOCKET, XDG_RUNTIME_DIR or TMPDIR, in this order.
    [[nodiscard]] static std::string socketPath();

    /// Opens the connection and starts its reading thread. Call it again on the same object after a loss: ids go on
    /// growing and are never reused. A connection still open is ended first; its waiting calls fail, `onDown` is not
    /// told of what the owner has given up. Never waits for the agent. Main thread. Throws RPCError with code -1.
    void connect(const std::string &path);

    /// A request that is ready to go.
    struct Request {
        std::int64_t id = 0;
        std::string method;
        std::string line; ///< as it will go over the wire, line feed included
        Seconds timeout{};
    };
    /// Makes a request, under an id of its own. Throws RPCError "bad params" for what JSON cannot carry. Main thread.
    [[nodiscard]] Request prepare(std::string method, const json::object &params, Seconds timeout);

    /// Asks the agent; resumes on the main thread with the answer's "result" (JSON null when it has none) or throws
    /// RPCError. Completes exactly once: by answer, by `timeout` (seconds) or by the end of the connection; without a
    /// connection soon, and by the same failure. To be called on the main thread.
    QCoro::Task<json::value> call(Request request);
    /// The same for a request that nobody else needs to see.
    QCoro::Task<json::value> call(std::string method, json::object params, Seconds timeout);

    /// Ends the connection as if the agent had. Waiting calls fail, `onDown` runs. Nothing happens when there is none.
    /// On return the reading thread has ended and the callers' failures are queued: `mainQueue().drain()` resumes them.
    void close();

    /// Brings work from the callbacks below to the main thread, in order with the answers.
    [[nodiscard]] MainQueue &mainQueue() noexcept;

    /// Receives pushed events. Runs on the reading thread; set it before `connect`, which keeps a copy for the life of
    /// the connection, and hop with `mainQueue().post`.
    std::function<void(std::string name, std::optional<json::value> data)> onEvent;

    /// Told once when a connection has ended, after every waiting call was failed. As above.
    std::function<void(QString message)> onDown;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace quillfen
