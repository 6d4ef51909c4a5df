// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/drawing.h"

#include "ui/paint/svgpath.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace quillfen;

namespace {

template <typename Paint>
QImage painted(int side, Paint &&paint)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

/// An edge may lie a fifth of a pixel elsewhere, since curves can be put together in more than one way. A cap or a join
/// of another shape makes a pixel differ by half and more.
constexpr int mostAtAnEdge = 50;

/// The largest difference of one channel of one pixel.
int difference(const QImage &one, const QImage &other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb here = one.pixel(x, y);
            const QRgb there = other.pixel(x, y);
            largest = std::max({largest, std::abs(qAlpha(here) - qAlpha(there)), std::abs(qRed(here) - qRed(there)),
                                std::abs(qGreen(here) - qGreen(there)), std::abs(qBlue(here) - qBlue(there))});
        }
    }
    return largest;
}

QByteArray contents(const QFileInfo &info)
{
    QFile file(info.filePath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().replace("currentColor", "#8b3a62");
}

QRectF boxOf(const char *data)
{
    return svgPath(data).boundingRect();
}

} // namespace

TEST(Drawing, EveryDrawingLooksAsTheLibraryThatKnowsAllOfSvgPaintsIt)
{
    const QFileInfoList files = QDir(QStringLiteral(QUILLFEN_ICONS)).entryInfoList({QStringLiteral("*.svg")});
    ASSERT_GT(files.size(), 30);
    for (const QFileInfo &info : files) {
        const QByteArray source = contents(info);
        QSvgRenderer renderer(source);
        ASSERT_TRUE(renderer.isValid());
        for (const int side : {20, 27, 96}) {
            const QImage expected = painted(side, [&](QPainter &painter) { renderer.render(&painter); });
            const QImage ours = painted(side, [&](QPainter &painter) {
                paintDrawing(painter, {source.constData(), static_cast<std::size_t>(source.size())},
                             QSizeF(side, side));
            });
            EXPECT_LE(difference(ours, expected), mostAtAnEdge) << qPrintable(info.fileName()) << " at " << side;
        }
    }
}

TEST(SvgPath, KnowsItsCommandsInBothForms)
{
    EXPECT_EQ(boxOf("M1 2L4 6H7V1Z"), QRectF(1, 1, 6, 5));
    EXPECT_EQ(boxOf("m1 2l3 4h3v-5z"), QRectF(1, 1, 6, 5));
    EXPECT_EQ(boxOf("M1,2 4,6 7,6"), boxOf("m1 2 3 4 3 0")) << "more points are lines";
    EXPECT_EQ(svgPath("M0 0C0 2 2 4 4 4S8 2 8 0"), svgPath("m0 0c0 2 2 4 4 4s4-2 4-4"));
    EXPECT_EQ(svgPath("M0 0C0 2 2 4 4 4S8 2 8 0"), svgPath("M0 0C0 2 2 4 4 4C6 4 8 2 8 0"));
    EXPECT_EQ(boxOf("M.5.5l1e1-.5"), QRectF(0.5, 0, 10, 0.5)) << "numbers part themselves";
}

TEST(SvgPath, DrawsTheArcThatIsAskedFor)
{
    const auto box = [](const char *data) { return svgPath(data).boundingRect().toAlignedRect(); };
    EXPECT_EQ(box("M10 0A10 10 0 0 1 20 10"), QRect(10, 0, 10, 10));
    EXPECT_EQ(box("M10 0a10 10 0 1010 10"), QRect(0, 0, 20, 20)) << "the long way round, flags without blanks";
    EXPECT_EQ(box("M0 0A1 1 0 0 1 20 0"), QRect(0, -10, 20, 10)) << "radii too small grow until they reach";
    EXPECT_EQ(box("M0 0A0 5 0 0 1 20 0"), QRect(0, 0, 20, 0)) << "no radius, no curve";
    EXPECT_EQ(box("M0 0A20 10 0 0 1 40 0"), QRect(0, -10, 40, 10));
}

TEST(SvgPath, StopsWhereItDoesNotUnderstand)
{
    EXPECT_EQ(svgPath(""), QPainterPath());
    EXPECT_EQ(boxOf("M1 1L3 3L"), boxOf("M1 1L3 3L0 0")) << "an end in between is an end";
    EXPECT_EQ(svgPath("M0 0L4 4Q1 1 2 2L90 90").boundingRect().bottomRight(), QPointF(4, 4));
    EXPECT_EQ(svgPath("M0 0A4 4 30 0 1 9 9L90 90"), svgPath("M0 0"));
}
