// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quillfen::localagent {

/// A second of a volume's past that can be looked at. It is listed from its first opening until it is released; the end
/// of the engine closes it.
struct View {
    std::int64_t volume = 0;
    std::string name;
    Time at = {};
    bool open = false;
    bool listed = false;
};

struct Views {
    std::vector<View> all; ///< in the order in which they were asked for
};

} // namespace quillfen::localagent
