// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace quillfen {

/// Below this width, scaled with the text, what stands side by side on the board stands below one another.
inline constexpr int narrowBoard = 760;

} // namespace quillfen
