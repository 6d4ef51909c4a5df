// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/iscsicard.h"

#include "boardtest.h"

#include "boards/volumes/commandrow.h"
#include "ui/controls/segmented.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/style/fade.h"
#include "ui/text/label.h"

#include <QAccessible>

#include <map>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

const QString secret = u"s3cretWord"_s;

Record target(bool chap = true)
{
    const json::object commands = params("linux", json::array({"discover", "login -p <CHAP secret>"}), "windows",
                                         json::array({"Connect-IscsiTarget"}));
    return params("target", "iqn.x:vm", "portal", "10.0.0.5", "port", 3260, "lun", 1, "portal_is_set", true, "chap",
                  chap, "chap_user", "vm", "chap_password", secret, "commands", commands);
}

class IscsiCardTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        agent.answer("volumes.iscsi", target());
        agent.answer("volumes.iscsi.local", json::object());
        agent.answer("volumes.iscsi.set", nullptr);
        QApplication::clipboard()->clear();
    }

    void show()
    {
        card = std::make_unique<IscsiCard>(state);
        card->resize(900, 600);
        card->show();
        card->setVolume(4);
        field = card->findChild<TextField *>();
        toggle = card->findChild<Toggle *>();
        ASSERT_TRUE(QTest::qWaitForWindowActive(card.get()));
        ASSERT_TRUE(eventually([&] { return says(u"iqn.x:vm"_s); }));
    }

    [[nodiscard]] bool says(const QString &text) const
    {
        const auto shows = [&](const auto *each) { return each->isVisible() && each->text() == text; };
        const auto labels = card->findChildren<AgentLabel *>();
        const auto plain = card->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), shows) || std::any_of(plain.begin(), plain.end(), shows);
    }

    /// Whatever a screen reader or a pointer at rest can find out holds `text`.
    [[nodiscard]] bool gives(const QString &text) const
    {
        for (QWidget *each : card->findChildren<QWidget *>()) {
            const QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(each);
            QStringList words{each->toolTip(), each->accessibleName(), each->accessibleDescription()};
            for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value}) {
                words << (face == nullptr ? QString() : face->text(kind));
            }
            if (words.join(u'\n').contains(text)) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] QList<CommandRow *> lines() const
    {
        QList<CommandRow *> all = card->findChildren<CommandRow *>();
        return all;
    }

    std::unique_ptr<IscsiCard> card;
    TextField *field = nullptr;
    Toggle *toggle = nullptr;
};

TEST_F(IscsiCardTest, ShowsTargetPortalAndLogin)
{
    show();
    for (const QString &text :
         {u"Connect over iSCSI"_s, u"macOS has no built-in initiator: other machines connect to this Mac"_s,
          u"10.0.0.5:3260"_s, u"1"_s, u"CHAP user"_s, u"vm"_s, u"CHAP secret"_s}) {
        EXPECT_TRUE(says(text)) << text.toStdString();
    }
    EXPECT_EQ(field->text(), u"10.0.0.5"_s);
    EXPECT_EQ(field->placeholderText(), u"192.168.1.20"_s);
    EXPECT_TRUE(toggle->isChecked());
}

/// Runs once more with text half as large again.
TEST_F(IscsiCardTest, TheLoginIsReadWhateverTheTextSize)
{
    show();
    card->resize(900, 900);
    QTest::qWait(20);
    std::map<QString, const QWidget *> captions;
    for (const Label *const each : card->findChildren<Label *>()) {
        captions[each->text()] = each;
    }
    for (const AgentLabel *const each : card->findChildren<AgentLabel *>()) {
        captions[each->text()] = each;
    }
    for (const QString &text : {u"CHAP user"_s, u"CHAP secret"_s}) {
        ASSERT_NE(captions[text], nullptr);
        EXPECT_GE(captions[text]->width(), captions[text]->sizeHint().width()) << text.toStdString();
    }
    EXPECT_EQ(captions[u"CHAP user"_s]->width(), captions[u"CHAP secret"_s]->width()) << "in one column";
}

TEST_F(IscsiCardTest, AHiddenSecretIsNowhereToBeFound)
{
    show();
    EXPECT_FALSE(gives(secret));
    EXPECT_FALSE(says(secret));
    EXPECT_EQ(lines().at(1)->line(), u"login -p "_s + secret) << "what is copied is whole";
    press(card.get(), u"Show"_s);
    EXPECT_TRUE(says(secret));
    EXPECT_EQ(buttonOf(card.get(), u"Show"_s), nullptr);
    press(card.get(), u"Hide"_s);
    EXPECT_FALSE(gives(secret));
    EXPECT_FALSE(says(secret));
}

TEST_F(IscsiCardTest, AnotherVolumesSecretIsHiddenAgain)
{
    show();
    press(card.get(), u"Show"_s);
    card->setVolume(5);
    EXPECT_FALSE(gives(secret)) << "at once, before the answer";
    ASSERT_TRUE(eventually([&] { return says(u"iqn.x:vm"_s); }));
    EXPECT_FALSE(says(secret));
    card->setVolume(std::nullopt);
    card->setVolume(5);
    EXPECT_FALSE(says(secret));
}

TEST_F(IscsiCardTest, ShowAndHideKeepTheFocus)
{
    show();
    buttonOf(card.get(), u"Show"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(card->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(card->focusWidget(), buttonOf(card.get(), u"Hide"_s));
    QTest::keyClick(card->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(card->focusWidget(), buttonOf(card.get(), u"Show"_s));
}

TEST_F(IscsiCardTest, CopiesTheSecretWhileItIsHidden)
{
    show();
    press(card.get(), u"Copy, CHAP secret"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), secret);
    EXPECT_EQ(toast(), u"Copied."_s);
}

TEST_F(IscsiCardTest, WithoutASecretItSaysWhereItIs)
{
    agent.answer("volumes.iscsi", with(target(), "chap_password", ""));
    show();
    EXPECT_TRUE(says(u"only in the appliance's log; redeploy it to adopt an issued secret"_s));
    EXPECT_EQ(buttonOf(card.get(), u"Show"_s), nullptr);
    EXPECT_EQ(buttonOf(card.get(), u"Copy, CHAP secret"_s), nullptr);
    EXPECT_FALSE(says(u"from the appliance's log"_s));
    EXPECT_EQ(lines().at(1)->line(), u"login -p <CHAP secret>"_s);
}

TEST_F(IscsiCardTest, ASecretOfTheLogSaysWhereItIsFrom)
{
    agent.answer("volumes.iscsi", with(target(), "chap_password", ""));
    agent.answer("volumes.iscsi.local", params("chap_password", "logged"));
    show();
    EXPECT_TRUE(eventually([&] { return says(u"from the appliance's log"_s); }));
    EXPECT_EQ(lines().at(1)->line(), u"login -p logged"_s);
    EXPECT_FALSE(gives(u"logged"_s));
}

TEST_F(IscsiCardTest, DecliningLeavesChapOnAndSendsNothing)
{
    show();
    bool duringQuestion = false;
    const Answering answer(u"Cancel"_s, {}, [&] { duringQuestion = toggle->isChecked(); });
    QTest::mouseClick(toggle, Qt::LeftButton);
    EXPECT_THAT(answer.texts, testing::Contains(u"Turn CHAP off?"_s));
    EXPECT_THAT(answer.texts, testing::Contains(u"The target becomes open: any machine that can reach the portal can "
                                                "log in and read and write this volume, with no password. Use it on a "
                                                "network you trust."_s));
    EXPECT_TRUE(duringQuestion);
    EXPECT_TRUE(toggle->isChecked());
    QTest::qWait(20);
    EXPECT_EQ(agent.count("volumes.iscsi.set"), 0U);
}

TEST_F(IscsiCardTest, AcceptingTurnsChapOff)
{
    show();
    agent.answer("volumes.iscsi", target(false));
    const Answering answer(u"Turn off"_s);
    QTest::mouseClick(toggle, Qt::LeftButton);
    EXPECT_TRUE(eventually([&] { return !toggle->isChecked(); }));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "chap", false));
    EXPECT_EQ(toast(), u"CHAP is off: the target is open."_s);
    EXPECT_TRUE(says(u"Off: an open target, no login. Anyone who can reach the portal can read and write this "
                     "volume."_s));
    EXPECT_FALSE(says(u"CHAP secret"_s));
}

TEST_F(IscsiCardTest, TurningChapOnAsksNothing)
{
    agent.answer("volumes.iscsi", target(false));
    show();
    ASSERT_FALSE(toggle->isChecked());
    agent.answer("volumes.iscsi", target());
    toggle->setFocus();
    QTest::keyClick(toggle, Qt::Key_Space);
    EXPECT_TRUE(eventually([&] { return toggle->isChecked(); }));
    EXPECT_EQ(toast(), u"CHAP is on again."_s);
}

TEST_F(IscsiCardTest, ARefusedChangeLeavesTheToggle)
{
    show();
    agent.fail("volumes.iscsi.set", {.message = "busy"});
    const Answering answer(u"Turn off"_s);
    QTest::mouseClick(toggle, Qt::LeftButton);
    EXPECT_TRUE(eventually([&] { return toast() == u"busy"_s; }));
    EXPECT_TRUE(toggle->isChecked());
}

TEST_F(IscsiCardTest, SavesByButtonAndByEnter)
{
    show();
    agent.answer("volumes.iscsi", with(target(), "portal", "10.0.0.9"));
    field->setText(u"  10.0.0.9 "_s);
    press(card.get(), u"Save"_s);
    EXPECT_TRUE(eventually([&] { return says(u"10.0.0.9:3260"_s); }));
    EXPECT_EQ(field->text(), u"10.0.0.9"_s);
    agent.answer("volumes.iscsi", with(target(), "portal_is_set", false));
    field->setText(u"  "_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return toast().startsWith(u"Portal cleared"_s); }));
    EXPECT_EQ(sent("volumes.iscsi.set"), params("volume_id", 4, "portal", ""));
    EXPECT_TRUE(eventually([&] { return says(u"10.0.0.5:3260 (this Mac only)"_s); }));
    EXPECT_EQ(field->text(), QString());
}

TEST_F(IscsiCardTest, ThePortalReadsAsTheAgentHasTakenIt)
{
    show();
    agent.answer("volumes.iscsi", with(target(), "portal", "nas.local"));
    field->setText(u"NAS.local"_s);
    press(card.get(), u"Save"_s);
    EXPECT_TRUE(eventually([&] { return field->text() == u"nas.local"_s; }));
}

TEST_F(IscsiCardTest, WhatIsTypedSurvivesWhatIsLoaded)
{
    show();
    field->setText(u"10.0.0."_s);
    agent.fail("volumes.iscsi.set", {.message = "busy"});
    press(card.get(), u"Save"_s);
    ASSERT_TRUE(eventually([&] { return toast() == u"busy"_s; }));
    EXPECT_EQ(field->text(), u"10.0.0."_s);
    field->setText(u"10.0.0.7"_s);
    agent.answer("volumes.iscsi.set", nullptr);
    const Answering answer(u"Turn off"_s);
    QTest::mouseClick(toggle, Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.iscsi") == 2; }));
    QTest::qWait(20);
    EXPECT_EQ(field->text(), u"10.0.0.7"_s);
}

TEST_F(IscsiCardTest, CopiesALineOrAll)
{
    show();
    QTest::mouseClick(lines().at(0), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), u"discover"_s);
    EXPECT_EQ(toast(), u"Copied."_s);
    lines().at(1)->setFocus();
    QTest::keyClick(lines().at(1), Qt::Key_Return);
    EXPECT_EQ(QApplication::clipboard()->text(), u"login -p "_s + secret);
    press(card.get(), u"Copy all"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"discover\nlogin -p "_s + secret);
}

TEST_F(IscsiCardTest, ListsTheCommandsOfTheChosenSystem)
{
    show();
    EXPECT_EQ(lines().size(), 2);
    press(card.get(), u"Windows (PowerShell as Administrator)"_s);
    EXPECT_EQ(lines().size(), 1);
    EXPECT_EQ(lines().at(0)->line(), u"Connect-IscsiTarget"_s);
    press(card.get(), u"Linux"_s);
    EXPECT_EQ(lines().size(), 2);
}

TEST_F(IscsiCardTest, AFailedLoadLeavesAnEmptyCardToUse)
{
    agent.fail("volumes.iscsi", {.message = "no"});
    agent.fail("volumes.iscsi.local", {.message = "no"});
    card = std::make_unique<IscsiCard>(state);
    card->resize(900, 600);
    card->show();
    card->setVolume(4);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.iscsi.local") == 1; }));
    card->findChild<TextField *>()->setText(u"10.0.0.9"_s);
    press(card.get(), u"Save"_s);
    EXPECT_TRUE(eventually([&] { return toast().startsWith(u"Portal saved"_s); }));
    EXPECT_FALSE(buttonOf(card.get(), u"Copy all"_s)->isEnabled());
}

} // namespace
