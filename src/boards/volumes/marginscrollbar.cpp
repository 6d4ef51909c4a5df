// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "marginscrollbar.h"

#include "ui/paint/direction.h"

#include <QAbstractScrollArea>
#include <QEvent>

#include <algorithm>

namespace quillfen {

namespace {

/// What the body's own bar takes at the window's edge; both may be there at once.
constexpr int outerBar = 10;

} // namespace

MarginScrollBar::MarginScrollBar(QAbstractScrollArea *area)
    : QScrollBar(Qt::Vertical, area->parentWidget()), m_area(area)
{
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->installEventFilter(this);
    setFocusPolicy(Qt::NoFocus);

    const QScrollBar *inner = area->verticalScrollBar();
    connect(inner, &QScrollBar::rangeChanged, this, &MarginScrollBar::follow);
    connect(inner, &QScrollBar::valueChanged, this, &QScrollBar::setValue);
    connect(this, &QScrollBar::valueChanged, inner, &QScrollBar::setValue);
    follow();
}

bool MarginScrollBar::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        follow();
        break;
    default:
        break;
    }
    return QScrollBar::eventFilter(watched, event);
}

void MarginScrollBar::follow()
{
    const QScrollBar &inner = *m_area->verticalScrollBar();
    setPageStep(inner.pageStep());
    setSingleStep(inner.singleStep());
    setRange(inner.minimum(), inner.maximum());
    setValue(inner.value());
    setVisible(!m_area->isHidden() && inner.maximum() > inner.minimum());

    const QRect beside = m_area->geometry();
    const int margin = parentWidget()->width() - beside.right() - 1;
    const int width = sizeHint().width();
    const int top = beside.top() + m_area->viewport()->y();
    const QRect place(beside.right() + 1 + std::max(0, (margin - outerBar - width) / 2), top, width,
                      beside.bottom() + 1 - top);
    setGeometry(mirrored(*parentWidget(), place).toRect());
}

} // namespace quillfen
