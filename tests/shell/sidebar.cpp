// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/sidebar.h"

#include "shell/mainview/sidebarentry.h"
#include "shell/mainview/sidebarfooter.h"
#include "states.h"
#include "ui/parts/bar.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr auto admin = R"({"signed_in": true, "is_admin": true})";

QStringList shownEntries(Sidebar &sidebar)
{
    QStringList titles;
    for (SidebarEntry *entry : sidebar.findChildren<SidebarEntry *>()) {
        if (!entry->isHidden()) {
            titles += entry->accessibleName();
        }
    }
    return titles;
}

SidebarEntry *entryOf(Sidebar &sidebar, Section section)
{
    for (SidebarEntry *entry : sidebar.findChildren<SidebarEntry *>()) {
        if (entry->section() == section) {
            return entry;
        }
    }
    return nullptr;
}

/// Follows its own wishes, as the main view does.
struct FollowedSidebar {
    explicit FollowedSidebar(const std::shared_ptr<AppState> &state) : sidebar(state)
    {
        QObject::connect(&sidebar, &Sidebar::sectionChosen, &sidebar, [this](Section section) {
            chosen.push_back(section);
            sidebar.setSection(section);
        });
        sidebar.resize(224, 760);
        sidebar.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&sidebar));
    }

    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    Sidebar sidebar;
    std::vector<Section> chosen;
};

TEST(Sidebar, HidesOperatorUnlessTheAgentSaysTrue)
{
    const QStringList plain{u"Volumes"_s,          u"Time travel"_s, u"History policy"_s, u"Get a copy of my data"_s,
                            u"Account & engine"_s, u"Advanced"_s};
    QStringList all = plain;
    all.insert(5, u"Operator"_s);
    for (const char *auth : {R"({"signed_in": true})", R"({"signed_in": true, "is_admin": "true"})",
                             R"({"signed_in": true, "is_admin": 1})", R"({"signed_in": true, "is_admin": false})"}) {
        Sidebar sidebar(signedInState(auth));
        EXPECT_EQ(shownEntries(sidebar), plain) << auth;
    }
    Sidebar sidebar(signedInState(admin));
    EXPECT_EQ(shownEntries(sidebar), all);
}

TEST(Sidebar, FollowsAChangeOfTheOperatorsRights)
{
    const std::shared_ptr<AppState> state = signedInState();
    Sidebar sidebar(state);
    state->auth = record(admin);
    EXPECT_TRUE(waitFor([&] { return shownEntries(sidebar).contains(u"Operator"_s); }));
    state->auth = record(R"({"signed_in": true})");
    EXPECT_TRUE(waitFor([&] { return !shownEntries(sidebar).contains(u"Operator"_s); }));
}

TEST(Sidebar, ShowsItsTitlesWholeWhateverTheTextSize)
{
    FollowedSidebar followed(signedInState(admin));
    EXPECT_TRUE(lineHeight(Type::Section) > 20 || followed.sidebar.width() == 224) << followed.sidebar.width();
    for (const Section section : allSections) {
        followed.sidebar.setSection(section); // the selected one has the wider letters
        SidebarEntry *const entry = entryOf(followed.sidebar, section);
        static_cast<void>(entry->grab());
        EXPECT_EQ(entry->toolTip(), QString()) << "is cut: " << rawTitle(section).toStdString();
    }
}

TEST(Sidebar, IsAListOfPageTabsToAssistiveTechnology)
{
    FollowedSidebar followed(signedInState(admin));
    followed.sidebar.setSection(Section::Policy);
    for (const Section section : allSections) {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(entryOf(followed.sidebar, section));
        ASSERT_NE(face, nullptr);
        EXPECT_EQ(face->role(), QAccessible::PageTab);
        EXPECT_EQ(face->text(QAccessible::Name), rawTitle(section));
        EXPECT_EQ(face->state().selected, section == Section::Policy);
        EXPECT_EQ(face->parent()->role(), QAccessible::PageTabList);
    }
}

TEST(Sidebar, ChoosesByClick)
{
    FollowedSidebar followed(signedInState());
    QTest::mouseClick(entryOf(followed.sidebar, Section::Advanced), Qt::LeftButton);
    EXPECT_THAT(followed.chosen, ElementsAre(Section::Advanced));
    EXPECT_TRUE(entryOf(followed.sidebar, Section::Advanced)->isChecked());
    EXPECT_FALSE(entryOf(followed.sidebar, Section::Volumes)->isChecked());
}

TEST(Sidebar, KeepsTheMarkWhenTheSelectedEntryIsClickedAgain)
{
    FollowedSidebar followed(signedInState());
    QTest::mouseClick(entryOf(followed.sidebar, Section::Volumes), Qt::LeftButton);
    EXPECT_TRUE(entryOf(followed.sidebar, Section::Volumes)->isChecked());
}

TEST(Sidebar, TakesNoFocusByMouse)
{
    FollowedSidebar followed(signedInState());
    QTest::mouseClick(entryOf(followed.sidebar, Section::Advanced), Qt::LeftButton);
    EXPECT_FALSE(entryOf(followed.sidebar, Section::Advanced)->hasFocus());
}

TEST(Sidebar, IsOneStopForTab)
{
    FollowedSidebar followed(signedInState());
    followed.sidebar.setSection(Section::Export);
    for (SidebarEntry *entry : followed.sidebar.findChildren<SidebarEntry *>()) {
        EXPECT_EQ(entry->focusPolicy() == Qt::TabFocus, entry->section() == Section::Export);
    }
}

TEST(Sidebar, MovesByArrowKeysPastTheHiddenEntry)
{
    FollowedSidebar followed(signedInState());
    entryOf(followed.sidebar, Section::Volumes)->setFocus(Qt::TabFocusReason);
    followed.press(Qt::Key_Up);
    followed.press(Qt::Key_Down);
    followed.press(Qt::Key_End);
    followed.press(Qt::Key_Down);
    followed.press(Qt::Key_Up);
    followed.press(Qt::Key_Home);
    EXPECT_THAT(followed.chosen, ElementsAre(Section::Volumes, Section::TimeTravel, Section::Advanced,
                                             Section::Advanced, Section::Account, Section::Volumes));
    EXPECT_TRUE(entryOf(followed.sidebar, Section::Volumes)->hasFocus());
}

TEST(Sidebar, LeavesArrowsWithModifiersToOthers)
{
    FollowedSidebar followed(signedInState());
    SidebarEntry *entry = entryOf(followed.sidebar, Section::Volumes);
    entry->setFocus(Qt::TabFocusReason);
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier}) {
        QTest::keyClick(entry, Qt::Key_End, modifier);
    }
    EXPECT_TRUE(followed.chosen.empty());
    QTest::keyClick(entry, Qt::Key_Down, Qt::KeypadModifier);
    EXPECT_THAT(followed.chosen, ElementsAre(Section::TimeTravel));
}

TEST(Sidebar, LeavesNoGapWhereThereIsNoEmail)
{
    const std::shared_ptr<AppState> state = signedInState();
    Sidebar with(state);
    const auto heightOfFoot = [](Sidebar &sidebar) {
        return sidebar.findChild<SidebarFooter *>()->sizeHint().height();
    };
    const int whole = heightOfFoot(with);
    state->account = record(R"({"plan": "pro", "capacity_gb": 2048})");
    Sidebar without(state);
    EXPECT_EQ(heightOfFoot(without), whole - lineHeight(Type::Caption) - 2);
}

TEST(Sidebar, HasAStopAlsoWhileTheSelectedSectionIsHidden)
{
    FollowedSidebar followed(signedInState());
    followed.sidebar.setSection(Section::Operator);
    EXPECT_EQ(entryOf(followed.sidebar, Section::Volumes)->focusPolicy(), Qt::TabFocus);
    entryOf(followed.sidebar, Section::Volumes)->setFocus(Qt::TabFocusReason);
    followed.press(Qt::Key_Down);
    EXPECT_THAT(followed.chosen, ElementsAre(Section::Volumes));
}

TEST(Sidebar, TellsAboutTheProgramFromItsBrand)
{
    FollowedSidebar followed(signedInState());
    QSignalSpy about(&followed.sidebar, &Sidebar::aboutRequested);
    auto *brand = named<QAbstractButton>(followed.sidebar, u"About Quillfen"_s);
    ASSERT_NE(brand, nullptr);
    QTest::mouseClick(brand, Qt::LeftButton);
    brand->setFocus(Qt::TabFocusReason);
    QTest::keyClick(brand, Qt::Key_Space);
    EXPECT_EQ(about.count(), 2);
}

TEST(Sidebar, ShowsPlanAccountVersionAndEngine)
{
    const std::shared_ptr<AppState> state = signedInState();
    state->volumes =
        records(std::make_unique<json::value>(json::parse(R"([{"id": 1, "size_bytes": 1429365116108}])")).get());
    state->agentVersion = u"1.4.1"_s;
    Sidebar sidebar(state);
    const QStringList shown = texts(sidebar);
    for (const QString &text : {u"Pro plan"_s, u"1.3 TB of 2.0 TB"_s, u"mara@northmere.example"_s,
                                u"Quillfen "_s + AppState::appVersion() + u" · agent 1.4.1"_s, u"Engine running"_s}) {
        EXPECT_THAT(shown, Contains(text));
    }
}

TEST(Sidebar, HasNoPlanWithoutCapacity)
{
    const std::shared_ptr<AppState> state = signedInState();
    state->account = record(R"({"email": "mara@northmere.example", "plan": "pro", "capacity_gb": 0})");
    Sidebar sidebar(state);
    EXPECT_THAT(texts(sidebar), Not(Contains(u"Pro plan"_s)));
    EXPECT_FALSE(sidebar.findChild<Bar *>()->isVisibleTo(&sidebar));
    EXPECT_THAT(texts(sidebar), Contains(u"mara@northmere.example"_s));
}

TEST(Sidebar, MarksTheSectionWhereReadingBegins)
{
    SidebarEntry entry(Section::Volumes);
    entry.setChecked(true);
    entry.resize(200, 36);
    const auto colourAt = [&](int x) { return entry.grab().toImage().pixelColor(x, 18); };
    EXPECT_EQ(colourAt(5), Theme::accent);
    EXPECT_EQ(colourAt(194), Theme::dPanel);
    entry.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(colourAt(5), Theme::dPanel);
    EXPECT_EQ(colourAt(194), Theme::accent);
}

TEST(Sidebar, GivesThePlansBarTheWordsBesideIt)
{
    Sidebar sidebar(signedInState());
    auto *bar = sidebar.findChild<Bar *>();
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(bar);
    EXPECT_EQ(face->role(), QAccessible::ProgressBar);
    EXPECT_EQ(face->text(QAccessible::Value), u"0 GB of 2.0 TB"_s);
    EXPECT_EQ(bar->fraction(), 0.0);
}

TEST(Sidebar, UpdatesItsFootWithTheState)
{
    const std::shared_ptr<AppState> state = signedInState();
    Sidebar sidebar(state);
    state->vm = record(R"({"status": "Stopped"})");
    state->account = record(R"({"email": "new@northmere.example"})");
    EXPECT_TRUE(waitFor([&] { return texts(sidebar).contains(u"Engine Stopped"_s); }));
    EXPECT_TRUE(waitFor([&] { return texts(sidebar).contains(u"new@northmere.example"_s); }));
}

} // namespace
} // namespace quillfen
