// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/platform.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace quillfen::platform {

namespace {

/// Asks the desktop's file viewer (org.freedesktop.FileManager1); where none answers, the program for folders opens
/// `fallback`. The bus is asked without waiting: a viewer that has to be started first must not freeze the window.
void askFileManager(const QString &method, const QString &path, const QString &fallback)
{
    QDBusMessage message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                          QStringLiteral("/org/freedesktop/FileManager1"),
                                                          QStringLiteral("org.freedesktop.FileManager1"), method);
    message << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto *const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, fallback] {
        if (watcher->isError()) {
            QDesktopServices::openUrl(QUrl::fromLocalFile(fallback));
        }
        watcher->deleteLater();
    });
}

/// The interfaces of this computer (getifaddrs(3)).
struct InterfaceList {
    InterfaceList() { ::getifaddrs(&first); }
    ~InterfaceList() { ::freeifaddrs(first); }
    InterfaceList(const InterfaceList &) = delete;
    InterfaceList &operator=(const InterfaceList &) = delete;

    ifaddrs *first = nullptr;
};

bool isIPv4(const ifaddrs &entry)
{
    return entry.ifa_addr != nullptr && entry.ifa_addr->sa_family == AF_INET;
}

QString dotted(const ifaddrs &entry)
{
    sockaddr_in address{};
    std::memcpy(&address, entry.ifa_addr, sizeof address);
    std::array<char, INET_ADDRSTRLEN> text{};
    ::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return QString::fromLatin1(text.data());
}

/// Cable first, then radio, then what bridges and virtual machines bring along.
int rank(const QString &name)
{
    if (name.startsWith(QLatin1String("en")) || name.startsWith(QLatin1String("eth"))) {
        return 0;
    }
    return name.startsWith(QLatin1String("wl")) ? 1 : 2;
}

} // namespace

void showFolder(const QString &path)
{
    askFileManager(QStringLiteral("ShowFolders"), path, path);
}

void revealFile(const QString &path)
{
    askFileManager(QStringLiteral("ShowItems"), path, QFileInfo(path).absolutePath());
}

std::optional<QString> interfaceAddress(const QString &name)
{
    std::optional<QString> address;
    const InterfaceList list;
    for (const ifaddrs *entry = list.first; entry != nullptr && !address; entry = entry->ifa_next) {
        if (isIPv4(*entry) && name == QString::fromLocal8Bit(entry->ifa_name)) {
            address = dotted(*entry);
        }
    }
    return address;
}

QStringList lanInterfaces()
{
    QStringList names;
    const InterfaceList list;
    for (const ifaddrs *entry = list.first; entry != nullptr; entry = entry->ifa_next) {
        const bool reachesOthers = (entry->ifa_flags & (IFF_UP | IFF_LOOPBACK | IFF_POINTOPOINT)) == IFF_UP;
        if (isIPv4(*entry) && reachesOthers) {
            names.append(QString::fromLocal8Bit(entry->ifa_name));
        }
    }
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        return std::pair(rank(left), left) < std::pair(rank(right), right);
    });
    names.removeDuplicates();
    return names;
}

} // namespace quillfen::platform
