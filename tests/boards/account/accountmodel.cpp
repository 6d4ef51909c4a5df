// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/account/accountmodel.h"

#include "accounttest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using testing::ElementsAre;

class AccountModelTest : public AccountTest {
protected:
    [[nodiscard]] bool refreshed() const { return agent.count("auth.status") > 0; }

    QStringList revealed;
    std::shared_ptr<AccountModel> model = std::make_shared<AccountModel>(
        state, [this](const QString &what, const QString &secret) { revealed << what << secret; });
};

QStringList labelsOf(const Records &records, const char *key = "label")
{
    QStringList labels;
    for (const Record &record : records) {
        labels << str(record, key);
    }
    return labels;
}

TEST_F(AccountModelTest, LoadingReadsTheTokensAndThenTheAppliances)
{
    await(model->load());
    EXPECT_THAT(agent.log(), ElementsAre("auth.tokens.list", "appliance.list"));
    EXPECT_EQ(sent("auth.tokens.list"), json::object());
    EXPECT_THAT(labelsOf(model->tokens()), ElementsAre(u"laptop"_s, u"backup"_s));
    EXPECT_THAT(labelsOf(model->appliances(), "container"), ElementsAre(u"quill-vol-1"_s));
}

TEST_F(AccountModelTest, AMissingListOfTokensIsAnEmptyOne)
{
    await(model->load());
    agent.answer("auth.tokens.list", json::object());
    await(model->load());
    EXPECT_TRUE(model->tokens().isEmpty());
}

TEST_F(AccountModelTest, AFailureLeavesItsListAsItWasAndTheOtherGoesOn)
{
    await(model->load());
    agent.fail("auth.tokens.list", {.message = "no"});
    agent.answer("appliance.list", json::array({appliance("quill-vol-2", "Created")}));
    await(model->load());
    EXPECT_EQ(model->tokens().size(), 2);
    EXPECT_THAT(labelsOf(model->appliances(), "container"), ElementsAre(u"quill-vol-2"_s));
    agent.fail("appliance.list", {.message = "no"});
    await(model->load());
    EXPECT_EQ(model->appliances().size(), 1);
    EXPECT_EQ(state->toast(), std::nullopt) << "nobody asked for it";
}

TEST_F(AccountModelTest, AnAnswerToAnEarlierLoadIsDropped)
{
    agent.hold("auth.tokens.list");
    const QCoro::Task<> early = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("auth.tokens.list") == 1; }));
    const QCoro::Task<> late = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("auth.tokens.list") == 2; }));
    int answers = 0;
    agent.on("auth.tokens.list", [&answers](const json::object &) -> FakeAgent::Answer {
        return answers++ == 0 ? tokenList({token("t-0", "stale")}) : tokenList({token("t-9", "fresh")});
    });
    agent.release("auth.tokens.list");
    await(early);
    await(late);
    EXPECT_THAT(labelsOf(model->tokens()), ElementsAre(u"fresh"_s));
}

TEST_F(AccountModelTest, AnEngineThatWentDownTakesTheAppliancesAlong)
{
    await(model->load());
    agent.fail("appliance.list", {.message = "The engine is not running."});
    await(model->followEngine(false));
    EXPECT_TRUE(model->appliances().isEmpty());
    agent.answer("appliance.list", json::array({appliance("quill-vol-1", "Up 1 second")}));
    await(model->followEngine(true));
    EXPECT_EQ(model->appliances().size(), 1);
}

TEST_F(AccountModelTest, ACreatedTokensSecretIsRevealedAndTheListsReadAgain)
{
    agent.answer("auth.tokens.create", params("token", "quill_token_abc", "token_id", "t-3"));
    await(model->createToken(u"100%1 nas"_s));
    EXPECT_EQ(sent("auth.tokens.create"), params("label", "100%1 nas", "expires_in_days", 90));
    EXPECT_THAT(revealed, ElementsAre(u"token 100%1 nas"_s, u"quill_token_abc"_s));
    EXPECT_THAT(agent.log(), ElementsAre("auth.tokens.create", "auth.tokens.list", "appliance.list"));
    EXPECT_EQ(state->toast(), std::nullopt);
}

TEST_F(AccountModelTest, ATokenThatIsNotMadeIsANotice)
{
    agent.fail("auth.tokens.create", {.message = "A token needs a label."});
    await(model->createToken(QString()));
    EXPECT_TRUE(revealed.isEmpty());
    EXPECT_EQ(toast(), u"A token needs a label."_s);
    EXPECT_THAT(agent.log(), ElementsAre("auth.tokens.create"));
}

TEST_F(AccountModelTest, TheSecretComesWhenTheBoardHasGone)
{
    agent.answer("auth.tokens.create", params("token", "quill_token_abc"));
    agent.hold("auth.tokens.create");
    const QCoro::Task<> task = model->createToken(u"nas"_s);
    model.reset();
    agent.release("auth.tokens.create");
    await(task);
    EXPECT_THAT(revealed, ElementsAre(u"token nas"_s, u"quill_token_abc"_s));
}

TEST_F(AccountModelTest, EnrollingShowsTheCode)
{
    agent.answer("auth.enroll_code", params("code", "quill-7FQ2"));
    await(model->enrolComputer());
    EXPECT_EQ(sent("auth.enroll_code"), params("label", "desktop"));
    EXPECT_THAT(revealed, ElementsAre(u"enrolment code (one use, 24 h)"_s, u"quill-7FQ2"_s));
    EXPECT_THAT(agent.log(), ElementsAre("auth.enroll_code"));
}

TEST_F(AccountModelTest, AnImpatientSecondPressMakesNoSecondCode)
{
    agent.answer("auth.enroll_code", params("code", "quill-7FQ2"));
    agent.hold("auth.enroll_code");
    const QCoro::Task<> first = model->enrolComputer();
    const QCoro::Task<> second = model->enrolComputer();
    agent.release("auth.enroll_code");
    await(first);
    await(second);
    EXPECT_EQ(agent.count("auth.enroll_code"), 1);
    EXPECT_EQ(revealed.size(), 2) << "what it is, and the code";
    await(model->enrolComputer());
    EXPECT_EQ(agent.count("auth.enroll_code"), 2) << "the next one is a code of its own";
}

TEST_F(AccountModelTest, AnImpatientSecondPressRecoversOnce)
{
    agent.answer("account.reclaim", nullptr);
    agent.hold("account.reclaim");
    const QCoro::Task<> first = model->recoverAccount();
    const QCoro::Task<> second = model->recoverAccount();
    agent.release("account.reclaim");
    await(first);
    await(second);
    EXPECT_EQ(agent.count("account.reclaim"), 1);
    EXPECT_EQ(toast(), u"account recovered"_s);
}

TEST_F(AccountModelTest, ARevokedTokenIsSaidAndTheListsReadAgain)
{
    agent.answer("auth.tokens.revoke", nullptr);
    await(model->revokeToken(u"t-1"_s));
    EXPECT_EQ(sent("auth.tokens.revoke"), params("token_id", "t-1"));
    EXPECT_EQ(toast(), u"revoked"_s);
    EXPECT_THAT(agent.log(), ElementsAre("auth.tokens.revoke", "auth.tokens.list", "appliance.list"));
}

TEST_F(AccountModelTest, TheAgentDecidesAboutTheAppsOwnToken)
{
    agent.fail("auth.tokens.revoke", {.message = "This app itself uses that token."});
    await(model->revokeToken(u"t-1"_s));
    EXPECT_EQ(toast(), u"This app itself uses that token."_s);
    EXPECT_THAT(agent.log(), ElementsAre("auth.tokens.revoke"));
    agent.answer("auth.tokens.revoke", nullptr);
    await(model->revokeToken(u"t-1"_s));
    EXPECT_TRUE(state->signedIn()) << "the board only reloads";
}

struct Outcome {
    const char *method;
    QCoro::Task<> (AccountModel::*action)();
    const char16_t *before; ///< the notice while it runs
    const char16_t *after;
    bool isLong;
};

void PrintTo(const Outcome &outcome, std::ostream *out)
{
    *out << outcome.method;
}

class AccountActionTest : public AccountModelTest, public testing::WithParamInterface<Outcome> {};

INSTANTIATE_TEST_SUITE_P(
    All, AccountActionTest,
    testing::Values(Outcome{"auth.signout", &AccountModel::signOut, u"", u"signed out", false},
                    Outcome{"account.close", &AccountModel::closeAccount, u"", u"account closing", false},
                    Outcome{"account.reclaim", &AccountModel::recoverAccount, u"", u"account recovered", false},
                    Outcome{"vm.prepare", &AccountModel::setUpEngine, u"Setting up the engine…",
                            u"The engine is ready.", true},
                    Outcome{"vm.start", &AccountModel::startEngine, u"", u"engine started", true},
                    Outcome{"engine.stop_safely", &AccountModel::stopEngine, u"stopping safely…",
                            u"Every change reached the vault; the engine is stopped.", true}),
    [](const auto &given) {
        std::string name = given.param.method;
        std::ranges::replace(name, '.', '_');
        return name;
    });

TEST_P(AccountActionTest, TellsHowItWentAndReadsTheStateAfresh)
{
    const Outcome &outcome = GetParam();
    agent.answer(outcome.method, nullptr);
    agent.hold(outcome.method);
    const QCoro::Task<> task = ((*model).*(outcome.action))();
    EXPECT_EQ(toast(), QString::fromUtf16(outcome.before));
    EXPECT_EQ(state->activity.find(outcome.method) != nullptr, outcome.isLong);
    EXPECT_FALSE(state->busy());
    ASSERT_TRUE(eventually([&] { return agent.count(outcome.method) == 1; }));
    EXPECT_EQ(sent(outcome.method), json::object());
    agent.release(outcome.method);
    await(task);
    EXPECT_EQ(toast(), QString::fromUtf16(outcome.after));
    EXPECT_TRUE(refreshed());
    EXPECT_TRUE(state->activity.running().isEmpty());
}

TEST_P(AccountActionTest, AFailureIsShownAndChangesNothingElse)
{
    const Outcome &outcome = GetParam();
    agent.fail(outcome.method, {.message = "It cannot be."});
    await(((*model).*(outcome.action))());
    EXPECT_EQ(toast(), u"It cannot be."_s);
    EXPECT_THAT(agent.log(), ElementsAre(outcome.method));
    EXPECT_TRUE(state->activity.running().isEmpty());
}

TEST_F(AccountModelTest, ASecondActionMayBeginWhileOneRuns)
{
    agent.answer("engine.stop_safely", nullptr);
    agent.hold("engine.stop_safely");
    agent.answer("auth.tokens.revoke", nullptr);
    const QCoro::Task<> stopping = model->stopEngine();
    await(model->revokeToken(u"t-2"_s));
    EXPECT_EQ(toast(), u"revoked"_s);
    EXPECT_NE(state->activity.find("engine.stop_safely"), nullptr);
    agent.release("engine.stop_safely");
    await(stopping);
}

} // namespace
