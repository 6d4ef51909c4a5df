// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>

namespace quillfen {

/// The second under the hand, above the strip's marker, in the look of a tooltip. Lies over the window of its owner, so
/// that it follows at once, which a window of its own does not on every desktop.
class MomentBubble final : public QWidget {
    Q_OBJECT

public:
    explicit MomentBubble(QWidget *owner);

    /// Shows `text` with its foot in the middle at `foot`, between `left` and `right`; all in the owner's pixels.
    void showAt(const QString &text, QPointF foot, qreal left, qreal right);
    /// Hides a moment from now, unless shown again; for steps, which have no end as a drag has.
    void hideSoon();

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *m_owner;
    QString m_text;
    QTimer m_hide;
};

} // namespace quillfen
