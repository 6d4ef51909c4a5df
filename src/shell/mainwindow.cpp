// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainwindow.h"

#include "shell/platform.h"
#include "shell/rootview.h"
#include "shell/windowborder.h"
#include "shell/windowcontrols.h"
#include "shell/windowdrag.h"
#include "shell/windowgeometry.h"
#include "ui/accessible.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QShortcut>

#include <utility>

namespace quillfen {

namespace {

constexpr QSize defaultSize{1180, 760};
constexpr QSize smallestSize{960, 600};

} // namespace

MainWindow::MainWindow(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_root(new RootView(std::move(state), this))
{
    setWindowTitle(QStringLiteral("Quillfen"));
    setAccessible(this, QAccessible::Window, windowTitle());
    platform::hideTitleBar(*this);
    if (platform::drawsOwnFrame()) {
        new WindowBorder(this);
        m_controls = new WindowControls(this);
    }
    setMinimumSize(smallestSize);
    resize(defaultSize.boundedTo(screen()->availableSize()));

    const auto onKeys = [this](Qt::Key key, auto &&slot) {
        connect(new QShortcut(Qt::CTRL | key, this), &QShortcut::activated, this, slot);
    };
    onKeys(Qt::Key_W, &QWidget::close);
    onKeys(Qt::Key_Q, &MainWindow::quitRequested);
}

bool MainWindow::focusNextPrevChild(bool next)
{
    if (focusWidget() != nullptr && focusWidget()->property("keepsFocus").toBool()) {
        return true; // a button that begins to run, see Button
    }
    // Screens and boards come and go behind the controls; only the moment of a step needs the order.
    if (m_controls != nullptr) {
        m_controls->moveToEndOfTabOrder();
        // The order is a ring that the content, where the focus begins, may stand anywhere in: it counts as its start.
        if (next && focusWidget() == m_root && m_controls->focusWhatFollows()) {
            return true;
        }
    }
    return QWidget::focusNextPrevChild(next);
}

void MainWindow::resizeEvent(QResizeEvent *)
{
    m_root->setGeometry(rect());
}

void MainWindow::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(event->rect(), Theme::bg);
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    // Only what nobody below took arrives here, so buttons in the strip keep their clicks.
    if (event->button() == Qt::LeftButton && inDragArea(event->position().toPoint(), size())) {
        m_held = event->globalPosition().toPoint();
    }
}

void MainWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_held ||
        (event->globalPosition().toPoint() - *m_held).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    beginMove(*this, *std::exchange(m_held, std::nullopt));
}

void MainWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_held.reset();
}

void MainWindow::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_held.reset();
    if (m_controls != nullptr && event->button() == Qt::LeftButton && inDragArea(event->position().toPoint(), size())) {
        m_controls->toggleMaximised();
    }
}

} // namespace quillfen
