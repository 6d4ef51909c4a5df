// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/sidebar.h"

#include "shell/mainview/brandbutton.h"
#include "shell/mainview/sidebarentry.h"
#include "shell/mainview/sidebarfooter.h"
#include "shell/window/controlsside.h"
#include "shell/window/platform.h"
#include "state/appstate.h"
#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int leastWidth = 224;
constexpr int brandLeft = 16;
constexpr int brandAbove = 20;
constexpr int controlsHeight = 28;
constexpr int brandBelow = 16;
constexpr int entryMargin = 12;
constexpr int entryGap = 2;

} // namespace

std::vector<Section> offeredSections(const AppState &state)
{
    std::vector<Section> sections(allSections.begin(), allSections.end());
    if (!state.isAdmin()) {
        std::erase(sections, Section::Operator);
    }
    return sections;
}

Sidebar::Sidebar(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_top(new QWidget),
      m_observer({&m_state->auth, &controlsAtLeft()}, [this] { render(); })
{
    setProperty("darkSurface", true);
    auto *brand = new BrandButton;
    m_top->setLayout(row({Space{brandLeft}, brand, Stretch{}}, 0));
    auto *footer = new SidebarFooter(m_state);
    QWidget *const entries = createEntries();
    setLayout(column({m_top, Space{brandBelow}, entries, Stretch{}, footer}));
    setFixedWidth(std::max(leastWidth, entries->sizeHint().width())); // as wide as larger text needs
    connect(brand, &BrandButton::aboutRequested, this, &Sidebar::aboutRequested);
    connect(footer, &SidebarFooter::shortcutsRequested, this, &Sidebar::shortcutsRequested);
    connect(footer, &SidebarFooter::activityRequested, this, &Sidebar::activityRequested);
    render();
}

void Sidebar::setSection(Section section)
{
    m_section = section;
    render();
}

void Sidebar::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(event->rect(), Theme::dBg);
}

bool Sidebar::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    // With Ctrl, Alt or Shift held the arrows are somebody else's keys; on the keypad they are still arrows.
    const auto *const key = static_cast<QKeyEvent *>(event);
    return !(key->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) && step(key->key());
}

void Sidebar::render()
{
    // The window's controls need room above the brand, whether the system puts them there or the desktop wants them
    // left.
    const int controls = controlsAtLeft()() ? controlsHeight : platform::sidebarTopInset();
    m_top->layout()->setContentsMargins(0, controls + brandAbove, 0, 0);
    const std::vector<Section> offered = offeredSections(*m_state);
    const bool marked = std::ranges::find(offered, m_section) != offered.end();
    for (SidebarEntry *entry : m_entries) {
        const bool selected = entry->section() == m_section;
        entry->setVisible(std::ranges::find(offered, entry->section()) != offered.end());
        entry->setChecked(selected);
        // One stop for Tab in the whole list; the arrow keys go on from there.
        const bool stop = marked ? selected : entry->section() == offered.front();
        entry->setFocusPolicy(stop ? Qt::TabFocus : Qt::NoFocus);
    }
}

/// Moves the selection, and the focus with it, the way a list does. False for keys that mean nothing here.
bool Sidebar::step(int key)
{
    const std::vector<Section> offered = offeredSections(*m_state);
    const auto last = static_cast<std::ptrdiff_t>(offered.size()) - 1;
    const auto here = std::ranges::find(offered, m_section) - offered.begin();
    std::ptrdiff_t there = 0;
    switch (key) {
    case Qt::Key_Up:
        there = std::max<std::ptrdiff_t>(here - 1, 0);
        break;
    case Qt::Key_Down:
        there = here > last ? 0 : std::min(here + 1, last);
        break;
    case Qt::Key_Home:
        break;
    case Qt::Key_End:
        there = last;
        break;
    default:
        return false;
    }
    const Section section = offered[static_cast<std::size_t>(there)];
    Q_EMIT sectionChosen(section);
    entryOf(section)->setFocus(Qt::TabFocusReason);
    return true;
}

QWidget *Sidebar::createEntries()
{
    auto *list = new QWidget;
    setAccessible(list, QAccessible::PageTabList, tr("Sections"));
    auto *entries = column({}, entryGap, QMargins(entryMargin, 0, entryMargin, 0));
    for (const Section section : allSections) {
        auto *entry = new SidebarEntry(section);
        entry->installEventFilter(this);
        connect(entry, &SidebarEntry::clicked, this, [this, section] {
            Q_EMIT sectionChosen(section);
            render(); // the click has turned the entry's check around, also where the section stays
        });
        m_entries.push_back(entry);
        entries->addWidget(entry);
    }
    list->setLayout(entries);
    return list;
}

SidebarEntry *Sidebar::entryOf(Section section) const
{
    return m_entries[static_cast<std::size_t>(section)];
}

} // namespace quillfen
