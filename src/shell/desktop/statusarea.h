// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/panel/menubarrows.h"
#include "shell/window/platform.h"
#include "state/published.h"

#include <QObject>

#include <memory>
#include <optional>

class QMenu;
class QSystemTrayIcon;

namespace quillfen {

class MenuBarView;

/// The program's place among the desktop's status icons: an icon that tells how everything is, with the panel and a
/// plain menu of the same actions, since some desktops show only menus. The icon appears as soon as there is room for
/// it, which may be long after login, and again when the room has gone and come back.
class StatusArea final : public QObject {
    Q_OBJECT

public:
    explicit StatusArea(std::shared_ptr<AppState> state, QObject *parent = nullptr);
    ~StatusArea() override;

    /// Starts looking for a place. Call it when the first window is up: it asks the desktop, and that takes time.
    void open();
    [[nodiscard]] bool isShown() const { return m_icon != nullptr; }

    [[nodiscard]] QMenu &menu() { return *m_menu; }
    /// The panel; made when it is first asked for.
    [[nodiscard]] MenuBarView &panel();

Q_SIGNALS:
    void openRequested();
    void timeTravelRequested();
    void newVolumeRequested();
    void activityRequested();
    void aboutRequested();
    void quitRequested();

private:
    void appear(platform::MenuBy drawnBy);
    void disappear();
    void togglePanel();
    void fillMenu();
    void addVolumes();
    [[nodiscard]] QString entryText(const QString &text) const;
    void render();

    std::shared_ptr<AppState> m_state;
    std::unique_ptr<QMenu> m_menu;
    platform::MenuBy m_drawnBy = platform::MenuBy::Program;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::unique_ptr<MenuBarView> m_panel;
    std::optional<Overall> m_shown; ///< what the icon tells
    Observer m_observer;
};

} // namespace quillfen
