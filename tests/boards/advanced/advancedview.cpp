// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/advancedview.h"

#include "boardtest.h"

#include "boards/advanced/jsoneditor.h"
#include "boards/advanced/methodslist.h"
#include "boards/advanced/outputview.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/textfield.h"
#include "ui/parts/inlineerror.h"
#include "ui/style/fade.h"
#include "ui/text/label.h"

#include <QPlainTextEdit>
#include <QScrollArea>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

class AdvancedViewTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        agent.answer("methods.list",
                     json::array{params("name", "volumes.list", "http", "GET", "path", "/v1/volumes", "params",
                                        json::array{"limit", params("name", "since", "type", "a text")}),
                                 params("name", "volumes.delete", "http", "POST", "path", "/v1/volumes/{id}", "params",
                                        json::array{"volume_id"}),
                                 params("name", "tokens.clear", "http", "DELETE", "path", "/v1/tokens"),
                                 params("name", "admin.users.list", "admin", true)});
        agent.answer("volumes.list", json::array{params("id", 1, "name", "photos")});
        agent.answer("volumes.delete", params("deleted", true));
        agent.answer("tokens.clear", 3);
    }

    void TearDown() override { view.reset(); }

    void open(int width = 956, int height = 760)
    {
        view = std::make_unique<AdvancedView>(state, &window);
        view->resize(width, height);
        window.resize(width, height);
        view->show();
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(eventually([&] { return list().model()->rowCount() > 0; }));
    }

    [[nodiscard]] MethodsList &list() const { return *view->findChild<MethodsList *>(); }
    [[nodiscard]] QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            names << list().model()->index(row, 0).data().toString();
        }
        return names;
    }
    [[nodiscard]] TextField *field(const QString &name) const
    {
        for (TextField *each : view->findChildren<TextField *>()) {
            if (each->isVisible() && each->accessibleName() == name) {
                return each;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QPlainTextEdit &editor() const { return *view->findChild<QPlainTextEdit *>(); }
    [[nodiscard]] QString out() const
    {
        return view->findChild<OutputView *>()->property("accessibleValue").toString();
    }
    [[nodiscard]] bool says(const QString &text) const
    {
        return std::ranges::any_of(view->findChildren<AgentLabel *>(),
                                   [&](const AgentLabel *each) { return each->isVisible() && each->text() == text; });
    }

    void pick(const QString &name)
    {
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            const QModelIndex index = list().model()->index(row, 0);
            if (index.data().toString() == name) {
                QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(index).center());
            }
        }
        ASSERT_TRUE(eventually([&] { return says(name) && buttonOf(view.get(), u"Run"_s) != nullptr; }));
        QCoreApplication::processEvents(); // the fields come into sight
    }

    void runAndWait(std::string_view method)
    {
        const std::size_t before = agent.count(method);
        press(view.get(), u"Run"_s);
        ASSERT_TRUE(eventually([&] { return agent.count(method) == before + 1; }));
    }

    QWidget window;
    std::unique_ptr<AdvancedView> view;
};

TEST_F(AdvancedViewTest, ListsByNameWithoutAnOperatorsMethods)
{
    open();
    EXPECT_THAT(listed(), ElementsAre(u"tokens.clear"_s, u"volumes.delete"_s, u"volumes.list"_s));
    EXPECT_EQ(list().model()->index(2, 0).data(Qt::AccessibleDescriptionRole).toString(), u"GET /v1/volumes"_s);
}

TEST_F(AdvancedViewTest, WhoBecomesAnOperatorSeesAll)
{
    open();
    state->auth = params("signed_in", true, "is_admin", true);
    EXPECT_TRUE(eventually([&] { return listed().size() == 4; }));
}

TEST_F(AdvancedViewTest, TheFilterNarrowsByName)
{
    open();
    view->focusSearch();
    SearchField *const filter = view->findChild<SearchField *>(QString(), Qt::FindChildrenRecursively);
    EXPECT_EQ(window.focusWidget(), filter);
    QTest::keyClicks(filter, u"VOL"_s);
    EXPECT_THAT(listed(), ElementsAre(u"volumes.delete"_s, u"volumes.list"_s));
    QTest::keyClicks(filter, u"x"_s);
    EXPECT_TRUE(listed().isEmpty());
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_EQ(listed().size(), 3);
}

TEST_F(AdvancedViewTest, PickingShowsTheMethod)
{
    open();
    EXPECT_EQ(buttonOf(view.get(), u"Run"_s), nullptr);
    pick(u"volumes.list"_s);
    EXPECT_TRUE(says(u"GET /v1/volumes"_s));
    EXPECT_TRUE(says(u"limit, since"_s));
    ASSERT_NE(field(u"limit"_s), nullptr);
    ASSERT_NE(field(u"since"_s), nullptr);
    EXPECT_EQ(field(u"since"_s)->placeholderText(), u"a text"_s);
    EXPECT_EQ(editor().accessibleName(), u"Other parameters as JSON (query for GET/DELETE, body for POST):"_s);
}

TEST_F(AdvancedViewTest, AMethodWithoutANameIsPickedOnlyByHand)
{
    agent.answer("methods.list", json::array{5, params("name", "volumes.list")});
    open();
    ASSERT_THAT(listed(), ElementsAre(u"—"_s, u"volumes.list"_s));
    QTest::qWait(5);
    EXPECT_EQ(buttonOf(view.get(), u"Run"_s), nullptr);
    EXPECT_FALSE(list().selectionModel()->hasSelection());
    pick(u"—"_s);
    EXPECT_TRUE(list().selectionModel()->hasSelection());
}

TEST_F(AdvancedViewTest, RunsAListingWithoutAsking)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"5"_s);
    QTest::keyClicks(&editor(), u"{\"order\": \"up\", \"limit\": 7}"_s);
    runAndWait("volumes.list");
    EXPECT_EQ(sent("volumes.list"), params("order", "up", "limit", "5"));
    EXPECT_TRUE(eventually([&] { return out() == u"[\n  {\n    \"id\": 1,\n    \"name\": \"photos\"\n  }\n]"_s; }));
    EXPECT_TRUE(std::ranges::any_of(view->findChildren<AgentLabel *>(), [](const AgentLabel *each) {
        return each->text().startsWith(u"volumes.list · "_s) && each->text().endsWith(u" · 6 lines"_s);
    }));
}

TEST_F(AdvancedViewTest, AListInTheEditorSendsTheFieldsAlone)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"since"_s), u"now"_s);
    QTest::keyClicks(&editor(), u"[1, 2]"_s);
    EXPECT_EQ(view->findChild<InlineError *>()->text(), u"This is JSON, but not an object: it is not sent."_s);
    runAndWait("volumes.list");
    EXPECT_EQ(sent("volumes.list"), params("since", "now"));
}

TEST_F(AdvancedViewTest, BadJsonIsToldAndRunsWithoutIt)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(&editor(), u"{\"a\" 1}"_s);
    EXPECT_TRUE(view->findChild<InlineError *>()->isVisible());
    EXPECT_EQ(view->findChild<InlineError *>()->text(), u"Line 1, column 6 is not JSON: the text is not sent."_s);
    runAndWait("volumes.list");
    EXPECT_TRUE(sent("volumes.list").empty());
}

TEST_F(AdvancedViewTest, ADestructiveOneAsksAndADeclineSendsNothing)
{
    open();
    pick(u"volumes.delete"_s);
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Run"_s);
        EXPECT_THAT(answer.texts, testing::Contains(u"Run volumes.delete?"_s));
        EXPECT_THAT(answer.texts,
                    testing::Contains(
                        u"This operation removes or destroys something. The API's own safeguards still apply."_s));
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("volumes.delete"), 0U);
    QTest::keyClicks(field(u"volume_id"_s), u"7"_s);
    const Answering answer(u"Run"_s);
    runAndWait("volumes.delete");
    EXPECT_EQ(sent("volumes.delete"), params("volume_id", "7"));
}

TEST_F(AdvancedViewTest, AVerbAloneMakesItAsk)
{
    open();
    pick(u"tokens.clear"_s);
    const Answering answer(u"Run"_s);
    runAndWait("tokens.clear");
    EXPECT_TRUE(eventually([&] { return out() == u"3"_s; }));
}

TEST_F(AdvancedViewTest, AFailureIsShownAndKeepsTheInputs)
{
    agent.fail("volumes.list", {.message = "limit is too large"});
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"9"_s);
    QTest::keyClicks(&editor(), u"{}"_s);
    runAndWait("volumes.list");
    EXPECT_TRUE(eventually([&] { return out() == u"error: limit is too large"_s; }));
    EXPECT_EQ(field(u"limit"_s)->text(), u"9"_s);
    EXPECT_EQ(editor().toPlainText(), u"{}"_s);
}

TEST_F(AdvancedViewTest, WhatWasTypedIsThereOnTheWayBack)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"5"_s);
    QTest::keyClicks(&editor(), u"{"_s);
    pick(u"volumes.delete"_s);
    EXPECT_EQ(editor().toPlainText(), QString());
    EXPECT_FALSE(view->findChild<InlineError *>()->isVisible());
    QTest::keyClicks(field(u"volume_id"_s), u"7"_s);
    pick(u"volumes.list"_s);
    EXPECT_EQ(field(u"limit"_s)->text(), u"5"_s);
    EXPECT_EQ(editor().toPlainText(), u"{"_s);
    EXPECT_TRUE(view->findChild<InlineError *>()->isVisible());

    view.reset();
    open();
    ASSERT_TRUE(eventually([&] { return field(u"limit"_s) != nullptr; }));
    EXPECT_EQ(field(u"limit"_s)->text(), u"5"_s) << "the board was left and entered again";
    EXPECT_TRUE(list().currentIndex().isValid());
}

TEST_F(AdvancedViewTest, ARunThatGoesOnHoldsOnlyItsOwnButton)
{
    open();
    pick(u"volumes.list"_s);
    agent.hold("volumes.list");
    runAndWait("volumes.list");
    EXPECT_TRUE(eventually([&] { return says(u"Running volumes.list…"_s); }));
    EXPECT_FALSE(buttonOf(view.get(), u"Run"_s)->isEnabled());
    pick(u"volumes.delete"_s);
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Run"_s)->isEnabled(); }));
    pick(u"volumes.list"_s);
    EXPECT_TRUE(eventually([&] { return !buttonOf(view.get(), u"Run"_s)->isEnabled(); }));
    QTest::keyClick(field(u"limit"_s), Qt::Key_Return);
    agent.release("volumes.list");
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Run"_s)->isEnabled(); }));
    EXPECT_EQ(agent.count("volumes.list"), 1U) << "Enter does not start it twice";
}

TEST_F(AdvancedViewTest, TheBoardMayGoWhileItRuns)
{
    open();
    pick(u"volumes.list"_s);
    agent.hold("volumes.list");
    runAndWait("volumes.list");
    view.reset();
    agent.release("volumes.list");
    QTest::qWait(20);
    open();
    EXPECT_TRUE(eventually([&] { return out().contains(u"photos"_s); }));
}

TEST_F(AdvancedViewTest, TheBoardMayGoWhileItAsks)
{
    open();
    pick(u"volumes.delete"_s);
    {
        const Answering answer(u"Cancel"_s, {}, [&] { view.release()->deleteLater(); });
        press(view.get(), u"Run"_s);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::qWait(20);
    EXPECT_EQ(agent.count("volumes.delete"), 0U);
}

TEST_F(AdvancedViewTest, TheAgentMayGoWhileItRuns)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"5"_s);
    agent.silent("volumes.list");
    runAndWait("volumes.list");
    agent.stop();
    EXPECT_TRUE(eventually([&] { return out() == u"error: the agent connection closed"_s; }));
    EXPECT_EQ(field(u"limit"_s)->text(), u"5"_s);
}

TEST_F(AdvancedViewTest, TheKeyboardDoesItAll)
{
    open();
    view->focusSearch();
    QTest::keyClicks(window.focusWidget(), u"list"_s);
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(window.focusWidget(), &list());
    ASSERT_TRUE(eventually([&] { return field(u"limit"_s) != nullptr; }));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(window.focusWidget(), field(u"limit"_s));
    QTest::keyClicks(window.focusWidget(), u"2"_s);
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), field(u"since"_s));
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), &editor());
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), buttonOf(view.get(), u"Run"_s));
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    ASSERT_TRUE(eventually([&] { return out().contains(u"photos"_s); }));
    EXPECT_EQ(sent("volumes.list"), params("limit", "2"));
    view->findChild<OutputView *>()->setFocus();
    view->focusSearch();
    EXPECT_EQ(window.focusWidget()->accessibleName(), u"Search the output"_s);
}

TEST_F(AdvancedViewTest, CtrlEnterRunsFromTheEditor)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(&editor(), u"{\"a\": 1}"_s);
    QTest::keyClick(&editor(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.list") == 1; }));
    EXPECT_EQ(sent("volumes.list"), params("a", 1));
    EXPECT_EQ(editor().toPlainText(), u"{\"a\": 1}"_s);
}

TEST_F(AdvancedViewTest, ArrowsPick)
{
    open();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Home);
    EXPECT_TRUE(eventually([&] { return says(u"tokens.clear"_s); }));
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_TRUE(eventually([&] { return says(u"volumes.delete"_s); }));
    QTest::keyClick(&list(), Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return says(u"volumes.list"_s); }));
}

TEST_F(AdvancedViewTest, AReloadKeepsWhatIsPickedAndTyped)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"5"_s);
    TextField *const before = field(u"limit"_s);
    agent.answer("methods.list",
                 json::array{params("name", "a.first"),
                             params("name", "volumes.list", "http", "GET", "path", "/v1/volumes", "params",
                                    json::array{"limit", params("name", "since", "type", "a text")})});
    view->reload();
    ASSERT_TRUE(eventually([&] { return listed() == QStringList{u"a.first"_s, u"volumes.list"_s}; }));
    EXPECT_EQ(field(u"limit"_s), before);
    EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(AdvancedViewTest, AMethodThatChangedGetsItsNewFields)
{
    open();
    pick(u"volumes.list"_s);
    QTest::keyClicks(field(u"limit"_s), u"5"_s);
    agent.answer("methods.list", json::array{params("name", "volumes.list", "params", json::array{"limit", "order"})});
    view->reload();
    ASSERT_TRUE(eventually([&] { return field(u"order"_s) != nullptr; }));
    EXPECT_EQ(field(u"since"_s), nullptr);
    EXPECT_EQ(field(u"limit"_s)->text(), u"5"_s);
}

TEST_F(AdvancedViewTest, AnEmptyListSaysSo)
{
    agent.fail("methods.list", {.message = "no"});
    view = std::make_unique<AdvancedView>(state, &window);
    view->resize(956, 760);
    view->show();
    window.show();
    EXPECT_TRUE(eventually([&] {
        return std::ranges::any_of(view->findChildren<Label *>(), [](const Label *each) {
            return each->isVisible() && each->text() == u"The agent lists no operations."_s;
        });
    }));
}

TEST_F(AdvancedViewTest, ManyParametersScrollAndLeaveRoomForTheOutput)
{
    json::array parameters;
    for (int number = 0; number < 30; ++number) {
        parameters.push_back(json::value(QStringLiteral("parameter_%1").arg(number).toStdString()));
    }
    agent.answer("methods.list", json::array{params("name", "many", "params", parameters)});
    open(736, 600);
    pick(u"many"_s);
    EXPECT_GE(view->findChild<OutputView *>()->height(), 80);
    EXPECT_LE(
        view->findChild<OutputView *>()->mapTo(view.get(), QPoint(0, view->findChild<OutputView *>()->height())).y(),
        600);
    field(u"parameter_28"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field(u"parameter_28"_s), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), field(u"parameter_29"_s));
    const QRect seen(field(u"parameter_29"_s)->mapTo(view.get(), QPoint()), field(u"parameter_29"_s)->size());
    EXPECT_TRUE(view->rect().contains(seen)) << "a field that gets the focus scrolls into view";
}

TEST_F(AdvancedViewTest, TextsOfTheAgentWidenNothing)
{
    const std::string longText(4'000, 'W');
    agent.answer("methods.list", json::array{params("name", longText, "http", "GET\u202e", "path", longText, "params",
                                                    json::array{longText, "x"})});
    open(736, 600);
    list().pickFirst();
    ASSERT_TRUE(eventually([&] { return field(u"x"_s) != nullptr; }));
    EXPECT_LE(view->minimumSizeHint().width(), 736);
    EXPECT_LE(view->minimumSizeHint().height(), 600);
}

} // namespace
