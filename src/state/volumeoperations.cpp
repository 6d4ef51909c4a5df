// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/appstate.h"
#include "state/timelimits.h"

#include <functional>
#include <optional>
#include <utility>

namespace quillfen {

namespace {

/// As often as a volume is tried: with the pauses, the minute that an appliance may take to come up.
constexpr int mountAttempts = 12;

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

QCoro::Task<RestorePoints> AppState::restorePoints(std::int64_t volumeId)
{
    const auto self = shared_from_this();
    const json::object request = params("volume_id", volumeId);
    std::optional<json::value> answer;
    {
        // Nothing of the answer stays here: it is let go of where it was read.
        json::value received = co_await m_rpc.call("restore_points.list", request, timeLimit("restore_points.list"));
        answer.emplace(std::move(received));
    }
    RestorePoints points;
    const std::function<void()> reading = [&] {
        points = RestorePoints::of(*answer);
        answer.reset();
    };
    const Worker::Awaiter read = m_worker.run(reading);
    co_await read;
    co_return points;
}

} // namespace quillfen
