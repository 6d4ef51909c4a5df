// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesectionmodel.h"

#include "boardtest.h"

#include <QMimeData>

#include <sys/stat.h>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class VolumeSectionModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
        QApplication::clipboard()->clear();
    }

    [[nodiscard]] bool refreshed() const { return agent.count("volumes.list") == 1; }

    std::shared_ptr<VolumeSectionModel> model = std::make_shared<VolumeSectionModel>(state);
};

json::object points(std::initializer_list<const char *> times)
{
    json::array list;
    for (const char *time : times) {
        list.push_back(params("timestamp", time));
    }
    return params("recovery_points", list);
}

TEST_F(VolumeSectionModelTest, CountsThePointsAndNamesTheOldest)
{
    agent.answer("restore_points.list", points({"2025-03-02T10:00:00Z", "2024-08-24T10:00:00Z"}));
    await(model->show(1));
    EXPECT_EQ(model->points(), 2);
    EXPECT_EQ(model->oldest(), u"Aug 24, 2024"_s);
    EXPECT_EQ(sent("restore_points.list"), params("volume_id", 1));
    agent.answer("restore_points.list", points({}));
    await(model->show(2));
    EXPECT_EQ(model->points(), 0);
    EXPECT_EQ(model->oldest(), QString());
}

TEST_F(VolumeSectionModelTest, AnswersForAnEarlierVolumeAreDropped)
{
    agent.on("restore_points.list", [](const json::object &asked) -> FakeAgent::Answer {
        return asked == params("volume_id", 1) ? points({"2024-08-24T10:00:00Z", "2024-08-25T10:00:00Z"})
                                               : points({"2023-01-01T10:00:00Z"});
    });
    agent.hold("restore_points.list");
    const QCoro::Task<> first = model->show(1);
    const QCoro::Task<> second = model->show(2);
    ASSERT_TRUE(eventually([&] { return agent.count("restore_points.list") == 2; }));
    agent.release("restore_points.list");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(model->points(), 1);
    EXPECT_EQ(model->oldest(), u"Jan 1, 2023"_s);
}

TEST_F(VolumeSectionModelTest, AFailureLeavesTheNumbersAndSaysNothing)
{
    agent.answer("restore_points.list", points({"2024-08-24T10:00:00Z"}));
    await(model->show(1));
    state->toast = std::nullopt;
    agent.fail("restore_points.list", {.message = "vault away"});
    await(model->show(1));
    EXPECT_EQ(model->points(), 1);
    EXPECT_EQ(toast(), QString());
    await(model->show(2));
    EXPECT_EQ(model->points(), 0) << "the numbers of one volume never stand at another";
}

TEST_F(VolumeSectionModelTest, StartsTheAppliance)
{
    agent.answer("appliance.deploy", nullptr);
    agent.hold("appliance.deploy");
    const QCoro::Task<> task = model->startAppliance(1, u"photos"_s);
    EXPECT_EQ(toast(), u"Starting the appliance for photos…"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("appliance.deploy") == 1; }));
    agent.release("appliance.deploy");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(toast(), u"appliance for photos started"_s);
    EXPECT_EQ(sent("appliance.deploy"), params("volume_id", 1));
    EXPECT_TRUE(refreshed());
}

TEST_F(VolumeSectionModelTest, MountingLastsAsLongAsTheMount)
{
    agent.answer("appliance.deploy", nullptr);
    agent.answer("mount.attach", nullptr);
    agent.hold("mount.attach");
    const QCoro::Task<> task = model->mount(1, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
    EXPECT_EQ(model->mounting(), QSet<std::int64_t>{1});
    agent.release("mount.attach");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_THAT(model->mounting(), IsEmpty());
    EXPECT_EQ(toast(), u"photos is mounted in ~/Quillfen/photos"_s);
}

TEST_F(VolumeSectionModelTest, MountingEndsWithAFailureToo)
{
    agent.fail("appliance.deploy", {.message = "no room"});
    await(model->mount(1, u"photos"_s));
    EXPECT_THAT(model->mounting(), IsEmpty());
    EXPECT_EQ(toast(), u"no room"_s);
}

TEST_F(VolumeSectionModelTest, TheAgentGoingAwayWithinAMountEndsIt)
{
    agent.answer("appliance.deploy", nullptr);
    agent.silent("mount.attach");
    const QCoro::Task<> task = model->mount(1, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_THAT(model->mounting(), IsEmpty());
    EXPECT_FALSE(state->busy());
    EXPECT_FALSE(toast().isEmpty());
    EXPECT_NE(toast(), u"photos is mounted in ~/Quillfen/photos"_s);
}

TEST_F(VolumeSectionModelTest, Unmounts)
{
    agent.answer("mount.detach", nullptr);
    await(model->unmount(1, u"photos"_s));
    EXPECT_EQ(sent("mount.detach"), params("volume_id", 1, "name", "photos"));
    EXPECT_EQ(toast(), u"unmounted photos"_s);
    EXPECT_TRUE(refreshed());
}

TEST_F(VolumeSectionModelTest, AFailureIsShownAndNothingIsReadAfresh)
{
    agent.fail("mount.detach", {.message = "a file is open"});
    await(model->unmount(1, u"photos"_s));
    EXPECT_EQ(toast(), u"a file is open"_s);
    EXPECT_FALSE(refreshed());
}

TEST_F(VolumeSectionModelTest, GrowsAndTellsThatItIsMountedAgain)
{
    agent.answer("volumes.resize", params("remounted", true));
    agent.hold("volumes.resize");
    const QCoro::Task<> task = model->resize(1, u"photos"_s, 2, 3);
    EXPECT_EQ(toast(), u"Growing photos to 3 GB… the mount comes back by itself when the appliance is done."_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.resize") == 1; }));
    agent.release("volumes.resize");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(sent("volumes.resize"), params("volume_id", 1, "size_bytes", std::int64_t{3221225472}));
    EXPECT_EQ(toast(), u"photos is now 3 GB and mounted again."_s);
    EXPECT_TRUE(refreshed());
}

TEST_F(VolumeSectionModelTest, ShrinksAndTellsTheSize)
{
    agent.silent("volumes.resize");
    const QCoro::Task<> pending = model->resize(1, u"photos"_s, 3, 2);
    EXPECT_TRUE(toast().startsWith(u"Shrinking photos to 2 GB…"_s));
    for (const json::value &answer :
         {json::value(), json::value(params("remounted", false)), json::value(params("remounted", "true"))}) {
        agent.answer("volumes.resize", answer);
        await(model->resize(1, u"photos"_s, 3, 2));
        EXPECT_EQ(toast(), u"photos is now 2 GB."_s);
    }
}

TEST_F(VolumeSectionModelTest, DeletesAndTheSecondDeleteEndsInTheAgentsWords)
{
    int deletes = 0;
    agent.on("volumes.remove", [&](const json::object &) -> FakeAgent::Answer {
        return ++deletes == 1 ? FakeAgent::Answer(json::value()) : FakeAgent::Error{.message = "no such volume"};
    });
    agent.hold("volumes.remove");
    const QCoro::Task<> first = model->remove(1, u"photos"_s);
    EXPECT_EQ(toast(), u"Deleting photos: unmounting, then stopping its appliance once its last writes reach the "
                       "vault…"_s);
    const QCoro::Task<> second = model->remove(1, u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.remove") == 2; }));
    agent.release("volumes.remove");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(toast(), u"no such volume"_s);
    EXPECT_EQ(agent.requests("volumes.remove").front().params, params("volume_id", 1));
    give({volume(2, u"music"_s)});
    await(model->remove(2, u"music"_s));
    EXPECT_EQ(toast(), u"no such volume"_s);
}

TEST_F(VolumeSectionModelTest, ADeleteSaysWhatIsGone)
{
    agent.answer("volumes.remove", nullptr);
    await(model->remove(1, u"photos"_s));
    EXPECT_EQ(toast(), u"deleted photos; its appliance is removed from this Mac"_s);
    EXPECT_TRUE(refreshed());
}

TEST_F(VolumeSectionModelTest, WhatIsStartedEndsAfterTheModelIsLetGo)
{
    agent.answer("volumes.remove", nullptr);
    agent.hold("volumes.remove");
    const QCoro::Task<> task = model->remove(1, u"photos"_s);
    model.reset();
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.remove") == 1; }));
    agent.release("volumes.remove");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(toast(), u"deleted photos; its appliance is removed from this Mac"_s);
}

TEST_F(VolumeSectionModelTest, CopiesAKeyMarkedAsASecret)
{
    const QString path = home.path() + u"/.quill/quill-photos.key"_s;
    writeFile(path, "k-1234\n");
    model->copyKey(path);
    EXPECT_EQ(QApplication::clipboard()->text(), u"k-1234\n"_s);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(u"x-kde-passwordManagerHint"_s), "secret");
    EXPECT_EQ(toast(), u"Key copied."_s);
}

TEST_F(VolumeSectionModelTest, AKeyThatCannotBeReadLeavesTheClipboard)
{
    QApplication::clipboard()->setText(u"before"_s);
    const QString folder = home.path() + u"/.quill"_s;
    writeFile(folder + u"/huge.key"_s, QByteArray(1 << 20, 'k'));
    writeFile(folder + u"/binary.key"_s, QByteArray("\xff\xfe\x80", 3));
    ASSERT_EQ(::mkfifo((folder + u"/pipe.key"_s).toUtf8().constData(), 0600), 0);
    for (const QString &path : {folder + u"/none.key"_s, folder, folder + u"/huge.key"_s, folder + u"/binary.key"_s,
                                folder + u"/pipe.key"_s}) {
        model->copyKey(path);
        EXPECT_EQ(QApplication::clipboard()->text(), u"before"_s) << path.toStdString();
        EXPECT_EQ(toast(), QString());
    }
}

TEST_F(VolumeSectionModelTest, TimeTravelNavigates)
{
    json::object heard;
    const auto listening =
        state->notifications().listen(Notifications::navigate, [&](const json::object &where) { heard = where; });
    model->timeTravel(2);
    EXPECT_EQ(heard, params("section", "timetravel", "volume", 2));
}

} // namespace
