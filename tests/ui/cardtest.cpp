// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/card.h"

#include "kittest.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/sectiontitle.h"
#include "ui/theme.h"

#include <QBoxLayout>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class CardTest : public KitTest {
protected:
    static QWidget *row(int height = 40)
    {
        auto *made = new QWidget;
        made->setFixedHeight(height);
        return made;
    }

    static void settle(Card &card, QSize size = {400, 300})
    {
        card.resize(size);
        card.show();
        QApplication::processEvents();
    }
};

} // namespace

TEST_F(CardTest, BandIsFortyFourHighAndFiftyTwoWithButtons)
{
    Card card;
    card.band()->addWidget(new SectionTitle(u"Engine"_s));
    card.addRow(row());
    settle(card, {400, 86});
    EXPECT_EQ(card.band()->parentWidget()->height(), 44);
    card.band()->addWidget(new Button(u"Stop"_s, SecondaryButtonStyle{.height = 28}));
    settle(card, {400, 94});
    EXPECT_EQ(card.band()->parentWidget()->height(), 52);
}

TEST_F(CardTest, PartsWithoutContentTakeNoRoom)
{
    Card card;
    EXPECT_TRUE(card.band()->parentWidget()->isHidden());
    EXPECT_TRUE(card.foot()->parentWidget()->isHidden());
    card.addRow(row());
    settle(card);
    EXPECT_EQ(card.sizeHint().height(), 42) << "the row and the card's two lines";

    card.foot()->addWidget(new Button(u"Delete"_s, DangerButtonStyle{}));
    QApplication::processEvents();
    EXPECT_FALSE(card.foot()->parentWidget()->isHidden());
}

TEST_F(CardTest, BandOnPanelBodyOnPanel2HairlineBetween)
{
    for (const qreal scale : everyScale) {
        Card card;
        card.band()->addWidget(new SectionTitle(u"Engine"_s));
        card.addRow(row());
        settle(card, {400, 87});
        const QImage picture = kit::picture(card, scale, Theme::bg);
        EXPECT_EQ(kit::colourAt(picture, 300, 20), QColor(Theme::panel));
        EXPECT_EQ(kit::colourAt(picture, 300, 45.5), QColor(Theme::line));
        EXPECT_EQ(kit::colourAt(picture, 300, 60), QColor(Theme::panel2));
        EXPECT_EQ(kit::colourAt(picture, 300, 0), QColor(Theme::line));
        EXPECT_EQ(kit::colourAt(picture, 0, 0), QColor(Theme::bg)) << "round corners";
    }
}

TEST_F(CardTest, DarkSet)
{
    Card card(true);
    card.band()->addWidget(new SectionTitle(u"Engine"_s, true));
    card.addRow(row());
    settle(card, {400, 87});
    const QImage picture = kit::picture(card);
    EXPECT_EQ(kit::colourAt(picture, 300, 20), QColor(Theme::dPanel));
    EXPECT_EQ(kit::colourAt(picture, 300, 45), QColor(Theme::dLine));
    EXPECT_EQ(kit::colourAt(picture, 300, 60), QColor(Theme::dBg));
}

TEST_F(CardTest, HiddenRowTakesItsHairlineAlong)
{
    QWidget board;
    auto *card = new Card;
    QWidget *first = row();
    QWidget *second = row();
    card->addRow(first);
    card->addRow(second);
    board.setLayout(column({card, Stretch{}}));
    board.resize(400, 300);
    show(board);
    EXPECT_TRUE(QTest::qWaitFor([card] { return card->height() == 83; }, 2000));
    EXPECT_EQ(kit::colourAt(kit::picture(*card), 200, 41), QColor(Theme::line));

    first->hide();
    EXPECT_TRUE(QTest::qWaitFor([card] { return card->height() == 42; }, 2000)) << card->height();
    EXPECT_EQ(second->mapTo(card, QPoint()).y(), 1);
    EXPECT_EQ(kit::count(kit::picture(*card).copy(20, 2, 300, 38), Theme::line), 0);

    second->hide();
    EXPECT_TRUE(QTest::qWaitFor([first] { return first->parentWidget()->isHidden(); }, 2000));
    second->show();
    EXPECT_TRUE(QTest::qWaitFor([second] { return second->isVisible(); }, 2000));
}
