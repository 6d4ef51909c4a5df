// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/linereader.h"
#include "state/appstate.h"
#include "state/timelimits.h"

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

/// As often as a volume is tried: with the pauses, the minute that an appliance may take to come up.
constexpr int mountAttempts = 12;

/// Takes the objects out of the list under `key`; whatever else is in it is dropped.
Records takeObjectsUnder(Record &answer, std::string_view key)
{
    json::value *const value = answer.if_contains(key);
    json::array *const list = value == nullptr ? nullptr : value->if_array();
    Records points;
    if (list != nullptr) {
        for (json::value &element : *list) {
            if (element.is_object()) {
                points.emplaceBack(std::move(element.get_object()));
            }
        }
    }
    return points;
}

/// The object that the text under "raw" holds.
Record rawAnswer(const Record &answer)
{
    const json::value *const raw = answer.if_contains("raw");
    if (raw == nullptr || !raw->is_string()) {
        return {};
    }
    json::parse_options options;
    options.max_depth = LineReader::maxDepth; // as deep as if the points had come in the answer itself
    json::error_code error;
    json::value parsed = json::parse(raw->get_string(), error, json::storage_ptr(), options);
    return error ? Record() : takeObject(std::move(parsed));
}

/// Agents differ in where they put the points: the first place with any in it counts.
Records takePoints(Record answer)
{
    Records points = takeObjectsUnder(answer, "recovery_points");
    if (points.isEmpty()) {
        Record raw = rawAnswer(answer);
        points = takeObjectsUnder(raw, "recovery_points");
    }
    return points.isEmpty() ? takeObjectsUnder(answer, "points") : points;
}

bool isEarlier(const Record &left, const Record &right)
{
    const json::value *const leftTime = left.if_contains("timestamp");
    const json::value *const rightTime = right.if_contains("timestamp");
    if (leftTime != nullptr && rightTime != nullptr && leftTime->is_string() && rightTime->is_string()) {
        return leftTime->get_string() < rightTime->get_string();
    }
    return str(leftTime).toUtf8() < str(rightTime).toUtf8();
}

} // namespace

QCoro::Task<> AppState::deployAndMount(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    const json::object request = params("volume_id", id);
    std::optional<QString> failure;

    show(tr("Starting the appliance for %1…").arg(name));
    busy = true;
    try {
        co_await m_rpc.call("appliance.deploy", request, timeLimit("appliance.deploy"));
    } catch (const RPCError &error) {
        failure = error.message;
    }
    if (failure) {
        show(*failure);
    }
    busy = false;
    if (failure) {
        co_return;
    }

    for (int attempt = 0; attempt < mountAttempts && !m_shutDown; ++attempt) {
        failure.reset();
        try {
            co_await m_rpc.call("mount.attach", request, timeLimit("mount.attach"));
        } catch (const RPCError &error) {
            failure = error.message;
        }
        if (!failure) {
            break;
        }
        const Pauses::Awaiter pause = m_pauses.of(m_timing.mountRetryDelay);
        co_await pause;
    }
    if (m_shutDown) {
        co_return;
    }
    show(failure ? *failure : tr("%1 is mounted in ~/Quillfen/%1").arg(name));
    co_await refresh();
}

QCoro::Task<Records> AppState::restorePoints(std::int64_t volumeId)
{
    const auto self = shared_from_this();
    const json::object request = params("volume_id", volumeId);
    json::value answer = co_await m_rpc.call("restore_points.list", request, timeLimit("restore_points.list"));
    Records points = takePoints(takeObject(std::move(answer)));
    // They come in order nearly always, and finding that out costs a fraction of sorting.
    if (!std::is_sorted(points.cbegin(), points.cend(), isEarlier)) {
        std::sort(points.begin(), points.end(), isEarlier);
    }
    co_return points;
}

} // namespace quillfen
