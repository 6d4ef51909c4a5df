// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/restorepointslist.h"

#include "boards/timetravel/restorepointrow.h"
#include "rpc/json.h"
#include "state/userlocale.h"
#include "ui/controls/buttons.h"
#include "ui/parts/scrollarea.h"
#include "ui/style/housestyle.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int rowHeight = 40;

std::string timestampOf(int place)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "2026-%02d-%02dT%02d:%02d:%02dZ", 1 + place / 2'419'200 % 12,
                  1 + place / 86'400 % 28, place / 3'600 % 24, place / 60 % 60, place % 60);
    return text.data();
}

RestorePoints pointsFrom(int first, int count)
{
    json::array list;
    for (int place = first; place < first + count; ++place) {
        json::object point = params("timestamp", timestampOf(place));
        if (place % 5 == 0) {
            point["label"] = "label " + std::to_string(place);
        }
        list.push_back(point);
    }
    json::object answer;
    answer["recovery_points"] = list;
    return RestorePoints::of(answer);
}

class RestorePointsListTest : public testing::Test {
protected:
    RestorePointsListTest()
    {
        applyHouseLook(*static_cast<QApplication *>(QCoreApplication::instance()));
        before->setFocusPolicy(Qt::TabFocus);
        after->setFocusPolicy(Qt::TabFocus);
        auto *const layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(before);
        layout->addWidget(list);
        layout->addWidget(after);
        layout->addStretch();
        window.resize(860, 420);
        QObject::connect(list, &RestorePointsList::openRequested, list,
                         [this](const QString &timestamp) { opened.push_back(timestamp.toStdString()); });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        before->setFocus(Qt::TabFocusReason);
    }

    void put(int count)
    {
        list->setPoints(pointsFrom(0, count));
        QTest::qWait(1);
    }

    /// The rows that can be seen, from top to bottom.
    [[nodiscard]] std::vector<RestorePointRow *> visibleRows() const
    {
        std::vector<RestorePointRow *> rows;
        for (RestorePointRow *const row : list->findChildren<RestorePointRow *>()) {
            if (row->isVisible() && row->y() > -rowHeight && row->y() < list->viewport()->height()) {
                rows.push_back(row);
            }
        }
        std::sort(rows.begin(), rows.end(), [](auto *left, auto *right) { return left->y() < right->y(); });
        return rows;
    }
    [[nodiscard]] std::vector<std::size_t> visiblePlaces() const
    {
        std::vector<std::size_t> places;
        for (const RestorePointRow *const row : visibleRows()) {
            EXPECT_EQ(row->timestamp().toStdString(), timestampOf(static_cast<int>(row->place()) + offset));
            places.push_back(row->place());
        }
        return places;
    }
    [[nodiscard]] static std::string focused()
    {
        const QWidget *const widget = QApplication::focusWidget();
        const auto *const row = widget == nullptr ? nullptr : qobject_cast<RestorePointRow *>(widget->parentWidget());
        return row == nullptr ? "" : row->timestamp().toStdString();
    }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    const LocaleOverride locale{"en_US", "UTC"};
    QWidget window;
    QWidget *before = new QWidget;
    RestorePointsList *list = new RestorePointsList;
    QWidget *after = new QWidget;
    std::vector<std::string> opened;
    int offset = 0; ///< what the first of the points counts from
};

TEST_F(RestorePointsListTest, IsAsHighAsItsRowsUpToSeven)
{
    put(0);
    EXPECT_EQ(list->height(), 0);
    put(3);
    EXPECT_EQ(list->height(), 3 * rowHeight);
    EXPECT_THAT(visiblePlaces(), ElementsAre(0, 1, 2));
    EXPECT_FALSE(list->verticalScrollBar()->isVisible());
    put(7);
    EXPECT_EQ(list->height(), 7 * rowHeight);
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
    put(8);
    EXPECT_EQ(list->height(), 7 * rowHeight);
    EXPECT_EQ(list->verticalScrollBar()->maximum(), rowHeight);
}

TEST_F(RestorePointsListTest, BeginsWithTheNewestInSight)
{
    put(1'000);
    EXPECT_THAT(visiblePlaces(), ElementsAre(993, 994, 995, 996, 997, 998, 999));
}

TEST_F(RestorePointsListTest, TheScrollBarKeepsOffTheRoundCornersOfTheCard)
{
    put(1'000);
    const QScrollBar *const bar = list->verticalScrollBar();
    ASSERT_TRUE(bar->isVisible());
    const QRect place(bar->mapTo(list, QPoint(0, 0)), bar->size());
    EXPECT_EQ(place.top(), 6);
    EXPECT_EQ(place.bottom(), list->rect().bottom() - 6);
    EXPECT_EQ(list->viewport()->height(), 7 * rowHeight) << "the rows have all of the room";
}

TEST_F(RestorePointsListTest, ARowSaysMomentAndLabel)
{
    put(6);
    const RestorePointRow *const row = visibleRows().at(5);
    const auto labels = row->findChildren<AgentLabel *>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0]->text(), u"Thu, Jan 1 · 00:00:05"_s);
    EXPECT_EQ(labels[0]->x(), 16);
    EXPECT_EQ(labels[1]->text(), u"label 5"_s);
    EXPECT_EQ(labels[1]->x(), 16 + 220 + 12);
    EXPECT_EQ(row->button()->text(), u"Open"_s);
    EXPECT_EQ(row->button()->height(), 28);
    EXPECT_EQ(row->button()->geometry().right() + 1, row->width() - 16);
    put(8);
    EXPECT_EQ(visibleRows().front()->button()->geometry().right() + 1, row->width() - 24) << "beside the scroll bar";
}

TEST_F(RestorePointsListTest, OpenSaysWhichByMouseAndKeyboard)
{
    put(3);
    QTest::mouseClick(visibleRows().at(1)->button(), Qt::LeftButton);
    visibleRows().at(2)->button()->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_THAT(opened, ElementsAre(timestampOf(1), timestampOf(2), timestampOf(0)));
}

TEST_F(RestorePointsListTest, ATimestampThatIsNoMomentIsShownAndOpenedAsItIs)
{
    json::object answer;
    answer["points"] = json::array{params("timestamp", "soon"), json::object(), params("timestamp", 12)};
    list->setPoints(RestorePoints::of(answer));
    QTest::qWait(1);
    const std::vector<RestorePointRow *> rows = visibleRows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0]->findChildren<AgentLabel *>().front()->text(), QString());
    EXPECT_EQ(rows[1]->findChildren<AgentLabel *>().front()->text(), u"12"_s);
    EXPECT_EQ(rows[2]->findChildren<AgentLabel *>().front()->text(), u"soon"_s);
    for (RestorePointRow *const row : rows) {
        row->button()->click();
    }
    EXPECT_THAT(opened, ElementsAre("", "12", "soon"));
}

TEST_F(RestorePointsListTest, AMillionPointsTakeNineRows)
{
    put(1'000'000);
    EXPECT_LE(list->findChildren<RestorePointRow *>().size(), 9);
    EXPECT_THAT(visiblePlaces().back(), 999'999U);
    list->verticalScrollBar()->setValue(0);
    EXPECT_THAT(visiblePlaces(), ElementsAre(0, 1, 2, 3, 4, 5, 6));
    list->verticalScrollBar()->setValue(500'000 * rowHeight + 10);
    EXPECT_THAT(visiblePlaces(), ElementsAre(500'000, 500'001, 500'002, 500'003, 500'004, 500'005, 500'006, 500'007));
    EXPECT_EQ(visibleRows().front()->y(), -10);
}

TEST_F(RestorePointsListTest, ScrollingKeepsTheRowsThatStay)
{
    put(100);
    list->verticalScrollBar()->setValue(20 * rowHeight);
    const std::vector<RestorePointRow *> rows = visibleRows();
    list->verticalScrollBar()->setValue(21 * rowHeight);
    const std::vector<RestorePointRow *> scrolled = visibleRows();
    EXPECT_TRUE(std::equal(rows.begin() + 1, rows.end(), scrolled.begin()));
    EXPECT_THAT(visiblePlaces(), ElementsAre(21, 22, 23, 24, 25, 26, 27));
}

TEST_F(RestorePointsListTest, IsOneStopOfTab)
{
    put(100);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), timestampOf(99)) << "the newest";
    key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after);
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_EQ(focused(), timestampOf(99));
    key(Qt::Key_Up);
    key(Qt::Key_Tab);
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_EQ(focused(), timestampOf(98)) << "where it was left";
}

TEST_F(RestorePointsListTest, KeysGoFromRowToRowAndToTheEnds)
{
    put(1'000'000);
    key(Qt::Key_Tab);
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), timestampOf(999'999));
    key(Qt::Key_PageUp);
    EXPECT_EQ(focused(), timestampOf(999'992));
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), timestampOf(999'991));
    EXPECT_THAT(visiblePlaces(), testing::Contains(999'991));
    key(Qt::Key_Home);
    EXPECT_EQ(focused(), timestampOf(0));
    EXPECT_THAT(visiblePlaces(), ElementsAre(0, 1, 2, 3, 4, 5, 6));
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), timestampOf(0));
    key(Qt::Key_PageDown);
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), timestampOf(8));
    EXPECT_THAT(visiblePlaces(), ElementsAre(2, 3, 4, 5, 6, 7, 8));
    key(Qt::Key_End);
    EXPECT_EQ(focused(), timestampOf(999'999));
}

TEST_F(RestorePointsListTest, TheBoardFollowsTheRowThatAKeyGoesTo)
{
    ScrollArea board;
    auto *const contents = new QWidget;
    auto *const layout = new QVBoxLayout(contents);
    layout->addSpacing(300);
    auto *const inside = new RestorePointsList;
    layout->addWidget(inside);
    board.setWidget(contents);
    board.setWidgetResizable(true);
    board.resize(600, 400);
    inside->setPoints(pointsFrom(0, 100));
    board.show();
    board.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&board));
    QTest::qWait(1);
    const auto isInSight = [&] {
        const QWidget *const button = QApplication::focusWidget();
        return board.viewport()->rect().contains(QRect(button->mapTo(board.viewport(), QPoint(0, 0)), button->size()));
    };
    for (RestorePointRow *const row : inside->findChildren<RestorePointRow *>()) {
        if (row->place() == 93) {
            row->button()->setFocus(Qt::TabFocusReason);
        }
    }
    board.verticalScrollBar()->setValue(0);
    ASSERT_TRUE(isInSight());
    key(Qt::Key_End);
    EXPECT_EQ(focused(), timestampOf(99));
    EXPECT_TRUE(isInSight());
    key(Qt::Key_Home);
    EXPECT_EQ(focused(), timestampOf(0));
    EXPECT_TRUE(isInSight());
}

TEST_F(RestorePointsListTest, ARowWithFocusThatIsScrolledAwayKeepsItsPoint)
{
    put(1'000);
    key(Qt::Key_Tab);
    key(Qt::Key_Up);
    list->verticalScrollBar()->setValue(100 * rowHeight);
    EXPECT_THAT(visiblePlaces(), ElementsAre(100, 101, 102, 103, 104, 105, 106));
    EXPECT_EQ(focused(), timestampOf(998));
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), timestampOf(997));
    EXPECT_THAT(visiblePlaces(), testing::Contains(997));
}

TEST_F(RestorePointsListTest, NewPointsLeaveThePlaceAlone)
{
    put(1'000);
    list->verticalScrollBar()->setValue(500 * rowHeight + 7);
    offset = 30;
    list->setPoints(pointsFrom(30, 1'000)); // thirty of the oldest are gone, thirty new ones are there
    EXPECT_EQ(visibleRows().front()->timestamp().toStdString(), timestampOf(500));
    EXPECT_EQ(visibleRows().front()->y(), -7);
    EXPECT_THAT(visiblePlaces().front(), 470U);
}

TEST_F(RestorePointsListTest, AtItsEndTheListFollowsTheNewest)
{
    put(1'000);
    put(1'001);
    EXPECT_THAT(visiblePlaces().back(), 1'000U);
}

TEST_F(RestorePointsListTest, FocusStaysWithItsPointWhenPointsChange)
{
    put(1'000);
    key(Qt::Key_Tab);
    key(Qt::Key_Up);
    offset = 30;
    list->setPoints(pointsFrom(30, 1'000));
    EXPECT_EQ(focused(), timestampOf(998));
    key(Qt::Key_Return);
    EXPECT_THAT(opened, ElementsAre(timestampOf(998)));
    list->setPoints(RestorePoints());
    EXPECT_EQ(focused(), "");
    EXPECT_THAT(visibleRows(), IsEmpty());
}

TEST_F(RestorePointsListTest, ThePointOnTopMayBeGone)
{
    put(100);
    list->verticalScrollBar()->setValue(10 * rowHeight);
    offset = 50;
    list->setPoints(pointsFrom(50, 100));
    EXPECT_EQ(visibleRows().front()->timestamp().toStdString(), timestampOf(50));
    offset = 0;
    list->setPoints(pointsFrom(0, 2));
    EXPECT_THAT(visiblePlaces(), ElementsAre(0, 1));
}

TEST_F(RestorePointsListTest, WhereNothingIsLeftToScrollTheWheelIsTheBoards)
{
    put(100);
    const auto wheel = [&](int delta) {
        QWheelEvent event(QPointF(100, 100), list->viewport()->mapToGlobal(QPointF(100, 100)), {}, {0, delta},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(list->viewport(), &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(wheel(-120));
    EXPECT_TRUE(wheel(120));
}

TEST_F(RestorePointsListTest, ReadsAsAListOfRowsWhoseButtonsSayWhich)
{
    put(6);
    QAccessibleInterface *const whole = QAccessible::queryAccessibleInterface(list);
    EXPECT_EQ(whole->role(), QAccessible::List);
    EXPECT_EQ(whole->text(QAccessible::Name), u"Restore points"_s);
    RestorePointRow *const row = visibleRows().at(5);
    QAccessibleInterface *const item = QAccessible::queryAccessibleInterface(row);
    EXPECT_EQ(item->role(), QAccessible::ListItem);
    EXPECT_EQ(item->text(QAccessible::Name), u"Thu, Jan 1 · 00:00:05, label 5"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(visibleRows().at(4))->text(QAccessible::Name),
              u"Thu, Jan 1 · 00:00:04"_s);
    QAccessibleInterface *const button = QAccessible::queryAccessibleInterface(row->button());
    EXPECT_EQ(button->text(QAccessible::Name), u"Open, Thu, Jan 1 · 00:00:05"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !opened.empty(); }));
    EXPECT_THAT(opened, ElementsAre(timestampOf(5)));
}

TEST_F(RestorePointsListTest, HairlinesLieBetweenTheRows)
{
    put(3);
    const QImage image = list->grab().toImage();
    EXPECT_NE(image.pixelColor(5, 0), Theme::line);
    EXPECT_EQ(image.pixelColor(5, rowHeight), Theme::line);
    EXPECT_EQ(image.pixelColor(5, 2 * rowHeight), Theme::line);
}

} // namespace
} // namespace quillfen
