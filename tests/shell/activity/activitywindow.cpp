// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitywindow.h"

#include "builders.h"

#include "boards/advanced/outputview.h"
#include "shell/activity/activitydelegate.h"
#include "shell/activity/activitydetail.h"
#include "shell/activity/activitylist.h"
#include "shell/activity/wordsview.h"
#include "shell/appdelegate.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/toggle.h"
#include "ui/overlays/toast.h"
#include "ui/text/label.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QScrollBar>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace test;
using testing::Contains;
using testing::Not;

QString clipboard()
{
    return QApplication::clipboard()->text();
}

/// The window with the keyboard, on a state that no agent speaks to.
class ActivityWindowTest : public testing::Test {
protected:
    void SetUp() override { QApplication::clipboard()->clear(); }
    void TearDown() override { settle(*state); }

    Activity &activity() { return state->activity; }

    ActivityWindow &open()
    {
        window = std::make_unique<ActivityWindow>(state);
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }

    /// Waits until the window has heard of everything.
    void settled() const
    {
        EXPECT_TRUE(waitFor([&] {
            const auto all =
                static_cast<int>(state->activity.running().size()) + static_cast<int>(state->activity.past().size());
            return rowCount() == all && (all == 0 || list().rows().row(0));
        }));
    }

    [[nodiscard]] ActivityList &list() const { return *window->findChild<ActivityList *>(); }
    [[nodiscard]] int rowCount() const { return list().rows().rowCount(); }
    [[nodiscard]] ActivityDetail &detail() const { return *window->findChild<ActivityDetail *>(); }
    [[nodiscard]] WordsView &wordsView() const { return *window->findChild<WordsView *>(); }
    [[nodiscard]] QString words() const { return wordsView().toPlainText(); }
    [[nodiscard]] QString line() const
    {
        const auto *const view = named<OutputView>(*window, u"The request as it was sent"_s);
        return view == nullptr ? QString() : QString::fromStdString(view->text()->bytes());
    }
    [[nodiscard]] Toast &toast() const { return *window->findChild<Toast *>(); }

    [[nodiscard]] Button *button(const QString &text) const
    {
        for (Button *each : window->findChildren<Button *>()) {
            if (each->text() == text && each->isVisible()) {
                return each;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QRect place(int row) const { return list().visualRect(list().rows().index(row)); }
    void click(int row) const { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place(row).center()); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window->focusWidget(), key, modifiers);
    }

    std::shared_ptr<AppState> state = newState();
    std::unique_ptr<ActivityWindow> window;
};

TEST_F(ActivityWindowTest, SaysWhenThereIsNothing)
{
    open();
    EXPECT_THAT(texts(*window), Contains(u"Nothing has been said or done yet."_s));
    EXPECT_FALSE(list().isVisible());
    EXPECT_FALSE(detail().isVisible());
    EXPECT_FALSE(button(u"Copy all"_s)->isEnabled());
    activity().noticed(u"Uploading"_s);
    EXPECT_TRUE(waitFor([&] { return list().isVisible(); }));
    EXPECT_THAT(texts(*window), Not(Contains(u"Nothing has been said or done yet."_s)));
}

TEST_F(ActivityWindowTest, AClickShowsTheWhole)
{
    activity().noticed(u"Uploading"_s);
    failed(activity(), "volumes.resize", u"no room"_s, -5);
    open();
    click(0);
    EXPECT_TRUE(detail().isVisible());
    EXPECT_EQ(words(), u"no room"_s);
    EXPECT_THAT(line().toStdString(), testing::HasSubstr(R"("method":"volumes.resize")"));
    EXPECT_THAT(texts(detail()), Contains(u"-5"_s));
    EXPECT_THAT(texts(detail()), Contains(u"Failed"_s));
    click(1);
    EXPECT_EQ(words(), u"Uploading"_s);
    EXPECT_FALSE(named<OutputView>(*window, u"The request as it was sent"_s)->isVisible()) << "nothing was sent";
}

TEST_F(ActivityWindowTest, KeysWalkTheRows)
{
    for (int number = 0; number < 100; ++number) {
        activity().noticed(QString::number(number));
    }
    open();
    ASSERT_EQ(window->focusWidget(), &list());
    press(Qt::Key_Down);
    EXPECT_EQ(words(), u"99"_s) << "the first key chooses the first row";
    press(Qt::Key_Down);
    EXPECT_EQ(words(), u"98"_s);
    press(Qt::Key_End);
    EXPECT_EQ(words(), u"0"_s);
    press(Qt::Key_Up);
    EXPECT_EQ(words(), u"1"_s);
    press(Qt::Key_PageUp);
    EXPECT_GT(words().toInt(), 3);
    press(Qt::Key_Home);
    EXPECT_EQ(words(), u"99"_s);
}

TEST_F(ActivityWindowTest, WhatComesInMovesNothingThatIsRead)
{
    for (int number = 0; number < 200; ++number) {
        activity().noticed(QString::number(number));
    }
    open();
    list().verticalScrollBar()->setValue(20 * ActivityDelegate::rowHeight() + 7);
    click(21);
    const QString chosen = words();
    const QRect before = place(list().currentIndex().row());
    for (int number = 0; number < 3'000; ++number) {
        activity().noticed(u"new"_s);
    }
    settled();
    EXPECT_EQ(list().currentIndex().row(), 3'021);
    EXPECT_EQ(place(list().currentIndex().row()), before);
    EXPECT_EQ(words(), chosen);
    EXPECT_TRUE(list().selectionModel()->isSelected(list().currentIndex()));
}

TEST_F(ActivityWindowTest, AtTheTopTheNewestIsSeenToCome)
{
    for (int number = 0; number < 200; ++number) {
        activity().noticed(QString::number(number));
    }
    open();
    click(1);
    activity().noticed(u"new"_s);
    settled();
    EXPECT_EQ(list().verticalScrollBar()->value(), 0);
    EXPECT_EQ(list().currentIndex().row(), 2);
    EXPECT_EQ(words(), u"198"_s);
}

TEST_F(ActivityWindowTest, WhatIsLookedAtStaysWhenItGivesWay)
{
    activity().noticed(u"the first"_s);
    open();
    click(0);
    for (std::size_t number = 0; number < Activity::mostEntries; ++number) {
        activity().noticed(u"new"_s);
    }
    settled();
    EXPECT_EQ(words(), u"the first"_s);
    EXPECT_FALSE(list().selectionModel()->hasSelection()) << "no other is chosen in its place";
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(clipboard().contains(u"the first"_s));
}

TEST_F(ActivityWindowTest, ARunningCallIsOnTopAndTurnsIntoItsOutcome)
{
    const std::uint64_t id = activity().begin(runningCall("vm.prepare", u"Setting up"_s, "vm.progress"));
    activity().progress("vm.progress", u"40 %"_s);
    activity().noticed(u"later"_s);
    open();
    EXPECT_THAT(list().rows().index(0).data().toString().toStdString(),
                testing::StartsWith("Setting up, Running, 0 s, 40 % · "));
    click(0);
    EXPECT_EQ(words(), u"Setting up\n40 %"_s);
    activity().progress("vm.progress", u"80 %"_s);
    EXPECT_TRUE(waitFor([&] { return words() == u"Setting up\n80 %"_s; }));
    activity().end(id, {u"broken"_s, true, -3});
    EXPECT_TRUE(waitFor([&] { return words() == u"Setting up\nbroken"_s; }));
    EXPECT_EQ(list().currentIndex().row(), 0);
    EXPECT_THAT(texts(detail()), Contains(u"Failed"_s));
}

TEST_F(ActivityWindowTest, TimeIsCountedOnlyWhileSomethingRunsAndIsSeen)
{
    open();
    const auto clocks = [&] {
        return std::ranges::count_if(window->findChildren<QTimer *>(),
                                     [](const QTimer *timer) { return timer->isActive() && !timer->isSingleShot(); });
    };
    EXPECT_EQ(clocks(), 0);
    const std::uint64_t id = activity().begin(runningCall("vm.prepare", u"Setting up"_s));
    EXPECT_TRUE(waitFor([&] { return clocks() == 2; })) << "the second and the spinner";
    window->hide();
    EXPECT_EQ(clocks(), 0);
    window->show();
    EXPECT_EQ(clocks(), 2);
    activity().end(id, {});
    EXPECT_TRUE(waitFor([&] { return clocks() == 0; }));
}

TEST_F(ActivityWindowTest, OneIsCopiedByButtonAndByKey)
{
    failed(activity(), "volumes.resize", u"no room"_s, -5);
    open();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), QString()) << "nothing is chosen";
    click(0);
    const QString expected = activityText(activity().past().back()) + u'\n';
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), expected);
    QApplication::clipboard()->clear();
    QTest::mouseClick(button(u"Copy"_s), Qt::LeftButton);
    EXPECT_EQ(clipboard(), expected);
    EXPECT_EQ(toast().accessibleName(), u"Copied."_s);
    EXPECT_EQ(activity().past().size(), 1U) << "copying is no activity";
    EXPECT_EQ(state->toast(), std::nullopt);
}

TEST_F(ActivityWindowTest, ASelectionInTheWordsIsCopiedAlone)
{
    activity().noticed(u"one two"_s);
    open();
    click(0);
    QTest::mouseDClick(wordsView().viewport(), Qt::LeftButton, {}, QPoint(10, 12));
    QTest::keyClick(&wordsView(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), u"one"_s);
}

TEST_F(ActivityWindowTest, AllAreCopiedTheNewestFirstWhateverIsShown)
{
    done(activity(), "volumes.rename", u"renamed"_s);
    activity().noticed(u"Uploading"_s);
    const RunningCall call = runningCall("vm.prepare", u"Setting up"_s);
    const std::uint64_t id = activity().begin(call);
    open();
    window->findChild<SearchField *>()->setText(u"renamed"_s);
    ASSERT_EQ(rowCount(), 1);
    QTest::mouseClick(button(u"Copy all"_s), Qt::LeftButton);
    const QStringList blocks = clipboard().split(u"\n\n"_s);
    ASSERT_EQ(blocks.size(), 3);
    EXPECT_TRUE(blocks[0].contains(u"Running · vm.prepare"_s));
    EXPECT_TRUE(blocks[0].endsWith(u'\n' + QString::fromStdString(call.line)));
    EXPECT_EQ(blocks[1], activityText(activity().past().back()));
    EXPECT_EQ(blocks[2], activityText(activity().past().front()) + u'\n');
    EXPECT_EQ(toast().accessibleName(), u"Copied 3 entries."_s);
    activity().end(id, {});
}

TEST_F(ActivityWindowTest, AGreatManyAreCopiedBesideTheWindow)
{
    for (int number = 0; number < 3'000; ++number) {
        activity().noticed(QString::number(number));
    }
    open();
    QTest::mouseClick(button(u"Copy all"_s), Qt::LeftButton);
    EXPECT_TRUE(waitFor([] { return clipboard().count(u"\n\n"_s) == 2'999; }));
    EXPECT_TRUE(waitFor([&] { return toast().accessibleName() == u"Copied 3000 entries."_s; }));
}

TEST_F(ActivityWindowTest, ClosingWhileAllAreCopiedHarmsNothing)
{
    for (int number = 0; number < 3'000; ++number) {
        activity().noticed(QString::number(number));
    }
    open();
    QTest::mouseClick(button(u"Copy all"_s), Qt::LeftButton);
    window.reset();
    EXPECT_TRUE(waitFor([] { return clipboard().count(u"\n\n"_s) == 2'999; }));
}

TEST_F(ActivityWindowTest, TheSearchIsReachedByKeyAndEscEmptiesItFirst)
{
    activity().noticed(u"apple"_s);
    activity().noticed(u"pear"_s);
    open();
    press(Qt::Key_F, Qt::ControlModifier);
    auto *const search = window->findChild<SearchField *>();
    ASSERT_TRUE(search->hasFocus());
    QTest::keyClicks(search, u"app"_s);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_THAT(texts(*window), Contains(u"1 of 2"_s));
    QTest::keyClicks(search, u"x"_s);
    EXPECT_THAT(texts(*window), Contains(u"Nothing here matches."_s));
    press(Qt::Key_Escape);
    EXPECT_EQ(rowCount(), 2);
    EXPECT_TRUE(window->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ActivityWindowTest, WhatIsLookedAtOutlivesTheSearchAndIsMarkedAgain)
{
    activity().noticed(u"apple"_s);
    activity().noticed(u"pear"_s);
    open();
    click(0);
    auto *const search = window->findChild<SearchField *>();
    search->setText(u"apple"_s);
    EXPECT_EQ(words(), u"pear"_s);
    EXPECT_FALSE(list().selectionModel()->hasSelection());
    search->clear();
    EXPECT_EQ(list().currentIndex().row(), 0);
    EXPECT_TRUE(list().selectionModel()->isSelected(list().currentIndex()));
}

TEST_F(ActivityWindowTest, ProblemsCanBeLookedAtAlone)
{
    done(activity(), "volumes.rename", u"renamed"_s);
    failed(activity(), "volumes.resize", u"no room"_s, -5);
    open();
    QTest::mouseClick(window->findChild<Toggle *>(), Qt::LeftButton);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(list().rows().row(0)->words, u"no room"_s);
}

TEST_F(ActivityWindowTest, EnterClosesNothing)
{
    activity().noticed(u"one"_s);
    open();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ActivityWindowTest, AWordOf64KiBWidensNothing)
{
    const QString long_ = QString(64 * 1'024, u'x');
    activity().noticed(long_);
    failed(activity(), "volumes.resize", long_, -5);
    open();
    const QSize before = window->size();
    click(0);
    QApplication::processEvents();
    EXPECT_EQ(window->size(), before);
    const auto *const all = named<OutputView>(*window, u"What was said"_s);
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(all->text()->bytes().size(), 64U * 1'024) << "it is all there";
    EXPECT_FALSE(wordsView().isVisible());
    EXPECT_GT(list().height(), ActivityDelegate::rowHeight());
    EXPECT_LE(window->minimumSizeHint().width(), 480);
}

TEST_F(ActivityWindowTest, TheSmallestSizeHoldsEverything)
{
    failed(activity(), "volumes.resize", u"no room"_s, -5);
    open();
    window->resize(window->minimumSize());
    click(0);
    QApplication::processEvents();
    EXPECT_EQ(window->size(), window->minimumSize());
    for (const QWidget *part : {static_cast<QWidget *>(&list()), static_cast<QWidget *>(button(u"Copy"_s)),
                                static_cast<QWidget *>(button(u"Close"_s)), static_cast<QWidget *>(&detail())}) {
        const QRect inWindow(part->mapTo(window.get(), QPoint()), part->size());
        EXPECT_TRUE(window->rect().contains(inWindow)) << part->metaObject()->className();
    }
    EXPECT_GE(list().height(), ActivityDelegate::rowHeight());
}

TEST_F(ActivityWindowTest, RowsAreAListForAScreenReader)
{
    failed(activity(), "volumes.resize", u"no room"_s, -5);
    open();
    QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(&list());
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::List);
    EXPECT_EQ(face->text(QAccessible::Name), u"Activity"_s);
    ASSERT_EQ(face->childCount(), 1);
    EXPECT_THAT(face->child(0)->text(QAccessible::Name).toStdString(),
                testing::HasSubstr("Failed, volumes.resize, no room, code -5, "));
}

/// The program with its window in front, on a state of one of its three screens.
struct Program {
    explicit Program(std::shared_ptr<AppState> programState) : state(std::move(programState)), window(state)
    {
        const Environment noAgent("QUILL_AGENT_SOCKET", "/nonexistent/quill.sock");
        delegate.windowAppeared(state);
        QObject::connect(&window, &MainWindow::activityRequested, &delegate, &AppDelegate::showActivity);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ~Program() { settle(*state); }

    ActivityWindow *openByKey()
    {
        QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        return panel();
    }
    [[nodiscard]] ActivityWindow *panel() const { return window.findChild<ActivityWindow *>(); }

    std::shared_ptr<AppState> state;
    AppDelegate delegate{{u"quillfen"_s}};
    MainWindow window;
};

TEST(ActivityByKey, OpensOnEveryScreen)
{
    const auto screens = {std::pair(Screen::Main, signedInState()), std::pair(Screen::AgentDown, newState()),
                          std::pair(Screen::FirstRun, newState())};
    for (const auto &[screen, state] : screens) {
        Program program(state);
        state->connected = screen != Screen::AgentDown; // no agent is needed to show a screen
        if (screen == Screen::Main) {
            state->auth = record(R"({"signed_in": true})");
        }
        ASSERT_TRUE(waitFor([&, wanted = screen] { return program.window.root().screen() == wanted; }));
        EXPECT_EQ(program.panel(), nullptr) << "nothing is built before it is asked for";
        ASSERT_NE(program.openByKey(), nullptr);
        EXPECT_TRUE(program.panel()->isVisible());
        EXPECT_FALSE(program.panel()->isModal());
    }
}

TEST(ActivityByKey, OpensOnceGoesWithItsClosingAndRemembersItsSize)
{
    Program program(signedInState());
    QPointer<ActivityWindow> first = program.openByKey();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->size(), QSize(720, 560));
    EXPECT_EQ(program.delegate.showActivity(), first.data()) << "there is one";
    first->resize(600, 444);
    ASSERT_TRUE(waitFor([&] { return first->isActiveWindow(); }));
    QTest::keyClick(first->focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return first.isNull(); })) << "nothing of it stays in memory";
    EXPECT_TRUE(waitFor([&] { return QApplication::activeWindow() == &program.window; }));
    ActivityWindow *const second = program.openByKey();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->size(), QSize(600, 444));
}

TEST(ActivityByKey, StandsInTheSidebarBeforeTheShortcuts)
{
    Program program(signedInState());
    ASSERT_TRUE(waitFor([&] { return program.window.root().screen() == Screen::Main; }));
    QAbstractButton *link = nullptr;
    for (auto *button : program.window.findChildren<QAbstractButton *>()) {
        link = button->accessibleName() == u"Activity"_s || button->text() == u"Activity"_s ? button : link;
    }
    ASSERT_NE(link, nullptr);
    QTest::mouseClick(link, Qt::LeftButton);
    EXPECT_NE(program.panel(), nullptr);
}

} // namespace
} // namespace quillfen
