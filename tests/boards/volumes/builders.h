// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QTest>

#include <chrono>
#include <memory>

namespace quillfen {

inline constexpr std::int64_t gigabyte = std::int64_t{1} << 30;

inline Record volume(std::int64_t id, const QString &name, std::int64_t size = 100 * gigabyte)
{
    return params("id", id, "name", name, "size_bytes", size, "presentation_type", "smb", "encryption", "none",
                  "appliance", params("container", QStringLiteral("quill-vol-%1").arg(id)));
}

/// `with(volume(7, u"x"_s), "encryption", "customer")`
template <typename... Pairs>
Record with(Record record, Pairs &&...pairs)
{
    for (auto &[key, value] : params(std::forward<Pairs>(pairs)...)) {
        record[key] = value;
    }
    return record;
}

inline Records manyVolumes(int count)
{
    Records volumes;
    volumes.reserve(count);
    for (int at = 0; at < count; ++at) {
        volumes.append(volume(at + 1, QStringLiteral("volume-%1").arg(at)));
    }
    return volumes;
}

inline Record usedStatus(std::int64_t bytes)
{
    return params("sync", params("local", params("FS_USED_BYTES", bytes)));
}

inline Record syncedStatus()
{
    return params("appliance", params("online", true, "pending_bytes", 0));
}

inline Record uploadingStatus(int percent)
{
    return params("appliance", params("online", true, "pending_bytes", 4096), "offsite", params("percent", percent));
}

inline void setStatus(AppState &state, std::int64_t id, const Record &status)
{
    state.statuses.update([&](auto &statuses) { statuses[id] = status; });
}

inline std::shared_ptr<AppState> stateWith(const Records &volumes)
{
    Timing timing;
    timing.frame = std::chrono::milliseconds(1);
    std::shared_ptr<AppState> state = AppState::create(timing);
    state->volumes = volumes;
    return state;
}

/// Lets the main loop run until `condition` holds, at most five seconds.
template <typename Condition>
[[nodiscard]] bool eventually(Condition condition)
{
    return QTest::qWaitFor(condition, 5'000);
}

} // namespace quillfen
