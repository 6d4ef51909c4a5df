// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace quillfen {

/// A volume as the board's actions need it: they keep it while they wait, whatever becomes of the list meanwhile.
struct PastVolume {
    std::int64_t id = 0;
    QString name;

    bool operator==(const PastVolume &) const = default;
};

/// What the row of an open view shows.
struct ViewRow {
    enum class Offer { Show, Mount, OpenAgain };

    QString name;
    QString origin;    ///< "as of …"
    QString timestamp; ///< its second, as the agent wrote it
    Offer offer = Offer::OpenAgain;
    QString folder; ///< where it is mounted
};

/// What the row of a volume in the making shows.
struct RecoveryRow {
    std::int64_t id = 0;
    QString name;
    QString origin; ///< "from …", with the percentage where there is one
    std::optional<std::int64_t> percent;
    bool isReady = false;
};

[[nodiscard]] ViewRow viewRow(const AppState &state, const QString &volumeName, const Record &view);
[[nodiscard]] RecoveryRow recoveryRow(const Record &recovery);

/// The name under which a view's mount is listed.
[[nodiscard]] QString viewMountName(const QString &volumeName, const QString &viewName);

/// A moment as the agent is asked for it: "2026-03-04T05:06:07Z", in UTC, without its fraction.
[[nodiscard]] QString isoSecond(Instant moment);

/// The first twelve digits of a timestamp: "202603040506".
[[nodiscard]] QString shortName(const QString &timestamp);

/// How long ago the chosen second was, and how finely it is chosen.
[[nodiscard]] QString ageText(Instant moment);

/// The notice about a view that the agent has opened.
[[nodiscard]] QString openedText(const json::value &answer);

/// With "…" for a number that is not known yet.
[[nodiscard]] QString restorePointsTitle(std::optional<std::size_t> count);

} // namespace quillfen
