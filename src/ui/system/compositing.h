// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace quillfen {

/// Whether top-level windows can be partly transparent. Where they cannot (X11 without a compositor) a transparent
/// pixel is black, so windows with round corners and shadows cut their shape with a mask instead. Asked anew each time,
/// since a compositor may come and go.
[[nodiscard]] bool isComposited();

} // namespace quillfen
