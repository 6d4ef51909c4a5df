// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/runningrow.h"

#include "ui/accessible.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr QMargins margins{16, 10, 16, 10};

} // namespace

RunningRow::RunningRow(QWidget *parent)
    : QWidget(parent), m_title(new AgentLabel(QString(), Type::BodySemibold, Theme::heading)),
      m_since(new AgentLabel(QString(), Type::Body, Theme::text)),
      m_line(new AgentLabel(QString(), Type::Body, Theme::text))
{
    setRole(this, QAccessible::Grouping);
    m_line->setMaximumLines(2);
    auto *const spinner = new Spinner(16);
    spinner->setColour(Theme::warn);
    auto *const texts = column({row({m_title, Space{4}, Item{m_since, 1}}), m_line});
    auto *const line = row({}, 12, margins);
    line->addWidget(spinner, 0, Qt::AlignTop);
    line->addLayout(texts, 1);
    setLayout(line);
}

void RunningRow::setOperation(const QString &title, const QString &since, const QString &lastLine)
{
    setAccessibleName(title);
    m_title->setText(title);
    m_since->setText(since);
    m_line->setText(lastLine);
    m_line->setVisible(!lastLine.isEmpty());
}

} // namespace quillfen
