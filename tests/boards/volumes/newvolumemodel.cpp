// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/newvolumemodel.h"

#include "boardtest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

NewVolumeForm form(const QString &name, std::int64_t size = 5)
{
    NewVolumeForm filled;
    filled.name = name;
    filled.sizeGB = size;
    return filled;
}

PlanRoom room(double freeGB)
{
    return {.known = true, .freeGB = freeGB};
}

TEST(PlanRoom, IsWhatIsBoughtLessWhatIsAllocated)
{
    const auto state = stateWith({volume(1, u"a"_s, 100 * gigabyte), volume(2, u"b"_s, 50 * gigabyte)});
    EXPECT_FALSE(planRoom(*state).known);
    EXPECT_EQ(planRoomText(planRoom(*state)), u"Loading your plan…"_s);
    state->account = params("purchased_capacity_bytes", 160 * gigabyte + gigabyte / 2);
    EXPECT_TRUE(planRoom(*state).known);
    EXPECT_DOUBLE_EQ(planRoom(*state).freeGB, 10.5);
}

TEST(PlanRoom, TheSliderRunsToTheWholeGBThatAreLeft)
{
    EXPECT_EQ(room(10.5).largestGB(), 10);
    EXPECT_EQ(planRoomText(room(10.5)), u"10 GB left on your plan. History is kept inside this space."_s);
    EXPECT_EQ(room(1.0).largestGB(), 2);
    EXPECT_EQ(planRoomText(room(1.0)), u"1 GB left on your plan. History is kept inside this space."_s);
}

TEST(PlanRoom, AFullPlanSaysSoAndStillHasASlider)
{
    for (const double left : {0.4, 0.0, -20.0}) {
        EXPECT_EQ(room(left).largestGB(), 2);
        EXPECT_EQ(room(left).suggestedGB(), 1);
        EXPECT_EQ(planRoomText(room(left)), u"Your plan is fully allocated; resize or delete a volume first."_s);
    }
}

TEST(PlanRoom, SuggestsOneHundredOrWhatIsLeft)
{
    EXPECT_EQ(room(760).suggestedGB(), 100);
    EXPECT_EQ(room(99.9).suggestedGB(), 99);
}

TEST(NewVolumeForm, NeedsAName)
{
    for (const QString &name : {u""_s, u"   "_s, u"\t\n"_s, u"\u00a0"_s}) {
        EXPECT_EQ(problemOf(form(name), room(10)), u"Give the volume a name."_s);
    }
    EXPECT_EQ(problemOf(form(u" a "_s), room(10)), std::nullopt);
}

TEST(NewVolumeForm, FitsIntoWhatIsLeft)
{
    EXPECT_EQ(problemOf(form(u"a"_s, 10), room(10.5)), std::nullopt);
    EXPECT_EQ(problemOf(form(u"a"_s, 11), room(10.5)), u"Only 10 GB are left on your plan."_s);
    EXPECT_EQ(problemOf(form(u"a"_s, 1), room(0.4)), std::nullopt);
    EXPECT_EQ(problemOf(form(u"a"_s, 2), room(0.4)), u"Only 0 GB are left on your plan."_s);
    EXPECT_EQ(problemOf(form(u"a"_s, 2), room(-7)), u"Only 0 GB are left on your plan."_s);
    EXPECT_EQ(problemOf(form(u"a"_s, 5'000), PlanRoom()), std::nullopt) << "the plan is not known yet";
}

TEST(NewVolumeForm, IsSentTrimmedAndInBytes)
{
    EXPECT_EQ(createParams(form(u"  Documents "_s)),
              params("name", "Documents", "size_bytes", std::int64_t{5368709120}, "presentation_type", "smb"));
    NewVolumeForm own = form(u"a"_s);
    own.share = u"iscsi"_s;
    own.encrypt = true;
    EXPECT_EQ(createParams(own), params("name", "a", "size_bytes", std::int64_t{5368709120}, "presentation_type",
                                        "iscsi", "encryption", "customer"));
}

class NewVolumeModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        agent.answer("account", params("purchased_capacity_bytes", 100 * gigabyte));
        give({});
        state->showNewVolume = true;
        agent.answer("volumes.create", params("id", 42));
        agent.answer("appliance.deploy", nullptr);
        agent.answer("mount.attach", nullptr);
    }

    NewVolumeForm wanted = form(u"photos"_s);
    std::shared_ptr<NewVolumeModel> model = std::make_shared<NewVolumeModel>(state);
};

TEST_F(NewVolumeModelTest, CreatesRefreshesClosesAndMounts)
{
    agent.hold("volumes.create");
    agent.hold("auth.status");
    agent.hold("appliance.deploy");
    const QCoro::Task<> task = model->create(wanted);
    EXPECT_TRUE(model->busy());
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.create") == 1; }));
    agent.release("volumes.create");
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    EXPECT_EQ(toast(), u"Created photos"_s);
    EXPECT_TRUE(state->showNewVolume()) << "the board shows the volume before the sheet goes";
    EXPECT_EQ(agent.count("appliance.deploy"), 0U);
    agent.release("auth.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_FALSE(state->showNewVolume());
    EXPECT_FALSE(model->busy());
    ASSERT_TRUE(eventually([&] { return agent.count("appliance.deploy") == 1; }));
    agent.release("appliance.deploy");
    ASSERT_TRUE(eventually([&] { return toast() == u"photos is mounted in ~/Quillfen/photos"_s; }));
    EXPECT_EQ(sent("appliance.deploy"), params("volume_id", 42));
}

TEST_F(NewVolumeModelTest, MountsOnlyWhenAskedTo)
{
    wanted.mountHere = false;
    await(model->create(wanted));
    wanted.mountHere = true;
    wanted.share = u"iscsi"_s;
    await(model->create(wanted));
    QTest::qWait(30);
    EXPECT_EQ(agent.count("volumes.create"), 2U);
    EXPECT_EQ(agent.count("appliance.deploy"), 0U);
}

TEST_F(NewVolumeModelTest, AProblemOfTheFormIsNotSent)
{
    await(model->create(form(u"  "_s)));
    EXPECT_EQ(model->error(), u"Give the volume a name."_s);
    EXPECT_TRUE(model->nameInvalid());
    await(model->create(form(u"a"_s, 101)));
    EXPECT_EQ(model->error(), u"Only 100 GB are left on your plan."_s);
    EXPECT_FALSE(model->nameInvalid()) << "the name is right";
    EXPECT_EQ(agent.count("volumes.create"), 0U);
    EXPECT_TRUE(state->showNewVolume());
}

TEST_F(NewVolumeModelTest, AProblemGoesWhenItIsSolved)
{
    model->edited(form(u""_s));
    EXPECT_EQ(model->error(), QString()) << "nobody is blamed before the first attempt";
    await(model->create(form(u""_s, 101)));
    model->edited(form(u"a"_s, 101));
    EXPECT_EQ(model->error(), u"Only 100 GB are left on your plan."_s);
    model->edited(form(u"a"_s, 100));
    EXPECT_EQ(model->error(), QString());
    EXPECT_FALSE(model->nameInvalid());
}

TEST_F(NewVolumeModelTest, TheAgentsRefusalStaysUntilTheNextAttempt)
{
    agent.fail("volumes.create", {.message = "a volume called photos is there already"});
    await(model->create(wanted));
    EXPECT_EQ(model->error(), u"a volume called photos is there already"_s);
    EXPECT_TRUE(model->nameInvalid());
    EXPECT_FALSE(model->busy());
    EXPECT_TRUE(state->showNewVolume());
    EXPECT_EQ(toast(), QString());
    model->edited(form(u"photos2"_s));
    EXPECT_EQ(model->error(), u"a volume called photos is there already"_s);
    agent.answer("volumes.create", params("id", 7));
    wanted.name = u"photos2"_s;
    await(model->create(wanted));
    EXPECT_EQ(model->error(), QString());
    EXPECT_FALSE(state->showNewVolume());
}

TEST_F(NewVolumeModelTest, ASecondEnterSendsNothing)
{
    agent.hold("volumes.create");
    const QCoro::Task<> first = model->create(wanted);
    await(model->create(wanted));
    model->cancel();
    EXPECT_TRUE(state->showNewVolume()) << "what is being created cannot be cancelled";
    agent.release("volumes.create");
    ASSERT_TRUE(eventually([&] { return first.isReady(); }));
    EXPECT_EQ(agent.count("volumes.create"), 1U);
}

TEST_F(NewVolumeModelTest, TheAgentGoingAwayIsAnErrorOfTheForm)
{
    agent.silent("volumes.create");
    const QCoro::Task<> task = model->create(wanted);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.create") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(model->error(), u"the agent connection closed"_s);
    EXPECT_FALSE(model->nameInvalid()) << "nobody has read the name";
    EXPECT_FALSE(model->busy());
    EXPECT_TRUE(state->showNewVolume());
}

TEST_F(NewVolumeModelTest, AnotherSheetIsNotClosedByTheFirst)
{
    agent.hold("auth.status");
    const QCoro::Task<> task = model->create(wanted);
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    state->showNewVolume = false;
    state->showNewVolume = true;
    agent.release("auth.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_TRUE(state->showNewVolume());
}

TEST_F(NewVolumeModelTest, OddNamesAreTheAgentsToJudge)
{
    wanted.mountHere = false;
    for (const QString &name : {u"a/b"_s, u".hidden"_s, u"📷 photos"_s, u"صور"_s, QString(300, u'x'), u"%1 %2"_s}) {
        wanted.name = name;
        await(model->create(wanted));
        EXPECT_EQ(str(sent("volumes.create"), "name"), name);
        EXPECT_EQ(toast(), u"Created "_s + name);
    }
}

TEST_F(NewVolumeModelTest, CancelClosesTheSheet)
{
    model->cancel();
    EXPECT_FALSE(state->showNewVolume());
}

} // namespace
