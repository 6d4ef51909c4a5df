// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/firstrunmodel.h"
#include "shell/arrival/firstrunview.h"
#include "states.h"
#include "support/await.h"
#include "support/fakeagent.h"
#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/parts/brand.h"
#include "ui/parts/inlineerror.h"
#include "ui/text/label.h"

#include <gmock/gmock.h>

#include <vector>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

SignInForm formWith(const QString &code)
{
    SignInForm form;
    form.code = code;
    return form;
}

TEST(SignInForm, OfSpacesAndLineBreaksWantsACode)
{
    EXPECT_EQ(problemOf(formWith(u"  \n"_s)), u"Paste the code or the link first."_s);
}

TEST(SignInForm, WithAnApiTokenSaysWhatACodeLooksLike)
{
    EXPECT_EQ(problemOf(formWith(u" quill_8f2c"_s)),
              u"That is an API token. The app signs in with an enrolment code (quill-…) or link: on the Download page, "
              u"Create enrolment code."_s);
}

TEST(SignInForm, WithACodeOrALinkIsSent)
{
    EXPECT_EQ(problemOf(formWith(u"quill-7FQ2"_s)), std::nullopt);
    EXPECT_EQ(problemOf(formWith(u"quillfen:enrol?code=quill-7FQ2"_s)), std::nullopt);
}

TEST(SignInForm, SendsTheTrimmedCodeAndNoAddressUnlessSelfHosted)
{
    SignInForm form = formWith(u" quill-7FQ2\n"_s);
    form.api = u"https://manager.example"_s;
    EXPECT_EQ(json::serialize(enrolParams(form)), R"({"code":"quill-7FQ2"})");
    form.selfHosted = true;
    EXPECT_EQ(json::serialize(enrolParams(form)), R"({"code":"quill-7FQ2","api":"https://manager.example"})");
    form.api.clear();
    EXPECT_EQ(json::serialize(enrolParams(form)), R"({"code":"quill-7FQ2"})");
}

/// A computer that is not signed in, its agent, and the questions that were put to the user.
class FirstRunTest : public testing::Test {
protected:
    FirstRunTest()
        : m_socket("QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path())), state(newState()),
          model(std::make_shared<FirstRunModel>(state,
                                                [this](const QString &title, const QString &, const QString &verb) {
                                                    questions.push_back(title + u" / "_s + verb);
                                                    return agrees;
                                                }))
    {
        agent.answer("agent.version", json::parse(R"({"version":"1.0"})"));
        agent.on("auth.status", [this](const json::object &) -> FakeAgent::Answer {
            return json::value{{"signed_in", signedIn.load()}};
        });
        agent.answer("vm.status", json::parse(R"({"exists":false})"));
        agent.answer("mount.state", json::array());
        agent.answer("volumes.list", json::array());
        agent.answer("account", json::object());
        agent.answer("events.subscribe", nullptr);
        agent.answer("preflight.run", json::array());
        agent.on("auth.enroll", [this](const json::object &) -> FakeAgent::Answer {
            signedIn = true;
            return json::value{{"email", "mara@northmere.example"}};
        });
        state->connect();
        EXPECT_TRUE(eventually([this] { return agent.count("events.subscribe") == 1; }));
        agent.clearLog();
    }

    ~FirstRunTest() override { state->shutDown(); }

    void signIn(const QString &code) { await(done(model->signIn(formWith(code)))); }
    void appear() { await(done(model->appear())); }

    FakeAgent agent;
    Environment m_socket;
    std::shared_ptr<AppState> state;
    std::atomic<bool> signedIn = false;
    bool agrees = false;
    std::vector<QString> questions;
    std::shared_ptr<FirstRunModel> model;

private:
    static QCoro::Task<bool> done(QCoro::Task<> task)
    {
        co_await task;
        co_return true;
    }
};

TEST_F(FirstRunTest, ACodeThatCannotBeOneNeverReachesTheAgent)
{
    signIn(u"  \n"_s);
    signIn(u"quill_token"_s);
    EXPECT_THAT(agent.log(), IsEmpty());
    EXPECT_TRUE(model->error().startsWith("That is an API token."_L1));
}

TEST_F(FirstRunTest, ARefusedCodeIsSaidUnderTheFormAndChangesNothing)
{
    agent.fail("auth.enroll", {-32001, "The code was already used."});
    signIn(u"quill-used"_s);
    EXPECT_EQ(model->error(), u"The code was already used."_s);
    EXPECT_FALSE(state->busy());
    EXPECT_FALSE(state->toast().has_value());
    EXPECT_THAT(agent.log(), ElementsAre("auth.enroll"));
}

TEST_F(FirstRunTest, SigningInGreetsByNameAndReadsTheStateAfresh)
{
    signIn(u"quill-1"_s);
    EXPECT_EQ(state->toast(), u"Signed in as mara@northmere.example"_s);
    EXPECT_TRUE(state->signedIn());
    EXPECT_TRUE(model->error().isEmpty());
}

TEST_F(FirstRunTest, AMissingEngineIsOfferedAndADeclineSetsNothingUp)
{
    signIn(u"quill-1"_s);
    EXPECT_THAT(questions, ElementsAre(u"Set up the engine? / Set up"_s));
    EXPECT_EQ(agent.count("vm.prepare"), 0U);
}

TEST_F(FirstRunTest, AnEngineThatExistsSkipsTheQuestion)
{
    agent.answer("vm.status", json::parse(R"({"exists":true,"status":"Stopped"})"));
    signIn(u"quill-1"_s);
    EXPECT_THAT(questions, IsEmpty());
}

TEST_F(FirstRunTest, AnAgreedEngineIsSetUpWhileTheStateIsBusy)
{
    agrees = true;
    std::atomic<bool> asked = false;
    agent.on("vm.prepare", [&asked](const json::object &) -> FakeAgent::Answer {
        asked = true;
        return json::object();
    });
    agent.hold("vm.prepare");
    const auto running = model->signIn(formWith(u"quill-1"_s));
    ASSERT_TRUE(eventually([this] { return agent.count("vm.prepare") == 1; }));
    EXPECT_TRUE(state->busy());
    EXPECT_EQ(state->toast(), u"Setting up the engine…"_s);
    agent.release("vm.prepare");
    ASSERT_TRUE(eventually([this] { return !state->busy(); }));
    EXPECT_EQ(state->toast(), u"The engine is ready."_s);
    ASSERT_TRUE(eventually([&] { return running.isReady(); }));
    EXPECT_TRUE(asked);
}

TEST_F(FirstRunTest, AnEngineThatCannotBeSetUpIsANoticeAndTheSignInStands)
{
    agrees = true;
    agent.fail("vm.prepare", {-32001, "No room on the disk."});
    signIn(u"quill-1"_s);
    EXPECT_EQ(state->toast(), u"No room on the disk."_s);
    EXPECT_FALSE(state->busy());
    EXPECT_TRUE(state->signedIn());
}

TEST_F(FirstRunTest, AnAgentThatGoesAwayWhileTheEngineIsSetUpLeavesOneMessage)
{
    agrees = true;
    agent.silent("vm.prepare");
    const auto running = model->signIn(formWith(u"quill-1"_s));
    ASSERT_TRUE(eventually([this] { return agent.count("vm.prepare") == 1; }));
    QStringList said;
    const Observer notices(
        {&state->toast}, [&] { said << state->toast().value_or(QString()); }, 0ms);
    agent.stop();
    ASSERT_TRUE(eventually([&] { return running.isReady(); }));
    EXPECT_TRUE(eventually([&] { return !said.isEmpty(); }));
    EXPECT_THAT(said, ElementsAre(u"the agent connection closed"_s));
    EXPECT_FALSE(state->busy()) << "or nobody could sign in again";
    EXPECT_EQ(model->error(), QString()) << "the code was good";
}

TEST_F(FirstRunTest, AnAgentThatGoesAwayWhileTheQuestionIsOpenLeavesOneMessage)
{
    const auto ask = [this](const QString &, const QString &, const QString &) {
        agent.stop();
        EXPECT_TRUE(eventually([this] { return !state->connected(); }));
        return true;
    };
    const auto asking = std::make_shared<FirstRunModel>(state, ask);
    const auto running = asking->signIn(formWith(u"quill-1"_s));
    ASSERT_TRUE(eventually([&] { return running.isReady(); }));
    EXPECT_EQ(state->toast(), u"the agent connection closed"_s);
    EXPECT_EQ(agent.count("vm.prepare"), 0U);
    EXPECT_FALSE(state->busy());
}

TEST_F(FirstRunTest, ASecondSignInWhileOneRunsIsNotSent)
{
    agent.hold("auth.enroll");
    const auto first = model->signIn(formWith(u"quill-1"_s));
    ASSERT_TRUE(eventually([this] { return agent.count("auth.enroll") == 1; }));
    signIn(u"quill-2"_s);
    EXPECT_EQ(agent.count("auth.enroll"), 1U);
    agent.release("auth.enroll");
    EXPECT_TRUE(eventually([&] { return first.isReady(); }));
}

TEST_F(FirstRunTest, AnAgentThatGoesAwayWhileSigningInLeavesOneMessage)
{
    agent.silent("auth.enroll");
    const auto first = model->signIn(formWith(u"quill-1"_s));
    ASSERT_TRUE(eventually([this] { return agent.count("auth.enroll") == 1; }));
    agent.stop();
    ASSERT_TRUE(eventually([&] { return first.isReady(); }));
    EXPECT_EQ(model->error(), u"the agent connection closed"_s);
    EXPECT_FALSE(state->busy());
}

TEST_F(FirstRunTest, APendingLinkSignsInUnchangedBeforeTheChecksRun)
{
    state->pendingEnrol = u"quillfen:enrol?code=quill-1"_s;
    appear();
    EXPECT_TRUE(state->pendingEnrol().isEmpty());
    EXPECT_EQ(model->code(), u"quillfen:enrol?code=quill-1"_s);
    const auto sent = agent.requests("auth.enroll");
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].params.at("code").as_string(), "quillfen:enrol?code=quill-1");
    EXPECT_EQ(agent.log().front(), "auth.enroll");
    EXPECT_EQ(agent.log().back(), "preflight.run");
}

TEST_F(FirstRunTest, ALinkThatArrivesLaterWaits)
{
    appear();
    agent.clearLog();
    state->pendingEnrol = u"quill-late"_s;
    QTest::qWait(20);
    EXPECT_EQ(state->pendingEnrol(), u"quill-late"_s);
    EXPECT_THAT(agent.log(), IsEmpty());
}

TEST_F(FirstRunTest, ChecksKeepTheAgentsOrderAndAnythingButAListIsNone)
{
    agent.answer("preflight.run", json::parse(R"([{"name":"b","ok":true},{"name":"a","ok":false}])"));
    appear();
    ASSERT_EQ(model->checks().size(), 2);
    EXPECT_EQ(str(model->checks().first(), "name"), u"b"_s);
    agent.answer("preflight.run", json::parse(R"({"checks":[]})"));
    appear();
    EXPECT_TRUE(model->checks().isEmpty());
}

/// The same behind its screen.
class FirstRunViewTest : public FirstRunTest {
protected:
    void show()
    {
        view = std::make_unique<FirstRunView>(state, model);
        view->resize(1180, 760);
        view->show();
        ASSERT_TRUE(eventually([this] { return agent.count("preflight.run") == 1; }));
    }

    template <typename Widget>
    Widget *find(const QString &name)
    {
        return named<Widget>(*view, name);
    }
    Button *button(const QString &text)
    {
        for (Button *const candidate : view->findChildren<Button *>()) {
            if (candidate->text() == text) {
                return candidate;
            }
        }
        return nullptr;
    }

    std::unique_ptr<FirstRunView> view;
};

TEST_F(FirstRunViewTest, AnEmptyFormSaysWhatIsMissingByClickAndByEnter)
{
    show();
    QTest::mouseClick(button(u"Sign in"_s), Qt::LeftButton);
    auto *const error = view->findChild<InlineError *>();
    EXPECT_TRUE(eventually([&] { return error->text() == u"Paste the code or the link first."_s; }));
    EXPECT_TRUE(find<TextField>(u"Enrolment code or link"_s)->isInvalid());

    QTest::keyClicks(find<TextField>(u"Enrolment code or link"_s), u"quill_x"_s);
    QTest::keyClick(find<TextField>(u"Enrolment code or link"_s), Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return error->text().startsWith("That is an API token."_L1); }));
}

TEST_F(FirstRunViewTest, TheControlPlaneIsAskedForOnlyWhenSelfHosted)
{
    show();
    EXPECT_EQ(find<TextField>(u"Control plane URL"_s), nullptr);
    QTest::mouseClick(view->findChild<Toggle *>(), Qt::LeftButton);
    ASSERT_NE(find<TextField>(u"Control plane URL"_s), nullptr);
    QTest::keyClicks(find<TextField>(u"Control plane URL"_s), u"https://m.example"_s);
    QTest::keyClicks(find<TextField>(u"Enrolment code or link"_s), u"quill-1"_s);
    QTest::keyClick(find<TextField>(u"Enrolment code or link"_s), Qt::Key_Return);
    ASSERT_TRUE(eventually([this] { return agent.count("auth.enroll") == 1; }));
    EXPECT_EQ(json::serialize(agent.requests("auth.enroll")[0].params),
              R"({"code":"quill-1","api":"https://m.example"})");
    EXPECT_TRUE(eventually([this] { return !questions.empty(); }));
}

TEST_F(FirstRunViewTest, TheButtonTellsThatItIsSigningIn)
{
    show();
    state->busy = true;
    ASSERT_TRUE(eventually([this] { return button(u"Signing in…"_s) != nullptr; }));
    EXPECT_FALSE(button(u"Signing in…"_s)->isEnabled());
    state->busy = false;
    EXPECT_TRUE(eventually([this] { return button(u"Sign in"_s) != nullptr && button(u"Sign in"_s)->isEnabled(); }));
}

TEST_F(FirstRunViewTest, ALinkThatWaitedStandsInTheField)
{
    state->pendingEnrol = u"quillfen:enrol?code=quill-1"_s;
    agent.fail("auth.enroll", {-32001, "expired"});
    show();
    EXPECT_TRUE(eventually(
        [this] { return find<TextField>(u"Enrolment code or link"_s)->text() == u"quillfen:enrol?code=quill-1"_s; }));
}

TEST_F(FirstRunViewTest, OnlyACheckThatIsNotRightShowsItsFix)
{
    agent.answer("preflight.run", json::parse(R"([{"name":"Memory","ok":true,"info":"16 GB","fix":"never shown"},
                                                  {"name":"Network access","ok":false,"info":"blocked","fix":"Open 443."}])"));
    show();
    EXPECT_TRUE(eventually([this] { return texts(*view).contains(u"Open 443."_s); }));
    EXPECT_TRUE(texts(*view).contains(u"16 GB"_s));
    EXPECT_FALSE(texts(*view).contains(u"never shown"_s));
}

TEST_F(FirstRunViewTest, InALowWindowThePageScrollsAndNothingIsSqueezed)
{
    agent.answer("preflight.run", json::parse(R"([{"name":"Network access","ok":false,"info":"blocked",
        "fix":"Allow outgoing connections on port 443, then open Quillfen again."}])"));
    show();
    view->resize(960, 300);
    ASSERT_TRUE(eventually([this] { return texts(*view).contains(u"blocked"_s); }));
    const auto *const mark = view->findChild<BrandMark *>();
    EXPECT_TRUE(eventually([&] { return mark->height() == 48; })) << mark->height();
    for (const Label *const label : view->findChildren<Label *>()) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
    }
}

TEST_F(FirstRunViewTest, TheFlowGoesOnWhenTheScreenHasGone)
{
    agrees = true;
    agent.answer("vm.prepare", json::object());
    agent.hold("auth.enroll");
    show();
    QTest::keyClicks(find<TextField>(u"Enrolment code or link"_s), u"quill-1"_s);
    QTest::keyClick(find<TextField>(u"Enrolment code or link"_s), Qt::Key_Return);
    ASSERT_TRUE(eventually([this] { return agent.count("auth.enroll") == 1; }));
    view.reset();
    agent.release("auth.enroll");
    EXPECT_TRUE(eventually([this] { return state->toast() == u"The engine is ready."_s; }));
}

} // namespace
} // namespace quillfen
