// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace quillfen {

/// When which call runs out of time: a heap with the earliest deadline on top.
///
/// A call that was answered leaves its entry behind, which is cheaper than looking for it; the owner asks for `compact`
/// when such entries outnumber the others. Not thread-safe.
class Deadlines final {
public:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool empty() const noexcept { return m_heap.empty(); }
    [[nodiscard]] std::size_t size() const noexcept { return m_heap.size(); }
    /// The earliest deadline; there must be one.
    [[nodiscard]] Clock::time_point earliest() const { return m_heap.front().when; }

    void add(Clock::time_point when, std::int64_t id);
    /// Removes one entry whose time has come and names its call; nothing when there is none.
    [[nodiscard]] std::optional<std::int64_t> takeExpired(Clock::time_point now);
    /// Removes the earliest entries for as long as nobody waits for them.
    void skipStale(const std::function<bool(std::int64_t)> &isWaiting);
    /// Removes every entry that nobody waits for.
    void compact(const std::function<bool(std::int64_t)> &isWaiting);
    void clear() noexcept { m_heap.clear(); }

private:
    struct Entry {
        Clock::time_point when;
        std::int64_t id = 0;
    };
    static bool later(const Entry &left, const Entry &right) noexcept { return left.when > right.when; }
    void pop();

    std::vector<Entry> m_heap;
};

} // namespace quillfen
