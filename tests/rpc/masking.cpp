// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/masking.h"

#include <gmock/gmock.h>

using namespace quillfen;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

TEST(Masking, LeavesARequestWithoutSecretsByteByByte)
{
    const MaskedLine shown = masked("{\"jsonrpc\":\"2.0\", \"id\":1,\"params\":{\"name\":\"é\"}}\n");
    EXPECT_EQ(shown.line, "{\"jsonrpc\":\"2.0\", \"id\":1,\"params\":{\"name\":\"é\"}}");
    EXPECT_THAT(shown.secrets, IsEmpty());
}

class SecretName : public testing::TestWithParam<const char *> {};

TEST_P(SecretName, IsMaskedAtAnyDepth)
{
    const std::string name = GetParam();
    const MaskedLine shown = masked(R"({"params":{"a":[{")" + name + R"(":"hunter22"}],"b":")" + name + R"("}})");
    EXPECT_EQ(shown.line, R"({"params":{"a":[{")" + name + R"(":"••••••"}],"b":")" + name + R"("}})");
    EXPECT_THAT(shown.secrets, ElementsAre(u"hunter22"_s));
}

INSTANTIATE_TEST_SUITE_P(Every, SecretName,
                         testing::Values("code", "token", "secret", "password", "passphrase", "key", "chap_secret",
                                         "chap_password", "Password", "access_token"));

class HarmlessName : public testing::TestWithParam<const char *> {};

TEST_P(HarmlessName, IsShown)
{
    const std::string line = R"({"params":{")" + std::string(GetParam()) + R"(":"photos"}})";
    EXPECT_EQ(masked(line).line, line);
}

INSTANTIATE_TEST_SUITE_P(Every, HarmlessName,
                         testing::Values("name", "key_volume", "token_id", "monkey", "encode", "postcode"));

TEST(Masking, MasksNumbersAndEverythingBelowASecretName)
{
    const MaskedLine shown = masked(R"({"params":{"code":123456,"secret":{"one":"first","two":["second"]}}})");
    EXPECT_EQ(shown.line, R"({"params":{"code":"••••••","secret":{"one":"••••••","two":["••••••"]}}})");
    EXPECT_THAT(shown.secrets, ElementsAre(u"123456"_s, u"second"_s, u"first"_s));
}

TEST(Masking, ALinksCodeIsASecretOfItsOwn)
{
    const MaskedLine shown = masked(R"({"params":{"code":"quillfen:enrol?code=quill-abc"}})");
    EXPECT_EQ(without(shown.secrets, u"no such code: quill-abc"_s), u"no such code: ••••••"_s);
}

TEST(Masking, ASecretWithinAnotherLeavesNothingOfIt)
{
    const MaskedLine shown = masked(R"({"params":{"token":"abcd","secret":"abcdefgh"}})");
    EXPECT_EQ(without(shown.secrets, u"abcdefgh"_s), u"••••••"_s);
}

TEST(Masking, AMethodsNameIsNoSecret)
{
    const std::string line = R"({"id":3,"method":"auth.token","code":"x"})";
    EXPECT_EQ(masked(line).line, line);
}

TEST(Masking, OfARequestTooLongToKeepTheBeginningStays)
{
    const std::string line = R"({"id":3,"method":"m","params":{"secret":")" + std::string(70'000, 'x') + R"("}})";
    const MaskedLine shown = masked(line);
    EXPECT_EQ(shown.line, R"({"id":3,"method":"m"… (+)" + std::to_string(line.size() - 20) + " bytes)");
    EXPECT_FALSE(shown.isWhole);
}

TEST(Masking, WhatIsNoRequestIsNotKept)
{
    EXPECT_EQ(masked("{\"secret\":\"abc").line, "");
}

TEST(Masking, KeepsSecretsOutOfWords)
{
    const QStringList secrets{u"QF-1234"_s, u"abc"_s};
    EXPECT_EQ(without(secrets, u"QF-1234 is no code, abc is a word"_s), u"•••••• is no code, abc is a word"_s);
}

} // namespace
