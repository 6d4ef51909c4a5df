// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The console against the real local agent: everything that it lists can be run, and ends in something to read.
#include "boards/advanced/advancedmodel.h"

#include "agentprocess.h"

#include "state/start.h"
#include "support/await.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using quillfen::localagent::test::AgentProcess;

class EveryOperation : public testing::Test {
protected:
    explicit EveryOperation(const char *world = "operator") : agent({"--world", world, "--speed", "2000"})
    {
        qputenv("QUILL_AGENT_SOCKET", agent.socket().c_str());
        Timing timing;
        timing.refreshInterval = std::chrono::hours(1);
        timing.retryDelay = std::chrono::milliseconds(20);
        state = AppState::create(timing);
    }
    ~EveryOperation() override
    {
        state->shutDown();
        qunsetenv("QUILL_AGENT_SOCKET");
    }

    void open()
    {
        state->connect();
        ASSERT_TRUE(eventually([&] { return state->signedIn(); }));
        model = std::make_shared<AdvancedModel>(state);
        await(model->load());
    }

    /// What a person may type into a field of this kind: right for some methods, wrong for others.
    static QString typedFor(const MethodParameter &parameter, int attempt)
    {
        if (parameter.kind == "a whole number"_L1) {
            return attempt == 0 ? u"3121"_s : u"-1"_s;
        }
        if (parameter.kind == "a number"_L1) {
            return attempt == 0 ? u"1.5"_s : u"many"_s;
        }
        if (parameter.kind == "true or false"_L1) {
            return attempt == 0 ? u"true"_s : u"perhaps"_s;
        }
        return attempt == 0 ? u"Documents"_s : u"\u202e../<b>\""_s;
    }

    QString run(const AgentMethod &method, int attempt)
    {
        MethodInputs inputs;
        if (attempt < 2) {
            for (const MethodParameter &parameter : method.parameters) {
                inputs.fields.insert(parameter.name, typedFor(parameter, attempt));
            }
        }
        start(model->run(method.name, requestOf(method, inputs)));
        EXPECT_TRUE(eventually([&] { return model->session().running().isEmpty(); })) << method.name.toStdString();
        const RunOutcome &outcome = model->session().outcome();
        EXPECT_EQ(outcome.method, method.name);
        return outcome.text->text(0, outcome.text->bytes().size());
    }

    AgentProcess agent;
    std::shared_ptr<AppState> state;
    std::shared_ptr<AdvancedModel> model;
};

/// Signing out and stopping the engine take much away from whatever is tried after them.
bool isForLater(const AgentMethod &method)
{
    return std::ranges::any_of(std::array{u"account."_s, u"auth."_s, u"engine."_s, u"vm."_s},
                               [&](const QString &subject) { return method.name.startsWith(subject); });
}

TEST_F(EveryOperation, EndsInAnAnswerOrAReadableError)
{
    open();
    ASSERT_TRUE(state->isAdmin());
    std::vector<AgentMethod> methods = model->methods();
    ASSERT_GT(methods.size(), 20U);
    std::stable_partition(methods.begin(), methods.end(),
                          [](const AgentMethod &method) { return !isForLater(method); });
    for (const AgentMethod &method : methods) {
        for (int attempt = 0; attempt < 3; ++attempt) {
            const std::string out = run(method, attempt).toStdString();
            SCOPED_TRACE(method.name.toStdString() + ": " + out.substr(0, 200));
            if (model->session().outcome().failed) {
                EXPECT_TRUE(out.starts_with("error: "));
                EXPECT_GT(out.size(), std::string("error: ").size() + 3) << "a reason that says something";
                EXPECT_EQ(out.find("Unknown method"), std::string::npos);
                EXPECT_EQ(out.find("no answer"), std::string::npos);
            } else {
                EXPECT_NO_THROW({ const json::value read = json::parse(out); });
            }
            const bool mustWork = method.http == "GET"_L1 && method.parameters.empty() && !isForLater(method);
            EXPECT_FALSE(mustWork && model->session().outcome().failed);
            ASSERT_TRUE(agent.running());
        }
    }
}

class EveryOperationOfOthers : public EveryOperation {
protected:
    EveryOperationOfOthers() : EveryOperation("everyday") {}
};

TEST_F(EveryOperationOfOthers, DoesNotListWhatIsForOperatorsAndCannotRunIt)
{
    open();
    const json::object none;
    const json::value all = await(state->rpc().call("methods.list", none, std::chrono::seconds(10)));
    int tried = 0;
    for (const AgentMethod &method : agentMethods(all)) {
        if (!method.admin) {
            continue;
        }
        EXPECT_EQ(std::ranges::find(model->methods(), method.name, &AgentMethod::name), model->methods().end());
        EXPECT_TRUE(run(method, 0).startsWith(u"error: "_s)) << method.name.toStdString();
        ++tried;
    }
    EXPECT_GT(tried, 0);
}

} // namespace
