// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace quillfen {

/// Watches for the status area on the session bus (org.kde.StatusNotifierWatcher).
///
/// It is there once somebody shows icons, which may be long after the name has an owner. Who makes an icon in between
/// never gets one: Qt asks once in the life of a program whether the bus has a status area, and remembers the answer.
class BusWatch final : public QObject {
    Q_OBJECT

public:
    explicit BusWatch(QObject *parent = nullptr);

    [[nodiscard]] bool isThere() const { return m_there; }

Q_SIGNALS:
    /// Never twice without `gone` in between.
    void appeared();
    void gone();

private Q_SLOTS:
    void ask();

private:
    void ownerChanged(const QString &owner);

    bool m_there = false;
    int m_owners = 0; ///< how many there have been: an answer of an earlier one is late
};

} // namespace quillfen
