// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/iscsimodel.h"
#include "boards/volumes/volumesectionmodel.h"
#include "boards/volumes/volumesmodel.h"

#include "boardtest.h"

#include <ostream>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

/// One action of the Volumes board on a volume, an appliance or a copy.
struct Deed {
    const char *name;
    const char *method; ///< the call that it is about
    QCoro::Task<> (*run)(const std::shared_ptr<AppState> &state);
};

std::ostream &operator<<(std::ostream &stream, const Deed &deed)
{
    return stream << deed.name;
}

std::shared_ptr<VolumeSectionModel> card(const std::shared_ptr<AppState> &state)
{
    return std::make_shared<VolumeSectionModel>(state);
}

std::shared_ptr<VolumesModel> board(const std::shared_ptr<AppState> &state)
{
    return std::make_shared<VolumesModel>(state);
}

std::shared_ptr<IscsiModel> target(const std::shared_ptr<AppState> &state)
{
    return std::make_shared<IscsiModel>(state);
}

using State = std::shared_ptr<AppState>;

constexpr std::array deeds{
    Deed{"Start", "appliance.deploy", [](const State &s) { return card(s)->startAppliance(1, u"photos"_s); }},
    Deed{"Mount", "appliance.deploy", [](const State &s) { return card(s)->mount(1, u"photos"_s); }},
    Deed{"Unmount", "mount.detach", [](const State &s) { return card(s)->unmount(1, u"photos"_s); }},
    Deed{"Resize", "volumes.resize", [](const State &s) { return card(s)->resize(1, u"photos"_s, 2, 3); }},
    Deed{"Delete", "volumes.remove", [](const State &s) { return card(s)->remove(1, u"photos"_s); }},
    Deed{"RemoveOrphan", "appliance.remove", [](const State &s) { return board(s)->removeOrphan(u"quill-vol-9"_s); }},
    Deed{"DiscardCopy", "recovery.delete", [](const State &s) { return board(s)->discardCopy(9); }},
    Deed{"PromoteCopy", "recovery.promote", [](const State &s) { return board(s)->promoteCopy(9, u"old"_s); }},
    Deed{"SavePortal", "volumes.iscsi.set", [](const State &s) { return target(s)->save(1, u"10.0.0.5"_s); }},
    Deed{"ChapOff", "volumes.iscsi.set", [](const State &s) { return target(s)->setChap(1, false); }},
};

class TroubleTest : public BoardTest, public testing::WithParamInterface<Deed> {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        give({volume(1, u"photos"_s)});
        for (const char *method : {"volumes.iscsi", "volumes.iscsi.local"}) {
            agent.answer(method, json::object());
        }
    }

    /// Waits for the end of `task`, and notes every notice from now on.
    QStringList noticesOf(const QCoro::Task<> &task)
    {
        QStringList said;
        const Observer observer(
            {&state->toast}, [&] { said << toast(); }, std::chrono::milliseconds(0));
        EXPECT_TRUE(eventually([&] { return task.isReady(); }));
        EXPECT_TRUE(eventually([&] { return !said.isEmpty(); }));
        return said;
    }

    /// The state as nobody has touched it: what was begun and did not come to an end leaves nothing behind.
    void expectUntouched() const
    {
        EXPECT_EQ(state->volumes().size(), 1);
        EXPECT_FALSE(state->busy());
        EXPECT_EQ(agent.count("volumes.list"), 0U) << "only a success is followed by a refresh";
    }
};

TEST_P(TroubleTest, AnErrorIsSaidInItsOwnWordsAndChangesNothing)
{
    agent.fail(GetParam().method, {.message = "the vault is full"});
    agent.hold(GetParam().method);
    const QCoro::Task<> task = GetParam().run(state);
    ASSERT_TRUE(eventually([&] { return agent.count(GetParam().method) == 1; }));
    agent.release(GetParam().method);
    EXPECT_THAT(noticesOf(task), ElementsAre(u"the vault is full"_s));
    expectUntouched();
}

TEST_P(TroubleTest, AnAgentThatGoesAwayMeanwhileIsOneMessage)
{
    agent.silent(GetParam().method);
    const QCoro::Task<> task = GetParam().run(state);
    ASSERT_TRUE(eventually([&] { return agent.count(GetParam().method) == 1; }));
    agent.stop();
    EXPECT_THAT(noticesOf(task), ElementsAre(u"the agent connection closed"_s));
    expectUntouched();
}

TEST_P(TroubleTest, AnAgentThatHasGoneBeforeTheCallIsOneMessage)
{
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    const QCoro::Task<> task = GetParam().run(state);
    EXPECT_EQ(noticesOf(task).last(), u"the agent connection closed"_s);
    expectUntouched();
}

TEST_P(TroubleTest, TheSameActionSucceedsOnceTheAgentIsBack)
{
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    await(GetParam().run(state));
    agent.restart();
    state->connect();
    ASSERT_TRUE(eventually([&] { return state->connected(); }));
    agent.answer(GetParam().method, nullptr);
    agent.answer("mount.attach", nullptr);
    await(GetParam().run(state));
    EXPECT_NE(toast(), u"the agent connection closed"_s);
    EXPECT_EQ(agent.count(GetParam().method), 1U);
}

INSTANTIATE_TEST_SUITE_P(Volumes, TroubleTest, testing::ValuesIn(deeds),
                         [](const auto &each) { return std::string(each.param.name); });

} // namespace
