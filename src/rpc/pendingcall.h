// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"
#include "rpc/rpc.h"

#include <coroutine>
#include <cstdint>
#include <functional>
#include <string>
#include <variant>

namespace quillfen {

/// A call between its request and its outcome. It lives in the frame of the coroutine that waits for it.
///
/// Whoever takes it out of the connection's table gives it its outcome and posts `resume` to the main queue, which also
/// carries the outcome over to the main thread.
class PendingCall final {
public:
    PendingCall(std::string method, RPC::Seconds timeout) : m_method(std::move(method)), m_timeout(timeout) {}
    PendingCall(const PendingCall &) = delete;
    PendingCall &operator=(const PendingCall &) = delete;

    [[nodiscard]] RPC::Seconds timeout() const noexcept { return m_timeout; }

    void succeed(json::value &&result) { m_outcome.emplace<json::value>(std::move(result)); }
    void fail(RPCError error) { m_outcome.emplace<RPCError>(std::move(error)); }
    void failClosed();
    void failLate();

    /// Takes an answer apart: its error, its result, or JSON null when it has neither.
    void complete(json::object &answer);

    /// Goes on with the coroutine, at whose end this object is gone.
    void resume() const { m_waiting.resume(); }

    /// The value, which keeps its arena, or the failure as an exception. Once.
    [[nodiscard]] json::value outcome();

    /// What the coroutine waits with; `start` is run once it is suspended.
    struct Awaiter {
        PendingCall &call;
        const std::function<void()> &start;

        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) const
        {
            call.m_waiting = waiting;
            start();
        }
        void await_resume() const noexcept {}
    };

private:
    std::string m_method;
    RPC::Seconds m_timeout;
    std::variant<std::monostate, json::value, RPCError> m_outcome;
    std::coroutine_handle<> m_waiting;
};

/// A whole number within 64 bits, also one written as 3.0 or 3e0; nothing for anything else or a missing value.
[[nodiscard]] std::optional<std::int64_t> integer(const json::value *value);

} // namespace quillfen
