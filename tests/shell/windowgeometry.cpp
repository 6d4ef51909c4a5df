// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowgeometry.h"

#include <gtest/gtest.h>

namespace quillfen {
namespace {

constexpr QSize size{1180, 760};

TEST(EdgesAt, AreSixPixelsDeepOnEverySide)
{
    EXPECT_EQ(edgesAt({0, 300}, size), Qt::LeftEdge);
    EXPECT_EQ(edgesAt({5, 300}, size), Qt::LeftEdge);
    EXPECT_EQ(edgesAt({6, 300}, size), Qt::Edges());
    EXPECT_EQ(edgesAt({1179, 300}, size), Qt::RightEdge);
    EXPECT_EQ(edgesAt({1174, 300}, size), Qt::RightEdge);
    EXPECT_EQ(edgesAt({1173, 300}, size), Qt::Edges());
    EXPECT_EQ(edgesAt({500, 5}, size), Qt::TopEdge);
    EXPECT_EQ(edgesAt({500, 6}, size), Qt::Edges());
    EXPECT_EQ(edgesAt({500, 754}, size), Qt::BottomEdge);
    EXPECT_EQ(edgesAt({500, 753}, size), Qt::Edges());
}

TEST(EdgesAt, MeetInTheCornersWhichReachFurtherAlongTheBorder)
{
    EXPECT_EQ(edgesAt({0, 0}, size), Qt::TopEdge | Qt::LeftEdge);
    EXPECT_EQ(edgesAt({15, 5}, size), Qt::TopEdge | Qt::LeftEdge);
    EXPECT_EQ(edgesAt({16, 5}, size), Qt::TopEdge);
    EXPECT_EQ(edgesAt({15, 15}, size), Qt::Edges());
    EXPECT_EQ(edgesAt({1179, 0}, size), Qt::TopEdge | Qt::RightEdge);
    EXPECT_EQ(edgesAt({2, 745}, size), Qt::BottomEdge | Qt::LeftEdge);
    EXPECT_EQ(edgesAt({1179, 759}, size), Qt::BottomEdge | Qt::RightEdge);
}

TEST(EdgesAt, AreNoneOutsideTheWindow)
{
    EXPECT_EQ(edgesAt({-1, 300}, size), Qt::Edges());
    EXPECT_EQ(edgesAt({1180, 300}, size), Qt::Edges());
}

TEST(ResizeBorder, IsWhereThereAreEdges)
{
    const QRegion border = resizeBorder(size);
    for (int x = 0; x < size.width(); x += 3) {
        for (const int y : {0, 5, 6, 15, 380, 753, 754, 759}) {
            EXPECT_EQ(border.contains(QPoint(x, y)), edgesAt({x, y}, size) != Qt::Edges()) << x << ' ' << y;
        }
    }
}

TEST(ResizeCursor, PointsTheWayTheEdgesMove)
{
    EXPECT_EQ(resizeCursor(Qt::LeftEdge), Qt::SizeHorCursor);
    EXPECT_EQ(resizeCursor(Qt::RightEdge), Qt::SizeHorCursor);
    EXPECT_EQ(resizeCursor(Qt::TopEdge), Qt::SizeVerCursor);
    EXPECT_EQ(resizeCursor(Qt::BottomEdge), Qt::SizeVerCursor);
    EXPECT_EQ(resizeCursor(Qt::TopEdge | Qt::LeftEdge), Qt::SizeFDiagCursor);
    EXPECT_EQ(resizeCursor(Qt::BottomEdge | Qt::RightEdge), Qt::SizeFDiagCursor);
    EXPECT_EQ(resizeCursor(Qt::TopEdge | Qt::RightEdge), Qt::SizeBDiagCursor);
    EXPECT_EQ(resizeCursor(Qt::BottomEdge | Qt::LeftEdge), Qt::SizeBDiagCursor);
    EXPECT_EQ(resizeCursor({}), Qt::ArrowCursor);
}

TEST(InDragArea, IsTheTopStrip)
{
    EXPECT_TRUE(inDragArea({300, 0}, size));
    EXPECT_TRUE(inDragArea({1179, 35}, size));
    EXPECT_FALSE(inDragArea({300, 36}, size));
    EXPECT_FALSE(inDragArea({1180, 10}, size));
}

TEST(Resized, MovesTheHeldEdgesOnly)
{
    const QRect start(100, 50, 1180, 760);
    EXPECT_EQ(resized(start, Qt::RightEdge, {20, 30}, {960, 600}), QRect(100, 50, 1200, 760));
    EXPECT_EQ(resized(start, Qt::LeftEdge, {20, 30}, {960, 600}), QRect(120, 50, 1160, 760));
    EXPECT_EQ(resized(start, Qt::BottomEdge, {20, 30}, {960, 600}), QRect(100, 50, 1180, 790));
    EXPECT_EQ(resized(start, Qt::TopEdge | Qt::LeftEdge, {-10, -20}, {960, 600}), QRect(90, 30, 1190, 780));
}

TEST(Resized, StopsAtTheSmallestSizeWithTheOtherEdgeInPlace)
{
    const QRect start(100, 50, 1180, 760);
    EXPECT_EQ(resized(start, Qt::LeftEdge, {9000, 0}, {960, 600}), QRect(320, 50, 960, 760));
    EXPECT_EQ(resized(start, Qt::RightEdge, {-9000, 0}, {960, 600}), QRect(100, 50, 960, 760));
    EXPECT_EQ(resized(start, Qt::TopEdge, {0, 9000}, {960, 600}), QRect(100, 210, 1180, 600));
    EXPECT_EQ(resized(start, Qt::BottomEdge, {0, -9000}, {960, 600}), QRect(100, 50, 1180, 600));
}

} // namespace
} // namespace quillfen
