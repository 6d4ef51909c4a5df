// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

/// The invisible border that lies over a frameless window and resizes it. It covers the window, but only its edge
/// exists for the pointer, so that everything within is left alone. Gone while the window is maximised.
class WindowBorder final : public QWidget {
    Q_OBJECT

public:
    explicit WindowBorder(QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
};

} // namespace quillfen
