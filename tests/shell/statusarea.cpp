// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/desktop/statusarea.h"

#include "desktop/fileviewer.h"
#include "shell/desktop/statusicon.h"
#include "states.h"

#include <QMenu>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

QStringList labels(const QMenu &menu)
{
    QStringList labels;
    for (const QAction *action : menu.actions()) {
        if (!action->isSeparator()) {
            labels.append(action->text());
        }
    }
    return labels;
}

QAction *entry(const QMenu &menu, const QString &label)
{
    for (QAction *action : menu.actions()) {
        if (action->text() == label) {
            return action;
        }
    }
    return nullptr;
}

std::shared_ptr<AppState> stateWithVolumes(int count)
{
    std::shared_ptr<AppState> state = signedInState();
    Records volumes;
    for (int i = 0; i < count; ++i) {
        volumes.append(Record{{"id", i}, {"name", "volume&" + std::to_string(i)}});
    }
    state->volumes = volumes;
    return state;
}

TEST(StatusArea, OffersEveryActionOfThePanelInAPlainMenu)
{
    StatusArea area(signedInState());
    EXPECT_THAT(labels(area.menu()),
                ElementsAre(u"Protected · all data uploaded"_s, u"Time travel"_s, u"+ New volume"_s, u"Open Quillfen"_s,
                            u"Activity"_s, u"About Quillfen"_s, u"Quit"_s));
    const auto asks = [&](const QString &label, auto signal) {
        const QSignalSpy spy(&area, signal);
        entry(area.menu(), label)->trigger();
        return spy.count() == 1;
    };
    EXPECT_TRUE(asks(u"Time travel"_s, &StatusArea::timeTravelRequested));
    EXPECT_TRUE(asks(u"+ New volume"_s, &StatusArea::newVolumeRequested));
    EXPECT_TRUE(asks(u"Open Quillfen"_s, &StatusArea::openRequested));
    EXPECT_TRUE(asks(u"Activity"_s, &StatusArea::activityRequested));
    EXPECT_TRUE(asks(u"About Quillfen"_s, &StatusArea::aboutRequested));
    EXPECT_TRUE(asks(u"Quit"_s, &StatusArea::quitRequested));
}

TEST(StatusArea, ItsMenuIsAsNewAsTheMomentItOpens)
{
    const std::shared_ptr<AppState> state = signedInState();
    StatusArea area(state);
    state->vm = record(R"({"status": "Stopped"})");
    Q_EMIT area.menu().aboutToShow();
    EXPECT_EQ(labels(area.menu()).first(), u"Engine stopped"_s);
}

TEST(StatusArea, ItsMenuOpensMountedVolumesAndListsNoMoreThanAMenuHolds)
{
    QStringList opened;
    FileViewerOverride::Viewer viewer;
    viewer.showFolder = [&](const QString &path) { opened.append(path); };
    const FileViewerOverride replaced(viewer);
    const std::shared_ptr<AppState> state = stateWithVolumes(30);
    state->mounts = Records{Record{{"name", "volume&1"}, {"mountpoint", "/mnt/one"}}};
    StatusArea area(state);
    const QMenu *volumes = entry(area.menu(), u"Volumes"_s)->menu();
    ASSERT_NE(volumes, nullptr);
    EXPECT_EQ(volumes->actions().size(), 22) << "twenty, a line and the way to the others";
    EXPECT_EQ(volumes->actions().at(1)->text(), u"volume&&1 · …"_s) << "a sign of the name, no key";
    EXPECT_FALSE(volumes->actions().at(0)->isEnabled());
    volumes->actions().at(1)->trigger();
    EXPECT_THAT(opened, ElementsAre(u"/mnt/one"_s));
}

TEST(StatusArea, ItsMenuLeavesNothingBehindHoweverOftenItOpens)
{
    StatusArea area(stateWithVolumes(3));
    for (int time = 0; time < 3; ++time) {
        Q_EMIT area.menu().aboutToShow();
    }
    EXPECT_EQ(area.menu().findChildren<QMenu *>().size(), 1);
}

TEST(StatusArea, ALongNameIsCutWhereNoCharacterIsTornApart)
{
    const std::shared_ptr<AppState> state = stateWithVolumes(1);
    Record volume = state->volumes().first();
    volume["name"] = std::string(59, 'a') + "\U0001F4BE\U0001F4BE";
    Records volumes;
    volumes.append(volume);
    state->volumes = volumes;
    StatusArea area(state);
    const QString text = entry(area.menu(), u"Volumes"_s)->menu()->actions().first()->text();
    EXPECT_TRUE(text.startsWith(QString(59, u'a') + u"… · "_s)) << text.toStdString();
}

TEST(StatusArea, HasNoIconWhereTheDesktopHasNoRoomForOne)
{
    StatusArea area(signedInState());
    area.open();
    EXPECT_FALSE(area.isShown());
}

TEST(StatusIcon, LooksDifferentInEachStateAtEveryScale)
{
    for (const int scale : {1, 2, 3}) {
        const auto picture = [&](Overall overall) {
            return statusIcon(overall).pixmap(QSize(16, 16), scale).toImage();
        };
        EXPECT_EQ(picture(Overall::Protected).width(), 16 * scale);
        EXPECT_NE(picture(Overall::Protected), picture(Overall::Uploading));
        EXPECT_NE(picture(Overall::Protected), picture(Overall::EngineStopped));
        EXPECT_NE(picture(Overall::Uploading), picture(Overall::EngineStopped));
    }
    EXPECT_TRUE(statusIcon(Overall::Protected).isMask()) << "the desktop colours it";
}

} // namespace
} // namespace quillfen
