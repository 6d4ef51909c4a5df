// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/inlineerror.h"

#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/paint/icons.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int iconSize = 18;
constexpr int gap = 8;
constexpr int mostLines = 4;

} // namespace

InlineError::InlineError(QWidget *parent) : QWidget(parent), m_text(new AgentLabel({}, Type::Body, Theme::danger))
{
    m_text->setMaximumLines(mostLines);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setRole(m_text, QAccessible::AlertMessage);
    setLayout(row({Item{m_text, 1}}, 0, {iconSize + gap, 0, 0, 0}));
    hide();
}

QString InlineError::text() const
{
    return m_text->text();
}

void InlineError::setText(const QString &text)
{
    if (m_text->text() == text) {
        return;
    }
    m_text->setText(text);
    setVisible(!text.isEmpty());
    if (!text.isEmpty()) {
        announce(m_text, text);
    }
}

void InlineError::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF icon(isRightToLeft() ? width() - iconSize : 0, (lineHeight(Type::Body) - iconSize) / 2.0, iconSize,
                      iconSize);
    paintIcon(painter, Icon::Warning, icon, Theme::danger);
}

} // namespace quillfen
