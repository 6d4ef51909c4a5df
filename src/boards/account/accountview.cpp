// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "accountview.h"

#include "accountrows.h"
#include "enginecard.h"
#include "plancard.h"
#include "tokenscard.h"

#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/card.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace quillfen {

namespace {

constexpr QMargins rowMargins{16, 12, 16, 12};

} // namespace

AccountView::AccountView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_state(std::move(state)), m_model(std::make_shared<AccountModel>(m_state, revealer())),
      m_frame(new BoardFrame(tr("Account & engine"))),
      m_observer(
          {&m_state->account}, [this] { render(); }, m_state->timing().frame)
{
    m_frame->body()->addWidget(new PlanCard(m_state));
    m_frame->body()->addWidget(new EngineCard(m_model));
    m_frame->body()->addWidget(new TokensCard(m_model));
    m_frame->body()->addWidget(accountActions());
    setLayout(column({Item{m_frame, 1}}));
    render();
    reload();
}

AccountView::~AccountView() = default;

void AccountView::reload()
{
    start(m_model->load());
}

/// The secret comes in answer to a call; its dialog stops whoever shows it, so that is not the one who brings it. Nor
/// does it wait for this board, which may be gone by then.
AccountModel::Reveal AccountView::revealer()
{
    return [view = QPointer<AccountView>(this)](const QString &what, const QString &secret) {
        QTimer::singleShot(0, qApp, [view, what, secret] { showSecret(view, what, secret); });
    };
}

QWidget *AccountView::accountActions()
{
    auto *const signOut = new Button(tr("Sign out this Mac"), SecondaryButtonStyle{});
    m_recover = new Button(tr("Recover"), SecondaryButtonStyle{});
    m_close = new Button(tr("Close account…"), DangerButtonStyle{});
    AccountModel *const model = m_model.get();
    // Questions are asked after the press: assistive technology that presses a button waits until that has returned.
    connect(signOut, &QAbstractButton::clicked, this, &AccountView::askToSignOut, Qt::QueuedConnection);
    connect(m_recover, &QAbstractButton::clicked, this, [model] { start(model->recoverAccount()); });
    connect(m_close, &QAbstractButton::clicked, this, &AccountView::askToClose, Qt::QueuedConnection);
    auto *const actions = new QWidget;
    actions->setLayout(row({signOut, Stretch{}, m_recover, m_close}, 8, rowMargins));
    auto *const card = new Card;
    card->addRow(actions);
    return card;
}

void AccountView::askToSignOut()
{
    const std::shared_ptr<AccountModel> model = m_model;
    const bool agreed = confirm(this, tr("Sign out this Mac?"),
                                tr("Both of this Mac's tokens (the app's and the quill command's) are revoked. Your "
                                   "volumes and their history stay in the vault."),
                                tr("Sign out"), Destructive::Yes);
    if (agreed) {
        start(model->signOut());
    }
}

void AccountView::askToClose()
{
    const std::shared_ptr<AccountModel> model = m_model;
    // The dialog itself asks for the word.
    const bool agreed = typedConfirm(this, tr("Close your account?"),
                                     tr("Every volume is scheduled for destruction after the grace period. Until then, "
                                        "Recover undoes it."),
                                     QStringLiteral("CLOSE"), tr("Close account"));
    if (agreed) {
        start(model->closeAccount());
    }
}

void AccountView::render()
{
    const bool closing = isClosing(m_state->account());
    Button *const coming = closing ? m_recover : m_close;
    Button *const going = closing ? m_close : m_recover;
    coming->setVisible(true);
    // Hiding what has the focus would hand it on to whatever follows, which is the window's own buttons.
    if (window()->focusWidget() == going) {
        coming->setFocus(Qt::TabFocusReason);
    }
    going->setVisible(false);
}

} // namespace quillfen
