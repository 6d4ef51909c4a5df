// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/signin.h"

#include "testagent.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

std::string refusalOf(TestAgent &agent, std::string_view code)
{
    return agent.refusal("auth.enroll", {{"code", code}});
}

} // namespace

TEST(SignIn, ACodeWorksOnceAndNamesItsAccount)
{
    TestAgent agent("first-run");
    EXPECT_EQ(json::serialize(agent.result("auth.status")), R"({"signed_in":false})");
    EXPECT_EQ(agent.refusal("volumes.list"), "This computer is not signed in.");
    EXPECT_EQ(agent.result("auth.enroll", {{"code", " quill-AAAA-1111\n"}}).at("email"),
              json::value("mara@northmere.example"));
    EXPECT_EQ(agent.eventNames(), "auth.changed");
    EXPECT_EQ(agent.lastEvent("auth.changed"), agent.result("auth.status"));
    EXPECT_EQ(refusalOf(agent, "quill-BBBB-2222"),
              "This computer is signed in as mara@northmere.example. Sign out first.");
    agent.result("auth.signout");
    EXPECT_EQ(refusalOf(agent, "quill-AAAA-1111"), "The code was already used. Create a new one on the Download page.");
    agent.result("auth.enroll", {{"code", "quill-BBBB-2222"}});
    EXPECT_EQ(agent.result("auth.status").at("signed_in"), json::value(true));
}

TEST(SignIn, OtherCodesAreRefusedWithTheReason)
{
    TestAgent agent("first-run");
    const std::string none =
        "That is not an enrolment code. Codes begin with quill- and are created on the Download page.";
    for (const char *code :
         {"", "hello", "quill_token_abc", "quill-", "quill-a b c d", "QUILL-AAAA", "quillfen:", "quillfen://x"}) {
        EXPECT_EQ(refusalOf(agent, code), none) << code;
    }
    EXPECT_EQ(refusalOf(agent, "quill-7FQ2-M8DX-41KP"),
              "The code was already used. Create a new one on the Download page.");
    EXPECT_EQ(refusalOf(agent, "quill-EXPIRED-0000"), "The code has expired. Create a new one on the Download page.");
    EXPECT_EQ(agent.eventNames(), "");
}

TEST(SignIn, ALinkHoldsTheCodeInItsQueryOrPath)
{
    EXPECT_EQ(enrolmentCode("quillfen://enroll?code=quill-A-1"), "quill-A-1");
    EXPECT_EQ(enrolmentCode("quillfen://enroll?x=1&code=quill%2DA-1&y=2"), "quill-A-1");
    EXPECT_EQ(enrolmentCode("quillfen:quill-A-1"), "quill-A-1");
    EXPECT_EQ(enrolmentCode(" QUILLFEN://enroll/quill-A-1#top "), "quill-A-1");
    EXPECT_EQ(enrolmentCode("quillfen://enroll?code=%2"), "%2");
    TestAgent agent("first-run");
    agent.result("auth.enroll", {{"code", "quillfen://enroll?code=quill-AAAA-1111"}});
    EXPECT_TRUE(agent.world.state.account.usedCodes.contains("quill-AAAA-1111"));
}

TEST(SignIn, ASelfHostedManagerIsKeptOrRefused)
{
    TestAgent agent("first-run");
    for (const char *api : {"manager.example", "https://", "ftp://x", "https://a b"}) {
        EXPECT_EQ(agent.refusal("auth.enroll", {{"code", "quill-AAAA-1111"}, {"api", api}}),
                  "The control plane URL is not an address like https://manager.example.com.")
            << api;
    }
    const json::value record =
        agent.result("auth.enroll", {{"code", "quill-AAAA-1111"}, {"api", "https://manager.example"}});
    EXPECT_EQ(record.at("api"), json::value("https://manager.example"));
}

TEST(SignIn, SigningOutTakesTheMountsAlong)
{
    TestAgent agent;
    agent.result("auth.signout");
    EXPECT_EQ(agent.eventNames(), "mount.changed auth.changed");
    EXPECT_TRUE(agent.result("mount.state").as_array().empty());
    EXPECT_EQ(agent.error("account").at("status"), json::value(401));
    EXPECT_EQ(agent.refusal("auth.signout"), "This computer is not signed in.");
}
