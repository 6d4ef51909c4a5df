// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/panel/menubarvolume.h"

#include "shell/mainview/darktextbutton.h"
#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int sideMargin = 8;
constexpr int padding = 8;
constexpr int topPadding = 7;
constexpr int radius = 6;

} // namespace

MenuBarVolume::MenuBarVolume(QWidget *parent)
    : QWidget(parent), m_name(new DarkTextButton), m_offsite(new AgentLabel({}, Type::Caption, Theme::dText)),
      m_line(new AgentLabel({}, Type::Caption, Theme::dText))
{
    setRole(this, QAccessible::ListItem);
    m_offsite->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_offsite->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    setLayout(column({row({Item{m_name, 1}, m_offsite}), m_line, Stretch{}}, 0,
                     QMargins(sideMargin + padding, topPadding, sideMargin + padding, topPadding)));
    connect(m_name, &QAbstractButton::clicked, this, &MenuBarVolume::open);
}

void MenuBarVolume::show(const MenuBarRow &row)
{
    m_folder = row.mounted;
    m_name->setLabel(row.name, row.mounted.has_value());
    m_offsite->setText(row.offsite);
    m_offsite->setColour(row.offsiteColour);
    m_line->setText(row.line);
    setAccessibleName(madeVisible(row.name) + QStringLiteral(", ") + madeVisible(row.line) + QStringLiteral(", ") +
                      madeVisible(row.offsite));
}

void MenuBarVolume::paintEvent(QPaintEvent *)
{
    if (!underMouse()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dPanel2);
    painter.drawRoundedRect(QRectF(rect()).adjusted(sideMargin, 0, -sideMargin, 0), radius, radius);
}

void MenuBarVolume::enterEvent(QEnterEvent *)
{
    m_name->setUnderlined(m_folder.has_value());
    update();
}

void MenuBarVolume::leaveEvent(QEvent *)
{
    m_name->setUnderlined(false);
    update();
}

void MenuBarVolume::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        open();
    }
}

void MenuBarVolume::open()
{
    if (m_folder) {
        Q_EMIT openRequested(*m_folder);
    }
}

} // namespace quillfen
