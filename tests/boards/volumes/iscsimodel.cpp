// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/iscsimodel.h"

#include "boardtest.h"

#include <QMimeData>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

Record target(const char *secret = "s3cret")
{
    const json::object commands = params("linux", json::array({"discover", "login -p <CHAP secret>"}), "windows",
                                         json::array({"New-IscsiTargetPortal"}));
    return params("target", "iqn.x:vm", "portal", "10.0.0.5", "port", 3260, "lun", 1, "portal_is_set", true, "chap",
                  true, "chap_user", "vm", "chap_password", secret, "notes", "One at a time.", "commands", commands);
}

TEST(IscsiDetails, ReadTheAnswer)
{
    const IscsiDetails details = iscsiDetails(target(), QString());
    EXPECT_EQ(details.target, u"iqn.x:vm"_s);
    EXPECT_EQ(details.portal, u"10.0.0.5:3260"_s);
    EXPECT_EQ(details.lun, u"1"_s);
    EXPECT_TRUE(details.chap);
    EXPECT_EQ(details.chapUser, u"vm"_s);
    EXPECT_EQ(details.secret, u"s3cret"_s);
    EXPECT_FALSE(details.secretFromLog);
    EXPECT_EQ(details.notes, u"One at a time."_s);
}

TEST(IscsiDetails, APortalThatIsNotSetIsForThisMacOnly)
{
    EXPECT_EQ(iscsiDetails(with(target(), "portal", "127.0.0.1", "portal_is_set", false), {}).portal,
              u"127.0.0.1:3260 (this Mac only)"_s);
    Record unsaid = target();
    unsaid.erase("portal_is_set");
    EXPECT_EQ(iscsiDetails(unsaid, {}).portal, u"10.0.0.5:3260 (this Mac only)"_s);
    EXPECT_EQ(iscsiDetails(Record(), {}).portal, QString());
}

TEST(IscsiDetails, PortsAreJoinedAsAddressesAre)
{
    EXPECT_EQ(joinedPortal(u"fd00::1"_s, u"3260"_s), u"[fd00::1]:3260"_s);
    EXPECT_EQ(joinedPortal(u"[fd00::1]"_s, u"3260"_s), u"[fd00::1]:3260"_s);
    EXPECT_EQ(joinedPortal(u"nas.local"_s, u"3260"_s), u"nas.local:3260"_s);
    EXPECT_EQ(joinedPortal(u"nas.local"_s, u""_s), u"nas.local"_s);
}

TEST(IscsiDetails, TheIssuedSecretComesBeforeTheLogs)
{
    EXPECT_EQ(iscsiDetails(target(), u"logged"_s).secret, u"s3cret"_s);
    EXPECT_FALSE(iscsiDetails(target(), u"logged"_s).secretFromLog);
    EXPECT_EQ(iscsiDetails(target(""), u"logged"_s).secret, u"logged"_s);
    EXPECT_TRUE(iscsiDetails(target(""), u"logged"_s).secretFromLog);
    EXPECT_EQ(iscsiDetails(target(""), {}).secret, std::nullopt);
}

TEST(CommandLines, CarryTheSecretWhenItIsKnown)
{
    EXPECT_THAT(commandLines(target(), InitiatorSystem::Linux, u"k"_s), ElementsAre(u"discover"_s, u"login -p k"_s));
    EXPECT_THAT(commandLines(target(), InitiatorSystem::Linux, {}),
                ElementsAre(u"discover"_s, u"login -p <CHAP secret>"_s));
    EXPECT_THAT(commandLines(target(), InitiatorSystem::Windows, {}), ElementsAre(u"New-IscsiTargetPortal"_s));
}

TEST(CommandLines, AreNoneWhereTheAnswerHasNone)
{
    EXPECT_THAT(commandLines(Record(), InitiatorSystem::Linux, {}), IsEmpty());
    EXPECT_THAT(commandLines(params("commands", "x"), InitiatorSystem::Linux, {}), IsEmpty());
    EXPECT_THAT(commandLines(params("commands", params("linux", 7)), InitiatorSystem::Linux, {}), IsEmpty());
}

class IscsiModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        agent.answer("volumes.iscsi", target());
        agent.answer("volumes.iscsi.local", params("chap_password", "logged"));
        agent.answer("volumes.iscsi.set", nullptr);
        QApplication::clipboard()->clear();
    }

    std::shared_ptr<IscsiModel> model = std::make_shared<IscsiModel>(state);
};

TEST_F(IscsiModelTest, LoadsWhatTheAgentKnows)
{
    await(model->load(4));
    EXPECT_THAT(agent.log(), ElementsAre("volumes.iscsi")) << "with a secret the log is left alone";
    EXPECT_EQ(sent("volumes.iscsi"), params("volume_id", 4));
    EXPECT_EQ(model->info(), target());
    EXPECT_EQ(model->savedPortal(), u"10.0.0.5"_s);
}

TEST_F(IscsiModelTest, WithoutASecretTheLogIsAsked)
{
    agent.answer("volumes.iscsi", with(target(""), "portal_is_set", false));
    await(model->load(4));
    EXPECT_THAT(agent.log(), ElementsAre("volumes.iscsi", "volumes.iscsi.local"));
    EXPECT_EQ(sent("volumes.iscsi.local"), params("volume_id", 4));
    EXPECT_EQ(model->localSecret(), u"logged"_s);
    EXPECT_EQ(model->savedPortal(), QString());
}

TEST_F(IscsiModelTest, FailuresAreNoNotices)
{
    agent.fail("volumes.iscsi", {.message = "no"});
    agent.fail("volumes.iscsi.local", {.message = "no"});
    await(model->load(4));
    EXPECT_THAT(agent.log(), ElementsAre("volumes.iscsi", "volumes.iscsi.local"));
    EXPECT_EQ(toast(), QString());
    EXPECT_EQ(model->info(), Record());
    EXPECT_EQ(model->localSecret(), QString());
}

TEST_F(IscsiModelTest, AnAnswerForAnEarlierVolumeIsDropped)
{
    agent.hold("volumes.iscsi");
    const QCoro::Task<> first = model->load(4);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.iscsi") == 1; }));
    agent.on("volumes.iscsi", [](const json::object &asked) -> FakeAgent::Answer {
        return with(target(), "target", asked.at("volume_id").as_int64() == 4 ? "four" : "five");
    });
    const QCoro::Task<> second = model->load(5);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.iscsi") == 2; }));
    agent.release("volumes.iscsi");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(str(model->info(), "target"), u"five"_s);
}

TEST_F(IscsiModelTest, AnotherVolumeNeverShowsThisOnesSecret)
{
    agent.answer("volumes.iscsi", target(""));
    await(model->load(4));
    ASSERT_EQ(model->localSecret(), u"logged"_s);
    agent.silent("volumes.iscsi");
    const QCoro::Task<> task = model->load(5);
    EXPECT_EQ(model->localSecret(), QString());
    EXPECT_EQ(model->info(), Record());
}

TEST_F(IscsiModelTest, SavesThePortalTrimmedAndLoadsAgain)
{
    await(model->load(4));
    agent.clearLog();
    await(model->save(4, u"  192.168.1.20\t"_s));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "portal", "192.168.1.20"));
    EXPECT_EQ(toast(), u"Portal saved. Other machines log in to 192.168.1.20."_s);
    EXPECT_THAT(agent.log(), ElementsAre("volumes.iscsi.set", "volumes.iscsi"));
}

TEST_F(IscsiModelTest, SpacesClearThePortal)
{
    await(model->save(4, u"   "_s));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "portal", ""));
    EXPECT_EQ(toast(), u"Portal cleared: the target is reached from this Mac only."_s);
}

TEST_F(IscsiModelTest, ARefusedPortalIsSaidAndNothingIsLoaded)
{
    await(model->load(4));
    agent.clearLog();
    agent.fail("volumes.iscsi.set", {.message = "not an address"});
    await(model->save(4, u"x y"_s));
    EXPECT_EQ(toast(), u"not an address"_s);
    EXPECT_THAT(agent.log(), ElementsAre("volumes.iscsi.set"));
    EXPECT_EQ(model->savedPortal(), u"10.0.0.5"_s);
}

TEST_F(IscsiModelTest, SwitchesChap)
{
    await(model->load(4));
    await(model->setChap(4, false));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "chap", false));
    EXPECT_EQ(toast(), u"CHAP is off: the target is open."_s);
    await(model->setChap(4, true));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "chap", true));
    EXPECT_EQ(toast(), u"CHAP is on again."_s);
    EXPECT_EQ(agent.count("volumes.iscsi"), 3U);
    agent.fail("volumes.iscsi.set", {.message = "busy"});
    await(model->setChap(4, false));
    EXPECT_EQ(toast(), u"busy"_s);
}

TEST_F(IscsiModelTest, WhatEndsLateDoesNotBringTheEarlierVolumeBack)
{
    await(model->load(4));
    agent.hold("volumes.iscsi.set");
    const QCoro::Task<> task = model->save(4, u"10.0.0.9"_s);
    await(model->load(5));
    agent.clearLog();
    agent.release("volumes.iscsi.set");
    ASSERT_TRUE(eventually([&] { return task.isReady(); }));
    EXPECT_EQ(agent.count("volumes.iscsi"), 0U);
}

TEST_F(IscsiModelTest, CopiesAreMarkedAsSecret)
{
    model->copy(u"s3cret"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"s3cret"_s);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasFormat(u"x-kde-passwordManagerHint"_s));
    EXPECT_EQ(toast(), u"Copied."_s) << "the notice holds no secret";
}

} // namespace
