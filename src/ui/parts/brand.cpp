// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/brand.h"

#include "ui/accessible.h"
#include "ui/paint/icons.h"

#include <QPainter>

namespace quillfen {
namespace {

/// A name, so nobody translates it.
QString productName()
{
    return QStringLiteral("Quillfen");
}

// The drawing is set in 20 pixels and the brand in 18, which its margins bring to whole pixels: the letters stand on
// the last row of the upper 18.
constexpr QSize wordSize{72, 24};

} // namespace

Brand::Brand(bool dark, QWidget *parent) : QWidget(parent), m_dark(dark)
{
    setAccessible(this, QAccessible::StaticText, productName());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Brand::sizeHint() const
{
    return wordSize;
}

void Brand::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintArtwork(painter, m_dark ? Artwork::WordmarkDark : Artwork::WordmarkLight, QRectF(QPointF(), wordSize));
}

BrandMark::BrandMark(int size, QWidget *parent) : QWidget(parent), m_size(size)
{
    setAccessible(this, QAccessible::Graphic, productName());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BrandMark::sizeHint() const
{
    return {m_size, m_size};
}

void BrandMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintArtwork(painter, Artwork::BrandMark, QRectF(0, 0, m_size, m_size));
}

} // namespace quillfen
