// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview.h"

#include "boards/account/accountview.h"
#include "boards/advanced/advancedview.h"
#include "boards/export/exportview.h"
#include "boards/operator/operatorview.h"
#include "boards/policy/policyview.h"
#include "boards/timetravel/timetravelview.h"
#include "boards/volumes/volumesview.h"
#include "shell/launch.h"
#include "shell/platform.h"
#include "shell/sidebar.h"
#include "state/appstate.h"
#include "state/start.h"
#include "ui/board.h"
#include "ui/layout.h"

#include <QApplication>
#include <QBoxLayout>
#include <QShortcut>

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
    m_sidebar->setSection(m_section);

    connect(m_sidebar, &Sidebar::sectionChosen, this, &MainView::setSection);
    connect(m_sidebar, &Sidebar::aboutRequested, this, &MainView::aboutRequested);
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
    addKeys();
}

void MainView::setSection(Section section)
{
    if (section == m_section) {
        return;
    }
    m_section = section;
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

void MainView::addKeys()
{
    const auto onKeys = [this](const QKeySequence &keys, auto &&slot) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, slot] {
            // What lies beneath a sheet holds still.
            if (!m_state->showNewVolume()) {
                slot();
            }
        });
    };
    for (std::size_t number = 0; number < allSections.size(); ++number) {
        onKeys(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + static_cast<int>(number))),
               [this, number] { choose(number); });
    }
    onKeys(QKeySequence(Qt::CTRL | Qt::Key_N), [this] { m_state->showNewVolume = true; });
    onKeys(QKeySequence(Qt::CTRL | Qt::Key_F), [this] { m_board->focusSearch(); });
    for (const QKeySequence &keys : platform::refreshKeys()) {
        onKeys(keys, [this] {
            start(m_state->refresh());
            m_board->reload();
        });
    }
}

/// Shows the section of a number key; nothing while its entry is hidden.
void MainView::choose(std::size_t number)
{
    const std::vector<Section> offered = offeredSections(*m_state);
    if (std::ranges::find(offered, allSections.at(number)) != offered.end()) {
        setSection(allSections.at(number));
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
