// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace quillfen::localagent {

/// What has to happen later, in real time. One thread; whoever owns the loop asks how long it may sleep and runs what
/// is due. The time source is replaceable, so that tests let hours pass without waiting.
class Timers final {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Seconds = std::chrono::duration<double>;
    using Task = std::function<void()>;

    explicit Timers(std::function<TimePoint()> now = std::chrono::steady_clock::now);

    [[nodiscard]] TimePoint now() const { return m_now(); }

    /// How long until the next task is due (zero when one is due already); nothing when none waits.
    [[nodiscard]] std::optional<Seconds> untilNext() const;

    /// Runs `task` once, `delay` from now. Tasks due at the same moment run in the order they were given.
    void after(Seconds delay, Task task);

    /// Runs every task that is due at the moment of the call, and none that is added meanwhile.
    void runDue();

private:
    std::function<TimePoint()> m_now;
    std::multimap<TimePoint, Task> m_tasks;
};

} // namespace quillfen::localagent
