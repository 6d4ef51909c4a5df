// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/lanaddress.h"

#include "desktop/platform.h"

namespace quillfen {

std::optional<QString> firstAddress(const QStringList &interfaces,
                                    const std::function<std::optional<QString>(const QString &)> &addressOf)
{
    for (const QString &name : interfaces) {
        const std::optional<QString> address = addressOf(name);
        if (address && !address->trimmed().isEmpty()) {
            return address->trimmed();
        }
    }
    return std::nullopt;
}

std::optional<QString> lanAddress()
{
    return firstAddress(platform::lanInterfaces(), platform::interfaceAddress);
}

} // namespace quillfen
