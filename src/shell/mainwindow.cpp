// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainwindow.h"

#include "shell/mainview/mainview.h"
#include "shell/rootview.h"
#include "shell/window/platform.h"
#include "shell/window/windowborder.h"
#include "shell/window/windowcommands.h"
#include "shell/window/windowcontrols.h"
#include "shell/window/windowdrag.h"
#include "shell/window/windowgeometry.h"
#include "ui/accessible.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

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

    connect(m_root, &RootView::aboutRequested, this, &MainWindow::aboutRequested);
    connect(m_root, &RootView::shortcutsRequested, this, &MainWindow::shortcutsRequested);
    connect(m_root, &RootView::activityRequested, this, &MainWindow::activityRequested);
    auto *const commands = new WindowCommands(this);
    connect(commands, &WindowCommands::chosen, this, &MainWindow::perform);
    platform::makeMenuBar(*commands, [this](KeyAction command) { return offers(command); });
}

bool MainWindow::offers(KeyAction command) const
{
    const MainView *const workspace = m_root->mainView();
    const bool needsWorkspace = sectionOf(command) || command == KeyAction::NewVolume || command == KeyAction::Search ||
                                command == KeyAction::Refresh;
    return needsWorkspace ? workspace != nullptr && workspace->offers(command) : isCommand(command);
}

void MainWindow::perform(KeyAction command)
{
    switch (command) {
    case KeyAction::ShowShortcuts:
        Q_EMIT shortcutsRequested();
        break;
    case KeyAction::ShowActivity:
        Q_EMIT activityRequested();
        break;
    case KeyAction::About:
        Q_EMIT aboutRequested();
        break;
    case KeyAction::Minimise:
        showMinimized();
        break;
    case KeyAction::CloseWindow:
        // The menu bar belongs to all windows of the program.
        (QApplication::activeWindow() != nullptr ? QApplication::activeWindow() : this)->close();
        break;
    case KeyAction::Quit:
        Q_EMIT quitRequested();
        break;
    default:
        if (MainView *const workspace = m_root->mainView()) {
            workspace->perform(command);
        }
    }
}

bool MainWindow::focusNextPrevChild(bool next)
{
    if (focusWidget() != nullptr && focusWidget()->property("keepsFocus").toBool()) {
        return true; // a button that begins to run, see Button
    }
    if (focusWidget() != nullptr && focusWidget() != this && !focusWidget()->isVisibleTo(this)) {
        rest(*focusWidget());
        return true;
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

/// Qt hands the focus of what vanishes to the next control in line, whatever that does when Enter follows: of a list's
/// last row to a button below it, of a board's last control to the one that minimises. It rests on what the control
/// stood in instead, from where Tab goes on.
void MainWindow::rest(const QWidget &vanished)
{
    QWidget *place = vanished.parentWidget();
    while (place != this && !place->isVisibleTo(this)) {
        place = place->parentWidget();
    }
    if (place == this) {
        place = m_root;
    }
    place->setFocus(Qt::OtherFocusReason);
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
