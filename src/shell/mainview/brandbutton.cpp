// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/brandbutton.h"

#include "shell/window/windowdrag.h"
#include "ui/accessible.h"
#include "ui/controls/enterkey.h"
#include "ui/layout.h"
#include "ui/parts/brand.h"

#include <QApplication>
#include <QBoxLayout>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

namespace quillfen {

namespace {

constexpr int markSize = 28;
constexpr int padding = 4;

} // namespace

BrandButton::BrandButton(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setProperty("focusRadius", 6);
    setAccessible(this, QAccessible::PushButton, tr("About Quillfen"));
    setLayout(row({new BrandMark(markSize), new Brand(true)}, 10, QMargins(padding, padding, padding, padding)));
    connect(this, &QAbstractButton::clicked, this, &BrandButton::aboutRequested);
}

QSize BrandButton::sizeHint() const
{
    return layout()->sizeHint();
}

void BrandButton::paintEvent(QPaintEvent *)
{
    // The mark and the word paint themselves.
}

void BrandButton::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->globalPosition().toPoint();
    QAbstractButton::mousePressEvent(event);
}

void BrandButton::mouseMoveEvent(QMouseEvent *event)
{
    QAbstractButton::mouseMoveEvent(event);
    const int distance = (event->globalPosition().toPoint() - m_pressed).manhattanLength();
    if (!isDown() || distance < QApplication::startDragDistance()) {
        return;
    }
    setDown(false);
    beginMove(*window(), m_pressed);
}

void BrandButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

void BrandButton::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu;
    menu.addAction(tr("About Quillfen"), this, &BrandButton::aboutRequested);
    menu.exec(event->globalPos());
}

} // namespace quillfen
