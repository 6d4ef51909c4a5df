// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/mainview.h"

#include "boards/account/accountview.h"
#include "boards/advanced/advancedview.h"
#include "boards/export/exportview.h"
#include "boards/operator/operatorview.h"
#include "boards/policy/policyview.h"
#include "boards/timetravel/timetravelview.h"
#include "boards/volumes/volumesview.h"
#include "shell/mainview/sidebar.h"
#include "shell/process/launch.h"
#include "state/appstate.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/parts/board.h"

#include <QApplication>
#include <QBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillfen {

MainView::MainView(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_section(initialSection(startSectionWish())),
      m_sidebar(new Sidebar(m_state)), m_board(createBoard())
{
    m_layout = row({m_sidebar, Item{m_board, 1}}, 0);
    setLayout(m_layout);
    setProperty("ownFocus", true);
    setRole(this, QAccessible::Pane);
    setAccessibleName(displayTitle(m_section)); // read where it takes the focus of a board that goes
    m_sidebar->setSection(m_section);

    connect(m_sidebar, &Sidebar::sectionChosen, this, &MainView::setSection);
    connect(m_sidebar, &Sidebar::aboutRequested, this, &MainView::aboutRequested);
    connect(m_sidebar, &Sidebar::shortcutsRequested, this, &MainView::shortcutsRequested);
    connect(m_sidebar, &Sidebar::activityRequested, this, &MainView::activityRequested);
    m_navigation = m_state->notifications().listen(Notifications::navigate, [this](const json::object &values) {
        if (str(values, "section") != "timetravel"_L1) {
            return;
        }
        const bool isThere = m_section == Section::TimeTravel;
        setSection(Section::TimeTravel);
        if (auto *const board = qobject_cast<TimeTravelView *>(m_board); board != nullptr && !isThere) {
            // The board that comes of the wish has come too late to hear it.
            board->navigate(values);
        }
    });
}

void MainView::setSection(Section section)
{
    if (section == m_section) {
        return;
    }
    m_section = section;
    setAccessibleName(displayTitle(section));
    m_sidebar->setSection(section);
    // Hiding what has the focus would hand it on to whatever follows, which is the window's own buttons.
    if (m_board->isAncestorOf(QApplication::focusWidget())) {
        setFocus();
    }
    // Not at once: the wish may come from a button of the board that goes.
    m_board->hide();
    m_board->deleteLater();
    m_board = createBoard();
    m_layout->addWidget(m_board, 1);
    m_board->show();
}

bool MainView::offers(KeyAction command) const
{
    if (m_state->showNewVolume()) {
        return false;
    }
    if (const std::optional<Section> section = sectionOf(command)) {
        const std::vector<Section> offered = offeredSections(*m_state);
        return std::ranges::find(offered, *section) != offered.end();
    }
    return command == KeyAction::NewVolume || command == KeyAction::Search || command == KeyAction::Refresh;
}

void MainView::perform(KeyAction command)
{
    if (!offers(command)) {
        return;
    }
    if (const std::optional<Section> section = sectionOf(command)) {
        setSection(*section);
    } else if (command == KeyAction::NewVolume) {
        m_state->showNewVolume = true;
    } else if (command == KeyAction::Search) {
        m_board->focusSearch();
    } else {
        start(m_state->refresh());
        m_board->reload();
    }
}

Board *MainView::createBoard()
{
    switch (m_section) {
    case Section::Volumes:
        break;
    case Section::TimeTravel:
        return new TimeTravelView(m_state);
    case Section::Policy:
        return new PolicyView(m_state);
    case Section::Export:
        return new ExportView(m_state);
    case Section::Account:
        return new AccountView(m_state);
    case Section::Operator:
        return new OperatorView(m_state);
    case Section::Advanced:
        return new AdvancedView(m_state);
    }
    return new VolumesView(m_state);
}

} // namespace quillfen
