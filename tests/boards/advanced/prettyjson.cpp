// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/prettyjson.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace quillfen;

json::value parsed(const std::string &text, std::size_t depth = 2'000)
{
    json::parse_options options;
    options.max_depth = depth;
    return json::parse(text, {}, options);
}

TEST(PrettyLines, AScalarIsALine)
{
    EXPECT_EQ(prettyLines(nullptr), "null");
    EXPECT_EQ(prettyLines(true), "true");
    EXPECT_EQ(prettyLines("x"), R"("x")");
    EXPECT_EQ(prettyLines(-7), "-7");
    EXPECT_EQ(prettyLines(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(PrettyLines, EveryMemberHasALine)
{
    EXPECT_EQ(prettyLines(parsed(R"({"b":[1,{"c":null}],"a":"x","d":{},"e":[]})")), R"({
"b": [
1,
{
"c": null
}
],
"a": "x",
"d": {},
"e": []
})");
}

TEST(PrettyLines, NumbersReadAsTheyWereWritten)
{
    EXPECT_EQ(prettyLines(1.5), "1.5");
    EXPECT_EQ(prettyLines(0.1), "0.1");
    EXPECT_EQ(prettyLines(3.0), "3.0");
    EXPECT_EQ(prettyLines(1e300), "1e+300");
    EXPECT_EQ(parsed(prettyLines(1e300)), json::value(1e300));
    EXPECT_EQ(prettyLines(std::numeric_limits<double>::infinity()), "1e999");
}

TEST(PrettyLines, EscapesWhatJsonAsksFor)
{
    EXPECT_EQ(prettyLines("\"\\\b\f\n\r\t/\x01"), R"("\"\\\b\f\n\r\t/\u0001")");
    EXPECT_EQ(prettyLines(json::string(1, '\0')), R"("\u0000")");
    EXPECT_EQ(prettyLines(json::object{{"a\nb", 1}}), "{\n\"a\\nb\": 1\n}");
}

TEST(PrettyLines, MakesTheUnseenVisible)
{
    EXPECT_EQ(prettyLines("a\u202Eb"), R"("a\u202eb")");
    EXPECT_EQ(prettyLines("\u00AD\u200B\uFEFF\u2028\u2029\u0085\x7F"),
              R"("\u00ad\u200b\ufeff\u2028\u2029\u0085\u007f")");
    EXPECT_EQ(prettyLines("\U000E0041"), R"("\udb40\udc41")");
    EXPECT_EQ(prettyLines("\u3164"), R"("\u3164")");
    EXPECT_EQ(prettyLines("größe · 漢字 🙂"), R"("größe · 漢字 🙂")");
}

TEST(PrettyLines, StaysTheSameJson)
{
    const json::value value =
        parsed(R"([{"a":[[],{},[[1,-2,0.25,1e-7,true,false,null]]],"\u202e\"":"\ud83d\ude42\u0000 x"},[],"",{"":{}}])");
    EXPECT_EQ(parsed(prettyLines(value)), value);
}

// A thousand levels are what a connection lets through; the writer itself has no such limit.
TEST(PrettyLines, DepthCostsNoStack)
{
    json::value value = 1;
    const int depth = 1'000;
    for (int level = 0; level < depth; ++level) {
        value = level % 2 == 0 ? json::value(json::array{std::move(value)}) : json::value(json::object{{"k", value}});
    }
    const std::string text = prettyLines(value);
    EXPECT_EQ(std::ranges::count(text, '\n'), 2 * depth);
    EXPECT_LT(text.size(), 20'000U) << "no indentation is stored";
}

} // namespace
