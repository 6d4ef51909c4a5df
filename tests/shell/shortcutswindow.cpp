// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/shortcutswindow.h"

#include "shell/appdelegate.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "shell/window/aboutpanel.h"
#include "shell/window/keyrow.h"
#include "states.h"
#include "ui/controls/buttons.h"
#include "ui/parts/scrollarea.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;

/// Strictly so: Qt calls a window active also while the one it stands over is.
bool isInFront(const QWidget *window)
{
    return waitFor([window] { return QApplication::activeWindow() == window; });
}

/// The program with its window in front.
struct Program {
    explicit Program(std::shared_ptr<AppState> programState = signedInState())
        : state(std::move(programState)), delegate({u"quillfen"_s}), window(state)
    {
        const Environment noAgent("QUILL_AGENT_SOCKET", "/nonexistent/quill.sock");
        QObject::connect(&window, &MainWindow::shortcutsRequested, &delegate, &AppDelegate::showShortcuts);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ~Program() { settle(*state); }

    [[nodiscard]] ShortcutsWindow *panel() const { return window.findChild<ShortcutsWindow *>(); }

    std::shared_ptr<AppState> state;
    AppDelegate delegate;
    MainWindow window;
};

struct Shown {
    explicit Shown(QWidget *parent = nullptr) : panel(new ShortcutsWindow(shownKeys(false), parent))
    {
        panel->show();
        panel->activateWindow();
        EXPECT_TRUE(isInFront(panel));
    }
    ~Shown() { delete panel; }

    [[nodiscard]] QString here() const
    {
        return panel->focusWidget() == nullptr ? QString() : panel->focusWidget()->accessibleName();
    }
    void press(Qt::Key key) const { QTest::keyClick(panel->focusWidget(), key); }

    QPointer<ShortcutsWindow> panel;
};

TEST(ShortcutsWindow, ListsEveryKeyOnceByGroups)
{
    const Shown shown;
    QStringList lines;
    for (const KeyRow *const row : shown.panel->findChildren<KeyRow *>()) {
        const auto *const face = QAccessible::queryAccessibleInterface(const_cast<KeyRow *>(row));
        EXPECT_EQ(face->role(), QAccessible::ListItem);
        EXPECT_EQ(face->parent()->role(), QAccessible::List);
        EXPECT_EQ(face->childCount(), 0) << "it is read as one";
        lines << face->parent()->text(QAccessible::Name) + u": "_s + face->text(QAccessible::Name);
    }
    QStringList expected;
    for (const KeyEntry &entry : shownKeys(false)) {
        expected << groupTitle(entry.group) + u": "_s + spokenLine(entry);
    }
    lines.sort();
    expected.sort();
    EXPECT_EQ(lines, expected);
    EXPECT_THAT(lines, Contains(u"Go to: Ctrl+1, Volumes"_s));
}

TEST(ShortcutsWindow, WalksItsRowsByKeyboard)
{
    const Shown shown;
    EXPECT_EQ(shown.here(), u"Ctrl+1, Volumes"_s);
    shown.press(Qt::Key_Down);
    EXPECT_EQ(shown.here(), u"Ctrl+2, Time travel"_s);
    shown.press(Qt::Key_Up);
    shown.press(Qt::Key_Up);
    EXPECT_EQ(shown.here(), u"Ctrl+1, Volumes"_s);
    shown.press(Qt::Key_End);
    EXPECT_EQ(shown.here(), u"Esc, Cancel, close a sheet"_s);
    shown.press(Qt::Key_PageUp);
    EXPECT_NE(shown.here(), u"Esc, Cancel, close a sheet"_s);
    shown.press(Qt::Key_PageDown);
    EXPECT_EQ(shown.here(), u"Esc, Cancel, close a sheet"_s);
    shown.press(Qt::Key_Tab);
    EXPECT_EQ(qobject_cast<Button *>(shown.panel->focusWidget())->text(), u"Close"_s);
    shown.press(Qt::Key_Backtab);
    EXPECT_EQ(shown.here(), u"Esc, Cancel, close a sheet"_s) << "where it was left";
    shown.press(Qt::Key_Home);
    EXPECT_EQ(shown.here(), u"Ctrl+1, Volumes"_s);
}

TEST(ShortcutsWindow, FitsTheSmallestWindowAndScrollsToTheRowWithTheKeyboard)
{
    MainWindow window(signedInState());
    window.resize(960, 600);
    window.show();
    const Shown shown(&window);
    EXPECT_LE(shown.panel->height(), 600 - 2 * 24);
    EXPECT_LE(shown.panel->width(), 960 - 2 * 24);
    auto *const scroll = shown.panel->findChild<ScrollArea *>();
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    shown.press(Qt::Key_End);
    const QWidget *const row = shown.panel->focusWidget();
    const QRect place(row->mapTo(scroll, QPoint()), row->size());
    EXPECT_TRUE(scroll->rect().contains(place));
}

TEST(ShortcutsWindow, ScrollsNothingInTheUsualWindow)
{
    MainWindow window(signedInState());
    window.resize(1180, 760);
    window.show();
    const Shown shown(&window);
    EXPECT_EQ(shown.panel->findChild<ScrollArea *>()->verticalScrollBar()->maximum(), 0);
    const QRect over = window.geometry();
    EXPECT_LE((shown.panel->geometry().center() - over.center()).manhattanLength(), 2) << "in its middle";
}

TEST(ShortcutsWindow, StandsInOneColumnWhereThereIsNoRoomForTwo)
{
    QWidget narrow;
    narrow.resize(600, 700);
    narrow.show();
    const Shown shown(&narrow);
    EXPECT_LE(shown.panel->width(), 600 - 2 * 24);
    const auto rows = shown.panel->findChildren<KeyRow *>();
    EXPECT_EQ(rows.first()->mapTo(shown.panel, QPoint()).x(), rows.last()->mapTo(shown.panel, QPoint()).x());
}

TEST(ShortcutsWindow, ShowsTheRowWithTheKeyboard)
{
    const Shown shown;
    QWidget *const row = shown.panel->focusWidget();
    EXPECT_EQ(row->grab().toImage().pixelColor(row->width() / 2, 0), Theme::ok);
    shown.press(Qt::Key_Down);
    EXPECT_NE(row->grab().toImage().pixelColor(row->width() / 2, 0), Theme::ok);
}

TEST(ShortcutsWindow, ComesByItsKeysAndGivesTheKeyboardBack)
{
    Program program;
    auto *const brand = named<QAbstractButton>(program.window, u"About Quillfen"_s);
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_F1, Qt::NoModifier), std::pair(Qt::Key_Slash, Qt::ControlModifier)}) {
        brand->setFocus(Qt::TabFocusReason);
        QTest::keyClick(brand, key, modifiers);
        const QPointer<ShortcutsWindow> panel = program.panel();
        ASSERT_NE(panel, nullptr);
        ASSERT_TRUE(isInFront(panel));
        EXPECT_EQ(panel->parentWidget(), &program.window);
        QTest::keyClick(panel->focusWidget(), key, modifiers);
        EXPECT_EQ(program.panel(), panel.data()) << "one is enough";
        QTest::keyClick(panel->focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(waitFor([&] { return panel == nullptr && program.window.isActiveWindow(); }));
        EXPECT_EQ(QApplication::focusWidget(), brand);
    }
}

TEST(ShortcutsWindow, ComesFromTheFootOfTheSidebar)
{
    Program program;
    auto *const link = named<QAbstractButton>(program.window, u"Shortcuts"_s);
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->toolTip(), u"Ctrl+/"_s);
    EXPECT_GE(link->height(), 28);
    link->setFocus(Qt::TabFocusReason);
    QTest::keyClick(link, Qt::Key_Return);
    EXPECT_NE(program.panel(), nullptr);
    delete program.panel();
    QTest::mouseClick(link, Qt::LeftButton);
    EXPECT_NE(program.panel(), nullptr);
}

TEST(ShortcutsWindow, ComesOnEveryScreen)
{
    for (const char *auth : {R"({"signed_in": false})", R"({"signed_in": true})"}) {
        Program program(signedInState(auth));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        EXPECT_NE(program.panel(), nullptr) << auth;
        delete program.panel();
        program.window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&program.window));
        program.state->connected = false;
        ASSERT_TRUE(waitFor([&] { return program.window.root().screen() == Screen::AgentDown; }));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        EXPECT_NE(program.panel(), nullptr) << "without the agent";
    }
}

TEST(ShortcutsWindow, LeavesASheetAsItIs)
{
    Program program;
    program.state->showNewVolume = true;
    ASSERT_TRUE(waitFor([&] { return qobject_cast<QLineEdit *>(QApplication::focusWidget()) != nullptr; }));
    const QPointer<QWidget> field = QApplication::focusWidget();
    QTest::keyClicks(field, u"music"_s);
    QTest::keyClick(field, Qt::Key_F1);
    const QPointer<ShortcutsWindow> panel = program.panel();
    ASSERT_NE(panel, nullptr);
    ASSERT_TRUE(isInFront(panel));
    QTest::keyClick(panel->focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return panel == nullptr && QApplication::focusWidget() == field; }));
    EXPECT_TRUE(program.state->showNewVolume()) << "Esc was for the window in front";
    EXPECT_EQ(qobject_cast<QLineEdit *>(field)->text(), u"music"_s);
}

TEST(ShortcutsWindow, ShowsTheOperatorsSectionToOperators)
{
    Program program(signedInState(R"({"signed_in": true, "is_admin": true})"));
    const Environment noAgent("QUILL_AGENT_SOCKET", "/nonexistent/quill.sock");
    EXPECT_EQ(named<KeyRow>(*program.delegate.showShortcuts(), u"Ctrl+6, Operator"_s), nullptr)
        << "nobody is known yet";
    delete program.panel();
    program.delegate.windowAppeared(program.state);
    program.state->auth = record(R"({"signed_in": true, "is_admin": true})");
    EXPECT_NE(named<KeyRow>(*program.delegate.showShortcuts(), u"Ctrl+6, Operator"_s), nullptr);
}

TEST(ShortcutsWindow, ClosesAndQuitsByTheSameKeysAsTheWindow)
{
    Program program;
    QSignalSpy quit(&program.delegate, &AppDelegate::quitRequested);
    const QPointer<ShortcutsWindow> panel = program.delegate.showShortcuts();
    ASSERT_TRUE(isInFront(panel));
    QTest::keyClick(panel->focusWidget(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
    QTest::keyClick(panel->focusWidget(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([&] { return panel == nullptr; }));
    EXPECT_TRUE(program.window.isVisible());
}

TEST(ShortcutsWindow, ComesFromTheAboutPanelToo)
{
    Program program;
    const QPointer<AboutPanel> about = program.delegate.about();
    ASSERT_TRUE(isInFront(about));
    QTest::keyClick(about, Qt::Key_F1);
    EXPECT_NE(program.panel(), nullptr);
}

TEST(ShortcutsWindow, IsMovedByDraggingIt)
{
    const Shown shown;
    const QPoint before = shown.panel->pos();
    const QPoint from(20, 12);
    QTest::mousePress(shown.panel->windowHandle(), Qt::LeftButton, {}, from);
    for (int step = 1; step <= 3; ++step) {
        QTest::mouseMove(shown.panel->windowHandle(), before + from + QPoint(20, 20) * step - shown.panel->pos());
    }
    QTest::mouseRelease(shown.panel->windowHandle(), Qt::LeftButton, {}, from);
    EXPECT_NE(shown.panel->pos(), before);
}

} // namespace
} // namespace quillfen
