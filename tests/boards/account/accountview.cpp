// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include "ui/lists/longlist.h"
#include "ui/parts/bar.h"

#include <QLineEdit>
#include <QSysInfo>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;

TEST_F(AccountViewTest, ShowsPlanAndAccount)
{
    state->account =
        params("email", "mara@northmere.example", "plan", "pro", "purchased_capacity_bytes", 400 * gigabyte);
    state->volumes = Records{volume(1, u"photos"_s, 100 * gigabyte)};
    EXPECT_TRUE(eventuallySays(u"100 GB allocated to volumes, including locked history"_s));
    for (const QString &text :
         {u"Account & engine"_s, u"Plan"_s, u"Pro plan"_s, u"Account"_s, u"mara@northmere.example"_s, u"Allocated"_s}) {
        EXPECT_TRUE(says(text)) << text.toStdString();
    }
    auto *const bar = view->findChild<Bar *>();
    EXPECT_DOUBLE_EQ(bar->fraction(), 0.25);
    EXPECT_EQ(bar->property("accessibleValue").toString(), u"100 GB of 400 GB"_s);
}

TEST_F(AccountViewTest, ShowsTheEngineWithWhatItHasAndRuns)
{
    for (const QString &text :
         {u"Engine"_s, u"Running"_s, u"Quillfen "_s + AppState::appVersion(), u"Memory"_s, u"4 GB"_s, u"Cache disk"_s,
          u"80 GB"_s, u"Docker"_s, u"27.3.1"_s, u"limactl 1.0.2"_s, u"quill-vol-1"_s, u"Up 6 days"_s,
          u"quill-vol-1, Up 6 days"_s, u"Stop safely finishes uploading before the engine shuts down."_s}) {
        EXPECT_TRUE(eventuallySays(text)) << text.toStdString();
    }
    EXPECT_TRUE(offers(u"Stop safely"_s));
    EXPECT_FALSE(offers(u"Start engine"_s));
    EXPECT_FALSE(offers(u"Set up engine"_s));
}

TEST_F(AccountViewTest, TheEngineCardFollowsTheAgentsEvents)
{
    agent.fail("appliance.list", {.message = "The engine is not running."});
    agent.push("vm.changed", params("exists", true, "status", "Stopped"));
    EXPECT_TRUE(eventuallySays(u"Stopped"_s));
    EXPECT_TRUE(eventually([&] { return offers(u"Start engine"_s); }));
    EXPECT_FALSE(offers(u"Stop safely"_s));
    EXPECT_FALSE(says(u"Stop safely finishes uploading before the engine shuts down."_s));
    EXPECT_TRUE(eventually([&] { return !says(u"quill-vol-1"_s); })) << "nothing runs in an engine that does not";
    agent.push("vm.changed", params("exists", false, "status", ""));
    EXPECT_TRUE(eventuallySays(u"Not set up"_s));
    EXPECT_TRUE(eventually([&] { return offers(u"Set up engine"_s); }));
    EXPECT_FALSE(offers(u"Start engine"_s));
    agent.answer("appliance.list", json::array({appliance("quill-vol-5", "Created")}));
    agent.push("vm.changed", params("exists", true, "status", "Running"));
    EXPECT_TRUE(eventuallySays(u"quill-vol-5"_s));
}

TEST_F(AccountViewTest, TheEngineIsSetUp)
{
    agent.push("vm.changed", params("status", ""));
    ASSERT_TRUE(eventually([&] { return offers(u"Set up engine"_s); }));
    agent.answer("vm.prepare", nullptr);
    press(view.get(), u"Set up engine"_s);
    EXPECT_TRUE(eventuallyToast(u"The engine is ready."_s));
}

TEST_F(AccountViewTest, TheEngineIsStarted)
{
    agent.push("vm.changed", params("status", "Stopped"));
    ASSERT_TRUE(eventually([&] { return offers(u"Start engine"_s); }));
    agent.answer("vm.start", nullptr);
    press(view.get(), u"Start engine"_s);
    EXPECT_TRUE(eventuallyToast(u"engine started"_s));
}

TEST_F(AccountViewTest, StoppingIsAskedFor)
{
    agent.answer("engine.stop_safely", nullptr);
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Stop safely"_s);
        EXPECT_EQ(answer.title, u"Stop safely?"_s);
        EXPECT_THAT(answer.texts, Contains(u"Every volume on this Mac is unmounted after its last change has reached "
                                           "the vault; then the engine stops. Nothing is lost."_s));
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("engine.stop_safely"), 0U);
    const Answering answer(u"Stop safely"_s);
    press(view.get(), u"Stop safely"_s);
    EXPECT_TRUE(eventuallyToast(u"Every change reached the vault; the engine is stopped."_s));
}

TEST_F(AccountViewTest, TheAppliancesGoDownOneByOneInSightWhileTheEngineStops)
{
    agent.answer("engine.stop_safely", nullptr);
    agent.hold("engine.stop_safely");
    const Answering answer(u"Stop safely"_s);
    press(view.get(), u"Stop safely"_s);
    ASSERT_TRUE(eventuallySays(u"Stopping safely"_s));
    agent.answer("appliance.list", json::array({appliance("quill-vol-1", "Exited (0) 1 second ago")}));
    agent.push("vm.progress", params("message", "Uploading the last changes of photos"));
    EXPECT_TRUE(eventuallySays(u"quill-vol-1, Exited (0) 1 second ago"_s)) << "not only with the next refresh";
    agent.release("engine.stop_safely");
    EXPECT_TRUE(eventually([&] { return !says(u"Stopping safely"_s); }));
}

TEST_F(AccountViewTest, ALongOperationShowsThatItRunsSinceWhenAndTheLastMessage)
{
    Instant time{std::chrono::milliseconds(1'800'000'000'000)};
    const ClockOverride clock([&] { return time; });
    agent.answer("engine.stop_safely", nullptr);
    agent.hold("engine.stop_safely");
    const Answering answer(u"Stop safely"_s);
    press(view.get(), u"Stop safely"_s);
    ASSERT_TRUE(eventuallySays(u"Stopping safely"_s));
    EXPECT_TRUE(says(u"since 08:00 · 0 s"_s));
    EXPECT_FALSE(buttonOf(view.get(), u"Stop safely"_s)->isEnabled());
    agent.push("vm.progress", params("message", "Uploading the last changes of photos"));
    EXPECT_TRUE(eventuallySays(u"Uploading the last changes of photos"_s));
    time += std::chrono::minutes(69);
    EXPECT_TRUE(eventuallySays(u"since 08:00 · 1 h 9 min"_s)) << "the time goes on by itself";
    // Nothing else waits for it.
    EXPECT_TRUE(buttonOf(view.get(), u"Create token"_s)->isEnabled());
    EXPECT_TRUE(buttonOf(view.get(), u"Sign out this Mac"_s)->isEnabled());
    agent.release("engine.stop_safely");
    EXPECT_TRUE(eventually([&] { return !says(u"Stopping safely"_s); }));
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Stop safely"_s)->isEnabled(); }));
}

TEST_F(AccountViewTest, ALongOperationIsFoundAgainAfterTheBoardWasLeft)
{
    agent.answer("engine.stop_safely", nullptr);
    agent.hold("engine.stop_safely");
    {
        const Answering answer(u"Stop safely"_s);
        press(view.get(), u"Stop safely"_s);
    }
    ASSERT_TRUE(eventually([&] { return agent.count("engine.stop_safely") == 1; }));
    view.reset();
    agent.push("vm.progress", params("message", "Uploading 3.1 GB"));
    ASSERT_TRUE(eventuallyToast(u"Uploading 3.1 GB"_s));
    open();
    EXPECT_TRUE(eventuallySays(u"Stopping safely"_s));
    EXPECT_TRUE(says(u"Uploading 3.1 GB"_s));
    EXPECT_FALSE(buttonOf(view.get(), u"Stop safely"_s)->isEnabled());
    agent.release("engine.stop_safely");
    EXPECT_TRUE(eventually([&] { return !says(u"Stopping safely"_s); }));
}

TEST_F(AccountViewTest, TokensHaveARowEach)
{
    Record forever = token("t-3", "nas");
    forever.erase("expires_at");
    const QByteArray own = "desktop:" + QSysInfo::machineHostName().toUtf8();
    const QByteArray command = "cli:" + QSysInfo::machineHostName().toUtf8();
    agent.answer("auth.tokens.list",
                 tokenList({token("t-1", own.constData()), token("t-2", command.constData()), forever}));
    view->reload();
    EXPECT_TRUE(eventuallySays(u"Never"_s));
    for (const QString &text :
         {u"API tokens & command line"_s, u"Label"_s, u"Created"_s, u"Expires"_s, u"This Mac (app)"_s,
          u"This Mac (quill command)"_s, u"nas"_s, u"Oct 14, 2024"_s, u"Jan 12, 2025"_s}) {
        EXPECT_TRUE(says(text)) << text.toStdString();
    }
    EXPECT_TRUE(offers(u"Revoke, This Mac (app)"_s));
    EXPECT_TRUE(offers(u"Revoke, nas"_s));
    EXPECT_FALSE(offers(u"Revoke, laptop"_s));
}

TEST_F(AccountViewTest, ARowIsReadWithItsColumns)
{
    const QAbstractButton *const revoke = buttonOf(view.get(), u"Revoke, laptop"_s);
    EXPECT_EQ(revoke->parentWidget()->accessibleName(), u"laptop"_s);
    EXPECT_EQ(revoke->parentWidget()->accessibleDescription(), u"Created Oct 14, 2024, Expires Jan 12, 2025"_s);
}

TEST_F(AccountViewTest, ManyTokensAreDrawnOnlyWhereTheyAreSeen)
{
    json::array many;
    for (int at = 0; at < 5'000; ++at) {
        many.push_back(token(("m-" + std::to_string(at)).c_str(), ("token " + std::to_string(at)).c_str()));
    }
    agent.answer("auth.tokens.list", params("tokens", many));
    view->reload();
    ASSERT_TRUE(eventually([&] { return offers(u"Revoke, token 0"_s); }));
    int buttons = 0;
    for (const QAbstractButton *each : view->findChildren<QAbstractButton *>()) {
        buttons += each->text() == u"Revoke"_s ? 1 : 0;
    }
    EXPECT_LT(buttons, 30);
    // End, from row to row by keyboard.
    buttonOf(view.get(), u"Revoke, token 0"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return offers(u"Revoke, token 4999"_s); }));
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"Revoke, token 4999"_s);
}

TEST_F(AccountViewTest, ManyAppliancesScrollInTheirCard)
{
    json::array many;
    for (int at = 0; at < 3'000; ++at) {
        many.push_back(appliance(("quill-vol-" + std::to_string(at)).c_str(), "Up 1 minute"));
    }
    agent.answer("appliance.list", many);
    view->reload();
    ASSERT_TRUE(eventuallySays(u"quill-vol-7"_s));
    EXPECT_FALSE(says(u"quill-vol-2999"_s));
    auto *const list = view->findChild<LongList *>();
    ASSERT_EQ(list->accessibleName(), u"Appliances"_s);
    EXPECT_LT(list->height(), 300);
    list->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(list->hasFocus()) << "by keyboard as well";
    for (int key = 0; key < 400; ++key) {
        QTest::keyClick(list, Qt::Key_PageDown);
    }
    EXPECT_TRUE(says(u"quill-vol-2999"_s));
}

TEST_F(AccountViewTest, ATokenIsCreatedAndItsSecretShownOnce)
{
    agent.answer("auth.tokens.create", params("token", "quill_token_k7Qm"));
    {
        const Answering answer(u"Create"_s, u"backup script on nas"_s);
        press(view.get(), u"Create token"_s);
        EXPECT_EQ(answer.title, u"New token"_s);
        EXPECT_EQ(answer.initial, QString());
        EXPECT_THAT(answer.texts, Contains(u"A label, so you recognise it later."_s));
    }
    agent.answer("auth.tokens.list", tokenList({token("t-9", "backup script on nas")}));
    const Answering answer(u"I have saved it"_s);
    ASSERT_TRUE(eventually([&] { return answer.met; }));
    EXPECT_EQ(answer.title, u"Your token backup script on nas"_s);
    EXPECT_EQ(sent("auth.tokens.create"), params("label", "backup script on nas", "expires_in_days", 90));
    EXPECT_TRUE(eventually([&] { return offers(u"Revoke, backup script on nas"_s); }));
}

TEST_F(AccountViewTest, TheFieldForALabelHasItsPlaceholder)
{
    QString placeholder;
    const Answering answer(u"Cancel"_s, {}, [&] {
        placeholder = QApplication::activeModalWidget()->findChild<QLineEdit *>()->placeholderText();
    });
    press(view.get(), u"Create token"_s);
    EXPECT_EQ(placeholder, u"backup script on nas"_s);
    QTest::qWait(20);
    EXPECT_EQ(agent.count("auth.tokens.create"), 0U);
}

TEST_F(AccountViewTest, ASecretIsShownAfterTheBoardWasLeft)
{
    agent.answer("auth.tokens.create", params("token", "quill_token_k7Qm"));
    agent.hold("auth.tokens.create");
    {
        const Answering answer(u"Create"_s, u"nas"_s);
        press(view.get(), u"Create token"_s);
    }
    ASSERT_TRUE(eventually([&] { return agent.count("auth.tokens.create") == 1; }));
    view.reset();
    const Answering answer(u"I have saved it"_s);
    agent.release("auth.tokens.create");
    EXPECT_TRUE(eventually([&] { return answer.met; }));
    EXPECT_EQ(answer.title, u"Your token nas"_s);
}

TEST_F(AccountViewTest, AnotherComputerIsEnrolled)
{
    agent.answer("auth.enroll_code", params("code", "quill-7FQ2-M8DX"));
    const Answering answer(u"I have saved it"_s);
    press(view.get(), u"Enrol another computer"_s);
    ASSERT_TRUE(eventually([&] { return answer.met; }));
    EXPECT_EQ(answer.title, u"Your enrolment code (one use, 24 h)"_s);
    EXPECT_EQ(sent("auth.enroll_code"), params("label", "desktop"));
}

TEST_F(AccountViewTest, RevokingIsAskedForByTheTokensLabel)
{
    agent.answer("auth.tokens.revoke", nullptr);
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Revoke, laptop"_s);
        EXPECT_EQ(answer.title, u"Revoke laptop?"_s);
        EXPECT_THAT(answer.texts, Contains(u"Whatever uses this token stops working now."_s));
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("auth.tokens.revoke"), 0U);
    agent.answer("auth.tokens.list", tokenList({token("t-2", "backup")}));
    const Answering answer(u"Revoke"_s);
    press(view.get(), u"Revoke, laptop"_s);
    EXPECT_TRUE(eventuallyToast(u"revoked"_s));
    EXPECT_EQ(sent("auth.tokens.revoke"), params("token_id", "t-1"));
    EXPECT_TRUE(eventually([&] { return !offers(u"Revoke, laptop"_s); }));
    EXPECT_TRUE(offers(u"Revoke, backup"_s));
}

TEST_F(AccountViewTest, TheTokenThatWasAskedForIsRevokedWhateverTheListDoesMeanwhile)
{
    agent.answer("auth.tokens.revoke", nullptr);
    const Answering answer(u"Revoke"_s, {}, [&] {
        agent.answer("auth.tokens.list", tokenList({token("t-7", "other"), token("t-8", "third")}));
        view->reload();
        EXPECT_TRUE(eventually([&] { return offers(u"Revoke, third"_s); }));
    });
    press(view.get(), u"Revoke, laptop"_s);
    EXPECT_TRUE(eventuallyToast(u"revoked"_s));
    EXPECT_EQ(sent("auth.tokens.revoke"), params("token_id", "t-1"));
}

TEST_F(AccountViewTest, SigningOutIsAskedForAndSendsBackToFirstRun)
{
    agent.answer("auth.signout", nullptr);
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Sign out this Mac"_s);
        EXPECT_EQ(answer.title, u"Sign out this Mac?"_s);
        EXPECT_THAT(answer.texts,
                    Contains(u"Both of this Mac's tokens (the app's and the quill command's) are revoked. "
                             "Your volumes and their history stay in the vault."_s));
    }
    agent.answer("auth.status", params("signed_in", false));
    const Answering answer(u"Sign out"_s);
    press(view.get(), u"Sign out this Mac"_s);
    EXPECT_TRUE(eventuallyToast(u"signed out"_s));
    EXPECT_TRUE(eventually([&] { return !state->signedIn(); }));
}

TEST_F(AccountViewTest, ClosingNeedsTheWordExactly)
{
    agent.answer("account.close", nullptr);
    for (const QString &typed : {u"close"_s, u"CLOSE "_s, u"Close"_s, QString()}) {
        const Answering answer(u"Close account"_s, typed);
        press(view.get(), u"Close account…"_s);
        EXPECT_EQ(answer.title, u"Close your account?"_s);
        EXPECT_EQ(answer.initial, QString());
        EXPECT_THAT(answer.texts, Contains(u"Every volume is scheduled for destruction after the grace period. Until "
                                           "then, Recover undoes it."_s));
        EXPECT_THAT(answer.texts, Contains(u"Type CLOSE to continue."_s));
    }
    {
        const Answering answer(u"Cancel"_s, u"CLOSE"_s);
        press(view.get(), u"Close account…"_s);
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("account.close"), 0U);
    EXPECT_EQ(state->toast(), std::nullopt);
    const Answering answer(u"Close account"_s, u"CLOSE"_s);
    press(view.get(), u"Close account…"_s);
    EXPECT_TRUE(eventuallyToast(u"account closing"_s));
}

TEST_F(AccountViewTest, AClosingAccountOffersToRecoverInstead)
{
    EXPECT_FALSE(offers(u"Recover"_s));
    EXPECT_TRUE(offers(u"Close account…"_s));
    agent.answer("account", params("state", "closing"));
    await(state->refresh());
    ASSERT_TRUE(eventually([&] { return offers(u"Recover"_s); }));
    EXPECT_FALSE(offers(u"Close account…"_s));
    agent.answer("account.reclaim", nullptr);
    agent.answer("account", params("state", "active"));
    press(view.get(), u"Recover"_s);
    EXPECT_TRUE(eventuallyToast(u"account recovered"_s));
    EXPECT_TRUE(eventually([&] { return offers(u"Close account…"_s); }));
    EXPECT_FALSE(offers(u"Recover"_s));
}

TEST_F(AccountViewTest, TheKeyboardStaysWithClosingAndRecovering)
{
    new QLineEdit(&window); // what would have the focus next
    buttonOf(view.get(), u"Close account…"_s)->setFocus(Qt::TabFocusReason);
    state->account = params("state", "closing");
    ASSERT_TRUE(eventually([&] { return offers(u"Recover"_s); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Recover"_s)->hasFocus());
    state->account = params("state", "active");
    ASSERT_TRUE(eventually([&] { return offers(u"Close account…"_s); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Close account…"_s)->hasFocus());
}

TEST_F(AccountViewTest, TheKeyboardStaysWithTheEnginesButtons)
{
    buttonOf(view.get(), u"Stop safely"_s)->setFocus(Qt::TabFocusReason);
    state->vm = params("exists", true, "status", "Stopped");
    ASSERT_TRUE(eventually([&] { return offers(u"Start engine"_s); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Start engine"_s)->hasFocus());
    state->vm = params("exists", true, "status", "Running");
    ASSERT_TRUE(eventually([&] { return offers(u"Stop safely"_s); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Stop safely"_s)->hasFocus());
}

TEST_F(AccountViewTest, ReloadReadsTheListsAgain)
{
    view->reload();
    EXPECT_TRUE(eventually([&] { return agent.count("auth.tokens.list") == 1 && agent.count("appliance.list") == 1; }));
}

TEST_F(AccountViewTest, NothingIsWiderThanTheSmallestWindow)
{
    agent.answer("auth.tokens.list",
                 tokenList({token("t-1", std::string(3'000, 'w').c_str()), token("t-2", "backup")}));
    agent.answer("appliance.list", json::array({appliance(std::string(3'000, 'w').c_str(), "Exited (0) 3 days ago")}));
    agent.answer("account", params("email", std::string(3'000, 'w')));
    await(state->refresh());
    view->reload();
    resize(736, 600);
    ASSERT_TRUE(eventually([&] { return offers(u"Revoke, "_s + QString(3'000, u'w')); }));
    EXPECT_LE(view->minimumSizeHint().width(), 736);
    for (const QWidget *each : view->findChildren<QWidget *>()) {
        if (each->isVisible()) {
            const QPoint right = each->mapTo(view.get(), QPoint(each->width(), 0));
            EXPECT_LE(right.x(), 736) << each->metaObject()->className()
                                      << each->accessibleName().left(40).toStdString();
        }
    }
}

TEST_F(AccountViewTest, EveryButtonIsReachedByTabInTheOrderOfTheBoard)
{
    QStringList stops;
    view->findChild<QAbstractButton *>()->window()->setFocus();
    for (int stop = 0; stop < 12; ++stop) {
        QTest::keyClick(QApplication::focusWidget() == nullptr ? &window : QApplication::focusWidget(), Qt::Key_Tab);
        if (const QWidget *const focus = QApplication::focusWidget(); focus != nullptr) {
            const auto *const button = qobject_cast<const QAbstractButton *>(focus);
            const QString name =
                focus->accessibleName().isEmpty() && button != nullptr ? button->text() : focus->accessibleName();
            if (stops.contains(name)) {
                break;
            }
            stops << name;
        }
    }
    EXPECT_THAT(stops, testing::ElementsAre(u"Stop safely"_s, u"Enrol another computer"_s, u"Create token"_s,
                                            u"Revoke, laptop"_s, u"Revoke, backup"_s, u"Sign out this Mac"_s,
                                            u"Close account…"_s));
}

} // namespace
