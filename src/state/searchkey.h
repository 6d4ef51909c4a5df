// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace quillfen {

/// The form of a text under which a search finds it: composed, case folded as the user's language does it (Turkish
/// dotted and dotless i stay apart there). Fold both sides, then compare with `contains`. Any thread.
[[nodiscard]] QString searchKey(const QString &text);

} // namespace quillfen
