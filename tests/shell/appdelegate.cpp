// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/appdelegate.h"

#include "shell/desktop/statusarea.h"
#include "shell/mainview/mainview.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "shell/window/aboutpanel.h"
#include "states.h"
#include "support/fakeagent.h"

#include <QApplication>
#include <QFileOpenEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;

/// Where no agent listens, so that a start-up connects to nothing.
const Environment noAgent("QUILL_AGENT_SOCKET", "/nonexistent/quill.sock");

struct Started {
    explicit Started(const QStringList &arguments = {}) : delegate(QStringList(u"quillfen"_s) + arguments)
    {
        delegate.windowAppeared(state);
    }
    ~Started() { state->shutDown(); }

    std::shared_ptr<AppState> state = newState();
    AppDelegate delegate;
};

TEST(AppDelegate, TakesTheEnrolmentCodeAndConnects)
{
    Started started({u"--enroll"_s, u"quill-7FQ2"_s});
    EXPECT_EQ(started.state->pendingEnrol(), u"quill-7FQ2"_s);
    EXPECT_EQ(started.state->agentError(), u"the Quillfen agent is not running (/nonexistent/quill.sock)"_s);
}

TEST(AppDelegate, LeavesThePendingCodeAloneForATrailingEnroll)
{
    const std::shared_ptr<AppState> state = newState();
    state->pendingEnrol = u"earlier"_s;
    AppDelegate delegate({u"quillfen"_s, u"--enroll"_s});
    delegate.windowAppeared(state);
    EXPECT_EQ(state->pendingEnrol(), u"earlier"_s);
    EXPECT_TRUE(state->agentError());
    state->shutDown();
}

TEST(AppDelegate, AsksForANewVolumeOnlyWhenTheEnvironmentSaysSo)
{
    EXPECT_FALSE(Started().state->showNewVolume());
    {
        const Environment environment("QUILLFEN_START_SECTION", "NewVolume");
        EXPECT_FALSE(Started().state->showNewVolume());
    }
    const Environment environment("QUILLFEN_START_SECTION", "newvolume");
    EXPECT_TRUE(Started().state->showNewVolume());
}

TEST(AppDelegate, ConnectsToTheAgent)
{
    FakeAgent agent;
    agent.allowUnexpected();
    const QByteArray before = qgetenv("QUILL_AGENT_SOCKET");
    qputenv("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    Started started;
    qputenv("QUILL_AGENT_SOCKET", before);
    EXPECT_TRUE(started.state->connected());
    EXPECT_TRUE(waitFor([&] { return agent.count("events.subscribe") == 1; }));
}

TEST(AppDelegate, TakesALinkAsThePendingCode)
{
    Started started;
    started.delegate.open({u"https://quillfen.example"_s, u"quillfen:enrol?code=Quill-7FQ2"_s});
    EXPECT_TRUE(waitFor([&] { return started.state->pendingEnrol() == u"quillfen:enrol?code=Quill-7FQ2"_s; }));
}

TEST(AppDelegate, TakesSeveralLinksInTheirOrder)
{
    Started started;
    started.delegate.open({u"quillfen:a"_s, u"quillfen:b"_s});
    EXPECT_TRUE(waitFor([&] { return started.state->pendingEnrol() == u"quillfen:b"_s; }));
}

TEST(AppDelegate, IgnoresOtherSchemes)
{
    Started started;
    started.delegate.open({u"QUILLFEN:a"_s, u"Quillfen:a"_s, u"http://quillfen:1"_s, u""_s});
    QTest::qWait(20);
    EXPECT_EQ(started.state->pendingEnrol(), u""_s);
}

TEST(AppDelegate, DropsLinksUntilTheWindowHasAppeared)
{
    const std::shared_ptr<AppState> state = newState();
    AppDelegate delegate({u"quillfen"_s});
    delegate.open({u"quillfen:early"_s});
    delegate.windowAppeared(state);
    QTest::qWait(20);
    EXPECT_EQ(state->pendingEnrol(), u""_s);
    delegate.open({u"quillfen:late"_s});
    EXPECT_TRUE(waitFor([&] { return state->pendingEnrol() == u"quillfen:late"_s; }));
    state->shutDown();
}

TEST(AppDelegate, TakesTheLinkThatTheDesktopHandsOver)
{
    Started started;
    QFileOpenEvent event(QUrl(u"quillfen:enrol"_s));
    QApplication::sendEvent(qApp, &event);
    EXPECT_TRUE(waitFor([&] { return started.state->pendingEnrol() == u"quillfen:enrol"_s; }));
}

TEST(AppDelegate, TakesTheLinkAsItIsWritten)
{
    Started started;
    QFileOpenEvent event(QUrl(u"quillfen:enrol?code=a%20b%2Fc"_s));
    QApplication::sendEvent(qApp, &event);
    EXPECT_TRUE(waitFor([&] { return started.state->pendingEnrol() == u"quillfen:enrol?code=a%20b%2Fc"_s; }));
}

TEST(AppDelegate, BringsTheHiddenWindowBack)
{
    Started started;
    MainWindow window(started.state);
    EXPECT_TRUE(started.delegate.reopen(false));
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(started.delegate.reopen(false));
    EXPECT_TRUE(window.isVisible());
}

TEST(AppDelegate, DoesNothingOnReopenWhileAWindowIsVisible)
{
    Started started;
    MainWindow window(started.state);
    EXPECT_TRUE(started.delegate.reopen(true));
    EXPECT_FALSE(window.isVisible());
}

TEST(AppDelegate, SurvivesReopenWithoutAnyWindow)
{
    Started started;
    EXPECT_TRUE(started.delegate.reopen(false));
}

TEST(AppDelegate, TellsAboutTheProgramAndItsAgent)
{
    Started started;
    started.state->agentVersion = u"1.4.1"_s;
    const QPointer<AboutPanel> panel = started.delegate.about();
    const QStringList shown = texts(*panel);
    for (const QString &text :
         {u"Quillfen"_s, u"Version "_s + AppState::appVersion(), u"agent 1.4.1"_s, u"https://quillfen.example"_s}) {
        EXPECT_THAT(shown, Contains(text));
    }
    EXPECT_EQ(started.delegate.about(), panel.data());
    QTest::keyClick(panel.data(), Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return panel == nullptr; }));
}

TEST(AppDelegate, SaysAgentAloneWithoutACurrentState)
{
    AppDelegate delegate({u"quillfen"_s});
    const QPointer<AboutPanel> panel = delegate.about();
    EXPECT_THAT(texts(*panel), Contains(u"agent "_s));
    panel->close();
    EXPECT_TRUE(waitFor([&] { return panel == nullptr; }));
}

TEST(AppDelegate, LivesOnWithoutWindowsAndBringsOneBackForALaterStart)
{
    Started started;
    QSignalSpy quit(&started.delegate, &AppDelegate::quitRequested);
    MainWindow window(started.state);
    window.show();
    window.close();
    EXPECT_FALSE(waitFor([&] { return quit.count() > 0; }, 100));
    started.delegate.grant({});
    EXPECT_TRUE(window.isVisible());
}

TEST(AppDelegate, EndsTheProgramWithTheLastWindowWhereItWasAskedTo)
{
    Started started;
    started.delegate.setQuitOnClose(true);
    QSignalSpy quit(&started.delegate, &AppDelegate::quitRequested);
    MainWindow window(started.state);
    window.show();
    QTimer::singleShot(0, &window, &QWidget::close);
    QObject::connect(&started.delegate, &AppDelegate::quitRequested, qApp, &QApplication::quit);
    QApplication::exec();
    EXPECT_EQ(quit.count(), 1);
}

TEST(AppDelegate, LooksForOneStatusAreaHoweverOftenItIsAsked)
{
    Started started;
    started.delegate.openStatusArea();
    started.delegate.openStatusArea();
    EXPECT_EQ(started.delegate.findChildren<StatusArea *>().size(), 1);
}

TEST(AppDelegate, GrantsACodeALinkAndAnActionOfALaterStart)
{
    Started started;
    MainWindow window(started.state);
    Wish wish;
    wish.code = u"quill-7FQ2"_s;
    wish.show = false;
    started.delegate.grant(wish);
    EXPECT_EQ(started.state->pendingEnrol(), u"quill-7FQ2"_s);
    EXPECT_FALSE(window.isVisible()) << "a start in the background shows nothing";
    wish = {};
    wish.links = {u"quillfen:enrol?code=quill-8"_s};
    wish.action = u"new-volume"_s;
    started.delegate.grant(wish);
    EXPECT_EQ(started.state->pendingEnrol(), u"quillfen:enrol?code=quill-8"_s) << "before the window shows";
    EXPECT_TRUE(started.state->showNewVolume());
    EXPECT_TRUE(window.isVisible());
}

TEST(AppDelegate, DropsCodesAndLinksThatNoServiceIssues)
{
    Started started;
    Wish wish;
    wish.code = u"quill-\u001b[2J"_s;
    wish.links = {u"quillfen:"_s + QString(4096, u'a'), u"quillfen:a\nb"_s, u"QUILLFEN:a"_s,
                  u"https://quillfen.example"_s};
    started.delegate.grant(wish);
    QCoreApplication::processEvents();
    EXPECT_EQ(started.state->pendingEnrol(), QString());
}

TEST(AppDelegate, TakesAWishForTimeTravelToTheWorkspaceThatIsStillToCome)
{
    Started started;
    MainWindow window(started.state);
    Wish wish;
    wish.action = u"time-travel"_s;
    started.delegate.grant(wish);
    ASSERT_EQ(window.root().mainView(), nullptr);
    started.state->auth = record(R"({"signed_in": true})");
    started.state->connected = true;
    ASSERT_TRUE(waitFor([&] { return window.root().mainView() != nullptr; }));
    EXPECT_EQ(window.root().mainView()->section(), Section::TimeTravel);
}

TEST(AppDelegate, LeavesTheDecisionAboutTheEndToItself)
{
    const AppDelegate delegate({u"quillfen"_s});
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
}

TEST(AppDelegate, ClosesTheAboutPanelAndQuitsByTheSameKeysAsTheWindow)
{
    Started started;
    QSignalSpy quit(&started.delegate, &AppDelegate::quitRequested);
    const QPointer<AboutPanel> panel = started.delegate.about();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel.data()));
    QTest::keyClick(panel.data(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
    QTest::keyClick(panel.data(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([&] { return panel == nullptr; }));
}

} // namespace
} // namespace quillfen
