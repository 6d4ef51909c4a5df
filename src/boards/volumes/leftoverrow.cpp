// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/leftoverrow.h"

#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/lists/listrow.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int rowHeight = 48;
constexpr int containerWidth = 280;
constexpr int portsWidth = 170;
constexpr QMargins sides{16, 0, 16, 0};

} // namespace

OrphanRow::OrphanRow(QWidget *parent)
    : QWidget(parent), m_container(new AgentLabel(QString(), Type::Mono, Theme::heading)),
      m_status(new StateText(QString(), Theme::muted)), m_ports(new AgentLabel(QString(), Type::Mono, Theme::text)),
      m_remove(new Button(tr("Remove"), DangerButtonStyle{}))
{
    m_container->setElideMode(Qt::ElideMiddle);
    m_container->setMaximumWidth(scaled(containerWidth));
    m_ports->setFixedWidth(scaled(portsWidth));
    m_status->setSurface(StateSurface::Card);
    m_remove->setControlHeight(compact);
    setMinimumHeight(scaled(rowHeight));
    setLayout(row({Item{m_container, 2}, Item{m_status, 2}, m_ports, m_remove}, 12, sides));
    connect(m_remove, &QAbstractButton::clicked, this, &OrphanRow::removed);
}

void OrphanRow::setAppliance(const QString &container, const QString &status, const QString &ports)
{
    const bool runs = status.startsWith(QLatin1String("Up"));
    m_container->setText(container);
    m_status->setState(status, runs ? Theme::ok : Theme::muted);
    m_ports->setText(ports);
    nameRowButton(m_remove, container);
}

void OrphanRow::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

CopyRow::CopyRow(QWidget *parent)
    : QWidget(parent), m_name(new AgentLabel(QString(), Type::BodyMedium, Theme::heading)),
      m_origin(new AgentLabel(QString(), Type::Caption, Theme::text)),
      m_promote(new Button(tr("Make it a volume"), PrimaryButtonStyle{compact})),
      m_discard(new Button(tr("Discard"), DangerButtonStyle{}))
{
    m_discard->setControlHeight(compact);
    setMinimumHeight(scaled(rowHeight));
    auto *const line = row({}, 12, sides);
    line->addLayout(column({m_name, m_origin}, 0, QMargins{0, 6, 0, 6}), 1);
    line->addWidget(m_promote);
    line->addWidget(m_discard);
    setLayout(line);
    connect(m_promote, &QAbstractButton::clicked, this, &CopyRow::promoted);
    connect(m_discard, &QAbstractButton::clicked, this, &CopyRow::discarded);
}

void CopyRow::setCopy(const QString &name, const QString &origin)
{
    m_name->setText(name);
    m_origin->setText(origin);
    nameRowButton(m_promote, name);
    nameRowButton(m_discard, name);
}

const QString &CopyRow::name() const
{
    return m_name->text();
}

void CopyRow::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

} // namespace quillfen
