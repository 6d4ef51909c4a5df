// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/housestyle.h"

#include "kit.h"
#include "ui/parts/scrollarea.h"
#include "ui/text/label.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QMenu>
#include <QScrollBar>
#include <QStyleOption>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

/// How wide the grip of a scroll bar is painted, in pixels of the middle row.
int gripWidth(QStyle::State state, QRgb *colour = nullptr)
{
    kit::wearHouseLook();
    QStyleOptionSlider option;
    option.rect = QRect(0, 0, 10, 200);
    option.orientation = Qt::Vertical;
    option.maximum = 100;
    option.pageStep = 100;
    option.subControls = QStyle::SC_All;
    option.state = state | QStyle::State_Enabled;
    QImage image(10, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Theme::bg);
    QPainter painter(&image);
    QApplication::style()->drawComplexControl(QStyle::CC_ScrollBar, &option, &painter, nullptr);
    painter.end();
    int width = 0;
    for (int x = 0; x < 10; ++x) {
        width += image.pixelColor(x, 50) != Theme::bg ? 1 : 0;
    }
    if (colour != nullptr) {
        *colour = image.pixel(6, 50);
    }
    EXPECT_EQ(image.pixelColor(5, 150), Theme::bg) << "no track";
    return width;
}

QWidget *toolTipWindow()
{
    for (QWidget *each : QApplication::topLevelWidgets()) {
        if (each->inherits("QTipLabel") && each->isVisible()) {
            return each;
        }
    }
    return nullptr;
}

} // namespace

TEST(HouseStyle, ScrollBarsAre6WideAnd10UnderThePointer)
{
    QRgb colour = 0;
    EXPECT_EQ(gripWidth(QStyle::State_None, &colour), 6);
    EXPECT_EQ(gripWidth(QStyle::State_MouseOver), 10);
    // 55 % of muted on the ground.
    EXPECT_NEAR(qRed(colour), 253 + (131 - 253) * 0.55, 2);
    EXPECT_NEAR(qBlue(colour), 227 + (150 - 227) * 0.55, 2);
}

TEST(HouseStyle, AScrollBarHasNoArrowsAndItsGripMovesOverItsWholeLength)
{
    kit::wearHouseLook();
    QScrollBar bar(Qt::Vertical);
    bar.resize(10, 200);
    bar.setRange(0, 1000);
    bar.setPageStep(100);
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = Qt::Vertical;
    option.maximum = 1000;
    option.pageStep = 100;
    const auto rect = [&](QStyle::SubControl part) {
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
    };
    EXPECT_TRUE(rect(QStyle::SC_ScrollBarAddLine).isEmpty());
    EXPECT_EQ(rect(QStyle::SC_ScrollBarSlider), QRect(0, 0, 10, 28));
    option.sliderPosition = 1000;
    EXPECT_EQ(rect(QStyle::SC_ScrollBarSlider), QRect(0, 172, 10, 28));
}

TEST(HouseStyle, AScrollAreaIsOverlaidAndNeverScrollsSideways)
{
    kit::wearHouseLook();
    ScrollArea area;
    auto *contents = new QWidget;
    contents->setMinimumSize(100, 1000);
    area.setWidget(contents);
    area.resize(200, 300);
    area.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(area.verticalScrollBar()->isVisible());
    EXPECT_FALSE(area.horizontalScrollBar()->isVisible());
    EXPECT_EQ(contents->width(), 200);
    EXPECT_EQ(area.verticalScrollBar()->width(), 10);
}

TEST(HouseStyle, PaletteAndFontAreTheHouses)
{
    kit::wearHouseLook();
    const QWidget widget;
    EXPECT_EQ(widget.palette().color(QPalette::Window), Theme::bg);
    EXPECT_EQ(widget.palette().color(QPalette::Text), Theme::heading);
    EXPECT_EQ(widget.palette().color(QPalette::Disabled, QPalette::Text), Theme::muted);
    EXPECT_EQ(widget.font().pixelSize(), font(Type::Body).pixelSize());
    EXPECT_EQ(widget.font().families().constFirst(), u"Inter"_s);
}

TEST(HouseStyle, TooltipsAreDark)
{
    kit::wearHouseLook();
    QWidget window;
    window.resize(200, 100);
    window.show();
    showPlainToolTip(window.mapToGlobal(QPoint(5, 5)), u"a whole name"_s, &window);
    QWidget *tip = toolTipWindow();
    ASSERT_NE(tip, nullptr);
    const QImage image = kit::picture(*tip, 1.0, Theme::bg);
    EXPECT_EQ(kit::colourAt(image, 4, tip->height() / 2.0), Theme::dPanel);
    EXPECT_EQ(kit::colourAt(image, tip->width() / 2.0, 0), Theme::dLine);
    EXPECT_EQ(kit::colourAt(image, 0, 0), Theme::bg) << "round corners";
    EXPECT_EQ(tip->height(), 26);
    QToolTip::hideText();
}

TEST(HouseStyle, MenusHaveRowsOf28AndAPanelHighlight)
{
    kit::wearHouseLook();
    QMenu menu;
    menu.addAction(u"Copy"_s);
    QAction *second = menu.addAction(u"Paste"_s);
    menu.ensurePolished();
    menu.resize(menu.sizeHint());
    EXPECT_EQ(menu.actionGeometry(second).height(), 28);
    menu.setActiveAction(second);
    const QImage image = kit::picture(menu, 1.0, Theme::bg);
    const QRect active = menu.actionGeometry(second);
    EXPECT_EQ(kit::colourAt(image, active.right() - 10, active.center().y()), Theme::panel);
}
