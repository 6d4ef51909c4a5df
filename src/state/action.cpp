// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/action.h"

#include "rpc/masking.h"

#include <utility>

namespace quillfen {

namespace {

RunningCall noteOf(const Action &action, std::string line)
{
    RunningCall call;
    call.method = action.method;
    call.title = action.operation;
    call.line = std::move(line);
    call.progressEvent = action.progressEvent;
    return call;
}

} // namespace

Action calling(std::string method, json::object params, RPC::Seconds timeout)
{
    Action action;
    action.method = std::move(method);
    action.params = std::move(params);
    action.timeout = timeout;
    return action;
}

QCoro::Task<CallOutcome> attempt(std::shared_ptr<AppState> state, Action action)
{
    CallOutcome outcome;
    QStringList secrets;
    bool mayBeKept = true;
    std::optional<std::int64_t> code;
    std::optional<std::uint64_t> running;
    try {
        RPC::Request request = state->rpc().prepare(action.method, action.params, action.timeout);
        MaskedLine shown = masked(request.line);
        secrets = std::move(shown.secrets);
        mayBeKept = shown.isWhole;
        running = state->activity.begin(noteOf(action, std::move(shown.line)));
        outcome.answer = co_await state->rpc().call(std::move(request));
    } catch (const RPCError &error) {
        outcome.answer.reset();
        outcome.words = error.message;
        outcome.connectionLost = error.connectionLost;
        code = error.code;
    }
    if (outcome.answer && action.done) {
        outcome.words = action.done(*outcome.answer);
    }
    // What could not even be written down as a request is kept all the same.
    const std::uint64_t id = running ? *running : state->activity.begin(noteOf(action, {}));
    const QString kept = mayBeKept ? without(secrets, outcome.words) : QString();
    state->activity.end(id, {kept, code.has_value(), code});
    co_return outcome;
}

QCoro::Task<std::optional<json::value>> perform(std::shared_ptr<AppState> state, Action action)
{
    if (!action.before.isEmpty()) {
        state->show(action.before);
    }
    CallOutcome outcome = co_await attempt(state, action);
    if (!outcome.words.isEmpty()) {
        state->showOutcome(outcome.words);
    }
    if (outcome.answer && action.refresh) {
        co_await state->refresh();
    }
    co_return std::move(outcome.answer);
}

std::function<QString(const json::value &)> saying(QString words)
{
    return [words = std::move(words)](const json::value &) { return words; };
}

} // namespace quillfen
