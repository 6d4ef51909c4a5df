// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/points.h"

#include <boost/json.hpp>

namespace quillfen::localagent {

namespace {

/// A record's braces, key and moment.
constexpr std::size_t recordLength = 43;

std::string listText(const std::vector<Time> &points, const std::map<Time, std::string> &pinned)
{
    std::string text;
    text.reserve(points.size() * recordLength + 2);
    text += '[';
    for (const Time point : points) {
        text += text.size() > 1 ? R"(,{"timestamp":")" : R"({"timestamp":")";
        appendIsoTime(text, point);
        text += '"';
        if (const auto label = pinned.find(point); label != pinned.end()) {
            text += R"(,"label":)" + json::serialize(json::string(label->second));
        }
        text += '}';
    }
    text += ']';
    return text;
}

} // namespace

std::string pointsText(World &world, Volume &volume)
{
    const std::vector<Time> &points = restorePoints(world, volume);
    std::string list = listText(points, volume.history.pinned);
    switch (world.state.pointsForm) {
    case PointsForm::RecoveryPoints:
        return R"({"recovery_points":)" + list + '}';
    case PointsForm::Raw:
        return R"({"raw":)" + json::serialize(json::string(R"({"recovery_points":)" + list + '}')) + '}';
    case PointsForm::Points:
        break;
    }
    return R"({"points":)" + list + '}';
}

} // namespace quillfen::localagent
