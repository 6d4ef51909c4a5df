// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <QWidget>

namespace quillfen {

class WindowButton;

/// Minimise, maximise or restore, close: the controls of a window that draws its own frame. They stay usable above
/// whatever lies over the window's content, and come last in the tab order.
class WindowControls final : public QWidget {
    Q_OBJECT

public:
    explicit WindowControls(QWidget *window);

    /// Puts the buttons behind everything that was added to the window since.
    void moveToEndOfTabOrder();
    void toggleMaximised();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    void render();
    void maximiseUnmanaged();
    [[nodiscard]] bool isMaximised() const;

    WindowButton *m_minimise;
    WindowButton *m_maximise;
    WindowButton *m_close;
    QRect m_restored;         ///< where the window was before it was maximised
    bool m_unmanaged = false; ///< maximised by us, since no window manager did it
};

} // namespace quillfen
