// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/direction.h"

#include "kittest.h"

#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/dates/datetimefield.h"
#include "ui/layout.h"
#include "ui/lists/cellrow.h"
#include "ui/lists/columnheader.h"
#include "ui/parts/statcell.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyle>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

/// How a piece of the kit looks where lines are read in this direction.
QImage pictureOf(QWidget &widget, Qt::LayoutDirection direction)
{
    widget.setLayoutDirection(direction);
    return kit::picture(widget);
}

/// The columns from the first to the last that are not of the ground's colour.
QRect inkOf(const QImage &image)
{
    const QRgb ground = qRgb(255, 255, 255);
    int left = image.width();
    int right = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) != ground) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    return {left, 0, right - left + 1, image.height()};
}

class DirectionTest : public KitTest {};

TEST_F(DirectionTest, ALineStandsAtTheOtherEdgeWithItsLettersInTheirOrder)
{
    for (const QString &text : {u"Keep a restore point…"_s, u"1.3 TB of 2.0 TB"_s, u"~/Quillfen/Documents"_s}) {
        AgentLabel label(text, Type::Body, Theme::heading);
        label.resize(400, label.sizeHint().height());
        const QImage before = pictureOf(label, Qt::LeftToRight);
        const QImage after = pictureOf(label, Qt::RightToLeft);
        const QRect here = inkOf(before);
        const QRect there = inkOf(after);
        EXPECT_LT(here.left(), 4);
        EXPECT_GT(there.right(), 395) << text.toStdString();
        EXPECT_EQ(before.copy(here), after.copy(there)) << text.toStdString() << " is written as in every layout";
    }
}

TEST_F(DirectionTest, ATextOfRightToLeftLettersRunsItsOwnWayInBothLayouts)
{
    AgentLabel label(u"שלום, עולם."_s, Type::Body, Theme::heading);
    label.resize(400, label.sizeHint().height());
    const QImage before = pictureOf(label, Qt::LeftToRight);
    const QImage after = pictureOf(label, Qt::RightToLeft);
    EXPECT_LT(inkOf(before).left(), 4);
    EXPECT_GT(inkOf(after).right(), 395);
    EXPECT_EQ(before.copy(inkOf(before)), after.copy(inkOf(after)));
}

TEST_F(DirectionTest, ATextThatStandsAtTheEndAndOneInTheMiddleTurnAsWell)
{
    AgentLabel label(u"100 GB"_s, Type::Body, Theme::heading);
    label.resize(400, label.sizeHint().height());
    label.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_GT(inkOf(pictureOf(label, Qt::LeftToRight)).right(), 395);
    EXPECT_LT(inkOf(pictureOf(label, Qt::RightToLeft)).left(), 4);
    label.setAlignment(Qt::AlignCenter);
    const QRect middle = inkOf(pictureOf(label, Qt::RightToLeft));
    EXPECT_NEAR(middle.center().x(), 200, 3);
}

TEST_F(DirectionTest, APartIsMirroredWithinItsWidget)
{
    QWidget widget;
    widget.resize(100, 40);
    EXPECT_EQ(mirrored(widget, QRectF(4, 10, 3, 16)), QRectF(4, 10, 3, 16));
    widget.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(mirrored(widget, QRectF(4, 10, 3, 16)), QRectF(93, 10, 3, 16));
}

TEST_F(DirectionTest, ARowTurnsRoundWithItsMargins)
{
    QWidget whole;
    auto *const first = new QWidget;
    auto *const second = new QWidget;
    first->setFixedSize(30, 20);
    second->setFixedSize(20, 20);
    whole.setLayout(row({first, Stretch{}, second}, 0, {26, 0, 6, 0}));
    whole.resize(200, 20);
    const auto places = [&](Qt::LayoutDirection direction) {
        whole.setLayoutDirection(direction);
        whole.layout()->invalidate();
        whole.layout()->activate();
        return std::pair(first->x(), second->x());
    };
    EXPECT_EQ(places(Qt::LeftToRight), std::pair(26, 174));
    EXPECT_EQ(places(Qt::RightToLeft), std::pair(200 - 26 - 30, 6));
    EXPECT_EQ(places(Qt::LeftToRight), std::pair(26, 174));
}

TEST_F(DirectionTest, ButtonsCarryTheirPictureWhereReadingBegins)
{
    Button button(Icon::Copy, u"Copy"_s, SecondaryButtonStyle{});
    button.resize(button.sizeHint());
    const QRect atLeft(9, (button.height() - 16) / 2, 16, 16);
    const QRect atRight(button.width() - 9 - 16, atLeft.y(), 16, 16);
    const QImage before = pictureOf(button, Qt::LeftToRight);
    const QImage after = pictureOf(button, Qt::RightToLeft);
    EXPECT_EQ(before.copy(atLeft), after.copy(atRight));
    EXPECT_NE(before.copy(atLeft), after.copy(atLeft)) << "there are the letters now";
}

TEST_F(DirectionTest, CellsAndTheirCaptionsMirrorEachOther)
{
    const auto columns =
        std::make_shared<const std::vector<Column>>(std::vector<Column>{{100, 60, 3}, {80, 40, 1}, {90, 90, 0}});
    QWidget window;
    auto *const row = new CellRow(columns, &window);
    auto *const header = new ColumnHeader({u"Name"_s, u"Size"_s, {}}, columns, &window);
    auto *const name = new AgentLabel(u"Documents"_s, Type::Body, Theme::heading);
    auto *const button = new Button(u"Remove"_s, SecondaryButtonStyle{28});
    row->addCell(name);
    row->addButton(button);
    window.setLayoutDirection(Qt::RightToLeft);
    for (QWidget *const each : std::initializer_list<QWidget *>{row, header}) {
        each->resize(400, 40);
    }
    window.show();
    EXPECT_EQ(name->geometry().right() + 1, 400 - cellRowMargin);
    EXPECT_EQ(button->x(), cellRowMargin);
    const auto captions = header->findChildren<QAbstractButton *>();
    ASSERT_EQ(captions.size(), 2);
    EXPECT_EQ(captions[0]->geometry().right() + 1, 400 - cellRowMargin + 4) << "its text is level with the names";
    EXPECT_LT(captions[1]->geometry().right(), captions[0]->x());
}

TEST_F(DirectionTest, FieldsKeepTheirTextClearOfTheirPicture)
{
    TextField field(u"Search"_s);
    field.setLeadingIcon(Icon::Search);
    const QMargins before = field.textMargins();
    field.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(before.left(), before.right());
    EXPECT_EQ(field.textMargins().right(), before.left());
    EXPECT_EQ(field.textMargins().left(), before.right());
}

TEST_F(DirectionTest, ADateStandsInTheOrderOfItsLanguage)
{
    QWidget window;
    window.setLayoutDirection(Qt::RightToLeft);
    DateTimeField field(u"Date and time"_s, 36, &window);
    field.resize(216, 36);
    field.showMoment(QDateTime(QDate(2026, 11, 20), QTime(20, 40)));
    EXPECT_EQ(field.text(), u"Nov 20, 2026 · 20:40"_s);
    window.show();
    EXPECT_GT(field.findChild<QLineEdit *>()->x(), 12 + 16) << "the picture of the calendar stands before it";
}

TEST_F(DirectionTest, TheLineBetweenTwoValuesStandsBetweenThem)
{
    StatCell cell(u"Used"_s, u"61.4 GB"_s);
    cell.setDivided(true);
    cell.resize(160, cell.sizeHint().height());
    const auto isLine = [&](const QImage &image, int x) { return image.pixelColor(x, 2) == QColor(Theme::line); };
    const QImage before = pictureOf(cell, Qt::LeftToRight);
    EXPECT_TRUE(isLine(before, 0) && !isLine(before, 159));
    const QImage after = pictureOf(cell, Qt::RightToLeft);
    EXPECT_TRUE(isLine(after, 159) && !isLine(after, 0));
}

TEST_F(DirectionTest, AScrollBarKeepsItsDistanceFromTheEdgeItStandsAt)
{
    QScrollBar bar(Qt::Vertical);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.setProperty("inset", 6);
    bar.resize(bar.sizeHint().width(), 200);
    const QRect right = inkOf(pictureOf(bar, Qt::LeftToRight));
    const QRect left = inkOf(pictureOf(bar, Qt::RightToLeft));
    EXPECT_EQ(bar.width() - 1 - right.right(), 6 + 2);
    EXPECT_EQ(left.left(), 6 + 2);
}

} // namespace
