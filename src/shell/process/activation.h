// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

namespace quillfen {

struct Wish;

namespace platform {

/// Shows a window and brings it to the front in the name of the start that wished for it, so that the desktop does not
/// take it for one that pushes itself in.
void bringForward(QWidget &window, const Wish &wish);

} // namespace platform

} // namespace quillfen
