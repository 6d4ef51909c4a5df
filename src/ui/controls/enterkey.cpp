// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/enterkey.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace quillfen {

bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool pressByEnter(QAbstractButton &button, const QKeyEvent &event)
{
    if (!isEnter(event)) {
        return false;
    }
    if (!event.isAutoRepeat()) {
        button.click();
    }
    return true;
}

} // namespace quillfen
