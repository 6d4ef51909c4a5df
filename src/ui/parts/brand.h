// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

/// The word mark: the product's name in two halves, bold and regular, for a light or dark surface.
class Brand final : public QWidget {
    Q_OBJECT

public:
    explicit Brand(bool dark = false, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_dark;
};

/// The product's square mark, drawn for 16 to 64 pixels.
class BrandMark final : public QWidget {
    Q_OBJECT

public:
    explicit BrandMark(int size, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_size;
};

} // namespace quillfen
