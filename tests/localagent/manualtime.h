// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/wire/timers.h"

namespace quillfen::localagent::test {

/// Timers whose time passes only when a test says so.
class ManualTime final {
public:
    Timers timers{[this] { return m_now; }};

    /// Lets `span` go by; everything due on the way runs at its moment.
    void pass(Timers::Seconds span)
    {
        const Timers::TimePoint end = m_now + std::chrono::ceil<Timers::TimePoint::duration>(span);
        for (;;) {
            const auto next = timers.untilNext();
            if (!next || m_now + std::chrono::ceil<Timers::TimePoint::duration>(*next) > end) {
                break;
            }
            m_now += std::chrono::ceil<Timers::TimePoint::duration>(*next);
            timers.runDue();
        }
        m_now = end;
    }

private:
    Timers::TimePoint m_now{};
};

} // namespace quillfen::localagent::test
