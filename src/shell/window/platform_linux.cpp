// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/platform.h"

#include "shell/window/controlsside.h"
#include "shell/window/keymap.h"
#include "ui/system/portalsetting.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

namespace quillfen::platform {

void hideTitleBar(QWidget &window)
{
    window.setWindowFlag(Qt::FramelessWindowHint);
}

bool drawsOwnFrame()
{
    return true;
}

int sidebarTopInset()
{
    return 0;
}

KeyStyle keyStyle()
{
    return KeyStyle::Linux;
}

void makeMenuBar(const WindowCommands &, const std::function<bool(KeyAction)> &) {}

std::optional<QString> serviceRestartCommand()
{
    return QStringLiteral("systemctl --user restart quillfen-agent");
}

std::optional<QString> displayProblem()
{
    const bool chosen = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (chosen || !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return std::nullopt;
    }
    return QCoreApplication::translate("Platform",
                                       "Quillfen needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set.\n"
                                       "Start it from a desktop session, or in a virtual display: xvfb-run quillfen");
}

void watchControlsSide(QObject &context, const std::function<void(bool atLeft)> &told)
{
    new PortalSetting(
        QStringLiteral("org.gnome.desktop.wm.preferences"), QStringLiteral("button-layout"),
        [told](const QVariant &layout) { told(closesAtLeft(layout.toString())); }, &context);
}

} // namespace quillfen::platform
