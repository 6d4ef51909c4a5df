// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/panel/menubarrows.h"

#include "state/format.h"
#include "ui/theme.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("MenuBarView", text);
}

/// The palette's colours of a state, for the dark panel.
QColor onDark(const QColor &colour)
{
    if (colour == Theme::ok) {
        return Theme::accent;
    }
    return colour == Theme::warn ? Theme::warnBright : Theme::dText;
}

} // namespace

Overall overallState(const AppState &state)
{
    if (!state.engineRunning()) {
        return Overall::EngineStopped;
    }
    return state.allSynced() ? Overall::Protected : Overall::Uploading;
}

QString overallText(Overall overall)
{
    switch (overall) {
    case Overall::Protected:
        return tr("Protected · all data uploaded");
    case Overall::Uploading:
        return tr("Uploading…");
    case Overall::EngineStopped:
        break;
    }
    return tr("Engine stopped");
}

MenuBarRow menuBarRow(const AppState &state, const Record &volume)
{
    MenuBarRow row;
    row.name = str(volume, "name");
    row.mounted = state.mountOf(row.name);
    const OffsiteState offsite = state.offsiteState(volume);
    row.offsite = offsite.complete ? tr("Synced") : offsite.label;
    row.offsiteColour = offsite.complete ? Theme::accent : onDark(offsite.colour);
    row.line = u"%1 · %2 · %3"_s.arg(str(volume, "presentation_type"), row.mounted ? tr("mounted") : tr("not mounted"),
                                     gb(num(volume, "size_bytes")));
    return row;
}

QString engineMemoryLine(const AppState &state)
{
    return state.engineRunning() ? tr("%1 RAM").arg(str(state.vm(), "memory")) : tr("Engine stopped");
}

} // namespace quillfen
