// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "figures.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace quillfen::bench {

/// Looks in every millisecond. What lies between two looks was spent away from the loop: by the clock on the wall,
/// which counts what the machine gave to others, and by the work this thread did. In milliseconds.
class GapMeter final {
public:
    GapMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { look(); });
        m_timer.start(1);
    }

    /// A look out of turn, at the end of what is measured.
    void look()
    {
        m_longest = std::max(m_longest, millisecondsSince(m_lastWall));
        m_longestWork = std::max(m_longestWork, workMilliseconds() - m_lastWork);
        m_lastWall = std::chrono::steady_clock::now();
        m_lastWork = workMilliseconds();
    }

    [[nodiscard]] double longest() const { return m_longest; }
    [[nodiscard]] double longestWork() const { return m_longestWork; }

private:
    QTimer m_timer;
    std::chrono::steady_clock::time_point m_lastWall = std::chrono::steady_clock::now();
    double m_lastWork = workMilliseconds();
    double m_longest = 0;
    double m_longestWork = 0;
};

} // namespace quillfen::bench
