// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The keyboard in a long list; the rest of it is in longlist.cpp.
#include "ui/lists/longlist.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace quillfen {

namespace {

/// A property of the buttons that Tab passes for now: they take the keyboard all the same.
constexpr const char *passed = "passedByTab";

bool isStop(const QWidget *part)
{
    return part->focusPolicy() != Qt::NoFocus || part->property(passed).toBool();
}

std::vector<QAbstractButton *> buttonsIn(const QWidget *row)
{
    std::vector<QAbstractButton *> found;
    for (QAbstractButton *const button : row->findChildren<QAbstractButton *>()) {
        if (!button->isHidden() && button->isEnabled() && isStop(button)) {
            found.push_back(button);
        }
    }
    std::ranges::sort(found, {}, [](const QAbstractButton *button) { return button->x(); });
    return found;
}

/// The button of `row` that does what `like` does in its own row; else the last one.
QWidget *counterpart(QWidget *row, const QWidget *like)
{
    const std::vector<QAbstractButton *> buttons = buttonsIn(row);
    if (buttons.empty()) {
        return row;
    }
    const auto *const button = qobject_cast<const QAbstractButton *>(like);
    const auto same = std::ranges::find_if(
        buttons, [button](const QAbstractButton *each) { return button != nullptr && each->text() == button->text(); });
    return same == buttons.end() ? buttons.back() : *same;
}

} // namespace

void LongList::watch(QWidget *row)
{
    row->installEventFilter(this);
    for (QWidget *const part : row->findChildren<QWidget *>()) {
        if (part->focusPolicy() != Qt::NoFocus) {
            part->installEventFilter(this);
        }
    }
}

/// Tab goes through the buttons as they stand, wherever in the window the list is: what was made last would come last.
void LongList::orderTabs()
{
    QWidget *before = previousInFocusChain();
    while (before != this && ((before->focusPolicy() & Qt::TabFocus) == 0 || isAncestorOf(before))) {
        before = before->previousInFocusChain();
    }
    for (const auto &[row, shown] : m_shown) {
        for (QAbstractButton *const button : shown.widget->findChildren<QAbstractButton *>()) {
            if ((button->focusPolicy() & Qt::TabFocus) != 0) {
                QWidget::setTabOrder(before, button);
                before = button;
            }
        }
    }
}

void LongList::setOneTabStop()
{
    m_oneTabStop = true;
    verticalScrollBar()->setSingleStep(m_rowHeight / 2);
}

/// Has Tab reach the row that has the keyboard, or else the nearest in view to the one that had it. Says whether that
/// is another row than before.
bool LongList::moveTabStop()
{
    if (!m_oneTabStop || m_source.rowCount() == 0) {
        return false;
    }
    const int before = m_tabStop;
    if (const std::optional<Spot> focus = focusSpot()) {
        m_tabStop = focus->row;
    } else {
        const int value = verticalScrollBar()->value();
        const int first = std::min((value + m_rowHeight - 1) / m_rowHeight, m_source.rowCount() - 1);
        const int past = std::min((value + viewport()->height()) / m_rowHeight, m_source.rowCount());
        m_tabStop = std::clamp(m_tabStop, first, std::max(first, past - 1));
    }
    for (const auto &[row, shown] : m_shown) {
        for (QAbstractButton *const button : shown.widget->findChildren<QAbstractButton *>()) {
            if (isStop(button)) {
                button->setFocusPolicy(row == m_tabStop ? Qt::TabFocus : Qt::NoFocus);
                button->setProperty(passed, row != m_tabStop);
            }
        }
    }
    return m_tabStop != before;
}

void LongList::focusRow(int row, const QWidget *like)
{
    showRow(row);
    QWidget *const widget = widgetOf(row);
    if (widget == nullptr) {
        return;
    }
    counterpart(widget, like)->setFocus(Qt::TabFocusReason);
}

/// To the next or the previous button of the row; at its ends nowhere.
void LongList::moveAlong(const QWidget *row, const QWidget *from, bool forward)
{
    const std::vector<QAbstractButton *> buttons = buttonsIn(row);
    const auto at = std::ranges::find(buttons, from);
    if (at == buttons.end() || (forward ? at + 1 == buttons.end() : at == buttons.begin())) {
        return;
    }
    (*(forward ? at + 1 : at - 1))->setFocus(Qt::TabFocusReason);
}

/// The row that a key leads to from `row`, none when it is no key for that.
std::optional<int> LongList::rowAfter(int row, int key) const
{
    const int page = std::max(1, rowsInView() - (m_oneTabStop ? 0 : 1));
    switch (key) {
    case Qt::Key_Up:
        return row - 1;
    case Qt::Key_Down:
        return row + 1;
    case Qt::Key_PageUp:
        return row - page;
    case Qt::Key_PageDown:
        return row + page;
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return m_source.rowCount() - 1;
    default:
        return std::nullopt;
    }
}

bool LongList::moveFocus(const QWidget *from, int key)
{
    const int row = rowOf(from);
    if (row < 0) {
        return false;
    }
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        moveAlong(m_shown.at(row).widget, from, (key == Qt::Key_Right) != isRightToLeft());
        return true;
    }
    const std::optional<int> target = rowAfter(row, key);
    if (target) {
        focusRow(std::clamp(*target, 0, m_source.rowCount() - 1), from);
    }
    return target.has_value();
}

bool LongList::eventFilter(QObject *watched, QEvent *event)
{
    auto *const widget = qobject_cast<QWidget *>(watched);
    if (widget == nullptr || m_refilling) {
        return QAbstractScrollArea::eventFilter(watched, event);
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && widget == QApplication::focusWidget() && moveFocus(widget, key->key())) {
            return true;
        }
    } else if (event->type() == QEvent::FocusIn) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        const bool byKey = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
        if (const int row = rowOf(widget); byKey && row >= 0) {
            showRow(row);
        }
        if (moveTabStop()) {
            orderTabs();
        }
    } else if (event->type() == QEvent::FocusOut) {
        // A row that was held only for the keyboard is let go once the keyboard has arrived elsewhere.
        QMetaObject::invokeMethod(
            this, [this] { place(); }, Qt::QueuedConnection);
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

} // namespace quillfen
