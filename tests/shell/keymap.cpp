// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/keymap.h"

#include "boards/advanced/jsoneditor.h"
#include "boards/advanced/outputpane.h"
#include "boards/advanced/outputview.h"
#include "boards/operator/operatorview.h"
#include "boards/timetravel/timelinestrip.h"
#include "boards/volumes/volumestable.h"
#include "dialogs/dialogs.h"
#include "shell/mainview/brandbutton.h"
#include "shell/mainview/mainview.h"
#include "shell/mainview/sidebarentry.h"
#include "shell/mainwindow.h"
#include "shell/rootview.h"
#include "shell/window/aboutpanel.h"
#include "state/clock.h"
#include "states.h"
#include "support/fakeagent.h"
#include "ui/controls/picker.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/segmented.h"
#include "ui/controls/sharetile.h"
#include "ui/controls/slider.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/dates/datetimefield.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalSpy>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <set>

using namespace std::chrono_literals;

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;
using testing::Not;

const KeyEntry &entryOf(const std::vector<KeyEntry> &entries, KeyAction action)
{
    return *std::ranges::find(entries, action, &KeyEntry::action);
}

/// Presses a chord on whatever has the keyboard.
void press(const QKeySequence &keys)
{
    QWidget *const target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr) << keys.toString().toStdString();
    QTest::keyClick(target, keys[0].key(), keys[0].keyboardModifiers());
}

/// The window of an operator with three volumes.
struct Workspace {
    Workspace()
    {
        const json::value list =
            json::parse(R"([{"id": 1, "name": "a"}, {"id": 2, "name": "b"}, {"id": 3, "name": "c"}])");
        state->volumes = records(&list);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ~Workspace()
    {
        settle(*state);
        state->shutDown(); // whoever still asks gets an answer
    }

    [[nodiscard]] MainView &view() { return *window.root().mainView(); }
    template <typename Widget>
    Widget &focus()
    {
        auto *const widget = window.findChild<Widget *>();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(widget->hasFocus());
        return *widget;
    }

    std::shared_ptr<AppState> state = signedInState(R"({"signed_in": true, "is_admin": true})");
    MainWindow window{state};
};

/// A control by itself in a window.
template <typename Widget>
void showAlone(Widget &widget)
{
    widget.resize(600, 200);
    widget.show();
    widget.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    widget.setFocus(Qt::TabFocusReason);
}

void goesToItsSection(const KeyEntry &entry)
{
    Workspace workspace;
    workspace.view().setSection(entry.action == KeyAction::GoToPolicy ? Section::Volumes : Section::Policy);
    press(entry.keys.at(0));
    EXPECT_EQ(workspace.view().section(), *sectionOf(entry.action));
    EXPECT_EQ(entry.words, displayTitle(*sectionOf(entry.action)));
}

void asksForANewVolume(const KeyEntry &entry)
{
    Workspace workspace;
    press(entry.keys.at(0));
    EXPECT_TRUE(workspace.state->showNewVolume());
}

void putsTheCursorIntoTheSearch(const KeyEntry &entry)
{
    Workspace workspace;
    for (const Section section : {Section::Volumes, Section::Operator, Section::Advanced}) {
        workspace.view().setSection(section);
        if (auto *const console = workspace.window.findChild<OperatorView *>()) {
            console->setTab(u"users"_s); // the hubs are few, and have none
        }
        workspace.window.root().setFocus();
        press(entry.keys.at(0));
        EXPECT_NE(qobject_cast<SearchField *>(QApplication::focusWidget()), nullptr) << static_cast<int>(section);
    }
}

void readsTheStateAfresh(const KeyEntry &entry)
{
    FakeAgent agent;
    agent.allowUnexpected();
    agent.answer("auth.status", json::parse(R"({"signed_in": true})"));
    const Environment socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path()));
    const std::shared_ptr<AppState> state = AppState::create();
    state->connect();
    ASSERT_TRUE(waitFor([&] { return state->signedIn() && agent.count("events.subscribe") == 1; }));
    MainWindow window(state);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const QKeySequence &keys : entry.keys) {
        const std::size_t before = agent.count("auth.status");
        press(keys);
        EXPECT_TRUE(waitFor([&] { return agent.count("auth.status") == before + 1; }));
    }
    state->shutDown();
}

template <typename Signal>
void asksTheWindow(const KeyEntry &entry, Signal signal)
{
    Workspace workspace;
    QSignalSpy asked(&workspace.window, signal);
    for (const QKeySequence &keys : entry.keys) {
        press(keys);
    }
    EXPECT_EQ(asked.count(), entry.keys.size());
}

void closesTheWindow(const KeyEntry &entry)
{
    Workspace workspace;
    press(entry.keys.at(0));
    EXPECT_FALSE(workspace.window.isVisible());
}

void changesTheSize(const KeyEntry &entry, int by)
{
    Workspace workspace;
    workspace.state->showNewVolume = true;
    QCoreApplication::processEvents();
    auto &slider = workspace.focus<Slider>();
    slider.setValue(500);
    press(entry.keys.at(0));
    EXPECT_EQ(slider.value(), 500 - by);
    press(entry.keys.at(1));
    EXPECT_EQ(slider.value(), 500);
}

void goesFromControlToControl(const KeyEntry &entry)
{
    Workspace workspace;
    auto &brand = workspace.focus<BrandButton>();
    press(entry.keys.at(0));
    EXPECT_FALSE(brand.hasFocus());
    press(entry.keys.at(1));
    EXPECT_TRUE(brand.hasFocus());
}

void pressesTheFocusedButton(const KeyEntry &entry)
{
    Workspace workspace;
    QSignalSpy about(&workspace.window, &MainWindow::aboutRequested);
    workspace.focus<BrandButton>();
    for (const QKeySequence &keys : entry.keys) {
        press(keys);
    }
    EXPECT_EQ(about.count(), 2);
}

void clearsTheSearch(const KeyEntry &entry)
{
    Workspace workspace;
    auto &search = workspace.focus<SearchField>();
    search.setText(u"phot"_s);
    press(entry.keys.at(0));
    EXPECT_EQ(search.text(), QString());
}

void movesInTheTable(const KeyEntry &entry)
{
    Workspace workspace;
    auto &table = workspace.focus<VolumesTable>();
    table.selectRow(0);
    press(entry.keys.at(1));
    EXPECT_EQ(table.currentIndex().row(), entry.action == KeyAction::StepInList ? 1 : 2);
    press(entry.keys.at(0));
    EXPECT_EQ(table.currentIndex().row(), 0);
}

void movesInTheSidebarToo(const KeyEntry &entry)
{
    movesInTheTable(entry);
    Workspace workspace;
    named<SidebarEntry>(workspace.window, u"Volumes"_s)->setFocus(Qt::TabFocusReason);
    press(entry.keys.at(1));
    EXPECT_EQ(workspace.view().section(),
              entry.action == KeyAction::StepInList ? Section::TimeTravel : Section::Advanced);
    press(entry.keys.at(0));
    EXPECT_EQ(workspace.view().section(), Section::Volumes);
}

void movesAmongChoices(const KeyEntry &entry)
{
    Segmented tabs(u"Tabs"_s);
    tabs.addPart(u"Hubs"_s);
    tabs.addPart(u"Users"_s);
    showAlone(tabs);
    QTest::keyClick(&tabs, Qt::Key_Tab);
    press(entry.keys.at(1));
    EXPECT_EQ(tabs.currentIndex(), 1);
    press(entry.keys.at(0));
    EXPECT_EQ(tabs.currentIndex(), 0);

    Workspace workspace;
    workspace.state->showNewVolume = true;
    QCoreApplication::processEvents();
    const auto tiles = workspace.window.findChildren<ShareTile *>();
    ASSERT_EQ(tiles.size(), 3);
    tiles[0]->setFocus(Qt::TabFocusReason);
    press(entry.keys.at(1));
    EXPECT_TRUE(tiles[1]->isChecked());
    press(entry.keys.at(0));
    EXPECT_TRUE(tiles[0]->isChecked());
}

void turnsOnAndOff(const KeyEntry &entry)
{
    Toggle toggle(u"Mount now"_s);
    showAlone(toggle);
    press(entry.keys.at(0));
    EXPECT_TRUE(toggle.isChecked());
    press(entry.keys.at(0));
    EXPECT_FALSE(toggle.isChecked());
}

void opensPickersAndCalendars(const KeyEntry &entry)
{
    Picker picker(u"Volume"_s);
    picker.addItems({u"Documents"_s, u"Music"_s});
    showAlone(picker);
    DateTimeField field(u"Moment"_s);
    for (const QKeySequence &keys : entry.keys) {
        picker.setFocus(Qt::TabFocusReason);
        press(keys);
        EXPECT_TRUE(picker.view()->isVisible()) << keys.toString().toStdString();
        picker.hidePopup();
    }
    picker.hide();
    showAlone(field);
    for (const QKeySequence &keys : entry.keys) {
        const auto popups = [] {
            return std::ranges::count_if(QApplication::topLevelWidgets(), [](QWidget *one) {
                return one->isVisible() && one->inherits("quillfen::CalendarPopup");
            });
        };
        QTest::keyClick(&field, keys[0].key(), keys[0].keyboardModifiers());
        EXPECT_EQ(popups(), 1) << keys.toString().toStdString();
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        EXPECT_TRUE(waitFor([&] { return popups() == 0; }));
    }
}

void movesInTime(const KeyEntry &entry, std::chrono::seconds by)
{
    TimelineStrip strip(24h);
    showAlone(strip);
    const Instant start = now() - 12h;
    strip.setMoment(start);
    press(entry.keys.at(0));
    EXPECT_EQ(strip.moment(), start - by);
    press(entry.keys.at(1));
    EXPECT_EQ(strip.moment(), start);
}

void movesToTheEdgesOfTime(const KeyEntry &entry)
{
    TimelineStrip strip(24h);
    showAlone(strip);
    strip.setMoment(now() - 12h);
    press(entry.keys.at(0));
    EXPECT_LE(strip.moment(), now() - 23h);
    press(entry.keys.at(1));
    EXPECT_GE(strip.moment(), now() - 1h);
}

void runsFromTheEditor(const KeyEntry &entry)
{
    JsonEditor editor(u"Parameters"_s);
    showAlone(editor);
    QSignalSpy submitted(&editor, &JsonEditor::submitted);
    editor.findChild<QPlainTextEdit *>()->setFocus();
    press(entry.keys.at(0));
    EXPECT_EQ(submitted.count(), 1);
}

void goesToAMatch(const KeyEntry &entry, const std::string &expected)
{
    OutputPane pane;
    pane.setText(std::make_shared<OutputText>(OutputText::ofJson(json::parse(R"(["one", "none", "stone"])"))));
    showAlone(pane);
    pane.focusSearch();
    const auto selected = [&] {
        const OutputView &view = *pane.findChild<OutputView *>();
        const std::string_view bytes = view.text()->bytes();
        const std::size_t begin = bytes.rfind('"', view.selectionBegin()) + 1;
        return view.hasSelection() ? std::string(bytes.substr(begin, bytes.find('"', begin) - begin)) : std::string();
    };
    QTest::keyClicks(QApplication::focusWidget(), u"one"_s);
    ASSERT_TRUE(waitFor([&] { return selected() == "one"; })) << selected();
    press(entry.keys.at(0));
    EXPECT_TRUE(waitFor([&] { return selected() == expected; })) << selected();
}

/// The answer of a question to which `keys` is pressed.
bool answerTo(const QKeySequence &keys)
{
    QTimer::singleShot(0, qApp, [keys] {
        EXPECT_TRUE(waitFor([] { return QApplication::focusWidget() != nullptr; }));
        press(keys);
    });
    return confirm(nullptr, u"Delete?"_s, u"It is gone then."_s, u"Delete"_s, Destructive::Yes);
}

void cancels(const KeyEntry &entry)
{
    EXPECT_FALSE(answerTo(entry.keys.at(0)));
    Workspace workspace;
    workspace.state->showNewVolume = true;
    QCoreApplication::processEvents();
    workspace.focus<Slider>();
    press(entry.keys.at(0));
    EXPECT_FALSE(workspace.state->showNewVolume());
}

void isOfferedByMenusOnly(const KeyEntry &entry)
{
    EXPECT_TRUE(entry.keys.isEmpty());
    Workspace workspace;
    EXPECT_TRUE(workspace.window.offers(entry.action));
    QSignalSpy about(&workspace.window, &MainWindow::aboutRequested);
    workspace.window.perform(entry.action);
    EXPECT_TRUE(about.count() == 1 || workspace.window.isMinimized());
}

using Proof = std::function<void(const KeyEntry &)>;

/// How it shows that an entry's keys do what its words say.
const std::map<KeyAction, Proof> &proofs()
{
    const auto size = [](int by) { return [by](const KeyEntry &entry) { changesTheSize(entry, by); }; };
    const auto time = [](std::chrono::seconds by) { return [by](const KeyEntry &entry) { movesInTime(entry, by); }; };
    const auto match = [](const char *at) { return [at](const KeyEntry &entry) { goesToAMatch(entry, at); }; };
    static const std::map<KeyAction, Proof> all{
        {KeyAction::GoToVolumes, goesToItsSection},
        {KeyAction::GoToTimeTravel, goesToItsSection},
        {KeyAction::GoToPolicy, goesToItsSection},
        {KeyAction::GoToExport, goesToItsSection},
        {KeyAction::GoToAccount, goesToItsSection},
        {KeyAction::GoToOperator, goesToItsSection},
        {KeyAction::GoToAdvanced, goesToItsSection},
        {KeyAction::NewVolume, asksForANewVolume},
        {KeyAction::Search, putsTheCursorIntoTheSearch},
        {KeyAction::Refresh, readsTheStateAfresh},
        {KeyAction::ShowShortcuts, [](const KeyEntry &e) { asksTheWindow(e, &MainWindow::shortcutsRequested); }},
        {KeyAction::ShowActivity, [](const KeyEntry &e) { asksTheWindow(e, &MainWindow::activityRequested); }},
        {KeyAction::Minimise, isOfferedByMenusOnly},
        {KeyAction::CloseWindow, closesTheWindow},
        {KeyAction::Quit, [](const KeyEntry &e) { asksTheWindow(e, &MainWindow::quitRequested); }},
        {KeyAction::About, isOfferedByMenusOnly},
        {KeyAction::SizeByOne, size(1)},
        {KeyAction::SizeByTen, size(10)},
        {KeyAction::NextControl, goesFromControlToControl},
        {KeyAction::PressButton, pressesTheFocusedButton},
        {KeyAction::ClearSearch, clearsTheSearch},
        {KeyAction::StepInList, movesInTheSidebarToo},
        {KeyAction::PageInList, movesInTheTable},
        {KeyAction::EndOfList, movesInTheSidebarToo},
        {KeyAction::StepInChoices, movesAmongChoices},
        {KeyAction::Switch, turnsOnAndOff},
        {KeyAction::OpenPicker, opensPickersAndCalendars},
        {KeyAction::TimeBySecond, time(1s)},
        {KeyAction::TimeByMinute, time(60s)},
        {KeyAction::TimeByHour, time(3600s)},
        {KeyAction::TimeToEdge, movesToTheEdgesOfTime},
        {KeyAction::RunOperation, runsFromTheEditor},
        {KeyAction::NextMatch, match("none")},
        {KeyAction::PreviousMatch, match("stone")},
        {KeyAction::PressDefault, [](const KeyEntry &entry) { EXPECT_TRUE(answerTo(entry.keys.at(0))); }},
        {KeyAction::Cancel, cancels},
    };
    return all;
}

class EveryEntry : public testing::TestWithParam<KeyEntry> {};

TEST_P(EveryEntry, DoesWhatItSays)
{
    const auto proof = proofs().find(GetParam().action);
    ASSERT_NE(proof, proofs().end()) << "nothing shows what " << spokenLine(GetParam()).toStdString() << " does";
    proof->second(GetParam());
}

INSTANTIATE_TEST_SUITE_P(KeyMap, EveryEntry, testing::ValuesIn(keyMap(KeyStyle::Linux)), [](const auto &entry) {
    QString name = entry.param.words;
    return std::to_string(entry.index) + name.remove(QRegularExpression(u"[^A-Za-z0-9]"_s)).toStdString();
});

TEST(KeyMap, GivesEachCommandKeysOfItsOwn)
{
    for (const KeyStyle style : {KeyStyle::Linux, KeyStyle::MacOS}) {
        std::set<QString> taken;
        for (const KeyEntry &entry : keyMap(style)) {
            for (const QKeySequence &keys : entry.keys) {
                if (isCommand(entry.action)) {
                    EXPECT_TRUE(taken.insert(keys.toString()).second) << keys.toString().toStdString();
                }
            }
        }
    }
}

TEST(KeyMap, FollowsTheHabitsOfThePlatform)
{
    const std::vector<KeyEntry> linuxKeys = keyMap(KeyStyle::Linux);
    const std::vector<KeyEntry> macKeys = keyMap(KeyStyle::MacOS);
    EXPECT_EQ(entryOf(linuxKeys, KeyAction::Refresh).keys, QList<QKeySequence>{Qt::Key_F5});
    EXPECT_THAT(entryOf(macKeys, KeyAction::Refresh).keys, Contains(QKeySequence(Qt::CTRL | Qt::Key_R)));
    EXPECT_THAT(entryOf(macKeys, KeyAction::Refresh).keys, Contains(QKeySequence(Qt::Key_F5)));
    EXPECT_TRUE(entryOf(linuxKeys, KeyAction::Minimise).keys.isEmpty()) << "which is the window manager's business";
    EXPECT_EQ(entryOf(macKeys, KeyAction::Minimise).keys, QList<QKeySequence>{Qt::CTRL | Qt::Key_M});
}

TEST(KeyMap, ShowsTheOperatorsSectionToOperatorsOnlyAndNothingWithoutKeys)
{
    const auto actions = [](bool isOperator) {
        std::vector<KeyAction> shown;
        for (const KeyEntry &entry : shownKeys(isOperator)) {
            shown.push_back(entry.action);
        }
        return shown;
    };
    EXPECT_THAT(actions(true), Contains(KeyAction::GoToOperator));
    EXPECT_THAT(actions(false), Not(Contains(KeyAction::GoToOperator)));
    EXPECT_THAT(actions(false), Contains(KeyAction::GoToAdvanced));
    EXPECT_THAT(actions(true), Not(Contains(KeyAction::About)));
}

TEST(KeyMap, IsReadAsKeysThenWords)
{
    const std::vector<KeyEntry> entries = keyMap(KeyStyle::Linux);
    EXPECT_EQ(spokenLine(entryOf(entries, KeyAction::GoToVolumes)), u"Ctrl+1, Volumes"_s);
    EXPECT_EQ(spokenLine(entryOf(entries, KeyAction::TimeByMinute)), u"Shift+Left, Shift+Right, One minute"_s);
}

/// Every chord that stands for something in `root`.
QStringList chordsIn(const QWidget &root)
{
    QStringList chords;
    for (const auto *const shortcut : root.findChildren<QShortcut *>()) {
        chords << shortcut->key().toString();
    }
    for (const auto *const action : root.findChildren<QAction *>()) {
        for (const QKeySequence &keys : action->shortcuts()) {
            chords << keys.toString();
        }
    }
    return chords;
}

TEST(KeyMap, KnowsEveryChordOfEveryWindow)
{
    // Beside Enter, which goes on, in a search field.
    QStringList known{u"Shift+Return"_s};
    for (const KeyEntry &entry : keyMap()) {
        for (const QKeySequence &keys : entry.keys) {
            known << keys.toString();
        }
    }
    const auto checkAll = [&known](const QWidget &window) {
        const QStringList chords = chordsIn(window);
        EXPECT_FALSE(chords.isEmpty());
        for (const QString &chord : chords) {
            EXPECT_THAT(known, Contains(chord));
        }
    };
    Workspace workspace;
    for (const Section section : allSections) {
        workspace.view().setSection(section);
        checkAll(workspace.window);
    }
    checkAll(AboutPanel(u"1"_s, u"2"_s));
    QTimer::singleShot(0, qApp, [&] {
        checkAll(*QApplication::activeModalWidget());
        QApplication::activeModalWidget()->close();
    });
    EXPECT_FALSE(confirm(nullptr, u"?"_s, QString(), u"Yes"_s, Destructive::No));
}

} // namespace
} // namespace quillfen
