// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/appdelegate.h"

#include "shell/activity/activitywindow.h"
#include "shell/desktop/notifier.h"
#include "shell/desktop/statusarea.h"
#include "shell/mainwindow.h"
#include "shell/process/activation.h"
#include "shell/process/launch.h"
#include "shell/rootview.h"
#include "shell/window/aboutpanel.h"
#include "shell/window/shortcutswindow.h"
#include "state/appstate.h"

#include <QApplication>
#include <QFileOpenEvent>

#include <algorithm>
#include <utility>

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

/// As far as a program can know: a window that others cover counts as seen.
bool isSeen(const QWidget *window)
{
    return window != nullptr && window->isVisible() && !window->isMinimized();
}

/// The last of them that is one stays, as the pending enrolment code.
void takeLinks(AppState &state, const QStringList &links)
{
    for (const QString &link : links) {
        if (isProductLink(link) && isAcceptable(link)) {
            state.pendingEnrol = link;
        }
    }
}

void bringToFront(QWidget &window, const Wish &wish = {})
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    platform::bringForward(window, wish);
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
    // A window beside an open question would be dead, and lie over it: the question comes forward instead.
    const auto unlessAsked = [this](auto show) {
        return [this, show] {
            if (QWidget *const question = QApplication::activeModalWidget()) {
                bringToFront(*question);
            } else {
                (this->*show)();
            }
        };
    };
    connect(m_statusArea, &StatusArea::activityRequested, this, unlessAsked(&AppDelegate::showActivity));
    connect(m_statusArea, &StatusArea::aboutRequested, this, unlessAsked(&AppDelegate::about));
    connect(m_statusArea, &StatusArea::quitRequested, this, &AppDelegate::quitRequested);
    m_statusArea->open();
}

void AppDelegate::watchOutcomes(std::function<std::unique_ptr<DesktopNotifications>()> make)
{
    const std::shared_ptr<AppState> state = m_current.lock();
    if (!state || m_notifier != nullptr) {
        return;
    }
    const auto outcomesAreSeen = [] {
        return isSeen(firstWindow<MainWindow>()) || isSeen(firstWindow<ActivityWindow>());
    };
    m_notifier = new Notifier(state, outcomesAreSeen, std::move(make), this);
    connect(m_notifier, &Notifier::openRequested, this, [this](const QString &activationToken) {
        Wish wish;
        wish.activationToken = activationToken;
        grant(wish);
    });
}

void AppDelegate::open(const QStringList &links)
{
    if (const std::shared_ptr<AppState> state = m_current.lock()) {
        QMetaObject::invokeMethod(
            this, [state, links] { takeLinks(*state, links); }, Qt::QueuedConnection);
    }
}

void AppDelegate::grant(const Wish &wish)
{
    const std::shared_ptr<AppState> state = m_current.lock();
    if (state && !wish.code.isEmpty() && isAcceptable(wish.code)) {
        state->pendingEnrol = wish.code;
    }
    if (state) {
        takeLinks(*state, wish.links); // before the window: a first run that comes with it takes the link at once
    }
    auto *window = firstWindow<MainWindow>();
    if (wish.show && window != nullptr) {
        bringToFront(*window, wish);
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
        heed(*panel);
    }
    bringToFront(*panel);
    return panel;
}

ShortcutsWindow *AppDelegate::showShortcuts()
{
    auto *panel = firstWindow<ShortcutsWindow>();
    if (panel == nullptr) {
        const std::shared_ptr<AppState> state = m_current.lock();
        panel = new ShortcutsWindow(shownKeys(state && state->isAdmin()), firstWindow<MainWindow>());
        heed(*panel);
    }
    bringToFront(*panel);
    return panel;
}

ActivityWindow *AppDelegate::showActivity()
{
    auto *panel = firstWindow<ActivityWindow>();
    if (panel == nullptr) {
        const std::shared_ptr<AppState> state = m_current.lock();
        if (!state) {
            return nullptr;
        }
        panel = new ActivityWindow(state, firstWindow<MainWindow>());
        if (m_activitySize.isValid()) {
            panel->resize(m_activitySize);
        }
        connect(panel, &QDialog::finished, this, [this, panel] { m_activitySize = panel->size(); });
        heed(*panel);
    }
    bringToFront(*panel);
    return panel;
}

/// The program's keys mean in every window what they mean in the first.
void AppDelegate::heed(PanelWindow &panel)
{
    connect(&panel, &PanelWindow::quitRequested, this, &AppDelegate::quitRequested);
    connect(&panel, &PanelWindow::shortcutsRequested, this, &AppDelegate::showShortcuts);
    connect(&panel, &PanelWindow::activityRequested, this, &AppDelegate::showActivity);
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
