// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/taborder.h"

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

void placeInTabOrder(QWidget *place, const std::vector<QWidget *> &controls)
{
    std::vector<QWidget *> chain{place};
    chain.insert(chain.end(), controls.begin(), controls.end());
    std::vector<Qt::FocusPolicy> policies;
    for (QWidget *const one : chain) {
        policies.push_back(one->focusPolicy());
        one->setFocusPolicy(Qt::TabFocus); // Qt orders only what takes the focus
    }
    for (std::size_t i = 1; i < chain.size(); ++i) {
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    }
    for (std::size_t i = 0; i < chain.size(); ++i) {
        chain[i]->setFocusPolicy(policies[i]);
    }
}

} // namespace quillfen
