// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A status area on the session bus that takes every icon and shows none, so that a client has its icon while it is
// measured.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QStringList>

namespace {

class StatusArea final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ version)

public:
    [[nodiscard]] QStringList items() const { return m_items; }
    [[nodiscard]] static bool hasHost() { return true; }
    [[nodiscard]] static int version() { return 0; }

public Q_SLOTS:
    // The names are the interface's.
    void RegisterStatusNotifierItem(const QString &item)
    {
        m_items.append(item);
    } // NOLINT(readability-identifier-naming)

private:
    QStringList m_items;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    StatusArea area;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &area,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    if (!bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"))) {
        return 1;
    }
    return QCoreApplication::exec();
}

#include "statusarea.moc"
