// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/panel/menubarvolumes.h"

#include "desktop/fileviewer.h"
#include "shell/panel/menubarvolume.h"
#include "state/appstate.h"

namespace quillfen {

MenuBarVolumes::MenuBarVolumes(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

MenuBarVolumes::~MenuBarVolumes() = default;

int MenuBarVolumes::rowCount() const
{
    return static_cast<int>(m_state->volumes().size());
}

QString MenuBarVolumes::rowKey(int row) const
{
    return str(m_state->volumes().at(row), "id");
}

QWidget *MenuBarVolumes::makeRow()
{
    auto *volume = new MenuBarVolume;
    QObject::connect(volume, &MenuBarVolume::openRequested, volume, [](const QString &folder) { showFolder(folder); });
    return volume;
}

void MenuBarVolumes::fillRow(QWidget *widget, int row)
{
    static_cast<MenuBarVolume *>(widget)->show(menuBarRow(*m_state, m_state->volumes().at(row)));
}

} // namespace quillfen
