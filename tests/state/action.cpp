// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/action.h"

#include "statetest.h"

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

namespace {

class PerformTest : public StateTest {
protected:
    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(connectAndSettle());
        agent.answer("do.it", params("count", 3));
        action.method = "do.it";
        action.params = params("a", 1);
    }

    std::optional<json::value> done() { return await(perform(state, action)); }

    Action action;
};

TEST_F(PerformTest, TellsBeforeAndAfterAndReadsTheStateAfresh)
{
    action.before = u"Doing…"_s;
    action.done = [](const json::value &answer) { return u"done %1"_s.arg(num(object(&answer), "count")); };
    agent.hold("do.it");
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    EXPECT_EQ(state->toast(), u"Doing…"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("do.it") == 1; }));
    EXPECT_EQ(agent.requests("do.it").front().params, params("a", 1));
    agent.hold("auth.status");
    agent.release("do.it");
    ASSERT_TRUE(eventually([&] { return agent.count("auth.status") == 1; }));
    EXPECT_EQ(state->toast(), u"done 3"_s);
    EXPECT_FALSE(task.isReady());
    agent.release("auth.status");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
}

TEST_F(PerformTest, ReturnsTheAnswer)
{
    EXPECT_EQ(done(), json::value(params("count", 3)));
    EXPECT_EQ(state->toast(), std::nullopt) << "an action without words says nothing";
}

TEST_F(PerformTest, AFailureIsShownAndNothingIsReadAfresh)
{
    action.done = saying(u"done"_s);
    agent.fail("do.it", {.message = "cannot"});
    EXPECT_EQ(done(), std::nullopt);
    EXPECT_EQ(state->toast(), u"cannot"_s);
    EXPECT_EQ(agent.count("auth.status"), 0U);
}

TEST_F(PerformTest, MayLeaveTheStateAlone)
{
    action.refresh = false;
    action.done = saying(u"done"_s);
    EXPECT_TRUE(done().has_value());
    EXPECT_EQ(state->toast(), u"done"_s);
    EXPECT_EQ(agent.count("auth.status"), 0U);
}

TEST_F(PerformTest, AnAgentThatHasGoneIsAFailureLikeAnother)
{
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    state->toast = std::nullopt;
    EXPECT_EQ(done(), std::nullopt);
    EXPECT_TRUE(state->toast().has_value());
}

TEST_F(PerformTest, AnAgentThatGoesMeanwhileEndsTheAction)
{
    agent.silent("do.it");
    action.done = saying(u"done"_s);
    const QCoro::Task<std::optional<json::value>> task = perform(state, action);
    ASSERT_TRUE(eventually([&] { return agent.count("do.it") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_TRUE(state->toast().has_value());
    EXPECT_NE(state->toast(), u"done"_s);
}

TEST_F(PerformTest, OutlivesWhoeverStartedIt)
{
    action.done = saying(u"done"_s);
    agent.hold("do.it");
    {
        const QCoro::Task<std::optional<json::value>> dropped = perform(state, action);
    }
    ASSERT_TRUE(eventually([&] { return agent.count("do.it") == 1; }));
    agent.release("do.it");
    EXPECT_TRUE(eventually([&] { return state->toast() == u"done"_s; }));
    settle();
}

} // namespace
