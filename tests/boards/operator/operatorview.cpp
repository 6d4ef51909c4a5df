// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/operatorview.h"

#include "operatortest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

class OperatorViewTest : public OperatorTest {
protected:
    void SetUp() override
    {
        OperatorTest::SetUp();
        window.resize(956, 760);
        view = new OperatorView(state, &window);
        view->setGeometry(0, 0, 956, 760);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    [[nodiscard]] bool asked(std::string_view method, std::size_t times = 1) const
    {
        return eventually([&] { return agent.count(method) == times; });
    }

    QWidget window;
    OperatorView *view = nullptr;
};

TEST_F(OperatorViewTest, StartsWithTheHubs)
{
    EXPECT_EQ(view->tab(), OperatorTab::Hubs);
    EXPECT_TRUE(asked("admin.hubs.list"));
    EXPECT_EQ(agent.count("admin.users.list") + agent.count("admin.tokens.list") + agent.count("admin.exports.list"),
              0U);
}

TEST_F(OperatorViewTest, ATabAsksTheAgentEachTimeItIsShown)
{
    ASSERT_TRUE(asked("admin.hubs.promote_status"));
    press(view, u"Users"_s);
    EXPECT_TRUE(asked("admin.tenants.list"));
    press(view, u"Tokens"_s);
    EXPECT_TRUE(asked("admin.tokens.list"));
    press(view, u"Exports"_s);
    EXPECT_TRUE(asked("admin.exports.list"));
    press(view, u"Hubs"_s);
    EXPECT_TRUE(asked("admin.hubs.list", 2));
    press(view, u"Users"_s);
    EXPECT_TRUE(asked("admin.users.list", 2));
}

TEST_F(OperatorViewTest, AnyUnknownTabIsTheHubs)
{
    view->setTab(u"tokens"_s);
    EXPECT_EQ(view->tab(), OperatorTab::Tokens);
    EXPECT_TRUE(eventually([&] { return buttonOf(view, u"Show revoked"_s) != nullptr; }));
    view->setTab(u"nonsense"_s);
    EXPECT_EQ(view->tab(), OperatorTab::Hubs);
    EXPECT_EQ(buttonOf(view, u"Show revoked"_s), nullptr);
    EXPECT_NE(buttonOf(view, u"Preflight"_s), nullptr);
}

TEST_F(OperatorViewTest, ReloadingAsksForTheShownTabOnly)
{
    view->setTab(u"exports"_s);
    ASSERT_TRUE(asked("admin.exports.list"));
    ASSERT_TRUE(asked("admin.hubs.promote_status"));
    view->reload();
    EXPECT_TRUE(asked("admin.exports.list", 2));
    EXPECT_EQ(agent.count("admin.hubs.list"), 1U);
}

TEST_F(OperatorViewTest, TheSearchKeyGoesToTheTabsFilter)
{
    view->setTab(u"tokens"_s);
    view->focusSearch();
    const QWidget *const focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->accessibleName(), u"Filter tokens"_s);
    view->setTab(u"hubs"_s);
    view->focusSearch();
    EXPECT_EQ(view->tab(), OperatorTab::Hubs) << "which has none";
}

TEST_F(OperatorViewTest, WhatWasTypedIsThereWhenOneComesBack)
{
    view->setTab(u"users"_s);
    view->focusSearch();
    QTest::keyClicks(QApplication::focusWidget(), u"mara"_s);
    view->setTab(u"hubs"_s);
    view->setTab(u"users"_s);
    view->focusSearch();
    EXPECT_EQ(qobject_cast<QLineEdit *>(QApplication::focusWidget())->text(), u"mara"_s);
}

TEST_F(OperatorViewTest, AnotherTabTakesTheKeyboardWithIt)
{
    view->setTab(u"users"_s);
    view->focusSearch();
    view->setTab(u"exports"_s);
    const auto *const chosen = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(chosen->text(), u"Exports"_s);
    EXPECT_TRUE(chosen->isChecked());
}

TEST_F(OperatorViewTest, ClosingWhileEverythingLoadsLeavesNothingBehind)
{
    for (const char *tab : {"users", "tokens", "exports"}) {
        view->setTab(QString::fromLatin1(tab));
    }
    delete view;
    EXPECT_TRUE(asked("admin.exports.list"));
    QTest::qWait(20);
}

} // namespace
