// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowdrag.h"

#include "shell/window/windowgeometry.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <functional>

namespace quillfen {

namespace {

/// Follows the pointer from now until the button is released, and ends with the window at the latest.
class PointerFollower final : public QObject {
public:
    using Follow = std::function<void(const QPoint &delta)>;

    PointerFollower(QWidget &window, const QPoint &start, Follow follow)
        : QObject(&window), m_start(start), m_follow(std::move(follow))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonRelease) {
            qApp->removeEventFilter(this);
            deleteLater();
        } else if (event->type() == QEvent::MouseMove) {
            m_follow(static_cast<QMouseEvent *>(event)->globalPosition().toPoint() - m_start);
        }
        return false;
    }

private:
    QPoint m_start;
    Follow m_follow;
};

} // namespace

void beginMove(QWidget &window, const QPoint &start)
{
    if (window.windowHandle() != nullptr && window.windowHandle()->startSystemMove()) {
        return;
    }
    new PointerFollower(window, start,
                        [&window, origin = window.pos()](const QPoint &delta) { window.move(origin + delta); });
}

void beginResize(QWidget &window, Qt::Edges edges, const QPoint &start)
{
    if (window.windowHandle() != nullptr && window.windowHandle()->startSystemResize(edges)) {
        return;
    }
    new PointerFollower(window, start, [&window, edges, origin = window.geometry()](const QPoint &delta) {
        window.setGeometry(resized(origin, edges, delta, window.minimumSize()));
    });
}

} // namespace quillfen
