// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/wire/timers.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillfen::localagent {

using Seconds = Timers::Seconds;
/// A moment of the world. Milliseconds in UTC: what the wire carries.
using Time = std::chrono::sys_time<std::chrono::milliseconds>;

/// The world's clock. It starts at a given moment and runs `speed` times as fast as the timers' own.
class Clock final {
public:
    Clock(Timers &timers, double speed, Time start);

    [[nodiscard]] Time now() const;

    /// Runs `task` after `delay` in the world's time.
    void after(Seconds delay, Timers::Task task);

private:
    Timers &m_timers;
    double m_speed;
    Time m_start;
    Timers::TimePoint m_origin;
};

/// ISO 8601 in UTC with milliseconds, always the same length, so that texts sort like the times they name.
[[nodiscard]] std::string isoTime(Time time);
/// The same at the end of `text`, for those who write a million of them.
void appendIsoTime(std::string &text, Time time);

/// Reads ISO 8601: "2026-11-20T09:30:00Z", with or without a fraction, in UTC or at an offset ("+01:00"). Nothing when
/// the text is something else.
[[nodiscard]] std::optional<Time> parseIsoTime(std::string_view text);

/// The digits of a moment down to its minute: "202611181742".
[[nodiscard]] std::string minuteDigits(Time time);

/// How long a span of time is in words: "45 seconds", "2 minutes", "6 days".
[[nodiscard]] std::string spanText(Seconds span);

/// Reads a moment relative to `now` as worlds write it: "-3h", "-90d", "+20m", "now" (units s, m, h, d). Throws
/// std::invalid_argument with a sentence when the text is something else.
[[nodiscard]] Time parseMoment(std::string_view text, Time now);

} // namespace quillfen::localagent
