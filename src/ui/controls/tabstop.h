// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QAbstractButton;

namespace quillfen {

/// Of buttons that exclude each other under one parent Tab comes to the chosen one, and to the first while none is;
/// the arrow keys go on from there. Qt thinks of it only once one of them has had the keyboard. For each of the
/// buttons, at its construction.
void shareTabStop(QAbstractButton *button);

} // namespace quillfen
