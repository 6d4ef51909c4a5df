// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/timers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quillfen::localagent {

namespace {

// Longer than any agent runs, short enough not to overflow the steady clock's count of nanoseconds.
constexpr Timers::Seconds farthest = std::chrono::hours(24 * 365 * 10);

} // namespace

Timers::Timers(std::function<TimePoint()> now) : m_now(std::move(now)) {}

std::optional<Timers::Seconds> Timers::untilNext() const
{
    if (m_tasks.empty()) {
        return std::nullopt;
    }
    return std::max(Seconds(m_tasks.begin()->first - m_now()), Seconds::zero());
}

void Timers::after(Seconds delay, Task task)
{
    // Written so that a delay that is not a number counts as none.
    const Seconds wait = delay > Seconds::zero() ? std::min(delay, farthest) : Seconds::zero();
    m_tasks.emplace(m_now() + std::chrono::duration_cast<TimePoint::duration>(wait), std::move(task));
}

void Timers::runDue()
{
    // All are taken out first: a task that puts itself back at once waits for the next round instead of holding this
    // one, also when the clock stands still.
    const auto later = m_tasks.upper_bound(m_now());
    std::vector<Task> due;
    for (auto task = m_tasks.begin(); task != later; task = m_tasks.erase(task)) {
        due.push_back(std::move(task->second));
    }
    for (const Task &task : due) {
        task();
    }
}

} // namespace quillfen::localagent
