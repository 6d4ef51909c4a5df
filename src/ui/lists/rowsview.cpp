// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/rowsview.h"

#include "ui/theme.h"

#include <QListView>
#include <QScrollBar>

namespace quillfen {

void dressRowsView(QListView *view, const QString &accessibleName)
{
    view->setUniformItemSizes(true);
    view->setFrameShape(QFrame::NoFrame);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setFocusPolicy(Qt::TabFocus);
    view->setProperty("ownFocus", true);
    view->setMouseTracking(true);
    view->verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    QPalette colours = view->palette();
    colours.setColor(QPalette::Base, Theme::bg);
    view->setPalette(colours);
    view->setAccessibleName(accessibleName);
}

} // namespace quillfen
