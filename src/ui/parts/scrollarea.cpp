// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/scrollarea.h"

#include <QApplication>
#include <QScrollBar>

namespace quillfen {

ScrollArea::ScrollArea(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    verticalScrollBar()->setSingleStep(20);
    connect(qApp, &QApplication::focusChanged, this, &ScrollArea::followFocus);
}

ScrollArea::~ScrollArea()
{
    // What has the keyboard in here loses it when it goes with us.
    disconnect(qApp, nullptr, this, nullptr);
}

/// Tab within the area does so by itself. Not the Tab that comes in from elsewhere in the window, an arrow key, or who
/// gives the keyboard to something here. What the mouse presses is in sight, and must not move away below it; and the
/// window that becomes active again shows what it showed.
void ScrollArea::followFocus(const QWidget *before, QWidget *now)
{
    if (before == nullptr || now == nullptr || widget() == nullptr || !widget()->isAncestorOf(now)) {
        return;
    }
    if (QGuiApplication::mouseButtons() == Qt::NoButton && now->height() <= viewport()->height()) {
        ensureWidgetVisible(now, 0, std::min(now->height() / 2, 24));
    }
}

void ScrollArea::standOffWindowEdge()
{
    verticalScrollBar()->setProperty("inset", windowEdge); // see HouseStyle
    verticalScrollBar()->updateGeometry();
}

QSize ScrollArea::minimumSizeHint() const
{
    // As narrow as its contents can be, since nothing scrolls sideways; as low as a row.
    const int width = widget() == nullptr ? 0 : widget()->minimumSizeHint().width();
    return {std::max(width, 0), 40};
}

} // namespace quillfen
