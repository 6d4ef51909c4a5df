// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace quillfen {

/// The program's place among the desktop's status icons, with a menu. Some desktops have no such place, and some offer
/// it only a while after login; the icon appears as soon as there is room for it.
class StatusArea final : public QObject {
    Q_OBJECT

public:
    explicit StatusArea(QObject *parent = nullptr);
    ~StatusArea() override;

    /// Starts looking for a place. Call it when the first window is up: it asks the desktop, and that takes time.
    void open();
    /// True when the icon is there. Looks once more, so that a no is a no at this moment.
    [[nodiscard]] bool isShown();

Q_SIGNALS:
    void openRequested();
    void aboutRequested();
    void quitRequested();

private:
    void show();

    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace quillfen
