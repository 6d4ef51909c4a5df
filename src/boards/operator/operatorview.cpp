// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/operatorview.h"

#include "boards/operator/opexportsview.h"
#include "boards/operator/ophubsview.h"
#include "boards/operator/optokensview.h"
#include "boards/operator/opusersview.h"
#include "ui/controls/segmented.h"
#include "ui/layout.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/scrollarea.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

namespace quillfen {

namespace {

/// Between the tabs and the first card.
constexpr int gap = 16;

} // namespace

OperatorView::OperatorView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_state(std::move(state)), m_frame(new BoardFrame(tr("Operator"))),
      m_choice(new Segmented(tr("Operator")))
{
    for (const QString &title : {tr("Hubs"), tr("Users"), tr("Tokens"), tr("Exports")}) {
        m_choice->addPart(title);
    }
    m_frame->body()->addWidget(m_choice);
    setLayout(column({Item{m_frame, 1}}));
    m_frame->scrollArea()->viewport()->installEventFilter(this);
    connect(m_choice, &Segmented::currentChanged, this,
            [this](int index) { showTab(static_cast<OperatorTab>(index)); });
    showTab(m_tab);
}

void OperatorView::setTab(const QString &name)
{
    m_choice->setCurrentIndex(static_cast<int>(operatorTab(name)));
}

OpTab *OperatorView::make(OperatorTab tab) const
{
    switch (tab) {
    case OperatorTab::Users:
        return new OpUsersView(m_state);
    case OperatorTab::Tokens:
        return new OpTokensView(m_state);
    case OperatorTab::Exports:
        return new OpExportsView(m_state);
    case OperatorTab::Hubs:
        break;
    }
    return new OpHubsView(m_state);
}

OpTab *OperatorView::current() const
{
    return m_tabs.at(static_cast<std::size_t>(m_tab));
}

void OperatorView::showTab(OperatorTab tab)
{
    if (current() != nullptr) {
        // What is hidden hands the keyboard on to whatever follows, which may be the button that minimises the window.
        if (current()->isAncestorOf(QApplication::focusWidget())) {
            m_choice->findChildren<QAbstractButton *>().at(static_cast<int>(tab))->setFocus(Qt::OtherFocusReason);
        }
        current()->hide();
    }
    m_tab = tab;
    OpTab *&shown = m_tabs.at(static_cast<std::size_t>(tab));
    if (shown == nullptr) {
        shown = make(tab);
        m_frame->body()->addWidget(shown);
    }
    fit();
    shown->show();
    shown->load();
}

void OperatorView::reload()
{
    current()->load();
}

void OperatorView::focusSearch()
{
    current()->focusSearch();
}

void OperatorView::fit()
{
    const int below = m_frame->scrollArea()->viewport()->height() - m_frame->margin();
    current()->setRoom(std::max(0, below - m_choice->height() - gap));
}

bool OperatorView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == m_frame->scrollArea()->viewport()) {
        fit();
    }
    return Board::eventFilter(watched, event);
}

} // namespace quillfen
