// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/rowlist.h"

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace quillfen;
using testing::ElementsAre;

struct Thing {
    int id;
    std::string name;
};

class RowListTest : public testing::Test {
protected:
    RowListTest()
    {
        auto *const outer = new QVBoxLayout(&window);
        outer->addWidget(before = new QPushButton(QStringLiteral("before")));
        auto *const list = new QWidget;
        layout = new QVBoxLayout(list);
        outer->addWidget(list);
        outer->addWidget(after = new QPushButton(QStringLiteral("after")));
        rows = std::make_unique<RowList<int, QWidget>>(layout);
        window.show();
    }

    void sync(const std::vector<Thing> &things)
    {
        rows->sync(
            things, [](const Thing &thing) { return thing.id; },
            [this](const Thing &) {
                ++made;
                auto *const row = new QWidget;
                (new QVBoxLayout(row))->addWidget(new QPushButton);
                return row;
            },
            [](QWidget *row, const Thing &thing) {
                row->findChild<QPushButton *>()->setText(QString::fromStdString(thing.name));
            });
    }

    [[nodiscard]] std::vector<std::string> shown() const
    {
        std::vector<std::string> names;
        for (int place = 0; place < layout->count(); ++place) {
            names.push_back(layout->itemAt(place)->widget()->findChild<QPushButton *>()->text().toStdString());
        }
        return names;
    }

    /// The buttons as Tab goes through them from the first one.
    [[nodiscard]] std::vector<std::string> tabbed() const
    {
        std::vector<std::string> names;
        const QWidget *widget = before;
        do {
            if (const auto *button = qobject_cast<const QPushButton *>(widget); button != nullptr) {
                names.push_back(button->text().toStdString());
            }
            widget = widget->nextInFocusChain();
        } while (widget != before);
        return names;
    }

    QWidget window;
    QPushButton *before = nullptr;
    QPushButton *after = nullptr;
    QVBoxLayout *layout = nullptr;
    std::unique_ptr<RowList<int, QWidget>> rows;
    int made = 0;
};

TEST_F(RowListTest, ShowsItemsInTheirOrder)
{
    sync({{3, "c"}, {1, "a"}, {2, "b"}});
    EXPECT_THAT(shown(), ElementsAre("c", "a", "b"));
    EXPECT_EQ(rows->size(), 3U);
    EXPECT_EQ(rows->row(4), nullptr);
}

TEST_F(RowListTest, KeepsTheRowsOfWhatStays)
{
    sync({{1, "a"}, {2, "b"}});
    QWidget *const first = rows->row(1);
    QWidget *const second = rows->row(2);
    sync({{2, "B"}, {3, "c"}, {1, "a"}});
    EXPECT_EQ(rows->row(1), first);
    EXPECT_EQ(rows->row(2), second);
    EXPECT_EQ(made, 3);
    EXPECT_THAT(shown(), ElementsAre("B", "c", "a"));
}

TEST_F(RowListTest, TheFocusSurvivesMovesAndNewRows)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    sync({{1, "a"}, {2, "b"}});
    auto *const button = rows->row(2)->findChild<QPushButton *>();
    button->setFocus();
    sync({{3, "c"}, {2, "b"}});
    EXPECT_TRUE(button->hasFocus());
}

TEST_F(RowListTest, WhatGoesIsHiddenAtOnceAndDeletedAfterwards)
{
    sync({{1, "a"}, {2, "b"}});
    const QPointer<QWidget> gone = rows->row(1);
    sync({{2, "b"}});
    ASSERT_NE(gone, nullptr) << "its own button may be what led here";
    EXPECT_TRUE(gone->isHidden());
    EXPECT_THAT(shown(), ElementsAre("b"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(gone, nullptr);
}

TEST_F(RowListTest, AmongItemsWithOneKeyTheFirstCounts)
{
    sync({{1, "a"}, {1, "again"}, {2, "b"}});
    EXPECT_THAT(shown(), ElementsAre("a", "b"));
}

TEST_F(RowListTest, ARowThatSomebodyDeletedIsMadeAgain)
{
    sync({{1, "a"}});
    delete rows->row(1);
    sync({{1, "a"}});
    EXPECT_EQ(made, 2);
    EXPECT_THAT(shown(), ElementsAre("a"));
}

TEST_F(RowListTest, TabGoesThroughTheRowsAsTheyStand)
{
    sync({{1, "a"}, {2, "b"}});
    EXPECT_THAT(tabbed(), ElementsAre("before", "a", "b", "after"));
    sync({{3, "c"}, {2, "b"}, {4, "d"}, {1, "a"}});
    EXPECT_THAT(tabbed(), ElementsAre("before", "c", "b", "d", "a", "after"));
}

} // namespace
