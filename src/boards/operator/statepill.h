// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace quillfen {

class Pill;

/// A pill for a state or a role in a card.
[[nodiscard]] Pill *statePill();
/// Has it say `state`, in the colours of how well that sounds; hidden when there is nothing to say.
void showState(Pill *pill, const QString &state);

} // namespace quillfen
