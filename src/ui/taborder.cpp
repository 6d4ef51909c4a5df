// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/taborder.h"

#include <QWidget>

#include <vector>

namespace quillfen {

void moveInTabOrder(QWidget *before, QWidget *subtree)
{
    std::vector<QWidget *> controls;
    for (QWidget *widget = subtree->nextInFocusChain(); widget != subtree; widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && subtree->isAncestorOf(widget)) {
            controls.push_back(widget);
        }
    }
    for (QWidget *control : controls) {
        QWidget::setTabOrder(before, control);
        before = control;
    }
}

} // namespace quillfen
