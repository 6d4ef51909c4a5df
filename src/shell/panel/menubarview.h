// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/published.h"
#include "ui/lists/longlist.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class AgentLabel;
class AppState;
class Bar;
class MenuBarVolumes;

/// The panel that hangs from the status icon: how everything is, the volumes, and ways into the main window. It closes
/// on a click elsewhere and on Esc, and stays available while the main window is closed.
class MenuBarView final : public QWidget {
    Q_OBJECT

public:
    explicit MenuBarView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~MenuBarView() override;

    /// Shows the panel near a point of the screen, whole within it: below it in a screen's upper half, else above.
    void showAt(const QPoint &global);

Q_SIGNALS:
    /// Each asks for the main window, the first two for a place in it.
    void timeTravelRequested();
    void newVolumeRequested();
    void openRequested();
    void quitRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void build();
    [[nodiscard]] QWidget *header();
    [[nodiscard]] QWidget *buttons();
    [[nodiscard]] QWidget *foot();
    void renderIfVisible();
    void render();
    void focusMoved(const QWindow *window);
    [[nodiscard]] QMargins shadowMargins() const;

    std::shared_ptr<AppState> m_state;
    bool m_shadowed;
    AgentLabel *m_status;
    QWidget *m_plan;
    AgentLabel *m_planName;
    AgentLabel *m_planLine;
    Bar *m_bar;
    std::unique_ptr<MenuBarVolumes> m_volumes;
    LongList *m_list;
    AgentLabel *m_engine;
    Observer m_observer;
};

} // namespace quillfen
