// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

class QWidget;

namespace quillfen {

/// Cuts a window to its round corners, where it cannot be partly transparent (see `isComposited`). For its resize
/// event.
void cutRoundCorners(QWidget *window, qreal radius);

} // namespace quillfen
