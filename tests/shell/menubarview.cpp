// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/panel/menubarview.h"

#include "desktop/fileviewer.h"
#include "shell/mainview/darktextbutton.h"
#include "shell/panel/menubarvolume.h"
#include "states.h"
#include "ui/controls/buttons.h"
#include "ui/parts/bar.h"
#include "ui/theme.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr auto twoVolumes = R"([
    {"id": 1, "name": "Documents", "presentation_type": "smb", "size_bytes": 107374182400},
    {"id": 2, "name": "vm & store", "presentation_type": "iscsi", "size_bytes": 21474836480}])";

/// The status of a volume that is uploading.
Record uploading(int percent)
{
    Record status = record(R"({"appliance": {"online": true, "pending_bytes": 4096}, "offsite": {"percent": 0}})");
    status["offsite"].as_object()["percent"] = percent;
    return status;
}

Records volumesFrom(std::string_view text)
{
    const json::value parsed = json::parse(text);
    Records records;
    for (const json::value &value : parsed.as_array()) {
        records.append(value.as_object());
    }
    return records;
}

std::shared_ptr<AppState> stateWithVolumes()
{
    std::shared_ptr<AppState> state = signedInState();
    state->vm = record(R"({"status": "Running", "exists": true, "memory": "4 GB"})");
    state->volumes = volumesFrom(twoVolumes);
    return state;
}

struct ShownPanel {
    explicit ShownPanel(std::shared_ptr<AppState> shownState) : state(std::move(shownState)), view(state)
    {
        view.showAt({400, 0});
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    std::shared_ptr<AppState> state;
    MenuBarView view;
};

TEST(OverallState, AsksForTheEngineFirst)
{
    const std::shared_ptr<AppState> state = signedInState();
    EXPECT_EQ(overallState(*state), Overall::Protected);
    EXPECT_EQ(overallText(overallState(*state)), u"Protected · all data uploaded"_s);
    state->vm = record(R"({"status": "Stopped"})");
    ASSERT_TRUE(state->allSynced());
    EXPECT_EQ(overallText(overallState(*state)), u"Engine stopped"_s);
}

TEST(OverallState, UploadsWhileAVolumeDoes)
{
    const std::shared_ptr<AppState> state = stateWithVolumes();
    state->statuses = {{1, uploading(87)}};
    EXPECT_EQ(overallText(overallState(*state)), u"Uploading…"_s);
    state->vm = record(R"({"status": "Stopped"})");
    EXPECT_EQ(overallText(overallState(*state)), u"Engine stopped"_s);
}

TEST(MenuBarRow, SaysSyncedOnlyAtOneHundredPercent)
{
    const std::shared_ptr<AppState> state = stateWithVolumes();
    state->statuses = {{1, uploading(100)}, {2, uploading(99)}};
    const MenuBarRow complete = menuBarRow(*state, state->volumes().at(0));
    EXPECT_EQ(complete.offsite, u"Synced"_s);
    EXPECT_EQ(complete.offsiteColour, Theme::accent);
    const MenuBarRow almost = menuBarRow(*state, state->volumes().at(1));
    EXPECT_EQ(almost.offsite, u"99% · uploading"_s);
    EXPECT_EQ(almost.offsiteColour, Theme::warnBright);
    state->statuses = {{1, record(R"({"appliance": {"online": true}})")}};
    EXPECT_EQ(menuBarRow(*state, state->volumes().at(0)).offsite, u"Synced"_s);
}

TEST(MenuBarRow, TellsShareMountAndSize)
{
    const std::shared_ptr<AppState> state = stateWithVolumes();
    state->mounts = volumesFrom(R"([{"name": "Documents", "mountpoint": "/home/mara/Quillfen/Documents"}])");
    const MenuBarRow mounted = menuBarRow(*state, state->volumes().at(0));
    EXPECT_EQ(mounted.name, u"Documents"_s);
    EXPECT_EQ(mounted.line, u"smb · mounted · 100 GB"_s);
    EXPECT_EQ(mounted.mounted, u"/home/mara/Quillfen/Documents"_s);
    const MenuBarRow other = menuBarRow(*state, state->volumes().at(1));
    EXPECT_EQ(other.line, u"iscsi · not mounted · 20 GB"_s);
    EXPECT_EQ(other.mounted, std::nullopt);
    EXPECT_EQ(other.offsite, u"…"_s);
    EXPECT_EQ(other.offsiteColour, Theme::dText);
}

TEST(MenuBarView, NamesEngineAndVersionInItsFoot)
{
    const ShownPanel shown(stateWithVolumes());
    QWidget &view = const_cast<MenuBarView &>(shown.view);
    EXPECT_THAT(texts(view), Contains(u"4 GB RAM"_s));
    EXPECT_THAT(texts(view), Contains(AppState::appVersion()));
    EXPECT_THAT(texts(view), Contains(u"Running in background"_s));
    shown.state->vm = record(R"({"status": "Stopped", "memory": "4 GB"})");
    EXPECT_TRUE(waitFor([&] { return !texts(view).contains(u"4 GB RAM"_s); }));
    EXPECT_EQ(texts(view).count(u"Engine stopped"_s), 2) << "the status line and the foot";
}

TEST(MenuBarView, ComparesThePlanOnlyWhereItHasACapacity)
{
    ShownPanel shown(stateWithVolumes());
    auto *bar = shown.view.findChild<Bar *>();
    ASSERT_NE(bar, nullptr);
    EXPECT_THAT(texts(shown.view), Contains(u"120 GB of 2.0 TB"_s));
    EXPECT_FALSE(bar->isHidden());
    EXPECT_NEAR(bar->fraction(), 120.0 / 2048.0, 1e-9);
    shown.state->account = record("{}");
    EXPECT_TRUE(waitFor([&] { return bar->isHidden(); }));
}

TEST(MenuBarView, IsMadeUpWhenItOpensAndNotBefore)
{
    const std::shared_ptr<AppState> state = stateWithVolumes();
    MenuBarView view(state);
    EXPECT_EQ(view.findChild<MenuBarVolume *>(), nullptr);
    view.showAt({400, 0});
    auto *const documents = named<DarkTextButton>(view, u"Documents"_s);
    ASSERT_NE(documents, nullptr);
    EXPECT_TRUE(documents->isVisible());
    view.hide();
    state->volumes = Records();
    EXPECT_FALSE(waitFor([&] { return documents->isHidden() || !documents->isVisibleTo(&view); }, 100));
    view.showAt({400, 0});
    EXPECT_FALSE(documents->isVisible());
}

TEST(MenuBarView, KeepsItsLabelWithoutVolumes)
{
    ShownPanel shown(signedInState());
    EXPECT_THAT(texts(shown.view), Contains(u"Volumes"_s));
    EXPECT_EQ(shown.view.findChild<MenuBarVolume *>(), nullptr);
}

TEST(MenuBarView, OpensAMountedVolumeByMouseAndByKeyAndNoOther)
{
    QStringList opened;
    FileViewerOverride::Viewer viewer;
    viewer.showFolder = [&](const QString &path) { opened.append(path); };
    const FileViewerOverride replaced(viewer);
    const std::shared_ptr<AppState> state = stateWithVolumes();
    state->mounts = volumesFrom(R"([{"name": "Documents", "mountpoint": "/home/mara/Quillfen/Documents"}])");
    ShownPanel shown(state);
    auto *mounted = named<DarkTextButton>(shown.view, u"Documents"_s);
    auto *other = named<DarkTextButton>(shown.view, u"vm & store"_s);
    ASSERT_NE(mounted, nullptr);
    ASSERT_NE(other, nullptr);
    QTest::mouseClick(mounted, Qt::LeftButton);
    QTest::keyClick(mounted, Qt::Key_Return);
    QTest::mouseClick(other, Qt::LeftButton);
    QTest::keyClick(other, Qt::Key_Space);
    EXPECT_THAT(opened, ElementsAre(u"/home/mara/Quillfen/Documents"_s, u"/home/mara/Quillfen/Documents"_s));
}

Button *buttonWith(QWidget &view, const QString &text)
{
    for (Button *button : view.findChildren<Button *>()) {
        if (button->text() == text) {
            return button;
        }
    }
    return nullptr;
}

TEST(MenuBarView, AsksForTheWindowAndGoes)
{
    const auto asks = [](const QString &button, auto signal) {
        ShownPanel shown(stateWithVolumes());
        const QSignalSpy spy(&shown.view, signal);
        QTest::mouseClick(buttonWith(shown.view, button), Qt::LeftButton);
        return spy.count() == 1 && shown.view.isHidden();
    };
    EXPECT_TRUE(asks(u"Time travel"_s, &MenuBarView::timeTravelRequested));
    EXPECT_TRUE(asks(u"+ New volume"_s, &MenuBarView::newVolumeRequested));
    EXPECT_TRUE(asks(u"Open Quillfen"_s, &MenuBarView::openRequested));
}

TEST(MenuBarView, QuitsByItsFoot)
{
    ShownPanel shown(stateWithVolumes());
    const QSignalSpy spy(&shown.view, &MenuBarView::quitRequested);
    QTest::keyClick(named<DarkTextButton>(shown.view, u"Quit"_s), Qt::Key_Return);
    EXPECT_EQ(spy.count(), 1);
}

TEST(MenuBarView, ClosesOnEscAndOnAClickElsewhere)
{
    ShownPanel shown(stateWithVolumes());
    QTest::keyClick(&shown.view, Qt::Key_Escape);
    EXPECT_TRUE(shown.view.isHidden());

    shown.view.showAt({400, 0});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&shown.view));
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    EXPECT_TRUE(waitFor([&] { return shown.view.isHidden(); }));
}

TEST(MenuBarView, StaysWholeOnTheScreen)
{
    ShownPanel shown(stateWithVolumes());
    const QRect room = shown.view.screen()->availableGeometry();
    for (const QPoint at : {room.topLeft(), room.topRight(), room.bottomLeft(), room.bottomRight()}) {
        shown.view.showAt(at);
        const QRect panel = shown.view.childrenRect().translated(shown.view.pos());
        EXPECT_TRUE(room.contains(panel)) << at.x() << ' ' << at.y();
    }
}

TEST(MenuBarView, ShowsSixVolumesAndScrollsToTheOthers)
{
    const std::shared_ptr<AppState> state = signedInState();
    Records volumes;
    for (int i = 0; i < 10'000; ++i) {
        volumes.append(Record{{"id", i}, {"name", "volume-" + std::to_string(i)}});
    }
    state->volumes = volumes;
    ShownPanel shown(state);
    EXPECT_LT(shown.view.height(), 700);
    EXPECT_LT(shown.view.findChildren<MenuBarVolume *>().size(), 20) << "rows are made for what is in view";
    EXPECT_NE(named<DarkTextButton>(shown.view, u"volume-5"_s), nullptr);
}

} // namespace
} // namespace quillfen
