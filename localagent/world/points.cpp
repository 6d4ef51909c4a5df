// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/points.h"

namespace quillfen::localagent {

namespace {

// The age falls with the third power towards now: of 1,000 points over 90 days, 100 lie within the last two hours.
void writeOut(History &history, Time now)
{
    const double span = Seconds(now - history.oldest).count();
    const auto count = static_cast<double>(history.planned);
    history.points.reserve(static_cast<std::size_t>(history.planned));
    for (std::int64_t index = 0; index < history.planned; ++index) {
        const double left = 1.0 - static_cast<double>(index) / count;
        const Seconds age(span * left * left * left);
        history.points.push_back(now - std::chrono::duration_cast<std::chrono::milliseconds>(age));
    }
    history.written = true;
}

} // namespace

const std::vector<Time> &restorePoints(World &world, Volume &volume)
{
    if (!volume.history.written) {
        writeOut(volume.history, world.clock.now());
    }
    return volume.history.points;
}

json::object pointsRecord(World &world, Volume &volume)
{
    json::array points;
    for (const Time time : restorePoints(world, volume)) {
        points.push_back(json::object{{"timestamp", isoTime(time)}});
    }
    switch (world.state.pointsForm) {
    case PointsForm::RecoveryPoints:
        return {{"recovery_points", std::move(points)}};
    case PointsForm::Raw:
        return {{"raw", json::serialize(json::object{{"recovery_points", std::move(points)}})}};
    case PointsForm::Points:
        break;
    }
    return {{"points", std::move(points)}};
}

} // namespace quillfen::localagent
