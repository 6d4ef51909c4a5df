// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/activation.h"

#include "shell/process/wish.h"
#include "ui/system/x11message_linux.h"

#include <QApplication>
#include <QWidget>

namespace quillfen::platform {

namespace {

/// When the user asked for the start, in the X server's time: it ends the id that the desktop has given the start.
std::optional<std::uint32_t> timeIn(const QByteArray &startupId)
{
    constexpr QByteArrayView mark = "_TIME";
    const qsizetype at = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const std::uint32_t time = at < 0 ? 0 : startupId.mid(at + mark.size()).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

QByteArray quoted(QByteArray words)
{
    return '"' + words.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

/// Asks for the keyboard with the time of the start, which the window manager compares with the user's last deed in
/// other windows: Qt would give the time of the last deed in ours, which is older as a rule. Then the desktop's sign
/// that the program is starting may go (startup-notification, 0.1).
void endStart(const QWidget &window, const QByteArray &startupId)
{
    constexpr std::uint32_t application = 1;
    if (const std::optional<std::uint32_t> time = timeIn(startupId)) {
        sendToRoot(window, "_NET_ACTIVE_WINDOW", {application, *time, 0, 0, 0});
    }
    broadcast(window, "_NET_STARTUP_INFO", "remove: ID=" + quoted(startupId));
}

/// On Wayland a window neither learns that it has been minimised nor can end it by itself: only a token of activation
/// does, where the desktop knows of those. One that appears anew is in sight in any case.
bool mayBeMinimised(const QWidget &window, const Wish &wish)
{
    return QGuiApplication::platformName().startsWith(QLatin1StringView("wayland")) && wish.activationToken.isEmpty() &&
           window.isVisible() && !window.isActiveWindow() && QApplication::activeModalWidget() == nullptr;
}

} // namespace

void bringForward(QWidget &window, const Wish &wish)
{
    if (mayBeMinimised(window, wish)) {
        window.hide();
    }
    if (!wish.activationToken.isEmpty()) {
        // Qt's Wayland side reads it when it asks for the focus, and clears it.
        qputenv("XDG_ACTIVATION_TOKEN", wish.activationToken.toUtf8());
    }
    // A window that comes to the screen tells with what start it does; one of an earlier start must not be told again.
    const QByteArray startupId = isAcceptable(wish.startupId) ? wish.startupId.toUtf8() : QByteArray();
    setWindowText(window, "_NET_STARTUP_ID", startupId);
    window.show();
    window.raise();
    window.activateWindow();
    if (!startupId.isEmpty()) {
        endStart(window, startupId);
    }
}

} // namespace quillfen::platform
