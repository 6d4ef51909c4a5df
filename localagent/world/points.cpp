// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/points.h"

#include "localagent/world/mounts.h"
#include "localagent/world/thinning.h"

#include <algorithm>
#include <optional>

namespace quillfen::localagent {

namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// A volume in use changes about this often …
constexpr seconds changeInterval(20);
/// … and what nobody asked about for so long is put in once an hour, for the sake of clocks that run fast.
constexpr hours coarseAfter(48);
constexpr hours coarseInterval(1);

bool isInUse(const World &world, const Volume &volume)
{
    return volume.appliance == Appliance::Online && (volume.share == "iscsi" || mountOf(world, volume.id) != nullptr);
}

/// The second within its interval at which a volume changes: always the same, whenever and however often one asks.
seconds changeWithin(VolumeId volume, std::int64_t slot, seconds interval)
{
    std::uint64_t mixed = static_cast<std::uint64_t>(slot) * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(volume);
    mixed = (mixed ^ (mixed >> 29U)) * 0xBF58476D1CE4E5B9U;
    return seconds(static_cast<std::int64_t>((mixed >> 33U) % static_cast<std::uint64_t>(interval.count())));
}

void addChanges(Volume &volume, Time from, Time to, seconds interval)
{
    std::vector<Time> &points = volume.history.points;
    const std::int64_t first = from.time_since_epoch() / interval;
    for (std::int64_t slot = first; Time(slot * interval) < to; ++slot) {
        const Time change(slot * interval + changeWithin(volume.id, slot, interval));
        if (change > from && change <= to && (points.empty() || change > points.back())) {
            points.push_back(change);
        }
    }
}

void bringUpToDate(World &world, Volume &volume)
{
    History &history = volume.history;
    const Time now = world.clock.now();
    if (isInUse(world, volume)) {
        const Time fine = std::max(history.until, now - coarseAfter);
        addChanges(volume, history.until, fine, coarseInterval);
        addChanges(volume, fine, now, changeInterval);
    }
    history.until = now;
    thin(volume, now);
}

Refusal outside(const Volume &volume, std::string_view side, Time limit, std::string_view wayOut)
{
    return {Refusal::Kind::Bad, "The history of " + volume.name + " " + std::string(side) + " " +
                                    isoTime(std::chrono::floor<seconds>(limit)) + ". " + std::string(wayOut)};
}

} // namespace

const std::vector<Time> &restorePoints(World &world, Volume &volume)
{
    if (!volume.history.written) {
        writeOut(volume, world.clock.now());
    }
    bringUpToDate(world, volume);
    return volume.history.points;
}

void settleHistory(World &world, Volume &volume)
{
    // A plan that nobody has asked about yet holds everything up to the moment at which it is written out.
    if (volume.history.written) {
        bringUpToDate(world, volume);
    }
}

void pinPoint(World &world, Volume &volume, const std::string &label)
{
    static_cast<void>(restorePoints(world, volume));
    std::vector<Time> &points = volume.history.points;
    const Time now = world.clock.now();
    if (points.empty() || points.back() < now) {
        points.push_back(now);
    }
    volume.history.pinned.insert_or_assign(points.back(), label);
}

void addPoint(World &world, Volume &volume)
{
    settleHistory(world, volume);
    std::vector<Time> &points = volume.history.points;
    const Time now = world.clock.now();
    if (volume.history.written && (points.empty() || points.back() < now)) {
        points.push_back(now);
    }
}

Time momentInHistory(World &world, Volume &volume, std::string_view timestamp)
{
    const std::optional<Time> moment = parseIsoTime(timestamp);
    if (!moment) {
        throw Refusal(Refusal::Kind::Bad, "\"" + std::string(timestamp.substr(0, 40)) +
                                              "\" is not a moment. Write it like 2026-11-20T09:30:00Z.");
    }
    if (*moment > world.clock.now()) {
        throw outside(volume, "ends at", world.clock.now(), "Choose a moment in the past.");
    }
    const std::vector<Time> &points = restorePoints(world, volume);
    if (points.empty()) {
        throw Refusal(Refusal::Kind::Missing,
                      volume.name +
                          " has no history yet. It begins with the first change after the volume is mounted.");
    }
    // Who writes whole seconds means the second in which the first point lies, too.
    if (*moment < std::chrono::floor<seconds>(points.front())) {
        throw outside(volume, "begins at", points.front(), "Choose a later moment.");
    }
    return *moment;
}

} // namespace quillfen::localagent
