// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace quillfen {

/// The text for that many things, the number in place of its first "%1": `counted(n, tr("%1 volume"), tr("%1
/// volumes"))`. Qt's own plural texts, "%n volume(s)", show the "(s)" as long as no file of translations is loaded, and
/// the product's own words must not hang on a file.
[[nodiscard]] inline QString counted(qint64 number, const QString &one, const QString &other)
{
    return (number == 1 ? one : other).arg(number);
}

} // namespace quillfen
