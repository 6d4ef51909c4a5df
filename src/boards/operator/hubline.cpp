// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/hubline.h"

#include "boards/operator/opmodel.h"
#include "boards/operator/statepill.h"
#include "ui/controls/buttons.h"
#include "ui/lists/listrow.h"
#include "ui/parts/pill.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/theme.h"

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int hubHeight = 48;
constexpr int replicaHeight = 40;
constexpr int narrowBelow = 780;

using Columns = std::shared_ptr<const std::vector<Column>>;

/// Name, role, address, state, what is sold, buttons.
const Columns &hubColumns()
{
    static const Columns columns = std::make_shared<const std::vector<Column>>(
        std::vector<Column>{{96, 84, 1}, {80, 76, 0}, {196, 150, 2}, {108, 92, 0}, {68, 64, 0}, {278, 257, 0}});
    return columns;
}

/// The same with the address left out.
const std::vector<Column> &narrowHubColumns()
{
    static const std::vector<Column> columns{{110, 80, 1}, {72, 64, 0}, {108, 80, 0}, {60, 50, 0}, {280, 257, 0}};
    return columns;
}

/// Name, address, state, lag.
const Columns &replicaColumns()
{
    static const Columns columns = std::make_shared<const std::vector<Column>>(
        std::vector<Column>{{184, 110, 1}, {196, 150, 1}, {184, 100, 0}, {280, 90, 0}});
    return columns;
}

} // namespace

HubLine::HubLine(QWidget *parent)
    : CellRow(hubColumns(), parent), m_name(new AgentLabel({}, Type::BodySemibold, Theme::heading)),
      m_role(statePill()), m_address(new AgentLabel({}, Type::Mono, Theme::text)),
      m_state(new StateText({}, Theme::muted)), m_sold(new AgentLabel({}, Type::Body, Theme::text)),
      m_poll(new Button(tr("Poll"), SecondaryButtonStyle{compact})),
      m_rescan(new Button(tr("Rescan"), SecondaryButtonStyle{compact})),
      m_promote(new Button(tr("Promote"), SecondaryButtonStyle{compact})),
      m_demote(new Button(tr("Demote"), DangerButtonStyle{})), m_retire(new Button(tr("Retire"), DangerButtonStyle{}))
{
    m_address->setElideMode(Qt::ElideMiddle);
    m_state->setSurface(StateSurface::Card);
    m_demote->setControlHeight(compact);
    m_retire->setControlHeight(compact);
    for (QWidget *const cell : std::initializer_list<QWidget *>{m_name, m_role, m_address, m_state, m_sold}) {
        addCell(cell);
    }
    for (Button *const button : {m_poll, m_rescan, m_promote, m_demote, m_retire}) {
        addButton(button);
    }
    setFixedHeight(scaled(hubHeight));
    connect(m_poll, &QAbstractButton::clicked, this, &HubLine::pollWanted);
    connect(m_rescan, &QAbstractButton::clicked, this, &HubLine::rescanWanted);
    connect(m_promote, &QAbstractButton::clicked, this, &HubLine::promoteWanted);
    connect(m_demote, &QAbstractButton::clicked, this, &HubLine::demoteWanted);
    connect(m_retire, &QAbstractButton::clicked, this, &HubLine::retireWanted);
}

void HubLine::setHub(const HubRow &hub, const QSet<QString> &running)
{
    m_hub = hub;
    m_name->setText(hub.name);
    showState(m_role, hub.role);
    m_address->setText(hub.address);
    m_state->setState(hub.state, stateColour(hub.state));
    m_state->setVisible(!hub.state.isEmpty());
    m_sold->setText(hub.sold);
    const auto runs = [&](const char *method) { return running.contains(OpModel::runningKey(method, hub.id)); };
    m_poll->setRunning(runs("admin.hubs.poll"));
    m_rescan->setRunning(runs("admin.hubs.rescan"));
    m_promote->setRunning(runs("admin.hubs.promote"));
    m_demote->setRunning(runs("admin.hubs.demote"));
    m_retire->setRunning(runs("admin.hubs.retire"));
    m_promote->setVisible(!hub.primary);
    m_demote->setVisible(hub.primary);
    m_retire->setVisible(!hub.primary);
    setRowName(hub.name, tr("Role %1, address %2, state %3, %4").arg(hub.role, hub.address, hub.state, hub.sold));
    arrange();
}

std::vector<QRect> HubLine::rooms(const QRect &inner) const
{
    if (width() >= scaled(narrowBelow)) {
        return CellRow::rooms(inner);
    }
    const std::vector<QRect> columns = cellRects(narrowHubColumns(), inner);
    const QRect &name = columns[0];
    const QRect &role = columns[1];
    const int half = lineHeight(Type::Body);
    const int top = (height() - half - lineHeight(Type::Mono)) / 2;
    return {QRect(name.left(), top, name.width(), half), QRect(role.left(), top, role.width(), half),
            QRect(name.left(), top + half, role.right() - name.left(), lineHeight(Type::Mono)), columns[2], columns[3]};
}

void HubLine::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

ReplicaLine::ReplicaLine(QWidget *parent)
    : CellRow(replicaColumns(), parent), m_name(new AgentLabel({}, Type::BodySemibold, Theme::heading)),
      m_address(new AgentLabel({}, Type::Mono, Theme::text)), m_state(new StateText({}, Theme::muted)),
      m_lag(new AgentLabel({}, Type::Body, Theme::heading))
{
    m_address->setElideMode(Qt::ElideMiddle);
    m_state->setSurface(StateSurface::Card);
    m_lag->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QWidget *const cell : std::initializer_list<QWidget *>{m_name, m_address, m_state, m_lag}) {
        addCell(cell);
    }
    setFixedHeight(scaled(replicaHeight));
}

void ReplicaLine::setReplica(const ReplicaRow &replica)
{
    m_name->setText(replica.name);
    m_address->setText(replica.address);
    m_state->setState(replica.state, stateColour(replica.state));
    m_state->setVisible(!replica.state.isEmpty());
    m_lag->setText(replica.lag);
    setRowName(replica.name, tr("Address %1, state %2, %3").arg(replica.address, replica.state, replica.lag));
    arrange();
}

void ReplicaLine::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

} // namespace quillfen
