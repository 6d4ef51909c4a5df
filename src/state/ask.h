// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/rpc.h"
#include "state/appstate.h"

#include <QCoroTask>
#include <QString>

#include <memory>
#include <optional>
#include <string>

namespace quillfen {

/// What came of a question: the agent's answer, or why there is none.
struct Answer {
    std::optional<json::value> value;
    QString problem;             ///< of the failure, as it may be shown
    bool connectionLost = false; ///< the failure is the end of the connection
};

/// Asks the agent for something to show. Unlike an action (`perform`) it says nothing itself, and changes nothing.
/// Never throws. Main thread.
[[nodiscard]] QCoro::Task<Answer> ask(std::shared_ptr<AppState> state, std::string method, json::object params,
                                      RPC::Seconds timeout = RPC::Seconds(60));

/// The same where no reason is of use: what could not be read leaves what is shown as it was, and nobody is disturbed.
[[nodiscard]] QCoro::Task<std::optional<json::value>> answerOrNothing(std::shared_ptr<AppState> state,
                                                                      std::string method, json::object params,
                                                                      RPC::Seconds timeout = RPC::Seconds(60));

} // namespace quillfen
