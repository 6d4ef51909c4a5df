// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/restorepointrow.h"

#include "state/format.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int momentWidth = 220;
constexpr int padding = 16;
constexpr int scrollBarRoom = 8;

} // namespace

RestorePointRow::RestorePointRow(QWidget *parent)
    : QWidget(parent), m_moment(new AgentLabel(QString(), Type::Body, Theme::heading)),
      m_label(new AgentLabel(QString(), Type::Body, Theme::text)),
      m_open(new Button(tr("Open"), SecondaryButtonStyle{compact})),
      m_line(row({m_moment, Item{m_label, 1}, m_open}, 12, QMargins(padding, 0, padding, 0)))
{
    setRole(this, QAccessible::ListItem);
    m_moment->setFixedWidth(scaled(momentWidth));
    setLayout(m_line);
    connect(m_open, &QAbstractButton::clicked, this, &RestorePointRow::opened);
}

void RestorePointRow::setPoint(std::size_t place, const QString &timestamp, const QString &label)
{
    m_place = place;
    m_timestamp = timestamp;
    const QString moment = exactDate(timestamp);
    m_moment->setText(moment);
    m_label->setText(label);
    const QString shown = madeVisible(moment);
    setAccessibleName(label.isEmpty() ? shown : QStringLiteral("%1, %2").arg(shown, madeVisible(label)));
    // Buttons of rows say to a screen reader which row they belong to.
    m_open->setAccessibleName(QStringLiteral("%1, %2").arg(m_open->text(), shown));
}

void RestorePointRow::setBesideScrollBar(bool beside)
{
    const int far = padding + (beside ? scrollBarRoom : 0);
    m_line->setContentsMargins(padding, 0, far, 0);
}

} // namespace quillfen
