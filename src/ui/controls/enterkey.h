// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QAbstractButton;
class QKeyEvent;

namespace quillfen {

/// Whether the key is Enter, of either block of keys.
[[nodiscard]] bool isEnter(const QKeyEvent &event);

/// Presses `button` where the key is Enter, which Qt leaves to dialogs. False for every other key. A held key presses
/// once: the second press might meet the next question.
[[nodiscard]] bool pressByEnter(QAbstractButton &button, const QKeyEvent &event);

} // namespace quillfen
