// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/checkrow.h"

#include "ui/layout.h"
#include "ui/paint/iconview.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int nameWidth = 120;
constexpr int fixLines = 4;

} // namespace

CheckRow::CheckRow(QWidget *parent)
    : QWidget(parent), m_mark(new IconView(Icon::CheckCircleFill, 18, Theme::ok)),
      m_name(new AgentLabel(QString(), Type::BodyMedium, Theme::heading)),
      m_info(new AgentLabel(QString(), Type::Body, Theme::text)),
      m_fix(new AgentLabel(QString(), Type::Body, Theme::heading))
{
    m_name->setFixedWidth(scaled(nameWidth));
    m_info->setMaximumLines(fixLines);
    m_fix->setMaximumLines(fixLines);
    auto *const line =
        row({Item{m_mark, 0, Qt::AlignTop}, Item{m_name, 0, Qt::AlignTop}}, 12, QMargins{16, 10, 16, 10});
    line->addLayout(column({m_info, m_fix}), 1);
    setLayout(line);
}

void CheckRow::setCheck(const QString &name, bool ok, const QString &info, const QString &fix)
{
    m_mark->setIcon(ok ? Icon::CheckCircleFill : Icon::WarningFill, ok ? Theme::ok : Theme::warnBright);
    m_name->setText(name);
    m_info->setText(info);
    m_fix->setText(fix);
    m_fix->setVisible(!ok && !fix.isEmpty());
}

void CheckRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintHairline(painter, QRectF(0, 0, width(), 1), Theme::line);
}

} // namespace quillfen
