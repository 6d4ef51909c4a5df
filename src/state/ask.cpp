// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/ask.h"

#include <utility>

namespace quillfen {

QCoro::Task<Answer> ask(std::shared_ptr<AppState> state, std::string method, json::object params, RPC::Seconds timeout)
{
    Answer answer;
    try {
        answer.value = co_await state->rpc().call(std::move(method), std::move(params), timeout);
    } catch (const RPCError &failure) {
        answer.problem = failure.message;
        answer.connectionLost = failure.connectionLost;
    }
    co_return answer;
}

QCoro::Task<std::optional<json::value>> answerOrNothing(std::shared_ptr<AppState> state, std::string method,
                                                        json::object params, RPC::Seconds timeout)
{
    Answer answer = co_await ask(std::move(state), std::move(method), std::move(params), timeout);
    co_return std::move(answer.value);
}

} // namespace quillfen
