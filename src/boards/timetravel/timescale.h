// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"
#include "ui/controls/logscale.h"

#include <QString>

#include <chrono>
#include <vector>

namespace quillfen {

/// Where moments lie on a strip of the past: its right edge is one second ago, its left edge `span` ago, and equal
/// ratios of age lie equally far apart, so that the last minute gets as much room as the weeks.
///
/// A value, made anew whenever the clock or the width is read. Always the same way round: time runs to the right in
/// every language.
class TimeScale final {
public:
    /// A span below two seconds counts as two, a width below zero as none.
    TimeScale(Instant now, std::chrono::seconds span, double width);

    /// From the left edge. What is older than the span lies on the left edge, what is to come on the right one.
    [[nodiscard]] double position(Instant moment) const;
    /// The same of an age in seconds.
    [[nodiscard]] double positionOfAge(double age) const;

    /// The moment at a position, to the millisecond; beyond an edge, that of the edge.
    [[nodiscard]] Instant moment(double position) const;

    [[nodiscard]] Instant earliest() const; ///< at the left edge
    [[nodiscard]] Instant latest() const;   ///< at the right edge
    /// The nearest moment that lies on the strip.
    [[nodiscard]] Instant clamped(Instant moment) const;

    [[nodiscard]] double width() const noexcept { return m_width; }

private:
    Instant m_now;
    std::chrono::seconds m_span;
    double m_width;
    LogScale m_scale;
};

/// A line across the strip with the age that it stands for.
struct ScaleMark {
    std::chrono::seconds age;
    QString label;
};

/// The marks of every strip, oldest first: "30 d" to "1 min".
[[nodiscard]] std::vector<ScaleMark> scaleMarks();

} // namespace quillfen
