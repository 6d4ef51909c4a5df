// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using testing::SizeIs;

/// One action of the board: how far the engine is before it, the button that begins it, what answers its question.
struct Begun {
    const char *method;
    const char *engine;
    const char16_t *button;
    const char16_t *answer;
    const char16_t *typed;
};

void PrintTo(const Begun &begun, std::ostream *out)
{
    *out << begun.method;
}

class AgentGoneTest : public AccountViewTest, public testing::WithParamInterface<Begun> {
protected:
    AgentGoneTest()
    {
        Timing timing;
        timing.refreshInterval = std::chrono::hours(1);
        timing.toastDuration = std::chrono::hours(1);
        timing.retryDelay = std::chrono::milliseconds(20);
        timing.frame = std::chrono::milliseconds(1);
        state = AppState::create(timing);
        agent.answer("vm.status", params("status", GetParam().engine));
        if (GetParam().method == std::string_view("account.reclaim")) {
            agent.answer("account", params("state", "closing"));
        }
    }

    void begin()
    {
        const Begun &begun = GetParam();
        agent.silent(begun.method);
        const QString button = QString::fromUtf16(begun.button);
        if (*begun.answer == u'\0') {
            press(view.get(), button);
        } else {
            const Answering answer(QString::fromUtf16(begun.answer), QString::fromUtf16(begun.typed));
            press(view.get(), button);
        }
        ASSERT_TRUE(eventually([&] { return agent.count(begun.method) == 1; }));
    }
};

INSTANTIATE_TEST_SUITE_P(Actions, AgentGoneTest,
                         testing::Values(Begun{"auth.tokens.create", "Running", u"Create token", u"Create", u"nas"},
                                         Begun{"auth.tokens.revoke", "Running", u"Revoke, laptop", u"Revoke", u""},
                                         Begun{"auth.enroll_code", "Running", u"Enrol another computer", u"", u""},
                                         Begun{"auth.signout", "Running", u"Sign out this Mac", u"Sign out", u""},
                                         Begun{"account.close", "Running", u"Close account…", u"Close account",
                                               u"CLOSE"},
                                         Begun{"account.reclaim", "Running", u"Recover", u"", u""},
                                         Begun{"vm.prepare", "", u"Set up engine", u"", u""},
                                         Begun{"vm.start", "Stopped", u"Start engine", u"", u""},
                                         Begun{"engine.stop_safely", "Running", u"Stop safely", u"Stop safely", u""}),
                         [](const auto &given) {
                             std::string name = given.param.method;
                             std::ranges::replace(name, '.', '_');
                             return name;
                         });

TEST_P(AgentGoneTest, LeavesOneMessageAndABoardThatRecoversByItself)
{
    begin();
    const Notices notices(*state);
    const std::size_t subscriptions = agent.count("events.subscribe");
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected() && state->activity.running().isEmpty(); }));
    ASSERT_TRUE(eventually([&] { return !notices.seen.isEmpty(); }));
    EXPECT_FALSE(notices.seen.front().isEmpty());

    // The window shows its waiting screen meanwhile, and makes the board anew.
    view.reset();
    agent.answer("auth.tokens.list", tokenList({token("t-9", "fresh")}));
    agent.restart();
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") > subscriptions; }));
    open();
    EXPECT_TRUE(eventually([&] { return offers(u"Revoke, fresh"_s); }));
    EXPECT_TRUE(eventuallySays(u"quill-vol-1"_s));
    const QAbstractButton *const again =
        buttonOf(view.get(), *GetParam().button == u'R' && GetParam().typed[0] == u'\0' && *GetParam().answer == u'R'
                                 ? u"Revoke, fresh"_s
                                 : QString::fromUtf16(GetParam().button));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->isEnabled());
    EXPECT_THAT(notices.seen, SizeIs(1));
}

TEST_P(AgentGoneTest, ABoardThatStayedWorksOnAsWell)
{
    begin();
    const std::size_t subscriptions = agent.count("events.subscribe");
    agent.stop();
    ASSERT_TRUE(eventually([&] { return state->activity.running().isEmpty() && !state->connected(); }));
    agent.answer("auth.tokens.list", tokenList({token("t-9", "fresh")}));
    agent.restart();
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") > subscriptions; }));
    view->reload();
    EXPECT_TRUE(eventually([&] { return offers(u"Revoke, fresh"_s); }));
    agent.answer("auth.tokens.revoke", nullptr);
    const Answering answer(u"Revoke"_s);
    press(view.get(), u"Revoke, fresh"_s);
    EXPECT_TRUE(eventuallyToast(u"revoked"_s));
}

} // namespace
