// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/longlist.h"

#include "kittest.h"
#include "ui/parts/scrollarea.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

/// A row with a label and two buttons; keys that end in 5 have one, keys that end in 9 none.
class TestRow final : public QWidget {
public:
    TestRow()
    {
        auto *const layout = new QHBoxLayout(this);
        for (QWidget *const part : std::initializer_list<QWidget *>{label, first, second}) {
            layout->addWidget(part);
        }
        for (QPushButton *const button : {first, second}) {
            button->setFocusPolicy(Qt::TabFocus);
        }
    }

    void fill(std::int64_t key)
    {
        label->setText(QString::number(key));
        first->setVisible(key % 10 != 5 && key % 10 != 9);
        second->setVisible(key % 10 != 9);
        ++fills;
    }

    QLabel *label = new QLabel;
    QPushButton *first = new QPushButton(u"First"_s);
    QPushButton *second = new QPushButton(u"Second"_s);
    int fills = 0;
};

class Numbers final : public RowSource {
public:
    explicit Numbers(int count)
    {
        for (int at = 0; at < count; ++at) {
            keys.push_back(at);
        }
    }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(keys.size()); }
    [[nodiscard]] QString rowKey(int row) const override { return QString::number(numberOf(row)); }
    [[nodiscard]] QWidget *makeRow() override
    {
        ++made;
        return new TestRow;
    }
    void fillRow(QWidget *widget, int row) override { static_cast<TestRow *>(widget)->fill(numberOf(row)); }

    [[nodiscard]] std::int64_t numberOf(int row) const { return keys.at(static_cast<std::size_t>(row)); }

    std::vector<std::int64_t> keys;
    int made = 0;
};

class LongListTest : public KitTest {
protected:
    void open(int count, int height = 200)
    {
        source.emplace(count);
        before = new QPushButton(u"before"_s, &window);
        list = new LongList(*source, 40, u"Numbers"_s, &window);
        after = new QPushButton(u"after"_s, &window);
        for (QPushButton *const button : {before, after}) {
            button->setFocusPolicy(Qt::TabFocus);
        }
        window.resize(400, height + 60);
        before->setGeometry(0, 0, 80, 24);
        list->setGeometry(0, 24, 400, height);
        after->setGeometry(0, height + 30, 80, 24);
        show(window);
        list->refresh(LongList::Place::Top);
    }

    /// The keys of the rows in view, top to bottom.
    [[nodiscard]] std::vector<std::int64_t> inView() const
    {
        std::vector<std::pair<int, std::int64_t>> rows;
        for (const QObject *child : list->viewport()->children()) {
            const auto *const row = dynamic_cast<const TestRow *>(child);
            if (row != nullptr && row->isVisible() && row->geometry().intersects(list->viewport()->rect())) {
                rows.emplace_back(row->y(), row->label->text().toLongLong());
            }
        }
        std::ranges::sort(rows);
        std::vector<std::int64_t> keys;
        for (const auto &[y, key] : rows) {
            keys.push_back(key);
        }
        return keys;
    }

    [[nodiscard]] TestRow *row(int at) const { return static_cast<TestRow *>(list->widgetOf(at)); }
    [[nodiscard]] static QString focusRow()
    {
        const QWidget *const focus = QApplication::focusWidget();
        if (const auto *const alone = dynamic_cast<const TestRow *>(focus)) {
            return alone->label->text();
        }
        const auto *const row = focus == nullptr ? nullptr : dynamic_cast<const TestRow *>(focus->parentWidget());
        return row == nullptr ? QString() : row->label->text() + u' ' + focus->property("text").toString();
    }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QWidget window;
    std::optional<Numbers> source;
    QPushButton *before = nullptr;
    LongList *list = nullptr;
    QPushButton *after = nullptr;
};

using Keys = std::vector<std::int64_t>;

TEST_F(LongListTest, MakesRowsForWhatIsInViewOnly)
{
    open(20'000);
    EXPECT_EQ(inView(), (Keys{0, 1, 2, 3, 4}));
    EXPECT_EQ(list->fullHeight(), 800'000);
    for (int at = 0; at < 800'000; at += 9'973) {
        list->verticalScrollBar()->setValue(at);
    }
    EXPECT_LE(source->made, 8);
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());
    EXPECT_EQ(inView(), (Keys{19'995, 19'996, 19'997, 19'998, 19'999}));
}

TEST_F(LongListTest, AScrolledRowIsCutAtTheEdges)
{
    open(100);
    list->verticalScrollBar()->setValue(50);
    EXPECT_EQ(inView(), (Keys{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(row(1)->y(), -10);
}

TEST_F(LongListTest, AScrollLeavesRowsThatStayUntouched)
{
    open(100);
    const TestRow *const third = row(3);
    const int fills = third->fills;
    list->verticalScrollBar()->setValue(40);
    EXPECT_EQ(row(3), third);
    EXPECT_EQ(third->fills, fills);
}

TEST_F(LongListTest, ANewListKeepsThePlace)
{
    open(100);
    list->verticalScrollBar()->setValue(415);
    source->keys.insert(source->keys.begin(), {1000, 1001});
    list->refresh();
    EXPECT_EQ(inView().front(), 10);
    EXPECT_EQ(list->verticalScrollBar()->value(), 495);
    list->refresh(LongList::Place::Top);
    EXPECT_EQ(inView().front(), 1000);
}

TEST_F(LongListTest, AShorterListScrollsBack)
{
    open(100);
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());
    source->keys.resize(6);
    list->refresh();
    EXPECT_EQ(inView(), (Keys{1, 2, 3, 4, 5}));
    source->keys.clear();
    list->refresh();
    EXPECT_EQ(inView(), Keys());
    source->keys = {7};
    list->refresh();
    EXPECT_EQ(inView(), Keys{7});
}

TEST_F(LongListTest, TabGoesThroughTheRowsAsTheyStand)
{
    open(3);
    before->setFocus(Qt::TabFocusReason);
    QStringList stops;
    for (int at = 0; at < 6; ++at) {
        key(Qt::Key_Tab);
        stops.append(focusRow());
    }
    EXPECT_EQ(stops,
              (QStringList{u"0 First"_s, u"0 Second"_s, u"1 First"_s, u"1 Second"_s, u"2 First"_s, u"2 Second"_s}));
    key(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    key(Qt::Key_Backtab);
    EXPECT_EQ(focusRow(), u"2 Second"_s);
}

TEST_F(LongListTest, TabFollowsTheRowsAfterAScroll)
{
    open(100);
    list->verticalScrollBar()->setValue(40 * 41);
    before->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Tab);
    EXPECT_EQ(focusRow(), u"41 First"_s);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focusRow(), u"42 First"_s);
}

TEST_F(LongListTest, ArrowsGoFromRowToRowAndScroll)
{
    open(100);
    row(0)->first->setFocus(Qt::TabFocusReason);
    for (int at = 0; at < 4; ++at) {
        key(Qt::Key_Down);
    }
    EXPECT_EQ(focusRow(), u"4 First"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(focusRow(), u"5 Second"_s) << "which has no first";
    EXPECT_EQ(inView(), (Keys{1, 2, 3, 4, 5}));
    key(Qt::Key_Down);
    EXPECT_EQ(focusRow(), u"6 Second"_s);
    key(Qt::Key_Left);
    EXPECT_EQ(focusRow(), u"6 First"_s);
    key(Qt::Key_Left);
    EXPECT_EQ(focusRow(), u"6 First"_s);
    key(Qt::Key_Right);
    EXPECT_EQ(focusRow(), u"6 Second"_s);
    key(Qt::Key_End);
    EXPECT_EQ(focusRow(), u"99"_s) << "a row without buttons takes the keyboard itself";
    key(Qt::Key_Up);
    EXPECT_EQ(focusRow(), u"98 Second"_s);
    key(Qt::Key_PageUp);
    EXPECT_EQ(focusRow(), u"94 Second"_s);
    key(Qt::Key_PageDown);
    EXPECT_EQ(focusRow(), u"98 Second"_s);
    key(Qt::Key_Home);
    EXPECT_EQ(focusRow(), u"0 Second"_s);
    EXPECT_EQ(inView().front(), 0);
    key(Qt::Key_Up);
    EXPECT_EQ(focusRow(), u"0 Second"_s);
}

TEST_F(LongListTest, OnABoardThatScrollsTheRowWithTheKeyboardIsInSight)
{
    open(6, 240);
    auto *const board = new QWidget;
    auto *const layout = new QVBoxLayout(board);
    list->setFixedHeight(240);
    layout->addSpacing(60);
    layout->addWidget(list);
    auto *const area = new ScrollArea(&window);
    area->setWidget(board);
    area->setGeometry(0, 24, 400, 140);
    area->show();
    const auto sees = [&] {
        const QWidget *const focus = QApplication::focusWidget();
        const QRect place(focus->mapTo(area->viewport(), QPoint()), focus->size());
        return area->viewport()->rect().contains(place);
    };
    row(0)->first->setFocus(Qt::TabFocusReason);
    for (const Qt::Key each : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_End, Qt::Key_Home}) {
        key(each);
        EXPECT_TRUE(sees()) << focusRow().toStdString();
    }
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    before->setFocus(Qt::TabFocusReason);
    ASSERT_EQ(area->verticalScrollBar()->value(), area->verticalScrollBar()->maximum());
    QWidget::setTabOrder(before, row(0)->first);
    key(Qt::Key_Tab);
    ASSERT_EQ(focusRow(), u"0 First"_s);
    EXPECT_TRUE(sees()) << "also where Tab comes in from outside";
}

TEST_F(LongListTest, TheRowWithTheKeyboardIsNeverExchanged)
{
    open(1000);
    QPushButton *const button = row(2)->first;
    button->setFocus(Qt::TabFocusReason);
    list->verticalScrollBar()->setValue(20'000);
    EXPECT_TRUE(button->hasFocus());
    EXPECT_EQ(focusRow(), u"2 First"_s) << "out of sight, and the same";
    key(Qt::Key_Down);
    EXPECT_EQ(focusRow(), u"3 First"_s);
    EXPECT_EQ(inView().front(), 3);
    list->verticalScrollBar()->setValue(20'000);
    before->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->widgetOf(3), nullptr) << "let go once the keyboard is elsewhere";
}

TEST_F(LongListTest, TheKeyboardStaysWithItsRowWhenTheListComesAnew)
{
    open(100);
    row(3)->second->setFocus(Qt::TabFocusReason);
    std::ranges::reverse(source->keys);
    list->refresh();
    EXPECT_EQ(focusRow(), u"3 Second"_s);
    source->keys.erase(std::ranges::find(source->keys, 3));
    list->refresh();
    EXPECT_EQ(focusRow(), u"2 Second"_s) << "what stands in its place";
    source->keys.clear();
    list->refresh();
    EXPECT_EQ(focusRow(), QString());
}

TEST_F(LongListTest, RowsWithEqualKeysStayTwo)
{
    open(4);
    source->keys = {7, 7, 7, 8};
    list->refresh();
    EXPECT_EQ(inView(), (Keys{7, 7, 7, 8}));
    row(1)->first->setFocus(Qt::TabFocusReason);
    list->refresh();
    EXPECT_EQ(inView(), (Keys{7, 7, 7, 8}));
    EXPECT_EQ(focusRow(), u"7 First"_s);
}

TEST_F(LongListTest, IsReadAsAList)
{
    open(3);
    EXPECT_EQ(role(*list), QAccessible::List);
    EXPECT_EQ(name(*list), u"Numbers"_s);
    EXPECT_EQ(list->focusPolicy(), Qt::NoFocus);
}

TEST_F(LongListTest, GrowsAndShrinksWithItsWindow)
{
    open(100);
    list->resize(400, 400);
    EXPECT_EQ(inView().size(), 10U);
    list->resize(300, 80);
    EXPECT_EQ(inView().size(), 2U);
    EXPECT_EQ(row(0)->width(), list->viewport()->width());
}

} // namespace
