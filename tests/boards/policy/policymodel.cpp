// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policymodel.h"

#include "boardtest.h"

#include "state/clock.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::IsEmpty;

constexpr Policy light{60, 12, 3, 1, 1, 0};
constexpr Policy extended{2880, 72, 30, 12, 12, 3};

json::value output(const char *text)
{
    return params("output", text);
}

class PolicyModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
        agent.answer("history.show", output("720,24,7,4,6,1"));
        agent.answer("history.set", json::object());
        agent.answer("volumes.snapshots", json::object());
    }

    [[nodiscard]] bool asked(std::size_t times) const
    {
        return eventually([&] { return agent.count("history.show") == times; });
    }

    /// Volume 2, whose policy is "extended", comes to be shown while that of volume 1 is on its way to the agent.
    [[nodiscard]] QCoro::Task<> leaveWhileSaving()
    {
        agent.on("history.show", [](const json::object &request) -> FakeAgent::Answer {
            return request.at("volume_id") == json::value(2) ? output("2880,72,30,12,12,3") : output("720,24,7,4,6,1");
        });
        await(model->load());
        model->usePlan(0);
        agent.hold("history.set");
        QCoro::Task<> save = model->save();
        EXPECT_TRUE(eventually([&] { return agent.count("history.set") == 1; }));
        model->pickVolume(2);
        EXPECT_TRUE(eventually([&] { return model->saved() == extended; }));
        return save;
    }

    std::shared_ptr<PolicyModel> model = std::make_shared<PolicyModel>(state);
};

TEST_F(PolicyModelTest, ReadsThePolicyOfTheFirstVolume)
{
    agent.answer("history.show", output("60, 12,3,1,1,0"));
    await(model->load());
    EXPECT_EQ(sent("history.show"), params("volume_id", 1));
    EXPECT_EQ(model->values(), light);
    EXPECT_EQ(model->saved(), light);
    EXPECT_FALSE(model->canSave());
}

TEST_F(PolicyModelTest, AVolumeThatIsGoneMakesRoomForTheFirst)
{
    model->pickVolume(2);
    ASSERT_TRUE(asked(1));
    EXPECT_EQ(model->shownId(), 2);
    give({volume(1, u"photos"_s)});
    EXPECT_EQ(model->shownId(), 1);
}

TEST_F(PolicyModelTest, WithoutAVolumeNothingIsAskedAndNothingSent)
{
    give({});
    model->usePlan(0);
    await(model->load());
    await(model->save());
    await(model->pin());
    EXPECT_FALSE(model->canSave());
    EXPECT_THAT(agent.log(), IsEmpty());
    EXPECT_EQ(toast(), QString());
}

class MalformedOutput : public PolicyModelTest, public testing::WithParamInterface<const char *> {};

TEST_P(MalformedOutput, LeavesTheBoardAsItIs)
{
    agent.answer("history.show", output("2880,72,30,12,12,3"));
    await(model->load());
    agent.answer("history.show", json::parse(GetParam()));
    await(model->load());
    EXPECT_EQ(model->values(), extended);
    EXPECT_EQ(model->saved(), extended);
    EXPECT_EQ(toast(), QString());
}

INSTANTIATE_TEST_SUITE_P(Outputs, MalformedOutput,
                         testing::Values(R"({"output": "720,24,7,4,6"})", R"({"output": "720,24,7,4,6,-1"})",
                                         R"({"output": "1,x,3,4,5,6"})", R"({"output": ""})", R"({"output": 7})",
                                         R"({"output": null})", R"({})", R"([1,2,3,4,5,6])", R"("720,24,7,4,6,1")",
                                         R"(null)"));

TEST_F(PolicyModelTest, AFailedLoadIsSilent)
{
    agent.answer("history.show", output("60,12,3,1,1,0"));
    await(model->load());
    agent.fail("history.show", {.message = "vault away"});
    await(model->load());
    EXPECT_EQ(model->values(), light);
    EXPECT_EQ(model->saved(), light);
    EXPECT_EQ(toast(), QString());
}

TEST_F(PolicyModelTest, AnUnsavedChoiceSurvivesARefresh)
{
    await(model->load());
    model->setValue(0, 60);
    agent.answer("history.show", output("2880,72,30,12,12,3"));
    await(model->load());
    EXPECT_EQ(model->values(), (Policy{60, 24, 7, 4, 6, 1}));
    EXPECT_EQ(model->saved(), extended);
    EXPECT_TRUE(model->canSave());
}

TEST_F(PolicyModelTest, AnotherVolumeBeginsWithoutTheUnsavedChoice)
{
    await(model->load());
    model->setValue(0, 60);
    agent.fail("history.show", {.message = "vault away"});
    model->pickVolume(2);
    ASSERT_TRUE(asked(2));
    EXPECT_EQ(model->values(), standardPolicy);
    EXPECT_FALSE(model->canSave()) << "what was chosen for one volume is never saved for another";
}

TEST_F(PolicyModelTest, PickingAVolumeLoadsItsPolicy)
{
    agent.on("history.show", [](const json::object &asked) -> FakeAgent::Answer {
        return asked.at("volume_id") == json::value(2) ? output("60,12,3,1,1,0") : output("2880,72,30,12,12,3");
    });
    await(model->load());
    EXPECT_EQ(model->values(), extended);
    model->pickVolume(2);
    EXPECT_TRUE(eventually([&] { return model->values() == light; }));
    model->pickVolume(2);
    EXPECT_EQ(agent.count("history.show"), 2U) << "the volume that is shown is not read again";
}

TEST_F(PolicyModelTest, AnAnswerForAnEarlierVolumeIsDropped)
{
    agent.on("history.show", [](const json::object &asked) -> FakeAgent::Answer {
        return asked.at("volume_id") == json::value(2) ? output("60,12,3,1,1,0") : output("2880,72,30,12,12,3");
    });
    agent.hold("history.show");
    const QCoro::Task<> first = model->load();
    model->pickVolume(2);
    ASSERT_TRUE(asked(2));
    agent.release("history.show");
    ASSERT_TRUE(eventually([&] { return first.isReady() && model->saved() == light; }));
    EXPECT_EQ(model->values(), light);
}

TEST_F(PolicyModelTest, FollowsTheListOfVolumes)
{
    model->follow();
    ASSERT_TRUE(asked(1));
    model->follow();
    give({with(volume(1, u"photos"_s), "name", "pictures"), volume(2, u"music"_s)});
    model->follow();
    give({volume(2, u"music"_s), volume(1, u"photos"_s)});
    agent.clearLog();
    model->follow();
    EXPECT_TRUE(asked(1)) << "another order is another first volume";
    EXPECT_EQ(sent("history.show"), params("volume_id", 2));
}

TEST_F(PolicyModelTest, SavesTheSixNumbers)
{
    await(model->load());
    model->usePlan(0);
    EXPECT_TRUE(model->canSave());
    await(model->save());
    EXPECT_EQ(sent("history.set"), params("volume_id", 1, "policy", "60,12,3,1,1,0"));
    EXPECT_EQ(toast(), u"policy saved"_s);
    EXPECT_EQ(model->saved(), light);
    EXPECT_FALSE(model->canSave());
    EXPECT_EQ(agent.count("volumes.list"), 0U) << "the state does not know of policies";
}

TEST_F(PolicyModelTest, AFailedSaveIsToldAndStaysToBeSaved)
{
    await(model->load());
    model->usePlan(2);
    agent.fail("history.set", {.message = "photos is being resized; wait until that is done."});
    await(model->save());
    EXPECT_EQ(toast(), u"photos is being resized; wait until that is done."_s);
    EXPECT_EQ(model->saved(), standardPolicy);
    EXPECT_EQ(model->values(), extended);
    EXPECT_TRUE(model->canSave());
    EXPECT_THAT(model->saving(), IsEmpty());
}

TEST_F(PolicyModelTest, WhatIsChosenWhileASaveRunsIsStillToBeSaved)
{
    await(model->load());
    model->usePlan(0);
    agent.hold("history.set");
    const QCoro::Task<> save = model->save();
    ASSERT_TRUE(eventually([&] { return agent.count("history.set") == 1; }));
    EXPECT_EQ(model->saving(), QSet<std::int64_t>{1});
    model->usePlan(2);
    await(model->save());
    EXPECT_EQ(agent.count("history.set"), 1U) << "one at a time";
    agent.release("history.set");
    await(save);
    EXPECT_EQ(model->saved(), light);
    EXPECT_EQ(model->values(), extended);
    EXPECT_TRUE(model->canSave());
}

TEST_F(PolicyModelTest, ASaveThatEndsAfterAnotherVolumeWasPickedLeavesThatOneAlone)
{
    const QCoro::Task<> save = leaveWhileSaving();
    agent.release("history.set");
    await(save);
    EXPECT_EQ(toast(), u"policy saved"_s);
    EXPECT_EQ(model->saved(), extended);
    EXPECT_EQ(model->values(), extended);
}

TEST_F(PolicyModelTest, ASaveThatEndsAfterOneCameBackIsWhatIsShown)
{
    const QCoro::Task<> save = leaveWhileSaving();
    model->pickVolume(1);
    ASSERT_TRUE(eventually([&] { return model->saved() == standardPolicy; }));
    agent.release("history.set");
    await(save);
    EXPECT_EQ(model->saved(), light);
    EXPECT_EQ(model->values(), light);
    EXPECT_FALSE(model->canSave());
}

TEST_F(PolicyModelTest, ALoadFromBeforeASaveDoesNotUndoIt)
{
    await(model->load());
    model->usePlan(0);
    agent.hold("history.show");
    const QCoro::Task<> load = model->load();
    ASSERT_TRUE(asked(2));
    await(model->save());
    agent.release("history.show");
    await(load);
    EXPECT_EQ(model->saved(), light);
    EXPECT_EQ(model->values(), light);
}

TEST_F(PolicyModelTest, PinsThePresentMoment)
{
    const ClockOverride clock([] { return Instant(std::chrono::sys_days(std::chrono::year(2026) / 11 / 20)); });
    agent.hold("volumes.snapshots");
    const QCoro::Task<> pin = model->pin();
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.snapshots") == 1; }));
    EXPECT_EQ(model->pinning(), QSet<std::int64_t>{1});
    agent.release("volumes.snapshots");
    await(pin);
    EXPECT_EQ(sent("volumes.snapshots"), params("volume_id", 1, "label", "pinned Nov 20"));
    EXPECT_EQ(toast(), u"pinned"_s);
    EXPECT_THAT(model->pinning(), IsEmpty());
}

TEST_F(PolicyModelTest, AFailedPinIsTold)
{
    agent.fail("volumes.snapshots", {.message = "no room"});
    await(model->pin());
    EXPECT_EQ(toast(), u"no room"_s);
    EXPECT_THAT(model->pinning(), IsEmpty());
}

enum class Act { Save, Pin };

void PrintTo(Act act, std::ostream *out)
{
    *out << (act == Act::Save ? "Save" : "Pin");
}

class AgentGone : public PolicyModelTest, public testing::WithParamInterface<Act> {};

TEST_P(AgentGone, DuringAnActionLeavesOneMessageAndABoardThatWorksAgain)
{
    await(model->load());
    model->usePlan(0);
    const bool saves = GetParam() == Act::Save;
    const char *const method = saves ? "history.set" : "volumes.snapshots";
    agent.silent(method);
    int messages = 0;
    const Observer watch(
        {&state->toast}, [&] { ++messages; }, std::chrono::milliseconds(0));
    const QCoro::Task<> action = saves ? model->save() : model->pin();
    ASSERT_TRUE(eventually([&] { return agent.count(method) == 1; }));
    agent.hangUp();
    await(action);
    EXPECT_NE(toast(), QString());
    const QString message = toast();
    EXPECT_TRUE(eventually([&] { return !state->connected(); }));
    EXPECT_TRUE(eventually([&] { return messages == 1; }));
    EXPECT_EQ(toast(), message);
    EXPECT_EQ(messages, 1);

    agent.answer(method, json::object());
    state->connect();
    ASSERT_TRUE(eventually([&] { return state->connected(); }));
    EXPECT_TRUE(model->canSave()) << "what was chosen is not lost";
    await(saves ? model->save() : model->pin());
    EXPECT_EQ(toast(), saves ? u"policy saved"_s : u"pinned"_s);
}

INSTANTIATE_TEST_SUITE_P(Actions, AgentGone, testing::Values(Act::Save, Act::Pin));

} // namespace
