// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What the product is called on the network and by the desktop.
namespace quillfen::product {

/// The name of its desktop entry and its icon, and on the session bus.
[[nodiscard]] inline QString id()
{
    return QStringLiteral("io.quillfen.Quillfen");
}

/// The host of the product's web site, from which the engine is downloaded too.
[[nodiscard]] inline QString webHost()
{
    return QStringLiteral("quillfen.example");
}

/// The address of the product's web site.
[[nodiscard]] inline QString webSite()
{
    return QStringLiteral("https://") + webHost();
}

} // namespace quillfen::product
