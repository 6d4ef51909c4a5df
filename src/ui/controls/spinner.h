// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

#include <chrono>

class QPainter;

namespace quillfen {

/// Paints the arc of a spinner into a square as it stands at this moment, for lists that paint their rows themselves
/// and again after each `spinnerInterval`.
void paintSpinner(QPainter &painter, const QRectF &square, const QColor &colour);
[[nodiscard]] std::chrono::milliseconds spinnerInterval();

/// Something is under way: an arc that turns once in 900 ms, in eight steps where motion is unwanted. Turns only while
/// it can be seen.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(int size = 14, QWidget *parent = nullptr);

    void setColour(const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QColor m_colour;
    QTimer m_timer;
};

} // namespace quillfen
