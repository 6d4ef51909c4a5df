// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QColor>
#include <QString>

#include <optional>

namespace quillfen {

/// How everything is, at one glance.
enum class Overall { Protected, Uploading, EngineStopped };

[[nodiscard]] Overall overallState(const AppState &state);
/// The same in words.
[[nodiscard]] QString overallText(Overall overall);

/// A volume as the menu-bar panel tells of it.
struct MenuBarRow {
    QString name;
    QString offsite;
    QColor offsiteColour;
    QString line;                   ///< share, whether it is mounted here, size
    std::optional<QString> mounted; ///< where, while it is mounted here
};

[[nodiscard]] MenuBarRow menuBarRow(const AppState &state, const Record &volume);

/// "4 GB RAM", or that the engine does not run.
[[nodiscard]] QString engineMemoryLine(const AppState &state);

} // namespace quillfen
