// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timescale.h"
#include "state/restorepoints.h"
#include "ui/accessible.h"

#include <QPixmap>
#include <QPointer>
#include <QWidget>

namespace quillfen {

class MomentBubble;

/// The dark strip of the past: scale marks, restore points, and the marker of the chosen moment, which is dragged, or
/// moved by keys, the wheel and assistive technology.
///
/// What does not change while the marker moves is painted once and kept; moving the marker repaints its old and its new
/// place. Time runs to the right in every language. Around the strip lies an edge for the marker's disc, the focus ring
/// and the hand that overshoots.
class TimelineStrip final : public QWidget, public AdjustableValue {
    Q_OBJECT

public:
    /// How far the widget reaches beyond the strip on every side.
    static constexpr int edge = 8;

    /// `span` is the age that the left edge stands for.
    explicit TimelineStrip(std::chrono::seconds span, QWidget *parent = nullptr);
    ~TimelineStrip() override;

    [[nodiscard]] Instant moment() const noexcept { return m_moment; }

    void setPoints(const RestorePoints &points);
    void setMoment(Instant moment);
    void catchUp();

    /// The strip in the widget's pixels.
    [[nodiscard]] QRectF strip() const;
    /// Where a moment lies, in the widget's pixels.
    [[nodiscard]] double positionOf(Instant moment) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    // For assistive technology: seconds before now, as a negative number.
    [[nodiscard]] double accessibleNumber() const override;
    [[nodiscard]] double smallestNumber() const override;
    [[nodiscard]] double largestNumber() const override;
    void adjustTo(double number) override;

Q_SIGNALS:
    void momentChanged(quillfen::Instant moment);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] TimeScale scaleAt(Instant now) const;
    [[nodiscard]] QRect markerRect(double position) const;
    void paintLayer(qreal pixelRatio);
    void placeMarker();
    void dragTo(double x);
    void step(std::chrono::seconds by);
    void choose(Instant moment);
    void showBubble();
    void describe();

    std::chrono::seconds m_span;
    RestorePoints m_points;
    Instant m_now;    ///< when the marker was placed
    Instant m_moment; ///< what was chosen
    double m_marker = 0.0;
    QPixmap m_layer; ///< everything but the marker
    Instant m_layerNow;
    bool m_layerHolds = false;
    bool m_dragging = false;
    bool m_pointed = false; ///< the pointer was moved over the strip since it came: the wheel is meant for the strip
    int m_wheel = 0;        ///< what is left of a wheel's step
    QPointer<MomentBubble> m_bubble; ///< the window's child
};

} // namespace quillfen
