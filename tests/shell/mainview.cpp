// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/mainview.h"

#include "boards/operator/operatorview.h"
#include "boards/volumes/volumesview.h"
#include "shell/mainview/sidebarentry.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "states.h"
#include "support/fakeagent.h"
#include "ui/controls/searchfield.h"
#include "ui/parts/board.h"

#include <QPointer>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;

struct ShownView {
    explicit ShownView(std::shared_ptr<AppState> shownState)
        : state(std::move(shownState)), window(state), view(*window.root().mainView())
    {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    ~ShownView() { settle(*state); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window, key, modifiers);
    }
    void navigate(const char *values) { state->notifications().post(Notifications::navigate, record(values)); }

    std::shared_ptr<AppState> state;
    MainWindow window;
    MainView &view;
};

Section startOn(const char *wish)
{
    const Environment environment("QUILLFEN_START_SECTION", wish);
    const std::shared_ptr<AppState> state = signedInState();
    const Section section = MainView(state).section();
    settle(*state);
    return section;
}

TEST(MainView, StartsWhereTheEnvironmentSays)
{
    EXPECT_EQ(MainView(signedInState()).section(), Section::Volumes);
    EXPECT_EQ(startOn("Get"), Section::Export);
    EXPECT_EQ(startOn("time"), Section::TimeTravel);
    EXPECT_EQ(startOn("timetravel"), Section::Volumes);
    EXPECT_EQ(startOn("newvolume"), Section::Volumes);
    EXPECT_EQ(startOn(""), Section::Volumes);
}

TEST(MainView, StartsOnOperatorAlsoForOthersWithTheEntryHidden)
{
    const Environment environment("QUILLFEN_START_SECTION", "operator");
    const std::shared_ptr<AppState> state = signedInState();
    MainView view(state);
    EXPECT_EQ(view.section(), Section::Operator);
    EXPECT_EQ(named<SidebarEntry>(view, u"Operator"_s), nullptr);
    EXPECT_NE(view.findChild<OperatorView *>(), nullptr);
    settle(*state);
}

TEST(MainView, ShowsTheBoardOfTheSectionAndOnlyThat)
{
    ShownView shown(signedInState());
    const QPointer<VolumesView> volumes = shown.view.findChild<VolumesView *>();
    ASSERT_NE(volumes, nullptr);
    EXPECT_TRUE(volumes->isVisible());
    QTest::mouseClick(named<SidebarEntry>(shown.view, u"History policy"_s), Qt::LeftButton);
    EXPECT_EQ(shown.view.section(), Section::Policy);
    EXPECT_THAT(texts(shown.view), Contains(u"How long each second is kept."_s));
    EXPECT_TRUE(waitFor([&] { return volumes == nullptr; }));
}

TEST(MainView, TakesTheFocusOfABoardThatGoes)
{
    ShownView shown(signedInState());
    shown.press(Qt::Key_F, Qt::ControlModifier);
    auto *search = shown.view.findChild<SearchField *>();
    ASSERT_NE(search, nullptr);
    ASSERT_TRUE(search->hasFocus());
    shown.press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(shown.view.section(), Section::TimeTravel);
    EXPECT_TRUE(shown.view.hasFocus()) << "and not the next control in line, which is far away";
    EXPECT_EQ(shown.view.accessibleName(), u"Time travel"_s) << "where a screen reader says one is";
}

TEST(MainView, GivesEverySectionABoardOfItsOwn)
{
    ShownView shown(signedInState());
    // A console begins with what it is for; the other boards with their titles.
    const auto firstWords = [](Section section) {
        return section == Section::Advanced ? u"Every operation, as the quill command sees it. Pick one."_s
                                            : rawTitle(section);
    };
    for (const Section section : allSections) {
        shown.view.setSection(section);
        Board *board = nullptr;
        for (Board *candidate : shown.view.findChildren<Board *>()) {
            board = candidate->isHidden() ? board : candidate;
        }
        ASSERT_NE(board, nullptr);
        EXPECT_THAT(texts(*board), Contains(firstWords(section)));
    }
}

TEST(MainView, GoesToTimeTravelWhenABoardAsksForIt)
{
    ShownView shown(signedInState());
    shown.navigate(R"({"section": "timetravel", "volume": 7})");
    EXPECT_EQ(shown.view.section(), Section::TimeTravel);
    EXPECT_TRUE(named<SidebarEntry>(shown.view, u"Time travel"_s)->isChecked());
}

TEST(MainView, IgnoresEveryOtherNavigation)
{
    ShownView shown(signedInState());
    shown.view.setSection(Section::Account);
    for (const char *values : {R"({"section": "volumes"})", R"({"section": "Time travel"})",
                               R"({"section": "TIMETRAVEL"})", R"({"section": null})", R"({"volume": 7})", R"({})"}) {
        shown.navigate(values);
        EXPECT_EQ(shown.view.section(), Section::Account) << values;
    }
}

TEST(MainView, HearsNothingAfterItsEnd)
{
    const std::shared_ptr<AppState> state = signedInState();
    auto view = std::make_unique<MainView>(state);
    view.reset();
    state->notifications().post(Notifications::navigate, record(R"({"section": "timetravel"})"));
    EXPECT_EQ(MainView(state).section(), Section::Volumes);
}

TEST(MainView, GoesToSectionsByTheirNumber)
{
    ShownView shown(signedInState(R"({"signed_in": true, "is_admin": true})"));
    for (int number = 7; number >= 1; --number) {
        shown.press(Qt::Key(Qt::Key_0 + number), Qt::ControlModifier);
        EXPECT_EQ(shown.view.section(), allSections.at(static_cast<std::size_t>(number - 1)));
    }
}

TEST(MainView, DoesNothingForTheNumberOfAHiddenSection)
{
    ShownView shown(signedInState());
    shown.press(Qt::Key_6, Qt::ControlModifier);
    EXPECT_EQ(shown.view.section(), Section::Volumes);
    shown.press(Qt::Key_7, Qt::ControlModifier);
    EXPECT_EQ(shown.view.section(), Section::Advanced);
}

TEST(MainView, AsksForANewVolumeByKey)
{
    ShownView shown(signedInState());
    shown.press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(shown.state->showNewVolume());
}

TEST(MainView, HoldsStillBeneathASheet)
{
    ShownView shown(signedInState());
    shown.state->showNewVolume = true;
    shown.press(Qt::Key_7, Qt::ControlModifier);
    EXPECT_EQ(shown.view.section(), Section::Volumes);
}

TEST(MainView, PutsTheCursorIntoTheSearchByKey)
{
    const std::shared_ptr<AppState> state = signedInState();
    const json::value volumes = json::parse(R"([{"id": 1, "name": "Documents"}])");
    state->volumes = records(&volumes);
    ShownView shown(state);
    shown.press(Qt::Key_F, Qt::ControlModifier);
    auto *search = shown.view.findChild<SearchField *>();
    ASSERT_NE(search, nullptr);
    EXPECT_TRUE(search->hasFocus());
    shown.view.setSection(Section::Advanced);
    shown.press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(shown.view.section(), Section::Advanced);
}

TEST(MainView, RefreshesByKey)
{
    FakeAgent agent;
    agent.allowUnexpected();
    agent.answer("auth.status", json::parse(R"({"signed_in": true})"));
    const Environment socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    const std::shared_ptr<AppState> state = AppState::create();
    state->connect();
    ASSERT_TRUE(waitFor([&] { return state->signedIn() && agent.count("events.subscribe") == 1; }));
    const std::size_t before = agent.count("auth.status");
    ShownView shown(state);
    shown.press(Qt::Key_F5);
    EXPECT_TRUE(waitFor([&] { return agent.count("auth.status") == before + 1; }));
    state->shutDown();
}

TEST(MainView, AWishToNavigateReachesTheBoardThatComesOfIt)
{
    FakeAgent agent;
    agent.allowUnexpected();
    agent.answer("auth.status", json::parse(R"({"signed_in": true})"));
    agent.answer("volumes.list", json::parse(R"([{"id": 1, "name": "Documents"}, {"id": 2, "name": "Music"}])"));
    const Environment socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    const std::shared_ptr<AppState> state = AppState::create();
    state->connect();
    ASSERT_TRUE(waitFor([&] { return state->volumes().size() == 2 && agent.count("events.subscribe") == 1; }));
    ShownView shown(state);
    agent.clearLog();
    state->notifications().post(Notifications::navigate, params("section", "timetravel", "volume", 2));
    EXPECT_EQ(shown.view.section(), Section::TimeTravel);
    ASSERT_TRUE(waitFor([&] { return agent.count("recoveries.list_for_volume") == 1; }));
    ASSERT_EQ(agent.requests("restore_points.list").size(), 1U) << "and no other volume is read on the way";
    EXPECT_EQ(agent.requests("restore_points.list").front().params, params("volume_id", 2));
    state->shutDown();
}

} // namespace
} // namespace quillfen
