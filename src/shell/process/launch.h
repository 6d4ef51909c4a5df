// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/process/wish.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillfen {

/// What the command line asks for. The enrolment code is not in here: `pendingEnrolFrom` reads it when the window is
/// up.
struct LaunchOptions {
    bool help = false;
    bool version = false;
    std::optional<QString> tourFolder; ///< show every screen, leave pictures there, and end
    QStringList links;                 ///< `quillfen:` links to open
    bool newVolume = false;            ///< begin with the new-volume sheet
    bool timeTravel = false;           ///< begin on Time travel
    bool background = false;           ///< start without showing the window
    bool quitOnClose = false;          ///< end with the window instead of living on without one
    std::optional<QString> problem;    ///< why the line cannot be followed, in words for the terminal
};

/// Reads the arguments, the program's name first. A "--enroll" at the end, with nothing after it, is no problem.
[[nodiscard]] LaunchOptions launchOptionsFrom(const QStringList &arguments);

/// What such a start wishes, of this process or of one that runs already: `arguments` and what the desktop has put into
/// the environment for it.
[[nodiscard]] Wish wishOf(const LaunchOptions &options, const QStringList &arguments);

/// What "--help" prints.
[[nodiscard]] QString helpText();

/// The argument after the first "--enroll", whatever it is; none when "--enroll" is missing or comes last.
[[nodiscard]] std::optional<QString> pendingEnrolFrom(const QStringList &arguments);

/// QUILLFEN_START_SECTION as it is set; none when it is not.
[[nodiscard]] std::optional<QString> startSectionWish();

/// True for exactly "newvolume": the program starts with the new-volume sheet.
[[nodiscard]] bool asksForNewVolume(const std::optional<QString> &wish);

/// True for a link whose scheme is exactly "quillfen". The text decides: QUrl would make "QUILLFEN" the same scheme.
[[nodiscard]] bool isProductLink(const QString &link);

} // namespace quillfen
