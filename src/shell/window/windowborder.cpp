// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowborder.h"

#include "shell/window/windowdrag.h"
#include "shell/window/windowgeometry.h"

#include <QMouseEvent>

namespace quillfen {

WindowBorder::WindowBorder(QWidget *window) : QWidget(window)
{
    setMouseTracking(true);
    setProperty("aboveScrim", true);
    window->installEventFilter(this);
}

bool WindowBorder::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        setGeometry(window()->rect());
        setMask(resizeBorder(size()));
    } else if (event->type() == QEvent::WindowStateChange) {
        setVisible(!window()->isMaximized() && !window()->isFullScreen());
    }
    return false;
}

void WindowBorder::mouseMoveEvent(QMouseEvent *event)
{
    setCursor(resizeCursor(edgesAt(event->position().toPoint(), size())));
}

void WindowBorder::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        beginResize(*window(), edgesAt(event->position().toPoint(), size()), event->globalPosition().toPoint());
    }
}

} // namespace quillfen
