// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/published.h"

#include <QRect>
#include <QWidget>

namespace quillfen {

class WindowButton;

/// Minimise, maximise or restore, close: the controls of a window that draws its own frame, at its top right or
/// mirrored at its top left. They stay usable above whatever lies over the window's content, and come last in the tab
/// order.
class WindowControls final : public QWidget {
    Q_OBJECT

public:
    explicit WindowControls(QWidget *window);

    /// Puts the buttons behind everything that was added to the window since.
    void moveToEndOfTabOrder();
    /// Moves the focus to the first control behind the buttons, which is the window's first. False when there is none.
    bool focusWhatFollows();
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
    Observer m_observer;
};

} // namespace quillfen
