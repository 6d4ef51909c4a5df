// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/busnotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

/// The desktop entry's name, by which the desktop knows the program and its icon.
const QString &entryName()
{
    static const QString name = u"io.quillfen.Quillfen"_s;
    return name;
}

const QString &serviceName()
{
    static const QString name = u"org.freedesktop.Notifications"_s;
    return name;
}

/// The action that servers run for a click on the notification itself, whether they show buttons or not.
const QString &clickAction()
{
    static const QString name = u"default"_s;
    return name;
}

QDBusMessage callTo(const QString &who, const QString &method)
{
    return QDBusMessage::createMethodCall(who, u"/org/freedesktop/Notifications"_s, serviceName(), method);
}

QVariantMap hintsOf(const NotificationText &text)
{
    constexpr uchar normal = 1;
    constexpr uchar critical = 2;
    return {{u"desktop-entry"_s, entryName()},
            {u"urgency"_s, QVariant::fromValue(text.failed ? critical : normal)},
            {u"category"_s, text.failed ? u"transfer.error"_s : u"transfer.complete"_s}};
}

} // namespace

BusNotifications::BusNotifications(QDBusConnection bus, QObject *parent)
    : DesktopNotifications(parent), m_bus(std::move(bus))
{
    const QString busItself = u"org.freedesktop.DBus"_s;
    m_bus.connect(busItself, u"/org/freedesktop/DBus"_s, busItself, u"NameOwnerChanged"_s, {serviceName()}, u"sss"_s,
                  this, SLOT(ownerChanged(QString, QString, QString)));
}

void BusNotifications::show(int number, const NotificationText &text)
{
    if (!m_bus.isConnected()) {
        // Nobody would ever tell that a call has failed which never left.
        QMetaObject::invokeMethod(
            this, [this, number] { Q_EMIT gone(number); }, Qt::QueuedConnection);
        return;
    }
    Shown &shown = m_all[number];
    shown.next = text;
    shown.unwanted = false;
    if (m_server) {
        sayWhatWaits();
    } else if (!m_asking) {
        askServer();
    }
}

void BusNotifications::closeAll()
{
    for (auto each = m_all.begin(); each != m_all.end();) {
        Shown &shown = each->second;
        shown.next.reset();
        shown.unwanted = shown.asked;
        if (shown.asked) {
            ++each; // it may get another id
            continue;
        }
        if (shown.id != 0) {
            close(shown.id);
        }
        each = m_all.erase(each);
    }
}

/// A desktop may start its server for the first question, so that the answer takes its time.
void BusNotifications::askServer()
{
    m_asking = true;
    whenAnswered(m_bus.asyncCall(callTo(serviceName(), u"GetCapabilities"_s)),
                 [this](const QDBusPendingCall &answer) { serverAnswered(answer); });
}

void BusNotifications::serverAnswered(const QDBusPendingCall &answer)
{
    m_asking = false;
    const QDBusPendingReply<QStringList> reply = answer;
    if (!reply.isValid()) {
        forgetAll();
        return;
    }
    const QStringList can = reply.value();
    m_server = Server{.name = reply.reply().service(),
                      .body = can.contains("body"_L1),
                      .markup = can.contains("body-markup"_L1),
                      .actions = can.contains("actions"_L1)};
    listen(true);
    sayWhatWaits();
}

/// Only the server itself is heard, by its own name: anybody on the bus may say that a notification was clicked.
void BusNotifications::listen(bool on)
{
    const auto each = [this, on](const QString &signal, const char *slot) {
        const QString path = u"/org/freedesktop/Notifications"_s;
        if (on) {
            m_bus.connect(m_server->name, path, serviceName(), signal, this, slot);
        } else {
            m_bus.disconnect(m_server->name, path, serviceName(), signal, this, slot);
        }
    };
    each(u"ActivationToken"_s, SLOT(tokenCame(uint, QString)));
    each(u"ActionInvoked"_s, SLOT(actionInvoked(uint, QString)));
    each(u"NotificationClosed"_s, SLOT(notificationClosed(uint, uint)));
}

void BusNotifications::sayWhatWaits()
{
    for (auto &[number, shown] : m_all) {
        if (shown.next && !shown.asked) {
            notify(number, shown);
        }
    }
}

void BusNotifications::notify(int number, Shown &shown)
{
    const NotificationText text = *std::exchange(shown.next, std::nullopt);
    shown.asked = true;
    const QString summary = m_server->body ? text.summary : text.summary + u": "_s + text.body;
    QStringList actions;
    if (m_server->actions) {
        actions << clickAction() << tr("Open Quillfen");
    }
    QDBusMessage call = callTo(m_server->name, u"Notify"_s);
    call.setArguments({u"Quillfen"_s, shown.id, entryName(), summary,
                       m_server->markup ? text.body.toHtmlEscaped() : text.body, actions, hintsOf(text), -1});
    whenAnswered(m_bus.asyncCall(call),
                 [this, number](const QDBusPendingCall &answer) { notifyAnswered(number, answer); });
}

void BusNotifications::notifyAnswered(int number, const QDBusPendingCall &answer)
{
    const auto found = m_all.find(number);
    if (found == m_all.end()) {
        return;
    }
    const QDBusPendingReply<uint> reply = answer;
    Shown &shown = found->second;
    shown.asked = false;
    shown.id = reply.isValid() ? reply.value() : 0;
    if (shown.unwanted) {
        if (shown.id != 0) {
            close(shown.id);
        }
        m_all.erase(found);
    } else if (shown.next) {
        notify(number, shown);
    } else if (shown.id == 0) {
        drop(found);
    }
}

void BusNotifications::close(uint id)
{
    QDBusMessage call = callTo(m_server->name, u"CloseNotification"_s);
    call << id;
    m_bus.send(call);
}

void BusNotifications::ownerChanged(const QString &, const QString &, const QString &now)
{
    if (m_server && m_server->name != now) {
        listen(false);
        m_server.reset();
        ++m_servers;
        forgetAll();
    }
}

void BusNotifications::tokenCame(uint id, const QString &token)
{
    if (const auto found = withId(id); found != m_all.end()) {
        found->second.token = token;
    }
}

void BusNotifications::actionInvoked(uint id, const QString &action)
{
    const auto found = withId(id);
    if (found != m_all.end() && action == clickAction()) {
        Q_EMIT clicked(std::exchange(found->second.token, {}));
    }
}

void BusNotifications::notificationClosed(uint id, uint)
{
    const auto found = withId(id);
    if (found == m_all.end()) {
        return;
    }
    found->second.id = 0;
    if (!found->second.asked) {
        drop(found);
    }
}

void BusNotifications::forgetAll()
{
    const All forgotten = std::exchange(m_all, {});
    for (const auto &[number, shown] : forgotten) {
        Q_EMIT gone(number);
    }
}

void BusNotifications::drop(All::iterator which)
{
    const int number = which->first;
    m_all.erase(which);
    Q_EMIT gone(number);
}

BusNotifications::All::iterator BusNotifications::withId(uint id)
{
    return std::ranges::find_if(m_all, [id](const All::value_type &each) { return id != 0 && each.second.id == id; });
}

/// Calls `then` with the answer, unless the server has gone meanwhile.
void BusNotifications::whenAnswered(const QDBusPendingCall &call, std::function<void(const QDBusPendingCall &)> then)
{
    auto *const answer = new QDBusPendingCallWatcher(call, this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, answer, then = std::move(then), asked = m_servers] {
                answer->deleteLater();
                if (asked == m_servers) {
                    then(*answer);
                }
            });
}

} // namespace quillfen
