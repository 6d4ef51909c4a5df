// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/shortcutswindow.h"

#include "shell/window/keyrow.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/paint/hairline.h"
#include "ui/parts/scrollarea.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QScreen>

#include <algorithm>
#include <array>

namespace quillfen {

namespace {

constexpr int columnWidth = 356;
constexpr int columnGap = 24;
constexpr int padding = 28;
constexpr int groupGap = 16;
constexpr int around = 24;      ///< left of the main window above and below
constexpr int rowsOfAPage = 10; ///< by which Page Up and Page Down go

constexpr std::array leftGroups{KeyGroup::GoTo, KeyGroup::Volumes, KeyGroup::TimeLine, KeyGroup::Advanced};
constexpr std::array rightGroups{KeyGroup::Everywhere, KeyGroup::Lists, KeyGroup::Dialogs};

/// Where the window may spread: over the one it tells about, or the screen.
QSize roomOver(const QWidget *parent, const QWidget &self)
{
    const QSize room =
        parent != nullptr && parent->isVisible() ? parent->size() : self.screen()->availableGeometry().size();
    return room - QSize(2 * around, 2 * around);
}

} // namespace

ShortcutsWindow::ShortcutsWindow(std::vector<KeyEntry> entries, QWidget *parent)
    : PanelWindow(tr("Keyboard shortcuts"), parent), m_entries(std::move(entries)), m_scroll(new ScrollArea)
{
    const QSize room = roomOver(parent, *this);
    m_scroll->setWidget(createGroups(room.width() >= 2 * scaled(columnWidth) + columnGap + 2 * padding));
    m_scroll->widget()->setAutoFillBackground(false);
    auto *const close = new Button(tr("Close"), SecondaryButtonStyle{});
    close->setDefault(true);
    connect(close, &QAbstractButton::clicked, this, &QDialog::accept);

    auto *const title = new QWidget;
    title->setLayout(
        column({new Label(windowTitle(), Type::Title, Theme::heading)}, 0, {padding, padding - 8, padding, 12}));
    auto *const foot = new QWidget;
    foot->setLayout(row({Stretch{}, close}, 0, {padding, 12, padding, 16}));
    setLayout(column({title, Item{m_scroll, 1}, new Hairline, foot}, 0, {1, 1, 1, 1}));
    fit(room);
    if (!m_rows.empty()) {
        m_rows.front()->setFocusPolicy(Qt::TabFocus); // one stop for Tab; the arrows go on from there
        m_rows.front()->setFocus(Qt::TabFocusReason);
    }
}

QWidget *ShortcutsWindow::createGroups(bool sideBySide)
{
    const auto createColumn = [this](const auto &groups) {
        auto *const whole = new QWidget;
        whole->setFixedWidth(scaled(columnWidth));
        QBoxLayout *const parts = column({}, groupGap);
        for (const KeyGroup group : groups) {
            parts->addWidget(createGroup(group));
        }
        parts->addStretch();
        whole->setLayout(parts);
        return whole;
    };
    auto *const page = new QWidget;
    QBoxLayout *const columns = row({createColumn(leftGroups), createColumn(rightGroups)});
    columns->setDirection(sideBySide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    columns->setSpacing(sideBySide ? columnGap : groupGap);
    columns->setContentsMargins(padding - keyRowPadding, 4, padding - keyRowPadding, padding - 8);
    page->setLayout(columns);
    return page;
}

QWidget *ShortcutsWindow::createGroup(KeyGroup group)
{
    auto *const list = new QWidget;
    setAccessible(list, QAccessible::List, groupTitle(group));
    QBoxLayout *const rows = column({});
    for (const KeyEntry &entry : m_entries) {
        if (entry.group == group) {
            m_rows.push_back(new KeyRow(entry));
            m_rows.back()->installEventFilter(this);
            rows->addWidget(m_rows.back());
        }
    }
    list->setLayout(rows);
    auto *const whole = new QWidget;
    whole->setLayout(column({row({Space{keyRowPadding}, new SectionTitle(groupTitle(group))}, 0), Space{4}, list}));
    return whole;
}

/// As wide as its columns and as high as they are, where there is room for that.
void ShortcutsWindow::fit(const QSize &room)
{
    const int others = layout()->sizeHint().height() - m_scroll->sizeHint().height();
    const QSize groups = m_scroll->widget()->sizeHint();
    setFixedSize(groups.width() + 2, std::min(groups.height() + others, room.height()));
}

void ShortcutsWindow::go(int index)
{
    QWidget *const to = m_rows.at(static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(m_rows.size()) - 1)));
    for (QWidget *const one : m_rows) {
        one->setFocusPolicy(one == to ? Qt::TabFocus : Qt::NoFocus);
    }
    to->setFocus(Qt::TabFocusReason);
    m_scroll->ensureWidgetVisible(to, 0, scaled(groupGap) + lineHeight(Type::Section));
}

/// Moves from row to row. False for keys that mean nothing here.
bool ShortcutsWindow::step(int key)
{
    const int here = static_cast<int>(std::ranges::find(m_rows, focusWidget()) - m_rows.begin());
    switch (key) {
    case Qt::Key_Up:
        go(here - 1);
        return true;
    case Qt::Key_Down:
        go(here + 1);
        return true;
    case Qt::Key_PageUp:
        go(here - rowsOfAPage);
        return true;
    case Qt::Key_PageDown:
        go(here + rowsOfAPage);
        return true;
    case Qt::Key_Home:
        go(0);
        return true;
    case Qt::Key_End:
        go(static_cast<int>(m_rows.size()) - 1);
        return true;
    default:
        return false;
    }
}

/// Before the scroll area, which would scroll and leave the keyboard behind.
bool ShortcutsWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && step(static_cast<QKeyEvent *>(event)->key())) {
        return true;
    }
    return PanelWindow::eventFilter(watched, event);
}

} // namespace quillfen
