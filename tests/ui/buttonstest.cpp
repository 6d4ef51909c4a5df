// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/buttons.h"

#include "kit.h"
#include "ui/controls/iconbutton.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/style/fade.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QFontMetrics>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

constexpr qreal scales[] = {1.0, 1.5, 2.0};

class Buttons : public testing::Test {
protected:
    Buttons()
    {
        kit::wearHouseLook();
        setReducedMotion(true);
    }
    ~Buttons() override { setReducedMotion({}); }

    static std::unique_ptr<Button> button(ButtonStyle style, const QString &text = u"Save policy"_s)
    {
        auto made = std::make_unique<Button>(text, style);
        made->resize(made->sizeHint());
        return made;
    }

    /// The fill, at a place where neither line nor label is.
    static QColor fill(QWidget &widget, qreal scale)
    {
        return kit::colourAt(kit::picture(widget, scale, Theme::bg), widget.width() / 2.0, 4);
    }

    static QColor edge(QWidget &widget, qreal scale)
    {
        return kit::colourAt(kit::picture(widget, scale, Theme::bg), widget.width() / 2.0, 0);
    }

    /// The line of a pressed button, one pixel off its edge.
    static QColor innerLine(QWidget &widget, qreal scale)
    {
        return kit::colourAt(kit::picture(widget, scale, Theme::bg), widget.width() / 2.0, 2);
    }

    static void hover(QWidget &widget)
    {
        widget.setAttribute(Qt::WA_UnderMouse);
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(&widget, &enter);
    }
};

} // namespace

TEST_F(Buttons, StatesOfThePrimaryButtonAtEveryScale)
{
    for (const qreal scale : scales) {
        const auto primary = button(PrimaryButtonStyle{});
        EXPECT_EQ(fill(*primary, scale), Theme::accent);
        hover(*primary);
        EXPECT_EQ(fill(*primary, scale).name(), u"#4cafa4"_s);
        primary->setDown(true);
        EXPECT_EQ(fill(*primary, scale), Theme::accent);
        EXPECT_EQ(edge(*primary, scale), Theme::accent);
        EXPECT_EQ(innerLine(*primary, scale), blended(Theme::accent, Theme::onAccent, 89 / 255.0)) << scale;
        primary->setDown(false);
        primary->setEnabled(false);
        EXPECT_EQ(fill(*primary, scale), Theme::line);
    }
}

TEST_F(Buttons, StatesOfTheSecondaryButtonAtEveryScale)
{
    for (const qreal scale : scales) {
        const auto light = button(SecondaryButtonStyle{});
        EXPECT_EQ(fill(*light, scale), Theme::bg);
        EXPECT_EQ(edge(*light, scale), Theme::line);
        hover(*light);
        EXPECT_EQ(fill(*light, scale), Theme::panel);
        light->setDown(true);
        EXPECT_EQ(fill(*light, scale), Theme::line);

        const auto dark = button(SecondaryButtonStyle{32, true});
        EXPECT_EQ(fill(*dark, scale), Theme::dPanel);
        EXPECT_EQ(edge(*dark, scale), Theme::dLine);
        hover(*dark);
        EXPECT_EQ(fill(*dark, scale), Theme::dLine);
        dark->setDown(true);
        EXPECT_EQ(fill(*dark, scale), Theme::dPanel2);
        dark->setDown(false);
        dark->setEnabled(false);
        EXPECT_EQ(fill(*dark, scale), Theme::bg) << "no fill: what is below shows through";
        EXPECT_EQ(edge(*dark, scale), Theme::dLine);
    }
}

TEST_F(Buttons, StatesOfTheDangerButtonsAtEveryScale)
{
    for (const qreal scale : scales) {
        const auto danger = button(DangerButtonStyle{}, u"Discard"_s);
        EXPECT_EQ(fill(*danger, scale), Theme::bg);
        hover(*danger);
        EXPECT_EQ(fill(*danger, scale), Theme::dangerBg);
        EXPECT_EQ(edge(*danger, scale).name(), u"#d29a80"_s);
        danger->setDown(true);
        EXPECT_EQ(fill(*danger, scale), Theme::danger);

        const auto strong = button(DangerDefaultButtonStyle{}, u"Delete"_s);
        EXPECT_EQ(fill(*strong, scale), Theme::danger);
        hover(*strong);
        EXPECT_EQ(fill(*strong, scale), Theme::dangerText);
        strong->setEnabled(false);
        EXPECT_EQ(fill(*strong, scale), Theme::line);
    }
}

TEST_F(Buttons, HairlineIsOneDevicePixelUpToTwiceTheSize)
{
    const auto secondary = button(SecondaryButtonStyle{});
    for (const qreal scale : scales) {
        const QImage image = kit::picture(*secondary, scale, Theme::bg);
        int lines = 0;
        while (image.pixelColor(image.width() / 2, lines) == Theme::line) {
            ++lines;
        }
        EXPECT_EQ(lines, scale < 2.0 ? 1 : 2) << scale;
    }
}

TEST_F(Buttons, SizesFollowHeightAndLabel)
{
    const int label = QFontMetrics(font(Type::BodyMedium)).horizontalAdvance(u"Unmount"_s);
    EXPECT_EQ(Button(u"Unmount"_s, SecondaryButtonStyle{}).sizeHint(), QSize(label + 30, 32));
    EXPECT_EQ(Button(u"Unmount"_s, SecondaryButtonStyle{36}).sizeHint(), QSize(label + 38, 36));
    const int small = QFontMetrics(font(Type::CaptionMedium)).horizontalAdvance(u"Copy"_s);
    EXPECT_EQ(Button(u"Copy"_s, SecondaryButtonStyle{28}).sizeHint(), QSize(small + 22, 28));
    EXPECT_EQ(Button(Icon::Copy, u"Copy"_s, SecondaryButtonStyle{28}).sizeHint(), QSize(small + 9 + 16 + 5 + 11, 28));
    Button danger(u"Discard"_s, DangerButtonStyle{});
    danger.setControlHeight(28);
    EXPECT_EQ(danger.sizeHint().height(), 28);
}

TEST_F(Buttons, InANarrowPlaceThePaddingGivesWayBeforeTheLabel)
{
    const auto labelled = [](Button &button) {
        // Where the label's first and last columns are.
        const QImage image = kit::picture(button, 1.0, Theme::bg);
        int first = image.width();
        int last = 0;
        for (int x = 4; x < image.width() - 4; ++x) {
            for (int y = 8; y < image.height() - 8; ++y) {
                if (image.pixelColor(x, y).lightness() < 120) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
            }
        }
        return std::pair(first, last);
    };
    const auto made = button(SecondaryButtonStyle{36}, u"New volume from this second"_s);
    const auto [first, last] = labelled(*made);
    made->resize(made->width() - 20, made->height());
    const auto [narrowFirst, narrowLast] = labelled(*made);
    EXPECT_EQ(narrowLast - narrowFirst, last - first) << "the whole label";
    EXPECT_EQ(narrowFirst, first - 10);
    made->resize(made->width() - 40, made->height());
    EXPECT_GE(labelled(*made).first, 6) << "some padding stays";
    EXPECT_LT(labelled(*made).second, made->width() - 6);
}

TEST_F(Buttons, PressByMouse)
{
    const auto pressed = button(SecondaryButtonStyle{});
    QSignalSpy clicks(pressed.get(), &QAbstractButton::clicked);
    QTest::mouseClick(pressed.get(), Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 1);
    pressed->setEnabled(false);
    QTest::mouseClick(pressed.get(), Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(Buttons, PressByKeyboard)
{
    const auto pressed = button(SecondaryButtonStyle{});
    QSignalSpy clicks(pressed.get(), &QAbstractButton::clicked);
    QTest::keyClick(pressed.get(), Qt::Key_Space);
    QTest::keyClick(pressed.get(), Qt::Key_Return);
    QTest::keyClick(pressed.get(), Qt::Key_Enter);
    EXPECT_EQ(clicks.size(), 3);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(pressed.get(), &held);
    EXPECT_EQ(clicks.size(), 3) << "a held key presses once";
    EXPECT_TRUE(held.isAccepted());
}

TEST_F(Buttons, TakeFocusByKeyboardOnly)
{
    QWidget window;
    auto *field = new QLineEdit;
    auto *other = new Button(u"Other"_s, SecondaryButtonStyle{});
    window.setLayout(column({field, other}));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    QTest::mouseClick(other, Qt::LeftButton);
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(Buttons, AnAmpersandIsNoMnemonic)
{
    Button saving(u"Save &quickly & quit"_s, SecondaryButtonStyle{});
    EXPECT_TRUE(saving.shortcut().isEmpty());
    saving.setText(u"&Other"_s);
    EXPECT_TRUE(saving.shortcut().isEmpty());
    EXPECT_EQ(saving.text(), u"&Other"_s);
    EXPECT_EQ(saving.sizeHint().width(), QFontMetrics(font(Type::BodyMedium)).horizontalAdvance(u"&Other"_s) + 30);
}

TEST_F(Buttons, ARunningActionDisablesItsButtonAndShowsASpinner)
{
    QWidget window;
    auto *mount = new Button(u"Mounting"_s, PrimaryButtonStyle{});
    window.setLayout(row({mount}));
    window.show();
    const int before = mount->sizeHint().width();
    mount->setRunning(true);
    EXPECT_FALSE(mount->isEnabled());
    const auto *spinner = mount->findChild<Spinner *>();
    ASSERT_NE(spinner, nullptr);
    EXPECT_TRUE(spinner->isVisible());
    EXPECT_EQ(spinner->size(), QSize(14, 14));
    EXPECT_EQ(mount->sizeHint().width(), before + 20);

    mount->setEnabled(true);
    EXPECT_FALSE(mount->isEnabled()) << "still running";
    mount->setRunning(false);
    EXPECT_TRUE(mount->isEnabled());
    EXPECT_FALSE(spinner->isVisible());
}

TEST_F(Buttons, TheSpinnerOfAWideButtonStandsBeforeItsLabel)
{
    const auto run = button(PrimaryButtonStyle{});
    run->resize(120, 32);
    run->setRunning(true);
    const QRect spinner = run->findChild<Spinner *>()->geometry();
    EXPECT_EQ(spinner.top(), (32 - 14) / 2);
    EXPECT_GT(spinner.left(), 6);
    EXPECT_LT(spinner.left(), 60);
}

TEST_F(Buttons, WhatWasDisabledStaysSoAfterRunning)
{
    const auto other = button(SecondaryButtonStyle{});
    other->setRunning(true);
    other->setEnabled(false);
    other->setRunning(false);
    EXPECT_FALSE(other->isEnabled());
    EXPECT_FALSE(other->testAttribute(Qt::WA_SetPalette));
}

TEST_F(Buttons, EnterInAFieldPressesTheDefault)
{
    QWidget window;
    auto *field = new QLineEdit;
    auto *cancel = new Button(u"Cancel"_s, SecondaryButtonStyle{});
    auto *ok = new Button(u"Save"_s, PrimaryButtonStyle{});
    ok->setDefault(true);
    window.setLayout(column({field, cancel, ok}));
    QSignalSpy cancelled(cancel, &QAbstractButton::clicked);
    QSignalSpy saved(ok, &QAbstractButton::clicked);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(saved.size(), 1);
    QTest::keyClick(cancel, Qt::Key_Return);
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_EQ(saved.size(), 1) << "the focused button goes first";
    ok->setEnabled(false);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(saved.size(), 1);
    ok->setEnabled(true);
    ok->hide();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(saved.size(), 1);
}

TEST_F(Buttons, HoverFadesUnlessMotionIsUnwanted)
{
    setReducedMotion(false);
    const auto secondary = button(SecondaryButtonStyle{});
    secondary->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(secondary.get()));
    hover(*secondary);
    EXPECT_EQ(fill(*secondary, 1.0), Theme::bg) << "not at once";
    EXPECT_TRUE(QTest::qWaitFor([&] { return fill(*secondary, 1.0) == Theme::panel; }, 2000));
}

TEST_F(Buttons, APictureOnlyButtonIsNamedByItsTooltip)
{
    IconButton eye(Icon::Eye, u"Show"_s);
    EXPECT_EQ(eye.sizeHint(), QSize(28, 28));
    EXPECT_EQ(eye.accessibleName(), u"Show"_s);
    EXPECT_EQ(eye.toolTip(), u"Show"_s);
    eye.setIcon(Icon::EyeOff, u"Hide"_s);
    EXPECT_EQ(eye.toolTip(), u"Hide"_s);
    QSignalSpy clicks(&eye, &QAbstractButton::clicked);
    QTest::mouseClick(&eye, Qt::LeftButton);
    QTest::keyClick(&eye, Qt::Key_Return);
    QTest::keyClick(&eye, Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 3);
    eye.resize(28, 28);
    EXPECT_GT(kit::count(kit::picture(eye, 2.0), Theme::text), 10);
    hover(eye);
    EXPECT_EQ(kit::colourAt(kit::picture(eye), 14, 2), Theme::panel);
}

TEST_F(Buttons, FillOfAnIconButtonUnderThePointerFadesIn)
{
    setReducedMotion(false);
    IconButton copy(Icon::Copy, u"Copy"_s);
    copy.resize(copy.sizeHint());
    copy.show();
    hover(copy);
    EXPECT_EQ(fill(copy, 1.0), Theme::bg) << "not at once";
    EXPECT_TRUE(QTest::qWaitFor([&] { return fill(copy, 1.0) == Theme::panel; }));
}
