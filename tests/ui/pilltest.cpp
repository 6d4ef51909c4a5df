// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/pill.h"

#include "kittest.h"
#include "ui/theme.h"

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class PillTest : public KitTest {};

} // namespace

TEST_F(PillTest, IsRoundTwentyHighAndInItsColours)
{
    for (const qreal scale : everyScale) {
        Pill pill(u"Protected"_s, Theme::okBg, Theme::okText);
        EXPECT_EQ(pill.sizeHint().height(), 20);
        pill.resize(pill.sizeHint());
        const QImage picture = kit::picture(pill, scale, Theme::panel);
        EXPECT_EQ(kit::colourAt(picture, 4, 10), QColor(Theme::okBg));
        EXPECT_EQ(kit::colourAt(picture, 0, 0), QColor(Theme::panel));
    }
}

TEST_F(PillTest, OutlineStandsOutOnASurfaceOfItsColour)
{
    Pill pill(u"appliance running here"_s, Theme::panel, Theme::heading);
    pill.resize(pill.sizeHint());
    EXPECT_EQ(kit::count(kit::picture(pill, 1.0, Theme::panel), Theme::line), 0);
    pill.setOutlined(true);
    EXPECT_EQ(kit::colourAt(kit::picture(pill, 1.0, Theme::panel), pill.width() / 2.0, 0), QColor(Theme::line));
}

TEST_F(PillTest, WordsAreItsName)
{
    Pill pill(u"failed"_s, Theme::dangerBg, Theme::dangerText);
    EXPECT_EQ(role(pill), QAccessible::StaticText);
    EXPECT_EQ(name(pill), u"failed"_s);
    pill.setText(u"archived"_s);
    EXPECT_EQ(name(pill), u"archived"_s);
}

TEST_F(PillTest, NoTextMakesItWiderThanAPill)
{
    Pill pill(QString(1024 * 1024, u'W'), Theme::panel, Theme::heading);
    EXPECT_EQ(pill.sizeHint().width(), 240);
    EXPECT_EQ(pill.text().size(), 1024 * 1024);
}
