// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What the product is called on the network.
namespace quillfen::product {

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
