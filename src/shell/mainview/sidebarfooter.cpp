// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/sidebarfooter.h"

#include "shell/mainview/darktextbutton.h"
#include "shell/window/keymap.h"
#include "state/appstate.h"
#include "state/format.h"
#include "ui/layout.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/parts/bar.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

constexpr int paddingX = 20;
constexpr int paddingY = 16;
constexpr int paddingBelow = 8; // the last row is higher than its words
constexpr int linkHeight = 28;
constexpr int dotRoom = 16; // an 8-px dot and its gap

} // namespace

QString versionLine(const QString &appVersion, const QString &agentVersion)
{
    const QString line = SidebarFooter::tr("Quillfen %1").arg(appVersion);
    if (agentVersion.isEmpty() || agentVersion == appVersion) {
        return line;
    }
    return line + SidebarFooter::tr(" · agent %1").arg(agentVersion);
}

QString engineLine(const AppState &state)
{
    if (state.engineRunning()) {
        return SidebarFooter::tr("Engine running");
    }
    const QString status = str(state.vm(), "status");
    return status.isEmpty() ? SidebarFooter::tr("Engine not set up") : SidebarFooter::tr("Engine %1").arg(status);
}

QString planLine(const AppState &state)
{
    return SidebarFooter::tr("%1 of %2").arg(gb(state.allocatedBytes()), gb(state.capacityBytes()));
}

SidebarFooter::SidebarFooter(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_plan(new QWidget),
      m_planName(new AgentLabel({}, Type::CaptionSemibold, Theme::dBright)),
      m_planLine(new Label({}, Type::Caption, Theme::dText)), m_bar(new Bar(0.0, Theme::dLine, Theme::accent, 4)),
      m_account(new QWidget), m_email(new AgentLabel({}, Type::Caption, Theme::dBright)),
      m_version(new AgentLabel({}, Type::MicroRegular, Theme::dText)),
      m_engine(new AgentLabel({}, Type::Caption, Theme::dText)),
      m_observer({&m_state->auth, &m_state->account, &m_state->vm, &m_state->volumes, &m_state->agentVersion},
                 [this] { render(); })
{
    m_email->setElideMode(Qt::ElideMiddle);
    m_bar->setAccessibleName(tr("Plan"));
    m_plan->setLayout(column({row({Item{m_planName, 1}, m_planLine}), Space{8}, m_bar, Space{14}}));
    m_account->setLayout(column({m_email, Space{2}}));
    setLayout(column(
        {m_plan, m_account, m_version, Space{10}, row({Space{dotRoom}, Item{m_engine, 1}}, 0), Space{4}, createLinks()},
        0, QMargins(paddingX, paddingY + 1, paddingX, paddingBelow)));
    render();
}

/// Each opens a window beside this one; its keys stand in its tooltip.
QWidget *SidebarFooter::createLinks()
{
    auto *const links = new QWidget;
    QBoxLayout *const line = row({}, 16);
    const auto add = [&](const QString &label, KeyAction action, void (SidebarFooter::*asked)()) {
        auto *const link = new DarkTextButton;
        link->setLabel(label, true);
        link->setQuiet();
        link->setFixedHeight(scaled(linkHeight));
        link->setToolTip(keysOf(action).value(0).toString(QKeySequence::NativeText));
        connect(link, &QAbstractButton::clicked, this, asked);
        line->addWidget(link);
    };
    add(tr("Activity"), KeyAction::ShowActivity, &SidebarFooter::activityRequested);
    add(tr("Shortcuts"), KeyAction::ShowShortcuts, &SidebarFooter::shortcutsRequested);
    line->addStretch();
    links->setLayout(line);
    return links;
}

void SidebarFooter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintHairline(painter, QRectF(0, 0, width(), 1), Theme::dLine);
    const QRectF mark(paddingX, m_engine->geometry().center().y() - 3.5, 8, 8);
    paintStateMark(painter, mirrored(*this, mark).center(),
                   m_state->engineRunning() ? Theme::engineOn : Theme::warnBright);
}

void SidebarFooter::render()
{
    const std::int64_t capacity = m_state->capacityBytes();
    m_plan->setVisible(capacity > 0);
    if (capacity > 0) {
        m_planName->setText(m_state->planName());
        m_planLine->setText(planLine(*m_state));
        m_bar->setFraction(static_cast<double>(m_state->allocatedBytes()) / static_cast<double>(capacity));
        m_bar->setValueText(planLine(*m_state));
    }
    const QString email = str(m_state->account(), "email");
    m_email->setText(email);
    m_account->setVisible(!email.isEmpty());
    m_version->setText(versionLine(AppState::appVersion(), m_state->agentVersion()));
    m_engine->setText(engineLine(*m_state));
    update();
}

} // namespace quillfen
