// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/slider.h"

#include "kittest.h"
#include "ui/theme.h"

#include <QSignalSpy>
#include <QWheelEvent>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class SliderTest : public KitTest {
protected:
    SliderTest() : slider(u"Size"_s)
    {
        slider.setRange(0, 100);
        slider.resize(218, 28); // 2 pixels a step
    }

    Slider slider;
};

} // namespace

TEST_F(SliderTest, IsASliderWithANumber)
{
    slider.setValue(40);
    EXPECT_EQ(role(slider), QAccessible::Slider);
    EXPECT_EQ(name(slider), u"Size"_s);
    EXPECT_EQ(tree(slider)->valueInterface()->currentValue().toInt(), 40);
}

TEST_F(SliderTest, KeysStepByOneAndTen)
{
    show(slider);
    slider.setFocus();
    slider.setValue(40);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(slider.value(), 41);
    QTest::keyClick(&slider, Qt::Key_Left);
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(slider.value(), 39);
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_EQ(slider.value(), 49);
    QTest::keyClick(&slider, Qt::Key_PageDown);
    EXPECT_EQ(slider.value(), 39);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(slider.value(), 0);
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(slider.value(), 100);
}

TEST_F(SliderTest, PressOnTheTrackTakesTheKnobThereAndDraggingMovesIt)
{
    show(slider);
    slider.clearFocus();
    QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(109, 14));
    EXPECT_EQ(slider.value(), 50);
    QTest::mouseMove(&slider, QPoint(129, 14));
    EXPECT_EQ(slider.value(), 60);
    QTest::mouseMove(&slider, QPoint(900, 14));
    EXPECT_EQ(slider.value(), 100);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(900, 14));
    QTest::mouseMove(&slider, QPoint(20, 14));
    EXPECT_EQ(slider.value(), 100);
    EXPECT_FALSE(slider.hasFocus());
}

TEST_F(SliderTest, HoldingTheKnobOffItsCentreDoesNotMoveIt)
{
    show(slider);
    slider.setValue(50);
    QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(115, 14));
    EXPECT_EQ(slider.value(), 50);
    QTest::mouseMove(&slider, QPoint(117, 14));
    EXPECT_EQ(slider.value(), 51);
    QTest::mouseRelease(&slider, Qt::LeftButton);
}

TEST_F(SliderTest, WheelIsLeftToTheForm)
{
    slider.setValue(50);
    QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), QPoint(0, -120), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&slider, &wheel);
    EXPECT_EQ(slider.value(), 50);
    EXPECT_FALSE(wheel.isAccepted());
}

TEST_F(SliderTest, TrackIsFilledUpToTheKnob)
{
    slider.setValue(50);
    for (const qreal scale : everyScale) {
        const QImage picture = kit::picture(slider, scale, Theme::bg);
        EXPECT_EQ(kit::colourAt(picture, 40, 14), QColor(Theme::accent));
        EXPECT_EQ(kit::colourAt(picture, 180, 14), QColor(Theme::line));
        EXPECT_EQ(kit::colourAt(picture, 109, 14), QColor(Theme::bg)) << "the knob";
        EXPECT_EQ(kit::colourAt(picture, 109, 6), QColor(Theme::ok)) << "its ring";
    }
}
