// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QColor>
#include <QWidget>

namespace quillfen {

/// A drawing beside a text that says the same: decoration, and nothing to a screen reader.
class IconView final : public QWidget {
    Q_OBJECT

public:
    IconView(Icon icon, int size, const QColor &colour, QWidget *parent = nullptr);

    void setIcon(Icon icon, const QColor &colour);

    [[nodiscard]] QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Icon m_icon;
    int m_size;
    QColor m_colour;
};

} // namespace quillfen
