// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/pointbars.h"

#include <algorithm>
#include <cmath>

namespace quillfen {

namespace {

constexpr double barWidth = 1.5;
constexpr double barOpacity = 0.75;

/// Places that a column is divided into. A quarter of a pixel is as fine as soft edges can show.
constexpr int placesPerColumn = 4;

/// What lets less than this through shows no difference in eight bits any more.
constexpr float opaque = 1.0F / 1'024.0F;

Instant instantOf(std::int64_t moment)
{
    return Instant(std::chrono::milliseconds(moment));
}

/// The first in `ascending` from `from` on that is larger. Doubles its steps, since the next crowd is near more often
/// than not.
std::size_t firstAbove(std::span<const std::int64_t> ascending, std::size_t from, std::int64_t limit)
{
    std::size_t step = 1;
    std::size_t low = from;
    while (low + step < ascending.size() && ascending[low + step] <= limit) {
        low += step;
        step *= 2;
    }
    const std::size_t high = std::min(low + step, ascending.size());
    const auto begin = ascending.begin();
    return static_cast<std::size_t>(
        std::upper_bound(begin + static_cast<std::ptrdiff_t>(low), begin + static_cast<std::ptrdiff_t>(high), limit) -
        begin);
}

/// What the columns let through of what lies under the bars.
class Columns final {
public:
    Columns(double width, double pixelRatio)
        : m_pixelRatio(pixelRatio), m_left(static_cast<std::size_t>(std::ceil(width * pixelRatio)), 1.0F)
    {}

    /// `count` bars around `centre`, which is in pixels of the screen.
    void cover(double centre, std::size_t count)
    {
        const double begin = centre - barWidth * m_pixelRatio / 2.0;
        const double end = centre + barWidth * m_pixelRatio / 2.0;
        const auto last =
            std::min(static_cast<std::ptrdiff_t>(std::ceil(end)), static_cast<std::ptrdiff_t>(m_left.size()));
        for (auto column = std::max<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(std::floor(begin)), 0); column < last;
             ++column) {
            float &left = m_left[static_cast<std::size_t>(column)];
            if (left < opaque) {
                continue;
            }
            const auto edge = static_cast<double>(column);
            const double share = std::min(end, edge + 1.0) - std::max(begin, edge);
            const auto through = static_cast<float>(1.0 - barOpacity * std::max(share, 0.0));
            left *= count == 1 ? through : std::pow(through, static_cast<float>(count));
        }
    }

    [[nodiscard]] std::vector<float> opacities() &&
    {
        std::transform(m_left.begin(), m_left.end(), m_left.begin(), [](float left) { return 1.0F - left; });
        return std::move(m_left);
    }

private:
    double m_pixelRatio;
    std::vector<float> m_left;
};

} // namespace

std::vector<float> barCoverage(std::span<const std::int64_t> moments, const TimeScale &scale, double pixelRatio)
{
    const double placesPerUnit = pixelRatio * placesPerColumn;
    Columns columns(scale.width(), pixelRatio);
    for (std::size_t next = 0; next < moments.size();) {
        const double position = scale.position(instantOf(moments[next]));
        const double place = std::round(position * placesPerUnit);
        // Everything up to the middle between this place and the next is drawn here; at the right edge, everything.
        const double until = (place + 0.5) / placesPerUnit;
        const std::size_t end = until >= scale.width()
                                    ? moments.size()
                                    : firstAbove(moments, next, scale.moment(until).time_since_epoch().count());
        // At least this one: at the left edge a place is shorter than the clock can tell apart.
        const std::size_t past = std::max(end, next + 1);
        columns.cover(place / placesPerColumn, past - next);
        next = past;
    }
    return std::move(columns).opacities();
}

} // namespace quillfen
