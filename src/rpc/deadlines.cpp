// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/deadlines.h"

#include <algorithm>

namespace quillfen {

void Deadlines::add(Clock::time_point when, std::int64_t id)
{
    m_heap.push_back(Entry{when, id});
    std::ranges::push_heap(m_heap, later);
}

void Deadlines::pop()
{
    std::ranges::pop_heap(m_heap, later);
    m_heap.pop_back();
}

std::optional<std::int64_t> Deadlines::takeExpired(Clock::time_point now)
{
    if (m_heap.empty() || m_heap.front().when > now) {
        return std::nullopt;
    }
    const std::int64_t id = m_heap.front().id;
    pop();
    return id;
}

void Deadlines::skipStale(const std::function<bool(std::int64_t)> &isWaiting)
{
    while (!m_heap.empty() && !isWaiting(m_heap.front().id)) {
        pop();
    }
}

void Deadlines::compact(const std::function<bool(std::int64_t)> &isWaiting)
{
    std::erase_if(m_heap, [&](const Entry &entry) { return !isWaiting(entry.id); });
    std::ranges::make_heap(m_heap, later);
}

} // namespace quillfen
