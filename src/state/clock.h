// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>

namespace quillfen {

/// A moment to the millisecond. (In nanoseconds, as the system's clock counts, 64 bits end in the year 2262.)
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// The present moment. Any thread. The one source of "now" in the program, so that tests can set it.
[[nodiscard]] Instant now();

/// Replaces the clock for as long as it lives. Tests only; not for use while other threads ask for the time.
class ClockOverride final {
public:
    explicit ClockOverride(std::function<Instant()> clock);
    ~ClockOverride();
    ClockOverride(const ClockOverride &) = delete;
    ClockOverride &operator=(const ClockOverride &) = delete;

private:
    std::function<Instant()> m_previous;
};

} // namespace quillfen
