// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/outputview.h"

#include "boards/advanced/outputlayout.h"
#include "support/await.h"

#include "ui/text/type.h"
#include "ui/theme.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

class OutputViewTest : public testing::Test {
protected:
    OutputViewTest()
    {
        view.resize(500, 200);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        view.setFocus();
        QApplication::clipboard()->clear();
    }

    void show(const json::value &value) { view.setText(std::make_shared<OutputText>(OutputText::ofJson(value))); }

    [[nodiscard]] QString selected() const { return view.text()->text(view.selectionBegin(), view.selectionEnd()); }

    /// The middle of a character, counted from the left edge of the text.
    [[nodiscard]] QPoint at(int row, int column) const
    {
        return {static_cast<int>(12 + (column + 0.1) * columnWidth()), 10 + row * lineHeight(Type::Mono) + 9};
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }

    OutputView view{u"Output"_s};
};

TEST_F(OutputViewTest, ItsTextIsReadByScreenReaders)
{
    show({1, 2});
    EXPECT_EQ(view.accessibleName(), u"Output"_s);
    EXPECT_EQ(view.property("accessibleValue").toString(), u"[\n  1,\n  2\n]"_s);
}

TEST_F(OutputViewTest, OfALargeTextWhatIsVisibleIsRead)
{
    json::array list;
    for (int number = 0; number < 30'000; ++number) {
        list.push_back(number);
    }
    show(list);
    const auto read = [&] { return view.property("accessibleValue").toString(); };
    EXPECT_TRUE(read().startsWith(u"[\n  0,\n"_s));
    EXPECT_LT(read().size(), 1'000);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(read().endsWith(u"  29999\n]"_s)) << read().toStdString();
}

TEST_F(OutputViewTest, TheKeyboardWalksThroughIt)
{
    show(json::object{{"a", 1}, {"b", json::array{1, 2}}});
    press(Qt::Key_Down);
    EXPECT_EQ(view.cursor(), view.text()->bytes().find("\"a\""));
    press(Qt::Key_End);
    EXPECT_EQ(view.cursor(), view.text()->bytes().find(",\n") + 1);
    press(Qt::Key_Right);
    EXPECT_EQ(view.cursor(), view.text()->bytes().find("\"b\""));
    press(Qt::Key_Left);
    press(Qt::Key_Home);
    EXPECT_EQ(view.cursor(), view.text()->bytes().find("\"a\""));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view.cursor(), view.text()->bytes().size());
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(view.cursor(), 0U);
    press(Qt::Key_Up);
    press(Qt::Key_Left);
    EXPECT_EQ(view.cursor(), 0U);
}

TEST_F(OutputViewTest, PagesScroll)
{
    show(json::array(500, json::value(7)));
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
}

TEST_F(OutputViewTest, ShiftSelectsAndCtrlCCopies)
{
    show(json::object{{"a", 1}});
    press(Qt::Key_Down);
    for (int count = 0; count < 3; ++count) {
        press(Qt::Key_Right, Qt::ShiftModifier);
    }
    EXPECT_EQ(selected(), u"  \"a\""_s);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"  \"a\""_s);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"{\n  \"a\": 1\n}"_s);
}

TEST_F(OutputViewTest, WithoutASelectionNothingIsCopied)
{
    show(7);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString());
    view.copyAll();
    EXPECT_EQ(QApplication::clipboard()->text(), u"7"_s);
}

TEST_F(OutputViewTest, ALargeTextIsCopiedWithoutHoldingUpTheWindow)
{
    show(json::array(200'000, json::value(7)));
    view.copyAll();
    EXPECT_TRUE(eventually([&] { return QApplication::clipboard()->text().size() > 800'000; }));
}

TEST_F(OutputViewTest, ThePointerSelects)
{
    show(json::object{{"key", "value"}});
    // Two columns of indentation, then the first quote.
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, at(1, 3));
    QTest::mouseMove(view.viewport(), at(1, 6));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, at(1, 6));
    EXPECT_EQ(selected(), u"key"_s);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at(1, 11));
    EXPECT_EQ(selected(), u"value"_s);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at(0, 0));
    EXPECT_FALSE(view.hasSelection());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, at(9, 0));
    EXPECT_EQ(view.selectionEnd(), view.text()->bytes().size()) << "below the text lies its end";
}

TEST_F(OutputViewTest, OtherScriptsAreHitWhereTheyStand)
{
    view.setText(std::make_shared<OutputText>(OutputText::ofWords(u"漢字äö"_s)));
    const OutputRows rows(view.text(), 60);
    const RowLayout layout(rows, rows.row(0));
    std::size_t offset = 0;
    for (const std::size_t bytes : {3U, 3U, 2U, 2U}) {
        EXPECT_EQ(layout.offsetAt(layout.xOf(offset) + 0.5), offset);
        EXPECT_LT(layout.xOf(offset), layout.xOf(offset + bytes));
        offset += bytes;
    }
    press(Qt::Key_Right);
    EXPECT_EQ(view.cursor(), 3U) << "never into a character";
}

TEST_F(OutputViewTest, ASelectionIsSeen)
{
    show(json::array{1, 2, 3});
    const auto coloured = [&] {
        const QImage picture = view.grab().toImage();
        return picture.pixelColor(at(1, 2) + QPoint(2, -6));
    };
    const QColor before = coloured();
    view.select(0, view.text()->bytes().size());
    EXPECT_NE(coloured(), before);
}

TEST_F(OutputViewTest, WhatIsFoundIsScrolledTo)
{
    show(json::array(2'000, json::value("x")));
    const std::size_t place = view.text()->bytes().size() - 10;
    view.select(place, place + 3);
    EXPECT_GT(view.verticalScrollBar()->value(), 1'900);
}

TEST_F(OutputViewTest, AnotherWidthKeepsThePlace)
{
    show(json::array(300, json::value(std::string(300, 'x'))));
    view.verticalScrollBar()->setValue(400);
    const auto top = [&] { return view.property("accessibleValue").toString().left(20); };
    const QString first = top();
    view.resize(900, 200);
    EXPECT_EQ(top().trimmed().left(5), first.trimmed().left(5));
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    EXPECT_LT(view.verticalScrollBar()->value(), 400) << "fewer rows lie above in a wider view";
}

TEST_F(OutputViewTest, AnotherTextBeginsAtItsTop)
{
    show(json::array(300, json::value(1)));
    press(Qt::Key_End, Qt::ControlModifier);
    show(json::array(300, json::value(2)));
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(OutputViewTest, AHugeLineIsPaintedQuickly)
{
    show(json::value(std::string(20'000'000, 'x')));
    QElapsedTimer elapsed;
    elapsed.start();
    view.grab();
    EXPECT_LT(elapsed.elapsed(), 500);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view.cursor(), view.text()->bytes().size());
}

} // namespace
