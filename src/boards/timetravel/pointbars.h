// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timescale.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillfen {

/// How opaque the bars of restore points make each pixel column of a strip: 0 to 1, one entry a column.
///
/// Every point is a bar 1.5 wide around its position at three quarters of opacity, and bars that overlap cover one
/// another, so that crowds stand out. The outcome is that of painting them one by one with soft edges, at positions
/// kept to a quarter of a pixel; the work follows the columns and not the points, of which each crowd is found by two
/// searches. `moments` ascend, in milliseconds since 1970. `pixelRatio` is that of the screen.
[[nodiscard]] std::vector<float> barCoverage(std::span<const std::int64_t> moments, const TimeScale &scale,
                                             double pixelRatio);

} // namespace quillfen
