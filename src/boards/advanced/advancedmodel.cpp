// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "advancedmodel.h"

#include "aside.h"
#include "state/action.h"
#include "state/ask.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

namespace {

/// An answer may be larger than the memory there is, when it is written out.
OutputText written(const json::value &answer)
{
    try {
        return OutputText::ofJson(answer);
    } catch (const std::bad_alloc &) {
        return OutputText::ofWords(AdvancedModel::tr("error: the answer is too large to be shown"));
    }
}

void finish(const std::shared_ptr<ConsoleSession> &session, RunOutcome outcome)
{
    session->running.update([&outcome](QSet<QString> &running) { running.remove(outcome.method); });
    session->outcome = std::move(outcome);
}

} // namespace

AdvancedModel::AdvancedModel(std::shared_ptr<AppState> state)
    : m_state(std::move(state)), m_session(ConsoleSession::of(m_state))
{}

QCoro::Task<> AdvancedModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_generation;
    const json::object none;
    // Without an answer an empty list says enough; the agent's trouble shows elsewhere.
    std::optional<json::value> answer = co_await answerOrNothing(m_state, "methods.list", none);
    if (generation != m_generation) {
        co_return;
    }
    if (answer) {
        m_all = agentMethods(*answer);
        followAccount();
    }
    loaded = true;
}

void AdvancedModel::followAccount()
{
    std::vector<AgentMethod> seen = methodsFor(m_all, m_state->isAdmin());
    if (seen != methods()) {
        methods = std::move(seen);
    }
}

void AdvancedModel::pick(const QString &name)
{
    const QString known = name.isNull() ? QStringLiteral("") : name; // null says that nothing is picked
    if (known != m_session->picked() || m_session->picked().isNull()) {
        m_session->picked = known;
    }
}

const AgentMethod *AdvancedModel::picked() const
{
    if (m_session->picked().isNull()) {
        return nullptr;
    }
    const auto found = std::ranges::find(methods(), m_session->picked(), &AgentMethod::name);
    return found == methods().end() ? nullptr : &*found;
}

MethodInputs AdvancedModel::inputs(const QString &method) const
{
    return m_session->inputs.value(method);
}

void AdvancedModel::typeField(const QString &method, const QString &parameter, const QString &text)
{
    if (text.isEmpty()) {
        m_session->inputs[method].fields.remove(parameter);
    } else {
        m_session->inputs[method].fields[parameter] = text;
    }
}

void AdvancedModel::typeJson(const QString &method, const QString &text)
{
    m_session->inputs[method].json = text;
}

QCoro::Task<> AdvancedModel::run(QString method, json::object request)
{
    const auto self = shared_from_this();
    const std::shared_ptr<ConsoleSession> session = m_session;
    session->running.update([&method](QSet<QString> &running) { running.insert(method); });

    const auto begin = steady_clock::now();
    Action action = calling(method.toStdString(), std::move(request), 600s);
    CallOutcome went = co_await attempt(m_state, std::move(action));
    RunOutcome outcome;
    outcome.method = method;
    outcome.took = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - begin);
    outcome.failed = !went.answer.has_value();
    if (outcome.failed) {
        const QString failure = tr("error: %1").arg(went.words);
        outcome.text = std::make_shared<OutputText>(OutputText::ofWords(failure));
        finish(session, std::move(outcome));
        co_return;
    }
    const auto answer = std::make_shared<std::optional<json::value>>(std::move(went.answer));
    // Writing out a large answer takes a while, and so does letting go of it: neither on this thread.
    aside(
        [answer] {
            auto text = std::make_shared<const OutputText>(written(**answer));
            answer->reset();
            return text;
        },
        [session, outcome](std::shared_ptr<const OutputText> text) mutable {
            outcome.text = std::move(text);
            finish(session, std::move(outcome));
        });
}

} // namespace quillfen
