// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "states.h"

#include <QAccessible>

namespace quillfen::test {

QStringList texts(QWidget &parent)
{
    QStringList found;
    for (QWidget *widget : parent.findChildren<QWidget *>()) {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        if (face == nullptr || !widget->isVisibleTo(&parent)) {
            continue;
        }
        if (const QString text = face->text(QAccessible::Name); !text.isEmpty()) {
            found += text;
        }
    }
    return found;
}

} // namespace quillfen::test
