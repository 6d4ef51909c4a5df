// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace quillfen {

/// A byte count in GB (2^30 bytes) or TB (2^40): "0 GB", "1.5 GB", "1.0 TB".
[[nodiscard]] QString gb(std::int64_t bytes);

/// How long ago an ISO 8601 moment was: "just now", "5 min ago", "47 h ago", then date and time in the user's locale
/// (CLDR). A text that is no moment comes back as it is.
[[nodiscard]] QString ago(const QString &timestamp);

/// Reads an ISO 8601 moment, leniently: space for "T", up to nine fractional digits (kept: milliseconds), UTC when no
/// zone is given. None for anything else, a bare date included.
[[nodiscard]] std::optional<Instant> parseDate(const QString &text);

/// "Nov 15", with the year when it is not the current one; text that is no moment comes back as it is.
[[nodiscard]] QString shortDate(const QString &timestamp);

/// "Sun, Nov 15 · 21:04:05" in the user's locale and time zone; text that is no moment comes back as it is.
[[nodiscard]] QString longDate(const QString &timestamp);

/// `words` with the first letter of each word in upper case and the others in lower case, as the user's locale has it.
[[nodiscard]] QString capitalised(const QString &words);

} // namespace quillfen
