// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillfen {

/// A byte count in GB (2^30 bytes) or TB (2^40): "0 GB", "1.5 GB", "1.0 TB".
[[nodiscard]] QString gb(std::int64_t bytes);

/// How long ago an ISO 8601 moment was: "just now", "5 min ago", "47 h ago", then date and time in the user's locale
/// (CLDR). A text that is no moment comes back as it is.
[[nodiscard]] QString ago(const QString &timestamp);

/// Reads an ISO 8601 moment, leniently: space for "T", up to nine fractional digits (kept: milliseconds), UTC when no
/// zone is given. None for anything else, a bare date included.
[[nodiscard]] std::optional<Instant> parseDate(const QString &text);
/// The same of a text in UTF-8, in 20 ns: for a million of them.
[[nodiscard]] std::optional<Instant> parseDate(std::string_view text);

/// "Nov 15", with the year when it is not the current one; text that is no moment comes back as it is.
[[nodiscard]] QString shortDate(const QString &timestamp);
[[nodiscard]] QString shortDate(Instant moment);

/// "Sun, Nov 15 · 21:04:05" in the user's locale and time zone; text that is no moment comes back as it is.
[[nodiscard]] QString longDate(const QString &timestamp);

/// The same, and where the clock shows the second twice, at the end of summer time, with the zone that tells which one:
/// "Sun, Oct 25 · 02:30:00 GMT+2". For moments that a user acts on.
[[nodiscard]] QString exactDate(const QString &timestamp);
[[nodiscard]] QString exactDate(Instant moment);

/// "21:04" in the user's time zone.
[[nodiscard]] QString timeOfDay(Instant instant);

/// How long something has gone on: "42 s", "12 min", "1 h 10 min".
[[nodiscard]] QString elapsed(Instant since);

/// `words` with the first letter of each word in upper case and the others in lower case, as the user's locale has it.
[[nodiscard]] QString capitalised(const QString &words);

} // namespace quillfen
