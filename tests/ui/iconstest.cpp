// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/icons.h"

#include "kit.h"
#include "ui/parts/brand.h"
#include "ui/theme.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace quillfen;

namespace {

int opaquePixels(const QPixmap &picture, const QColor &colour)
{
    return kit::count(picture.toImage(), colour);
}

} // namespace

TEST(Icons, EveryIconDrawsInTheGivenColour)
{
    for (int at = 0; at <= static_cast<int>(Icon::TrayTemplate); ++at) {
        const QPixmap picture = iconPixmap(static_cast<Icon>(at), 20, Theme::danger, 2.0);
        EXPECT_EQ(picture.size(), QSize(40, 40));
        EXPECT_GT(opaquePixels(picture, Theme::danger), 8) << at;
        EXPECT_EQ(opaquePixels(picture, QColor(Qt::black)), 0) << at;
    }
}

TEST(Icons, IsDrawnOncePerColourSizeAndScale)
{
    const QPixmap first = iconPixmap(Icon::Drive, 18, Theme::text, 1.5);
    EXPECT_EQ(first.size(), QSize(27, 27));
    EXPECT_DOUBLE_EQ(first.devicePixelRatio(), 1.5);
    EXPECT_EQ(first.cacheKey(), iconPixmap(Icon::Drive, 18, Theme::text, 1.5).cacheKey());
    EXPECT_NE(first.cacheKey(), iconPixmap(Icon::Drive, 18, Theme::heading, 1.5).cacheKey());
    EXPECT_NE(first.cacheKey(), iconPixmap(Icon::Key, 18, Theme::text, 1.5).cacheKey());
}

TEST(Icons, PaintsOnWholeDevicePixels)
{
    QImage whole(60, 60, QImage::Format_ARGB32_Premultiplied);
    whole.setDevicePixelRatio(1.5);
    whole.fill(Qt::white);
    QImage between = whole;
    QPainter(&whole).end();
    {
        QPainter painter(&whole);
        paintIcon(painter, Icon::CheckCircleFill, QRectF(4, 4, 20, 20), Theme::ok);
    }
    {
        QPainter painter(&between);
        paintIcon(painter, Icon::CheckCircleFill, QRectF(4.2, 3.9, 20, 20), Theme::ok);
    }
    EXPECT_EQ(whole, between);
    EXPECT_GT(kit::count(whole, Theme::ok), 200);
}

TEST(Icons, ArtworksKeepTheirColours)
{
    const QImage mark = artworkPixmap(Artwork::BrandMark, QSize(64, 64), 1.0).toImage();
    EXPECT_GT(kit::count(mark, Theme::dPanel), 1000);
    EXPECT_GT(kit::count(mark, Theme::accent), 50);
    const QImage light = artworkPixmap(Artwork::WordmarkLight, QSize(75, 24), 2.0).toImage();
    EXPECT_GT(kit::count(light, Theme::heading), 100);
    EXPECT_GT(kit::count(light, Theme::text), 30);
    const QImage dark = artworkPixmap(Artwork::WordmarkDark, QSize(75, 24), 2.0).toImage();
    EXPECT_GT(kit::count(dark, Theme::dBright), 100);
}

TEST(Icons, LettersOfTheBrandStandOnAWholePixel)
{
    Brand brand;
    brand.resize(brand.sizeHint());
    const QImage picture = kit::picture(brand, 1.0, Theme::bg);
    int stems = 0;
    for (int x = 0; x < picture.width(); ++x) {
        stems += picture.pixelColor(x, 17) == Theme::heading && picture.pixelColor(x, 18) == Theme::bg ? 1 : 0;
    }
    EXPECT_GE(stems, 3);
}
