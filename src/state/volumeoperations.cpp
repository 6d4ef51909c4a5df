// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/action.h"
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
    const QString beginning = tr("Starting the appliance for %1…").arg(name);
    Action deploy = calling("appliance.deploy", request, timeLimit("appliance.deploy"));
    deploy.done = saying(tr("appliance for %1 started").arg(name)); // for the activity; the mount is still to come
    Action mount = calling("mount.attach", request, timeLimit("mount.attach"));
    const QString mounted = tr("%1 is mounted in ~/Quillfen/%1").arg(name);
    mount.done = saying(mounted);

    // To whoever waits for the volume its calls and the pauses between them are one operation.
    RunningCall whole;
    whole.method = "appliance.deploy, mount.attach";
    whole.title = tr("Starting and mounting %1").arg(name);
    whole.progressEvent = "appliance.progress";
    const std::uint64_t operation = activity.begin(std::move(whole));

    show(beginning);
    busy = true;
    CallOutcome outcome = co_await attempt(self, deploy);
    if (!outcome.answer) {
        showOutcome(outcome.words);
    }
    busy = false;
    if (!outcome.answer) {
        activity.end(operation, {outcome.words, true, std::nullopt});
        co_return;
    }

    for (int tries = 0; tries < mountAttempts && !m_shutDown; ++tries) {
        outcome = co_await attempt(self, mount);
        if (outcome.answer) {
            break;
        }
        const Pauses::Awaiter pause = m_pauses.of(m_timing.mountRetryDelay);
        co_await pause;
    }
    activity.end(operation, {outcome.words, !outcome.answer.has_value(), std::nullopt});
    if (m_shutDown) {
        co_return;
    }
    showOutcome(outcome.words);
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
