// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QScrollArea>

namespace quillfen {

/// How wide the strip at a window's edge is by which the window is resized, where it has no frame of the system's.
inline constexpr int windowEdge = 6;

/// Scrolls its widget up and down, never sideways. The scroll bar lies over the contents, so that nothing moves when it
/// comes and goes. What takes the keyboard is scrolled into sight. Without frame and background of its own.
class ScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollArea(QWidget *parent = nullptr);
    ~ScrollArea() override;

    /// For an area that reaches the window's edge: its scroll bar stands beside the strip that resizes the window.
    void standOffWindowEdge();

    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    void followFocus(const QWidget *before, QWidget *now);
};

} // namespace quillfen
