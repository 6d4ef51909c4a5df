// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/rootview.h"

#include "boards/volumes/newvolumesheet.h"
#include "dialogs/dialogs.h"
#include "shell/arrival/agentdownview.h"
#include "shell/arrival/firstrunview.h"
#include "shell/mainview/mainview.h"
#include "state/appstate.h"
#include "ui/overlays/sheet.h"
#include "ui/overlays/toast.h"
#include "ui/style/fade.h"

#include <QApplication>
#include <QPointer>

using namespace std::chrono_literals;

namespace quillfen {

namespace {

// An agent that is there answers within this time, so that nothing but the window's background comes before its answer.
// Longer than this, an empty window looks broken.
constexpr auto patience = 250ms;

} // namespace

std::optional<Screen> screenFor(const AppState &state, bool waited)
{
    if (!state.connected()) {
        return waited || state.agentError() ? std::optional(Screen::AgentDown) : std::nullopt;
    }
    if (!state.authKnown() && !state.signedIn() && !waited) {
        return std::nullopt;
    }
    return state.signedIn() ? Screen::Main : Screen::FirstRun;
}

RootView::RootView(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)),
      m_observer({&m_state->connected, &m_state->agentError, &m_state->auth, &m_state->toast, &m_state->showNewVolume},
                 [this] { render(); })
{
    setProperty("ownFocus", true);
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_waited = true;
        render();
    });
    render();
}

RootView::~RootView() = default;

MainView *RootView::mainView() const
{
    return qobject_cast<MainView *>(m_view);
}

void RootView::showSection(Section section)
{
    if (MainView *view = mainView()) {
        view->setSection(section);
    } else {
        m_wishedSection = section;
    }
}

void RootView::showEvent(QShowEvent *)
{
    if (std::exchange(m_hasAppeared, true)) {
        return;
    }
    m_patience.start();
    takeFocus();
    // Queued, so that the window is on its way to the screen before the connection is opened.
    QMetaObject::invokeMethod(this, &RootView::appeared, Qt::QueuedConnection);
}

void RootView::resizeEvent(QResizeEvent *)
{
    if (m_view != nullptr) {
        m_view->setGeometry(rect());
    }
}

void RootView::render()
{
    watchConnection();
    if (const std::optional<Screen> screen = screenFor(*m_state, m_waited); screen && screen != m_screen) {
        route(*screen);
    }
    renderSheet();
    renderToast();
}

/// An agent that has just come back has not said yet who is signed in; what is shown stays until it has.
void RootView::watchConnection()
{
    if (std::exchange(m_connected, m_state->connected()) || !m_connected || m_state->authKnown()) {
        return;
    }
    m_waited = false;
    if (m_hasAppeared) {
        m_patience.start();
    }
}

void RootView::route(Screen screen)
{
    if (m_screen) {
        crossFade(this);
    }
    m_screen = screen;
    if (m_view != nullptr) {
        if (m_view->isAncestorOf(QApplication::focusWidget())) {
            setFocus();
        }
        // Not at once: the view may be further up on the stack, with a dialog that it has opened.
        m_view->hide();
        m_view->deleteLater();
    }
    m_view = create(screen);
    m_view->setGeometry(rect());
    m_view->lower();
    m_view->show();
    if (window()->focusWidget() == this) {
        takeFocus();
    }
}

/// The content holds the focus until Tab carries it to the first control; a window would choose one by itself. The
/// first run is about one field: it waits for the code that somebody is about to paste.
void RootView::takeFocus()
{
    (m_screen == Screen::FirstRun ? m_view : this)->setFocus();
}

QWidget *RootView::create(Screen screen)
{
    switch (screen) {
    case Screen::AgentDown:
        return new AgentDownView(m_state, this);
    case Screen::FirstRun:
        return createFirstRun();
    case Screen::Main:
        break;
    }
    auto *view = new MainView(m_state, this);
    connect(view, &MainView::aboutRequested, this, &RootView::aboutRequested);
    connect(view, &MainView::shortcutsRequested, this, &RootView::shortcutsRequested);
    connect(view, &MainView::activityRequested, this, &RootView::activityRequested);
    if (m_wishedSection) {
        view->setSection(*std::exchange(m_wishedSection, std::nullopt));
    }
    return view;
}

QWidget *RootView::createFirstRun()
{
    // The question about the engine comes when signing in has moved the window on: it stands over the window then.
    const QPointer<QWidget> over = window();
    const auto ask = [over](const QString &title, const QString &text, const QString &verb) {
        return confirm(over, title, text, verb, Destructive::No);
    };
    return new FirstRunView(m_state, std::make_shared<FirstRunModel>(m_state, ask), this);
}

/// The sheet lies over whichever screen there is, and outlives a change of screens with what was typed into it.
void RootView::renderSheet()
{
    const bool wanted = m_screen && m_state->showNewVolume();
    if (wanted && m_newVolume == nullptr) {
        m_newVolume = NewVolumeSheet::present(window(), m_state);
    } else if (!wanted && m_newVolume != nullptr) {
        m_newVolume->leave();
        m_newVolume = nullptr;
        if (window()->focusWidget() == nullptr) {
            takeFocus(); // what had the focus before the sheet has gone meanwhile
        }
    }
}

void RootView::renderToast()
{
    const QString text = m_state->toast().value_or(QString());
    if (m_toast == nullptr && text.isEmpty()) {
        return;
    }
    if (m_toast == nullptr) {
        m_toast = new Toast(window());
    }
    m_toast->setText(text);
}

} // namespace quillfen
