// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/appdelegate.h"

#include "shell/aboutpanel.h"
#include "shell/launch.h"
#include "shell/mainwindow.h"
#include "shell/statusarea.h"
#include "state/appstate.h"

#include <QApplication>
#include <QFileOpenEvent>

#include <algorithm>

namespace quillfen {

namespace {

template <typename Window>
Window *firstWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found =
        std::ranges::find_if(windows, [](QWidget *window) { return qobject_cast<Window *>(window) != nullptr; });
    return found == windows.end() ? nullptr : static_cast<Window *>(*found);
}

bool anyWindowVisible()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](QWidget *window) { return window->isVisible(); });
}

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

AppDelegate::AppDelegate(QStringList arguments, QObject *parent) : QObject(parent), m_arguments(std::move(arguments))
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, &QGuiApplication::lastWindowClosed, this, &AppDelegate::lastWindowClosed);
    // macOS sends this for every click on the Dock icon, also while the program is active already.
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            reopen(anyWindowVisible());
        }
    });
    qApp->installEventFilter(this);
}

void AppDelegate::windowAppeared(const std::shared_ptr<AppState> &state)
{
    m_current = state;
    if (const std::optional<QString> code = pendingEnrolFrom(m_arguments)) {
        state->pendingEnrol = *code;
    }
    if (asksForNewVolume(startSectionWish())) {
        state->showNewVolume = true;
    }
    state->connect();
}

void AppDelegate::openStatusArea()
{
    m_statusArea = new StatusArea(this);
    connect(m_statusArea, &StatusArea::openRequested, this, [this] { reopen(false); });
    connect(m_statusArea, &StatusArea::aboutRequested, this, &AppDelegate::about);
    connect(m_statusArea, &StatusArea::quitRequested, this, &AppDelegate::quitRequested);
    m_statusArea->open();
}

void AppDelegate::open(const QStringList &links)
{
    const std::shared_ptr<AppState> state = m_current.lock();
    if (!state) {
        return;
    }
    for (const QString &link : links) {
        if (isProductLink(link)) {
            QMetaObject::invokeMethod(
                this, [state, link] { state->pendingEnrol = link; }, Qt::QueuedConnection);
        }
    }
}

bool AppDelegate::reopen(bool hasVisibleWindows)
{
    if (hasVisibleWindows) {
        return true;
    }
    if (auto *window = firstWindow<MainWindow>()) {
        bringToFront(*window);
    }
    return true;
}

AboutPanel *AppDelegate::about()
{
    auto *panel = firstWindow<AboutPanel>();
    if (panel == nullptr) {
        const std::shared_ptr<AppState> state = m_current.lock();
        const QString agentVersion = state ? state->agentVersion() : QString();
        panel = new AboutPanel(AppState::appVersion(), tr("agent %1").arg(agentVersion), firstWindow<MainWindow>());
        connect(panel, &AboutPanel::quitRequested, this, &AppDelegate::quitRequested);
    }
    bringToFront(*panel);
    return panel;
}

bool AppDelegate::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::FileOpen) {
        open({static_cast<QFileOpenEvent *>(event)->url().toString(QUrl::FullyEncoded)});
    }
    return false;
}

void AppDelegate::lastWindowClosed()
{
    if (m_statusArea == nullptr || !m_statusArea->isShown()) {
        Q_EMIT quitRequested();
    }
}

} // namespace quillfen
