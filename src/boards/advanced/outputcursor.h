// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "outputrows.h"

#include <cstddef>
#include <utility>

class QKeyEvent;

namespace quillfen {

/// Where a key that moves the cursor (arrows, Home, End, Page Up and Down) takes it from a place in the text. A page
/// has `page` rows.
[[nodiscard]] std::size_t movedBy(const QKeyEvent &key, const OutputRows &rows, std::size_t from, std::size_t page);

/// Begin and end of the word at a place; both are that place where there is none.
[[nodiscard]] std::pair<std::size_t, std::size_t> wordAround(const OutputText &text, std::size_t place);

} // namespace quillfen
