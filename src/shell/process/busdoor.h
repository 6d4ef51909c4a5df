// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/process/oneprocess.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QVariantList>
#include <QVariantMap>

namespace quillfen {

/// The door on the session bus, by which the desktop too starts and calls the program: org.freedesktop.Application, as
/// freedesktop.org defines it for desktop entries, under the name of ours.
class BusDoor final : public Door {
    Q_OBJECT

public:
    explicit BusDoor(QObject *parent = nullptr);
    ~BusDoor() override;

    [[nodiscard]] bool isConnected() const { return m_bus.isConnected(); }
    [[nodiscard]] Claim claim(const Wish &wish) override;

private:
    [[nodiscard]] Claim handOver(const Wish &wish);

    QDBusConnection m_bus;
};

/// What others see of the door on the bus.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(Door *door);

public Q_SLOTS:
    // The names are the interface's.
    void Activate(const QVariantMap &platformData);                                                           // NOLINT
    void Open(const QStringList &uris, const QVariantMap &platformData);                                      // NOLINT
    void ActivateAction(const QString &name, const QVariantList &parameter, const QVariantMap &platformData); // NOLINT

private:
    Door *m_door;
};

} // namespace quillfen
