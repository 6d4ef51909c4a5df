// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/longlist.h"

#include "ui/accessible.h"
#include "ui/paint.h"
#include "ui/theme.h"
#include "ui/type.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace quillfen {

namespace {

/// What a widget can be high at most; beyond it the last rows could not be scrolled to.
constexpr int mostPixels = std::numeric_limits<int>::max() / 2;

std::vector<QAbstractButton *> buttonsIn(const QWidget *row)
{
    std::vector<QAbstractButton *> found;
    for (QAbstractButton *const button : row->findChildren<QAbstractButton *>()) {
        if (!button->isHidden() && button->isEnabled() && button->focusPolicy() != Qt::NoFocus) {
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

LongList::LongList(RowSource &source, int rowHeight, const QString &accessibleName, QWidget *parent)
    : QAbstractScrollArea(parent), m_source(source), m_rowHeight(scaled(rowHeight))
{
    setAccessible(this, QAccessible::List, accessibleName);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    verticalScrollBar()->setSingleStep(m_rowHeight);
}

// The rows go before their list does: what they tell it while they go would come too late.
LongList::~LongList()
{
    for (const auto &[row, shown] : m_shown) {
        shown.widget->removeEventFilter(this);
    }
}

int LongList::heightOf(int count) const
{
    return static_cast<int>(std::min<std::int64_t>(std::int64_t{m_rowHeight} * count, mostPixels));
}

int LongList::fullHeight() const
{
    return heightOf(m_source.rowCount());
}

int LongList::rowsInView() const
{
    return std::max(1, viewport()->height() / m_rowHeight);
}

int LongList::topRow() const
{
    return verticalScrollBar()->value() / m_rowHeight;
}

QWidget *LongList::widgetOf(int row) const
{
    const auto found = m_shown.find(row);
    return found == m_shown.end() ? nullptr : found->second.widget;
}

int LongList::rowOf(const QWidget *inside) const
{
    for (const auto &[row, shown] : m_shown) {
        if (shown.widget == inside || shown.widget->isAncestorOf(inside)) {
            return row;
        }
    }
    return -1;
}

std::optional<LongList::Spot> LongList::focusSpot() const
{
    const QWidget *const focus = QApplication::focusWidget();
    const int row = focus == nullptr ? -1 : rowOf(focus);
    if (row < 0) {
        return std::nullopt;
    }
    return Spot{row, m_shown.at(row).key};
}

/// The row with this key that is nearest to where it was; -1 when there is none.
int LongList::findKey(std::int64_t key, int near) const
{
    const int count = m_source.rowCount();
    for (int away = 0; away < std::max(count, near + 1); ++away) {
        if (near - away >= 0 && near - away < count && m_source.rowKey(near - away) == key) {
            return near - away;
        }
        if (near + away < count && m_source.rowKey(near + away) == key) {
            return near + away;
        }
    }
    return -1;
}

void LongList::refresh(Place where)
{
    const std::optional<Spot> spot = focusSpot();
    const int top = topRow();
    const int cut = verticalScrollBar()->value() - top * m_rowHeight;
    const auto first = m_shown.find(top);
    const std::optional<std::int64_t> topKey = first == m_shown.end() ? std::nullopt : std::optional(first->second.key);

    const QScopedValueRollback refilling(m_refilling, true);
    fitBar();
    if (where == Place::Top) {
        verticalScrollBar()->setValue(0);
    } else if (const int row = topKey ? findKey(*topKey, top) : -1; row >= 0) {
        verticalScrollBar()->setValue(row * m_rowHeight + cut);
    }

    // Each row keeps its widget as long as it is in view, and with it hover, focus and a pressed button.
    std::multimap<std::int64_t, QWidget *> known;
    for (const auto &[row, shown] : std::exchange(m_shown, {})) {
        known.emplace(shown.key, shown.widget);
    }
    const auto adopt = [&](int row) {
        const auto found = known.find(m_source.rowKey(row));
        if (found != known.end()) {
            m_shown[row] = {found->second, found->first};
            known.erase(found);
        }
    };
    const int from = std::min(topRow(), std::max(0, m_source.rowCount() - 1));
    const int until = std::min(m_source.rowCount(), from + rowsInView() + 2);
    for (int row = from; row < until; ++row) {
        adopt(row);
    }
    const int focused = spot ? findKey(spot->key, spot->row) : -1;
    if (focused >= 0 && !m_shown.contains(focused)) {
        adopt(focused);
    }
    for (const auto &[key, widget] : known) {
        m_spare.push_back(widget);
    }
    for (const auto &[row, shown] : m_shown) {
        m_source.fillRow(shown.widget, row);
    }
    const QPointer<QWidget> like = spot ? QApplication::focusWidget() : nullptr;
    place();
    viewport()->update();
    // The row with the keyboard is gone: the keyboard goes to what stands in its place.
    if (spot && focused < 0 && m_source.rowCount() > 0) {
        focusRow(std::min(spot->row, m_source.rowCount() - 1), like);
    }
    tidySpares();
}

void LongList::fitBar()
{
    QScrollBar *const bar = verticalScrollBar();
    bar->setPageStep(viewport()->height());
    bar->setRange(0, std::max(0, fullHeight() - viewport()->height()));
}

void LongList::showRow(int row)
{
    QScrollBar *const bar = verticalScrollBar();
    const int top = row * m_rowHeight;
    if (top < bar->value()) {
        bar->setValue(top);
    } else if (top + m_rowHeight > bar->value() + viewport()->height()) {
        bar->setValue(top + m_rowHeight - viewport()->height());
    }
}

void LongList::watch(QWidget *row)
{
    row->installEventFilter(this);
    for (QWidget *const part : row->findChildren<QWidget *>()) {
        if (part->focusPolicy() != Qt::NoFocus) {
            part->installEventFilter(this);
        }
    }
}

QWidget *LongList::takeSpare()
{
    if (m_spare.empty()) {
        QWidget *const row = m_source.makeRow();
        row->setParent(viewport());
        watch(row);
        return row;
    }
    QWidget *const row = m_spare.back();
    m_spare.pop_back();
    return row;
}

void LongList::put(int row, QWidget *widget)
{
    widget->setGeometry(0, row * m_rowHeight - verticalScrollBar()->value(), viewport()->width(), m_rowHeight);
    widget->show();
}

/// Gives every row in view a widget and every widget its place.
void LongList::place()
{
    const int count = m_source.rowCount();
    const int first = topRow();
    const int last =
        std::min(count - 1, (verticalScrollBar()->value() + std::max(0, viewport()->height() - 1)) / m_rowHeight);
    const std::optional<Spot> spot = focusSpot();
    bool changed = false;
    for (auto at = m_shown.begin(); at != m_shown.end();) {
        const bool inView = at->first >= first && at->first <= last;
        const bool held = spot && at->first == spot->row && at->first < count;
        if (inView || held) {
            ++at;
            continue;
        }
        m_spare.push_back(at->second.widget);
        at = m_shown.erase(at);
        changed = true;
    }
    for (int row = first; row <= last; ++row) {
        if (!m_shown.contains(row)) {
            QWidget *const widget = takeSpare();
            m_source.fillRow(widget, row);
            m_shown[row] = {widget, m_source.rowKey(row)};
            changed = true;
        }
    }
    for (const auto &[row, shown] : m_shown) {
        put(row, shown.widget);
    }
    if (!m_refilling) {
        tidySpares();
    }
    if (changed || m_refilling) {
        orderTabs();
    }
}

void LongList::tidySpares()
{
    for (QWidget *const spare : m_spare) {
        spare->hide();
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
            QWidget::setTabOrder(before, button);
            before = button;
        }
    }
}

void LongList::focusRow(int row, const QWidget *like)
{
    showRow(row);
    QWidget *const widget = widgetOf(row);
    if (widget == nullptr) {
        return;
    }
    QWidget *const target = counterpart(widget, like);
    target->setFocus(Qt::TabFocusReason);
}

bool LongList::moveFocus(const QWidget *from, int key)
{
    const int row = rowOf(from);
    const int last = m_source.rowCount() - 1;
    if (row < 0) {
        return false;
    }
    const int page = std::max(1, rowsInView() - 1);
    int target = 0;
    switch (key) {
    case Qt::Key_Up:
        target = row - 1;
        break;
    case Qt::Key_Down:
        target = row + 1;
        break;
    case Qt::Key_PageUp:
        target = row - page;
        break;
    case Qt::Key_PageDown:
        target = row + page;
        break;
    case Qt::Key_Home:
        break;
    case Qt::Key_End:
        target = last;
        break;
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const std::vector<QAbstractButton *> buttons = buttonsIn(m_shown.at(row).widget);
        const auto at = std::ranges::find(buttons, from);
        const bool forward = (key == Qt::Key_Right) != isRightToLeft();
        if (at == buttons.end() || (forward ? at + 1 == buttons.end() : at == buttons.begin())) {
            return true;
        }
        (*(forward ? at + 1 : at - 1))->setFocus(Qt::TabFocusReason);
        return true;
    }
    default:
        return false;
    }
    focusRow(std::clamp(target, 0, last), from);
    return true;
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
    } else if (event->type() == QEvent::FocusOut) {
        // A row that was held only for the keyboard is let go once the keyboard has arrived elsewhere.
        QMetaObject::invokeMethod(
            this, [this] { place(); }, Qt::QueuedConnection);
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

void LongList::scrollContentsBy(int, int)
{
    if (!m_refilling) {
        place();
        viewport()->update();
    }
}

void LongList::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    fitBar();
    place();
}

bool LongList::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        QPainter painter(viewport());
        const int first = topRow();
        const int last = std::min(m_source.rowCount() - 1, first + rowsInView() + 1);
        for (int row = std::max(1, first); row <= last; ++row) {
            const int y = row * m_rowHeight - verticalScrollBar()->value();
            paintHairline(painter, QRectF(0, y, viewport()->width(), 1), m_line);
        }
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace quillfen
