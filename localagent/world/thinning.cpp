// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/thinning.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace quillfen::localagent {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr std::size_t tiers = 6;
/// What a unit of each tier's number lasts: minutes, hours, days, weeks, months, years.
constexpr std::array<std::int64_t, tiers> units{60, 3'600, 86'400, 604'800, 2'629'746, 31'556'952};

/// How far back each tier reaches. Numbers beyond any history count as all of it.
std::array<seconds, tiers> reaches(const Volume &volume)
{
    constexpr std::int64_t longest = 100'000'000'000; // three thousand years
    std::array<seconds, tiers> result{};
    for (std::size_t tier = 0; tier < tiers; ++tier) {
        const std::int64_t number = std::clamp<std::int64_t>(volume.policy[tier], 0, longest / units[tier]);
        result[tier] = seconds(number * units[tier]);
    }
    return result;
}

/// The number of the second, minute, hour, day, week (from Monday on) or month that `time` lies in.
std::int64_t bucketOf(std::size_t tier, Time time)
{
    constexpr days firstMonday(4);
    switch (tier) {
    case 0:
        return floor<seconds>(time).time_since_epoch().count();
    case 1:
        return floor<minutes>(time).time_since_epoch().count();
    case 2:
        return floor<hours>(time).time_since_epoch().count();
    case 3:
        return floor<days>(time).time_since_epoch().count();
    case 4:
        return floor<std::chrono::weeks>(time - firstMonday).time_since_epoch().count();
    default:
        break;
    }
    const std::chrono::year_month_day date(floor<days>(time));
    return std::int64_t{int(date.year())} * 12 + static_cast<std::int64_t>(unsigned(date.month())) - 1;
}

Time startOf(std::size_t tier, std::int64_t bucket)
{
    constexpr days firstMonday(4);
    switch (tier) {
    case 0:
        return Time(seconds(bucket));
    case 1:
        return Time(minutes(bucket));
    case 2:
        return Time(hours(bucket));
    case 3:
        return Time(days(bucket));
    case 4:
        return Time(std::chrono::weeks(bucket) + firstMonday);
    default:
        break;
    }
    const std::chrono::year year(static_cast<int>(bucket / 12));
    return std::chrono::sys_days(year / std::chrono::month(static_cast<unsigned>(bucket % 12) + 1) / 1);
}

/// The stretch of time in which a tier is the finest one, as its buckets that begin there.
struct Band {
    std::int64_t first = 0;
    std::int64_t count = 0;
    std::int64_t taken = 0;
};

std::array<Band, tiers> bandsOf(const Volume &volume, Time now)
{
    std::array<Band, tiers> bands{};
    const auto reach = reaches(volume);
    Time end = now;
    for (std::size_t tier = 0; tier < tiers; ++tier) {
        const Time begin = std::max(now - reach[tier], volume.history.oldest);
        if (begin < end) {
            bands[tier].first = bucketOf(tier, begin) + 1;
            bands[tier].count = std::max<std::int64_t>(0, bucketOf(tier, end) - bucketOf(tier, begin));
            end = begin;
        }
    }
    return bands;
}

/// Deals `points` out: all of the long stretches, a part of the hours and minutes, and the rest to the seconds.
void deal(std::array<Band, tiers> &bands, std::int64_t points)
{
    constexpr std::array<std::int64_t, tiers> shares{1, 3, 4, 2, 2, 2};
    constexpr std::array<std::int64_t, tiers> breaks{1, 3, 3, 1, 1, 1}; // nobody works through the night
    for (std::size_t tier = tiers; tier-- > 0;) {
        bands[tier].taken = std::min(bands[tier].count / breaks[tier], points / shares[tier]);
        points -= bands[tier].taken;
    }
    for (Band &band : bands) {
        const std::int64_t more = std::min(band.count - band.taken, points);
        band.taken += more;
        points -= more;
    }
}

/// How many seconds, minutes, hours … of work make a stretch without a break.
constexpr std::array<std::int64_t, tiers> stretches{16, 20, 8, 1, 1, 1};

/// Spread over the band in stretches, as people work; without breaks where nearly all of the band is taken.
void addSpread(std::vector<Time> &points, std::size_t tier, const Band &band)
{
    const std::int64_t length = band.taken * 2 > band.count ? 1 : stretches[tier];
    const std::int64_t starts = (band.taken + length - 1) / length;
    for (std::int64_t index = 0; index < band.taken; ++index) {
        const std::int64_t start = index / length * band.count / starts;
        points.push_back(startOf(tier, band.first + start + index % length));
    }
}

/// Few seconds out of many, in stretches too: their age falls with the third power towards now.
void addTowardsNow(std::vector<Time> &points, const Band &band)
{
    const std::int64_t last = band.first + band.count - 1;
    std::int64_t age = 0;
    for (std::int64_t index = 0; index < band.taken; ++index) {
        const double share = static_cast<double>(index) / static_cast<double>(band.taken);
        const auto wished = static_cast<std::int64_t>(static_cast<double>(band.count) * share * share * share);
        age = index % stretches[0] == 0 ? std::max(age + 1, wished) : age + 1;
        points.push_back(startOf(0, last - age + 1));
    }
}

} // namespace

void thin(Volume &volume, Time now)
{
    const auto reach = reaches(volume);
    std::array<std::int64_t, tiers> last{};
    last.fill(std::numeric_limits<std::int64_t>::min());
    const auto isKept = [&](Time point) {
        const milliseconds age = now - point;
        bool kept = false;
        // Within the finest tier no coarser one keeps more, and nearly all points lie there.
        for (std::size_t tier = 0; tier < (reach[0] > seconds(0) && age <= reach[0] ? 1 : tiers); ++tier) {
            const std::int64_t bucket = bucketOf(tier, point);
            const bool isWithin = reach[tier] > seconds(0) && age <= reach[tier];
            if (std::exchange(last[tier], bucket) != bucket && isWithin) {
                kept = true;
            }
        }
        return kept || volume.history.pinned.contains(point);
    };
    std::erase_if(volume.history.points, [&](Time point) { return !isKept(point); });
}

void writeOut(Volume &volume, Time now)
{
    History &history = volume.history;
    std::vector<Time> &points = history.points;
    const auto pinned = static_cast<std::int64_t>(history.pinned.size());
    if (history.planned > pinned) {
        std::array<Band, tiers> bands = bandsOf(volume, now);
        deal(bands, history.planned - pinned - 1);
        points.reserve(static_cast<std::size_t>(history.planned));
        points.push_back(history.oldest);
        for (std::size_t tier = tiers; tier-- > 1;) {
            addSpread(points, tier, bands[tier]);
        }
        if (bands[0].taken * 4 > bands[0].count) {
            addSpread(points, 0, bands[0]);
        } else {
            addTowardsNow(points, bands[0]);
        }
    }
    for (const auto &[time, label] : history.pinned) {
        points.push_back(time);
    }
    std::ranges::sort(points);
    points.erase(std::unique(points.begin(), points.end()), points.end());
    history.until = now;
    history.written = true;
}

} // namespace quillfen::localagent
