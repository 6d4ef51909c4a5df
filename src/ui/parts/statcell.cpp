// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/statcell.h"

#include "ui/layout.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

StatCell::StatCell(const QString &k, const QString &v, bool dark, QWidget *parent)
    : QWidget(parent), m_value(new AgentLabel(v, Type::Heading, dark ? Theme::dBright : Theme::heading)), m_dark(dark)
{
    auto *caption = new AgentLabel(k, Type::Caption, dark ? Theme::dText : Theme::text);
    setLayout(column({caption, m_value}, 0, {16, 14, 16, 14}));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void StatCell::setValue(const QString &v)
{
    m_value->setText(v);
}

void StatCell::setDivided(bool divided)
{
    if (m_divided == divided) {
        return;
    }
    m_divided = divided;
    update();
}

void StatCell::paintEvent(QPaintEvent *)
{
    if (!m_divided) {
        return;
    }
    QPainter painter(this);
    paintHairline(painter, mirrored(*this, QRectF(0, 0, 1, height())), m_dark ? Theme::dLine : Theme::line);
}

QWidget *statRow(std::initializer_list<StatCell *> cells, QWidget *parent)
{
    auto *whole = new QWidget(parent);
    auto *layout = new QHBoxLayout(whole);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    for (StatCell *cell : cells) {
        // Equal widths whatever the texts: no cell asks for more than its share.
        cell->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        cell->setDivided(layout->count() > 0);
        layout->addWidget(cell, 1);
    }
    return whole;
}

} // namespace quillfen
