// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <memory>
#include <optional>

namespace quillfen {

class AppState;
class RootView;
class WindowControls;

/// The one window. It has no title bar of the system's, its content runs to the top edge; it is moved by its top strip,
/// resized at its edges, and lives on while it is closed.
class MainWindow final : public QWidget {
    Q_OBJECT

public:
    explicit MainWindow(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    [[nodiscard]] RootView &root() noexcept { return *m_root; }

Q_SIGNALS:
    void quitRequested();

protected:
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    RootView *m_root;
    WindowControls *m_controls = nullptr;
    std::optional<QPoint> m_held; ///< where on the screen the top strip was pressed
};

} // namespace quillfen
