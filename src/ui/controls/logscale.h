// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

namespace quillfen {

/// The scale on which the product draws history: logarithmic, so that the last minute, hour, day and month each get a
/// width that can be used. In seconds.
class LogScale final {
public:
    /// `span`, above one, is the age at the far end.
    explicit LogScale(double span) : m_logSpan(std::log(span)) {}

    /// Where an age lies: 0 is one second ago or less, 1 is the span or more.
    [[nodiscard]] double share(double age) const
    {
        return std::clamp(std::log(std::max(age, 1.0)) / m_logSpan, 0.0, 1.0);
    }
    /// The age at a share from 0 to 1.
    [[nodiscard]] double age(double share) const { return std::exp(m_logSpan * share); }

private:
    double m_logSpan;
};

} // namespace quillfen
