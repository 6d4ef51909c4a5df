// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/platform.h"
#include "ui/x11selection_linux.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QTimer>

using namespace std::chrono_literals;

namespace quillfen::platform {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";

// A desktop without a D-Bus status area may have the older one of X11, which is only asked for when login is over: an
// icon that is made before the D-Bus one has come up keeps to X11 for good.
constexpr auto loginTime = 10s;

void lookOnX11(QObject &context, const std::function<void()> &appeared)
{
    QTimer::singleShot(loginTime, &context, [appeared] {
        if (selectionHasOwner("_NET_SYSTEM_TRAY_S0").value_or(false)) {
            appeared();
        }
    });
}

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

void watchStatusArea(QObject &context, const std::function<void()> &appeared, const std::function<void()> &gone)
{
    // Without an address the bus library would start a bus of its own, which takes long and leads nowhere.
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        lookOnX11(context, appeared);
        return;
    }
    auto *watcher = new QDBusServiceWatcher(QString::fromLatin1(watcherName), QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForOwnerChange, &context);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceRegistered, &context, [appeared] { appeared(); });
    QObject::connect(watcher, &QDBusServiceWatcher::serviceUnregistered, &context, [gone] { gone(); });
    askForOwner(context, appeared);
    lookOnX11(context, appeared);
}

} // namespace quillfen::platform
