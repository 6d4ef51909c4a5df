// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/fade.h"

#include "kit.h"
#include "ui/controls/spinner.h"
#include "ui/theme.h"

#include <QGraphicsEffect>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

class Fades : public testing::Test {
protected:
    Fades()
    {
        window.resize(100, 100);
        panel.resize(50, 50);
        panel.hide();
        window.show();
    }
    ~Fades() override { setReducedMotion({}); }

    QWidget window;
    QWidget panel{&window};
};

} // namespace

TEST_F(Fades, InEndsWithoutAnEffect)
{
    setReducedMotion(false);
    Fade fade(&panel, 60ms);
    QSignalSpy shown(&fade, &Fade::shown);
    fade.fadeIn();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_NE(panel.graphicsEffect(), nullptr);
    EXPECT_TRUE(shown.wait(2000));
    EXPECT_EQ(panel.graphicsEffect(), nullptr);
}

TEST_F(Fades, OutHidesAtTheEnd)
{
    setReducedMotion(false);
    panel.show();
    Fade fade(&panel, 60ms);
    QSignalSpy hidden(&fade, &Fade::hidden);
    fade.fadeOut();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(hidden.wait(2000));
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(panel.graphicsEffect(), nullptr);
}

TEST_F(Fades, TurningRoundStartsWhereItIs)
{
    setReducedMotion(false);
    Fade fade(&panel, 80ms);
    QSignalSpy hidden(&fade, &Fade::hidden);
    QSignalSpy shown(&fade, &Fade::shown);
    fade.fadeIn();
    fade.fadeOut();
    fade.fadeIn();
    EXPECT_TRUE(shown.wait(2000));
    EXPECT_EQ(hidden.size(), 0);
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(Fades, AtOnceWhereMotionIsUnwanted)
{
    setReducedMotion(true);
    Fade fade(&panel, 5000ms);
    QSignalSpy shown(&fade, &Fade::shown);
    QSignalSpy hidden(&fade, &Fade::hidden);
    fade.fadeIn();
    EXPECT_EQ(shown.size(), 1);
    EXPECT_EQ(panel.graphicsEffect(), nullptr);
    fade.fadeOut();
    EXPECT_EQ(hidden.size(), 1);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(Fades, CrossFadeLaysThePastOverTheAreaForAWhile)
{
    setReducedMotion(false);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto before = window.children().size();
    crossFade(&window, 40ms);
    EXPECT_EQ(window.children().size(), before + 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.children().size() == before; }, 2000));
    setReducedMotion(true);
    crossFade(&window, 40ms);
    EXPECT_EQ(window.children().size(), before);
}

TEST(Spinner, PaintsRingAndArcInItsColour)
{
    Spinner spinner(16);
    spinner.setColour(Theme::warn);
    const QImage image = kit::picture(spinner, 2.0);
    int coloured = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            coloured += image.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
        }
    }
    EXPECT_GT(coloured, 100);
    EXPECT_GT(kit::count(image, Theme::warn), 5);
    EXPECT_EQ(image.pixelColor(image.rect().center()), QColor(Qt::white));
}
