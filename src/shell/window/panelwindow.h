// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include <optional>

namespace quillfen {

/// A small window that tells something beside the main window, which goes on meanwhile. Frameless, moved by dragging
/// it anywhere, deleted when it closes. Esc and the window's keys close it, and the keyboard goes back to its parent.
class PanelWindow : public QDialog {
    Q_OBJECT

public:
    explicit PanelWindow(const QString &title, QWidget *parent = nullptr);

    void done(int result) override;

Q_SIGNALS:
    /// The keys that end the program were pressed here.
    void quitRequested();
    /// So were those that show the shortcuts …
    void shortcutsRequested();
    /// … and those that show the activity.
    void activityRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    std::optional<QPoint> m_held; ///< where on the screen it was pressed
};

} // namespace quillfen
