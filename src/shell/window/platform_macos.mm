// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/platform.h"

#include "shell/window/windowcommands.h"

#include <QMenuBar>
#include <QWidget>

#import <AppKit/AppKit.h>

namespace quillfen::platform {

void hideTitleBar(QWidget &window)
{
    NSWindow *native = reinterpret_cast<NSView *>(window.winId()).window;
    native.styleMask |= NSWindowStyleMaskFullSizeContentView;
    native.titlebarAppearsTransparent = YES;
    native.titleVisibility = NSWindowTitleHidden;
}

bool drawsOwnFrame()
{
    return false;
}

int sidebarTopInset()
{
    return 28;
}

KeyStyle keyStyle()
{
    return KeyStyle::MacOS;
}

void makeMenuBar(const WindowCommands &commands, const std::function<bool(KeyAction)> &offers)
{
    // Without a parent it is the program's, also while no window is there.
    auto *const bar = new QMenuBar(nullptr);
    fillMenuBar(*bar, commands, offers);
    QObject::connect(&commands, &QObject::destroyed, bar, &QObject::deleteLater);
}

std::optional<QString> serviceRestartCommand()
{
    return std::nullopt;
}

std::optional<QString> displayProblem()
{
    return std::nullopt;
}

void watchControlsSide(QObject &, const std::function<void(bool atLeft)> &) {}

void watchStatusArea(QObject &, const std::function<void(MenuBy)> &appeared, const std::function<void()> &)
{
    appeared(MenuBy::Program);
}

} // namespace quillfen::platform
