// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace quillfen {

/// What a notification says: plain text, whatever it looks like.
struct NotificationText {
    QString summary;
    QString body;
    bool failed = false; ///< it tells of a failure, and waits until it has been seen

    bool operator==(const NotificationText &) const = default;
};

/// The program's notifications on the desktop, outside its windows. Nothing here waits for the desktop, and where it
/// shows none, nothing happens. Main thread only.
class DesktopNotifications : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows one under a number of the caller's own, in place of what still stands under that number.
    virtual void show(int number, const NotificationText &text) = 0;
    /// Takes all of them away; `gone` is not signalled for these.
    virtual void closeAll() = 0;

Q_SIGNALS:
    /// Somebody wants to see more. The token, which may be empty, lets a window come to the front for it.
    void clicked(const QString &activationToken);
    /// A notification stands no longer, or could not be shown at all.
    void gone(int number);
};

/// Those of this desktop; null where there is none to show them.
[[nodiscard]] std::unique_ptr<DesktopNotifications> makeDesktopNotifications();

} // namespace quillfen
