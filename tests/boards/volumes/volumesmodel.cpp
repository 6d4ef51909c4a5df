// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesmodel.h"

#include "boardtest.h"

#include <gmock/gmock.h>

namespace {

using namespace quillfen;

TEST(VolumesModel, BeginsWithAnEmptySearch)
{
    const VolumesModel model(stateWith({}));
    EXPECT_EQ(model.query(), QString());
}

TEST(VolumesModel, SelectsForAllBoards)
{
    const auto state = stateWith(manyVolumes(3));
    VolumesModel model(state);
    model.selectVolume(2);
    EXPECT_EQ(state->selectedVolume(), 2);
}

TEST(VolumesModel, SelectingTheSelectedVolumeAnnouncesNothing)
{
    const auto state = stateWith(manyVolumes(3));
    VolumesModel model(state);
    model.selectVolume(2);
    int renders = 0;
    const Observer observer(
        {&state->selectedVolume}, [&renders] { ++renders; }, std::chrono::milliseconds(1));
    model.selectVolume(2);
    QTest::qWait(30);
    EXPECT_EQ(renders, 0);
    model.selectVolume(3);
    EXPECT_TRUE(eventually([&] { return renders == 1; }));
}

TEST(VolumesModel, AsksForTheNewVolumeSheet)
{
    const auto state = stateWith({});
    VolumesModel model(state);
    model.newVolume();
    EXPECT_TRUE(state->showNewVolume());
}

class VolumesModelActions : public test::BoardTest {
protected:
    std::shared_ptr<VolumesModel> model = std::make_shared<VolumesModel>(state);
};

TEST_F(VolumesModelActions, RemovesAnOrphanPatiently)
{
    agent.answer("appliance.remove", nullptr);
    agent.hold("appliance.remove");
    const QCoro::Task<> task = model->removeOrphan(QStringLiteral("quill-vol-9"));
    EXPECT_EQ(toast(), QStringLiteral("Stopping quill-vol-9…"));
    ASSERT_TRUE(eventually([&] { return agent.count("appliance.remove") == 1; }));
    agent.release("appliance.remove");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(sent("appliance.remove"), params("container", "quill-vol-9"));
    EXPECT_EQ(toast(), QStringLiteral("quill-vol-9 removed"));
    EXPECT_EQ(agent.count("appliance.orphans"), 1U) << "the state is read afresh";
}

TEST_F(VolumesModelActions, DiscardsACopy)
{
    agent.answer("recovery.delete", nullptr);
    await(model->discardCopy(12));
    EXPECT_EQ(sent("recovery.delete"), params("recovery_id", 12));
    EXPECT_EQ(toast(), QStringLiteral("discarded"));
    EXPECT_EQ(agent.count("volumes.list"), 1U);
}

TEST_F(VolumesModelActions, PromotesACopyUnderItsNewName)
{
    agent.answer("recovery.promote", nullptr);
    await(model->promoteCopy(12, QStringLiteral("old docs %1")));
    EXPECT_EQ(sent("recovery.promote"), params("recovery_id", 12, "new_name", "old docs %1"));
    EXPECT_EQ(toast(), QStringLiteral("old docs %1 is a volume now; click Mount to start it on this Mac."));
    EXPECT_EQ(agent.count("volumes.list"), 1U);
}

TEST_F(VolumesModelActions, FailuresAreShownAndLeaveTheLists)
{
    for (const char *method : {"appliance.remove", "recovery.delete", "recovery.promote"}) {
        agent.fail(method, {.message = std::string("no ") + method});
    }
    await(model->removeOrphan(QStringLiteral("x")));
    EXPECT_EQ(toast(), QStringLiteral("no appliance.remove"));
    await(model->discardCopy(1));
    EXPECT_EQ(toast(), QStringLiteral("no recovery.delete"));
    await(model->promoteCopy(1, QStringLiteral("x")));
    EXPECT_EQ(toast(), QStringLiteral("no recovery.promote"));
    EXPECT_EQ(agent.count("auth.status"), 0U);
}

} // namespace
