// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelmodel.h"

#include "state/ask.h"
#include "state/format.h"
#include "state/recordlists.h"

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

/// How far back the board begins.
constexpr auto firstAge = 1h;

/// The views that an answer lists, or is the list of.
Records viewsIn(json::value &&answer)
{
    return answer.is_array() ? takeRecords(std::move(answer)) : takeRecords(std::move(answer), "views");
}

} // namespace

TimeTravelModel::TimeTravelModel(std::shared_ptr<AppState> state) : at(now() - firstAge), m_state(std::move(state)) {}

std::optional<PastVolume> TimeTravelModel::volume() const
{
    const Records &volumes = m_state->volumes();
    if (volumes.isEmpty()) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> &chosen = volumeId();
    const Record *const found = chosen ? recordWithId(volumes, *chosen) : nullptr;
    const Record &shown = found == nullptr ? volumes.constFirst() : *found;
    return PastVolume{num(shown, "id"), str(shown, "name")};
}

QCoro::Task<> TimeTravelModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_generation;
    const std::optional<PastVolume> shown = volume();
    follow(shown);
    if (!shown) {
        loading = false;
        co_return;
    }
    loading = true;
    const json::object request = params("volume_id", shown->id);

    RestorePoints foundPoints;
    try {
        foundPoints = co_await m_state->restorePoints(shown->id);
    } catch (const RPCError &) {
        foundPoints = RestorePoints();
    }
    if (generation != m_generation) {
        co_return;
    }
    m_pointsKnown = true;
    points = std::move(foundPoints);

    std::optional<json::value> opened = co_await answerOrNothing(m_state, "volumes.views", request);
    if (generation != m_generation) {
        co_return;
    }
    m_viewsKnown = true;
    views = opened ? viewsIn(std::move(*opened)) : Records();

    std::optional<json::value> copies = co_await answerOrNothing(m_state, "recoveries.list_for_volume", request);
    if (generation != m_generation) {
        co_return;
    }
    recoveries = copies ? takeRecords(std::move(*copies), "recoveries") : Records();
    loading = false;
}

QCoro::Task<> TimeTravelModel::watchCopies()
{
    const auto self = shared_from_this();
    if (!isCopying() || loading()) {
        co_return;
    }
    const std::uint64_t generation = m_generation;
    const json::object request = params("volume_id", m_loaded->id);
    std::optional<json::value> copies = co_await answerOrNothing(m_state, "recoveries.list_for_volume", request);
    if (copies && generation == m_generation) {
        recoveries = takeRecords(std::move(*copies), "recoveries");
    }
}

QCoro::Task<> TimeTravelModel::openView(PastVolume volume, QString timestamp, std::optional<QString> name)
{
    const auto self = shared_from_this();
    Action action = calling("views.open",
                            name ? params("volume_id", volume.id, "timestamp", timestamp, "name", *name)
                                 : params("volume_id", volume.id, "timestamp", timestamp),
                            600s);
    action.before = tr("Opening %1 as it was at %2").arg(volume.name, exactDate(timestamp));
    action.done = openedText;
    action.operation = tr("Opening %1").arg(volume.name);
    co_await run(action, Refresh::AfterSuccess);
}

QCoro::Task<> TimeTravelModel::releaseView(PastVolume volume, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("views.close", params("volume_id", volume.id, "name", name), 600s);
    action.done = saying(tr("released %1").arg(name));
    co_await run(action, Refresh::Always);
}

QCoro::Task<> TimeTravelModel::mountView(PastVolume volume, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("mount.attach", params("volume_id", volume.id, "view", name), 300s);
    action.done = saying(tr("view %1 mounted").arg(name));
    co_await run(action, Refresh::Always);
}

QCoro::Task<> TimeTravelModel::newVolume(PastVolume volume, QString timestamp, QString name)
{
    const auto self = shared_from_this();
    Action action =
        calling("restore.start", params("volume_id", volume.id, "timestamp", timestamp, "recovery_name", name), 600s);
    action.before = tr("Preparing %1. Watch it under New volumes in the making on this board; when it is fully copied, "
                       "Make it a volume (also offered on the Volumes board).")
                        .arg(name);
    action.operation = tr("Preparing %1").arg(name);
    co_await run(action, Refresh::Never);
}

QCoro::Task<> TimeTravelModel::promote(std::int64_t recovery, QString newName)
{
    const auto self = shared_from_this();
    Action action = calling("recovery.promote", params("recovery_id", recovery, "new_name", newName), 600s);
    action.done =
        saying(tr("%1 is a volume now; click Mount on it under Volumes to start it on this Mac.").arg(newName));
    co_await run(action, Refresh::AfterSuccess);
}

QCoro::Task<> TimeTravelModel::discard(std::int64_t recovery)
{
    const auto self = shared_from_this();
    Action action = calling("recovery.delete", params("recovery_id", recovery), 300s);
    action.done = saying(tr("discarded"));
    co_await run(action, Refresh::Never);
}

QCoro::Task<> TimeTravelModel::run(Action action, Refresh refresh)
{
    const auto self = shared_from_this();
    action.refresh = refresh != Refresh::Never;
    const std::optional<json::value> answer = co_await perform(m_state, action);
    if (!answer && refresh == Refresh::Always) {
        co_await m_state->refresh();
    }
    co_await load();
}

bool TimeTravelModel::isCopying() const
{
    const Records &list = recoveries();
    return m_loaded && std::any_of(list.cbegin(), list.cend(), [](const Record &each) {
               const RecoveryRow row = recoveryRow(each);
               return !row.isReady || row.percent.value_or(100) < 100;
           });
}

void TimeTravelModel::follow(const std::optional<PastVolume> &volume)
{
    const bool isAnother = !volume || !m_loaded || m_loaded->id != volume->id;
    m_loaded = volume;
    if (isAnother) {
        m_pointsKnown = m_viewsKnown = false;
        // The lists of one volume never stand under the name of another.
        points = RestorePoints();
        views = Records();
        recoveries = Records();
    }
}

} // namespace quillfen
