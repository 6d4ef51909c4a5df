// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/state.h"

namespace quillfen::localagent {

/// Takes away the points that the volume's policy no longer keeps. What is pinned stays.
void thin(Volume &volume, Time now);

/// Writes a planned history out: as many points as planned, from the oldest moment to now, at places where the policy
/// leaves them. Fewer when the policy does not keep so many.
void writeOut(Volume &volume, Time now);

} // namespace quillfen::localagent
