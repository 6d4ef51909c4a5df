// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/params.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;

namespace {

const std::vector<Parameter> asked = {
    {.name = "volume_id", .type = Type::Whole},
    {.name = "name", .required = false},
    {.name = "chap", .type = Type::Flag, .required = false},
    {.name = "seconds", .type = Type::Number, .required = false},
    {.name = "share", .required = false, .oneOf = {"smb", "nfs"}},
};

Params read(std::string_view text)
{
    return {"volumes.test", asked, json::parse(text).as_object()};
}

std::string complaint(std::string_view text)
{
    try {
        static_cast<void>(read(text));
        return "none";
    } catch (const ParamsError &error) {
        return error.what();
    }
}

} // namespace

TEST(Params, AMessageNamesMethodParameterAndType)
{
    EXPECT_EQ(complaint("{}"), "volumes.test needs volume_id, a whole number");
    EXPECT_EQ(complaint(R"({"volume_id": [1]})"), "volumes.test needs volume_id, a whole number");
    EXPECT_EQ(complaint(R"({"volume_id": 1, "name": 5})"), "volumes.test takes name, a text");
    EXPECT_EQ(complaint(R"({"volume_id": 1, "chap": "yes"})"), "volumes.test takes chap, true or false");
    EXPECT_EQ(complaint(R"({"volume_id": 1, "share": "ftp"})"), "volumes.test takes share, one of smb, nfs");
}

TEST(Params, WholeNumbersComeInEveryFormThatMeansOne)
{
    EXPECT_EQ(read(R"({"volume_id": 42})").whole("volume_id"), 42);
    EXPECT_EQ(read(R"({"volume_id": "42"})").whole("volume_id"), 42);
    EXPECT_EQ(read(R"({"volume_id": 42.0})").whole("volume_id"), 42);
    for (const char *wrong :
         {"42.5", "\"42.5\"", "\"\"", "\" 42\"", "1e300", "18446744073709551615", "true", "null", "{}"}) {
        EXPECT_NE(complaint("{\"volume_id\": " + std::string(wrong) + "}"), "none") << wrong;
    }
}

TEST(Params, WhatIsOptionalMayBeMissingOrNull)
{
    const Params params = read(R"({"volume_id": 1, "name": null, "other": [1]})");
    EXPECT_FALSE(params.optionalText("name"));
    EXPECT_FALSE(params.optionalFlag("chap"));
    EXPECT_FALSE(params.optionalNumber("seconds"));
}

TEST(Params, FormFieldsMaySendFlagsAndNumbersAsTexts)
{
    const Params params = read(R"({"volume_id": "1", "chap": "false", "seconds": "1.5"})");
    EXPECT_EQ(params.optionalFlag("chap"), false);
    EXPECT_EQ(params.optionalNumber("seconds"), 1.5);
    EXPECT_NE(complaint(R"({"volume_id": 1, "seconds": "nan"})"), "none");
}
