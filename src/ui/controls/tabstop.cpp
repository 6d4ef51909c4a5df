// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/tabstop.h"

#include <QAbstractButton>
#include <QEvent>

#include <algorithm>

namespace quillfen {

namespace {

/// Where the group stops Tab; nothing where `button` stands alone.
void settleTabStop(const QAbstractButton &button)
{
    if (button.parentWidget() == nullptr) {
        return;
    }
    auto group = button.parentWidget()->findChildren<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly);
    group.removeIf(
        [](const QAbstractButton *one) { return !one->autoExclusive() || one->isHidden() || !one->isEnabled(); });
    const auto chosen = std::ranges::find_if(group, &QAbstractButton::isChecked);
    const QAbstractButton *const stop = chosen != group.end() ? *chosen : group.value(0);
    for (QAbstractButton *const one : group) {
        one->setFocusPolicy(one == stop ? Qt::TabFocus : Qt::NoFocus);
    }
}

/// What shows or enables a button, or takes it away, may change who stands for the group.
class TabStopWatch final : public QObject {
public:
    explicit TabStopWatch(QAbstractButton *button) : QObject(button) { button->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show || event->type() == QEvent::Hide || event->type() == QEvent::EnabledChange) {
            settleTabStop(*static_cast<QAbstractButton *>(watched));
        }
        return false;
    }
};

} // namespace

void shareTabStop(QAbstractButton *button)
{
    new TabStopWatch(button); // the button's own
    QObject::connect(button, &QAbstractButton::toggled, button, [button] { settleTabStop(*button); });
}

} // namespace quillfen
