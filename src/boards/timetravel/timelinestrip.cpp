// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timelinestrip.h"

#include "boards/timetravel/momentbubble.h"
#include "boards/timetravel/strippainting.h"
#include "state/format.h"
#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quillfen {

namespace {

using namespace std::chrono_literals;

constexpr int stripHeight = 72;
constexpr int smallestWidth = 160;
constexpr int markerReach = 8; ///< of its repainted rectangle, to either side
constexpr int ringReach = 4;   ///< of the focus ring: its gap and its line

/// The points drift to the left with time, those of the last seconds by several pixels each: how old what is kept may
/// grow while a hand is on the strip, and while none is.
constexpr auto driftWhileDragging = 250ms;
constexpr auto drift = 1s;

constexpr int wheelStep = 120;

} // namespace

TimelineStrip::TimelineStrip(std::chrono::seconds span, QWidget *parent)
    : QWidget(parent), m_span(span), m_now(quillfen::now()), m_moment(m_now)
{
    setAccessible(this, QAccessible::Slider, tr("Timeline"));
    setFocusPolicy(Qt::TabFocus);
    setProperty("ownFocus", true); // the ring goes around the strip, not around its edge
    setCursor(Qt::PointingHandCursor);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    placeMarker();
    describe();
}

TimelineStrip::~TimelineStrip()
{
    delete m_bubble;
}

QSize TimelineStrip::sizeHint() const
{
    return {600 + 2 * edge, stripHeight + 2 * edge};
}

QSize TimelineStrip::minimumSizeHint() const
{
    return {smallestWidth + 2 * edge, stripHeight + 2 * edge};
}

QRectF TimelineStrip::strip() const
{
    return QRectF(rect()).adjusted(edge, edge, -edge, -edge);
}

TimeScale TimelineStrip::scaleAt(Instant now) const
{
    return {now, m_span, strip().width()};
}

double TimelineStrip::positionOf(Instant moment) const
{
    return strip().left() + scaleAt(m_now).position(moment);
}

void TimelineStrip::setPoints(const RestorePoints &points)
{
    if (m_points.isSameAs(points)) {
        return;
    }
    m_points = points;
    m_layerHolds = false;
    update();
}

void TimelineStrip::setMoment(Instant moment)
{
    if (m_moment == moment) {
        return;
    }
    m_moment = moment;
    m_now = quillfen::now();
    placeMarker();
    describe();
}

void TimelineStrip::catchUp()
{
    const Instant current = quillfen::now();
    if (std::chrono::abs(current - m_layerNow) < drift) {
        return;
    }
    m_now = current;
    m_layerHolds = false;
    placeMarker();
    update();
}

/// The repainted rectangle of a marker.
QRect TimelineStrip::markerRect(double position) const
{
    return {static_cast<int>(std::floor(position)) - markerReach, 0, 2 * markerReach + 1, height()};
}

void TimelineStrip::placeMarker()
{
    const double position = positionOf(m_moment);
    if (position == m_marker) {
        return;
    }
    update(markerRect(m_marker));
    m_marker = position;
    update(markerRect(m_marker));
}

void TimelineStrip::describe()
{
    setAccessibleValue(this, exactDate(m_moment), accessibleNumber());
}

void TimelineStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal pixelRatio = painter.deviceTransform().m11(); // of the screen, or of the picture that is taken
    if (!m_layerHolds || m_layer.devicePixelRatio() != pixelRatio) {
        paintLayer(pixelRatio);
    }
    painter.drawPixmap(QPointF(0, 0), m_layer);
    paintStripMarker(painter, strip(), m_marker);
    if (hasFocus()) {
        const QRectF ring = strip().adjusted(-ringReach, -ringReach, ringReach, ringReach);
        paintSurface(painter, ring, stripRadius + 3, {}, Theme::accent, 2);
    }
}

void TimelineStrip::paintLayer(qreal pixelRatio)
{
    m_layer = QPixmap((QSizeF(size()) * pixelRatio).toSize());
    m_layer.setDevicePixelRatio(pixelRatio);
    m_layer.fill(Qt::transparent);
    m_layerNow = quillfen::now();
    m_layerHolds = true;

    QPainter painter(&m_layer);
    paintStrip(painter, strip(), scaleAt(m_layerNow), m_points.moments());
}

void TimelineStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_pointed = true;
    m_dragging = true;
    dragTo(event->position().x());
}

void TimelineStrip::mouseMoveEvent(QMouseEvent *event)
{
    m_pointed = true;
    if (m_dragging && (event->buttons() & Qt::LeftButton) != 0) {
        dragTo(event->position().x());
    }
}

void TimelineStrip::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_dragging = false;
    if (m_bubble != nullptr) {
        m_bubble->hide();
    }
}

void TimelineStrip::dragTo(double x)
{
    m_now = quillfen::now();
    if (std::chrono::abs(m_now - m_layerNow) >= driftWhileDragging) {
        m_layerHolds = false;
        update();
    }
    choose(scaleAt(m_now).moment(x - strip().left()));
}

/// Without a pointer that was moved here the wheel belongs to the board, which then scrolls under a hand at rest.
void TimelineStrip::wheelEvent(QWheelEvent *event)
{
    if (!m_pointed && !hasFocus()) {
        event->ignore();
        return;
    }
    event->accept();
    const QPoint turned = event->angleDelta();
    m_wheel += std::abs(turned.x()) > std::abs(turned.y()) ? turned.x() : turned.y();
    const int steps = m_wheel / wheelStep;
    m_wheel -= steps * wheelStep;
    if (steps != 0) {
        step(steps * ((event->modifiers() & Qt::ShiftModifier) != 0 ? std::chrono::seconds(1min) : 1s));
    }
}

void TimelineStrip::keyPressEvent(QKeyEvent *event)
{
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    const std::chrono::seconds small = shift ? std::chrono::seconds(1min) : 1s;
    switch (event->key()) {
    case Qt::Key_Left:
        step(-small);
        break;
    case Qt::Key_Right:
        step(small);
        break;
    case Qt::Key_PageUp:
        step(-1h);
        break;
    case Qt::Key_PageDown:
        step(1h);
        break;
    case Qt::Key_Home:
        step(-m_span);
        break;
    case Qt::Key_End:
        step(m_span);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

/// Steps end at the edges.
void TimelineStrip::step(std::chrono::seconds by)
{
    m_now = quillfen::now();
    const QPointer<TimelineStrip> self(this);
    choose(scaleAt(m_now).clamped(m_moment + by));
    if (self && m_bubble != nullptr) {
        m_bubble->hideSoon();
    }
}

/// Ends with the announcement: whoever hears of it may take the board away.
void TimelineStrip::choose(Instant moment)
{
    const bool isNew = m_moment != moment;
    m_moment = moment;
    placeMarker();
    showBubble();
    if (isNew) {
        describe();
        Q_EMIT momentChanged(moment);
    }
}

void TimelineStrip::showBubble()
{
    if (m_bubble == nullptr) {
        m_bubble = new MomentBubble(this);
    }
    // Above the widget and not over its edge: nothing of the strip has to be repainted when the bubble moves on.
    const QRectF box = strip();
    m_bubble->showAt(exactDate(m_moment), QPointF(m_marker, 0), box.left(), box.right());
}

double TimelineStrip::accessibleNumber() const
{
    return static_cast<double>(std::chrono::floor<std::chrono::seconds>(m_moment - m_now).count());
}

double TimelineStrip::smallestNumber() const
{
    return -static_cast<double>(m_span.count());
}

double TimelineStrip::largestNumber() const
{
    return -1.0;
}

void TimelineStrip::adjustTo(double number)
{
    m_now = quillfen::now();
    const double bounded = std::clamp(number, smallestNumber(), largestNumber());
    const std::chrono::seconds age(static_cast<std::int64_t>(-bounded));
    const QPointer<TimelineStrip> self(this);
    choose(scaleAt(m_now).clamped(m_now - age));
    if (self && m_bubble != nullptr) {
        m_bubble->hideSoon();
    }
}

void TimelineStrip::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void TimelineStrip::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    if (m_bubble != nullptr && !m_dragging) {
        m_bubble->hide();
    }
    update();
}

void TimelineStrip::leaveEvent(QEvent *event)
{
    m_pointed = false;
    QWidget::leaveEvent(event);
}

void TimelineStrip::hideEvent(QHideEvent *event)
{
    m_dragging = false;
    if (m_bubble != nullptr) {
        m_bubble->hide();
    }
    QWidget::hideEvent(event);
}

void TimelineStrip::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_layerHolds = false;
    m_marker = positionOf(m_moment);
    update();
}

} // namespace quillfen
