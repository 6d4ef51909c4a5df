// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowcontrols.h"

#include "shell/window/controlsside.h"
#include "shell/window/windowbutton.h"
#include "ui/layout.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <utility>

using namespace std::chrono_literals;

namespace quillfen {

namespace {

// A window manager answers a request within a frame or two; after this time there is none to answer.
constexpr auto managerPatience = 150ms;

} // namespace

WindowControls::WindowControls(QWidget *window)
    : QWidget(window), m_minimise(new WindowButton(Icon::WinMinimise, tr("Minimise"))),
      m_maximise(new WindowButton(Icon::WinMaximise, tr("Maximise"))),
      m_close(new WindowButton(Icon::WinClose, tr("Close"), WindowButton::Kind::Close)),
      m_observer({&controlsAtLeft()}, [this] { place(); })
{
    setLayout(row({m_minimise, m_maximise, m_close}, 2));
    resize(sizeHint());
    setProperty("aboveScrim", true);

    connect(m_minimise, &QAbstractButton::clicked, window, &QWidget::showMinimized);
    connect(m_maximise, &QAbstractButton::clicked, this, &WindowControls::toggleMaximised);
    connect(m_close, &QAbstractButton::clicked, window, &QWidget::close);
    window->installEventFilter(this);

    place();
    render();
}

void WindowControls::moveToEndOfTabOrder()
{
    // The window stands at the head of its own chain, so the one before it is the last.
    QWidget *last = window()->previousInFocusChain();
    // Nothing can be put behind what takes no focus, such as what lies over the window.
    while (last != window() && last->focusPolicy() == Qt::NoFocus) {
        last = last->previousInFocusChain();
    }
    if (last == m_close || last == window()) {
        return;
    }
    setTabOrder(last, m_minimise);
    setTabOrder(m_minimise, m_maximise);
    setTabOrder(m_maximise, m_close);
}

bool WindowControls::focusWhatFollows()
{
    for (QWidget *next = m_close->nextInFocusChain(); next != m_close; next = next->nextInFocusChain()) {
        const bool isStop =
            (next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisibleTo(window()) && next->isEnabled();
        if (isStop && next->window() == window()) {
            next->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return false;
}

bool WindowControls::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        place();
    } else if (event->type() == QEvent::WindowStateChange) {
        render();
    }
    return false;
}

void WindowControls::place()
{
    constexpr int fromSide = 8;
    // A desktop that is read from right to left has its buttons on the other side, as everything else.
    const bool left = controlsAtLeft()() != QGuiApplication::isRightToLeft();
    setLayoutDirection(left ? Qt::RightToLeft : Qt::LeftToRight); // the one that closes stays outermost
    move(left ? fromSide : window()->width() - width() - fromSide, 4);
}

void WindowControls::render()
{
    if (isMaximised()) {
        m_maximise->setPicture(Icon::WinRestore, tr("Restore"));
    } else {
        m_maximise->setPicture(Icon::WinMaximise, tr("Maximise"));
    }
}

bool WindowControls::isMaximised() const
{
    return m_unmanaged || window()->isMaximized();
}

void WindowControls::toggleMaximised()
{
    if (!isMaximised()) {
        m_restored = window()->geometry();
        window()->showMaximized();
        QTimer::singleShot(managerPatience, this, &WindowControls::maximiseUnmanaged);
        return;
    }
    window()->showNormal();
    // Without a manager nobody remembers where the window was, and the state says "normal" whatever its size.
    if (std::exchange(m_unmanaged, false)) {
        window()->setGeometry(m_restored);
    }
    render();
}

void WindowControls::maximiseUnmanaged()
{
    if (!window()->isMaximized() || window()->geometry() != m_restored) {
        return;
    }
    m_unmanaged = true;
    window()->setGeometry(screen()->availableGeometry());
    render();
}

} // namespace quillfen
