// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

namespace quillfen {

/// Where an age lies on the scale on which the product draws history: 0 is one second ago or less, 1 is `span` (above
/// one) or more. Logarithmic, so that the last minute, hour, day and month each get a width that can be used. In
/// seconds.
[[nodiscard]] inline double shareOfAge(double age, double span)
{
    return std::clamp(std::log(std::max(age, 1.0)) / std::log(span), 0.0, 1.0);
}

} // namespace quillfen
