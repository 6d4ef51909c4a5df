// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QWidget>

namespace quillfen {

/// A line between two parts of a form or a card, one device pixel wide or more.
class Hairline final : public QWidget {
    Q_OBJECT

public:
    explicit Hairline(Qt::Orientation orientation = Qt::Horizontal, QWidget *parent = nullptr);
    /// A horizontal one on a surface that asks for another colour than the palette's line.
    explicit Hairline(const QColor &colour, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_colour;
};

} // namespace quillfen
