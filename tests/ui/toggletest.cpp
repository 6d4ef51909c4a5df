// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/toggle.h"

#include "kittest.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QSignalSpy>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class ToggleTest : public KitTest {
protected:
    static QColor track(Toggle &toggle, qreal scale = 1.0)
    {
        // Between the knob's two places.
        return kit::colourAt(kit::picture(toggle, scale, Theme::bg), toggle.width() - 18, toggle.height() / 2.0);
    }
};

} // namespace

TEST_F(ToggleTest, IsACheckBoxNamedByItsText)
{
    Toggle toggle(u"Mount on this Mac"_s, u"When it has been created."_s);
    EXPECT_EQ(role(toggle), QAccessible::CheckBox);
    EXPECT_EQ(name(toggle), u"Mount on this Mac"_s);
    EXPECT_FALSE(tree(toggle)->state().checked);
    toggle.setChecked(true);
    EXPECT_TRUE(tree(toggle)->state().checked);
    EXPECT_EQ(name(*toggle.findChild<AgentLabel *>()), u"When it has been created."_s);
}

TEST_F(ToggleTest, ColoursOfItsStatesAtEveryScale)
{
    for (const qreal scale : everyScale) {
        Toggle toggle(u"Self-hosted manager"_s);
        toggle.resize(300, 28);
        EXPECT_EQ(track(toggle, scale), QColor(Theme::muted));
        toggle.setChecked(true);
        EXPECT_EQ(track(toggle, scale), QColor(Theme::ok));
        hover(toggle);
        EXPECT_NE(track(toggle, scale), QColor(Theme::ok));
        toggle.setEnabled(false);
        EXPECT_EQ(track(toggle, scale), QColor(Theme::line));
    }
}

TEST_F(ToggleTest, KnobChangesSides)
{
    Toggle toggle({});
    toggle.resize(toggle.sizeHint());
    EXPECT_EQ(toggle.size(), QSize(36, 28)) << "as high as a hand needs";
    EXPECT_EQ(kit::colourAt(kit::picture(toggle), 10, 14), QColor(Theme::bg));
    EXPECT_EQ(kit::colourAt(kit::picture(toggle), 26, 14), QColor(Theme::muted));
    toggle.setChecked(true);
    EXPECT_EQ(kit::colourAt(kit::picture(toggle), 10, 14), QColor(Theme::ok));
    EXPECT_EQ(kit::colourAt(kit::picture(toggle), 26, 14), QColor(Theme::bg));
}

TEST_F(ToggleTest, ReactsAnywhereOnItsRowAndToSpace)
{
    Toggle toggle(u"Encrypt with a key only I hold"_s, u"The key file is created on this Mac."_s);
    toggle.resize(440, toggle.heightForWidth(440));
    const QSignalSpy toggled(&toggle, &QAbstractButton::toggled);
    show(toggle);
    toggle.clearFocus();
    QTest::mouseClick(&toggle, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseClick(toggle.windowHandle(), Qt::LeftButton, {}, QPoint(5, toggle.height() - 5)); // on the caption
    QTest::mouseClick(&toggle, Qt::LeftButton, {}, QPoint(430, 10));
    EXPECT_FALSE(toggle.hasFocus());
    const auto byMouse = toggled.size();
    toggle.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&toggle, Qt::Key_Space);
    EXPECT_EQ(byMouse, 3);
    EXPECT_EQ(toggled.size(), byMouse + 1);
}

TEST_F(ToggleTest, CaptionWrapsAndTheRowGrowsWithIt)
{
    Toggle toggle(u"Encrypt with a key only I hold"_s);
    EXPECT_EQ(toggle.sizeHint().height(), 28);
    toggle.setCaption(u"The key file is created on this Mac when the volume first starts. Quillfen never sees it. If "
                      "it's lost, the data can't be read."_s);
    EXPECT_TRUE(toggle.hasHeightForWidth());
    EXPECT_GT(toggle.heightForWidth(300), toggle.heightForWidth(440));
    EXPECT_EQ(toggle.heightForWidth(2000), toggle.heightForWidth(1000)) << "captions stay within 380";
    toggle.setCaption({});
    EXPECT_EQ(toggle.sizeHint().height(), 28);
}

TEST_F(ToggleTest, AmpersandOfANameIsNoMnemonic)
{
    Toggle toggle(u"Mount on this Mac (~/Quillfen/R&D)"_s);
    EXPECT_EQ(name(toggle), u"Mount on this Mac (~/Quillfen/R&D)"_s);
    EXPECT_TRUE(toggle.shortcut().isEmpty());
    EXPECT_LE(Toggle(QString(16 * 1024, u'x')).sizeHint().width(), 440);
}
