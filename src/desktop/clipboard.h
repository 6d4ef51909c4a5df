// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <memory>

class QMimeData;

namespace quillfen {

/// Puts plain text on the clipboard. Main thread.
void copyText(const QString &text);

/// The same for a secret or a key: marked, so that clipboard managers leave it out of their histories. Main thread.
void copySecret(const QString &secret);

/// A secret as `copySecret` hands it over, for a widget whose selection is copied.
[[nodiscard]] std::unique_ptr<QMimeData> secretForClipboard(const QString &secret);

} // namespace quillfen
