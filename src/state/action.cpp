// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/action.h"

#include <utility>

namespace quillfen {

Action calling(std::string method, json::object params, RPC::Seconds timeout)
{
    Action action;
    action.method = std::move(method);
    action.params = std::move(params);
    action.timeout = timeout;
    return action;
}

QCoro::Task<std::optional<json::value>> perform(std::shared_ptr<AppState> state, Action action)
{
    std::optional<json::value> answer;
    QString notice;
    if (!action.before.isEmpty()) {
        state->show(action.before);
    }
    const std::uint64_t operation =
        action.operation.isEmpty() ? 0 : state->operations.begin(action.method, action.operation, action.progressEvent);
    try {
        answer = co_await state->rpc().call(action.method, action.params, action.timeout);
    } catch (const RPCError &error) {
        answer.reset();
        notice = error.message;
    }
    if (operation != 0) {
        state->operations.end(operation);
    }
    if (answer && action.done) {
        notice = action.done(*answer);
    }
    if (!notice.isEmpty()) {
        state->show(notice);
    }
    if (answer && action.refresh) {
        co_await state->refresh();
    }
    co_return answer;
}

std::function<QString(const json::value &)> saying(QString words)
{
    return [words = std::move(words)](const json::value &) { return words; };
}

} // namespace quillfen
