// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <ostream>
#include <utility>
#include <vector>

namespace quillfen::test {

/// A call of "Notify" with everything that came.
struct Notified {
    QString program = QStringLiteral("Quillfen");
    uint replaces = 0;
    QString icon = QStringLiteral("io.quillfen.Quillfen");
    QString summary;
    QString body;
    QStringList actions = {QStringLiteral("default"), QStringLiteral("Open Quillfen")};
    QVariantMap hints = {{QStringLiteral("desktop-entry"), QStringLiteral("io.quillfen.Quillfen")},
                         {QStringLiteral("urgency"), QVariant::fromValue(uchar(1))},
                         {QStringLiteral("category"), QStringLiteral("transfer.complete")}};
    int timeout = -1;

    bool operator==(const Notified &) const = default;
};

inline void PrintTo(const Notified &one, std::ostream *out)
{
    *out << one.program.toStdString() << " replaces " << one.replaces << " icon " << one.icon.toStdString() << " \""
         << one.summary.toStdString() << "\" \"" << one.body.toStdString() << "\" actions "
         << one.actions.join(u',').toStdString() << " timeout " << one.timeout << " hints";
    for (auto hint = one.hints.begin(); hint != one.hints.end(); ++hint) {
        *out << ' ' << hint.key().toStdString() << '=' << hint.value().typeName() << ':'
             << hint.value().toString().toStdString();
    }
}

/// A desktop's notification server on a bus, as far as it is heard. It leaves the bus as a crash does.
class NotificationServer final : public QDBusVirtualObject {
public:
    explicit NotificationServer(const QString &address,
                                const QStringList &canDo = {QStringLiteral("actions"), QStringLiteral("body"),
                                                            QStringLiteral("body-markup")})
        : can(canDo), m_name(QStringLiteral("server %1").arg(++count())),
          m_bus(QDBusConnection::connectToBus(address, m_name))
    {
        m_bus.registerVirtualObject(path(), this);
        m_bus.registerService(interface());
    }
    ~NotificationServer() override { QDBusConnection::disconnectFromBus(m_name); }

    [[nodiscard]] static QString interface() { return QStringLiteral("org.freedesktop.Notifications"); }
    [[nodiscard]] static QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }

    QStringList can;
    bool holdsAnswers = false; ///< to "Notify", until `answer`
    bool refuses = false;
    QStringList calls; ///< by their methods
    std::vector<Notified> notified;
    std::vector<uint> closed;
    QString client; ///< who called last, by its own name on the bus

    void answer()
    {
        for (const QDBusMessage &each : std::exchange(m_held, {})) {
            reply(each);
        }
    }

    void tell(const QString &signal, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(path(), interface(), signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }

    /// As its user does: a token where the desktop has any, the click, and the end of what was clicked.
    void click(uint id, const QString &token = {})
    {
        if (!token.isEmpty()) {
            tell(QStringLiteral("ActivationToken"), {id, token});
        }
        tell(QStringLiteral("ActionInvoked"), {id, QStringLiteral("default")});
        close(id);
    }

    /// Leaves its name to another, and stays on the bus.
    void leave() { m_bus.unregisterService(interface()); }
    /// Waits until the bus has passed on what was said here.
    void finish() { (void)m_bus.interface()->isServiceRegistered(interface()); }

    void close(uint id) { tell(QStringLiteral("NotificationClosed"), {id, 2U}); }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        if (message.member() == QLatin1StringView("Echo")) {
            m_bus.send(message.createReply());
            return true;
        }
        calls << message.member();
        client = message.service();
        if (message.member() == QLatin1StringView("GetCapabilities") && message.signature().isEmpty()) {
            m_bus.send(message.createReply(can));
        } else if (message.member() == QLatin1StringView("Notify") &&
                   message.signature() == QLatin1StringView("susssasa{sv}i")) {
            notified.push_back(notifiedBy(message.arguments()));
            m_held.push_back(message);
            if (!holdsAnswers) {
                answer();
            }
        } else if (message.member() == QLatin1StringView("CloseNotification") &&
                   message.signature() == QLatin1StringView("u")) {
            closed.push_back(message.arguments().at(0).toUInt());
        } else {
            return false;
        }
        return true;
    }

private:
    static int &count()
    {
        static int value = 0;
        return value;
    }

    static Notified notifiedBy(const QVariantList &arguments)
    {
        return {.program = arguments.at(0).toString(),
                .replaces = arguments.at(1).toUInt(),
                .icon = arguments.at(2).toString(),
                .summary = arguments.at(3).toString(),
                .body = arguments.at(4).toString(),
                .actions = arguments.at(5).toStringList(),
                .hints = qdbus_cast<QVariantMap>(arguments.at(6)),
                .timeout = arguments.at(7).toInt()};
    }

    void reply(const QDBusMessage &notify)
    {
        if (refuses) {
            m_bus.send(notify.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("too many")));
            return;
        }
        const uint replaces = notify.arguments().at(1).toUInt();
        m_bus.send(notify.createReply(replaces != 0 ? replaces : ++m_lastId));
    }

    QString m_name;
    QDBusConnection m_bus;
    std::vector<QDBusMessage> m_held;
    uint m_lastId = 40; ///< so that no id is a number of the program's own by chance
};

} // namespace quillfen::test
