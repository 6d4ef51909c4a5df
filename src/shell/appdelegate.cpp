// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/appdelegate.h"

#include "shell/aboutpanel.h"
#include "shell/launch.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
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

/// Lets the next window that comes forward do so in the name of the start that asked for it: Qt's Wayland side reads
/// the token there when it asks for the focus, and clears it.
void takeActivation(const Wish &wish)
{
    if (!wish.activationToken.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", wish.activationToken.toUtf8());
    }
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
    if (!m_current.expired()) {
        return;
    }
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
    const std::shared_ptr<AppState> state = m_current.lock();
    if (!state || m_statusArea != nullptr) {
        return;
    }
    m_statusArea = new StatusArea(state, this);
    const auto onWish = [this](void (StatusArea::*asked)(), QLatin1StringView action) {
        connect(m_statusArea, asked, this, [this, action] {
            Wish wish;
            wish.action = action;
            grant(wish);
        });
    };
    onWish(&StatusArea::openRequested, {});
    onWish(&StatusArea::timeTravelRequested, QLatin1StringView(action::timeTravel));
    onWish(&StatusArea::newVolumeRequested, QLatin1StringView(action::newVolume));
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
        if (isProductLink(link) && isAcceptable(link)) {
            QMetaObject::invokeMethod(
                this, [state, link] { state->pendingEnrol = link; }, Qt::QueuedConnection);
        }
    }
}

void AppDelegate::grant(const Wish &wish)
{
    const std::shared_ptr<AppState> state = m_current.lock();
    if (state && !wish.code.isEmpty() && isAcceptable(wish.code)) {
        state->pendingEnrol = wish.code;
    }
    open(wish.links);
    auto *window = firstWindow<MainWindow>();
    if (wish.show && window != nullptr) {
        takeActivation(wish);
        bringToFront(*window);
    }
    if (state && wish.action == QLatin1StringView(action::newVolume)) {
        state->showNewVolume = true;
    } else if (state && window != nullptr && wish.action == QLatin1StringView(action::timeTravel)) {
        // Who is on screen hears the notification; a workspace that is still to come begins there.
        if (window->root().mainView() == nullptr) {
            window->root().showSection(Section::TimeTravel);
        }
        state->notifications().post(Notifications::navigate, {{"section", "timetravel"}});
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
    if (m_quitOnClose) {
        Q_EMIT quitRequested();
    }
}

} // namespace quillfen
