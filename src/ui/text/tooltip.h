// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QPoint;
class QWidget;

namespace quillfen {

/// `text` as a tooltip shows it: plain even where it looks like markup, in lines that fit a screen, cut where it is
/// longer than anybody reads.
[[nodiscard]] QString plainToolTip(const QString &text);

/// Shows `text` that way at a place on the screen, for `owner`.
void showPlainToolTip(const QPoint &globalPosition, const QString &text, QWidget *owner);

} // namespace quillfen
