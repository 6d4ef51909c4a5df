// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/platform.h"

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

QList<QKeySequence> refreshKeys()
{
    return {QKeySequence(Qt::Key_F5), QKeySequence(Qt::CTRL | Qt::Key_R)};
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

void watchStatusArea(QObject &, const std::function<void()> &appeared, const std::function<void()> &)
{
    appeared();
}

} // namespace quillfen::platform
