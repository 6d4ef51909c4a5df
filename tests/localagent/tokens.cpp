// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/tokens.h"

#include "testagent.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

constexpr double day = 24 * 3600;

json::array listed(TestAgent &agent)
{
    return agent.result("auth.tokens.list").at("tokens").as_array();
}

std::vector<std::string> labels(TestAgent &agent)
{
    std::vector<std::string> found;
    for (const json::value &token : listed(agent)) {
        found.push_back(text(token.at("label")));
    }
    return found;
}

std::string idOf(TestAgent &agent, std::string_view label)
{
    for (const json::value &token : listed(agent)) {
        if (token.at("label") == json::value(label)) {
            return text(token.at("token_id"));
        }
    }
    return "none";
}

std::string own(std::string_view prefix)
{
    return std::string(prefix) + computerName();
}

} // namespace

TEST(Tokens, TheEverydayWorldHasThoseOfThisComputerAndOneThatExpires)
{
    TestAgent agent;
    EXPECT_EQ(labels(agent), (std::vector<std::string>{own("desktop:"), own("cli:"), "backup script on nas"}));
    const json::array tokens = listed(agent);
    EXPECT_FALSE(tokens.at(0).as_object().contains("expires_at"));
    EXPECT_EQ(text(tokens.at(0).at("created_at")), "2026-09-02T12:00:00.000Z");
    EXPECT_EQ(text(tokens.at(2).at("expires_at")), "2027-01-12T12:00:00.000Z");
}

TEST(Tokens, ANewOneTellsItsSecretOnceAndLastsAsLongAsItWasAskedTo)
{
    TestAgent agent;
    const json::value made = agent.result("auth.tokens.create", {{"label", " laptop "}, {"expires_in_days", 90}});
    EXPECT_EQ(text(made.at("token")).find("quill_token_"), 0U);
    EXPECT_EQ(text(made.at("token")).size(), 44U);
    EXPECT_EQ(text(made.at("expires_at")), "2027-02-18T12:00:00.000Z");
    EXPECT_EQ(json::serialize(listed(agent)).find(text(made.at("token"))), std::string::npos);
    EXPECT_EQ(idOf(agent, "laptop"), text(made.at("token_id")));
    agent.pass(89.9 * day);
    EXPECT_EQ(labels(agent).back(), "laptop");
    agent.pass(0.2 * day);
    EXPECT_EQ(idOf(agent, "laptop"), "none");
    EXPECT_EQ(agent.refusal("auth.tokens.revoke", {{"token_id", text(made.at("token_id"))}}),
              "There is no such token in this account any more.");
}

TEST(Tokens, WithoutATermTheyLastForEver)
{
    TestAgent agent;
    agent.result("auth.tokens.create", {{"label", "laptop"}});
    agent.pass(5000 * day);
    EXPECT_FALSE(listed(agent).back().as_object().contains("expires_at"));
    EXPECT_EQ(labels(agent).back(), "laptop");
}

TEST(Tokens, TwoNeverHaveOneSecret)
{
    TestAgent agent;
    const json::value first = agent.result("auth.tokens.create", {{"label", "one"}});
    const json::value second = agent.result("auth.tokens.create", {{"label", "two"}});
    EXPECT_NE(first.at("token"), second.at("token"));
    EXPECT_NE(first.at("token_id"), second.at("token_id"));
}

TEST(Tokens, LabelsAndTermsThatWillNotDoAreRefusedWithTheReason)
{
    TestAgent agent;
    const auto refusal = [&](const json::object &params) { return agent.refusal("auth.tokens.create", params); };
    for (const char *blank : {"", "  ", "\n"}) {
        EXPECT_EQ(refusal({{"label", blank}}), "A token needs a label, so that you recognise it later.");
    }
    for (const std::string &label : {std::string(101, 'x'), std::string("two\nlines"), std::string("bell\a")}) {
        EXPECT_EQ(refusal({{"label", label}}), "A label is one line of at most 100 characters.");
    }
    EXPECT_EQ(refusal({{"label", "desktop:other"}}),
              "Labels that begin with desktop: and cli: belong to signed-in computers.");
    EXPECT_EQ(refusal({{"label", "backup script on nas"}}), "There is a token backup script on nas already.");
    for (const int days : {0, -1, 3651}) {
        EXPECT_EQ(refusal({{"label", "x"}, {"expires_in_days", days}}), "A token lasts from 1 to 3650 days.");
    }
    EXPECT_EQ(listed(agent).size(), 3U);
}

TEST(Tokens, ARevokedOneIsGoneAndItsLabelFree)
{
    TestAgent agent;
    const std::string id = idOf(agent, "backup script on nas");
    EXPECT_EQ(agent.result("auth.tokens.revoke", {{"token_id", id}}).at("revoked"), json::value(true));
    EXPECT_EQ(idOf(agent, "backup script on nas"), "none");
    EXPECT_EQ(agent.error("auth.tokens.revoke", {{"token_id", id}}).at("status"), json::value(404));
    agent.result("auth.tokens.create", {{"label", "backup script on nas"}});
    EXPECT_NE(idOf(agent, "backup script on nas"), id);
}

TEST(Tokens, TheAppsOwnEndsBySigningOutOnly)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("auth.tokens.revoke", {{"token_id", idOf(agent, own("desktop:"))}}),
              "This app itself uses that token. Sign out this computer instead.");
    agent.result("auth.tokens.revoke", {{"token_id", idOf(agent, own("cli:"))}});
    EXPECT_EQ(idOf(agent, own("cli:")), "none");
    agent.result("auth.signout");
    EXPECT_EQ(agent.error("auth.tokens.list").at("status"), json::value(401));
    agent.result("auth.enroll", {{"code", "quill-AAAA-1111"}});
    EXPECT_EQ(labels(agent), (std::vector<std::string>{"backup script on nas", own("desktop:"), own("cli:")}));
}

TEST(EnrolmentCodes, SignAnotherComputerInOnce)
{
    TestAgent agent;
    const std::string code = text(agent.result("auth.enroll_code", {{"label", "desktop"}}).at("code"));
    EXPECT_EQ(code.size(), 20U);
    EXPECT_EQ(code.find("quill-"), 0U);
    agent.result("auth.signout");
    agent.result("auth.enroll", {{"code", code}});
    agent.result("auth.signout");
    EXPECT_EQ(agent.refusal("auth.enroll", {{"code", code}}),
              "The code was already used. Create a new one on the Download page.");
}

TEST(EnrolmentCodes, LastADay)
{
    TestAgent agent;
    const std::string kept = text(agent.result("auth.enroll_code", {{"label", "desktop"}}).at("code"));
    agent.pass(day - 1);
    agent.result("auth.signout");
    agent.result("auth.enroll", {{"code", kept}});
    const std::string late = text(agent.result("auth.enroll_code", {{"label", "desktop"}}).at("code"));
    agent.pass(day + 1);
    agent.result("auth.signout");
    EXPECT_EQ(agent.refusal("auth.enroll", {{"code", late}}),
              "The code has expired. Create a new one on the Download page.");
}

TEST(AccountClosing, IsUndoneByRecovering)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("account.reclaim"), "The account is not closing; there is nothing to recover.");
    EXPECT_EQ(agent.result("account.close").at("state"), json::value("closing"));
    EXPECT_EQ(agent.result("account").at("state"), json::value("closing"));
    EXPECT_EQ(agent.refusal("account.close"), "The account is closing already.");
    EXPECT_EQ(agent.result("account.reclaim").at("state"), json::value("active"));
    EXPECT_EQ(agent.result("account").at("state"), json::value("active"));
}

TEST(AccountClosing, LetsNobodyNewIn)
{
    TestAgent agent;
    agent.result("account.close");
    const std::string reason = "The account is closing. Recover it first.";
    EXPECT_EQ(agent.refusal("auth.tokens.create", {{"label", "x"}}), reason);
    EXPECT_EQ(agent.refusal("auth.enroll_code", {{"label", "desktop"}}), reason);
    agent.result("account.reclaim");
    agent.result("auth.tokens.create", {{"label", "x"}});
}

TEST(AccountClosing, HasNoRoomForNewVolumes)
{
    TestAgent agent("lists");
    agent.result("account.close");
    const std::string reason = "The account is closing. Recover it first.";
    const json::object wanted{{"name", "late"}, {"size_bytes", 1LL << 30U}};
    const json::object copy{{"recovery_id", 41}, {"new_name", "late-copy"}};
    const std::size_t before = agent.result("volumes.list").as_array().size();
    agent.eventNames();
    EXPECT_EQ(agent.refusal("volumes.create", wanted), reason);
    EXPECT_EQ(agent.refusal("recovery.promote", copy), reason);
    EXPECT_EQ(agent.eventNames(), "");
    EXPECT_EQ(agent.result("volumes.list").as_array().size(), before);
    agent.result("account.reclaim");
    agent.result("volumes.create", wanted);
    agent.result("recovery.promote", copy);
    EXPECT_EQ(agent.result("volumes.list").as_array().size(), before + 2);
}
