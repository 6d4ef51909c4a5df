// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/portalsetting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace quillfen {

namespace {

/// Without a bus the connection would try to start one, and wait for it.
bool busIsThere()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        return true;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return !folder.isEmpty() && QFileInfo::exists(folder + QStringLiteral("/bus"));
}

} // namespace

PortalSetting::PortalSetting(QString space, QString key, Told told, QObject *parent)
    : QObject(parent), m_space(std::move(space)), m_key(std::move(key)), m_told(std::move(told))
{
    if (busIsThere()) {
        ask();
    }
}

void PortalSetting::ask()
{
    const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
    const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(changed(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question << m_space << m_key;
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) {
            tell(reply.value().variant());
        }
        answer->deleteLater();
    });
}

void PortalSetting::changed(const QString &space, const QString &key, const QDBusVariant &value)
{
    if (space == m_space && key == m_key) {
        tell(value.variant());
    }
}

void PortalSetting::tell(QVariant value) const
{
    // "Read" wraps its answer twice.
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    m_told(value);
}

} // namespace quillfen
