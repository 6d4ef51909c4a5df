// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/ask.h"

#include "statetest.h"

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

namespace {

class AskTest : public StateTest {
protected:
    void SetUp() override { connectAndSettle(); }
};

TEST_F(AskTest, ResumesWithTheAnswer)
{
    agent.answer("admin.users.list", parsed(R"({"users":[]})"));
    const Answer answer = await(ask(state, "admin.users.list", params("page", 2)));
    EXPECT_EQ(answer.value, parsed(R"({"users":[]})"));
    EXPECT_EQ(answer.problem, QString());
    EXPECT_FALSE(answer.connectionLost);
    EXPECT_EQ(agent.requests("admin.users.list").back().params, params("page", 2));
}

TEST_F(AskTest, ARefusalIsToldToWhoeverAskedAndToNobodyElse)
{
    agent.fail("admin.users.list", {.message = "not an operator"});
    const Answer answer = await(ask(state, "admin.users.list", json::object()));
    EXPECT_FALSE(answer.value);
    EXPECT_EQ(answer.problem, u"not an operator"_s);
    EXPECT_FALSE(answer.connectionLost);
    EXPECT_EQ(state->toast(), std::nullopt);
}

TEST_F(AskTest, TheEndOfTheConnectionIsNoRefusal)
{
    state->shutDown();
    const Answer answer = await(ask(state, "admin.users.list", json::object()));
    EXPECT_FALSE(answer.value);
    EXPECT_NE(answer.problem, QString());
    EXPECT_TRUE(answer.connectionLost);
}

TEST_F(AskTest, NeitherARefusalNorSilenceIsAnAnswer)
{
    agent.fail("history.show", {.message = "no"});
    EXPECT_EQ(await(answerOrNothing(state, "history.show", json::object())), std::nullopt);
    agent.silent("history.show");
    EXPECT_EQ(await(answerOrNothing(state, "history.show", json::object(), 20ms)), std::nullopt);
    agent.answer("history.show", parsed("12"));
    EXPECT_EQ(await(answerOrNothing(state, "history.show", json::object())), parsed("12"));
    EXPECT_EQ(state->toast(), std::nullopt);
}

} // namespace
