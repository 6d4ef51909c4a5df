// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QDBusVariant;
class QVariant;

namespace quillfen {

/// One setting of the desktop, whichever desktop it is, as the portal tells it. Asks without waiting and follows the
/// setting for as long as it lives; silent where there is no session bus or nobody answers. Linux only. Main thread.
class PortalSetting final : public QObject {
    Q_OBJECT

public:
    using Told = std::function<void(const QVariant &value)>;

    PortalSetting(QString space, QString key, Told told, QObject *parent = nullptr);

private Q_SLOTS:
    void changed(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void ask();
    void tell(QVariant value) const;

    QString m_space;
    QString m_key;
    Told m_told;
};

} // namespace quillfen
