// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timescale.h"

#include <QCoreApplication>

#include <algorithm>

namespace quillfen {

namespace {

using namespace std::chrono_literals;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Timeline)
};

/// The age at the right edge, where the logarithm begins.
constexpr std::chrono::seconds youngest = 1s;

} // namespace

TimeScale::TimeScale(Instant now, std::chrono::seconds span, double width)
    : m_now(now), m_span(std::max(span, 2s)), m_width(std::max(width, 0.0)),
      m_scale(static_cast<double>(m_span.count()))
{}

double TimeScale::position(Instant moment) const
{
    // Subtracted as fractions: whole milliseconds would run over between the far ends of time.
    const std::chrono::duration<double> present(m_now.time_since_epoch());
    const std::chrono::duration<double> then(moment.time_since_epoch());
    return positionOfAge((present - then).count());
}

double TimeScale::positionOfAge(double age) const
{
    return m_width - m_width * m_scale.share(age);
}

Instant TimeScale::moment(double position) const
{
    const double share = m_width > 0.0 ? std::clamp((m_width - position) / m_width, 0.0, 1.0) : 0.0;
    const std::chrono::duration<double> age(m_scale.age(share));
    return clamped(m_now - std::chrono::round<std::chrono::milliseconds>(age));
}

Instant TimeScale::earliest() const
{
    return m_now - m_span;
}

Instant TimeScale::latest() const
{
    return m_now - youngest;
}

Instant TimeScale::clamped(Instant moment) const
{
    return std::clamp(moment, earliest(), latest());
}

std::vector<ScaleMark> scaleMarks()
{
    return {{2'592'000s, Words::tr("30 d")},
            {604'800s, Words::tr("7 d")},
            {86'400s, Words::tr("1 d")},
            {3'600s, Words::tr("1 h")},
            {60s, Words::tr("1 min")}};
}

} // namespace quillfen
