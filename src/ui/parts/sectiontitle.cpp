// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/sectiontitle.h"

#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

SectionTitle::SectionTitle(const QString &text, bool dark, QWidget *parent)
    : QWidget(parent), m_label(new AgentLabel(text, Type::Section, dark ? Theme::dBright : Theme::heading))
{
    setRole(m_label, QAccessible::Heading);
    setLayout(row({m_label}, 0));
}

void SectionTitle::setText(const QString &text)
{
    m_label->setText(text);
}

} // namespace quillfen
