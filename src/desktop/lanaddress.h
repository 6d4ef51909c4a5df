// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quillfen {

/// This computer's address on the local network, or nothing when it has none. Quick enough for a paint.
[[nodiscard]] std::optional<QString> lanAddress();

/// The first address that `addressOf` finds when it is asked for `interfaces` in order; an empty one counts as none.
[[nodiscard]] std::optional<QString>
firstAddress(const QStringList &interfaces, const std::function<std::optional<QString>(const QString &)> &addressOf);

} // namespace quillfen
