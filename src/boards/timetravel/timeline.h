// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"
#include "state/restorepoints.h"

#include <QWidget>

namespace quillfen {

class TimelineStrip;

/// The strip on which a past second is chosen, with its caption above and its hint below. For dark surfaces; 72 plus
/// the texts high and as wide as its container.
///
/// The moment is the owner's: the strip shows and tells what the user chooses, and what the owner sets.
class Timeline final : public QWidget {
    Q_OBJECT

public:
    /// The age that the left edge stands for.
    static constexpr std::chrono::seconds span = std::chrono::hours(24 * 90);
    /// How far the widget reaches beyond strip and texts on the left and on the right: room for the marker's disc and
    /// the focus ring at the edges. To be taken off the margin around it.
    static constexpr int overhang = 8;

    explicit Timeline(QWidget *parent = nullptr);

    [[nodiscard]] Instant moment() const;

    /// Replaces the restore points. The same ones again cost nothing.
    void setPoints(const RestorePoints &points);
    /// Moves the marker; silent. The same moment again costs nothing.
    void setMoment(Instant moment);
    /// Lets the strip catch up with the clock. To be called when the board renders: it has no timer of its own, and
    /// catches up by itself while it is dragged or stepped. Costs nothing when nothing has moved by a pixel.
    void catchUp();

    /// The strip itself, which has the focus.
    [[nodiscard]] TimelineStrip *strip() const noexcept { return m_strip; }

Q_SIGNALS:
    /// The user chose another moment: on every move of a drag, on keys, the wheel and assistive technology. Never
    /// outside the strip's span, never later than a second ago.
    void momentChanged(quillfen::Instant moment);

private:
    TimelineStrip *m_strip;
};

} // namespace quillfen
