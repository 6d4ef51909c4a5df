// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/bar.h"

#include "kittest.h"
#include "ui/theme.h"

#include <limits>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class BarTest : public KitTest {
protected:
    /// The filled share of the middle line, counted in pixels of the device.
    static double filled(double fraction, qreal scale)
    {
        Bar bar(fraction, Theme::line, Theme::accent, 6);
        bar.resize(200, 6);
        const QImage picture = kit::picture(bar, scale, Theme::bg);
        int count = 0;
        for (int x = 0; x < picture.width(); ++x) {
            count += picture.pixelColor(x, picture.height() / 2) == Theme::accent ? 1 : 0;
        }
        return count / static_cast<double>(picture.width());
    }
};

} // namespace

TEST_F(BarTest, FillsItsFractionAtEveryScale)
{
    for (const qreal scale : everyScale) {
        EXPECT_NEAR(filled(0.629, scale), 0.629, 0.02);
        EXPECT_NEAR(filled(0.5, scale), 0.5, 0.02);
        EXPECT_EQ(filled(0.0, scale), 0.0);
        EXPECT_NEAR(filled(1.0, scale), 1.0, 0.02);
    }
}

TEST_F(BarTest, FractionsOutOfRangeAreClamped)
{
    EXPECT_EQ(filled(-3.0, 1.0), 0.0);
    EXPECT_NEAR(filled(7.5, 1.0), 1.0, 0.02);
    EXPECT_EQ(filled(std::numeric_limits<double>::quiet_NaN(), 1.0), 0.0);
    EXPECT_EQ(filled(std::numeric_limits<double>::infinity(), 1.0), 0.0);
}

TEST_F(BarTest, ATraceShowsAsADot)
{
    EXPECT_GT(filled(0.0001, 1.0), 0.0);
    EXPECT_LT(filled(0.0001, 1.0), 0.05);
}

TEST_F(BarTest, IsAProgressBarWhoseValueIsInWords)
{
    Bar bar(0.65, Theme::line, Theme::accent);
    bar.setValueText(u"1.3 TB of 2.0 TB"_s);
    EXPECT_EQ(role(bar), QAccessible::ProgressBar);
    EXPECT_EQ(tree(bar)->text(QAccessible::Value), u"1.3 TB of 2.0 TB"_s);
    bar.setFraction(0.7);
    EXPECT_EQ(tree(bar)->valueInterface()->currentValue().toDouble(), 0.7);
    EXPECT_EQ(tree(bar)->text(QAccessible::Value), u"1.3 TB of 2.0 TB"_s);
}
