// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"

#include <optional>
#include <string_view>

namespace quillfen {

/// A text read as date and time of ISO 8601, `2026-11-15T21:04:05.123+01:00`, each piece in its full width. Any thread.
struct IsoMoment {
    Instant instant;       ///< in UTC, to the millisecond; taken as UTC where no zone is given
    bool fraction = false; ///< it had a fraction of a second
    bool zone = false;     ///< it ended in "Z" or an offset
};

/// Reads the whole of `text` or nothing. `separator` stands between date and time.
[[nodiscard]] std::optional<IsoMoment> isoMoment(std::u16string_view text, char16_t separator = u'T');
[[nodiscard]] std::optional<IsoMoment> isoMoment(std::string_view text, char separator = 'T');

} // namespace quillfen
