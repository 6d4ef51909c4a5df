// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <memory>
#include <optional>

namespace quillfen {

class AppState;
enum class KeyAction;
class RootView;
class WindowControls;

/// The one window. It has no title bar of the system's, its content runs to the top edge; it is moved by its top strip,
/// resized at its edges, and lives on while it is closed.
class MainWindow final : public QWidget {
    Q_OBJECT

public:
    explicit MainWindow(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    [[nodiscard]] RootView &root() noexcept { return *m_root; }

    /// Whether a command would do anything now.
    [[nodiscard]] bool offers(KeyAction command) const;
    /// Does what keys and menus ask for.
    void perform(KeyAction command);

Q_SIGNALS:
    void quitRequested();
    void aboutRequested();
    void shortcutsRequested();
    void activityRequested();

protected:
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void rest(const QWidget &vanished);

    RootView *m_root;
    WindowControls *m_controls = nullptr;
    std::optional<QPoint> m_held; ///< where on the screen the top strip was pressed
};

} // namespace quillfen
