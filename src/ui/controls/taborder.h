// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

class QWidget;

namespace quillfen {

/// Lets Tab go from `before` into `subtree`, whose controls keep their own order, and on from there as it was. For what
/// is made late: the controls of a new widget come last in its window.
void moveInTabOrder(QWidget *before, QWidget *subtree);

/// Lets Tab come to `controls`, in this order, where `place` stands in its window. Neither needs to take the focus now.
void placeInTabOrder(QWidget *place, const std::vector<QWidget *> &controls);

} // namespace quillfen
