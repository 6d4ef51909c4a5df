// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPainterPath>

#include <string_view>

namespace quillfen {

/// The outline that the data of an SVG path describe. Knows all that our drawings use: lines, cubic curves, arcs of
/// circles and of ellipses that stand upright. What follows anything else is left out.
[[nodiscard]] QPainterPath svgPath(std::string_view data);

} // namespace quillfen
