// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace quillfen {

/// What the system says about motion, as far as it has answered. The first question asks it; the answer comes later,
/// and changes are followed. Main thread.
[[nodiscard]] bool systemReducesMotion();

} // namespace quillfen
