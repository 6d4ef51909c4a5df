// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <QSysInfo>

namespace {

using namespace quillfen;
using namespace quillfen::test;

/// What the board says in its own words, wherever it says it.
const QStringList wording{
    u"Account & engine"_s,
    u"Plan"_s,
    u" allocated to volumes, including locked history"_s,
    u"Running"_s,
    u"Not set up"_s,
    u"Quillfen "_s + AppState::appVersion(),
    u"Memory"_s,
    u"Cache disk"_s,
    u"Docker"_s,
    u"Engine"_s,
    u"limactl 1.0.2"_s,
    u"Set up engine"_s,
    u"Start engine"_s,
    u"Stop safely"_s,
    u"Stop safely finishes uploading before the engine shuts down."_s,
    u"API tokens & command line"_s,
    u"Create token"_s,
    u"Enrol another computer"_s,
    u"Label"_s,
    u"Created"_s,
    u"Expires"_s,
    u"Never"_s,
    u"Revoke"_s,
    u"This Mac (app)"_s,
    u"This Mac (quill command)"_s,
    u"Sign out this Mac"_s,
    u"Recover"_s,
    u"Close account…"_s,
    u"New token"_s,
    u"A label, so you recognise it later."_s,
    u"backup script on nas"_s,
    u"Create"_s,
    u"Cancel"_s,
    u"Your token nas"_s,
    u"Your enrolment code (one use, 24 h)"_s,
    u"Revoke nas?"_s,
    u"Whatever uses this token stops working now."_s,
    u"revoked"_s,
    u"Sign out this Mac?"_s,
    u"Both of this Mac's tokens (the app's and the quill command's) are revoked. Your volumes and their history stay "
    u"in "
    "the vault."_s,
    u"Sign out"_s,
    u"signed out"_s,
    u"Close your account?"_s,
    u"Every volume is scheduled for destruction after the grace period. Until then, Recover undoes it."_s,
    u"Type CLOSE to continue."_s,
    u"Close account"_s,
    u"account closing"_s,
    u"account recovered"_s,
    u"Setting up the engine…"_s,
    u"The engine is ready."_s,
    u"engine started"_s,
    u"Stop safely?"_s,
    u"Every volume on this Mac is unmounted after its last change has reached the vault; then the engine stops. "
    "Nothing is lost."_s,
    u"stopping safely…"_s,
    u"Every change reached the vault; the engine is stopped."_s,
};

class WordingTest : public AccountViewTest {
protected:
    void SetUp() override
    {
        const QByteArray computer = QSysInfo::machineHostName().toUtf8();
        Record forever = token("t-3", "nas");
        forever.erase("expires_at");
        const json::object tokens =
            tokenList({token("t-1", ("desktop:" + computer).constData()), token("t-2", ("cli:" + computer).constData()),
                       forever, token("t-4", "backup")});
        agent.answer("auth.tokens.list", tokens);
        for (const char *method : {"auth.tokens.revoke", "auth.signout", "account.close", "account.reclaim",
                                   "vm.prepare", "vm.start", "engine.stop_safely"}) {
            agent.answer(method, nullptr);
        }
        agent.answer("auth.tokens.create", params("token", "x"));
        agent.answer("auth.enroll_code", params("code", "y"));
        AccountViewTest::SetUp();
    }

    void look() { m_seen << texts(); }

    /// Presses a button, answers its question, and waits for the notice at the end.
    void act(const QString &button, const QString &answer, const QString &typed, const QString &notice)
    {
        look();
        const std::size_t calls = agent.log().size();
        if (answer.isEmpty()) {
            press(view.get(), button);
        } else {
            const Answering answering(answer, typed, [&] { read(QApplication::activeModalWidget()); });
            press(view.get(), button);
            m_seen << answering.title << answering.texts;
        }
        m_seen << toast();
        EXPECT_TRUE(eventually([&] { return agent.log().size() > calls; }));
        if (!notice.isEmpty()) {
            EXPECT_TRUE(eventuallyToast(notice)) << notice.toStdString() << " not " << toast().toStdString();
            m_seen << toast();
        }
    }

    void readSecret(const QString &button, const QString &answer, const QString &typed)
    {
        act(button, answer, typed, QString());
        const Answering shown(u"I have saved it"_s);
        EXPECT_TRUE(eventually([&] { return shown.met; }));
        m_seen << shown.title << shown.texts;
    }

    void engineBecomes(const char *status, const QString &button)
    {
        agent.answer("vm.status", params("status", status));
        agent.push("vm.changed", params("status", status));
        ASSERT_TRUE(eventually([&] { return offers(button); }));
    }

    [[nodiscard]] const QStringList &seen() const { return m_seen; }

private:
    void read(const QWidget *dialog)
    {
        for (const QWidget *each : dialog->findChildren<QWidget *>()) {
            m_seen << each->property("placeholderText").toString();
        }
    }

    QStringList m_seen;
};

TEST_F(WordingTest, EveryTextAppearsWhereItShould)
{
    readSecret(u"Create token"_s, u"Create"_s, u"nas"_s);
    readSecret(u"Enrol another computer"_s, QString(), QString());
    act(u"Revoke, nas"_s, u"Revoke"_s, QString(), u"revoked"_s);
    act(u"Stop safely"_s, u"Stop safely"_s, QString(), u"Every change reached the vault; the engine is stopped."_s);
    engineBecomes("Stopped", u"Start engine"_s);
    act(u"Start engine"_s, QString(), QString(), u"engine started"_s);
    engineBecomes("", u"Set up engine"_s);
    act(u"Set up engine"_s, QString(), QString(), u"The engine is ready."_s);
    act(u"Close account…"_s, u"Close account"_s, u"CLOSE"_s, u"account closing"_s);
    agent.answer("account", params("state", "closing"));
    await(state->refresh());
    ASSERT_TRUE(eventually([&] { return offers(u"Recover"_s); }));
    act(u"Recover"_s, QString(), QString(), u"account recovered"_s);
    act(u"Sign out this Mac"_s, u"Sign out"_s, QString(), u"signed out"_s);
    const QString all = seen().join(u'\n');
    for (const QString &text : wording) {
        const bool whole = seen().contains(text);
        EXPECT_TRUE(whole || (text.startsWith(u' ') && all.contains(text))) << text.toStdString();
    }
}

} // namespace
