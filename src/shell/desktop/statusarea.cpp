// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/desktop/statusarea.h"

#include "desktop/fileviewer.h"
#include "shell/desktop/statusicon.h"
#include "shell/panel/menubarview.h"
#include "state/appstate.h"
#include "ui/text/agenttext.h"
#include "ui/text/label.h"

#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>

#include <algorithm>

namespace quillfen {

namespace {

/// More volumes than this are a matter for the window.
constexpr qsizetype mostVolumes = 20;
/// Names longer than this would make the menu as wide as the screen.
constexpr qsizetype longestName = 60;

} // namespace

StatusArea::StatusArea(std::shared_ptr<AppState> state, QObject *parent)
    : QObject(parent), m_state(std::move(state)), m_menu(std::make_unique<QMenu>()),
      m_observer({&m_state->vm, &m_state->volumes, &m_state->statuses}, [this] { render(); })
{
    // What it lists is as old as the moment it opens.
    connect(m_menu.get(), &QMenu::aboutToShow, this, &StatusArea::fillMenu);
    fillMenu();
}

StatusArea::~StatusArea() = default;

void StatusArea::open()
{
    platform::watchStatusArea(
        *this, [this](platform::MenuBy drawnBy) { appear(drawnBy); }, [this] { disappear(); });
}

MenuBarView &StatusArea::panel()
{
    if (!m_panel) {
        m_panel = std::make_unique<MenuBarView>(m_state);
        connect(m_panel.get(), &MenuBarView::openRequested, this, &StatusArea::openRequested);
        connect(m_panel.get(), &MenuBarView::timeTravelRequested, this, &StatusArea::timeTravelRequested);
        connect(m_panel.get(), &MenuBarView::newVolumeRequested, this, &StatusArea::newVolumeRequested);
        connect(m_panel.get(), &MenuBarView::quitRequested, this, &StatusArea::quitRequested);
    }
    return *m_panel;
}

void StatusArea::appear(platform::MenuBy drawnBy)
{
    m_drawnBy = drawnBy;
    // An icon registers once, with the status area that is there when it is made.
    disappear();
    m_icon = std::make_unique<QSystemTrayIcon>();
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            togglePanel();
        }
    });
    render();
    m_icon->show();
}

void StatusArea::disappear()
{
    m_icon.reset();
    m_shown.reset();
}

void StatusArea::togglePanel()
{
    if (panel().isVisible()) {
        panel().hide();
        return;
    }
    // Only the older kind of status area knows where its icons are; the click knows as well.
    const QRect icon = m_icon->geometry();
    panel().showAt(icon.isValid() ? icon.center() : QCursor::pos());
}

void StatusArea::fillMenu()
{
    // Clearing a menu keeps the menus below it.
    const auto below = m_menu->findChildren<QMenu *>(Qt::FindDirectChildrenOnly);
    m_menu->clear();
    qDeleteAll(below);
    m_menu->addAction(overallText(overallState(*m_state)))->setEnabled(false);
    m_menu->addSeparator();
    addVolumes();
    m_menu->addAction(tr("Time travel"), this, &StatusArea::timeTravelRequested);
    m_menu->addAction(tr("+ New volume"), this, &StatusArea::newVolumeRequested);
    m_menu->addAction(tr("Open Quillfen"), this, &StatusArea::openRequested);
    m_menu->addSeparator();
    m_menu->addAction(tr("Activity"), this, &StatusArea::activityRequested);
    m_menu->addAction(tr("About Quillfen"), this, &StatusArea::aboutRequested);
    m_menu->addAction(tr("Quit"), this, &StatusArea::quitRequested);
}

void StatusArea::addVolumes()
{
    const Records &volumes = m_state->volumes();
    if (volumes.isEmpty()) {
        return;
    }
    QMenu *list = m_menu->addMenu(tr("Volumes"));
    for (const Record &volume : volumes.first(std::min(volumes.size(), mostVolumes))) {
        const MenuBarRow row = menuBarRow(*m_state, volume);
        QAction *entry = list->addAction(entryText(row.name) + QStringLiteral(" · ") + entryText(row.offsite));
        entry->setEnabled(row.mounted.has_value());
        connect(entry, &QAction::triggered, this, [folder = row.mounted.value_or(QString())] { showFolder(folder); });
    }
    if (volumes.size() > mostVolumes) {
        list->addSeparator();
        list->addAction(tr("All volumes…"), this, &StatusArea::openRequested);
    }
}

/// Agent text as the label of an entry, as it is.
QString StatusArea::entryText(const QString &text) const
{
    QString visible = shortened(text, longestName);
    if (m_drawnBy == platform::MenuBy::Program) {
        return visible.replace(u'&', QStringLiteral("&&"));
    }
    // Over the bus "_" marks a key, and Qt makes one of the first "&" and leaves the others alone.
    visible.replace(u'_', QStringLiteral("__"));
    return visible.contains(u'&') ? u'&' + visible : visible;
}

void StatusArea::render()
{
    const Overall overall = overallState(*m_state);
    if (!m_icon || overall == m_shown) {
        return;
    }
    m_shown = overall;
    m_icon->setIcon(statusIcon(overall));
    m_icon->setToolTip(QStringLiteral("Quillfen · ") + overallText(overall));
}

} // namespace quillfen
