// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/agentmethods.h"

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

json::value parsed(std::string_view text)
{
    return json::parse(json::string_view(text.data(), text.size()));
}

std::vector<QString> names(const std::vector<AgentMethod> &methods)
{
    std::vector<QString> result;
    for (const AgentMethod &method : methods) {
        result.push_back(method.name);
    }
    return result;
}

AgentMethod called(const QString &name, const QString &http = u"POST"_s)
{
    AgentMethod method;
    method.name = name;
    method.http = http;
    return method;
}

TEST(AgentMethods, ALocalOneNeverShowsEvenForAnOperator)
{
    const auto all = agentMethods(parsed(R"([{"name":"a","local":true,"admin":true},{"name":"b","local":false}])"));
    EXPECT_THAT(names(methodsFor(all, true)), ElementsAre(u"b"_s));
}

TEST(AgentMethods, OnlyTrueIsTrue)
{
    const auto all = agentMethods(parsed(R"([{"name":"a","local":"true"},{"name":"b","local":1,"admin":"yes"}])"));
    EXPECT_THAT(names(methodsFor(all, false)), ElementsAre(u"a"_s, u"b"_s));
}

TEST(AgentMethods, AnOperatorsShowsForAnOperatorOnly)
{
    const auto all = agentMethods(parsed(R"([{"name":"users","admin":true},{"name":"volumes","admin":false}])"));
    EXPECT_THAT(names(methodsFor(all, false)), ElementsAre(u"volumes"_s));
    EXPECT_THAT(names(methodsFor(all, true)), ElementsAre(u"users"_s, u"volumes"_s));
}

TEST(AgentMethods, AreInTheOrderOfTheirNames)
{
    const auto all = agentMethods(parsed(
        R"([{"name":"b","path":"1"},{"name":"a"},{"name":"Z"},{"name":"b","path":"2"},{"name":"ä"},{"name":7}])"));
    EXPECT_THAT(names(all), ElementsAre(u"7"_s, u"Z"_s, u"a"_s, u"b"_s, u"b"_s, u"ä"_s));
    EXPECT_EQ(all[3].path, u"1"_s) << "equal names stay in the agent's order";
    EXPECT_EQ(all[4].path, u"2"_s);
}

TEST(AgentMethods, AnAnswerThatIsNoListIsAnEmptyOne)
{
    for (const char *answer : {"null", "{}", "\"x\"", "7", R"({"methods":[{"name":"a"}]})"}) {
        EXPECT_TRUE(agentMethods(parsed(answer)).empty()) << answer;
    }
}

TEST(AgentMethods, AnEntryThatIsNoRecordIsAnEmptyOne)
{
    EXPECT_THAT(names(agentMethods(parsed(R"(["x",{"name":"a"},null,[1]])"))),
                ElementsAre(QString(), QString(), QString(), u"a"_s));
}

TEST(AgentMethods, ParametersComeAsNamesAndAsRecords)
{
    const auto all = agentMethods(parsed(
        R"([{"name":"m","params":["volume_id",{"name":"since","type":"a text","summary":"from when on"},7,"volume_id",null,{},""]}])"));
    const std::vector<MethodParameter> expected{
        {u"volume_id"_s, {}, {}}, {u"since"_s, u"a text"_s, u"from when on"_s}, {u"7"_s, {}, {}}};
    EXPECT_EQ(all.front().parameters, expected);
    EXPECT_EQ(parametersLine(all.front()), u"volume_id, since, 7"_s);
}

TEST(AgentMethods, ParametersThatAreNoListAreNone)
{
    const auto all = agentMethods(parsed(R"([{"name":"m","params":{"a":1}},{"name":"n","params":null},{"name":"o"}])"));
    for (const AgentMethod &method : all) {
        EXPECT_TRUE(method.parameters.empty()) << method.name.toStdString();
    }
}

TEST(AgentMethods, TheRequestLineLeavesOutWhatIsMissing)
{
    const auto all = agentMethods(parsed(
        R"([{"name":"1","http":"GET","path":"/v1/x"},{"name":"2","http":"GET"},{"name":"3","path":"/v1"},{"name":"4"}])"));
    EXPECT_EQ(requestLine(all[0]), u"GET /v1/x"_s);
    EXPECT_EQ(requestLine(all[1]), u"GET"_s);
    EXPECT_EQ(requestLine(all[2]), u"/v1"_s);
    EXPECT_EQ(requestLine(all[3]), QString());
}

TEST(AgentMethods, ADestructiveOneIsToldByVerbAndName)
{
    EXPECT_TRUE(isDestructive(called(u"volumes.list"_s, u"DELETE"_s)));
    EXPECT_TRUE(isDestructive(called(u"recovery.delete"_s)));
    EXPECT_TRUE(isDestructive(called(u"admin.tokens.purge_old"_s, u"GET"_s)));
    EXPECT_TRUE(isDestructive(called(u"admin.hubs.retire"_s)));
    EXPECT_TRUE(isDestructive(called(u"undeleted"_s)));
    EXPECT_FALSE(isDestructive(called(u"volumes.list"_s, u"GET"_s)));
    EXPECT_FALSE(isDestructive(called(u"volumes.remove"_s)));
}

TEST(AgentMethods, CapitalLettersDestroyNothing)
{
    EXPECT_FALSE(isDestructive(called(u"volumes.Delete"_s)));
    EXPECT_FALSE(isDestructive(called(u"PURGE"_s)));
    EXPECT_FALSE(isDestructive(called(u"x"_s, u"delete"_s)));
}

TEST(RequestOf, TheFieldWinsOverTheJson)
{
    AgentMethod method = called(u"m"_s);
    method.parameters = {{u"name"_s, {}, {}}, {u"size"_s, {}, {}}};
    const json::object request =
        requestOf(method, {{{u"name"_s, u"typed \"ä\""_s}}, uR"({"name":"from json","order":[1,2.5]})"_s});
    EXPECT_EQ(json::serialize(request), R"({"name":"typed \"ä\"","order":[1,2.5E0]})");
}

TEST(RequestOf, JsonThatIsNoObjectLeavesTheFieldsAlone)
{
    AgentMethod method = called(u"m"_s);
    method.parameters = {{u"a"_s, {}, {}}};
    for (const QString &text : {u"[1,2]"_s, u"7"_s, u"{\"b\":"_s, u"{'b':1}"_s, u"{} x"_s, u"null"_s, u""_s, u"  "_s}) {
        EXPECT_EQ(json::serialize(requestOf(method, {{{u"a"_s, u"1"_s}}, text})), R"({"a":"1"})") << text.toStdString();
        EXPECT_TRUE(requestOf(method, {{}, text}).empty()) << text.toStdString();
    }
}

TEST(RequestOf, TakesOnlyFieldsThatTheMethodHas)
{
    EXPECT_TRUE(requestOf(called(u"m"_s), {{{u"gone"_s, u"1"_s}}, {}}).empty());
}

TEST(RequestOf, KeepsWholeNumbersOf64Bits)
{
    EXPECT_EQ(json::serialize(requestOf(called(u"m"_s), {{}, u"{\"id\":9223372036854775807}"_s})),
              R"({"id":9223372036854775807})");
}

} // namespace
