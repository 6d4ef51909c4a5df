// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/spinner.h"

#include "ui/style/fade.h"
#include "ui/theme.h"

#include <QDateTime>
#include <QPainter>

namespace quillfen {
namespace {

constexpr int turn = 900;         // milliseconds
constexpr int steps = 8;          // of a turn, where motion is unwanted
constexpr int frame = 33;         // smooth enough for a picture of this size, at half the work of every frame
constexpr double ringWidth = 1.8; // at 14 pixels
constexpr double arc = 70.0;      // degrees

} // namespace

void paintSpinner(QPainter &painter, const QRectF &square, const QColor &colour)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const double scale = square.width() / 14.0;
    const double radius = 5.6 * scale;
    const QRectF ring(square.center() - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    painter.setPen(QPen(Theme::faded(colour, 0.25F), ringWidth * scale));
    painter.drawEllipse(ring);

    const auto now = static_cast<int>(QDateTime::currentMSecsSinceEpoch() % turn);
    const int at = reducedMotion() ? now * steps / turn * (turn / steps) : now;
    const double angle = 90.0 - 360.0 * at / turn;
    painter.setPen(QPen(colour, ringWidth * scale, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, static_cast<int>(angle * 16), static_cast<int>(-arc * 16));
    painter.restore();
}

std::chrono::milliseconds spinnerInterval()
{
    return std::chrono::milliseconds(reducedMotion() ? turn / steps : frame);
}

Spinner::Spinner(int size, QWidget *parent) : QWidget(parent), m_colour(Theme::ok)
{
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void Spinner::setColour(const QColor &colour)
{
    if (m_colour == colour) {
        return;
    }
    m_colour = colour;
    update();
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintSpinner(painter, rect(), m_colour);
}

void Spinner::showEvent(QShowEvent *)
{
    m_timer.start(spinnerInterval());
}

void Spinner::hideEvent(QHideEvent *)
{
    m_timer.stop();
}

} // namespace quillfen
