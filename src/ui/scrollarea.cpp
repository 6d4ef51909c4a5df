// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/scrollarea.h"

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
