// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using testing::HasSubstr;
using testing::Not;

namespace {

json::object vmStore()
{
    return {{"volume_id", 3133}};
}

json::object change(const char *key, const json::value &value)
{
    return {{"volume_id", 3133}, {key, value}};
}

} // namespace

TEST(Iscsi, TellsHowOtherMachinesReachTheVolume)
{
    TestAgent agent;
    const json::value info = agent.result("volumes.iscsi", vmStore());
    EXPECT_EQ(info.at("target"), json::value("iqn.2026-02.quillfen:vm-store"));
    EXPECT_EQ(info.at("portal"), json::value("192.168.1.20"));
    EXPECT_EQ(info.at("port"), json::value(3260));
    EXPECT_EQ(info.at("portal_is_set"), json::value(true));
    EXPECT_EQ(info.at("commands").at("linux").as_array().size(), 5U);
    EXPECT_EQ(
        info.at("commands").at("linux").at(3),
        json::value("sudo iscsiadm -m node -T iqn.2026-02.quillfen:vm-store -o update -n node.session.auth.password "
                    "-v <CHAP secret>"));
    EXPECT_THAT(text(info.at("commands").at("windows").at(2)), HasSubstr("-ChapSecret \"<CHAP secret>\""));
}

TEST(Iscsi, ASecretOfTheAppliancesLogIsToldByTheLogAlone)
{
    TestAgent agent;
    EXPECT_FALSE(agent.result("volumes.iscsi", vmStore()).as_object().contains("chap_password"));
    EXPECT_EQ(agent.result("volumes.iscsi.local", vmStore()).at("chap_password"), json::value("k7QmR2xWb9TfLdVz"));
}

TEST(Iscsi, ANewVolumeHasASecretFromTheStart)
{
    TestAgent agent;
    const json::value made =
        agent.result("volumes.create", {{"name", "blocks"}, {"size_bytes", gigabyte}, {"presentation_type", "iscsi"}});
    const json::value info = agent.result("volumes.iscsi", {{"volume_id", made.at("id")}});
    EXPECT_EQ(info.at("chap_password").as_string().size(), 16U);
    EXPECT_EQ(info.at("portal_is_set"), json::value(false));
    EXPECT_EQ(info.at("portal"), json::value("127.0.0.1"));
}

TEST(Iscsi, WithoutChapNoCommandAsksForASecret)
{
    TestAgent agent;
    const json::value info = agent.finish("volumes.iscsi.set", change("chap", false));
    EXPECT_EQ(info.at("chap"), json::value(false));
    EXPECT_THAT(json::serialize(info.at("commands")), Not(HasSubstr("secret")));
    EXPECT_EQ(agent.finish("volumes.iscsi.set", change("chap", true)).at("chap"), json::value(true));
}

TEST(Iscsi, ThePortalIsSetAndCleared)
{
    TestAgent agent;
    EXPECT_EQ(agent.result("volumes.iscsi.set", change("portal", "nas.local")).at("portal"), json::value("nas.local"));
    EXPECT_EQ(agent.result("volumes.iscsi.set", change("portal", "")).at("portal_is_set"), json::value(false));
    EXPECT_THAT(json::serialize(agent.result("volumes.iscsi.set", change("portal", "fe80::1"))),
                HasSubstr("[fe80::1]:3260"));
    for (const char *wrong : {"10.0.0.5:3260", "a b", "x/y", "host;rm", "a\nb"}) {
        EXPECT_EQ(agent.refusal("volumes.iscsi.set", change("portal", wrong)),
                  "The portal is an address or a host name without a port, like 192.168.1.20.")
            << wrong;
    }
    EXPECT_EQ(agent.refusal("volumes.iscsi.set", vmStore()),
              "volumes.iscsi.set needs portal, a text, or chap, true or false");
}

TEST(Iscsi, OtherVolumesHaveNone)
{
    TestAgent agent;
    for (const char *method : {"volumes.iscsi", "volumes.iscsi.local"}) {
        EXPECT_EQ(agent.refusal(method, {{"volume_id", 3121}}), "Documents is not an iSCSI volume.");
    }
}
