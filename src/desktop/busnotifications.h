// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/desktopnotifications.h"

#include <QDBusConnection>
#include <QDBusPendingCall>

#include <functional>
#include <map>
#include <optional>

namespace quillfen {

/// Notifications over a bus (org.freedesktop.Notifications, the Desktop Notifications protocol 1.2 of freedesktop.org).
///
/// The server is asked once what it can do, and everything is said to that one and heard from it alone. When it goes,
/// what it showed goes with it; the next notification asks anew.
class BusNotifications final : public DesktopNotifications {
    Q_OBJECT

public:
    explicit BusNotifications(QDBusConnection bus, QObject *parent = nullptr);

    void show(int number, const NotificationText &text) override;
    void closeAll() override;

private Q_SLOTS:
    void ownerChanged(const QString &service, const QString &before, const QString &now);
    void tokenCame(uint id, const QString &token);
    void actionInvoked(uint id, const QString &action);
    void notificationClosed(uint id, uint reason);

private:
    struct Server {
        QString name; ///< its own on the bus, which nobody else ever gets
        bool body = false;
        bool markup = false;
        bool actions = false;
    };
    struct Shown {
        std::optional<NotificationText> next; ///< what is still to be said
        bool asked = false;                   ///< the server's answer is awaited
        bool unwanted = false;                ///< to be closed as soon as its id is known
        uint id = 0;                          ///< the server's; none before its first answer
        QString token;                        ///< what came for the click that follows
    };
    using All = std::map<int, Shown>;

    void askServer();
    void serverAnswered(const QDBusPendingCall &answer);
    void listen(bool on);
    void sayWhatWaits();
    void notify(int number, Shown &shown);
    void notifyAnswered(int number, const QDBusPendingCall &answer);
    void close(uint id);
    void forgetAll();
    void drop(All::iterator which);
    [[nodiscard]] All::iterator withId(uint id);
    void whenAnswered(const QDBusPendingCall &call, std::function<void(const QDBusPendingCall &)> then);

    QDBusConnection m_bus;
    All m_all;
    std::optional<Server> m_server; ///< none until it has been asked
    bool m_asking = false;
    int m_servers = 0; ///< how many have gone: an answer of an earlier one is late
};

} // namespace quillfen
