// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainwindow.h"

#include "shell/mainview/brandbutton.h"
#include "shell/mainview/mainview.h"
#include "shell/mainview/sidebar.h"
#include "shell/mainview/sidebarentry.h"
#include "shell/rootview.h"
#include "shell/window/controlsside.h"
#include "shell/window/windowborder.h"
#include "shell/window/windowbutton.h"
#include "states.h"
#include "ui/controls/buttons.h"
#include "ui/overlays/scrim.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/scrollarea.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;

struct ShownWindow {
    ShownWindow() : state(signedInState()), window(state)
    {
        window.move(20, 10);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_TRUE(waitFor([&] { return window.root().screen() == Screen::Main; }));
    }

    QAbstractButton *control(const QString &name) { return named<WindowButton>(window, name); }

    /// Presses at `from`, moves to `to` and lets go, as a hand does it: in steps, with the widget under the pointer.
    void drag(const QPoint &from, const QPoint &to)
    {
        const QPoint origin = window.pos();
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 4; ++step) {
            const QPoint global = origin + from + (to - from) * step / 4;
            QTest::mouseMove(window.windowHandle(), global - window.pos());
        }
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, origin + to - window.pos());
    }

    std::shared_ptr<AppState> state;
    MainWindow window;
};

TEST(MainWindow, HasItsDefaultAndItsSmallestSize)
{
    const MainWindow window(signedInState());
    EXPECT_EQ(window.minimumSize(), QSize(960, 600));
    EXPECT_EQ(window.size(),
              QSize(1180, 760).boundedTo(QGuiApplication::primaryScreen()->availableSize()).expandedTo({960, 600}));
    EXPECT_EQ(window.windowTitle(), u"Quillfen"_s);
    EXPECT_TRUE(window.windowFlags() & Qt::FramelessWindowHint);
}

TEST(MainWindow, FillsItselfWithItsContentToTheTopEdge)
{
    ShownWindow shown;
    EXPECT_EQ(shown.window.root().geometry(), shown.window.rect());
    shown.window.resize(1000, 640);
    EXPECT_EQ(shown.window.root().geometry(), QRect(0, 0, 1000, 640));
}

TEST(MainWindow, HasItsThreeControlsAtTheTopRight)
{
    ShownWindow shown;
    const int right = shown.window.width() - 8;
    const std::vector<std::pair<QString, int>> expected{
        {u"Minimise"_s, right - 100}, {u"Maximise"_s, right - 66}, {u"Close"_s, right - 32}};
    for (const auto &[name, left] : expected) {
        QAbstractButton *control = shown.control(name);
        ASSERT_NE(control, nullptr) << name.toStdString();
        EXPECT_EQ(QRect(control->mapTo(&shown.window, QPoint()), control->size()), QRect(left, 4, 32, 28));
        EXPECT_EQ(QAccessible::queryAccessibleInterface(control)->role(), QAccessible::PushButton);
        EXPECT_EQ(control->toolTip(), name);
    }
}

QRect placeOf(const ShownWindow &shown, const QWidget *widget)
{
    return {widget->mapTo(&shown.window, QPoint()), widget->size()};
}

TEST(MainWindow, MirrorsItsControlsWhereTheDesktopHasThemAtTheLeft)
{
    ShownWindow shown;
    const auto *const brand = shown.window.findChild<BrandButton *>();
    const int brandBefore = placeOf(shown, brand).top();
    controlsAtLeft() = true;
    EXPECT_TRUE(waitFor([&] { return placeOf(shown, shown.control(u"Close"_s)) == QRect(8, 4, 32, 28); }));
    EXPECT_TRUE(waitFor([&] { return placeOf(shown, shown.control(u"Maximise"_s)).left() == 8 + 34; }));
    EXPECT_EQ(placeOf(shown, shown.control(u"Minimise"_s)).left(), 8 + 68);
    EXPECT_TRUE(waitFor([&] { return placeOf(shown, brand).top() == brandBefore + 28; }));
    const QImage glyph = shown.window.grab({8, 4, 32, 28}).toImage();
    EXPECT_EQ(glyph.pixelColor(1, 14), Theme::dBg);
    shown.window.resize(1000, 640);
    EXPECT_EQ(placeOf(shown, shown.control(u"Close"_s)).left(), 8);

    controlsAtLeft() = false;
    EXPECT_TRUE(waitFor([&] { return placeOf(shown, shown.control(u"Close"_s)).right() + 1 == 1000 - 8; }));
    EXPECT_TRUE(waitFor([&] { return placeOf(shown, brand).top() == brandBefore; }));
}

TEST(MainWindow, IsTurnedRoundWhereLinesAreReadFromRightToLeft)
{
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    {
        ShownWindow shown;
        const auto *const sidebar = shown.window.findChild<Sidebar *>();
        EXPECT_EQ(placeOf(shown, sidebar).right() + 1, shown.window.width());
        EXPECT_EQ(placeOf(shown, shown.control(u"Close"_s)), QRect(8, 4, 32, 28)) << "clear of the sidebar";
        EXPECT_EQ(placeOf(shown, shown.control(u"Minimise"_s)).left(), 8 + 68);
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(ControlsSide, IsWhereTheButtonThatClosesIs)
{
    EXPECT_TRUE(closesAtLeft(u"close,minimize,maximize:"_s));
    EXPECT_TRUE(closesAtLeft(u"icon,close:menu"_s));
    EXPECT_FALSE(closesAtLeft(u":minimize,maximize,close"_s));
    EXPECT_FALSE(closesAtLeft(u"appmenu:close"_s));
    EXPECT_FALSE(closesAtLeft(u"minimize:"_s));
    EXPECT_FALSE(closesAtLeft(QString()));
}

TEST(MainWindow, ClosesWithoutEndingItself)
{
    ShownWindow shown;
    QTest::mouseClick(shown.control(u"Close"_s), Qt::LeftButton);
    EXPECT_FALSE(shown.window.isVisible());
    shown.window.show();
    EXPECT_EQ(shown.window.root().screen(), Screen::Main);
}

TEST(MainWindow, MaximisesAndRestores)
{
    ShownWindow shown;
    const QRect before = shown.window.geometry();
    QTest::mouseClick(shown.control(u"Maximise"_s), Qt::LeftButton);
    EXPECT_TRUE(waitFor([&] { return shown.window.isMaximized() && shown.control(u"Restore"_s) != nullptr; }));
    EXPECT_TRUE(waitFor([&] { return shown.window.geometry() == shown.window.screen()->availableGeometry(); }));
    EXPECT_FALSE(shown.window.findChild<WindowBorder *>()->isVisible());
    QTest::mouseClick(shown.control(u"Restore"_s), Qt::LeftButton);
    EXPECT_TRUE(waitFor([&] { return shown.window.geometry() == before; }));
    EXPECT_NE(shown.control(u"Maximise"_s), nullptr);
    EXPECT_TRUE(shown.window.findChild<WindowBorder *>()->isVisible());
}

TEST(MainWindow, Minimises)
{
    ShownWindow shown;
    QTest::mouseClick(shown.control(u"Minimise"_s), Qt::LeftButton);
    EXPECT_TRUE(waitFor([&] { return shown.window.isMinimized(); }));
}

TEST(MainWindow, IsMovedByTheTopOfItsSidebarAndOfItsBoard)
{
    for (const QPoint from : {QPoint(180, 12), QPoint(600, 20)}) {
        ShownWindow shown;
        shown.drag(from, from + QPoint(40, 24));
        EXPECT_EQ(shown.window.pos(), QPoint(60, 34)) << from.x();
        EXPECT_EQ(shown.window.size(), QSize(1180, 760).boundedTo(shown.window.size()));
    }
}

TEST(MainWindow, IsNotMovedFromBelowTheTopStripNorByATinyMove)
{
    ShownWindow shown;
    shown.drag({600, 300}, {640, 330});
    shown.drag({600, 20}, {602, 21});
    EXPECT_EQ(shown.window.pos(), QPoint(20, 10));
}

TEST(MainWindow, MaximisesByDoubleClickOnTheTopStripOnly)
{
    ShownWindow shown;
    QTest::mouseDClick(shown.window.windowHandle(), Qt::LeftButton, {}, QPoint(600, 300));
    EXPECT_FALSE(shown.window.isMaximized());
    QTest::mouseDClick(shown.window.windowHandle(), Qt::LeftButton, {}, QPoint(600, 20));
    EXPECT_TRUE(shown.window.isMaximized());
}

TEST(MainWindow, IsResizedAtItsEdgesAndCorners)
{
    ShownWindow shown;
    shown.window.resize(1000, 640);
    shown.drag({999, 300}, {1019, 300});
    EXPECT_EQ(shown.window.geometry(), QRect(20, 10, 1020, 640));
    shown.drag({2, 300}, {-8, 300});
    EXPECT_EQ(shown.window.geometry(), QRect(10, 10, 1030, 640));
    shown.drag({1027, 637}, {1037, 657});
    EXPECT_EQ(shown.window.geometry(), QRect(10, 10, 1040, 660));
    shown.drag({999, 1}, {999, 11});
    EXPECT_EQ(shown.window.geometry(), QRect(10, 20, 1040, 650));
}

TEST(MainWindow, DoesNotShrinkBelowItsSmallestSize)
{
    ShownWindow shown;
    shown.window.resize(1000, 640);
    shown.drag({998, 638}, {300, 200});
    EXPECT_EQ(shown.window.geometry(), QRect(20, 10, 960, 600));
}

TEST(MainWindow, ShowsTheRightPointerOverItsBorder)
{
    ShownWindow shown;
    auto *border = shown.window.findChild<WindowBorder *>();
    QTest::mouseMove(shown.window.windowHandle(), {2, 300});
    EXPECT_EQ(border->cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(shown.window.windowHandle(), {2, 2});
    EXPECT_EQ(border->cursor().shape(), Qt::SizeFDiagCursor);
    EXPECT_EQ(shown.window.childAt(2, 300), border);
    EXPECT_NE(shown.window.childAt(7, 300), border);
}

TEST(MainWindow, KeepsItsControlsUsableAboveAScrim)
{
    ShownWindow shown;
    auto *scrim = new Scrim(&shown.window);
    scrim->show();
    QTest::qWait(20);
    QAbstractButton *close = shown.control(u"Close"_s);
    EXPECT_EQ(shown.window.childAt(close->mapTo(&shown.window, close->rect().center())), close);
    EXPECT_EQ(shown.window.childAt(600, 400), scrim);
}

TEST(MainWindow, GivesNoControlTheFocusByItself)
{
    ShownWindow shown;
    EXPECT_EQ(QApplication::focusWidget(), &shown.window.root());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"About Quillfen"_s);
    shown.state->connected = false;
    EXPECT_TRUE(waitFor([&] { return shown.window.root().screen() == Screen::AgentDown; }));
    EXPECT_EQ(QApplication::focusWidget(), &shown.window.root());
}

TEST(MainWindow, BeginsAtItsFirstControlAlsoWhereTheWorkspaceCameLate)
{
    const std::shared_ptr<AppState> state = newState();
    MainWindow window(state);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Tab); // the ring of tab stops is closed once before the workspace is there
    window.root().setFocus();
    state->auth = record(R"({"signed_in": true})");
    state->connected = true;
    ASSERT_TRUE(waitFor([&] { return window.root().mainView() != nullptr; }));
    ASSERT_EQ(QApplication::focusWidget(), &window.root());
    QTest::keyClick(&window.root(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"About Quillfen"_s);
}

TEST(MainWindow, ReachesItsControlsLastByTab)
{
    ShownWindow shown;
    named<SidebarEntry>(shown.window, u"Volumes"_s)->setFocus(Qt::TabFocusReason);
    QStringList visited;
    for (int step = 0; step < 30 && !visited.contains(u"Close"_s); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited += QApplication::focusWidget()->accessibleName();
    }
    ASSERT_GE(visited.size(), 4);
    EXPECT_EQ(visited.sliced(visited.size() - 3), (QStringList{u"Minimise"_s, u"Maximise"_s, u"Close"_s}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"About Quillfen"_s);
}

TEST(MainWindow, WhatLiesOverTheWindowLeavesItsControlsLast)
{
    ShownWindow shown;
    QWidget overlay(&shown.window);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"About Quillfen"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"Close"_s);
}

TEST(MainWindow, LeavesTheKeyboardOnAButtonThatRuns)
{
    ShownWindow shown;
    auto *const button = new Button(u"Preflight"_s, PrimaryButtonStyle{}, &shown.window);
    button->show();
    QSignalSpy pressed(button, &QAbstractButton::clicked);
    button->setFocus(Qt::TabFocusReason);
    button->setRunning(true);
    EXPECT_EQ(QApplication::focusWidget(), button);
    QTest::keyClick(&shown.window, Qt::Key_Return);
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 0);
    EXPECT_FALSE(shown.window.isMinimized());
    QTest::keyClick(&shown.window, Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), button) << "Tab goes on";
    button->setRunning(false);
    EXPECT_NE(QApplication::focusWidget(), button) << "and what has gone on stays there";

    button->setFocus(Qt::TabFocusReason);
    button->setRunning(true);
    button->setRunning(false);
    EXPECT_TRUE(button->hasFocus());
}

TEST(MainWindow, KeepsTheKeyboardInPlaceWhereAControlVanishes)
{
    ShownWindow shown;
    QWidget list(&shown.window);
    QWidget row(&list);
    Button remove(u"Remove"_s, DangerButtonStyle{}, &row);
    Button next(u"Close account…"_s, DangerButtonStyle{}, &list);
    list.resize(200, 100);
    list.show();
    QSignalSpy pressed(&next, &QAbstractButton::clicked);
    remove.setFocus(Qt::TabFocusReason);
    row.hide();
    EXPECT_EQ(QApplication::focusWidget(), &list) << "and not what follows, which destroys something else";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(next.hasFocus()) << "Tab goes on from there";
    list.hide();
    EXPECT_EQ(QApplication::focusWidget(), &shown.window.root());
}

TEST(MainWindow, ClosesAndQuitsByKeys)
{
    ShownWindow shown;
    QSignalSpy quit(&shown.window, &MainWindow::quitRequested);
    QTest::keyClick(&shown.window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
    QTest::keyClick(&shown.window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(shown.window.isVisible());
}

TEST(MainWindow, IsMovedByDraggingItsBrandWhichThenTellsNothing)
{
    ShownWindow shown;
    QSignalSpy about(&shown.window.root(), &RootView::aboutRequested);
    shown.drag({40, 38}, {80, 62});
    EXPECT_EQ(shown.window.pos(), QPoint(60, 34));
    EXPECT_EQ(about.count(), 0);
    QTest::mouseClick(shown.window.windowHandle(), Qt::LeftButton, {}, QPoint(40, 38));
    EXPECT_EQ(about.count(), 1);
}

TEST(MainWindow, ScrollsItsBoardByTheGripBesideItsBorder)
{
    // Both lie on the grip, beside the six pixels at which the window is resized.
    for (const int fromEdge : {7, 12}) {
        ShownWindow shown;
        shown.window.root().mainView()->setSection(Section::Account);
        BoardFrame *board = nullptr;
        for (BoardFrame *candidate : shown.window.findChildren<BoardFrame *>()) {
            board = candidate->isVisible() ? candidate : board;
        }
        ASSERT_NE(board, nullptr);
        auto *tall = new QWidget;
        tall->setFixedHeight(3000);
        board->body()->addWidget(tall);
        QScrollBar *bar = board->scrollArea()->verticalScrollBar();
        ASSERT_TRUE(waitFor([&] { return bar->isVisible(); }));
        const QRect before = shown.window.geometry();
        const QPoint grip(shown.window.width() - fromEdge, bar->mapTo(&shown.window, QPoint(0, 20)).y());
        shown.drag(grip, grip + QPoint(0, 60));
        EXPECT_GT(bar->value(), 0) << fromEdge;
        EXPECT_EQ(shown.window.geometry(), before) << fromEdge;
    }
}

TEST(MainWindow, PressesItsButtonsByEnter)
{
    ShownWindow shown;
    QSignalSpy about(&shown.window.root(), &RootView::aboutRequested);
    auto *brand = named<QAbstractButton>(shown.window, u"About Quillfen"_s);
    brand->setFocus(Qt::TabFocusReason);
    QTest::keyClick(brand, Qt::Key_Return);
    EXPECT_EQ(about.count(), 1);
    QTest::keyClick(brand, Qt::Key_Enter);
    EXPECT_EQ(about.count(), 2);
    QAbstractButton *close = shown.control(u"Close"_s);
    close->setFocus(Qt::TabFocusReason);
    QTest::keyClick(close, Qt::Key_Return);
    EXPECT_FALSE(shown.window.isVisible());
}

} // namespace
} // namespace quillfen
