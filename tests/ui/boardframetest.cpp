// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/boardframe.h"

#include "kit.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/scrollarea.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

/// A board beside a sidebar, as in the main window.
struct Window : QWidget {
    explicit Window(int width, int count = 1)
    {
        kit::wearHouseLook();
        auto *side = new QWidget;
        side->setFixedWidth(224);
        board->actions()->addWidget(action);
        for (int at = 0; at < count; ++at) {
            auto *card = new QWidget;
            card->setFixedHeight(200);
            board->body()->addWidget(card);
            cards.push_back(card);
        }
        setLayout(row({side, Item{board, 1}}, 0));
        resize(width, 760);
        show();
        QCoreApplication::processEvents();
    }

    /// Where a widget is in the board.
    [[nodiscard]] QRect place(const QWidget *widget) const
    {
        return {widget->mapTo(board, QPoint(0, 0)), widget->size()};
    }

    BoardFrame *board = new BoardFrame(u"Volumes"_s);
    Button *action = new Button(u"+ New volume"_s, PrimaryButtonStyle{});
    std::vector<QWidget *> cards;
};

AgentLabel *label(const Window &window, const QString &text)
{
    for (auto *each : window.board->findChildren<AgentLabel *>()) {
        if (each->text() == text) {
            return each;
        }
    }
    return nullptr;
}

} // namespace

TEST(BoardFrame, TitleBlockIs80HighAnd104WithASecondLine)
{
    const Window window(1180);
    EXPECT_EQ(window.place(label(window, u"Volumes"_s)).top(), 36);
    EXPECT_EQ(label(window, u"Volumes"_s)->height(), 28) << "the feet of its letters have their room";
    EXPECT_EQ(window.place(window.cards.front()).top(), 80);
    EXPECT_EQ(window.place(window.action).bottom() + 1, 64);

    window.board->setSubtitle(u"5 volumes · uploading"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.place(label(window, u"Volumes"_s)),
              QRect(28, 36, window.place(label(window, u"Volumes"_s)).width(), 28));
    EXPECT_EQ(window.place(label(window, u"5 volumes · uploading"_s)).top(), 68);
    EXPECT_EQ(window.place(window.cards.front()).top(), 104);
    EXPECT_EQ(window.place(window.action).bottom() + 1, 88);
}

TEST(BoardFrame, TheScrollBarHasRoomForItsGripBesideTheWindowsEdge)
{
    const Window window(1180, 10);
    const QScrollBar *const bar = window.board->scrollArea()->verticalScrollBar();
    ASSERT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->width(), 10 + windowEdge);
    EXPECT_EQ(bar->parentWidget()->width(), 10 + windowEdge) << "what Qt puts around it does not cut it";
    EXPECT_EQ(window.place(bar).right() + 1, window.board->width());
}

TEST(BoardFrame, MarginsAre28InWideWindowsAnd20InNarrowOnes)
{
    Window wide(1180);
    EXPECT_EQ(wide.board->margin(), 28);
    EXPECT_EQ(wide.place(wide.cards.front()).left(), 28);
    EXPECT_EQ(wide.cards.front()->width(), 1180 - 224 - 56);
    EXPECT_EQ(wide.place(wide.action).right() + 1, wide.board->width() - 28);

    Window narrow(960);
    EXPECT_EQ(narrow.board->margin(), 20);
    EXPECT_EQ(narrow.place(narrow.cards.front()).left(), 20);
    EXPECT_EQ(narrow.cards.front()->width(), 960 - 224 - 40);

    wide.resize(1079, 760);
    QCoreApplication::processEvents();
    EXPECT_EQ(wide.place(wide.cards.front()).left(), 20);
    wide.resize(1080, 760);
    QCoreApplication::processEvents();
    EXPECT_EQ(wide.place(wide.cards.front()).left(), 28);
}

TEST(BoardFrame, CardsStand16Apart)
{
    const Window window(1180, 2);
    EXPECT_EQ(window.place(window.cards[1]).top() - window.place(window.cards[0]).bottom() - 1, 16);
}

TEST(BoardFrame, ScrollingMovesTheBodyOnlyAndDrawsAHairline)
{
    const Window window(1180, 6);
    const int blockEnd = 80;
    EXPECT_NE(kit::colourAt(kit::picture(*window.board), 400, blockEnd - 1), Theme::line);
    QScrollBar *bar = window.board->scrollArea()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(window.cards.front()->width(), 1180 - 224 - 56) << "the scroll bar takes no room";
    bar->setValue(50);
    QCoreApplication::processEvents();
    EXPECT_EQ(kit::colourAt(kit::picture(*window.board), 400, blockEnd - 1), Theme::line);
    EXPECT_EQ(window.place(label(window, u"Volumes"_s)).top(), 36);
    EXPECT_EQ(label(window, u"Volumes"_s)->height(), 28) << "the feet of its letters have their room";
    EXPECT_EQ(window.place(window.cards.front()).top(), blockEnd - 50);
}

TEST(BoardFrame, ALongTitleGivesWayToTheActions)
{
    const Window window(960);
    window.board->setTitle(QString(60, u'W'));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.width(), 960);
    EXPECT_EQ(window.place(window.action).right() + 1, window.board->width() - 20);
    EXPECT_EQ(window.action->width(), window.action->sizeHint().width());
}

TEST(BoardFrame, ABodyWidgetTakesTheWholeBody)
{
    const Window window(1180);
    auto *own = new QWidget;
    window.board->setBodyWidget(own);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.board->scrollArea(), nullptr);
    EXPECT_EQ(window.place(own), QRect(0, 80, window.board->width(), window.board->height() - 80));
}
