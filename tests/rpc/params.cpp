// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <limits>

namespace quillfen::test {

namespace {

using Params = RPCTest;

TEST(BuildingParams, TakesNumbersTextsOfBothKindsListsAndTruthValues)
{
    const json::array list{1, 2};
    const json::object built = params("volume_id", std::int64_t{7}, "name", QStringLiteral("Größe"), "verb", "go",
                                      "list", list, "yes", true, "none", nullptr);
    EXPECT_EQ(json::serialize(built),
              R"({"volume_id":7,"name":"Größe","verb":"go","list":[1,2],"yes":true,"none":null})");
    EXPECT_TRUE(params().empty());
}

TEST_F(Params, EmptyOnesAreLeftOutOfTheRequest)
{
    agent.answer("auth.status", nullptr);
    ask("auth.status");
    EXPECT_EQ(agent.requests().at(0).line, R"({"jsonrpc":"2.0","id":1,"method":"auth.status"})");
}

TEST_F(Params, TravelCompactlyOnOneLine)
{
    agent.answer("volumes.create", nullptr);
    ask("volumes.create",
        params("name", "a\nb · \"c\"", "size_bytes", std::int64_t{1} << 40, "nested", json::object{{"a", 1.5}}));
    EXPECT_EQ(agent.requests().at(0).line,
              R"({"jsonrpc":"2.0","id":1,"method":"volumes.create","params":)"
              R"({"name":"a\nb · \"c\"","size_bytes":1099511627776,"nested":{"a":1.5E0}}})");
}

/// What JSON cannot carry, wherever it is hidden.
std::vector<std::pair<std::string, json::object>> impossibleParams()
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    return {
        {"infinity", params("size", infinity)},
        {"minus infinity", params("size", -infinity)},
        {"not a number", params("size", notANumber)},
        {"one in a list", params("list", json::array{1, json::array{notANumber}})},
        {"one in an object", params("object", json::object{{"inner", json::object{{"x", infinity}}}})},
        {"a text that is not UTF-8", params("name", "a\xff")},
        {"a text cut within a character", params("name", "Gr\xc3")},
        {"half of a surrogate pair", params("name", "\xed\xa0\x80")},
        {"a key that is not UTF-8", params("\xfe", 1)},
    };
}

TEST_F(Params, WhatJsonCannotCarryFailsAtOnceAndIsNeverSent)
{
    for (const auto &[what, impossible] : impossibleParams()) {
        SCOPED_TRACE(what);
        QCoro::Task<json::value> call = rpc.call("volumes.create", impossible, 60s);
        EXPECT_TRUE(call.isReady());
        const RPCError error = failureOf(std::move(call));
        EXPECT_EQ(error.code, -32600);
        EXPECT_EQ(error.message, QStringLiteral("bad params"));
        EXPECT_EQ(error.status, std::nullopt);
    }
    agent.answer("account", "fine");
    EXPECT_EQ(ask("account"), "fine");
    EXPECT_THAT(agent.log(), testing::ElementsAre("account"));
}

TEST_F(Params, AMethodThatIsNotUtf8FailsToo)
{
    EXPECT_EQ(failureOf(rpc.call("\xff", {}, 60s)).code, RPCError::badParams);
}

TEST_F(Params, AFailedEncodingUsesItsIdUp)
{
    agent.answer("account", nullptr);
    failureOf(rpc.call("account", params("x", "\xff"), 60s));
    ask("account");
    EXPECT_EQ(agent.requests().at(0).id, 2);
}

} // namespace

} // namespace quillfen::test
