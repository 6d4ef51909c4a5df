// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/advancedmodel.h"

#include "boardtest.h"

#include "state/start.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::StartsWith;

class AdvancedModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        agent.answer("methods.list", json::array{params("name", "volumes.list", "http", "GET"),
                                                 params("name", "admin.users.list", "admin", true),
                                                 params("name", "here", "local", true)});
        model = std::make_shared<AdvancedModel>(state);
    }

    [[nodiscard]] QString out() const
    {
        const OutputText &text = *model->session().outcome().text;
        return text.text(0, text.bytes().size());
    }

    [[nodiscard]] std::vector<QString> names() const
    {
        std::vector<QString> result;
        for (const AgentMethod &method : model->methods()) {
            result.push_back(method.name);
        }
        return result;
    }

    /// Runs it and waits until its outcome is there.
    void run(const QString &method, const json::object &request = {})
    {
        start(model->run(method, request));
        ASSERT_TRUE(eventually([&] { return model->session().running().isEmpty(); }));
    }

    std::shared_ptr<AdvancedModel> model;
};

TEST_F(AdvancedModelTest, ListsWhatTheAgentOffers)
{
    EXPECT_FALSE(model->loaded());
    await(model->load());
    EXPECT_TRUE(model->loaded());
    EXPECT_THAT(names(), ElementsAre(u"volumes.list"_s));
    EXPECT_TRUE(sent("methods.list").empty());
}

TEST_F(AdvancedModelTest, AnOperatorSeesMore)
{
    state->auth = params("signed_in", true, "is_admin", true);
    await(model->load());
    EXPECT_THAT(names(), ElementsAre(u"admin.users.list"_s, u"volumes.list"_s));
}

TEST_F(AdvancedModelTest, WhoBecomesAnOperatorSeesMoreWithoutAsking)
{
    await(model->load());
    state->auth = params("signed_in", true, "is_admin", true);
    model->followAccount();
    EXPECT_EQ(names().size(), 2U);
    state->auth = params("signed_in", true, "is_admin", "true");
    model->followAccount();
    EXPECT_EQ(names().size(), 1U);
    EXPECT_EQ(agent.count("methods.list"), 1U);
}

TEST_F(AdvancedModelTest, AListThatFailsIsEmpty)
{
    agent.fail("methods.list", {.message = "no"});
    await(model->load());
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(model->loaded());
    EXPECT_EQ(toast(), QString());
}

TEST_F(AdvancedModelTest, AListThatIsNoneIsEmpty)
{
    agent.answer("methods.list", params("methods", json::array()));
    await(model->load());
    EXPECT_TRUE(names().empty());
}

TEST_F(AdvancedModelTest, AReadingThatFailsKeepsTheList)
{
    await(model->load());
    agent.fail("methods.list", {.message = "no"});
    await(model->load());
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(AdvancedModelTest, ALateListIsDropped)
{
    agent.hold("methods.list");
    const QCoro::Task<> first = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("methods.list") == 1; }));
    agent.release("methods.list");
    agent.answer("methods.list", json::array{params("name", "new")});
    await(model->load());
    await(first);
    EXPECT_THAT(names(), ElementsAre(u"new"_s));
}

TEST_F(AdvancedModelTest, RunsWithItsParameters)
{
    agent.answer("volumes.list", json::array{params("id", 1)});
    run(u"volumes.list"_s, params("limit", 3));
    EXPECT_EQ(sent("volumes.list"), params("limit", 3));
    EXPECT_EQ(out(), u"[\n  {\n    \"id\": 1\n  }\n]"_s);
    EXPECT_FALSE(model->session().outcome().failed);
    EXPECT_EQ(model->session().outcome().method, u"volumes.list"_s);
}

TEST_F(AdvancedModelTest, TellsHowLongTheCallTook)
{
    agent.answer("volumes.list", 1);
    agent.hold("volumes.list");
    start(model->run(u"volumes.list"_s, {}));
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.list") == 1; }));
    QTest::qWait(30);
    agent.release("volumes.list");
    ASSERT_TRUE(eventually([&] { return model->session().running().isEmpty(); }));
    EXPECT_GE(model->session().outcome().took.count(), 30);
}

TEST_F(AdvancedModelTest, ScalarsAreShownToo)
{
    const std::vector<std::pair<json::value, QString>> cases{
        {nullptr, u"null"_s}, {true, u"true"_s}, {7, u"7"_s}, {"x", u"\"x\""_s}, {json::array(), u"[]"_s}};
    for (const auto &[answer, shown] : cases) {
        agent.answer("volumes.list", answer);
        run(u"volumes.list"_s);
        EXPECT_EQ(out(), shown);
    }
}

TEST_F(AdvancedModelTest, AFailureIsShownWithItsReason)
{
    agent.fail("volumes.list", {.message = "no such\nthing\u202e"});
    run(u"volumes.list"_s);
    EXPECT_EQ(out(), u"error: no such\nthing⟨U+202E⟩"_s);
    EXPECT_TRUE(model->session().outcome().failed);
    EXPECT_EQ(toast(), QString());
}

TEST_F(AdvancedModelTest, ParametersThatJsonCannotCarryAreAFailure)
{
    run(u"volumes.list"_s, params("size", std::numeric_limits<double>::infinity()));
    EXPECT_EQ(out(), u"error: bad params"_s);
    EXPECT_EQ(agent.count("volumes.list"), 0U);
}

TEST_F(AdvancedModelTest, AnAgentThatGoesMeanwhileIsAFailureThatKeepsTheInputs)
{
    agent.silent("volumes.list");
    model->typeField(u"volumes.list"_s, u"limit"_s, u"3"_s);
    start(model->run(u"volumes.list"_s, {}));
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.list") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return model->session().running().isEmpty(); }));
    EXPECT_EQ(out(), u"error: the agent connection closed"_s);
    EXPECT_EQ(model->inputs(u"volumes.list"_s).fields.value(u"limit"_s), u"3"_s);
}

TEST_F(AdvancedModelTest, WhatWasTypedIsKeptByMethod)
{
    model->typeField(u"a"_s, u"x"_s, u"1"_s);
    model->typeJson(u"a"_s, u"{}"_s);
    model->typeField(u"b"_s, u"x"_s, u"2"_s);
    EXPECT_EQ(model->inputs(u"a"_s), (MethodInputs{{{u"x"_s, u"1"_s}}, u"{}"_s}));
    EXPECT_EQ(model->inputs(u"b"_s), (MethodInputs{{{u"x"_s, u"2"_s}}, {}}));
    model->typeField(u"b"_s, u"x"_s, QString());
    EXPECT_EQ(model->inputs(u"b"_s), MethodInputs()) << "an empty field is not sent";
}

TEST_F(AdvancedModelTest, TheNextModelFindsWhatWasTypedAndAnswered)
{
    agent.answer("volumes.list", 7);
    model->pick(u"volumes.list"_s);
    model->typeField(u"volumes.list"_s, u"x"_s, u"1"_s);
    run(u"volumes.list"_s);
    model = std::make_shared<AdvancedModel>(state);
    await(model->load());
    ASSERT_NE(model->picked(), nullptr);
    EXPECT_EQ(model->picked()->name, u"volumes.list"_s);
    EXPECT_EQ(model->inputs(u"volumes.list"_s).fields.size(), 1);
    EXPECT_EQ(out(), u"7"_s);
}

TEST_F(AdvancedModelTest, AnotherAccountFindsNothing)
{
    model->typeField(u"volumes.list"_s, u"x"_s, u"secret"_s);
    state->auth = params("signed_in", true, "email", "other@example.com");
    model = std::make_shared<AdvancedModel>(state);
    EXPECT_EQ(model->inputs(u"volumes.list"_s), MethodInputs());
}

TEST_F(AdvancedModelTest, ARunOutlivesItsModel)
{
    agent.answer("volumes.list", 7);
    agent.hold("volumes.list");
    start(model->run(u"volumes.list"_s, {}));
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.list") == 1; }));
    model.reset();
    model = std::make_shared<AdvancedModel>(state);
    EXPECT_TRUE(model->session().running().contains(u"volumes.list"_s));
    agent.release("volumes.list");
    ASSERT_TRUE(eventually([&] { return model->session().running().isEmpty(); }));
    EXPECT_EQ(out(), u"7"_s);
}

TEST_F(AdvancedModelTest, SeveralMayRunAtOnce)
{
    agent.answer("a", 1);
    agent.answer("b", 2);
    agent.hold("a");
    start(model->run(u"a"_s, {}));
    start(model->run(u"b"_s, {}));
    ASSERT_TRUE(eventually([&] { return model->session().running() == QSet<QString>{u"a"_s}; }));
    EXPECT_EQ(out(), u"2"_s);
    agent.release("a");
    ASSERT_TRUE(eventually([&] { return model->session().running().isEmpty(); }));
    EXPECT_EQ(out(), u"1"_s);
}

TEST_F(AdvancedModelTest, AnAnswerAsDeepAsTheReaderTakesIsShown)
{
    const int depth = 1'000;
    agent.queueRaw("deep", R"({"id":$ID,"result":)" + std::string(depth, '[') + std::string(depth, ']') + "}");
    run(u"deep"_s);
    EXPECT_EQ(model->session().outcome().text->lines(), 2U * depth - 1);
}

} // namespace
