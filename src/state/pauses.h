// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <chrono>
#include <coroutine>
#include <cstdint>
#include <map>

namespace quillfen {

/// Pauses of coroutines that their owner can cut short, so that nobody who sleeps keeps alive what is to end.
///
/// Main thread only. Must outlive the pauses, which a coroutine that holds the owner takes care of.
class Pauses final {
public:
    /// What a coroutine waits with: `const Pauses::Awaiter pause = pauses.of(5s); co_await pause;`
    class Awaiter final {
    public:
        Awaiter(Pauses &pauses, std::chrono::milliseconds length) noexcept : m_pauses(pauses), m_length(length) {}
        [[nodiscard]] bool await_ready() const noexcept { return m_pauses.m_ended; }
        void await_suspend(std::coroutine_handle<> waiting) const { m_pauses.add(m_length, waiting); }
        void await_resume() const noexcept {}

    private:
        Pauses &m_pauses;
        std::chrono::milliseconds m_length;
    };

    Pauses() = default;
    Pauses(const Pauses &) = delete;
    Pauses &operator=(const Pauses &) = delete;

    /// Never shorter than `length`, unless `end` comes first.
    [[nodiscard]] Awaiter of(std::chrono::milliseconds length) noexcept { return {*this, length}; }
    /// Whoever pauses goes on now, in the order they began to; from now on nobody pauses.
    void end();

private:
    void add(std::chrono::milliseconds length, std::coroutine_handle<> waiting);
    void resume(std::uint64_t id);

    std::map<std::uint64_t, std::coroutine_handle<>> m_waiting; ///< by the order of their beginnings
    std::uint64_t m_lastId = 0;
    bool m_ended = false;
    QObject m_context; ///< what the timers hang on
};

} // namespace quillfen
