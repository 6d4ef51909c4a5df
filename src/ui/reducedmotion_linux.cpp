// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/systemmotion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QObject>
#include <QStandardPaths>

namespace quillfen {
namespace {

constexpr auto space = "org.gnome.desktop.interface";
constexpr auto key = "enable-animations";

/// The desktop portal's answer, whichever desktop stands behind it.
class MotionSetting final : public QObject {
    Q_OBJECT

public:
    MotionSetting()
    {
        if (!busIsThere()) {
            return;
        }
        QDBusConnection bus = QDBusConnection::sessionBus();
        const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
        const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
        const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
        bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                    SLOT(changed(QString, QString, QDBusVariant)));
        QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
        question << QString::fromLatin1(space) << QString::fromLatin1(key);
        auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            if (reply.isValid()) {
                take(reply.value().variant());
            }
            answer->deleteLater();
        });
    }

    [[nodiscard]] bool reduced() const noexcept { return m_reduced; }

private Q_SLOTS:
    void changed(const QString &changedSpace, const QString &changedKey, const QDBusVariant &value)
    {
        if (changedSpace == QLatin1StringView(space) && changedKey == QLatin1StringView(key)) {
            take(value.variant());
        }
    }

private:
    /// Without a bus the connection would try to start one, and wait for it.
    static bool busIsThere()
    {
        if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
            return true;
        }
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        return !folder.isEmpty() && QFileInfo::exists(folder + QStringLiteral("/bus"));
    }

    void take(QVariant value)
    {
        // "Read" wraps its answer twice.
        while (value.canConvert<QDBusVariant>()) {
            value = value.value<QDBusVariant>().variant();
        }
        if (value.typeId() == QMetaType::Bool) {
            m_reduced = !value.toBool();
        }
    }

    bool m_reduced = false;
};

} // namespace

bool systemReducesMotion()
{
    static const MotionSetting setting;
    return setting.reduced();
}

} // namespace quillfen

#include "reducedmotion_linux.moc"
