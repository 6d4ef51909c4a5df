// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowcommands.h"

#include "shell/mainview/mainview.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "states.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::ElementsAre;

struct Bar {
    explicit Bar(const std::function<bool(KeyAction)> &offers)
    {
        fillMenuBar(bar, commands, offers);
        QObject::connect(&commands, &WindowCommands::chosen, &window,
                         [this](KeyAction command) { chosen.push_back(command); });
    }

    [[nodiscard]] QMenu &menu(const QString &title) const
    {
        for (QAction *const entry : bar.actions()) {
            if (entry->text() == title) {
                return *entry->menu();
            }
        }
        throw std::runtime_error("no such menu");
    }
    [[nodiscard]] QStringList titles(const QString &menuTitle) const
    {
        QStringList texts;
        for (const QAction *const entry : menu(menuTitle).actions()) {
            texts << entry->text();
        }
        return texts;
    }

    QWidget window;
    WindowCommands commands{&window};
    QMenuBar bar;
    std::vector<KeyAction> chosen;
};

TEST(MenuBar, HasEveryCommandOnce)
{
    const Bar bar([](KeyAction) { return true; });
    EXPECT_EQ(bar.titles(u"File"_s), (QStringList{u"New volume"_s, u""_s, u"Close the window"_s, u"Quit Quillfen"_s}));
    EXPECT_EQ(bar.titles(u"Go"_s),
              (QStringList{u"Volumes"_s, u"Time travel"_s, u"History policy"_s, u"Get a copy of my data"_s,
                           u"Account && engine"_s, u"Operator"_s, u"Advanced"_s}));
    EXPECT_EQ(bar.titles(u"View"_s), (QStringList{u"Search"_s, u"Refresh"_s}));
    EXPECT_EQ(bar.titles(u"Window"_s), (QStringList{u"Minimise"_s, u""_s, u"Activity"_s}));
    EXPECT_EQ(bar.titles(u"Help"_s), (QStringList{u"Keyboard shortcuts"_s, u""_s, u"About Quillfen"_s}));
    std::size_t offered = 0;
    for (const KeyEntry &entry : keyMap()) {
        offered += isCommand(entry.action) ? 1 : 0;
    }
    std::size_t there = 0;
    for (const QAction *const menu : bar.bar.actions()) {
        for (const QAction *const entry : menu->menu()->actions()) {
            there += entry->isSeparator() ? 0 : 1;
        }
    }
    EXPECT_EQ(there, offered);
}

TEST(MenuBar, ShowsTheKeysOfTheTableAndWhereMacOSWantsWhat)
{
    const Bar bar([](KeyAction) { return true; });
    for (const KeyEntry &entry : keyMap()) {
        if (isCommand(entry.action)) {
            EXPECT_EQ(bar.commands.action(entry.action)->shortcuts(), entry.keys) << entry.words.toStdString();
        }
    }
    EXPECT_EQ(bar.commands.action(KeyAction::About)->menuRole(), QAction::AboutRole);
    EXPECT_EQ(bar.commands.action(KeyAction::Quit)->menuRole(), QAction::QuitRole);
    EXPECT_EQ(bar.commands.action(KeyAction::GoToAccount)->menuRole(), QAction::NoRole);
}

TEST(MenuBar, TellsWhatIsChosen)
{
    Bar bar([](KeyAction) { return true; });
    bar.menu(u"Go"_s).actions().at(3)->trigger();
    bar.menu(u"Help"_s).actions().at(0)->trigger();
    EXPECT_THAT(bar.chosen, ElementsAre(KeyAction::GoToExport, KeyAction::ShowShortcuts));
}

TEST(MenuBar, GreysWhatWouldDoNothingWhileItIsOpen)
{
    Bar bar([](KeyAction command) { return command != KeyAction::GoToOperator; });
    QMenu &menu = bar.menu(u"Go"_s);
    QAction *const hidden = menu.actions().at(5);
    Q_EMIT menu.aboutToShow();
    EXPECT_FALSE(hidden->isEnabled());
    EXPECT_TRUE(menu.actions().at(6)->isEnabled());
    Q_EMIT menu.aboutToHide();
    EXPECT_TRUE(waitFor([&] { return hidden->isEnabled(); })) << "or its keys stay dead";
}

TEST(MenuBar, OffersWhatTheWindowCanDoNow)
{
    const std::shared_ptr<AppState> state = signedInState();
    MainWindow window(state);
    EXPECT_TRUE(window.offers(KeyAction::NewVolume));
    EXPECT_TRUE(window.offers(KeyAction::GoToAdvanced));
    EXPECT_FALSE(window.offers(KeyAction::GoToOperator));
    state->showNewVolume = true;
    EXPECT_FALSE(window.offers(KeyAction::GoToAdvanced)) << "beneath the sheet";
    EXPECT_TRUE(window.offers(KeyAction::CloseWindow));
    state->showNewVolume = false;
    state->connected = false;
    state->agentError = u"the agent connection closed"_s;
    ASSERT_TRUE(waitFor([&] { return window.root().screen() == Screen::AgentDown; }));
    EXPECT_FALSE(window.offers(KeyAction::Refresh));
    EXPECT_TRUE(window.offers(KeyAction::ShowShortcuts));
    settle(*state);
}

} // namespace
} // namespace quillfen
