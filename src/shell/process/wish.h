// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillfen {

/// What a start of the program asks for, whether this process grants it or one that runs already.
struct Wish {
    bool show = true; ///< bring the window to the front
    QString code;     ///< of "--enroll"; none when empty
    QStringList links;
    QString action; ///< "new-volume" or "time-travel", as the desktop entry names them; none when empty
    /// What the desktop gave the start so that a window may come to the front (xdg-activation-v1), and its older
    /// sibling of X11 (startup-notification).
    QString activationToken;
    QString startupId;

    bool operator==(const Wish &) const = default;
};

/// The actions that the desktop entry offers.
namespace action {
inline constexpr auto newVolume = "new-volume";
inline constexpr auto timeTravel = "time-travel";
/// Not in the desktop entry: carries the code of "--enroll" over the bus.
inline constexpr auto enroll = "enroll";
} // namespace action

/// Whether a code or link from outside may become the pending enrolment code: no longer than any that is issued, and
/// without control characters, which no code has and which could make it look like another.
[[nodiscard]] bool isAcceptable(const QString &codeOrLink);

/// One line of JSON (RFC 8259), its end included.
[[nodiscard]] QByteArray lineOf(const Wish &wish);
/// Reads what `lineOf` writes; none for anything else.
[[nodiscard]] std::optional<Wish> wishFromLine(const QByteArray &line);

} // namespace quillfen
