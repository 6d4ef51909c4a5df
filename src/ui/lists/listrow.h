// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QAbstractButton;
class QWidget;

namespace quillfen {

/// Lets a screen reader say which row a button belongs to: "Remove, laptop". `row` may come from the agent.
void nameRowButton(QAbstractButton *button, const QString &row);

/// The hairline above a row of a card's list; none above the first one. For the row's paint event.
void paintRowDivider(QWidget *row);

} // namespace quillfen
