// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/section.h"
#include "state/published.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

namespace quillfen {

class AppState;
class MainView;
class Sheet;
class Toast;

/// What fills the window.
enum class Screen { AgentDown, FirstRun, Main };

/// Who is on screen. None while it is not decided yet: the agent has neither refused the connection nor said who is
/// signed in, and `waited` does not say that this has gone on for too long.
[[nodiscard]] std::optional<Screen> screenFor(const AppState &state, bool waited);

/// The content of the main window: routes to one of three screens, which live only while they are shown, and lays the
/// new-volume sheet and the toast over them.
class RootView final : public QWidget {
    Q_OBJECT

public:
    explicit RootView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~RootView() override;

    [[nodiscard]] std::optional<Screen> screen() const noexcept { return m_screen; }
    /// Shows a section of the workspace, as soon as that is on screen.
    void showSection(Section section);
    /// The workspace, while it is on screen.
    [[nodiscard]] MainView *mainView() const;

Q_SIGNALS:
    /// The window shows its content for the first time.
    void appeared();
    void aboutRequested();
    void shortcutsRequested();
    void activityRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void render();
    void watchConnection();
    void route(Screen screen);
    void takeFocus();
    [[nodiscard]] QWidget *create(Screen screen);
    [[nodiscard]] QWidget *createFirstRun();
    void renderSheet();
    void renderToast();

    std::shared_ptr<AppState> m_state;
    std::optional<Screen> m_screen;
    QWidget *m_view = nullptr;
    QPointer<Sheet> m_newVolume;
    Toast *m_toast = nullptr;
    QTimer m_patience;
    std::optional<Section> m_wishedSection; ///< until there is a workspace
    bool m_waited = false;
    bool m_connected = false;
    bool m_hasAppeared = false;
    Observer m_observer;
};

} // namespace quillfen
