// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/desktop/notifier.h"

#include "shell/activity/activitywindow.h"
#include "shell/appdelegate.h"
#include "shell/mainwindow.h"
#include "states.h"

#include <map>
#include <vector>

#include <gmock/gmock.h>

namespace quillfen {

void PrintTo(const NotificationText &text, std::ostream *out)
{
    *out << (text.failed ? "! " : "") << text.summary.toStdString() << ": " << text.body.toStdString();
}

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// What a desktop shows.
struct Shown {
    std::vector<NotificationText> said; ///< in the order in which it was said
    std::map<int, NotificationText> standing;
    int made = 0;
    DesktopNotifications *notifications = nullptr;
};

class FakeNotifications final : public DesktopNotifications {
public:
    explicit FakeNotifications(Shown &shown) : m_shown(shown) { m_shown.notifications = this; }

    void show(int number, const NotificationText &text) override
    {
        m_shown.said.push_back(text);
        m_shown.standing[number] = text;
    }
    void closeAll() override { m_shown.standing.clear(); }

private:
    Shown &m_shown;
};

ActivityEntry ended(const QString &words, std::chrono::milliseconds took = 10s)
{
    ActivityEntry entry;
    entry.kind = ActivityEntry::Kind::Done;
    entry.words = words;
    entry.method = "volumes.resize";
    entry.took = took;
    return entry;
}

ActivityEntry failed(const QString &words)
{
    ActivityEntry entry = ended(words);
    entry.kind = ActivityEntry::Kind::Failed;
    entry.code = -32'000;
    return entry;
}

NotificationText said(const QString &body)
{
    return {.summary = u"Quillfen"_s, .body = body};
}

class NotifierTest : public testing::Test {
protected:
    ~NotifierTest() override { state->shutDown(); }

    /// As the state keeps what has ended.
    void end(ActivityEntry entry)
    {
        state->activity.past.update([&](std::deque<ActivityEntry> &past) {
            entry.number = past.empty() ? 1 : past.back().number + 1;
            past.push_back(std::move(entry));
        });
    }

    /// Until the notifier has looked: without frames to wait for, that is the next turn of the event loop.
    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    void tell(const ActivityEntry &entry)
    {
        end(entry);
        settle();
    }

    Notifier::Make make()
    {
        return [this]() -> std::unique_ptr<DesktopNotifications> {
            ++shown.made;
            return canShow ? std::make_unique<FakeNotifications>(shown) : nullptr;
        };
    }

    static std::shared_ptr<AppState> quickState()
    {
        Timing timing;
        timing.frame = 0ms;
        return AppState::create(timing);
    }

    std::shared_ptr<AppState> state = quickState();
    Shown shown;
    bool canShow = true;
    bool isSeen = false;
};

class HiddenWindow : public NotifierTest {
protected:
    Notifier notifier{state, [this] { return isSeen; }, make()};
};

TEST_F(HiddenWindow, TellsHowALongOperationEnded)
{
    tell(ended(u"photos is now 200 GB and mounted again."_s));
    EXPECT_THAT(shown.said, ElementsAre(said(u"photos is now 200 GB and mounted again."_s)));
}

TEST_F(HiddenWindow, TenSecondsAreLong)
{
    tell(ended(u"short"_s, 9'999ms));
    EXPECT_THAT(shown.said, IsEmpty());
    EXPECT_EQ(shown.made, 0) << "nothing is asked of the desktop before there is something to tell";
    tell(ended(u"long"_s, 10'000ms));
    EXPECT_THAT(shown.said, ElementsAre(said(u"long"_s)));
}

TEST_F(HiddenWindow, NoticesAreNoOutcomes)
{
    ActivityEntry notice = ended(u"Growing photos to 200 GB…"_s);
    notice.kind = ActivityEntry::Kind::Notice;
    tell(notice);
    EXPECT_THAT(shown.said, IsEmpty());
}

TEST_F(HiddenWindow, NamesTheOperationWhereItHasATitle)
{
    ActivityEntry entry = ended(u"The engine is ready."_s);
    entry.title = u"Setting up the engine…"_s;
    tell(entry);
    EXPECT_THAT(shown.said, ElementsAre(NotificationText{.summary = entry.title, .body = entry.words}));
}

TEST_F(HiddenWindow, MarksAFailure)
{
    tell(failed(u"no room left"_s));
    EXPECT_THAT(shown.said,
                ElementsAre(NotificationText{.summary = u"Quillfen"_s, .body = u"no room left"_s, .failed = true}));
}

TEST_F(HiddenWindow, NamesTheMethodWhereThereAreNoWords)
{
    tell(ended({}));
    tell(failed({}));
    EXPECT_THAT(
        shown.said,
        ElementsAre(said(u"volumes.resize · Done"_s),
                    NotificationText{.summary = u"Quillfen"_s, .body = u"volumes.resize · Failed"_s, .failed = true}));
}

TEST_F(HiddenWindow, ShowsWhatWouldBeUnseen)
{
    ActivityEntry entry = ended(u"a\u202Eb\nc"_s);
    entry.title = u"d\0e"_s;
    tell(entry);
    EXPECT_THAT(shown.said, ElementsAre(NotificationText{.summary = u"d␀e"_s, .body = u"a⟨U+202E⟩b␊c"_s}));
}

TEST_F(HiddenWindow, CutsWhatIsLong)
{
    ActivityEntry entry = ended(QString(399, u'a') + u"😀"_s + QString(5'000, u'b'));
    entry.title = QString(5'000, u't');
    tell(entry);
    EXPECT_THAT(shown.said,
                ElementsAre(NotificationText{.summary = QString(100, u't') + u'…', .body = QString(399, u'a') + u'…'}))
        << "and not in the middle of a character";
}

TEST_F(HiddenWindow, TellsEachOutcomeOnce)
{
    tell(ended(u"one"_s));
    tell(ended(u"short"_s, 1s));
    end(ended(u"two"_s));
    end(ended(u"three"_s));
    settle();
    EXPECT_THAT(shown.said, ElementsAre(said(u"one"_s), said(u"two"_s), said(u"three"_s)));
    EXPECT_EQ(shown.made, 1);
}

TEST_F(HiddenWindow, CountsWhatEndsBesideThreeOthers)
{
    for (const QString &name : {u"one"_s, u"two"_s, u"three"_s, u"four"_s, u"five"_s}) {
        end(ended(name));
    }
    end(failed(u"six"_s));
    settle();
    ASSERT_THAT(shown.said, SizeIs(6));
    EXPECT_EQ(shown.said[3], said(u"1 more operation has ended"_s));
    EXPECT_EQ(shown.said[4], said(u"2 more operations have ended"_s));
    const NotificationText last{
        .summary = u"Quillfen"_s, .body = u"3 more operations have ended · 1 failed"_s, .failed = true};
    EXPECT_EQ(shown.said[5], last);
    EXPECT_THAT(shown.standing, SizeIs(4)) << "the count is one notification";
}

TEST_F(HiddenWindow, HasRoomAgainForWhatWasTakenAway)
{
    for (const QString &name : {u"one"_s, u"two"_s, u"three"_s, u"four"_s}) {
        end(ended(name));
    }
    settle();
    Q_EMIT shown.notifications->gone(2);
    tell(ended(u"five"_s));
    EXPECT_EQ(shown.said.back(), said(u"five"_s));
    tell(ended(u"six"_s));
    EXPECT_EQ(shown.said.back(), said(u"2 more operations have ended"_s));
    Q_EMIT shown.notifications->gone(0);
    tell(ended(u"seven"_s));
    EXPECT_EQ(shown.said.back(), said(u"1 more operation has ended"_s)) << "the count begins anew";
}

TEST_F(HiddenWindow, PassesAClickOnWithItsToken)
{
    QStringList tokens;
    QObject::connect(&notifier, &Notifier::openRequested, &notifier,
                     [&](const QString &token) { tokens.append(token); });
    tell(ended(u"one"_s));
    Q_EMIT shown.notifications->clicked(u"token"_s);
    EXPECT_THAT(tokens, ElementsAre(u"token"_s));
}

TEST_F(HiddenWindow, DoesWithoutADesktopThatShowsNotifications)
{
    canShow = false;
    tell(ended(u"one"_s));
    EXPECT_EQ(shown.made, 1);
    canShow = true;
    tell(ended(u"two"_s));
    EXPECT_THAT(shown.said, ElementsAre(said(u"two"_s)));
}

TEST_F(HiddenWindow, TheSeenWindowTellsByItself)
{
    isSeen = true;
    tell(ended(u"one"_s));
    isSeen = false;
    tell(ended(u"two"_s));
    EXPECT_THAT(shown.said, ElementsAre(said(u"two"_s))) << "and what was told there is not told again";
}

TEST_F(NotifierTest, LeavesThePastAlone)
{
    end(ended(u"earlier"_s));
    const Notifier notifier(
        state, [] { return false; }, make());
    settle();
    EXPECT_THAT(shown.said, IsEmpty());
    tell(ended(u"later"_s));
    EXPECT_THAT(shown.said, ElementsAre(said(u"later"_s)));
}

TEST_F(NotifierTest, KeepsToTheTimeThatTheStateGives)
{
    Timing timing;
    timing.frame = 0ms;
    timing.notifyAfter = 20ms;
    state = AppState::create(timing);
    const Notifier notifier(
        state, [] { return false; }, make());
    tell(ended(u"short"_s, 19ms));
    tell(ended(u"long"_s, 20ms));
    EXPECT_THAT(shown.said, ElementsAre(said(u"long"_s)));
}

TEST_F(NotifierTest, GoesOnWhereTheOldestOfThePastHaveGoneMeanwhile)
{
    const Notifier notifier(
        state, [] { return false; }, make());
    tell(ended(u"one"_s));
    state->activity.past.update([](std::deque<ActivityEntry> &past) { past.clear(); });
    ActivityEntry entry = ended(u"two"_s);
    entry.number = 10'000;
    state->activity.past.update([&](std::deque<ActivityEntry> &past) { past.push_back(entry); });
    settle();
    EXPECT_THAT(shown.said, ElementsAre(said(u"one"_s), said(u"two"_s)));
}

/// The program with its window, on a desktop that shows notifications.
class NotifiedProgram : public NotifierTest {
protected:
    const Environment noAgent{"QUILL_AGENT_SOCKET", "/nonexistent/quill.sock"};
    AppDelegate delegate{QStringList{u"quillfen"_s}};
    MainWindow window{state};

    NotifiedProgram()
    {
        delegate.windowAppeared(state);
        delegate.watchOutcomes(make());
    }
};

TEST_F(NotifiedProgram, TellsWhileTheWindowIsClosed)
{
    tell(ended(u"never shown"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
    window.show();
    tell(ended(u"shown"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
    window.close();
    tell(ended(u"closed"_s));
    EXPECT_THAT(shown.said, SizeIs(2));
}

TEST_F(NotifiedProgram, TellsWhileTheWindowIsMinimised)
{
    window.show();
    window.showMinimized();
    tell(ended(u"minimised"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
    window.showNormal();
    tell(ended(u"back"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
}

TEST_F(NotifiedProgram, AnotherWindowOfItsTellsNoOutcomes)
{
    delegate.showShortcuts();
    tell(ended(u"one"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
}

TEST_F(NotifiedProgram, TheListOfWhatWasDoneTellsOutcomes)
{
    ActivityWindow *const list = delegate.showActivity();
    tell(ended(u"one"_s));
    EXPECT_THAT(shown.said, IsEmpty());
    list->close();
    tell(ended(u"two"_s));
    EXPECT_THAT(shown.said, SizeIs(1));
}

TEST_F(NotifiedProgram, AClickBringsTheWindowInTheNameOfTheDesktop)
{
    tell(ended(u"one"_s));
    ASSERT_THAT(shown.said, SizeIs(1));
    Q_EMIT shown.notifications->clicked(u"from-the-desktop"_s);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "from-the-desktop") << "which Wayland takes it from";
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(NotifiedProgram, TakesThemAwayWhenTheWindowIsSeenAgain)
{
    tell(ended(u"one"_s));
    EXPECT_THAT(shown.standing, SizeIs(1));
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(waitFor([&] { return shown.standing.empty(); }));
}

TEST_F(NotifiedProgram, LeavesThemWhileItsOtherWindowsCome)
{
    tell(ended(u"one"_s));
    QWidget other;
    other.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    settle();
    EXPECT_THAT(shown.standing, SizeIs(1));
}

} // namespace
} // namespace quillfen
