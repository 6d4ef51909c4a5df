// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/rootview.h"

#include "boards/volumes/newvolumesheet.h"
#include "shell/arrival/agentdownview.h"
#include "shell/arrival/firstrunview.h"
#include "shell/mainview/mainview.h"
#include "states.h"
#include "support/fakeagent.h"
#include "ui/controls/textfield.h"
#include "ui/overlays/sheet.h"
#include "ui/overlays/toast.h"
#include "ui/style/fade.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;

struct ShownRoot {
    explicit ShownRoot(std::shared_ptr<AppState> shownState) : state(std::move(shownState)), root(state)
    {
        root.resize(1180, 760);
        root.show();
    }
    // What the screens have asked for ends before the state does.
    ~ShownRoot() { state->shutDown(); }
    ShownRoot(const ShownRoot &) = delete;
    ShownRoot &operator=(const ShownRoot &) = delete;

    bool reaches(Screen screen)
    {
        return waitFor([&] { return root.screen() == screen; });
    }

    template <typename View>
    [[nodiscard]] bool shows() const
    {
        const auto views = root.findChildren<View *>();
        return std::ranges::any_of(views, [](View *view) { return view->isVisible(); });
    }

    std::shared_ptr<AppState> state;
    RootView root;
};

TEST(ScreenFor, IsNotDecidedBeforeTheAgentHasRefusedOrAnswered)
{
    const std::shared_ptr<AppState> state = newState();
    EXPECT_EQ(screenFor(*state, false), std::nullopt);
    EXPECT_EQ(screenFor(*state, true), Screen::AgentDown);
    state->agentError = u"the Quillfen agent is not running (/tmp/x)"_s;
    EXPECT_EQ(screenFor(*state, false), Screen::AgentDown);
    state->connected = true;
    EXPECT_EQ(screenFor(*state, false), std::nullopt);
    EXPECT_EQ(screenFor(*state, true), Screen::FirstRun);
}

TEST(ScreenFor, IsTheWorkspaceWhenSomebodyIsSignedIn)
{
    EXPECT_EQ(screenFor(*signedInState(), false), Screen::Main);
}

TEST(ScreenFor, IsAgentDownWithoutConnectionWhoeverIsSignedIn)
{
    const std::shared_ptr<AppState> state = signedInState();
    state->connected = false;
    state->agentError = u"the agent connection closed"_s;
    EXPECT_EQ(screenFor(*state, false), Screen::AgentDown);
    EXPECT_EQ(screenFor(*state, true), Screen::AgentDown);
}

TEST(ScreenFor, TakesOnlyABooleanTrueForSignedIn)
{
    for (const char *auth : {R"({"signed_in": "true"})", R"({"signed_in": 1})", R"({})"}) {
        EXPECT_EQ(screenFor(*signedInState(auth), true), Screen::FirstRun) << auth;
    }
}

TEST(RootView, ShowsNothingButTheBackgroundInItsFirstMoments)
{
    ShownRoot shown(newState());
    EXPECT_EQ(shown.root.screen(), std::nullopt);
    EXPECT_TRUE(shown.root.findChildren<QWidget *>().isEmpty());
    QElapsedTimer sinceShown;
    sinceShown.start();
    EXPECT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_GE(sinceShown.elapsed(), 200);
}

TEST(RootView, ShowsAgentDownAtOnceWhenTheConnectionFails)
{
    ShownRoot shown(newState());
    QElapsedTimer sinceFailure;
    sinceFailure.start();
    shown.state->agentError = u"the Quillfen agent is not running (/tmp/x)"_s;
    EXPECT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_LT(sinceFailure.elapsed(), 200);
    EXPECT_TRUE(shown.shows<AgentDownView>());
}

TEST(RootView, RoutesWithEveryChangeOfTheState)
{
    ShownRoot shown(signedInState());
    EXPECT_TRUE(shown.reaches(Screen::Main));
    EXPECT_TRUE(shown.shows<MainView>());
    shown.state->connected = false;
    shown.state->agentError = u"the agent connection closed"_s;
    EXPECT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_TRUE(shown.shows<AgentDownView>());
    EXPECT_FALSE(shown.shows<MainView>());
    shown.state->connected = true;
    EXPECT_TRUE(shown.reaches(Screen::Main));
    shown.state->auth = record(R"({})");
    EXPECT_TRUE(shown.reaches(Screen::FirstRun));
    EXPECT_TRUE(shown.shows<FirstRunView>());
}

/// Somebody comes here with a code on the clipboard: it can be pasted without a click.
TEST(RootView, TheFirstRunWaitsForTheCode)
{
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    EXPECT_EQ(shown.root.window()->focusWidget(), &shown.root);
    shown.state->auth = record(R"({})");
    ASSERT_TRUE(shown.reaches(Screen::FirstRun));
    const auto *const field = qobject_cast<TextField *>(shown.root.window()->focusWidget());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->accessibleName(), u"Enrolment code or link"_s);
}

TEST(RootView, DestroysAScreenWhenItLeavesAndMakesItAnew)
{
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    const QPointer<MainView> first = shown.root.mainView();
    first->setSection(Section::Account);
    shown.state->connected = false;
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_EQ(shown.root.mainView(), nullptr);
    EXPECT_TRUE(waitFor([&] { return first == nullptr; }));
    const Environment environment("QUILLFEN_START_SECTION", "adv");
    shown.state->connected = true;
    ASSERT_TRUE(shown.reaches(Screen::Main));
    EXPECT_EQ(shown.root.mainView()->section(), Section::Advanced);
}

TEST(RootView, KeepsAgentDownUntilAReturnedAgentHasSaidWhoIsSignedIn)
{
    ShownRoot shown(newState());
    shown.state->agentError = u"the Quillfen agent is not running (/tmp/x)"_s;
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    shown.state->agentError = std::nullopt;
    shown.state->connected = true;
    QTest::qWait(100);
    EXPECT_EQ(shown.root.screen(), Screen::AgentDown);
    shown.state->auth = record(R"({"signed_in": true})");
    EXPECT_TRUE(shown.reaches(Screen::Main));
}

TEST(RootView, SwitchesAtOnceUnderReducedMotionAndByAFadeOtherwise)
{
    setReducedMotion(true);
    {
        ShownRoot shown(signedInState());
        ASSERT_TRUE(shown.reaches(Screen::Main));
        shown.state->connected = false;
        ASSERT_TRUE(shown.reaches(Screen::AgentDown));
        EXPECT_TRUE(waitFor(
            [&] { return shown.root.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size() == 1; }));
    }
    setReducedMotion(false);
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    shown.state->connected = false;
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shown.root.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
    EXPECT_TRUE(
        waitFor([&] { return shown.root.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size() == 1; }));
    setReducedMotion(std::nullopt);
}

TEST(RootView, ShowsTheToastOverEveryScreen)
{
    ShownRoot shown(signedInState());
    EXPECT_EQ(shown.root.findChild<Toast *>(), nullptr);
    shown.state->toast = u"The engine is ready."_s;
    EXPECT_TRUE(waitFor([&] {
        auto *toast = shown.root.findChild<Toast *>();
        return toast != nullptr && toast->isVisible() && toast->text() == u"The engine is ready."_s;
    }));
    shown.state->connected = false;
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_TRUE(shown.root.findChild<Toast *>()->isVisible());
    shown.state->toast = std::nullopt;
    EXPECT_TRUE(waitFor([&] { return !shown.root.findChild<Toast *>()->isVisible(); }));
}

TEST(RootView, ShowsNoToastForAnEmptyText)
{
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    shown.state->toast = u""_s;
    QTest::qWait(60);
    EXPECT_EQ(shown.root.findChild<Toast *>(), nullptr);
}

/// The sheets that are not on their way out.
QList<Sheet *> sheets(const QWidget &window)
{
    return window.findChildren<Sheet *>(QString(), Qt::FindDirectChildrenOnly);
}

TEST(RootView, PresentsTheNewVolumeSheetWhileTheStateAsksForIt)
{
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    EXPECT_TRUE(sheets(shown.root).isEmpty());
    shown.state->showNewVolume = true;
    ASSERT_TRUE(waitFor([&] { return sheets(shown.root).size() == 1 && sheets(shown.root).first()->isVisible(); }));
    EXPECT_NE(shown.root.findChild<NewVolumeSheet *>(), nullptr);
    shown.state->showNewVolume = false;
    EXPECT_TRUE(waitFor([&] { return sheets(shown.root).isEmpty(); }));
}

TEST(RootView, TakesTheWishBackWhenTheSheetIsDismissed)
{
    ShownRoot shown(signedInState());
    ASSERT_TRUE(shown.reaches(Screen::Main));
    shown.root.activateWindow();
    shown.state->showNewVolume = true;
    ASSERT_TRUE(waitFor([&] { return sheets(shown.root).size() == 1; }));
    QTest::keyClick(sheets(shown.root).first(), Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return !shown.state->showNewVolume() && sheets(shown.root).isEmpty(); }));
    shown.state->showNewVolume = true;
    EXPECT_TRUE(waitFor([&] { return sheets(shown.root).size() == 1; }));
}

TEST(RootView, PresentsTheSheetThatWasAskedForBeforeTheFirstScreen)
{
    const std::shared_ptr<AppState> state = newState();
    state->showNewVolume = true;
    ShownRoot shown(state);
    QTest::qWait(30);
    EXPECT_TRUE(sheets(shown.root).isEmpty());
    state->connected = true;
    state->auth = record(R"({"signed_in": true})");
    EXPECT_TRUE(waitFor([&] { return sheets(shown.root).size() == 1; }));
}

TEST(RootView, KeepsTheSheetWithWhatWasTypedWhenTheAgentGoesAway)
{
    ShownRoot shown(signedInState());
    shown.state->showNewVolume = true;
    ASSERT_TRUE(waitFor([&] { return sheets(shown.root).size() == 1; }));
    const QPointer<Sheet> sheet = sheets(shown.root).first();
    shown.state->connected = false;
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    QTest::qWait(30);
    EXPECT_EQ(sheets(shown.root), QList<Sheet *>{sheet.data()});
}

TEST(RootView, AppearsOnce)
{
    RootView root(signedInState());
    QSignalSpy appeared(&root, &RootView::appeared);
    root.show();
    EXPECT_TRUE(waitFor([&] { return appeared.count() == 1; }));
    root.hide();
    root.show();
    QTest::qWait(30);
    EXPECT_EQ(appeared.count(), 1);
}

TEST(RootView, SurvivesTheLossOfTheAgentWhileItsScreenWaitsForAnAnswer)
{
    FakeAgent agent;
    agent.allowUnexpected();
    agent.answer("auth.status", json::parse(R"({"signed_in": true})"));
    const Environment socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    Timing timing;
    timing.retryDelay = 50ms;
    ShownRoot shown(AppState::create(timing));
    shown.state->connect();
    ASSERT_TRUE(shown.reaches(Screen::Main));
    ASSERT_TRUE(waitFor([&] { return agent.count("events.subscribe") == 1; }));
    agent.silent("vm.status");
    QTest::keyClick(shown.root.mainView(), Qt::Key_F5);
    QCoro::Task<> waiting = shown.state->refresh();
    ASSERT_TRUE(waitFor([&] { return agent.count("vm.status") >= 2; }));
    const QPointer<MainView> view = shown.root.mainView();
    agent.stop();
    ASSERT_TRUE(shown.reaches(Screen::AgentDown));
    EXPECT_EQ(shown.state->agentError(), u"the agent connection closed"_s);
    EXPECT_TRUE(waitFor([&] { return view == nullptr && waiting.isReady(); }));
    agent.answer("vm.status", json::object());
    agent.restart();
    EXPECT_TRUE(shown.reaches(Screen::Main));
    shown.state->shutDown();
}

TEST(RootView, MayGoWhileACallWaits)
{
    FakeAgent agent;
    agent.allowUnexpected();
    agent.silent("auth.status");
    const Environment socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    const std::shared_ptr<AppState> state = AppState::create();
    {
        ShownRoot shown(state);
        state->connect();
        ASSERT_TRUE(waitFor([&] { return agent.count("auth.status") == 1; }));
    }
    state->shutDown();
    EXPECT_FALSE(state->signedIn());
}

TEST(RootView, HasTheKeyboardAfterASheetWhoseOpenerHasGone)
{
    const std::shared_ptr<AppState> state = signedInState();
    RootView root(state);
    root.resize(1180, 760);
    root.show();
    root.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&root));
    auto *const opener = new QLineEdit(&root);
    opener->show();
    opener->setFocus();
    state->showNewVolume = true;
    ASSERT_TRUE(waitFor([&] { return qobject_cast<TextField *>(QApplication::focusWidget()) != nullptr; }));
    delete opener;
    state->showNewVolume = false;
    EXPECT_TRUE(waitFor([&] { return QApplication::focusWidget() == &root; }));
    settle(*state);
}

} // namespace
} // namespace quillfen
