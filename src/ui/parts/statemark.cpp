// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/statemark.h"

#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr qreal dot = 8.0;
constexpr qreal ringWidth = 1.5;
constexpr int gap = 7;

} // namespace

void paintStateMark(QPainter &painter, const QPointF &centre, const QColor &colour)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (colour == Theme::muted) {
        painter.setPen(QPen(colour, ringWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(centre, (dot - ringWidth) / 2, (dot - ringWidth) / 2);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(centre, dot / 2, dot / 2);
    }
    painter.restore();
}

QColor stateTextColour(const QColor &colour, StateSurface surface)
{
    if (surface == StateSurface::Selection) {
        return Theme::heading;
    }
    if (colour == Theme::muted) {
        return Theme::text;
    }
    if (colour == Theme::ok && surface == StateSurface::Card) {
        return Theme::okText;
    }
    return colour;
}

StateText::StateText(const QString &text, const QColor &colour, QWidget *parent)
    : QWidget(parent), m_label(new AgentLabel(text, Type::Body, stateTextColour(colour, StateSurface::Window))),
      m_colour(colour)
{
    setLayout(row({Item{m_label, 1}}, 0, {static_cast<int>(dot) + gap, 0, 0, 0}));
}

void StateText::setState(const QString &text, const QColor &colour)
{
    m_label->setText(text);
    m_label->setColour(stateTextColour(colour, m_surface));
    if (m_colour == colour) {
        return;
    }
    m_colour = colour;
    update();
}

void StateText::setSurface(StateSurface surface)
{
    m_surface = surface;
    m_label->setColour(stateTextColour(m_colour, surface));
}

void StateText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal x = isRightToLeft() ? width() - dot / 2 : dot / 2;
    paintStateMark(painter, QPointF(x, height() / 2.0), m_colour);
}

} // namespace quillfen
