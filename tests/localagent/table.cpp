// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/table.h"

#include "testagent.h"

#include <gtest/gtest.h>

#include <set>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

TEST(Table, EveryLineIsComplete)
{
    const Table table;
    std::set<std::string> names;
    for (const json::value &value : table.records()) {
        const json::object &record = value.as_object();
        const std::string name = text(record.at("name"));
        EXPECT_TRUE(names.insert(name).second) << name << " stands twice";
        EXPECT_FALSE(text(record.at("summary")).empty()) << name;
        EXPECT_EQ(text(record.at("http")).empty(), text(record.at("path")).empty()) << name;
        EXPECT_EQ(text(record.at("http")).empty(), record.at("local").as_bool()) << name;
        for (const json::value &parameter : record.at("params").as_array()) {
            EXPECT_FALSE(text(parameter.at("summary")).empty()) << name;
        }
    }
    EXPECT_EQ(names.size(), table.records().size());
}

TEST(Table, MethodsListAnswersFromIt)
{
    TestAgent agent;
    const json::value list = agent.result("methods.list");
    EXPECT_EQ(list, json::value(Table().records()));
    for (const json::value &record : list.as_array()) {
        if (record.at("name") == json::value("volumes.status")) {
            EXPECT_EQ(json::serialize(record),
                      R"({"name":"volumes.status","http":"GET","path":"/v1/volumes/{volume_id}/status",)"
                      R"("params":[{"name":"volume_id","type":"a whole number","required":true,)"
                      R"("summary":"the volume's id, as volumes.list tells it"}],"local":false,"admin":false,)"
                      R"("summary":"What a volume holds and how much of it is in the vault."})");
        }
    }
}

TEST(Table, AnUnknownMethodIsNamed)
{
    TestAgent agent;
    const json::object error = agent.error("volumes.fly");
    EXPECT_EQ(error.at("code"), json::value(-32601));
    EXPECT_EQ(error.at("message"), json::value("Unknown method: volumes.fly"));
}

// Values of every type, one parameter after the other, for every method there is: each call ends in an answer or in an
// error that a person can read, and the agent still works afterwards.
TEST(Table, WrongTypesEndInAnErrorThatNamesTheParameter)
{
    const json::array wrong = {nullptr, true, -1,      1e300,          1.5,
                               "text",  "",   "../..", json::array{1}, json::object{{"a", 1}}};
    for (const json::value &record : Table().records()) {
        const std::string method = text(record.at("name"));
        if (method == "localagent.fault") {
            continue;
        }
        // Each in a world where it may be called, or access is all that would be told.
        TestAgent agent(record.at("admin").as_bool() ? "operator" : "lists");
        for (const json::value &parameter : record.at("params").as_array()) {
            const std::string name = text(parameter.at("name"));
            for (const json::value &value : wrong) {
                json::object params{{"volume_id", 3121}, {"recovery_id", 41}, {"size_bytes", gigabyte}};
                params[name] = value;
                const std::int64_t id = agent.start(method, params);
                agent.pass(120);
                const auto answer = agent.answer(id);
                ASSERT_TRUE(answer) << method << " " << name << "=" << json::serialize(value);
                if (value.is_structured()) {
                    ASSERT_TRUE(answer->contains("error")) << method << " " << name;
                    EXPECT_EQ(answer->at("error").at("code"), json::value(-32602)) << method << " " << name;
                    EXPECT_NE(text(answer->at("error").at("message")).find(method + " "), std::string::npos);
                }
            }
        }
        EXPECT_TRUE(agent.result("agent.version").is_object()) << method;
    }
}

TEST(Table, RequiredParametersAreAskedFor)
{
    for (const json::value &record : Table().records()) {
        TestAgent agent(record.at("admin").as_bool() ? "operator" : "empty");
        const json::array &parameters = record.at("params").as_array();
        if (parameters.empty() || !parameters.front().at("required").as_bool()) {
            continue;
        }
        const std::string method = text(record.at("name"));
        const std::string message = agent.refusal(method);
        EXPECT_EQ(message.find(method + " needs " + text(parameters.front().at("name")) + ", "), 0U) << message;
    }
}

TEST(Events, GoToSubscribersOnly)
{
    TestAgent agent;
    agent.agent.closed(1);
    agent.result("volumes.create", {{"name", "quiet"}, {"size_bytes", gigabyte}});
    EXPECT_EQ(agent.eventNames(), "");
    EXPECT_EQ(agent.result("events.subscribe").at("subscribed"), json::value(true));
    agent.result("volumes.create", {{"name", "loud"}, {"size_bytes", gigabyte}});
    EXPECT_EQ(agent.eventNames(), "volumes.changed");
}
