// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/rpc.h"
#include "state/appstate.h"

#include <QCoroTask>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillfen {

/// What is particular to one action of a board; how every action goes is `perform`.
struct Action {
    std::string method;
    json::object params;
    RPC::Seconds timeout{60};
    QString before;                                         ///< the notice while it runs, none when empty
    std::function<QString(const json::value &answer)> done; ///< the notice on success, none when empty
    bool refresh = true;                                    ///< whether the state is read afresh after a success
    QString operation;         ///< its title among the running calls; none when empty: it does not take long
    std::string progressEvent; ///< the event that reports on the operation
};

/// An action with its call; what it says and does else is filled in afterwards.
[[nodiscard]] Action calling(std::string method, json::object params, RPC::Seconds timeout = RPC::Seconds(60));

/// How a call of an action went.
struct CallOutcome {
    std::optional<json::value> answer; ///< nothing when it failed
    QString words;                     ///< what there is to say about it: that of `done`, or the failure's reason
    bool connectionLost = false;       ///< the reason is that there is no agent any more
};

/// Makes an action's call and keeps it in the list of what was done, from its beginning to its outcome. For actions
/// that go another way than `perform`; says nothing to the user. Never throws. Main thread.
[[nodiscard]] QCoro::Task<CallOutcome> attempt(std::shared_ptr<AppState> state, Action action);

/// How every action of a board goes after its confirmation: a notice, one call, a notice with the outcome, and on
/// success the state read afresh. Resumes with the answer, or with nothing when the call failed (its reason was shown).
/// Never throws. Main thread.
[[nodiscard]] QCoro::Task<std::optional<json::value>> perform(std::shared_ptr<AppState> state, Action action);

/// A `done` that says the same whatever the answer.
[[nodiscard]] std::function<QString(const json::value &)> saying(QString words);

} // namespace quillfen
