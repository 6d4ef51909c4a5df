// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/request.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;

namespace {

BadRequest bad(std::string_view line)
{
    auto parsed = parseRequest(line);
    if (auto *found = std::get_if<BadRequest>(&parsed)) {
        return *found;
    }
    ADD_FAILURE() << line << " was taken for a request";
    return {};
}

} // namespace

TEST(Request, APlainCallIsRead)
{
    const auto parsed = parseRequest(R"({"jsonrpc":"2.0","id":7,"method":"volumes.status","params":{"volume_id":1}})");
    const Request &request = std::get<Request>(parsed);
    EXPECT_EQ(request.id, json::value(7));
    EXPECT_EQ(request.method, "volumes.status");
    EXPECT_EQ(request.params.at("volume_id"), json::value(1));
    EXPECT_TRUE(request.wantsAnswer);
}

TEST(Request, ACallWithoutIdWantsNoAnswer)
{
    const auto parsed = parseRequest(R"({"jsonrpc":"2.0","method":"account"})");
    EXPECT_FALSE(std::get<Request>(parsed).wantsAnswer);
}

TEST(Request, WhatIsNotJsonIsAParseErrorUnderNoId)
{
    for (const char *line : {"", "{", "hello", "{\"id\":1,}", "\xff\xfe", "{\"a\":\"\xc3\x28\"}"}) {
        const BadRequest found = bad(line);
        EXPECT_EQ(found.error.code, code::parseError) << line;
        EXPECT_TRUE(found.id.is_null()) << line;
    }
}

TEST(Request, DeepNestingIsRefusedBeforeItCostsStack)
{
    const BadRequest found = bad(std::string(100000, '['));
    EXPECT_EQ(found.error.code, code::parseError);
    EXPECT_EQ(found.error.message, "Parse error: nested deeper than 64 levels");
}

TEST(Request, WhatIsJsonButNoRequestKeepsTheIdItHas)
{
    EXPECT_EQ(bad("[]").error.code, code::invalidRequest);
    EXPECT_EQ(bad(R"({"id":3,"method":"account"})").id, json::value(3));
    EXPECT_EQ(bad(R"({"jsonrpc":"2.0","id":"x"})").id, json::value("x"));
    EXPECT_EQ(bad(R"({"jsonrpc":"2.0","id":3,"method":5})").error.code, code::invalidRequest);
    EXPECT_TRUE(bad(R"({"jsonrpc":"2.0","id":{},"method":"account"})").id.is_null());
}

TEST(Request, ParametersInAListAreRefusedByName)
{
    const BadRequest found = bad(R"({"jsonrpc":"2.0","id":3,"method":"account","params":[1]})");
    EXPECT_EQ(found.error.code, code::badParams);
    EXPECT_EQ(found.error.message, "account takes its parameters by name, as an object");
}

TEST(Request, AnErrorCarriesAStatusOnlyWhenItHasOne)
{
    EXPECT_EQ(errorLine(4, {-5, "no", std::nullopt}), R"({"jsonrpc":"2.0","id":4,"error":{"code":-5,"message":"no"}})");
    EXPECT_EQ(errorLine(nullptr, {-5, "no", 409}),
              R"({"jsonrpc":"2.0","id":null,"error":{"code":-5,"message":"no","status":409}})");
    EXPECT_EQ(eventLine("vm.changed", json::object{}), R"({"event":"vm.changed","result":{}})");
}
