// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/panelwindow.h"

#include "shell/window/keymap.h"
#include "shell/window/windowdrag.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>

#include <utility>

namespace quillfen {

PanelWindow::PanelWindow(const QString &title, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(title);
    setWindowFlag(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_DeleteOnClose);

    // The main window's keys end at its own edge.
    const auto onKeys = [this](KeyAction action, auto &&slot) {
        for (const QKeySequence &keys : keysOf(action)) {
            connect(new QShortcut(keys, this), &QShortcut::activated, this, slot);
        }
    };
    onKeys(KeyAction::CloseWindow, &QDialog::reject);
    onKeys(KeyAction::Quit, &PanelWindow::quitRequested);
    onKeys(KeyAction::ShowShortcuts, &PanelWindow::shortcutsRequested);
    onKeys(KeyAction::ShowActivity, &PanelWindow::activityRequested);
}

void PanelWindow::done(int result)
{
    const bool hadKeyboard = isActiveWindow();
    QDialog::done(result);
    // Most window managers think of it themselves; without, the keyboard would belong to nobody.
    if (hadKeyboard && parentWidget() != nullptr && parentWidget()->isVisible()) {
        parentWidget()->activateWindow();
    }
}

void PanelWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Qt leaves room for a title bar that is not there.
    if (parentWidget() != nullptr && parentWidget()->isVisible() && !testAttribute(Qt::WA_Moved)) {
        move(parentWidget()->geometry().center() - rect().center());
    }
}

void PanelWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::bg);
    painter.setPen(Theme::line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void PanelWindow::mousePressEvent(QMouseEvent *event)
{
    m_held.reset();
    if (event->button() == Qt::LeftButton) {
        m_held = event->globalPosition().toPoint();
    }
}

void PanelWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (m_held &&
        (event->globalPosition().toPoint() - *m_held).manhattanLength() >= QApplication::startDragDistance()) {
        beginMove(*this, *std::exchange(m_held, std::nullopt));
    }
}

void PanelWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_held.reset();
}

} // namespace quillfen
