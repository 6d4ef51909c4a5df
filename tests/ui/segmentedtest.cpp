// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/segmented.h"

#include "kittest.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QSignalSpy>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class SegmentedTest : public KitTest {
protected:
    SegmentedTest() : segmented(new Segmented(u"Console"_s, &window))
    {
        for (const auto &text : {u"Hubs"_s, u"Users"_s, u"Tokens"_s}) {
            segmented->addPart(text);
        }
        segmented->resize(segmented->sizeHint());
        parts = segmented->findChildren<QAbstractButton *>();
    }

    QWidget window;
    Segmented *segmented;
    QList<QAbstractButton *> parts;
};

} // namespace

TEST_F(SegmentedTest, Is32HighAnd28InsideACard)
{
    EXPECT_EQ(segmented->height(), 32);
    segmented->setControlHeight(28);
    EXPECT_EQ(segmented->height(), 28);
    EXPECT_LE(segmented->minimumSizeHint().height(), 28);
}

TEST_F(SegmentedTest, FirstPartIsChosenAndPartsAreRadioButtonsOfAGroup)
{
    EXPECT_EQ(segmented->count(), 3);
    EXPECT_EQ(segmented->currentIndex(), 0);
    EXPECT_EQ(role(*segmented), QAccessible::Grouping);
    EXPECT_EQ(name(*segmented), u"Console"_s);
    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(role(*parts[1]), QAccessible::RadioButton);
    EXPECT_EQ(name(*parts[1]), u"Users"_s);
    EXPECT_TRUE(tree(*parts[0])->state().checked);
}

TEST_F(SegmentedTest, ClickChoosesOnceAndTakesNoFocus)
{
    const QSignalSpy changed(segmented, &Segmented::currentChanged);
    show(window);
    QWidget *other = focused(window);
    QTest::mouseClick(parts[2], Qt::LeftButton);
    QTest::mouseClick(parts[2], Qt::LeftButton);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed.at(0).at(0).toInt(), 2);
    EXPECT_EQ(segmented->currentIndex(), 2);
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(SegmentedTest, ArrowsMoveTheChoiceAndTabReachesOnlyTheChosenPart)
{
    auto *other = new QWidget(&window);
    other->setFocusPolicy(Qt::TabFocus);
    show(window);
    parts[0]->setFocus(Qt::TabFocusReason);
    QTest::keyClick(parts[0], Qt::Key_Right);
    EXPECT_EQ(segmented->currentIndex(), 1);
    EXPECT_TRUE(parts[1]->hasFocus());
    QTest::keyClick(parts[1], Qt::Key_Left);
    EXPECT_EQ(segmented->currentIndex(), 0);
    QTest::keyClick(parts[0], Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
    QTest::keyClick(other, Qt::Key_Backtab);
    EXPECT_TRUE(parts[0]->hasFocus());
}

TEST_F(SegmentedTest, IndicesOutsideAreIgnored)
{
    const QSignalSpy changed(segmented, &Segmented::currentChanged);
    segmented->setCurrentIndex(7);
    segmented->setCurrentIndex(-1);
    EXPECT_EQ(segmented->currentIndex(), 0);
    segmented->setCurrentIndex(1);
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(SegmentedTest, ChosenPartIsUnderlined)
{
    show(window);
    for (const qreal scale : everyScale) {
        EXPECT_GT(kit::count(kit::picture(*parts[0], scale), Theme::accent), 10);
        EXPECT_EQ(kit::count(kit::picture(*parts[1], scale), Theme::accent), 0);
    }
    EXPECT_EQ(segmented->height(), 32);
    const int before = parts[1]->width();
    segmented->setCurrentIndex(1);
    EXPECT_EQ(parts[1]->sizeHint().width(), before) << "choosing moves nothing";
}
