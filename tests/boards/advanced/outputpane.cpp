// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/outputpane.h"

#include "boardtest.h"

#include "boards/advanced/outputview.h"
#include "ui/controls/searchfield.h"
#include "ui/text/label.h"

#include <gtest/gtest.h>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

class OutputPaneTest : public testing::Test {
protected:
    OutputPaneTest()
    {
        pane.resize(600, 300);
        pane.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&pane));
    }

    void show(const json::value &value) { pane.setText(std::make_shared<OutputText>(OutputText::ofJson(value))); }

    [[nodiscard]] OutputView &view() const { return *pane.findChild<OutputView *>(); }
    [[nodiscard]] SearchField &field() const { return *pane.findChild<SearchField *>(); }
    [[nodiscard]] bool says(const QString &text) const
    {
        return test::eventually([&] {
            const auto labels = pane.findChildren<Label *>();
            return std::ranges::any_of(labels, [&](const Label *each) { return each->text() == text; });
        });
    }
    [[nodiscard]] std::string selected() const
    {
        return view().text()->bytes().substr(view().selectionBegin(), view().selectionEnd() - view().selectionBegin());
    }

    OutputPane pane;
};

TEST_F(OutputPaneTest, WithoutOutputThereIsNothingToSearch)
{
    EXPECT_FALSE(field().isVisible());
    show(7);
    EXPECT_TRUE(field().isVisible());
}

TEST_F(OutputPaneTest, TypingFinds)
{
    show(json::array{"one", "two", "One"});
    pane.focusSearch();
    QTest::keyClicks(&field(), u"one"_s);
    EXPECT_TRUE(says(u"1 of 2"_s));
    EXPECT_EQ(selected(), "one");
    QTest::keyClicks(&field(), u"x"_s);
    EXPECT_TRUE(says(u"Not found"_s));
    QTest::keyClick(&field(), Qt::Key_Escape);
    EXPECT_TRUE(says(QString()));
}

TEST_F(OutputPaneTest, EnterAndButtonsGoOnAndBack)
{
    show(json::array{"one", "two", "One"});
    field().setText(u"one"_s);
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_TRUE(says(u"2 of 2"_s));
    EXPECT_EQ(selected(), "One");
    press(&pane, u"Next"_s);
    EXPECT_TRUE(says(u"1 of 2"_s));
    press(&pane, u"Previous"_s);
    EXPECT_TRUE(says(u"2 of 2"_s));
    QTest::keyClick(&field(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(says(u"1 of 2"_s));
    QTest::keyClick(&field(), Qt::Key_F3);
    EXPECT_TRUE(says(u"2 of 2"_s));
}

TEST_F(OutputPaneTest, ALargeTextIsSearchedBesideTheWindow)
{
    json::array list;
    for (int number = 0; number < 200'000; ++number) {
        list.push_back(number);
    }
    show(list);
    // Every key replaces the search before; the last one counts.
    QTest::keyClicks(&field(), u"199999"_s);
    EXPECT_TRUE(says(u"1 of 1"_s));
    EXPECT_EQ(selected(), "199999");
    EXPECT_TRUE(view().property("accessibleValue").toString().contains(u"199999"_s)) << "scrolled to";
}

TEST_F(OutputPaneTest, AnotherTextIsSearchedForTheSameWords)
{
    show(json::array{"one"});
    field().setText(u"two"_s);
    EXPECT_TRUE(says(u"Not found"_s));
    show(json::array{"two", "two"});
    EXPECT_TRUE(says(u"1 of 2"_s));
}

TEST_F(OutputPaneTest, MayGoWhileItIsBeingSearched)
{
    auto *const gone = new OutputPane;
    gone->setText(std::make_shared<OutputText>(OutputText::ofJson(json::array(300'000, json::value("x")))));
    gone->findChild<SearchField *>()->setText(u"y"_s);
    delete gone;
    QTest::qWait(50);
}

TEST_F(OutputPaneTest, CopyAllLeavesTheSelection)
{
    show(json::array{"one"});
    field().setText(u"one"_s);
    QApplication::clipboard()->clear();
    press(&pane, u"Copy all"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"[\n  \"one\"\n]"_s);
    EXPECT_EQ(selected(), "one");
}

} // namespace
