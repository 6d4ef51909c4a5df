// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/platform.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QSystemTrayIcon>
#include <QTimer>

using namespace std::chrono_literals;

namespace quillfen::platform {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";

// A desktop without a D-Bus status area may have the older one of X11. The question has to wait: Qt keeps its first
// answer for good, and during login that would be given before the D-Bus one has come up.
constexpr auto loginTime = 10s;

void askForOwner(QObject &context, const std::function<void()> &then)
{
    auto request =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    request << QString::fromLatin1(watcherName);
    auto *call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), &context);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, &context, [call, then] {
        call->deleteLater();
        const QDBusPendingReply<bool> reply = *call;
        if (reply.isValid() && reply.value()) {
            then();
        }
    });
}

} // namespace

void whenStatusAreaExists(QObject &context, const std::function<void()> &then)
{
    QTimer::singleShot(loginTime, &context, [then] {
        if (QSystemTrayIcon::isSystemTrayAvailable()) {
            then();
        }
    });
    // Without an address the bus library would start a bus of its own, which takes long and leads nowhere.
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        return;
    }
    auto *watcher = new QDBusServiceWatcher(QString::fromLatin1(watcherName), QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForRegistration, &context);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceRegistered, &context, [then] { then(); });
    askForOwner(context, then);
}

} // namespace quillfen::platform
