// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/ophubsview.h"

#include "operatortest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::Contains;

class HubsViewTest : public OperatorTabTest<OpHubsView> {
protected:
    [[nodiscard]] QLineEdit *field(const QString &name) const
    {
        for (auto *each : view->findChildren<QLineEdit *>()) {
            if (each->accessibleName() == name) {
                return each;
            }
        }
        return nullptr;
    }

    void openHubs()
    {
        view->load();
        ASSERT_TRUE(comes(u"hub-b"_s));
    }
};

TEST_F(HubsViewTest, SaysNothingOfHubsBeforeTheAgentHasAnswered)
{
    EXPECT_FALSE(says(u"No hubs registered."_s));
    EXPECT_TRUE(says(u"…"_s));
    giveHubs({});
    agent.answer("admin.hubs.replication", json::object());
    view->load();
    EXPECT_TRUE(comes(u"No hubs registered."_s));
    EXPECT_TRUE(comes(u"No replicas reported."_s));
}

TEST_F(HubsViewTest, RowsSayWhatTheAgentTells)
{
    openHubs();
    for (const char *text : {"hub-a", "primary", "10.0.0.1:8443", "serving", "10% sold", "hub-b", "replica", "ready"}) {
        EXPECT_TRUE(says(QString::fromLatin1(text))) << text;
    }
    EXPECT_TRUE(comes(u"lag 0.8 s"_s));
    EXPECT_TRUE(says(u"streaming"_s));
    EXPECT_TRUE(says(u"1 of 1 replicas connected."_s));
    EXPECT_TRUE(says(u"Preflight checks the machine and shows its host key; registering builds it."_s));
}

TEST_F(HubsViewTest, ThePrimaryIsDemotedOthersArePromotedOrRetired)
{
    Record roleless = hub(3, "hub-d", "", "building");
    roleless.erase("role");
    roleless.erase("sold_pct");
    giveHubs({hub(1, "hub-a", "primary"), hub(2, "hub-b", "replica"), roleless});
    view->load();
    ASSERT_TRUE(comes(u"hub-d"_s));
    EXPECT_TRUE(offers(u"Demote, hub-a"_s));
    EXPECT_FALSE(offers(u"Promote, hub-a"_s));
    EXPECT_FALSE(offers(u"Retire, hub-a"_s));
    for (const QString &name : {u"hub-b"_s, u"hub-d"_s}) {
        EXPECT_TRUE(offers(u"Promote, "_s + name));
        EXPECT_TRUE(offers(u"Retire, "_s + name));
        EXPECT_FALSE(offers(u"Demote, "_s + name));
        EXPECT_TRUE(offers(u"Poll, "_s + name));
        EXPECT_TRUE(offers(u"Rescan, "_s + name));
    }
    EXPECT_FALSE(says(u"30% sold"_s));
}

TEST_F(HubsViewTest, ThereIsABannerWhileAHubIsPromoted)
{
    openHubs();
    EXPECT_FALSE(says(u"Promotion: idle"_s));
    agent.answer("admin.hubs.promote_status", params("state", "catching up", "detail", "hub-b is 41 s behind"));
    view->load();
    EXPECT_TRUE(comes(u"Promotion: catching up"_s));
    EXPECT_TRUE(says(u"hub-b is 41 s behind"_s));
    agent.answer("admin.hubs.promote_status", params("state", ""));
    view->load();
    EXPECT_TRUE(eventually([&] { return !says(u"hub-b is 41 s behind"_s); }));
}

TEST_F(HubsViewTest, AFailedListShowsItsReasonAndKeepsTheRows)
{
    openHubs();
    agent.fail("admin.hubs.list", {.message = "vault away"});
    agent.fail("admin.hubs.replication", {.message = "vault away"});
    view->load();
    EXPECT_TRUE(comes(u"vault away"_s));
    EXPECT_TRUE(says(u"hub-a"_s));
    EXPECT_TRUE(comes(u"No replicas reported."_s));
}

TEST_F(HubsViewTest, PollingAndRescanningAskNothing)
{
    openHubs();
    agent.answer("admin.hubs.poll", nullptr);
    agent.answer("admin.hubs.rescan", nullptr);
    press(view, u"Poll, hub-b"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"polled"_s; }));
    press(view, u"Rescan, hub-a"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"rescanned"_s; }));
    EXPECT_EQ(sent("admin.hubs.poll"), params("site_id", 2));
    EXPECT_EQ(sent("admin.hubs.rescan"), params("site_id", 1));
}

TEST_F(HubsViewTest, ARunningActionHoldsItsButton)
{
    openHubs();
    agent.answer("admin.hubs.poll", nullptr);
    agent.hold("admin.hubs.poll");
    QAbstractButton *const poll = buttonOf(view, u"Poll, hub-b"_s);
    QTest::mouseClick(poll, Qt::LeftButton);
    EXPECT_TRUE(eventually([&] { return !poll->isEnabled(); }));
    EXPECT_TRUE(buttonOf(view, u"Poll, hub-a"_s)->isEnabled());
    agent.release("admin.hubs.poll");
    EXPECT_TRUE(eventually([&] { return poll->isEnabled(); }));
}

TEST_F(HubsViewTest, PromotingAsksFirst)
{
    openHubs();
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Promote, hub-b"_s);
        EXPECT_THAT(answer.texts, Contains(u"Promote hub-b?"_s));
        EXPECT_THAT(answer.texts, Contains(u"It becomes the serving hub; the current primary is demoted after the lag "
                                           "and identity checks pass. Appliances follow within a minute."_s));
    }
    EXPECT_EQ(agent.count("admin.hubs.promote"), 0U);
    agent.answer("admin.hubs.promote", nullptr);
    const Answering answer(u"Promote"_s);
    press(view, u"Promote, hub-b"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"promotion started"_s; }));
    EXPECT_EQ(sent("admin.hubs.promote"), params("site_id", 2));
}

TEST_F(HubsViewTest, DemotingAsksFirst)
{
    openHubs();
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Demote, hub-a"_s);
        EXPECT_THAT(answer.texts, Contains(u"Demote hub-a?"_s));
        EXPECT_THAT(answer.texts, Contains(u"Only after another hub was promoted. Serving stops here."_s));
    }
    EXPECT_EQ(agent.count("admin.hubs.demote"), 0U);
    agent.answer("admin.hubs.demote", nullptr);
    const Answering answer(u"Demote"_s);
    press(view, u"Demote, hub-a"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"demoted"_s; }));
}

TEST_F(HubsViewTest, RetiringWantsTheExactWord)
{
    openHubs();
    for (const char *wrong : {"", "retire", "RETIRE ", " RETIRE", "Retire"}) {
        const Answering answer(u"Retire"_s, QString::fromLatin1(wrong));
        press(view, u"Retire, hub-b"_s);
        EXPECT_THAT(answer.texts, Contains(u"Retire hub-b?"_s));
        EXPECT_THAT(answer.texts, Contains(u"The site is removed and its machine wiped of Quill. Only for a hub that "
                                           "is not serving."_s));
    }
    QTest::qWait(5);
    EXPECT_EQ(agent.count("admin.hubs.retire"), 0U);
    agent.answer("admin.hubs.retire", nullptr);
    const Answering answer(u"Retire"_s, u"RETIRE"_s);
    press(view, u"Retire, hub-b"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"retired"_s; }));
    EXPECT_EQ(sent("admin.hubs.retire"), params("force", true, "wipe", true, "site_id", 2));
}

TEST_F(HubsViewTest, AQuestionKeepsItsHubWhenTheListChangesUnderIt)
{
    openHubs();
    agent.answer("admin.hubs.retire", nullptr);
    const Answering answer(u"Retire"_s, u"RETIRE"_s, [&] {
        giveHubs({hub(1, "hub-a", "primary"), hub(9, "hub-z", "replica")});
        view->load();
        EXPECT_TRUE(comes(u"hub-z"_s));
    });
    press(view, u"Retire, hub-b"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"retired"_s; }));
    EXPECT_EQ(sent("admin.hubs.retire").at("site_id"), json::value(2));
}

TEST_F(HubsViewTest, AddingShowsTheHostKeyAndBuildsOnAgreement)
{
    openHubs();
    agent.answer("admin.hubs.preflight", params("fingerprint", "SHA256:abc", "summary", "16 cores, 40 TB"));
    agent.answer("admin.hubs.add", params("id", 77));
    agent.answer("admin.hubs.build.set", nullptr);
    field(u"name, e.g. hub-e"_s)->setText(u"hub-e"_s);
    field(u"address"_s)->setText(u"10.0.0.5:8443"_s);
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Preflight"_s);
        ASSERT_TRUE(eventually([&] { return answer.met; }));
        EXPECT_THAT(answer.texts, Contains(u"Register hub-e?"_s));
        EXPECT_THAT(answer.texts, Contains(u"Host key SHA256:abc\n16 cores, 40 TB"_s));
    }
    EXPECT_EQ(agent.count("admin.hubs.add"), 0U);
    const Answering answer(u"Register and build"_s);
    QTest::keyClick(field(u"address"_s), Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return toast() == u"hub-e registered; the build is running"_s; }));
    EXPECT_TRUE(eventually([&] { return agent.count("admin.hubs.build.set") == 1; }));
    EXPECT_EQ(sent("admin.hubs.build.set"), params("site_id", 77));
}

TEST_F(HubsViewTest, WhatIsRegisteredIsWhatWasChecked)
{
    openHubs();
    agent.answer("admin.hubs.preflight", params("fingerprint", "SHA256:abc", "summary", "16 cores"));
    agent.answer("admin.hubs.add", params("id", 77));
    agent.answer("admin.hubs.build.set", nullptr);
    field(u"name, e.g. hub-e"_s)->setText(u"hub-e"_s);
    const Answering answer(u"Register and build"_s, {}, [&] { field(u"name, e.g. hub-e"_s)->setText(u"other"_s); });
    press(view, u"Preflight"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.add") == 1; }));
    EXPECT_EQ(sent("admin.hubs.add").at("name"), json::value("hub-e"));
}

TEST_F(HubsViewTest, AFailedPreflightAsksNothing)
{
    openHubs();
    agent.fail("admin.hubs.preflight", {.message = "Nothing answers at x:1."});
    press(view, u"Preflight"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"Nothing answers at x:1."_s; }));
    QTest::qWait(10);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(agent.count("admin.hubs.add"), 0U);
}

TEST_F(HubsViewTest, NothingStandsOverTheEdgeInANarrowWindow)
{
    giveHubs({hub(1, "hub-with-a-name-of-sixty-characters-which-nobody-would-ever-give", "primary"),
              hub(2, "hub-b", "replica", "catching up")});
    view->setGeometry(0, 0, 696, 600);
    view->load();
    ASSERT_TRUE(comes(u"hub-b"_s));
    for (const QString &name : {u"Poll, hub-b"_s, u"Rescan, hub-b"_s, u"Promote, hub-b"_s, u"Retire, hub-b"_s}) {
        const QAbstractButton *const button = buttonOf(view, name);
        const QRect place(button->mapTo(view, QPoint()), button->size());
        EXPECT_LE(place.right(), 696 - 16) << name.toStdString();
        EXPECT_GE(place.left(), 380) << name.toStdString();
    }
}

TEST_F(HubsViewTest, ClosedWhileThePreflightRunsNothingIsAsked)
{
    openHubs();
    agent.answer("admin.hubs.preflight", params("fingerprint", "x", "summary", ""));
    agent.hold("admin.hubs.preflight");
    press(view, u"Preflight"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("admin.hubs.preflight") == 1; }));
    delete view;
    view = nullptr;
    agent.release("admin.hubs.preflight");
    QTest::qWait(20);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(agent.count("admin.hubs.add"), 0U);
}

} // namespace
